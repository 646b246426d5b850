#include "ZnBenchDownload.h"

#include "HttpManager.h"
#include "HttpModule.h"
#include "ZnBenchmarkSupport.h"
#include "ZnDM_TTSHttpDownload.h"

IMPLEMENT_INTRINSIC_CLASS(UZnBenchListener, , UObject, COREUOBJECT_API, "/Script/ZnBenchmarks", {})

void UZnBenchListener::OnThreeFiles(bool audioRet, const TArray<uint8>& audioBytes, bool faceRet,
	const FString& faceJson, bool bodyRet, const FString& bodyJson)
{
	++Calls;
	bAll = audioRet && faceRet && bodyRet;
	if (bKeep)
	{
		Audio = audioBytes;
		Face = faceJson;
		Body = bodyJson;
	}
}

void ZnBenchStartDownload(UZnBenchListener* Listener, const std::string (&Urls)[3])
{
	Listener->Calls = 0;
	UZnDM_TTSHttpDownload* Download = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
	Download->OnCompleted.AddDynamic(Listener, &UZnBenchListener::OnThreeFiles);
	Download->DoDownload(ZnBenchWiden(Urls[0]), ZnBenchWiden(Urls[1]), ZnBenchWiden(Urls[2]), false);
}

void ZnBenchDownload(UZnBenchListener* Listener, const std::string (&Urls)[3])
{
	ZnBenchStartDownload(Listener, Urls);
	if (!FHttpModule::Get().GetHttpManager().TickUntil([Listener]() { return Listener->Calls > 0; }, 30.0))
	{
		ZnBenchFail("the module's three-file download did not complete");
	}
}
