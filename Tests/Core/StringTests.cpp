#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <limits>

TEST(StringTests, EmptyStringHasNoStorageButAValidText)
{
	const FString Empty;
	EXPECT_EQ(Empty.Len(), 0);
	EXPECT_TRUE(Empty.IsEmpty());
	ASSERT_NE(*Empty, nullptr);
	EXPECT_EQ((*Empty)[0], TEXT('\0'));
	EXPECT_EQ(Empty.GetCharArray().Num(), 0);
}

TEST(StringTests, StorageKeepsATerminatingZero)
{
	const FString Text(TEXT("abc"));
	EXPECT_EQ(Text.Len(), 3);
	EXPECT_EQ(Text.GetCharArray().Num(), 4);
	EXPECT_EQ(Text.GetCharArray()[3], TEXT('\0'));
	EXPECT_EQ(FCString::Strlen(*Text), 3);
}

TEST(StringTests, NarrowTextIsWidenedAsLatin1)
{
	const FString Latin1("caf\xE9");
	ASSERT_EQ(Latin1.Len(), 4);
	EXPECT_EQ(Latin1[3], TCHAR(0x00E9));
	EXPECT_EQ(FString("plain ascii"), FString(TEXT("plain ascii")));
}

TEST(StringTests, NullPointersGiveTheEmptyString)
{
	const TCHAR* NullWide = nullptr;
	const ANSICHAR* NullNarrow = nullptr;
	EXPECT_TRUE(FString(NullWide).IsEmpty());
	EXPECT_TRUE(FString(NullNarrow).IsEmpty());
	EXPECT_TRUE(FString(5, NullWide).IsEmpty());
}

TEST(StringTests, CountedConstructorCopiesOnlyThatMany)
{
	EXPECT_EQ(FString(3, TEXT("abcdef")), FString(TEXT("abc")));
	EXPECT_TRUE(FString(0, TEXT("abc")).IsEmpty());
	EXPECT_TRUE(FString(-2, TEXT("abc")).IsEmpty());
}

TEST(StringTests, AppendingGrowsTheText)
{
	FString Text;
	Text.AppendChar(TEXT('a'));
	Text += TEXT("bc");
	Text += FString(TEXT("de"));
	Text.Append(TEXT("fgh"), 2);
	Text += TEXT('!');
	EXPECT_STREQ(TCHAR_TO_UTF8(*Text), "abcdefg!");
	EXPECT_EQ(Text.Len(), 8);
}

TEST(StringTests, AppendingItselfIsSafe)
{
	FString Text(TEXT("abc"));
	Text += Text;
	EXPECT_EQ(Text, FString(TEXT("abcabc")));
	Text.Append(*Text + 1, 2);
	EXPECT_TRUE(Text.Equals(TEXT("abcabcbc")));
}

TEST(StringTests, AppendCharIgnoresTheZeroCharacter)
{
	FString Text(TEXT("ab"));
	Text.AppendChar(TEXT('\0'));
	EXPECT_EQ(Text.Len(), 2);
}

TEST(StringTests, ConcatenationOperators)
{
	const FString A(TEXT("foo"));
	EXPECT_TRUE((A + TEXT("bar")).Equals(TEXT("foobar")));
	EXPECT_TRUE((TEXT("bar") + A).Equals(TEXT("barfoo")));
	EXPECT_TRUE((A + A).Equals(TEXT("foofoo")));
	EXPECT_TRUE((FString(TEXT("x")) + A).Equals(TEXT("xfoo")));
}

TEST(StringTests, PathJoinAddsOneSeparator)
{
	EXPECT_TRUE((FString(TEXT("a")) / TEXT("b")).Equals(TEXT("a/b")));
	EXPECT_TRUE((FString(TEXT("a/")) / TEXT("b")).Equals(TEXT("a/b")));
	EXPECT_TRUE((FString(TEXT("a")) / TEXT("/b")).Equals(TEXT("a/b")));
	EXPECT_TRUE((FString(TEXT("a")) / TEXT("")).Equals(TEXT("a/")));
	EXPECT_TRUE((FString() / TEXT("b")).Equals(TEXT("b")));
}

