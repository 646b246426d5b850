// FColor (8-bit sRGB with alpha) and FLinearColor (linear float RGBA), as used for on-screen
// messages and debug drawing.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

struct FLinearColor;

struct FColor
{
	// The engine's member order on little-endian machines: B, G, R, A.
	uint8 B = 0;
	uint8 G = 0;
	uint8 R = 0;
	uint8 A = 0;

	constexpr FColor() = default;
	constexpr FColor(uint8 InR, uint8 InG, uint8 InB, uint8 InA = 255)
		: B(InB)
		, G(InG)
		, R(InR)
		, A(InA)
	{
	}

	constexpr bool operator==(const FColor& C) const { return R == C.R && G == C.G && B == C.B && A == C.A; }
	constexpr bool operator!=(const FColor& C) const { return !(*this == C); }
	uint32 ToPackedARGB() const { return (uint32(A) << 24) | (uint32(R) << 16) | (uint32(G) << 8) | uint32(B); }
	/** "(R=1,G=2,B=3,A=4)". */
	FString ToString() const { return FString::Printf(TEXT("(R=%i,G=%i,B=%i,A=%i)"), R, G, B, A); }
	/** Two hex digits per channel, RRGGBBAA. */
	FString ToHex() const { return FString::Printf(TEXT("%02X%02X%02X%02X"), R, G, B, A); }

	CORE_API static const FColor White;
	CORE_API static const FColor Black;
	CORE_API static const FColor Transparent;
	CORE_API static const FColor Red;
	CORE_API static const FColor Green;
	CORE_API static const FColor Blue;
	CORE_API static const FColor Yellow;
	CORE_API static const FColor Cyan;
	CORE_API static const FColor Magenta;
	CORE_API static const FColor Orange;
	CORE_API static const FColor Purple;
	CORE_API static const FColor Turquoise;
	CORE_API static const FColor Silver;
	CORE_API static const FColor Emerald;
};

struct FLinearColor
{
	float R = 0;
	float G = 0;
	float B = 0;
	float A = 0;

	constexpr FLinearColor() = default;
	constexpr FLinearColor(float InR, float InG, float InB, float InA = 1.0f)
		: R(InR)
		, G(InG)
		, B(InB)
		, A(InA)
	{
	}
	/** Converts from sRGB-encoded 8-bit channels to linear (alpha is linear already). */
	CORE_API explicit FLinearColor(const FColor& Color);
	/** Converts to sRGB-encoded 8-bit channels, clamping to [0, 1] first. */
	CORE_API FColor ToFColor(bool bSRGB) const;

	constexpr bool operator==(const FLinearColor& C) const { return R == C.R && G == C.G && B == C.B && A == C.A; }
	constexpr bool operator!=(const FLinearColor& C) const { return !(*this == C); }
	FString ToString() const { return FString::Printf(TEXT("(R=%f,G=%f,B=%f,A=%f)"), R, G, B, A); }

	CORE_API static const FLinearColor White;
	CORE_API static const FLinearColor Gray;
	CORE_API static const FLinearColor Black;
	CORE_API static const FLinearColor Transparent;
	CORE_API static const FLinearColor Red;
	CORE_API static const FLinearColor Green;
	CORE_API static const FLinearColor Blue;
	CORE_API static const FLinearColor Yellow;
};
