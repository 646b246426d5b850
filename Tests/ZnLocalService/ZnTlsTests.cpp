// HTTPS: a certificate made at test time by the openssl program; a client that trusts it gets
// answers, one that verifies against the system's store alone is refused.
#include "ZnServiceTestSupport.h"

#include <curl/curl.h>

#include <cstdlib>
#include <filesystem>

using namespace ZnServiceTest;

namespace
{
class ZnTls : public FServiceTest
{
protected:
	void SetUp() override
	{
		Folder = std::filesystem::absolute(
			"tls_" + std::to_string(getpid()) + "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
		std::filesystem::create_directories(Folder);
		Cert = (Folder / "cert.pem").string();
		Key = (Folder / "key.pem").string();
		const std::string Command = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 1"
									" -subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout '" +
			Key + "' -out '" + Cert + "' >/dev/null 2>&1";
		ASSERT_EQ(std::system(Command.c_str()), 0) << "openssl could not make a certificate";
	}

	void TearDown() override
	{
		FServiceTest::TearDown();
		std::filesystem::remove_all(Folder);
	}

	std::filesystem::path Folder;
	std::string Cert;
	std::string Key;
};

long CurlStatus(const std::string& Url, const std::string& CaFile, CURLcode& Result)
{
	CURL* Curl = curl_easy_init();
	curl_easy_setopt(Curl, CURLOPT_URL, Url.c_str());
	curl_easy_setopt(
		Curl, CURLOPT_WRITEFUNCTION, +[](char*, size_t Size, size_t Count, void*) { return Size * Count; });
	curl_easy_setopt(Curl, CURLOPT_TIMEOUT, 20L);
	if (!CaFile.empty())
	{
		curl_easy_setopt(Curl, CURLOPT_CAINFO, CaFile.c_str());
	}
	Result = curl_easy_perform(Curl);
	long Status = 0;
	curl_easy_getinfo(Curl, CURLINFO_RESPONSE_CODE, &Status);
	curl_easy_cleanup(Curl);
	return Status;
}
} // namespace

TEST_F(ZnTls, TrustedCertificateIsAcceptedAndUntrustedRefused)
{
	Config.TlsCertFile = Cert;
	Config.TlsKeyFile = Key;
	StartService();
	ASSERT_EQ(Service->BaseUrl().rfind("https://127.0.0.1:", 0), 0u) << Service->BaseUrl();

	httplib::SSLClient Trusting("127.0.0.1", Service->Port());
	Trusting.set_ca_cert_path(Cert.c_str());
	Trusting.enable_server_certificate_verification(true);
	const auto Answer = Trusting.Get(TokenQueryNow("demo", "demo-secret").c_str());
	ASSERT_TRUE(Answer) << httplib::to_string(Answer.error());
	EXPECT_EQ(Answer->status, 200);
	EXPECT_EQ(ParseJson(Answer->body)["code"], 0);

	CURLcode Result;
	EXPECT_EQ(CurlStatus(Service->BaseUrl() + "/files/none", Cert, Result), 404);
	EXPECT_EQ(Result, CURLE_OK);
	EXPECT_EQ(CurlStatus(Service->BaseUrl() + "/files/none", "", Result), 0);
	EXPECT_EQ(Result, CURLE_PEER_FAILED_VERIFICATION);

	// Hosted files are named with the https base.
	EXPECT_EQ(Service->HostFile("a.wav", {'x'}), Service->BaseUrl() + "/files/a.wav");
}

TEST_F(ZnTls, FaultsWorkOverTls)
{
	Config.TlsCertFile = Cert;
	Config.TlsKeyFile = Key;
	StartService();
	CURLcode Result;
	EXPECT_EQ(CurlStatus(FZnLocalService::WithFault(Service->BaseUrl() + "/files/x", "drop"), Cert, Result), 0);
	EXPECT_NE(Result, CURLE_OK);
	EXPECT_EQ(CurlStatus(FZnLocalService::WithFault(Service->BaseUrl() + "/files/x", "status=503"), Cert, Result), 503);
}

TEST_F(ZnTls, MissingOrMismatchedFilesStopStart)
{
	const auto StartWith = [](const std::string& CertFile, const std::string& KeyFile)
	{
		FZnLocalServiceConfig Config;
		Config.TlsCertFile = CertFile;
		Config.TlsKeyFile = KeyFile;
		FZnLocalService Service(Config);
		std::string Error;
		EXPECT_FALSE(Service.Start(Error));
		return Error;
	};
	EXPECT_NE(StartWith(Cert, "").find("both a certificate and a key"), std::string::npos);
	EXPECT_NE(StartWith((Folder / "none.pem").string(), Key).find("cannot read the TLS file"), std::string::npos);
	// The key in place of the certificate is no certificate.
	EXPECT_NE(StartWith(Key, Key).find("cannot be loaded"), std::string::npos);
}
