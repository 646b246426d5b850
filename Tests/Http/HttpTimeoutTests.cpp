// Timeouts: the request's own limit, and the defaults that keep a dead peer from hanging a
// request while never cutting a download that keeps moving.
#include "ZnHttpTestServers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sys/socket.h>

namespace
{
// Reads the request and then says nothing until the server stops.
void Stall(int Socket, const std::atomic<bool>& Stopping)
{
	FZnRawTestServer::ReadRequestHead(Socket);
	char Byte;
	recv(Socket, &Byte, 1, 0);
}

double SecondsSince(std::chrono::steady_clock::time_point Start)
{
	return std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
}
} // namespace

TEST(HttpTimeoutTests, RequestTimeoutEndsAStalledRequestWithCodeZero)
{
	FZnRawTestServer Server(Stall);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/stall"));
	Request->SetTimeout(0.5f);
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }, 30.0));
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_TRUE(Recorded.bResponseValid);
	EXPECT_EQ(Recorded.Code, 0);
	// libcurl counts the limit in whole milliseconds on its own clock reading, so it may end the
	// request a fraction of a millisecond before ours reads 0.5 s; well before the 10 s default.
	EXPECT_GE(Request->GetElapsedTime(), 0.49f);
	EXPECT_LT(Request->GetElapsedTime(), 5.0f);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed_ConnectionError);
}

TEST(HttpTimeoutTests, WithoutTimeoutAStalledServerFailsWithinTheDefault)
{
	const FHttpTransportSettings Defaults;
	ASSERT_EQ(Defaults.InactivityTimeoutSeconds, 10);
	FZnRawTestServer Server(Stall);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/stall"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	const auto Start = std::chrono::steady_clock::now();
	ASSERT_TRUE(Request->ProcessRequest());
	// Generous slack over the 10 s default for a loaded machine, far below "minutes".
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }, 25.0));
	EXPECT_GE(SecondsSince(Start), 9.0);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 0);
}

TEST(HttpTimeoutTests, SlowDownloadThatKeepsMovingIsNotCut)
{
	FZnScopedTransportSettings Restore;
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.InactivityTimeoutSeconds = 1;
	FHttpModule::Get().SetTransportSettings(Settings);
	const int Pieces = 8;
	FZnRawTestServer Server(
		[](int Socket, const std::atomic<bool>& Stopping)
		{
			FZnRawTestServer::ReadRequestHead(Socket);
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
			// 8 bytes over about 2.4 s: longer than the inactivity limit, but never idle that long.
			for (int Piece = 0; Piece < Pieces && !Stopping; ++Piece)
			{
				std::this_thread::sleep_for(std::chrono::milliseconds(300));
				FZnRawTestServer::SendAll(Socket, std::string(1, char('a' + Piece)));
			}
		});
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/slow"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }, 30.0));
	EXPECT_TRUE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Body, "abcdefgh");
	EXPECT_GT(Request->GetElapsedTime(), 1.0f);
}

TEST(HttpTimeoutTests, InactivityLimitEndsAStallAfterPartOfTheBody)
{
	FZnScopedTransportSettings Restore;
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.InactivityTimeoutSeconds = 1;
	FHttpModule::Get().SetTransportSettings(Settings);
	FZnRawTestServer Server(
		[](int Socket, const std::atomic<bool>&)
		{
			FZnRawTestServer::ReadRequestHead(Socket);
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\nabc");
			char Byte;
			recv(Socket, &Byte, 1, 0);
		});
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/half"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }, 20.0));
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
}
