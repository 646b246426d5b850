#include "HAL/PlatformStackWalk.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace
{
int GCaptureLine = 0;

FORCENOINLINE TArray<FProgramCounterSymbolInfo> CaptureFromHere(int32 IgnoreCount, int32 MaxDepth)
{
	GCaptureLine = __LINE__ + 1;
	TArray<FProgramCounterSymbolInfo> Stack = FPlatformStackWalk::GetStack(IgnoreCount, MaxDepth);
	// Keeps the call above from becoming a tail call, which would drop this frame.
	asm volatile("" ::: "memory");
	return Stack;
}

FORCENOINLINE TArray<FProgramCounterSymbolInfo> CaptureThroughAnExtraFrame(int32 IgnoreCount, int32 MaxDepth)
{
	TArray<FProgramCounterSymbolInfo> Stack = CaptureFromHere(IgnoreCount, MaxDepth);
	asm volatile("" ::: "memory");
	return Stack;
}

bool EndsWith(const std::string& Text, const std::string& Suffix)
{
	return Text.size() >= Suffix.size() && Text.compare(Text.size() - Suffix.size(), Suffix.size(), Suffix) == 0;
}
} // namespace

TEST(FPlatformStackWalk, FirstFrameIsTheCallerWithFileAndLine)
{
	const TArray<FProgramCounterSymbolInfo> Stack = CaptureFromHere(0, 4);
	ASSERT_EQ(Stack.Num(), 4);
	EXPECT_NE(std::string(Stack[0].FunctionName).find("CaptureFromHere"), std::string::npos) << Stack[0].FunctionName;
	EXPECT_TRUE(EndsWith(Stack[0].Filename, "PlatformStackWalkTests.cpp")) << Stack[0].Filename;
	EXPECT_EQ(Stack[0].LineNumber, GCaptureLine);
	EXPECT_NE(Stack[0].ProgramCounter, 0u);
	EXPECT_NE(std::strlen(Stack[0].ModuleName), 0u);
}

TEST(FPlatformStackWalk, IgnoreCountSkipsCallers)
{
	const TArray<FProgramCounterSymbolInfo> Stack = CaptureThroughAnExtraFrame(1, 2);
	ASSERT_EQ(Stack.Num(), 2);
	EXPECT_NE(std::string(Stack[0].FunctionName).find("CaptureThroughAnExtraFrame"), std::string::npos)
		<< Stack[0].FunctionName;
}

TEST(FPlatformStackWalk, DepthLimitsTheFrames)
{
	EXPECT_EQ(CaptureFromHere(0, 1).Num(), 1);
	EXPECT_EQ(CaptureFromHere(0, 0).Num(), 0);
	EXPECT_EQ(CaptureFromHere(0, -3).Num(), 0);
}

TEST(FPlatformStackWalk, HugeIgnoreCountGivesNoFrames)
{
	EXPECT_EQ(CaptureFromHere(100000, 5).Num(), 0);
}

TEST(FPlatformStackWalk, NegativeIgnoreCountCountsAsZero)
{
	const TArray<FProgramCounterSymbolInfo> Stack = CaptureFromHere(-7, 1);
	ASSERT_EQ(Stack.Num(), 1);
	EXPECT_NE(std::string(Stack[0].FunctionName).find("CaptureFromHere"), std::string::npos);
}

TEST(FPlatformStackWalk, UnresolvedFrameHasPlaceholders)
{
	const FProgramCounterSymbolInfo Info;
	EXPECT_STREQ(Info.FunctionName, "UnknownFunction");
	EXPECT_STREQ(Info.Filename, "UnknownFile");
	EXPECT_EQ(Info.LineNumber, 0);
}
