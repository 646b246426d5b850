#include "Misc/FileHelper.h"

#include "Containers/StringConv.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#define EXPECT_TEXT_EQ(A, B) EXPECT_EQ(std::string(TCHAR_TO_UTF8(*FString(A))), std::string(TCHAR_TO_UTF8(*FString(B))))

namespace
{
std::string ReadBytes(const char* Path)
{
	std::ifstream File(Path, std::ios::binary);
	return std::string(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
}

void WriteBytes(const char* Path, const std::string& Bytes)
{
	std::ofstream File(Path, std::ios::binary | std::ios::trunc);
	File << Bytes;
}
} // namespace

TEST(FFileHelperSave, AsciiTextIsSavedAsPlainBytes)
{
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("hello\nworld"), TEXT("save_ascii.txt")));
	EXPECT_EQ(ReadBytes("save_ascii.txt"), std::string("hello\nworld"));
}

TEST(FFileHelperSave, NonAsciiTextIsSavedAsUtf16WithByteOrderMark)
{
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("a年"), TEXT("save_wide.txt")));
	EXPECT_EQ(ReadBytes("save_wide.txt"),
		std::string("\xFF\xFE"
					"a\x00"
					"\x74\x5E",
			6));
}

TEST(FFileHelperSave, LatinCharactersAboveAsciiAreNotAnsi)
{
	// é (U+00E9) would be ambiguous as a single byte, so automatic detection keeps all of UTF-16.
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("\u00E9"), TEXT("save_latin.txt")));
	EXPECT_EQ(ReadBytes("save_latin.txt"), std::string("\xFF\xFE\xE9\x00", 4));
}

TEST(FFileHelperSave, ForcedEncodings)
{
	ASSERT_TRUE(
		FFileHelper::SaveStringToFile(TEXT("a年"), TEXT("save_utf8.txt"), FFileHelper::EEncodingOptions::ForceUTF8));
	EXPECT_EQ(ReadBytes("save_utf8.txt"),
		std::string("\xEF\xBB\xBF"
					"a\xE5\xB9\xB4"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(
		TEXT("a年"), TEXT("save_utf8nobom.txt"), FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM));
	EXPECT_EQ(ReadBytes("save_utf8nobom.txt"), std::string("a\xE5\xB9\xB4"));
	ASSERT_TRUE(
		FFileHelper::SaveStringToFile(TEXT("a年"), TEXT("save_ansi.txt"), FFileHelper::EEncodingOptions::ForceAnsi));
	EXPECT_EQ(ReadBytes("save_ansi.txt"), std::string("a?"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(
		TEXT("ab"), TEXT("save_unicode.txt"), FFileHelper::EEncodingOptions::ForceUnicode));
	EXPECT_EQ(ReadBytes("save_unicode.txt"),
		std::string("\xFF\xFE"
					"a\x00"
					"b\x00",
			6));
}

TEST(FFileHelperSave, ReplacesAnExistingFile)
{
	WriteBytes("save_replace.txt", "a much longer old content");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("new"), TEXT("save_replace.txt")));
	EXPECT_EQ(ReadBytes("save_replace.txt"), std::string("new"));
}

TEST(FFileHelperSave, CreatesMissingDirectories)
{
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("deep"), TEXT("save_tree/a/b/c.txt")));
	EXPECT_EQ(ReadBytes("save_tree/a/b/c.txt"), std::string("deep"));
}

TEST(FFileHelperSave, EmptyTextMakesAnEmptyFile)
{
	WriteBytes("save_empty.txt", "old");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(), TEXT("save_empty.txt")));
	EXPECT_EQ(ReadBytes("save_empty.txt"), std::string());
}

TEST(FFileHelperLoad, Utf8WithoutByteOrderMarkIsTheDefault)
{
	WriteBytes("load_utf8.txt", "a\xE5\xB9\xB4");
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, TEXT("load_utf8.txt")));
	EXPECT_TEXT_EQ(Text, TEXT("a年"));
}

TEST(FFileHelperLoad, ByteOrderMarksSelectTheEncoding)
{
	FString Text;
	WriteBytes("load_bom8.txt",
		"\xEF\xBB\xBF"
		"b\xE5\xB9\xB4");
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, TEXT("load_bom8.txt")));
	EXPECT_TEXT_EQ(Text, TEXT("b年"));

	WriteBytes("load_le.txt",
		std::string("\xFF\xFE"
					"c\x00"
					"\x74\x5E",
			6));
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, TEXT("load_le.txt")));
	EXPECT_TEXT_EQ(Text, TEXT("c年"));

	WriteBytes("load_be.txt",
		std::string("\xFE\xFF"
					"\x00"
					"d"
					"\x5E\x74",
			6));
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, TEXT("load_be.txt")));
	EXPECT_TEXT_EQ(Text, TEXT("d年"));
}

TEST(FFileHelperLoad, SavedTextComesBackUnchanged)
{
	const FString Original = TEXT("line one\nzweite Zeile \u00FC\n第三行");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(Original, TEXT("roundtrip.txt")));
	FString Loaded;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, TEXT("roundtrip.txt")));
	EXPECT_TEXT_EQ(Loaded, Original);
}

TEST(FFileHelperLoad, BytesComeBackAsTheyAre)
{
	WriteBytes("load_bytes.bin", std::string("\x00\x01\xFF", 3));
	TArray<uint8> Bytes;
	ASSERT_TRUE(FFileHelper::LoadFileToArray(Bytes, TEXT("load_bytes.bin")));
	ASSERT_EQ(Bytes.Num(), 3);
	EXPECT_EQ(Bytes[0], 0x00);
	EXPECT_EQ(Bytes[1], 0x01);
	EXPECT_EQ(Bytes[2], 0xFF);
}
