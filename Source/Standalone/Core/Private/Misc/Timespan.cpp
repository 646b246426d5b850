#include "Misc/Timespan.h"

#include <cmath>

namespace
{
FTimespan FromUnits(double Value, int64 TicksPerUnit)
{
	const double Ticks = std::floor(Value * double(TicksPerUnit) + 0.5);
	if (!(Ticks < 9.2e18))
	{
		return FTimespan::MaxValue(); // also NaN
	}
	if (Ticks < -9.2e18)
	{
		return FTimespan::MinValue();
	}
	return FTimespan(int64(Ticks));
}
} // namespace

FTimespan FTimespan::FromDays(double Days)
{
	return FromUnits(Days, ETimespan::TicksPerDay);
}

FTimespan FTimespan::FromHours(double Hours)
{
	return FromUnits(Hours, ETimespan::TicksPerHour);
}

FTimespan FTimespan::FromMinutes(double Minutes)
{
	return FromUnits(Minutes, ETimespan::TicksPerMinute);
}

FTimespan FTimespan::FromSeconds(double Seconds)
{
	return FromUnits(Seconds, ETimespan::TicksPerSecond);
}

FTimespan FTimespan::FromMilliseconds(double Milliseconds)
{
	return FromUnits(Milliseconds, ETimespan::TicksPerMillisecond);
}

FTimespan FTimespan::FromMicroseconds(double Microseconds)
{
	return FromUnits(Microseconds, ETimespan::TicksPerMicrosecond);
}

FString FTimespan::ToString() const
{
	return GetDays() == 0 ? ToString(TEXT("%n%h:%m:%s.%f")) : ToString(TEXT("%n%d.%h:%m:%s.%f"));
}

FString FTimespan::ToString(const TCHAR* Format) const
{
	FString Result;
	if (!Format)
	{
		return Result;
	}
	auto Abs = [](int64 V) { return V < 0 ? -V : V; };
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
			case TEXT('n'):
				if (Ticks < 0)
				{
					Result.AppendChar(TEXT('-'));
				}
				break;
			case TEXT('N'):
				Result.AppendChar(Ticks < 0 ? TEXT('-') : TEXT('+'));
				break;
			case TEXT('d'):
				Result += FString::Printf(TEXT("%lld"), (long long)Abs(GetDays()));
				break;
			case TEXT('D'):
				Result += FString::Printf(TEXT("%08lld"), (long long)Abs(GetDays()));
				break;
			case TEXT('h'):
				Result += FString::Printf(TEXT("%02lld"), (long long)Abs(GetHours()));
				break;
			case TEXT('m'):
				Result += FString::Printf(TEXT("%02lld"), (long long)Abs(GetMinutes()));
				break;
			case TEXT('s'):
				Result += FString::Printf(TEXT("%02lld"), (long long)Abs(GetSeconds()));
				break;
			case TEXT('f'):
				Result += FString::Printf(TEXT("%03lld"), (long long)Abs(GetFractionMilli()));
				break;
			case TEXT('u'):
				Result += FString::Printf(TEXT("%06lld"), (long long)Abs(GetFractionMicro()));
				break;
			case TEXT('t'):
				Result += FString::Printf(TEXT("%07lld"), (long long)Abs(GetFractionTicks()));
				break;
			default:
				Result.AppendChar(*Format);
				break;
		}
	}
	return Result;
}
