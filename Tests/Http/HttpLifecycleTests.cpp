// Cancel, shutdown, delivery through the engine loop, and completions bound to objects that are gone.
#include "ZnHttpTestServers.h"

#include "Containers/Ticker.h"
#include "Engine/StandaloneEngineLoop.h"
#include "UObject/GarbageCollection.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/WeakObjectPtrTemplates.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <sys/socket.h>

class UZnHttpTestReceiver : public UObject
{
	DECLARE_CLASS_INTRINSIC(UZnHttpTestReceiver, UObject, CLASS_None, TEXT("/Script/ZnHttpTests"))
public:
	static int32 Calls;
	void OnComplete(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bConnectedSuccessfully) { ++Calls; }
};
int32 UZnHttpTestReceiver::Calls = 0;
IMPLEMENT_INTRINSIC_CLASS(UZnHttpTestReceiver, , UObject, COREUOBJECT_API, "/Script/ZnHttpTests", {})

namespace
{
void Stall(int Socket, const std::atomic<bool>&)
{
	FZnRawTestServer::ReadRequestHead(Socket);
	char Byte;
	recv(Socket, &Byte, 1, 0);
}

void HelloRoute(httplib::Server& Server)
{
	Server.Get("/hello",
		[](const httplib::Request&, httplib::Response& Response) { Response.set_content("hello", "text/plain"); });
}

// Puts the module back in its running state whatever a test did.
struct FRestartAfter
{
	~FRestartAfter() { FHttpModule::Get().StartupModule(); }
};
} // namespace

TEST(HttpLifecycleTests, CancelCompletesOnceAsFailure)
{
	FZnRawTestServer Server(Stall);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/stall"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	// Wait until the server holds the connection, so the cancel meets a transfer under way.
	for (int Wait = 0; Wait < 500 && Server.Accepted() == 0; ++Wait)
	{
		std::this_thread::sleep_for(std::chrono::milliseconds(10));
	}
	Request->CancelRequest();
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }, 5.0));
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 0);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed_ConnectionError);
	Request->CancelRequest();
	FHttpModule::Get().GetHttpManager().TickUntil([]() { return false; }, 0.2);
	EXPECT_EQ(Recorded.Calls, 1);
}

TEST(HttpLifecycleTests, ShutdownCancelsInFlightWithoutCallbacks)
{
	FRestartAfter Restart;
	FZnRawTestServer Server(Stall);
	std::vector<TSharedRef<IHttpRequest, ESPMode::ThreadSafe>> Requests;
	int32 Calls = 0;
	for (int Index = 0; Index < 5; ++Index)
	{
		TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/stall"));
		Request->OnProcessRequestComplete().BindLambda([&Calls](FHttpRequestPtr, FHttpResponsePtr, bool) { ++Calls; });
		ASSERT_TRUE(Request->ProcessRequest());
		Requests.push_back(Request);
	}
	// One request that cannot be sent: its completion is queued and must not run either.
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Unsent = FHttpModule::Get().CreateRequest();
	Unsent->OnProcessRequestComplete().BindLambda([&Calls](FHttpRequestPtr, FHttpResponsePtr, bool) { ++Calls; });
	Unsent->ProcessRequest();
	EXPECT_EQ(FHttpModule::Get().GetHttpManager().GetTransportStats().RequestsInFlight, 6);

	FHttpModule::Get().ShutdownModule();
	EXPECT_FALSE(FHttpModule::Get().IsRunning());
	for (const TSharedRef<IHttpRequest, ESPMode::ThreadSafe>& Request : Requests)
	{
		EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
		EXPECT_EQ(Request.GetSharedReferenceCount(), 1) << "the transport let go of it";
	}
	FHttpModule::Get().GetHttpManager().Tick(0.0f);
	FTSTicker::GetCoreTicker().Tick(0.1f);
	EXPECT_EQ(Calls, 0);
	EXPECT_EQ(FHttpModule::Get().GetHttpManager().GetTransportStats().RequestsInFlight, 0);

	// After shutdown nothing starts and nothing is called.
	EXPECT_FALSE(Requests[0]->ProcessRequest());
	FHttpModule::Get().GetHttpManager().Tick(0.0f);
	EXPECT_EQ(Calls, 0);

	// Started again, the module works as before.
	FHttpModule::Get().StartupModule();
	FZnTestHttpServer Hello(HelloRoute);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Again = ZnNewRequest(Hello.Url("/hello"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Again);
	ASSERT_TRUE(Again->ProcessRequest());
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }));
	EXPECT_EQ(Recorded.Body, "hello");
}

