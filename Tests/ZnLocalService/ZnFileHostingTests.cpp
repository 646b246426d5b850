// Hosted files: what HostFile and generation put in the folder is served byte for byte, and
// nothing else is: names that try to leave the folder, hidden names and sub-paths are refused.
// Requests beyond the size bounds are refused before they are handled.
#include "ZnServiceTestSupport.h"

#include "ZnServiceCodes.h"
#include "ZnServiceHandler.h"

#include <filesystem>
#include <fstream>

using namespace ZnServiceTest;

namespace
{
class ZnFileHosting : public FServiceTest
{
protected:
	void SetUp() override
	{
		Root = std::filesystem::absolute("hosting_" + std::to_string(getpid()) + "_" +
			::testing::UnitTest::GetInstance()->current_test_info()->name());
		std::filesystem::remove_all(Root);
		std::filesystem::create_directories(Root / "hosted");
		// A secret beside the folder, which no request may reach.
		std::ofstream(Root / "secret.txt") << "keep out";
		Config.Folder = (Root / "hosted").string();
		Config.MaxBodyBytes = 4096;
		StartService();
	}

	void TearDown() override
	{
		FServiceTest::TearDown();
		std::filesystem::remove_all(Root);
	}

	std::filesystem::path Root;
};
} // namespace

TEST_F(ZnFileHosting, HostedBytesComeBackExactly)
{
	std::vector<uint8_t> Bytes;
	for (int Index = 0; Index < 70000; ++Index)
	{
		Bytes.push_back(uint8_t((Index * 31) ^ (Index >> 8)));
	}
	const std::string Url = Service->HostFile("clip_1.bin", Bytes);
	EXPECT_EQ(Url, Service->BaseUrl() + "/files/clip_1.bin");
	const auto Answer = Get("/files/clip_1.bin");
	ASSERT_TRUE(Answer);
	EXPECT_EQ(Answer->status, 200);
	EXPECT_EQ(Answer->body, std::string(Bytes.begin(), Bytes.end()));
	EXPECT_EQ(Answer->get_header_value("Content-Type"), "application/octet-stream");
	// The file is in the configured folder, and a second HostFile replaces it.
	EXPECT_EQ(std::filesystem::file_size(Root / "hosted" / "clip_1.bin"), Bytes.size());
	Service->HostFile("clip_1.bin", {'x'});
	EXPECT_EQ(Get("/files/clip_1.bin")->body, "x");
	EXPECT_EQ(Get("/files/clip_1.json")->status, 404);
}

TEST_F(ZnFileHosting, HostFileTakesOnlyPlainNames)
{
	for (const std::string& Name : std::vector<std::string>{"", ".hidden", "../escape.wav", "a/b.wav", "a\\b.wav", "..",
			 "name with space", std::string(129, 'a'), std::string("nul\0x", 5), "é.wav"})
	{
		EXPECT_EQ(Service->HostFile(Name, {'x'}), "") << Name;
	}
	EXPECT_FALSE(std::filesystem::exists(Root / "escape.wav"));
	EXPECT_NE(Service->HostFile(std::string(128, 'a'), {'x'}), "");
	EXPECT_TRUE(FZnServiceHandler::IsPlainFileName("A-b_c.9"));
	EXPECT_FALSE(FZnServiceHandler::IsPlainFileName(".A"));
}

TEST_F(ZnFileHosting, PathEscapesAreRefused)
{
	// Raw targets, sent as written (the client must not tidy them).
	for (const std::string& Target : std::vector<std::string>{"/files/../secret.txt", "/files/..%2fsecret.txt",
			 "/files/%2e%2e%2fsecret.txt", "/files/%2E%2E/secret.txt", "/files/hosted/../../secret.txt",
			 "/files/.hidden", "/files/..", "/files/a%00.wav", "/files/%2fetc%2fpasswd", "/files//etc/passwd"})
	{
		SCOPED_TRACE(Target);
		const auto Answer = Get(Target);
		ASSERT_TRUE(Answer);
		EXPECT_TRUE(Answer->status == 400 || Answer->status == 404) << Answer->status;
		EXPECT_EQ(Answer->body.find("keep out"), std::string::npos);
		const Json Envelope = ParseJson(Answer->body);
		EXPECT_TRUE(Envelope["code"] == int(EZnServiceCode::BadFileName) ||
			Envelope["code"] == int(EZnServiceCode::UnknownPath))
			<< Answer->body;
	}
	ExpectRefusal(Get("/files/..%2fsecret.txt"), 400, int(EZnServiceCode::BadFileName), "not a plain file name");
	ExpectRefusal(Get("/files/"), 400, int(EZnServiceCode::BadFileName), "not a plain file name: \"\"");
	ExpectRefusal(Get("/files/none.wav"), 404, int(EZnServiceCode::FileNotFound), "no hosted file \"none.wav\"");
}

TEST_F(ZnFileHosting, AFolderInsideIsNoFile)
{
	std::filesystem::create_directories(Root / "hosted" / "sub");
	ExpectRefusal(Get("/files/sub"), 404, int(EZnServiceCode::FileNotFound), "\"sub\"");
}

TEST_F(ZnFileHosting, OversizeBodiesAreRefused)
{
	const std::string Token = Service->IssueToken("demo");
	const std::string Large(4097, ' ');
	ExpectRefusal(Post("/v3.0/api/textBroadcastMotion", Large, {{"access_token", Token}}), 413,
		int(EZnServiceCode::RequestTooLarge), "larger than the 4096 bytes accepted");
	// One byte less is read (and refused only for what it says).
	ExpectRefusal(Post("/v3.0/api/textBroadcastMotion", std::string(4096, ' '), {{"access_token", Token}}), 400,
		int(EZnServiceCode::MalformedBody), "not valid JSON");
	bool bLogged = false;
	for (const std::string& Line : Log())
	{
		bLogged = bLogged || Line.find("-> 413 code 10013") != std::string::npos;
	}
	EXPECT_TRUE(bLogged);
}

TEST_F(ZnFileHosting, OversizeUrlsAndHeadersAreRefused)
{
	const auto LongUrl = Get("/users/getAppToken?appid=" + std::string(9000, 'a'));
	ASSERT_TRUE(LongUrl);
	EXPECT_EQ(LongUrl->status, 414);
	EXPECT_EQ(ParseJson(LongUrl->body)["code"], int(EZnServiceCode::RequestTooLarge));

	const auto LongHeader = Get("/users/getAppToken", {{"X-Filler", std::string(9000, 'b')}});
	// The library gives up on the request line or header; either way no answer is a success.
	if (LongHeader)
	{
		EXPECT_GE(LongHeader->status, 400);
	}
	// And the service still answers afterwards.
	EXPECT_EQ(Get("/users/getAppToken")->status, 200);
}