TEST(StringTests, EqualityOperatorsIgnoreCase)
{
	EXPECT_TRUE(FString(TEXT("Hips")) == FString(TEXT("HIPS")));
	EXPECT_TRUE(FString(TEXT("Hips")) == TEXT("hips"));
	EXPECT_TRUE(TEXT("hIPS") == FString(TEXT("Hips")));
	EXPECT_FALSE(FString(TEXT("Hips")) != FString(TEXT("hips")));
	EXPECT_TRUE(FString(TEXT("Hips")) != FString(TEXT("Hip")));
	EXPECT_TRUE(FString(TEXT("apple")) < FString(TEXT("BANANA")));
}

TEST(StringTests, EqualsIsCaseSensitiveUnlessAsked)
{
	const FString A(TEXT("Spine"));
	EXPECT_FALSE(A.Equals(TEXT("spine")));
	EXPECT_TRUE(A.Equals(TEXT("spine"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(A.Equals(TEXT("Spine")));
	EXPECT_FALSE(A.Equals(TEXT("Spine1")));
	EXPECT_LT(FString(TEXT("B")).Compare(TEXT("a")), 0);
	EXPECT_GT(FString(TEXT("B")).Compare(TEXT("a"), ESearchCase::IgnoreCase), 0);
	EXPECT_EQ(FString(TEXT("abc")).Compare(TEXT("ABC"), ESearchCase::IgnoreCase), 0);
}

TEST(StringTests, CaseFoldingTouchesOnlyAsciiLetters)
{
	const FString Mixed = FString(TEXT("aZ9_")) + FString("\xE9");
	EXPECT_TRUE(Mixed.ToUpper().Equals(FString(TEXT("AZ9_")) + FString("\xE9")));
	EXPECT_TRUE(Mixed.ToLower().Equals(FString(TEXT("az9_")) + FString("\xE9")));
	EXPECT_FALSE(FString("\xE9") == FString("\xC9"));
	FString Inline(TEXT("MiXeD"));
	Inline.ToLowerInline();
	EXPECT_TRUE(Inline.Equals(TEXT("mixed")));
	Inline.ToUpperInline();
	EXPECT_TRUE(Inline.Equals(TEXT("MIXED")));
}

TEST(StringTests, HashIgnoresCaseLikeEquality)
{
	EXPECT_EQ(GetTypeHash(FString(TEXT("LeftHand"))), GetTypeHash(FString(TEXT("LEFTHAND"))));
	EXPECT_NE(GetTypeHash(FString(TEXT("LeftHand"))), GetTypeHash(FString(TEXT("RightHand"))));
	EXPECT_EQ(GetTypeHash(FString()), GetTypeHash(FString(TEXT(""))));
}

TEST(StringTests, FindSearchesIgnoringCaseByDefault)
{
	const FString Text(TEXT("Hello World, hello"));
	EXPECT_EQ(Text.Find(TEXT("hello")), 0);
	EXPECT_EQ(Text.Find(TEXT("hello"), ESearchCase::CaseSensitive), 13);
	EXPECT_EQ(Text.Find(TEXT("HELLO"), ESearchCase::IgnoreCase, ESearchDir::FromEnd), 13);
	EXPECT_EQ(Text.Find(TEXT("o"), ESearchCase::IgnoreCase, ESearchDir::FromStart, 5), 7);
	EXPECT_EQ(Text.Find(TEXT("o"), ESearchCase::IgnoreCase, ESearchDir::FromEnd, 7), 4);
	EXPECT_EQ(Text.Find(TEXT("xyz")), INDEX_NONE);
	EXPECT_EQ(FString().Find(TEXT("a")), INDEX_NONE);
}

TEST(StringTests, EmptyNeedleFindsNothingWhenIgnoringCase)
{
	const FString Text(TEXT("abc"));
	EXPECT_EQ(Text.Find(TEXT("")), INDEX_NONE);
	EXPECT_FALSE(Text.Contains(TEXT("")));
	EXPECT_EQ(Text.Find(TEXT(""), ESearchCase::CaseSensitive), 0);
	const TCHAR* Null = nullptr;
	EXPECT_EQ(Text.Find(Null), INDEX_NONE);
}

TEST(StringTests, ContainsStartsWithEndsWith)
{
	const FString Text(TEXT("mixamorig:Hips"));
	EXPECT_TRUE(Text.Contains(TEXT("HIPS")));
	EXPECT_FALSE(Text.Contains(TEXT("HIPS"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Text.StartsWith(TEXT("MIXAMO")));
	EXPECT_FALSE(Text.StartsWith(TEXT("MIXAMO"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Text.EndsWith(TEXT(":hips")));
	EXPECT_FALSE(Text.EndsWith(TEXT(":hips"), ESearchCase::CaseSensitive));
	EXPECT_FALSE(Text.StartsWith(TEXT("")));
	EXPECT_FALSE(Text.EndsWith(TEXT("")));
	EXPECT_FALSE(FString(TEXT("ab")).EndsWith(TEXT("xab")));
}

TEST(StringTests, SubstringsClampTheirCounts)
{
	const FString Text(TEXT("abcdef"));
	EXPECT_TRUE(Text.Left(2).Equals(TEXT("ab")));
	EXPECT_TRUE(Text.Left(10).Equals(TEXT("abcdef")));
	EXPECT_TRUE(Text.Left(-1).IsEmpty());
	EXPECT_TRUE(Text.Right(2).Equals(TEXT("ef")));
	EXPECT_TRUE(Text.Right(10).Equals(TEXT("abcdef")));
	EXPECT_TRUE(Text.Mid(2, 3).Equals(TEXT("cde")));
	EXPECT_TRUE(Text.Mid(4).Equals(TEXT("ef")));
	EXPECT_TRUE(Text.Mid(-2, 4).Equals(TEXT("ab")));
	EXPECT_TRUE(Text.Mid(10, 2).IsEmpty());
	EXPECT_TRUE(Text.Mid(2, -1).IsEmpty());
	EXPECT_TRUE(Text.Mid(1, 0x7fffffff).Equals(TEXT("bcdef")));
	EXPECT_TRUE(Text.LeftChop(2).Equals(TEXT("abcd")));
	EXPECT_TRUE(Text.LeftChop(10).IsEmpty());
	EXPECT_TRUE(Text.RightChop(2).Equals(TEXT("cdef")));
	EXPECT_TRUE(Text.RightChop(10).IsEmpty());
	EXPECT_TRUE(Text.RightChop(-3).Equals(TEXT("abcdef")));
}

TEST(StringTests, ReplaceChangesEveryOccurrence)
{
	const FString Text(TEXT("a-b-A-c"));
	EXPECT_TRUE(Text.Replace(TEXT("a"), TEXT("xx")).Equals(TEXT("xx-b-xx-c")));
	EXPECT_TRUE(Text.Replace(TEXT("a"), TEXT("xx"), ESearchCase::CaseSensitive).Equals(TEXT("xx-b-A-c")));
	EXPECT_TRUE(Text.Replace(TEXT("-"), TEXT("")).Equals(TEXT("abAc")));
	EXPECT_TRUE(Text.Replace(TEXT(""), TEXT("z")).Equals(Text));
	// The replacement is not searched again.
	EXPECT_TRUE(FString(TEXT("aa")).Replace(TEXT("a"), TEXT("aa")).Equals(TEXT("aaaa")));

	FString Inline(TEXT("1,2,3"));
	EXPECT_EQ(Inline.ReplaceInline(TEXT(","), TEXT(";")), 2);
	EXPECT_TRUE(Inline.Equals(TEXT("1;2;3")));
	EXPECT_EQ(Inline.ReplaceInline(TEXT("x"), TEXT("y")), 0);
	Inline.ReplaceCharInline(TEXT(';'), TEXT('|'));
	EXPECT_TRUE(Inline.Equals(TEXT("1|2|3")));
}

TEST(StringTests, SplitAtFirstOrLastOccurrence)
{
	const FString Text(TEXT("key=value=more"));
	FString Left, Right;
	ASSERT_TRUE(Text.Split(TEXT("="), &Left, &Right));
	EXPECT_TRUE(Left.Equals(TEXT("key")));
	EXPECT_TRUE(Right.Equals(TEXT("value=more")));
	ASSERT_TRUE(Text.Split(TEXT("="), &Left, &Right, ESearchCase::IgnoreCase, ESearchDir::FromEnd));
	EXPECT_TRUE(Left.Equals(TEXT("key=value")));
	EXPECT_TRUE(Right.Equals(TEXT("more")));
	ASSERT_TRUE(Text.Split(TEXT("VALUE"), nullptr, &Right));
	EXPECT_TRUE(Right.Equals(TEXT("=more")));
}

TEST(StringTests, SplitIntoItselfWorks)
{
	FString Text(TEXT("left:right"));
	FString Right;
	ASSERT_TRUE(Text.Split(TEXT(":"), &Text, &Right));
	EXPECT_TRUE(Text.Equals(TEXT("left")));
	EXPECT_TRUE(Right.Equals(TEXT("right")));
}

TEST(StringTests, ParseIntoArrayCullsEmptyPiecesByDefault)
{
	TArray<FString> Parts;
	EXPECT_EQ(FString(TEXT("a,,b,")).ParseIntoArray(Parts, TEXT(",")), 2);
	ASSERT_EQ(Parts.Num(), 2);
	EXPECT_TRUE(Parts[0].Equals(TEXT("a")));
	EXPECT_TRUE(Parts[1].Equals(TEXT("b")));

	EXPECT_EQ(FString(TEXT("a,,b,")).ParseIntoArray(Parts, TEXT(","), false), 4);
	ASSERT_EQ(Parts.Num(), 4);
	EXPECT_TRUE(Parts[1].IsEmpty());
	EXPECT_TRUE(Parts[3].IsEmpty());

	EXPECT_EQ(FString(TEXT("x::y")).ParseIntoArray(Parts, TEXT("::")), 2);
	EXPECT_TRUE(Parts[1].Equals(TEXT("y")));
}

TEST(StringTests, ParseIntoArrayDelimiterIsCaseSensitive)
{
	TArray<FString> Parts;
	EXPECT_EQ(FString(TEXT("aXbxc")).ParseIntoArray(Parts, TEXT("x")), 2);
	EXPECT_TRUE(Parts[0].Equals(TEXT("aXb")));
}

TEST(StringTests, ParseIntoArrayResetsTheOutput)
{
	TArray<FString> Parts = {FString(TEXT("old"))};
	EXPECT_EQ(FString().ParseIntoArray(Parts, TEXT(",")), 0);
	EXPECT_EQ(Parts.Num(), 0);
	Parts.Add(FString(TEXT("old")));
	EXPECT_EQ(FString(TEXT("a,b")).ParseIntoArray(Parts, TEXT("")), 0);
	EXPECT_EQ(Parts.Num(), 0);
}

TEST(StringTests, ParseIntoArrayLinesHandlesAllLineEnds)
{
	TArray<FString> Lines;
	EXPECT_EQ(FString(TEXT("one\r\ntwo\nthree\rfour")).ParseIntoArrayLines(Lines), 4);
	ASSERT_EQ(Lines.Num(), 4);
	EXPECT_TRUE(Lines[0].Equals(TEXT("one")));
	EXPECT_TRUE(Lines[3].Equals(TEXT("four")));
	EXPECT_EQ(FString(TEXT("a\n\nb")).ParseIntoArrayLines(Lines, false), 3);
}

TEST(StringTests, TrimmingRemovesWhiteSpace)
{
	const FString Text(TEXT(" \t\r\n body text \n\t"));
	EXPECT_TRUE(Text.TrimStart().Equals(TEXT("body text \n\t")));
	EXPECT_TRUE(Text.TrimEnd().Equals(TEXT(" \t\r\n body text")));
	EXPECT_TRUE(Text.TrimStartAndEnd().Equals(TEXT("body text")));

	FString Inline = Text;
	Inline.TrimStartInline();
	EXPECT_TRUE(Inline.Equals(TEXT("body text \n\t")));
	Inline.TrimEndInline();
	EXPECT_TRUE(Inline.Equals(TEXT("body text")));
	FString Both = Text;
	Both.TrimStartAndEndInline();
	EXPECT_TRUE(Both.Equals(TEXT("body text")));
}

TEST(StringTests, TrimmingKnowsUnicodeSpaces)
{
	const TCHAR Ideographic[] = {0x3000, TEXT('x'), 0x00A0, 0};
	EXPECT_TRUE(FString(Ideographic).TrimStartAndEnd().Equals(TEXT("x")));
}

TEST(StringTests, TrimmingOnlySpacesGivesEmpty)
{
	FString Spaces(TEXT("   "));
	Spaces.TrimStartAndEndInline();
	EXPECT_TRUE(Spaces.IsEmpty());
	EXPECT_EQ(Spaces.GetCharArray().Num(), 0);
	EXPECT_TRUE(FString().TrimStartAndEnd().IsEmpty());
}

TEST(StringTests, TrimQuotesRemovesOneQuoteAtEachEnd)
{
	bool bRemoved = false;
	EXPECT_TRUE(FString(TEXT("\"quoted\"")).TrimQuotes(&bRemoved).Equals(TEXT("quoted")));
	EXPECT_TRUE(bRemoved);
	EXPECT_TRUE(FString(TEXT("plain")).TrimQuotes(&bRemoved).Equals(TEXT("plain")));
	EXPECT_FALSE(bRemoved);
}

TEST(StringTests, FromIntFormatsDecimal)
{
	EXPECT_TRUE(FString::FromInt(0).Equals(TEXT("0")));
	EXPECT_TRUE(FString::FromInt(-123).Equals(TEXT("-123")));
	EXPECT_TRUE(FString::FromInt(MAX_int32).Equals(TEXT("2147483647")));
	EXPECT_TRUE(FString::FromInt(MIN_int32).Equals(TEXT("-2147483648")));
}

TEST(StringTests, SanitizeFloatKeepsOneFractionalDigit)
{
	EXPECT_TRUE(FString::SanitizeFloat(60.0).Equals(TEXT("60.0")));
	EXPECT_TRUE(FString::SanitizeFloat(0.5).Equals(TEXT("0.5")));
	EXPECT_TRUE(FString::SanitizeFloat(0.0).Equals(TEXT("0.0")));
	EXPECT_TRUE(FString::SanitizeFloat(-2.25).Equals(TEXT("-2.25")));
	EXPECT_TRUE(FString::SanitizeFloat(123.456).Equals(TEXT("123.456")));
	EXPECT_TRUE(FString::SanitizeFloat(0.1f).Equals(TEXT("0.1")));
}

TEST(StringTests, SanitizeFloatWorksFromSixDecimals)
{
	// The number is printed with "%f" first, so digits past the sixth decimal are rounded away.
	EXPECT_TRUE(FString::SanitizeFloat(1e-5).Equals(TEXT("0.00001")));
	EXPECT_TRUE(FString::SanitizeFloat(1e-7).Equals(TEXT("0.0")));
	EXPECT_TRUE(FString::SanitizeFloat(-1e-7).Equals(TEXT("-0.0")));
	EXPECT_TRUE(FString::SanitizeFloat(0.1234567).Equals(TEXT("0.123457")));
	EXPECT_TRUE(FString::SanitizeFloat(1e20).Equals(TEXT("100000000000000000000.0")));
	EXPECT_TRUE(FString::SanitizeFloat(1234567.0).Equals(TEXT("1234567.0")));
}

TEST(StringTests, SanitizeFloatDropsTheSignOfNegativeZero)
{
	EXPECT_TRUE(FString::SanitizeFloat(-0.0).Equals(TEXT("0.0")));
}

TEST(StringTests, SanitizeFloatPadsToTheRequestedDigits)
{
	EXPECT_TRUE(FString::SanitizeFloat(60.0, 0).Equals(TEXT("60")));
	EXPECT_TRUE(FString::SanitizeFloat(1.5, 3).Equals(TEXT("1.500")));
	EXPECT_TRUE(FString::SanitizeFloat(1.25, 1).Equals(TEXT("1.25")));
	EXPECT_TRUE(FString::SanitizeFloat(0.0, 0).Equals(TEXT("0")));
}

TEST(StringTests, SanitizeFloatLeavesNonNumbersAsPrinted)
{
	EXPECT_TRUE(FString::SanitizeFloat(std::numeric_limits<double>::infinity()).Equals(TEXT("inf")));
	EXPECT_TRUE(FString::SanitizeFloat(-std::numeric_limits<double>::infinity()).Equals(TEXT("-inf")));
	EXPECT_TRUE(FString::SanitizeFloat(std::numeric_limits<double>::quiet_NaN()).Equals(TEXT("nan")));
}

TEST(StringTests, IsNumericAcceptsPlainDecimals)
{
	EXPECT_TRUE(FString(TEXT("12")).IsNumeric());
	EXPECT_TRUE(FString(TEXT("-1.5")).IsNumeric());
	EXPECT_TRUE(FString(TEXT("+.5")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("1e5")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("1.2.3")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("-")).IsNumeric());
}

TEST(StringTests, IndexingReadsAndWritesUnits)
{
	FString Text(TEXT("abc"));
	Text[1] = TEXT('X');
	EXPECT_TRUE(Text.Equals(TEXT("aXc")));
	EXPECT_EQ(Text[2], TEXT('c'));
	EXPECT_TRUE(Text.IsValidIndex(2));
	EXPECT_FALSE(Text.IsValidIndex(3));
}

TEST(StringTests, FindCharForwardAndBackward)
{
	const FString Path(TEXT("a/b/c.txt"));
	int32 Index = 0;
	EXPECT_TRUE(Path.FindChar(TEXT('/'), Index));
	EXPECT_EQ(Index, 1);
	EXPECT_TRUE(Path.FindLastChar(TEXT('/'), Index));
	EXPECT_EQ(Index, 3);
	EXPECT_FALSE(Path.FindChar(TEXT('#'), Index));
	EXPECT_EQ(Index, INDEX_NONE);
}

TEST(StringTests, RemoveAndInsert)
{
	FString Text(TEXT("abcdef"));
	Text.RemoveAt(1, 2);
	EXPECT_TRUE(Text.Equals(TEXT("adef")));
	Text.InsertAt(1, FString(TEXT("XY")));
	EXPECT_TRUE(Text.Equals(TEXT("aXYdef")));
	Text.InsertAt(Text.Len(), TEXT('!'));
	EXPECT_TRUE(Text.Equals(TEXT("aXYdef!")));
	Text.RemoveAt(0, Text.Len());
	EXPECT_TRUE(Text.IsEmpty());
}

TEST(StringTests, JoinPutsTheSeparatorBetween)
{
	const TArray<FString> Names = {FString(TEXT("Hips")), FString(TEXT("Spine")), FString(TEXT("Neck"))};
	EXPECT_TRUE(FString::Join(Names, TEXT(", ")).Equals(TEXT("Hips, Spine, Neck")));
	EXPECT_TRUE(FString::Join(TArray<FString>(), TEXT(",")).IsEmpty());
}

TEST(StringTests, ChrNAndPadding)
{
	EXPECT_TRUE(FString::ChrN(3, TEXT('-')).Equals(TEXT("---")));
	EXPECT_TRUE(FString::ChrN(0, TEXT('-')).IsEmpty());
	EXPECT_TRUE(FString(TEXT("7")).LeftPad(3).Equals(TEXT("  7")));
	EXPECT_TRUE(FString(TEXT("7")).RightPad(3).Equals(TEXT("7  ")));
	EXPECT_TRUE(FString(TEXT("abc")).Reverse().Equals(TEXT("cba")));
}

TEST(StringTests, CopiesAreIndependent)
{
	FString A(TEXT("one"));
	FString B = A;
	B[0] = TEXT('O');
	EXPECT_TRUE(A.Equals(TEXT("one")));
	FString C = MoveTemp(B);
	EXPECT_TRUE(C.Equals(TEXT("One")));
}

TEST(StringTests, RangeForVisitsEveryUnit)
{
	FString Collected;
	for (TCHAR C : FString(TEXT("xyz")))
	{
		Collected.AppendChar(FChar::ToUpper(C));
	}
	EXPECT_TRUE(Collected.Equals(TEXT("XYZ")));
	int32 Count = 0;
	for (TCHAR C : FString())
	{
		Count += int32(C);
	}
	EXPECT_EQ(Count, 0);
}

TEST(StringTests, EmptyAndReserveKeepCapacityAsAsked)
{
	FString Text;
	Text.Reserve(100);
	EXPECT_GE(Text.GetCharArray().Max(), 101);
	Text = TEXT("abc");
	Text.Empty();
	EXPECT_TRUE(Text.IsEmpty());
	EXPECT_EQ(Text.GetCharArray().Max(), 0);
	Text = TEXT("abc");
	Text.Reset();
	EXPECT_TRUE(Text.IsEmpty());
	EXPECT_GE(Text.GetCharArray().Max(), 4);
}
