// A two-component vector of doubles (screen positions, text scales).
#pragma once

#include "CoreTypes.h"

struct FVector2D
{
	double X = 0.0;
	double Y = 0.0;

	FVector2D() = default;
	FVector2D(double InX, double InY)
		: X(InX)
		, Y(InY)
	{
	}

	bool operator==(const FVector2D& Other) const { return X == Other.X && Y == Other.Y; }
	bool operator!=(const FVector2D& Other) const { return !(*this == Other); }

	// (1, 1).
	CORE_API static const FVector2D UnitVector;
	// (0, 0).
	CORE_API static const FVector2D ZeroVector;
};
