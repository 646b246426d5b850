#include "HttpModule.h"

#include "Containers/Ticker.h"
#include "CurlHttpRequest.h"
#include "HttpManager.h"

#include <curl/curl.h>

namespace
{
FTSTicker::FDelegateHandle TickHandle;
}

FHttpModule& FHttpModule::Get()
{
	static FHttpModule Module;
	return Module;
}

FHttpModule::FHttpModule()
{
	curl_global_init(CURL_GLOBAL_DEFAULT);
	Manager = std::make_unique<FHttpManager>();
	StartupModule();
}

FHttpModule::~FHttpModule()
{
	ShutdownModule();
	Manager.reset();
	curl_global_cleanup();
}

TSharedRef<IHttpRequest, ESPMode::ThreadSafe> FHttpModule::CreateRequest()
{
	return MakeShared<FCurlHttpRequest, ESPMode::ThreadSafe>();
}

FHttpManager& FHttpModule::GetHttpManager()
{
	return *Manager;
}

void FHttpModule::StartupModule()
{
	if (Manager->IsRunning())
	{
		return;
	}
	Manager->Startup();
	TickHandle = FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateRaw(Manager.get(), &FHttpManager::Tick));
}

void FHttpModule::ShutdownModule()
{
	if (!Manager->IsRunning())
	{
		return;
	}
	FTSTicker::GetCoreTicker().RemoveTicker(TickHandle);
	TickHandle.Reset();
	Manager->Shutdown();
}

bool FHttpModule::IsRunning() const
{
	return Manager->IsRunning();
}
