#include "ZnFaceData.h"

#include "Misc/DateTime.h"

FZnFaceData::FZnFaceData()
	: id(FDateTime::Now().GetTicks())
	, totalTime(0.0f)
{
}

FZnFaceData::~FZnFaceData() {}