TEST(HttpLifecycleTests, ShutdownFromInsideACompletionDropsTheRest)
{
	FRestartAfter Restart;
	FZnTestHttpServer Hello(HelloRoute);
	int32 Calls = 0;
	std::vector<TSharedRef<IHttpRequest, ESPMode::ThreadSafe>> Requests;
	for (int Index = 0; Index < 3; ++Index)
	{
		TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Hello.Url("/hello"));
		Request->OnProcessRequestComplete().BindLambda(
			[&Calls](FHttpRequestPtr, FHttpResponsePtr, bool)
			{
				++Calls;
				FHttpModule::Get().ShutdownModule();
			});
		ASSERT_TRUE(Request->ProcessRequest());
		Requests.push_back(Request);
	}
	// Most often all three have finished on the worker before the first tick delivers any; on a
	// loaded machine some are still in flight. Either way the rest is dropped.
	std::this_thread::sleep_for(std::chrono::milliseconds(300));
	ASSERT_TRUE(ZnTickUntil([&Calls]() { return Calls > 0; }));
	EXPECT_EQ(Calls, 1);
	FHttpModule::Get().GetHttpManager().Tick(0.0f);
	EXPECT_EQ(Calls, 1);
}

TEST(HttpLifecycleTests, EngineLoopFramesDeliverCompletions)
{
	FZnTestHttpServer Hello(HelloRoute);
	FStandaloneEngineLoop Loop;
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Hello.Url("/hello"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	for (int Frame = 0; Frame < 2000 && Recorded.Calls == 0; ++Frame)
	{
		Loop.RunFrames(1, 60.0f);
		std::this_thread::sleep_for(std::chrono::milliseconds(5));
	}
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_EQ(Recorded.Body, "hello");
}

TEST(HttpLifecycleTests, CompletionForACollectedObjectIsDropped)
{
	FZnTestHttpServer Hello(HelloRoute);
	UZnHttpTestReceiver::Calls = 0;
	UZnHttpTestReceiver* Alive = NewObject<UZnHttpTestReceiver>(GetTransientPackage());
	Alive->AddToRoot();
	UZnHttpTestReceiver* Doomed = NewObject<UZnHttpTestReceiver>(GetTransientPackage());

	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> ToAlive = ZnNewRequest(Hello.Url("/hello"));
	ToAlive->OnProcessRequestComplete().BindUObject(Alive, &UZnHttpTestReceiver::OnComplete);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> ToDoomed = ZnNewRequest(Hello.Url("/hello"));
	ToDoomed->OnProcessRequestComplete().BindUObject(Doomed, &UZnHttpTestReceiver::OnComplete);
	ASSERT_TRUE(ToAlive->ProcessRequest());
	ASSERT_TRUE(ToDoomed->ProcessRequest());
	CollectGarbage();
	EXPECT_FALSE(ToDoomed->OnProcessRequestComplete().IsBound());

	ASSERT_TRUE(ZnTickUntil(
		[&]()
		{
			return ToAlive->GetStatus() != EHttpRequestStatus::Processing &&
				ToDoomed->GetStatus() != EHttpRequestStatus::Processing;
		}));
	EXPECT_EQ(UZnHttpTestReceiver::Calls, 1) << "only the living object was called";
	EXPECT_EQ(ToDoomed->GetStatus(), EHttpRequestStatus::Succeeded);
	Alive->RemoveFromRoot();
	CollectGarbage();
}
