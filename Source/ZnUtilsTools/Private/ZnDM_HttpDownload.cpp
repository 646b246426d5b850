#include "ZnDM_HttpDownload.h"

#include "HAL/PlatformFileManager.h"
#include "HttpModule.h"
#include "Misc/Paths.h"
#include "ZnHttpObjects.h"

#include <memory>

UZnDM_HttpDownload* UZnDM_HttpDownload::CreateHttpDownload()
{
	return ZnHttpObjects::CreateRooted<UZnDM_HttpDownload>();
}

void UZnDM_HttpDownload::DoDownload(const FString& inURL, bool inNeedSave, FString inSavePath)
{
	NeedSave = inNeedSave;
	SavePath = inSavePath;
	// No headers and no timeout: the transport's defaults apply.
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetVerb(TEXT("GET"));
	Request->SetURL(inURL);
	Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpDownload::OnRequestCompleted);
	Request->ProcessRequest();
}

void UZnDM_HttpDownload::OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful)
{
	RemoveFromRoot();
	if (Request.IsValid())
	{
		Request->OnProcessRequestComplete().Unbind();
	}
	if (!ZnHttpObjects::IsAcceptedStatus(Response, bWasSuccessful))
	{
		OnCompleted.Broadcast(false,
			FString::Printf(TEXT("error, response code:%d"), ZnHttpObjects::ResponseCode(Response)), TArray<uint8>());
		return;
	}

	const TArray<uint8>& Content = Response->GetContent();
	if (NeedSave)
	{
		FString Directory;
		FString BaseName;
		FString Extension;
		FPaths::Split(SavePath, Directory, BaseName, Extension);
		IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
		if (!PlatformFile.DirectoryExists(*Directory) && !PlatformFile.CreateDirectoryTree(*Directory))
		{
			OnCompleted.Broadcast(false, TEXT("error, cannot create directory:") + Directory, TArray<uint8>());
			return;
		}
		std::unique_ptr<IFileHandle> File(PlatformFile.OpenWrite(*SavePath, false, false));
		if (!File)
		{
			OnCompleted.Broadcast(false, TEXT("error, cannot write file:") + SavePath, TArray<uint8>());
			return;
		}
		// A short write is not detected: the content is delivered as received.
		File->Write(Content.GetData(), Response->GetContentLength());
	}
	OnCompleted.Broadcast(true, Response->GetContentAsString(), TArray<uint8>(Content));
}
