#include "CurlTransferThread.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstring>

namespace
{
void RaiseTo(std::atomic<int64>& Peak, int64 Value)
{
	int64 Seen = Peak.load();
	while (Value > Seen && !Peak.compare_exchange_weak(Seen, Value))
	{
	}
}

bool StartsWithNoCase(const char* Text, size_t Length, const char* Prefix)
{
	const size_t PrefixLength = strlen(Prefix);
	return Length >= PrefixLength && strncasecmp(Text, Prefix, PrefixLength) == 0;
}

std::string Trimmed(const char* Begin, const char* End)
{
	while (Begin < End && (*Begin == ' ' || *Begin == '\t'))
	{
		++Begin;
	}
	while (End > Begin && (End[-1] == ' ' || End[-1] == '\t' || End[-1] == '\r' || End[-1] == '\n'))
	{
		--End;
	}
	return std::string(Begin, End);
}

// Grows Body so that it holds at least Needed bytes, never beyond the limit: an announced size
// exactly, otherwise by doubling capped at the limit, so the copies stay few while the memory of
// one request stays within it.
void ReserveBody(FHttpTransfer& Transfer, int64 Needed, bool bExact)
{
	const int64 Current = Transfer.ResponseBody.Max();
	if (Needed <= Current)
	{
		return;
	}
	const int64 Wanted =
		bExact ? Needed : std::min(std::max({Needed, Current * 2, int64(16 * 1024)}), Transfer.MaxResponseBytes);
	Transfer.ResponseBody.Reserve(int32(Wanted));
	Transfer.Owner->NoteReserved(Transfer.ResponseBody.Max() - Current, Transfer.ResponseBody.Max());
}

size_t OnBody(char* Data, size_t Size, size_t Count, void* User)
{
	FHttpTransfer& Transfer = *static_cast<FHttpTransfer*>(User);
	const size_t Bytes = Size * Count;
	const int64 Needed = int64(Transfer.ResponseBody.Num()) + int64(Bytes);
	if (Needed > Transfer.MaxResponseBytes)
	{
		// Refusing the bytes fails the transfer with a write error.
		Transfer.bTooLarge = true;
		return 0;
	}
	ReserveBody(Transfer, Needed, false);
	const int32 At = Transfer.ResponseBody.AddUninitialized(int32(Bytes));
	memcpy(Transfer.ResponseBody.GetData() + At, Data, Bytes);
	return Bytes;
}

size_t OnHeader(char* Data, size_t Size, size_t Count, void* User)
{
	FHttpTransfer& Transfer = *static_cast<FHttpTransfer*>(User);
	const size_t Bytes = Size * Count;
	if (StartsWithNoCase(Data, Bytes, "HTTP/"))
	{
		// A new status line: the headers of a redirect or an interim answer are forgotten.
		Transfer.ResponseHeaders.clear();
		return Bytes;
	}
	const char* Colon = static_cast<const char*>(memchr(Data, ':', Bytes));
	if (!Colon)
	{
		return Bytes;
	}
	std::string Name = Trimmed(Data, Colon);
	std::string Value = Trimmed(Colon + 1, Data + Bytes);
	if (strcasecmp(Name.c_str(), "Content-Length") == 0)
	{
		// One allocation for the whole body when its size is announced and allowed; a larger
		// announcement fails through CURLOPT_MAXFILESIZE before any byte is kept.
		const long long Announced = atoll(Value.c_str());
		if (Announced > 0 && Announced <= Transfer.MaxResponseBytes)
		{
			ReserveBody(Transfer, Announced, true);
		}
	}
	Transfer.ResponseHeaders.emplace_back(MoveTemp(Name), MoveTemp(Value));
	return Bytes;
}

void SetUp(CURL* Easy, FHttpTransfer& Transfer)
{
	curl_easy_setopt(Easy, CURLOPT_PRIVATE, &Transfer);
	curl_easy_setopt(Easy, CURLOPT_URL, Transfer.Url.c_str());
	curl_easy_setopt(Easy, CURLOPT_PROTOCOLS_STR, "http,https");
	curl_easy_setopt(Easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
	curl_easy_setopt(Easy, CURLOPT_FOLLOWLOCATION, 1L);
	curl_easy_setopt(Easy, CURLOPT_MAXREDIRS, long(Transfer.MaxRedirects));
	curl_easy_setopt(Easy, CURLOPT_NOSIGNAL, 1L);
	curl_easy_setopt(Easy, CURLOPT_SSL_VERIFYPEER, 1L);
	curl_easy_setopt(Easy, CURLOPT_SSL_VERIFYHOST, 2L);
	if (!Transfer.CaFile.empty())
	{
		curl_easy_setopt(Easy, CURLOPT_CAINFO, Transfer.CaFile.c_str());
	}

	// Timeouts: the request's own limit covers everything; without one, a stalled connection
	// or peer fails after the inactivity limit while any flow of bytes keeps the transfer alive.
	float ConnectSeconds = Transfer.ConnectionTimeoutSeconds;
	if (Transfer.TimeoutSeconds > 0.0f)
	{
		curl_easy_setopt(Easy, CURLOPT_TIMEOUT_MS, std::max(1L, long(Transfer.TimeoutSeconds * 1000.0f)));
		ConnectSeconds = std::min(ConnectSeconds, Transfer.TimeoutSeconds);
	}
	else
	{
		curl_easy_setopt(Easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
		curl_easy_setopt(Easy, CURLOPT_LOW_SPEED_TIME, long(std::max(1, Transfer.InactivityTimeoutSeconds)));
	}
	curl_easy_setopt(Easy, CURLOPT_CONNECTTIMEOUT_MS, std::max(1L, long(ConnectSeconds * 1000.0f)));

	curl_easy_setopt(Easy, CURLOPT_MAXFILESIZE_LARGE, curl_off_t(Transfer.MaxResponseBytes));
	curl_easy_setopt(Easy, CURLOPT_WRITEFUNCTION, &OnBody);
	curl_easy_setopt(Easy, CURLOPT_WRITEDATA, &Transfer);
	curl_easy_setopt(Easy, CURLOPT_HEADERFUNCTION, &OnHeader);
	curl_easy_setopt(Easy, CURLOPT_HEADERDATA, &Transfer);

	// The verb and the body: the body goes out with any verb, GET included, as the caller set it.
	const bool bHasBody = Transfer.Body.Num() > 0;
	if (bHasBody || Transfer.Verb == "POST")
	{
		curl_easy_setopt(Easy, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(Transfer.Body.Num()));
		curl_easy_setopt(
			Easy, CURLOPT_POSTFIELDS, bHasBody ? reinterpret_cast<const char*>(Transfer.Body.GetData()) : "");
		if (Transfer.Verb != "POST")
		{
			curl_easy_setopt(Easy, CURLOPT_CUSTOMREQUEST, Transfer.Verb.c_str());
		}
	}
	else if (Transfer.Verb == "HEAD")
	{
		curl_easy_setopt(Easy, CURLOPT_NOBODY, 1L);
	}
	else if (Transfer.Verb != "GET")
	{
		curl_easy_setopt(Easy, CURLOPT_CUSTOMREQUEST, Transfer.Verb.c_str());
	}

	curl_slist* Headers = nullptr;
	bool bHasContentType = false;
	for (const std::string& Line : Transfer.HeaderLines)
	{
		Headers = curl_slist_append(Headers, Line.c_str());
		bHasContentType = bHasContentType || StartsWithNoCase(Line.c_str(), Line.size(), "Content-Type:");
	}
	if (!bHasContentType)
	{
		// Only the headers the caller set: no form type of libcurl's own for a body without one.
		Headers = curl_slist_append(Headers, "Content-Type:");
	}
	// No "Expect: 100-continue" round trip before a large body.
	Headers = curl_slist_append(Headers, "Expect:");
	curl_easy_setopt(Easy, CURLOPT_HTTPHEADER, Headers);
	Transfer.HeaderList = Headers;
}
} // namespace

FCurlTransferThread::FCurlTransferThread()
{
	Multi = curl_multi_init();
	Thread = std::thread([this]() { Run(); });
}

FCurlTransferThread::~FCurlTransferThread()
{
	Stop();
}

void FCurlTransferThread::Submit(std::unique_ptr<FHttpTransfer> Transfer)
{
	Transfer->Owner = this;
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		Pending.push_back(MoveTemp(Transfer));
	}
	curl_multi_wakeup(Multi);
}

void FCurlTransferThread::Cancel(uint64 TransferId)
{
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		PendingCancels.push_back(TransferId);
	}
	curl_multi_wakeup(Multi);
}

