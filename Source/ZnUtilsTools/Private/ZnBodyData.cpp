#include "ZnBodyData.h"

#include "Misc/DateTime.h"

FZnBodyData::FZnBodyData()
	: id(FDateTime::Now().GetTicks())
	, totalTime(0.0f)
	, RootStartPosition(0.0, 0.0, 0.0)
{
}

FZnBodyData::~FZnBodyData() {}

FString FZnBodyData::GetNamesStr() const
{
	FString Result;
	for (const FString& Name : BoneNames)
	{
		Result += Name;
		Result += TEXT(",");
	}
	return Result;
}
