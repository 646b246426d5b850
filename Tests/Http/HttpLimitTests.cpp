// The response-size limit: an oversized answer fails cleanly, and the transport never holds more
// than the limit for one request while it arrives.
#include "ZnHttpTestServers.h"

#include <gtest/gtest.h>
#include <httplib.h>

namespace
{
constexpr int64 Limit = 1024 * 1024;

void SizedRoutes(httplib::Server& Server)
{
	// Streamed in chunks without a length, so the client learns the size only by receiving it.
	Server.Get("/chunked",
		[](const httplib::Request& Request, httplib::Response& Response)
		{
			const size_t Total = std::stoul(Request.get_param_value("bytes"));
			Response.set_chunked_content_provider("application/octet-stream",
				[Total](size_t Offset, httplib::DataSink& Sink)
				{
					if (Offset >= Total)
					{
						Sink.done();
						return true;
					}
					const std::string Piece(
						std::min<size_t>(64 * 1024, Total - Offset), char('a' + (Offset / 65536) % 26));
					return Sink.write(Piece.data(), Piece.size());
				});
		});
	Server.Get("/sized",
		[](const httplib::Request& Request, httplib::Response& Response) {
			Response.set_content(
				std::string(std::stoul(Request.get_param_value("bytes")), 'z'), "application/octet-stream");
		});
}

struct FLimitTest : ::testing::Test
{
	FZnScopedTransportSettings Restore;
	void SetUp() override
	{
		FHttpTransportSettings Settings = Restore.Saved;
		Settings.MaxResponseBytes = Limit;
		FHttpModule::Get().SetTransportSettings(Settings);
		FHttpModule::Get().GetHttpManager().ResetPeakStats();
	}
};
} // namespace

TEST_F(FLimitTest, StreamedBodyOverTheLimitFailsHoldingNoMoreThanTheLimit)
{
	FZnTestHttpServer Server(SizedRoutes);
	const FZnRecordedCompletion Recorded = ZnFetch(Server.Url("/chunked?bytes=") + std::to_string(8 * Limit));
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Recorded.Body, "");
	const FHttpTransportStats Stats = FHttpModule::Get().GetHttpManager().GetTransportStats();
	EXPECT_GT(Stats.PeakRequestBufferBytes, 0);
	EXPECT_LE(Stats.PeakRequestBufferBytes, Limit);
	EXPECT_EQ(Stats.BufferedBytes, 0) << "the failed body was released";
}

TEST_F(FLimitTest, AnnouncedLengthOverTheLimitFailsBeforeAnyByteIsKept)
{
	FZnTestHttpServer Server(SizedRoutes);
	const FZnRecordedCompletion Recorded = ZnFetch(Server.Url("/sized?bytes=") + std::to_string(Limit + 1));
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Body, "");
	EXPECT_EQ(FHttpModule::Get().GetHttpManager().GetTransportStats().PeakRequestBufferBytes, 0);
}

TEST_F(FLimitTest, BodyOfExactlyTheLimitIsDelivered)
{
	FZnTestHttpServer Server(SizedRoutes);
	const FZnRecordedCompletion Streamed = ZnFetch(Server.Url("/chunked?bytes=") + std::to_string(Limit));
	EXPECT_TRUE(Streamed.bConnected);
	ASSERT_EQ(Streamed.Body.size(), size_t(Limit));
	EXPECT_EQ(Streamed.Body[0], 'a');
	EXPECT_EQ(Streamed.Body[size_t(Limit) - 1], char('a' + 15));
	const FZnRecordedCompletion Sized = ZnFetch(Server.Url("/sized?bytes=") + std::to_string(Limit));
	EXPECT_TRUE(Sized.bConnected);
	EXPECT_EQ(Sized.Body, std::string(size_t(Limit), 'z'));
	EXPECT_LE(FHttpModule::Get().GetHttpManager().GetTransportStats().PeakRequestBufferBytes, Limit);
}

TEST(HttpConnectionLimitTests, BurstToOneHostUsesAtMostTheConfiguredConnections)
{
	FZnScopedTransportSettings Restore;
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.MaxConnectionsPerHost = 2;
	FHttpModule::Get().SetTransportSettings(Settings);
	std::atomic<int> Open{0};
	std::atomic<int> MostOpen{0};
	FZnRawTestServer Server(
		[&](int Socket, const std::atomic<bool>&)
		{
			const int Now = ++Open;
			int Seen = MostOpen.load();
			while (Now > Seen && !MostOpen.compare_exchange_weak(Seen, Now))
			{
			}
			FZnRawTestServer::ReadRequestHead(Socket);
			std::this_thread::sleep_for(std::chrono::milliseconds(50));
			--Open;
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 2\r\n\r\nok");
		});
	std::vector<TSharedRef<IHttpRequest, ESPMode::ThreadSafe>> Requests;
	std::vector<std::unique_ptr<FZnRecordedCompletion>> Recorded;
	for (int Index = 0; Index < 8; ++Index)
	{
		Requests.push_back(FHttpModule::Get().CreateRequest());
		Recorded.push_back(std::make_unique<FZnRecordedCompletion>());
		Requests.back()->SetURL(UTF8_TO_TCHAR(Server.Url("/one").c_str()));
		Recorded.back()->Bind(*Requests.back());
		ASSERT_TRUE(Requests.back()->ProcessRequest());
	}
	ASSERT_TRUE(ZnTickUntil(
		[&]()
		{
			for (const std::unique_ptr<FZnRecordedCompletion>& Each : Recorded)
			{
				if (Each->Calls == 0)
				{
					return false;
				}
			}
			return true;
		}));
	for (const std::unique_ptr<FZnRecordedCompletion>& Each : Recorded)
	{
		EXPECT_EQ(Each->Body, "ok");
	}
	EXPECT_LE(MostOpen.load(), 2);
	EXPECT_EQ(Server.Accepted(), 8);
}