void FCurlTransferThread::FinishWithoutSending(std::unique_ptr<FHttpTransfer> Transfer)
{
	Transfer->Owner = this;
	Transfer->EndTime = std::chrono::steady_clock::now();
	std::lock_guard<std::mutex> Lock(Mutex);
	Finished.push_back(MoveTemp(Transfer));
	FinishedSignal.notify_all();
}

void FCurlTransferThread::TakeFinished(std::vector<std::unique_ptr<FHttpTransfer>>& Out)
{
	std::lock_guard<std::mutex> Lock(Mutex);
	while (!Finished.empty())
	{
		Out.push_back(MoveTemp(Finished.front()));
		Finished.pop_front();
	}
}

void FCurlTransferThread::WaitForFinished(double Seconds)
{
	std::unique_lock<std::mutex> Lock(Mutex);
	FinishedSignal.wait_for(Lock, std::chrono::duration<double>(Seconds), [this]() { return !Finished.empty(); });
}

std::vector<std::unique_ptr<FHttpTransfer>> FCurlTransferThread::Stop()
{
	std::vector<std::unique_ptr<FHttpTransfer>> Left;
	if (!Thread.joinable())
	{
		return Left;
	}
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		bStopping = true;
	}
	curl_multi_wakeup(Multi);
	Thread.join();
	// The thread has removed its easy handles and moved what was in flight back to Pending.
	curl_multi_cleanup(Multi);
	Multi = nullptr;
	std::lock_guard<std::mutex> Lock(Mutex);
	for (std::unique_ptr<FHttpTransfer>& Transfer : Pending)
	{
		Left.push_back(MoveTemp(Transfer));
	}
	for (std::unique_ptr<FHttpTransfer>& Transfer : Finished)
	{
		Left.push_back(MoveTemp(Transfer));
	}
	Pending.clear();
	Finished.clear();
	for (const std::unique_ptr<FHttpTransfer>& Transfer : Left)
	{
		BufferedBytes -= Transfer->ResponseBody.Max();
		Transfer->ResponseBody.Empty();
	}
	return Left;
}

