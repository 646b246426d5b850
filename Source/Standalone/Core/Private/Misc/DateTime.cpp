#include "Misc/DateTime.h"

#include <atomic>
#include <ctime>
#include <sys/time.h>

namespace
{
constexpr int32 DaysToMonth[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

// Days since 0001-01-01 of the first day of Year.
int64 DaysBeforeYear(int32 Year)
{
	const int64 Y = Year - 1;
	return Y * 365 + Y / 4 - Y / 100 + Y / 400;
}

// Raises Stored to Candidate unless it already is later; returns the value to hand out.
FDateTime NeverBackwards(std::atomic<int64>& Stored, const FDateTime& Candidate)
{
	int64 Last = Stored.load(std::memory_order_relaxed);
	const int64 Ticks = Candidate.GetTicks();
	while (Ticks > Last)
	{
		if (Stored.compare_exchange_weak(Last, Ticks, std::memory_order_relaxed))
		{
			return Candidate;
		}
	}
	return FDateTime(Last);
}

FDateTime FromClock(bool bLocal)
{
	timeval Now;
	gettimeofday(&Now, nullptr);
	const time_t Seconds = Now.tv_sec;
	tm Parts;
	if (bLocal)
	{
		localtime_r(&Seconds, &Parts);
	}
	else
	{
		gmtime_r(&Seconds, &Parts);
	}
	// A leap second (tm_sec == 60) is folded into the last ordinary second.
	return FDateTime(Parts.tm_year + 1900, Parts.tm_mon + 1, Parts.tm_mday, Parts.tm_hour, Parts.tm_min,
		Parts.tm_sec > 59 ? 59 : Parts.tm_sec, int32(Now.tv_usec / 1000));
}

std::atomic<int64> LastLocalTicks{0};
std::atomic<int64> LastUtcTicks{0};
} // namespace

FDateTime::FDateTime(int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond)
	: Ticks(0)
{
	if (!Validate(Year, Month, Day, Hour, Minute, Second, Millisecond))
	{
		return;
	}
	int64 Days = DaysBeforeYear(Year) + DaysToMonth[Month - 1] + (Day - 1);
	if (Month > 2 && IsLeapYear(Year))
	{
		++Days;
	}
	Ticks = Days * ETimespan::TicksPerDay + Hour * ETimespan::TicksPerHour + Minute * ETimespan::TicksPerMinute +
		Second * ETimespan::TicksPerSecond + Millisecond * ETimespan::TicksPerMillisecond;
}

FDateTime FDateTime::Now()
{
	return NeverBackwards(LastLocalTicks, FromClock(true));
}

FDateTime FDateTime::UtcNow()
{
	return NeverBackwards(LastUtcTicks, FromClock(false));
}

FDateTime FDateTime::Today()
{
	return Now().GetDate();
}

bool FDateTime::IsLeapYear(int32 Year)
{
	return (Year % 4 == 0) && ((Year % 100 != 0) || (Year % 400 == 0));
}

int32 FDateTime::DaysInYear(int32 Year)
{
	return IsLeapYear(Year) ? 366 : 365;
}

int32 FDateTime::DaysInMonth(int32 Year, int32 Month)
{
	if (Month < 1 || Month > 12)
	{
		return 0;
	}
	if (Month == 2 && IsLeapYear(Year))
	{
		return 29;
	}
	return DaysToMonth[Month] - DaysToMonth[Month - 1];
}

bool FDateTime::Validate(int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond)
{
	return (Year >= 1) && (Year <= 9999) && (Month >= 1) && (Month <= 12) && (Day >= 1) &&
		(Day <= DaysInMonth(Year, Month)) && (Hour >= 0) && (Hour <= 23) && (Minute >= 0) && (Minute <= 59) &&
		(Second >= 0) && (Second <= 59) && (Millisecond >= 0) && (Millisecond <= 999);
}

void FDateTime::GetDate(int32& OutYear, int32& OutMonth, int32& OutDay) const
{
	// Whole-day arithmetic on the 400/100/4/1-year cycles of the Gregorian calendar.
	int64 Days = Ticks / ETimespan::TicksPerDay;
	const int64 Cycles400 = Days / 146097;
	Days -= Cycles400 * 146097;
	int64 Cycles100 = Days / 36524;
	if (Cycles100 == 4)
	{
		Cycles100 = 3;
	}
	Days -= Cycles100 * 36524;
	const int64 Cycles4 = Days / 1461;
	Days -= Cycles4 * 1461;
	int64 Years = Days / 365;
	if (Years == 4)
	{
		Years = 3;
	}
	Days -= Years * 365;
	const int32 Year = int32(Cycles400 * 400 + Cycles100 * 100 + Cycles4 * 4 + Years + 1);
	const bool bLeap = IsLeapYear(Year);
	int32 Month = 1;
	while (Month < 12)
	{
		const int32 End = DaysToMonth[Month] + ((bLeap && Month >= 2) ? 1 : 0);
		if (Days < End)
		{
			break;
		}
		++Month;
	}
	const int32 Start = DaysToMonth[Month - 1] + ((bLeap && Month > 2) ? 1 : 0);
	OutYear = Year;
	OutMonth = Month;
	OutDay = int32(Days - Start + 1);
}

int32 FDateTime::GetYear() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Year;
}

int32 FDateTime::GetMonth() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Month;
}

int32 FDateTime::GetDay() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Day;
}

int32 FDateTime::GetDayOfYear() const
{
	const int32 Year = GetYear();
	return int32(Ticks / ETimespan::TicksPerDay - DaysBeforeYear(Year)) + 1;
}

FString FDateTime::ToString() const
{
	return ToString(TEXT("%Y.%m.%d-%H.%M.%S"));
}

FString FDateTime::ToString(const TCHAR* Format) const
{
	FString Result;
	if (!Format)
	{
		return Result;
	}
	for (; *Format; ++Format)
	{
		if (*Format != TEXT('%'))
		{
			Result.AppendChar(*Format);
			continue;
		}
		++Format;
		if (!*Format)
		{
			break;
		}
		switch (*Format)
		{
			case TEXT('a'):
				Result += IsMorning() ? TEXT("am") : TEXT("pm");
				break;
			case TEXT('A'):
				Result += IsMorning() ? TEXT("AM") : TEXT("PM");
				break;
			case TEXT('d'):
				Result += FString::Printf(TEXT("%02i"), GetDay());
				break;
			case TEXT('D'):
				Result += FString::Printf(TEXT("%03i"), GetDayOfYear());
				break;
			case TEXT('m'):
				Result += FString::Printf(TEXT("%02i"), GetMonth());
				break;
			case TEXT('y'):
				Result += FString::Printf(TEXT("%02i"), GetYear() % 100);
				break;
			case TEXT('Y'):
				Result += FString::Printf(TEXT("%04i"), GetYear());
				break;
			case TEXT('h'):
				Result += FString::Printf(TEXT("%02i"), GetHour12());
				break;
			case TEXT('H'):
				Result += FString::Printf(TEXT("%02i"), GetHour());
				break;
			case TEXT('M'):
				Result += FString::Printf(TEXT("%02i"), GetMinute());
				break;
			case TEXT('S'):
				Result += FString::Printf(TEXT("%02i"), GetSecond());
				break;
			case TEXT('s'):
				Result += FString::Printf(TEXT("%03i"), GetMillisecond());
				break;
			default:
				Result.AppendChar(*Format);
				break;
		}
	}
	return Result;
}
