#include "ZnDM_TTSHttpDownload.h"

#include "HttpModule.h"
#include "ZnDM_Log.h"
#include "ZnHttpObjects.h"

UZnDM_TTSHttpDownload* UZnDM_TTSHttpDownload::CreateTTSHttpDownload()
{
	return ZnHttpObjects::CreateRooted<UZnDM_TTSHttpDownload>();
}

void UZnDM_TTSHttpDownload::DoDownload(FString audioUrl, FString faceUrl, FString bodyUrl, bool printLog)
{
	const FString Urls[3] = {audioUrl, faceUrl, bodyUrl};
	mAudioUrl = audioUrl;
	mFaceUrl = faceUrl;
	mBodyUrl = bodyUrl;
	mPrintLog = printLog;
	if (mPrintLog)
	{
		ZnDM_Log& Log = ZnDM_Log::GetInstance();
		Log.Log(TEXT("mAudioUrl:") + mAudioUrl);
		Log.Log(TEXT("mFaceUrl:") + mFaceUrl);
		Log.Log(TEXT("mBodyUrl:") + mBodyUrl);
	}
	for (int32 Index = 0; Index < 3; ++Index)
	{
		TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
		Request->SetVerb(TEXT("GET"));
		Request->SetURL(Urls[Index]);
		Request->SetTimeout(5.0f);
		Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_TTSHttpDownload::OnRequestCompleted);
		FZnDownloadEntry Entry;
		Entry.Request = Request;
		Entry.IsBinary = Index == 0;
		mEntries.Add(MoveTemp(Entry));
	}
	// All entries start only once the list is complete, so no completion can find it half built.
	// Entries of an earlier download on this object start again too (one object per download).
	for (int32 Index = 0; Index < mEntries.Num(); ++Index)
	{
		const FHttpRequestPtr Request = mEntries[Index].Request;
		Request->ProcessRequest();
	}
}

void UZnDM_TTSHttpDownload::OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful)
{
	int32 Found = -1;
	for (int32 Index = 0; Index < mEntries.Num(); ++Index)
	{
		if (mEntries[Index].Request == Request)
		{
			mEntries[Index].Finished = true;
			Found = Index;
			break;
		}
	}
	if (mPrintLog)
	{
		ZnDM_Log& Log = ZnDM_Log::GetInstance();
		if (Found < 0)
		{
			Log.Log(FString::Printf(TEXT("tts download error, index:%d"), Found));
		}
		const double ElapsedTime = Request.IsValid() ? double(Request->GetElapsedTime()) : 0.0;
		Log.Log(FString::Printf(TEXT("index:%d, elapsedTime:%lf"), Found, ElapsedTime));
	}
	if (Request.IsValid())
	{
		Request->OnProcessRequestComplete().Unbind();
	}
	// A completion that belongs to no entry changes nothing.
	if (Found < 0)
	{
		return;
	}

	FZnDownloadEntry& Entry = mEntries[Found];
	Entry.Succeeded = ZnHttpObjects::IsAcceptedStatus(Response, bWasSuccessful);
	if (Entry.Succeeded)
	{
		if (Entry.IsBinary)
		{
			Entry.Bytes = Response->GetContent();
		}
		else
		{
			Entry.Text = Response->GetContentAsString();
		}
	}

	int32 FinishedCount = 0;
	for (const FZnDownloadEntry& Each : mEntries)
	{
		FinishedCount += Each.Finished ? 1 : 0;
	}
	if (FinishedCount != mEntries.Num())
	{
		return;
	}

	RemoveFromRoot();
	OnCompleted.Broadcast(mEntries[0].Succeeded, mEntries[0].Bytes, mEntries[1].Succeeded, mEntries[1].Text,
		mEntries[2].Succeeded, mEntries[2].Text);
	if (mPrintLog && !(mEntries[0].Succeeded && mEntries[1].Succeeded && mEntries[2].Succeeded))
	{
		ZnDM_Log& Log = ZnDM_Log::GetInstance();
		Log.Log(TEXT("some files cannot be downloaded"));
		const FString* Urls[3] = {&mAudioUrl, &mFaceUrl, &mBodyUrl};
		const TCHAR* Names[3] = {TEXT("mAudioUrl"), TEXT("mFaceUrl"), TEXT("mBodyUrl")};
		for (int32 Index = 0; Index < 3; ++Index)
		{
			if (!mEntries[Index].Succeeded)
			{
				Log.Log(FString::Printf(TEXT("download error, %s:%s"), Names[Index], **Urls[Index]));
			}
		}
	}
}