void FCurlTransferThread::ResetPeaks()
{
	PeakBufferedBytes = BufferedBytes.load();
	PeakRequestBufferBytes = 0;
}

void FCurlTransferThread::ReleaseBuffered(int64 Bytes)
{
	BufferedBytes -= Bytes;
}

void FCurlTransferThread::NoteReserved(int64 DeltaBytes, int64 RequestBytes)
{
	RaiseTo(PeakBufferedBytes, BufferedBytes += DeltaBytes);
	RaiseTo(PeakRequestBufferBytes, RequestBytes);
}

void FCurlTransferThread::Run()
{
	for (;;)
	{
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			if (bStopping)
			{
				break;
			}
		}
		AddPending();
		int Running = 0;
		curl_multi_perform(Multi, &Running);
		ReadDone();
		// Sleeps until a socket is ready, a libcurl timer is due, or Submit/Cancel/Stop wakes it.
		curl_multi_poll(Multi, nullptr, 0, 1000, nullptr);
	}

	// Stopping: every transfer in flight goes back, unfinished, for the game thread to release.
	std::vector<std::unique_ptr<FHttpTransfer>> Unfinished;
	for (std::unique_ptr<FHttpTransfer>& Transfer : Active)
	{
		curl_multi_remove_handle(Multi, Transfer->Easy);
		curl_easy_cleanup(Transfer->Easy);
		curl_slist_free_all(static_cast<curl_slist*>(Transfer->HeaderList));
		Transfer->Easy = nullptr;
		Transfer->HeaderList = nullptr;
		Unfinished.push_back(MoveTemp(Transfer));
	}
	Active.clear();
	std::lock_guard<std::mutex> Lock(Mutex);
	for (std::unique_ptr<FHttpTransfer>& Transfer : Unfinished)
	{
		Pending.push_back(MoveTemp(Transfer));
	}
}

