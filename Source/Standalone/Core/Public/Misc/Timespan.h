// FTimespan: a signed duration in ticks of 100 nanoseconds.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

namespace ETimespan
{
constexpr int64 NanosecondsPerTick = 100;
constexpr int64 TicksPerMicrosecond = 10;
constexpr int64 TicksPerMillisecond = 10000;
constexpr int64 TicksPerSecond = 10000000;
constexpr int64 TicksPerMinute = 600000000;
constexpr int64 TicksPerHour = 36000000000;
constexpr int64 TicksPerDay = 864000000000;
constexpr int64 TicksPerWeek = 6048000000000;
constexpr int64 TicksPerYear = 365 * TicksPerDay;
constexpr int64 MaxTicks = 9223372036854775807;
constexpr int64 MinTicks = -9223372036854775807 - 1;
} // namespace ETimespan

struct FTimespan
{
	constexpr FTimespan()
		: Ticks(0)
	{
	}
	constexpr explicit FTimespan(int64 InTicks)
		: Ticks(InTicks)
	{
	}
	constexpr FTimespan(int32 Hours, int32 Minutes, int32 Seconds)
		: Ticks(ETimespan::TicksPerHour * Hours + ETimespan::TicksPerMinute * Minutes +
			  ETimespan::TicksPerSecond * Seconds)
	{
	}
	constexpr FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds)
		: Ticks(ETimespan::TicksPerDay * Days + ETimespan::TicksPerHour * Hours + ETimespan::TicksPerMinute * Minutes +
			  ETimespan::TicksPerSecond * Seconds)
	{
	}
	constexpr FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds, int32 FractionNano)
		: Ticks(ETimespan::TicksPerDay * Days + ETimespan::TicksPerHour * Hours + ETimespan::TicksPerMinute * Minutes +
			  ETimespan::TicksPerSecond * Seconds + FractionNano / ETimespan::NanosecondsPerTick)
	{
	}

	constexpr int64 GetTicks() const { return Ticks; }
	/** Whole days (truncated towards zero). */
	constexpr int32 GetDays() const { return int32(Ticks / ETimespan::TicksPerDay); }
	/** Hour part in (-24, 24). */
	constexpr int32 GetHours() const { return int32((Ticks / ETimespan::TicksPerHour) % 24); }
	constexpr int32 GetMinutes() const { return int32((Ticks / ETimespan::TicksPerMinute) % 60); }
	constexpr int32 GetSeconds() const { return int32((Ticks / ETimespan::TicksPerSecond) % 60); }
	/** Sub-second part in milliseconds. */
	constexpr int32 GetFractionMilli() const
	{
		return int32((Ticks % ETimespan::TicksPerSecond) / ETimespan::TicksPerMillisecond);
	}
	constexpr int32 GetFractionMicro() const
	{
		return int32((Ticks % ETimespan::TicksPerSecond) / ETimespan::TicksPerMicrosecond);
	}
	constexpr int32 GetFractionTicks() const { return int32(Ticks % ETimespan::TicksPerSecond); }
	constexpr int32 GetFractionNano() const
	{
		return int32((Ticks % ETimespan::TicksPerSecond) * ETimespan::NanosecondsPerTick);
	}

	constexpr double GetTotalDays() const { return double(Ticks) / ETimespan::TicksPerDay; }
	constexpr double GetTotalHours() const { return double(Ticks) / ETimespan::TicksPerHour; }
	constexpr double GetTotalMinutes() const { return double(Ticks) / ETimespan::TicksPerMinute; }
	constexpr double GetTotalSeconds() const { return double(Ticks) / ETimespan::TicksPerSecond; }
	constexpr double GetTotalMilliseconds() const { return double(Ticks) / ETimespan::TicksPerMillisecond; }
	constexpr double GetTotalMicroseconds() const { return double(Ticks) / ETimespan::TicksPerMicrosecond; }

	constexpr FTimespan GetDuration() const { return FTimespan(Ticks >= 0 ? Ticks : -Ticks); }
	constexpr bool IsZero() const { return Ticks == 0; }

	static constexpr FTimespan Zero() { return FTimespan(0); }
	static constexpr FTimespan MaxValue() { return FTimespan(ETimespan::MaxTicks); }
	static constexpr FTimespan MinValue() { return FTimespan(ETimespan::MinTicks); }
	/** Rounded to the nearest tick. */
	static CORE_API FTimespan FromDays(double Days);
	static CORE_API FTimespan FromHours(double Hours);
	static CORE_API FTimespan FromMinutes(double Minutes);
	static CORE_API FTimespan FromSeconds(double Seconds);
	static CORE_API FTimespan FromMilliseconds(double Milliseconds);
	static CORE_API FTimespan FromMicroseconds(double Microseconds);

	constexpr FTimespan operator+(const FTimespan& Other) const { return FTimespan(Ticks + Other.Ticks); }
	constexpr FTimespan operator-(const FTimespan& Other) const { return FTimespan(Ticks - Other.Ticks); }
	constexpr FTimespan operator-() const { return FTimespan(-Ticks); }
	FTimespan operator*(double Scalar) const { return FTimespan(int64(double(Ticks) * Scalar)); }
	FTimespan& operator+=(const FTimespan& Other)
	{
		Ticks += Other.Ticks;
		return *this;
	}
	FTimespan& operator-=(const FTimespan& Other)
	{
		Ticks -= Other.Ticks;
		return *this;
	}
	constexpr bool operator==(const FTimespan& Other) const { return Ticks == Other.Ticks; }
	constexpr bool operator!=(const FTimespan& Other) const { return Ticks != Other.Ticks; }
	constexpr bool operator<(const FTimespan& Other) const { return Ticks < Other.Ticks; }
	constexpr bool operator<=(const FTimespan& Other) const { return Ticks <= Other.Ticks; }
	constexpr bool operator>(const FTimespan& Other) const { return Ticks > Other.Ticks; }
	constexpr bool operator>=(const FTimespan& Other) const { return Ticks >= Other.Ticks; }

	/** "[-]h:mm:ss.fff" style: "%n%h:%m:%s.%f", or "%n%d.%h:%m:%s.%f" when there are whole days. */
	CORE_API FString ToString() const;
	/**
	 * %n "-" when negative, %N "-" or "+", %d days, %D days (8 digits), %h hours, %m minutes,
	 * %s seconds (2 digits each), %f milliseconds (3), %u microseconds (6), %t ticks (7),
	 * %% a percent sign; parts are absolute values.
	 */
	CORE_API FString ToString(const TCHAR* Format) const;

private:
	int64 Ticks;
};

inline uint32 GetTypeHash(const FTimespan& Timespan)
{
	return GetTypeHash(Timespan.GetTicks());
}
