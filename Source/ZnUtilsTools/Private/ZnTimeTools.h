// Date texts, time stamps and the frame-time counters behind the script functions. The formatting
// functions take the time as an argument so that a fixed date can be checked.
#pragma once

#include "CoreMinimal.h"
#include "Misc/DateTime.h"

struct ZnTimeTools
{
	// "%Y-%m-%d %H:%M:%S.%s", e.g. 2024-01-02 03:04:05.678 (the log line header).
	static FString FormatLogTime(const FDateTime& time);
	// "%Y_%m_%d_%H_%M_%S_%s", e.g. 2024_01_02_03_04_05_678 (safe in file names).
	static FString FormatFileNameTime(const FDateTime& time);
	// e.g. 2024\u5E741\u67082\u65E5\u661F\u671F\u4E8C (2 January 2024, a Tuesday): numbers without
	// padding, each followed by its character for year, month and day, then the weekday name.
	static FString FormatChinaDate(const FDateTime& date);
	// As above from parts; dayOfWeek counts from Monday = 0. A weekday outside 0..6 adds no name.
	static FString FormatChinaDate(int32 year, int32 month, int32 day, int32 dayOfWeek);
	// Microseconds from 1970-01-01 00:00 to localTime, both read as local time (no zone shift),
	// truncated toward zero.
	static int64 MicrosecondsSince1970(const FDateTime& localTime);

	// If val has reached threhold, false and val unchanged; else adds deltaTime and tells whether
	// val has reached threhold now.
	static bool TickAdd(float& val, float deltaTime, float threhold);
	// If val is not above threhold, false and val unchanged; else subtracts deltaTime and tells
	// whether val has come down to threhold.
	static bool TickSubtract(float& val, float deltaTime, float threhold);
	// Counts a positive remainTime down by deltaTime, stopping at 0; leaves other values alone.
	static void TickRemainTime(float& remainTime, float deltaTime);
	// Adds deltaTime to offsetTime; once it reaches cycleTime, resets it to 0 (dropping the
	// overshoot on purpose), logs "cycle true" and returns true. A cycleTime that is not above 0
	// returns false and leaves offsetTime alone.
	static bool GreaterOrEqual_Cycling(float deltaTime, float cycleTime, float& offsetTime);
};
