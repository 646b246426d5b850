#include "ZnTimeTools.h"

#include "ZnDM_Log.h"

FString ZnTimeTools::FormatLogTime(const FDateTime& time)
{
	return time.ToString(TEXT("%Y-%m-%d %H:%M:%S.%s"));
}

FString ZnTimeTools::FormatFileNameTime(const FDateTime& time)
{
	return time.ToString(TEXT("%Y_%m_%d_%H_%M_%S_%s"));
}

FString ZnTimeTools::FormatChinaDate(const FDateTime& date)
{
	return FormatChinaDate(date.GetYear(), date.GetMonth(), date.GetDay(), static_cast<int32>(date.GetDayOfWeek()));
}

FString ZnTimeTools::FormatChinaDate(int32 year, int32 month, int32 day, int32 dayOfWeek)
{
	static const TCHAR* const weekdayNames[] = {TEXT("\u661F\u671F\u4E00"), TEXT("\u661F\u671F\u4E8C"),
		TEXT("\u661F\u671F\u4E09"), TEXT("\u661F\u671F\u56DB"), TEXT("\u661F\u671F\u4E94"), TEXT("\u661F\u671F\u516D"),
		TEXT("\u661F\u671F\u65E5")};
	FString text = FString::FromInt(year) + TEXT("\u5E74") + FString::FromInt(month) + TEXT("\u6708") +
		FString::FromInt(day) + TEXT("\u65E5");
	if (dayOfWeek >= 0 && dayOfWeek < 7)
	{
		text += weekdayNames[dayOfWeek];
	}
	return text;
}

int64 ZnTimeTools::MicrosecondsSince1970(const FDateTime& localTime)
{
	// Ticks are 100 ns; integer division truncates toward zero, also before 1970.
	return (localTime.GetTicks() - FDateTime(1970, 1, 1).GetTicks()) / 10;
}

bool ZnTimeTools::TickAdd(float& val, float deltaTime, float threhold)
{
	if (val >= threhold)
	{
		return false;
	}
	val += deltaTime;
	return val >= threhold;
}

bool ZnTimeTools::TickSubtract(float& val, float deltaTime, float threhold)
{
	if (!(val > threhold))
	{
		return false;
	}
	val -= deltaTime;
	return threhold >= val;
}

void ZnTimeTools::TickRemainTime(float& remainTime, float deltaTime)
{
	if (remainTime > 0.0f)
	{
		remainTime -= deltaTime;
		if (!(remainTime >= 0.0f))
		{
			remainTime = 0.0f;
		}
	}
}

bool ZnTimeTools::GreaterOrEqual_Cycling(float deltaTime, float cycleTime, float& offsetTime)
{
	if (!(cycleTime > 0.0f))
	{
		return false;
	}
	offsetTime += deltaTime;
	if (offsetTime >= cycleTime)
	{
		offsetTime = 0.0f;
		ZnDM_Log::printString(TEXT("cycle true"));
		return true;
	}
	return false;
}
