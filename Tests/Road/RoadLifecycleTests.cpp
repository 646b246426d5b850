// Lifetime of the request objects: rooted while in flight, collectable after completion, not
// rooted again when reused, and a completion for an object that is gone is dropped.
#include "ZnRoadTestSupport.h"

#include "UObject/GarbageCollection.h"
#include "UObject/WeakObjectPtrTemplates.h"

TEST_F(FZnRoadTest, InFlightObjectSurvivesCollectionAndIsCollectedAfterCompletion)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = FZnLocalService::WithFault(Local.Url("/no/path"), "delay=400");
	TWeakObjectPtr<UZnDM_HttpRequest> Weak;
	{
		UZnDM_HttpRequest* Request = UZnDM_HttpRequest::CreateHttpRequest();
		Request->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnRequest);
		Request->DoRequestEasy(TEXT("t"), ZnText(Url), TEXT("{}"), ZnDM_HttpVerb::POST, false);
		Weak = Request;
	}
	// No script reference: only the root set keeps it.
	CollectGarbage();
	ASSERT_TRUE(Weak.IsValid());
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	EXPECT_TRUE(Listener->Requests[0].bOk);
	ASSERT_TRUE(Weak.IsValid());
	EXPECT_FALSE(Weak->IsRooted());
	CollectGarbage();
	EXPECT_FALSE(Weak.IsValid()) << "collected once completed and unreferenced";
}

TEST_F(FZnRoadTest, ReferencedObjectOutlivesCompletionAndIsNotRootedAgain)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	TStrongObjectPtr<UZnDM_HttpRequest> Held(UZnDM_HttpRequest::CreateHttpRequest());
	Held->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnRequest);
	Held->DoRequestEasy(TEXT("t"), Local.UrlText("/no/path"), TEXT("{}"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 1; }));
	CollectGarbage();
	ASSERT_TRUE(Held.IsValid());
	Held->DoRequestEasy(TEXT("t"), Local.UrlText("/no/path"), TEXT("{}"), ZnDM_HttpVerb::POST, false);
	EXPECT_FALSE(Held->IsRooted()) << "a reused object is kept only by the script's reference";
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 2; }));
	EXPECT_TRUE(Listener->Requests[1].bOk);
}

TEST_F(FZnRoadTest, CompletionForADestroyedObjectIsDropped)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = FZnLocalService::WithFault(Local.Url("/no/path"), "delay=300");
	TWeakObjectPtr<UZnDM_HttpRequest> Weak;
	{
		TStrongObjectPtr<UZnDM_HttpRequest> Held(UZnDM_HttpRequest::CreateHttpRequest());
		Held->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnRequest);
		Held->DoRequestEasy(TEXT("t"), Local.UrlText("/no/path"), TEXT("{}"), ZnDM_HttpVerb::POST, false);
		ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 1; }));
		// Reused, so not rooted: dropping the last reference lets it go while in flight.
		Held->DoRequestEasy(TEXT("t"), ZnText(Url), TEXT("{}"), ZnDM_HttpVerb::POST, false);
		Weak = Held.Get();
	}
	CollectGarbage();
	ASSERT_FALSE(Weak.IsValid());
	EXPECT_EQ(FHttpModule::Get().GetHttpManager().GetTransportStats().RequestsInFlight, 1);
	ASSERT_TRUE(ZnRoadTickUntil(
		[]() { return FHttpModule::Get().GetHttpManager().GetTransportStats().RequestsInFlight == 0; }));
	EXPECT_EQ(Listener->Requests.size(), 1u) << "the collected object's completion was dropped";
}

TEST_F(FZnRoadTest, EveryRequestClassIsRootedUntilItsCompletion)
{
	UZnDM_HttpRequest_TTS* Speech = UZnDM_HttpRequest_TTS::CreateHttpRequest_TTS();
	UZnDM_HttpDownload* File = UZnDM_HttpDownload::CreateHttpDownload();
	UZnDM_TTSHttpDownload* Three = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
	for (UObject* Object : std::initializer_list<UObject*>{Speech, File, Three})
	{
		EXPECT_TRUE(Object->IsRooted());
		EXPECT_EQ(Object->GetOuter(), GetTransientPackage());
	}
	Speech->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnSpeech);
	File->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnFile);
	Three->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnThreeFiles);
	Speech->DoRequest(TEXT(""), TEXT("t"), TEXT("v"), TEXT("1"), TEXT("2"), TEXT("3"), TEXT("male"), 0, false);
	File->DoDownload(TEXT(""), false, TEXT(""));
	Three->DoDownload(TEXT(""), TEXT(""), TEXT(""), false);
	CollectGarbage();
	ASSERT_TRUE(ZnRoadTickUntil(
		[&]() { return !Listener->Speech.empty() && !Listener->Files.empty() && !Listener->Downloads.empty(); }));
	for (UObject* Object : std::initializer_list<UObject*>{Speech, File, Three})
	{
		EXPECT_FALSE(Object->IsRooted());
	}
	EXPECT_FALSE(Listener->Downloads[0].bAudio || Listener->Downloads[0].bFace || Listener->Downloads[0].bBody);
	CollectGarbage();
}
