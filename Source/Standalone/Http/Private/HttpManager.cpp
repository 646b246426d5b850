#include "HttpManager.h"

#include "Containers/StringConv.h"
#include "CurlHttpRequest.h"
#include "CurlTransferThread.h"
#include "HttpModule.h"

#include <chrono>

namespace
{
std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Utf8(*Text, Text.Len());
	return std::string(Utf8.Get(), size_t(Utf8.Length()));
}

std::unique_ptr<FHttpTransfer> MakeTransfer(const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe>& Request)
{
	static std::atomic<uint64> NextId{1};
	std::unique_ptr<FHttpTransfer> Transfer = std::make_unique<FHttpTransfer>();
	Transfer->Id = NextId++;
	Transfer->Request = Request;
	Transfer->StartTime = std::chrono::steady_clock::now();
	return Transfer;
}
} // namespace

FHttpManager::FHttpManager() = default;

FHttpManager::~FHttpManager()
{
	Shutdown();
}

void FHttpManager::Startup()
{
	if (!Worker)
	{
		Worker = std::make_unique<FCurlTransferThread>();
	}
}

void FHttpManager::Shutdown()
{
	if (!Worker)
	{
		return;
	}
	std::vector<std::unique_ptr<FHttpTransfer>> Left = Worker->Stop();
	Worker.reset();
	// Released here, on the calling thread, without completion.
	for (std::unique_ptr<FHttpTransfer>& Transfer : Left)
	{
		Transfer->Request->AbandonRequest();
	}
	Left.clear();
	RequestsInFlight = 0;
}

bool FHttpManager::StartRequest(const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe>& Request,
	const FHttpTransportSettings& Settings, uint64& OutTransferId)
{
	if (!Worker)
	{
		return false;
	}
	std::unique_ptr<FHttpTransfer> Transfer = MakeTransfer(Request);
	Transfer->Url = ToUtf8(Request->GetURL());
	Transfer->Verb = ToUtf8(Request->GetVerb());
	for (const FString& Line : Request->GetAllHeaders())
	{
		std::string Header = ToUtf8(Line);
		// libcurl drops "Name: " with nothing after it; "Name;" sends the header with an empty value.
		if (Header.size() >= 2 && Header.compare(Header.size() - 2, 2, ": ") == 0)
		{
			Header.replace(Header.size() - 2, 2, ";");
		}
		Transfer->HeaderLines.push_back(MoveTemp(Header));
	}
	Transfer->Body = Request->GetContent();
	Transfer->TimeoutSeconds = Request->GetTimeout();
	Transfer->ConnectionTimeoutSeconds = Settings.ConnectionTimeoutSeconds;
	Transfer->InactivityTimeoutSeconds = Settings.InactivityTimeoutSeconds;
	Transfer->MaxResponseBytes = FMath::Clamp<int64>(Settings.MaxResponseBytes, 0, MAX_int32);
	Transfer->MaxRedirects = Settings.MaxRedirects;
	Transfer->MaxConnectionsPerHost = FMath::Max(1, Settings.MaxConnectionsPerHost);
	Transfer->CaFile = ToUtf8(Settings.CaFile);
	OutTransferId = Transfer->Id;
	++RequestsInFlight;
	Worker->Submit(MoveTemp(Transfer));
	return true;
}

void FHttpManager::FailBeforeSending(const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe>& Request)
{
	if (!Worker)
	{
		return;
	}
	std::unique_ptr<FHttpTransfer> Transfer = MakeTransfer(Request);
	Transfer->bNotSent = true;
	Transfer->Error = "not sent";
	++RequestsInFlight;
	Worker->FinishWithoutSending(MoveTemp(Transfer));
}

void FHttpManager::CancelTransfer(uint64 TransferId)
{
	if (Worker)
	{
		Worker->Cancel(TransferId);
	}
}

bool FHttpManager::Tick(float DeltaSeconds)
{
	if (!Worker)
	{
		return true;
	}
	std::vector<std::unique_ptr<FHttpTransfer>> Done;
	Worker->TakeFinished(Done);
	for (std::unique_ptr<FHttpTransfer>& Transfer : Done)
	{
		// The body leaves the transport's accounting as it moves into the response.
		if (Worker)
		{
			Worker->ReleaseBuffered(Transfer->ResponseBody.Max());
		}
		--RequestsInFlight;
		const TSharedPtr<FCurlHttpRequest, ESPMode::ThreadSafe> Request = Transfer->Request;
		// A completion may shut the module down; what it leaves behind is released without a call.
		if (Worker)
		{
			Request->FinishRequest(*Transfer);
		}
		else
		{
			Request->AbandonRequest();
		}
		Transfer.reset();
	}
	return true;
}

bool FHttpManager::TickUntil(const std::function<bool()>& Condition, double TimeoutSeconds)
{
	const auto Deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(TimeoutSeconds);
	auto LastTick = std::chrono::steady_clock::now();
	for (;;)
	{
		const auto Now = std::chrono::steady_clock::now();
		Tick(std::chrono::duration<float>(Now - LastTick).count());
		LastTick = Now;
		if (Condition())
		{
			return true;
		}
		if (Now >= Deadline)
		{
			return false;
		}
		const double Remaining = std::chrono::duration<double>(Deadline - Now).count();
		if (Worker)
		{
			Worker->WaitForFinished(FMath::Min(Remaining, 0.05));
		}
		else
		{
			std::this_thread::sleep_for(std::chrono::duration<double>(FMath::Min(Remaining, 0.05)));
		}
	}
}

FHttpTransportStats FHttpManager::GetTransportStats() const
{
	FHttpTransportStats Stats;
	Stats.RequestsInFlight = RequestsInFlight.load();
	if (Worker)
	{
		Stats.BufferedBytes = Worker->GetBufferedBytes();
		Stats.PeakBufferedBytes = Worker->GetPeakBufferedBytes();
		Stats.PeakRequestBufferBytes = Worker->GetPeakRequestBufferBytes();
	}
	return Stats;
}

void FHttpManager::ResetPeakStats()
{
	if (Worker)
	{
		Worker->ResetPeaks();
	}
}
