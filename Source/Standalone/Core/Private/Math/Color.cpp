#include "Math/Color.h"

#include <cmath>

const FColor FColor::White(255, 255, 255);
const FColor FColor::Black(0, 0, 0);
const FColor FColor::Transparent(0, 0, 0, 0);
const FColor FColor::Red(255, 0, 0);
const FColor FColor::Green(0, 255, 0);
const FColor FColor::Blue(0, 0, 255);
const FColor FColor::Yellow(255, 255, 0);
const FColor FColor::Cyan(0, 255, 255);
const FColor FColor::Magenta(255, 0, 255);
const FColor FColor::Orange(243, 156, 18);
const FColor FColor::Purple(169, 7, 228);
const FColor FColor::Turquoise(26, 188, 156);
const FColor FColor::Silver(189, 195, 199);
const FColor FColor::Emerald(46, 204, 113);

const FLinearColor FLinearColor::White(1.f, 1.f, 1.f);
const FLinearColor FLinearColor::Gray(0.5f, 0.5f, 0.5f);
const FLinearColor FLinearColor::Black(0, 0, 0);
const FLinearColor FLinearColor::Transparent(0, 0, 0, 0);
const FLinearColor FLinearColor::Red(1.f, 0, 0);
const FLinearColor FLinearColor::Green(0, 1.f, 0);
const FLinearColor FLinearColor::Blue(0, 0, 1.f);
const FLinearColor FLinearColor::Yellow(1.f, 1.f, 0);

namespace
{
float SRGBToLinear(uint8 Channel)
{
	const float C = float(Channel) / 255.0f;
	return C > 0.04045f ? std::pow(C * (1.0f / 1.055f) + 0.0521327f, 2.4f) : C * (1.0f / 12.92f);
}

uint8 LinearToSRGB(float C)
{
	C = C < 0.f ? 0.f : (C > 1.f ? 1.f : C);
	const float S = C <= 0.0031308f ? C * 12.92f : std::pow(C, 1.0f / 2.4f) * 1.055f - 0.055f;
	return uint8(std::floor(S * 255.999f));
}
} // namespace

FLinearColor::FLinearColor(const FColor& Color)
	: R(SRGBToLinear(Color.R))
	, G(SRGBToLinear(Color.G))
	, B(SRGBToLinear(Color.B))
	, A(float(Color.A) / 255.0f)
{
}

FColor FLinearColor::ToFColor(bool bSRGB) const
{
	auto Clamp01 = [](float V) { return V < 0.f ? 0.f : (V > 1.f ? 1.f : V); };
	if (bSRGB)
	{
		return FColor(LinearToSRGB(R), LinearToSRGB(G), LinearToSRGB(B), uint8(std::floor(Clamp01(A) * 255.999f)));
	}
	return FColor(uint8(std::floor(Clamp01(R) * 255.999f)), uint8(std::floor(Clamp01(G) * 255.999f)),
		uint8(std::floor(Clamp01(B) * 255.999f)), uint8(std::floor(Clamp01(A) * 255.999f)));
}
