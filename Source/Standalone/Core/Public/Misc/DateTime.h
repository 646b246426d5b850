// FDateTime: a calendar date and time of day as ticks of 100 ns since 0001-01-01 00:00:00
// (proleptic Gregorian calendar, no time zone attached), valid up to 9999-12-31.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/Timespan.h"

/** Days of the week, counted from Monday = 0 as in the engine. */
enum class EDayOfWeek
{
	Monday = 0,
	Tuesday,
	Wednesday,
	Thursday,
	Friday,
	Saturday,
	Sunday
};

enum class EMonthOfYear
{
	January = 1,
	February,
	March,
	April,
	May,
	June,
	July,
	August,
	September,
	October,
	November,
	December
};

struct FDateTime
{
	/** 0001-01-01 00:00:00. */
	constexpr FDateTime()
		: Ticks(0)
	{
	}
	constexpr explicit FDateTime(int64 InTicks)
		: Ticks(InTicks)
	{
	}
	/**
	 * From calendar parts (Month 1-12, Day 1-31, Hour 0-23, ...). Parts that do not form a valid
	 * date (see Validate) give 0001-01-01 00:00:00 instead of stopping the program.
	 */
	CORE_API FDateTime(
		int32 Year, int32 Month, int32 Day, int32 Hour = 0, int32 Minute = 0, int32 Second = 0, int32 Millisecond = 0);

	/**
	 * The local wall-clock time, to the millisecond (the engine's precision). Within one process
	 * the result never goes backwards, even when the system clock or the UTC offset is turned
	 * back: it then holds at the last value returned until the clock catches up, so that ticks
	 * taken from it can serve as ordered record ids.
	 */
	static CORE_API FDateTime Now();
	/** The UTC time, to the millisecond, with the same never-backwards rule as Now(). */
	static CORE_API FDateTime UtcNow();
	static CORE_API FDateTime Today();
	static constexpr FDateTime MaxValue() { return FDateTime(3652059 * ETimespan::TicksPerDay - 1); }
	static constexpr FDateTime MinValue() { return FDateTime(0); }

	static CORE_API int32 DaysInMonth(int32 Year, int32 Month);
	static CORE_API int32 DaysInYear(int32 Year);
	static CORE_API bool IsLeapYear(int32 Year);
	static CORE_API bool Validate(
		int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond);
	static FDateTime FromUnixTimestamp(int64 UnixTime)
	{
		return FDateTime(1970, 1, 1) + FTimespan(UnixTime * ETimespan::TicksPerSecond);
	}

	constexpr int64 GetTicks() const { return Ticks; }
	CORE_API void GetDate(int32& OutYear, int32& OutMonth, int32& OutDay) const;
	CORE_API int32 GetYear() const;
	CORE_API int32 GetMonth() const;
	CORE_API int32 GetDay() const;
	EMonthOfYear GetMonthOfYear() const { return EMonthOfYear(GetMonth()); }
	CORE_API int32 GetDayOfYear() const;
	EDayOfWeek GetDayOfWeek() const { return EDayOfWeek((Ticks / ETimespan::TicksPerDay) % 7); }
	int32 GetHour() const { return int32((Ticks / ETimespan::TicksPerHour) % 24); }
	/** 12 for midnight and noon, as on a 12-hour clock. */
	int32 GetHour12() const
	{
		const int32 Hour = GetHour();
		return Hour < 1 ? 12 : (Hour > 12 ? Hour - 12 : Hour);
	}
	int32 GetMinute() const { return int32((Ticks / ETimespan::TicksPerMinute) % 60); }
	int32 GetSecond() const { return int32((Ticks / ETimespan::TicksPerSecond) % 60); }
	int32 GetMillisecond() const { return int32((Ticks / ETimespan::TicksPerMillisecond) % 1000); }
	FDateTime GetDate() const { return FDateTime(Ticks - Ticks % ETimespan::TicksPerDay); }
	FTimespan GetTimeOfDay() const { return FTimespan(Ticks % ETimespan::TicksPerDay); }
	bool IsMorning() const { return GetHour() < 12; }
	bool IsAfternoon() const { return GetHour() >= 12; }
	double GetJulianDay() const { return 1721425.5 + double(Ticks) / ETimespan::TicksPerDay; }
	/** Whole seconds since 1970-01-01 00:00:00. */
	int64 ToUnixTimestamp() const { return (Ticks - FDateTime(1970, 1, 1).Ticks) / ETimespan::TicksPerSecond; }

	/** "%Y.%m.%d-%H.%M.%S", e.g. "2024.01.02-03.04.05". */
	CORE_API FString ToString() const;
	/**
	 * Formats with %Y (4-digit year), %y (2-digit year), %m (month), %d (day), %D (day of
	 * year, 3 digits), %H (24-hour), %h (12-hour), %M (minute), %S (second), %s (millisecond,
	 * 3 digits), %a/%A (am/pm, AM/PM); two digits unless stated. Any other character after a
	 * '%' is copied as is ("%%" gives "%"); a '%' at the very end is dropped.
	 */
	CORE_API FString ToString(const TCHAR* Format) const;
	/** "YYYY-MM-DDTHH:MM:SS.sssZ". */
	FString ToIso8601() const { return ToString(TEXT("%Y-%m-%dT%H:%M:%S.%sZ")); }

	constexpr FDateTime operator+(const FTimespan& Other) const { return FDateTime(Ticks + Other.GetTicks()); }
	constexpr FDateTime operator-(const FTimespan& Other) const { return FDateTime(Ticks - Other.GetTicks()); }
	constexpr FTimespan operator-(const FDateTime& Other) const { return FTimespan(Ticks - Other.Ticks); }
	FDateTime& operator+=(const FTimespan& Other)
	{
		Ticks += Other.GetTicks();
		return *this;
	}
	FDateTime& operator-=(const FTimespan& Other)
	{
		Ticks -= Other.GetTicks();
		return *this;
	}
	constexpr bool operator==(const FDateTime& Other) const { return Ticks == Other.Ticks; }
	constexpr bool operator!=(const FDateTime& Other) const { return Ticks != Other.Ticks; }
	constexpr bool operator<(const FDateTime& Other) const { return Ticks < Other.Ticks; }
	constexpr bool operator<=(const FDateTime& Other) const { return Ticks <= Other.Ticks; }
	constexpr bool operator>(const FDateTime& Other) const { return Ticks > Other.Ticks; }
	constexpr bool operator>=(const FDateTime& Other) const { return Ticks >= Other.Ticks; }

private:
	int64 Ticks;
};

inline uint32 GetTypeHash(const FDateTime& DateTime)
{
	return GetTypeHash(DateTime.GetTicks());
}