void FCurlTransferThread::AddPending()
{
	std::vector<std::unique_ptr<FHttpTransfer>> NewTransfers;
	std::vector<uint64> Cancels;
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		NewTransfers.swap(Pending);
		Cancels.swap(PendingCancels);
	}
	for (std::unique_ptr<FHttpTransfer>& Transfer : NewTransfers)
	{
		if (Transfer->MaxConnectionsPerHost != MaxConnectionsPerHost)
		{
			MaxConnectionsPerHost = Transfer->MaxConnectionsPerHost;
			curl_multi_setopt(Multi, CURLMOPT_MAX_HOST_CONNECTIONS, long(MaxConnectionsPerHost));
		}
		CURL* Easy = curl_easy_init();
		Transfer->Easy = Easy;
		SetUp(Easy, *Transfer);
		curl_multi_add_handle(Multi, Easy);
		Active.push_back(MoveTemp(Transfer));
	}
	for (uint64 Id : Cancels)
	{
		auto Found = std::find_if(Active.begin(), Active.end(),
			[Id](const std::unique_ptr<FHttpTransfer>& Transfer) { return Transfer->Id == Id; });
		if (Found != Active.end())
		{
			(*Found)->bCancelled = true;
			Finish(Found->get(), CURLE_ABORTED_BY_CALLBACK);
		}
	}
}

void FCurlTransferThread::ReadDone()
{
	int Queued = 0;
	while (CURLMsg* Message = curl_multi_info_read(Multi, &Queued))
	{
		if (Message->msg != CURLMSG_DONE)
		{
			continue;
		}
		FHttpTransfer* Transfer = nullptr;
		curl_easy_getinfo(Message->easy_handle, CURLINFO_PRIVATE, reinterpret_cast<char**>(&Transfer));
		Finish(Transfer, Message->data.result);
	}
}

void FCurlTransferThread::Finish(FHttpTransfer* Transfer, int Result)
{
	CURL* Easy = Transfer->Easy;
	long Code = 0;
	curl_easy_getinfo(Easy, CURLINFO_RESPONSE_CODE, &Code);
	char* EffectiveUrl = nullptr;
	curl_easy_getinfo(Easy, CURLINFO_EFFECTIVE_URL, &EffectiveUrl);
	Transfer->ResponseCode = int32(Code);
	Transfer->EffectiveUrl = EffectiveUrl ? EffectiveUrl : "";
	Transfer->bSucceeded = Result == CURLE_OK && !Transfer->bCancelled;
	if (!Transfer->bSucceeded)
	{
		Transfer->Error = Transfer->bCancelled						   ? "cancelled"
			: Transfer->bTooLarge || Result == CURLE_FILESIZE_EXCEEDED ? "response larger than the limit"
																	   : curl_easy_strerror(CURLcode(Result));
		Transfer->bTooLarge = Transfer->bTooLarge || Result == CURLE_FILESIZE_EXCEEDED;
		// A failed transfer delivers no content; its buffer goes at once.
		BufferedBytes -= Transfer->ResponseBody.Max();
		Transfer->ResponseBody.Empty();
	}
	Transfer->EndTime = std::chrono::steady_clock::now();
	curl_multi_remove_handle(Multi, Easy);
	curl_easy_cleanup(Easy);
	curl_slist_free_all(static_cast<curl_slist*>(Transfer->HeaderList));
	Transfer->Easy = nullptr;
	Transfer->HeaderList = nullptr;

	auto Found = std::find_if(Active.begin(), Active.end(),
		[Transfer](const std::unique_ptr<FHttpTransfer>& Item) { return Item.get() == Transfer; });
	std::unique_ptr<FHttpTransfer> Owned = MoveTemp(*Found);
	Active.erase(Found);
	std::lock_guard<std::mutex> Lock(Mutex);
	Finished.push_back(MoveTemp(Owned));
	FinishedSignal.notify_all();
}
