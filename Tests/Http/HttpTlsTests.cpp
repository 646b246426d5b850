// HTTPS: certificates are verified against the system's store, or against a configured CA file.
#include "ZnHttpTestServers.h"

#include <gtest/gtest.h>
#include <httplib.h>

namespace
{
void HelloRoute(httplib::Server& Server)
{
	Server.Get("/hello",
		[](const httplib::Request&, httplib::Response& Response)
		{ Response.set_content("secure hello", "text/plain"); });
}

struct FTlsTest : ::testing::Test
{
	static FZnTestCertificates Certificates;
	FZnScopedTransportSettings Restore;

	static void SetUpTestSuite() { Certificates = FZnTestCertificates::Make("HttpTlsCertificates"); }
	void SetUp() override { ASSERT_TRUE(Certificates.bMade) << "the openssl program made no certificate"; }
};
FZnTestCertificates FTlsTest::Certificates;
} // namespace

TEST_F(FTlsTest, UnknownAuthorityIsRefused)
{
	FZnTestHttpServer Server(HelloRoute, Certificates.CertFile, Certificates.KeyFile);
	const FZnRecordedCompletion Recorded = ZnFetch(Server.Url("/hello"));
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 0);
	EXPECT_EQ(Recorded.Body, "");
}

TEST_F(FTlsTest, ConfiguredAuthorityIsTrusted)
{
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.CaFile = UTF8_TO_TCHAR(Certificates.CaFile.c_str());
	FHttpModule::Get().SetTransportSettings(Settings);
	FZnTestHttpServer Server(HelloRoute, Certificates.CertFile, Certificates.KeyFile);
	const FZnRecordedCompletion Recorded = ZnFetch(Server.Url("/hello"));
	EXPECT_TRUE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Recorded.Body, "secure hello");
}

TEST_F(FTlsTest, HostNameIsVerifiedToo)
{
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.CaFile = UTF8_TO_TCHAR(Certificates.CaFile.c_str());
	FHttpModule::Get().SetTransportSettings(Settings);
	FZnTestHttpServer Server(HelloRoute, Certificates.CertFile, Certificates.KeyFile);
	// The same server reached by the name "localhost", which its certificate does not carry.
	std::string Url = Server.Url("/hello");
	Url.replace(Url.find("127.0.0.1"), 9, "localhost");
	const FZnRecordedCompletion Recorded = ZnFetch(Url);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Body, "");
}
