// Every seed of the fuzz corpora reaches the decoders: through its own target it decodes to a
// non-empty record, and read in the other text mode it is refused. A seed the target rejects at
// once (a wrong mode byte, a shape the decoder does not read) would leave the fuzzer searching
// from nothing.
#include "../Fuzz/ZnFuzzSeedSet.h"
#include "../Fuzz/ZnFuzzTargetTable.h"

#include <gtest/gtest.h>

#include <set>

TEST(FuzzSeedTests, EverySeedDecodesToANonEmptyRecordThroughItsTarget)
{
	const std::vector<ZnFuzzSeedSet::FSeed> Seeds = ZnFuzzSeedSet::Make();
	std::set<std::string> Seeded;
	for (const ZnFuzzSeedSet::FSeed& Seed : Seeds)
	{
		SCOPED_TRACE(Seed.Target + "/" + Seed.Name);
		const auto Target = ZnFuzzTargetTable::Targets().find(Seed.Target);
		ASSERT_NE(Target, ZnFuzzTargetTable::Targets().end());
		const int32 Decoded = Target->second(reinterpret_cast<const uint8_t*>(Seed.Bytes.data()), Seed.Bytes.size());
		EXPECT_GT(Decoded, 0);
		Seeded.insert(Seed.Target);
	}
	// Every decoder and reader target has seeds; the service-message targets start from nothing.
	const std::set<std::string> Expected = {"BodyJsonFuzzer", "BodyJsonV2Fuzzer", "FaceJsonFuzzer", "FaceJsonV2Fuzzer",
		"JsonReaderFuzzer", "JsonWindowReaderFuzzer", "TightNumbersFuzzer"};
	EXPECT_EQ(Seeded, Expected);
}

TEST(FuzzSeedTests, SeedsReadAsRawUtf16AreRefused)
{
	for (const ZnFuzzSeedSet::FSeed& Seed : ZnFuzzSeedSet::Make())
	{
		const ZnFuzzInput::ELayout Layout = ZnFuzzInput::LayoutOf(Seed.Target);
		if (Layout == ZnFuzzInput::ELayout::RawBytes)
		{
			continue;
		}
		SCOPED_TRACE(Seed.Target + "/" + Seed.Name);
		std::string Bytes = Seed.Bytes;
		const size_t ModeAt = Layout == ZnFuzzInput::ELayout::WindowThenModeThenText ? 1 : 0;
		ASSERT_FALSE(ZnFuzzInput::IsRawUtf16(uint8_t(Bytes[ModeAt])));
		Bytes[ModeAt] = char(ZnFuzzInput::RawUtf16);
		// Pairs of ASCII bytes make code units far outside ASCII: no JSON at all.
		EXPECT_EQ(
			ZnFuzzTargetTable::Targets().at(Seed.Target)(reinterpret_cast<const uint8_t*>(Bytes.data()), Bytes.size()),
			0);
	}
}
