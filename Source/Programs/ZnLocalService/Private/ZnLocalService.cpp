#include "ZnLocalService.h"

#include "ZnConnectionSocket.h"
#include "ZnMotionContentSource.h"
#include "ZnServiceFault.h"
#include "ZnServiceHandler.h"

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <thread>

const char* const FZnLocalService::SpeechPath = "/v1.0/api/ttsSynthesize";
const char* const FZnLocalService::FilesPath = "/files/";

namespace
{
const char* const FaultPrefix = "/_fault/";

// How long an idle kept-alive connection stays open; Stop waits for at most this.
constexpr time_t KeepAliveSeconds = 1;

std::string RawQueryOf(const std::string& Target)
{
	const size_t Question = Target.find('?');
	return Question == std::string::npos ? std::string() : Target.substr(Question + 1);
}
} // namespace

struct FZnLocalService::FImpl
{
	struct FInjected
	{
		std::string PathPrefix;
		FZnServiceFault Fault;
		int32_t Remaining = 0;
	};

	FZnLocalServiceConfig Config;
	std::unique_ptr<httplib::Server> Server;
	std::unique_ptr<FZnServiceHandler> Handler;
	std::thread ListenThread;
	std::string Base;
	int32_t BoundPort = 0;
	std::filesystem::path TemporaryFolder;
	FZnServiceFault DefaultFault;

	// Delays and stalls wait on this, so Stop can end them.
	std::mutex WaitMutex;
	std::condition_variable WaitSignal;
	bool bStopping = false;

	std::mutex FaultMutex;
	std::vector<FInjected> Injected;
	std::atomic<uint64_t> Requests{0};
	std::atomic<bool> bListenReturned{false};
	std::mutex LogMutex;

	// Forgets the server and handler and removes a temporary folder (after Stop, or a failed Start).
	void ReleaseServer()
	{
		Server.reset();
		Handler.reset();
		if (!TemporaryFolder.empty())
		{
			std::error_code Ignored;
			std::filesystem::remove_all(TemporaryFolder, Ignored);
			TemporaryFolder.clear();
		}
	}

	void Log(const std::string& Line)
	{
		std::lock_guard<std::mutex> Lock(LogMutex);
		if (Config.LogLine)
		{
			Config.LogLine(Line);
		}
		else
		{
			std::cerr << Line << std::endl;
		}
	}

	void LogRequest(const httplib::Request& Request, const std::string& Path, int32_t Status, int32_t Code,
		const std::string& Message, const FZnServiceFault& Fault, std::chrono::steady_clock::time_point Began)
	{
		++Requests;
		const auto Elapsed =
			std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - Began).count();
		std::string Line = Request.method + " " + Path + " -> ";
		Line += Status > 0 ? std::to_string(Status) : std::string("no answer");
		Line += " code " + std::to_string(Code) + " (" + std::to_string(Elapsed) + " ms)";
		if (Fault.Kind != EZnFaultKind::None)
		{
			Line += " [fault " + Fault.ToString() + "]";
		}
		if (!Message.empty())
		{
			Line += " " + Message;
		}
		Log(Line);
	}

	// Waits Milliseconds (or until Stop); false when stopping.
	bool Wait(int64_t Milliseconds)
	{
		std::unique_lock<std::mutex> Lock(WaitMutex);
		WaitSignal.wait_for(Lock, std::chrono::milliseconds(Milliseconds), [this] { return bStopping; });
		return !bStopping;
	}

	// The fault for this request: the URL form first, then an injected one, then the default.
	// Path loses the URL form's prefix. False (with Error) when the URL form names no fault.
	bool TakeFault(std::string& Path, FZnServiceFault& Out, std::string& Error)
	{
		if (Path.compare(0, strlen(FaultPrefix), FaultPrefix) == 0)
		{
			const size_t NameEnd = Path.find('/', strlen(FaultPrefix));
			const std::string Text = Path.substr(strlen(FaultPrefix), NameEnd - strlen(FaultPrefix));
			Path = NameEnd == std::string::npos ? "/" : Path.substr(NameEnd);
			return FZnServiceFault::Parse(Text, Out, Error);
		}
		{
			std::lock_guard<std::mutex> Lock(FaultMutex);
			for (auto It = Injected.begin(); It != Injected.end(); ++It)
			{
				if (Path.compare(0, It->PathPrefix.size(), It->PathPrefix) == 0)
				{
					Out = It->Fault;
					if (--It->Remaining <= 0)
					{
						Injected.erase(It);
					}
					return true;
				}
			}
		}
		Out = DefaultFault;
		return true;
	}

	void Serve(const httplib::Request& Request, httplib::Response& Response)
	{
		const auto Began = std::chrono::steady_clock::now();
		std::string Path = Request.path;
		FZnServiceFault Fault;
		std::string FaultError;
		if (!TakeFault(Path, Fault, FaultError))
		{
			const FZnServiceAnswer Answer = FZnServiceHandler::Refusal(400, EZnServiceCode::BadRequest, FaultError);
			Response.status = Answer.Status;
			Response.set_content(Answer.Body, Answer.ContentType.c_str());
			LogRequest(Request, Request.path, Answer.Status, Answer.Code, Answer.Message, Fault, Began);
			return;
		}

		switch (Fault.Kind)
		{
			case EZnFaultKind::Delay:
				if (!Wait(Fault.Value))
				{
					DropConnection(Request, Response);
					LogRequest(Request, Path, 0, 0, "stopped while delaying", Fault, Began);
					return;
				}
				break;
			case EZnFaultKind::Drop:
				DropConnection(Request, Response);
				LogRequest(Request, Path, 0, 0, "connection dropped", Fault, Began);
				return;
			case EZnFaultKind::Stall:
				Stall(Request);
				DropConnection(Request, Response);
				LogRequest(Request, Path, 0, 0, "stalled until the client or the service gave up", Fault, Began);
				return;
			case EZnFaultKind::Status:
			{
				const FZnServiceAnswer Answer = FZnServiceHandler::Refusal(int32_t(Fault.Value),
					EZnServiceCode::InjectedStatus, "injected fault: status " + std::to_string(Fault.Value));
				Response.status = Answer.Status;
				Response.set_content(Answer.Body, Answer.ContentType.c_str());
				LogRequest(Request, Path, Answer.Status, Answer.Code, Answer.Message, Fault, Began);
				return;
			}
			case EZnFaultKind::Malformed:
				Response.status = 200;
				Response.set_content(
					"{\"code\": 0, \"msg\": \"injected fault: malformed\", \"data\": {\"allfaceData\": [",
					"application/json");
				LogRequest(Request, Path, 200, 0, "malformed JSON", Fault, Began);
				return;
			case EZnFaultKind::Code:
			{
				const FZnServiceAnswer Answer = FZnServiceHandler::Refusal(
					200, EZnServiceCode::Ok, "injected fault: code " + std::to_string(Fault.Value));
				Response.status = 200;
				Response.set_content("{\"code\":" + std::to_string(Fault.Value) + ",\"msg\":\"injected fault: code " +
						std::to_string(Fault.Value) + "\"}",
					"application/json");
				LogRequest(Request, Path, 200, int32_t(Fault.Value), Answer.Message, Fault, Began);
				return;
			}
			default:
				break;
		}

		FZnServiceRequest ServiceRequest;
		ServiceRequest.Method = Request.method;
		ServiceRequest.Path = Path;
		if (Fault.Kind == EZnFaultKind::Reply)
		{
			// The hosted file stands in for the answer; a name that is not hosted is refused as usual.
			ServiceRequest.Method = "GET";
			ServiceRequest.Path = FilesPath + Fault.Name;
		}
		ServiceRequest.Query = RawQueryOf(Request.target);
		ServiceRequest.Headers.assign(Request.headers.begin(), Request.headers.end());
		ServiceRequest.Body = Request.body;
		FZnServiceAnswer Answer = Handler->Handle(ServiceRequest);

		if (Fault.Kind == EZnFaultKind::Reply && Answer.Status == 200)
		{
			Answer.ContentType = "application/json";
		}
		Response.status = Fault.Kind == EZnFaultKind::Restatus ? int(Fault.Value) : Answer.Status;
		if (Fault.Kind == EZnFaultKind::Truncate)
		{
			// The full length is announced; half the body is sent, then the provider fails, which
			// makes the library close the connection.
			auto Body = std::make_shared<std::string>(std::move(Answer.Body));
			Response.set_content_provider(Body->size(), Answer.ContentType.c_str(),
				[Body](size_t Offset, size_t, httplib::DataSink& Sink)
				{
					const size_t Half = Body->size() / 2;
					if (Offset < Half)
					{
						Sink.write(Body->data() + Offset, Half - Offset);
					}
					return false;
				});
		}
		else
		{
			Response.set_content(std::move(Answer.Body), Answer.ContentType.c_str());
		}
		LogRequest(Request, Path, Response.status, Answer.Code, Answer.Message, Fault, Began);
	}

	void DropConnection(const httplib::Request& Request, httplib::Response& Response)
	{
		FZnConnectionSocket::Drop(FZnConnectionSocket::Find(Request.local_port, Request.remote_port));
		// Nothing reaches the peer; a 200 keeps the library's error handler out of it.
		Response.status = 200;
	}

	void Stall(const httplib::Request& Request)
	{
		const int Socket = FZnConnectionSocket::Find(Request.local_port, Request.remote_port);
		while (Wait(20))
		{
			if (Socket >= 0 && FZnConnectionSocket::PeerHasClosed(Socket))
			{
				return;
			}
		}
	}

	// Answers the library's own refusals (a body too large, an unreadable request) in the
	// service's envelope; the service's answers already have a body and pass through.
	httplib::Server::HandlerResponse LibraryError(const httplib::Request& Request, httplib::Response& Response)
	{
		if (!Response.body.empty() || Response.content_length_ > 0)
		{
			return httplib::Server::HandlerResponse::Unhandled;
		}
		EZnServiceCode Code = EZnServiceCode::BadRequest;
		std::string Message = "the HTTP request could not be read (HTTP " + std::to_string(Response.status) + ")";
		switch (Response.status)
		{
			case 413:
				Code = EZnServiceCode::RequestTooLarge;
				Message =
					"the request body is larger than the " + std::to_string(Config.MaxBodyBytes) + " bytes accepted";
				break;
			case 414:
				Code = EZnServiceCode::RequestTooLarge;
				Message = "the request URL is too long";
				break;
			case 404:
				Code = EZnServiceCode::UnknownPath;
				Message = "unknown path \"" + Request.path + "\"";
				break;
			default:
				break;
		}
		const FZnServiceAnswer Answer = FZnServiceHandler::Refusal(Response.status, Code, Message);
		Response.set_content(Answer.Body, Answer.ContentType.c_str());
		LogRequest(Request, Request.path.empty() ? std::string("?") : Request.path, Response.status, Answer.Code,
			Message, FZnServiceFault(), std::chrono::steady_clock::now());
		return httplib::Server::HandlerResponse::Handled;
	}
};

FZnLocalService::FZnLocalService(FZnLocalServiceConfig Config)
	: Impl(std::make_unique<FImpl>())
{
	Impl->Config = std::move(Config);
}

FZnLocalService::~FZnLocalService()
{
	Stop();
}

bool FZnLocalService::Start(std::string& Error)
{
	if (Impl->Server)
	{
		Error = "the service is already running";
		return false;
	}
	FZnLocalServiceConfig& Config = Impl->Config;
	std::string FaultError;
	if (!FZnServiceFault::Parse(Config.DefaultFault, Impl->DefaultFault, FaultError))
	{
		Error = FaultError;
		return false;
	}
	const bool bTls = !Config.TlsCertFile.empty() || !Config.TlsKeyFile.empty();
	if (bTls && (Config.TlsCertFile.empty() || Config.TlsKeyFile.empty()))
	{
		Error = "HTTPS needs both a certificate and a key file";
		return false;
	}

	// The folder: the configured one (made if missing) or a fresh temporary one.
	std::error_code Failure;
	std::string Folder = Config.Folder;
	if (Folder.empty())
	{
		std::string Template = (std::filesystem::temp_directory_path(Failure) / "zn-local-service-XXXXXX").string();
		if (Failure || !mkdtemp(Template.data()))
		{
			Error = "cannot make a temporary folder for the hosted files";
			return false;
		}
		Impl->TemporaryFolder = Template;
		Folder = Template;
	}
	else
	{
		std::filesystem::create_directories(Folder, Failure);
		if (!std::filesystem::is_directory(Folder))
		{
			Error = "cannot use \"" + Folder + "\" as the folder of hosted files";
			return false;
		}
	}
	const auto Fail = [this, &Error](const std::string& Message)
	{
		Error = Message;
		Impl->ReleaseServer();
		return false;
	};

	if (bTls)
	{
		for (const std::string& File : {Config.TlsCertFile, Config.TlsKeyFile})
		{
			if (!std::filesystem::is_regular_file(File))
			{
				return Fail("cannot read the TLS file \"" + File + "\"");
			}
		}
		Impl->Server = std::make_unique<httplib::SSLServer>(Config.TlsCertFile.c_str(), Config.TlsKeyFile.c_str());
		if (!Impl->Server->is_valid())
		{
			return Fail("the TLS certificate \"" + Config.TlsCertFile + "\" and key \"" + Config.TlsKeyFile +
				"\" cannot be loaded (not PEM, or not a matching pair)");
		}
	}
	else
	{
		Impl->Server = std::make_unique<httplib::Server>();
	}

	FZnLocalServiceConfig HandlerConfig = Config;
	HandlerConfig.Folder = Folder;
	if (!HandlerConfig.Content)
	{
		HandlerConfig.Content = std::make_shared<FZnMotionContentSource>();
	}
	Impl->Handler = std::make_unique<FZnServiceHandler>(HandlerConfig);

	httplib::Server& Server = *Impl->Server;
	const size_t Workers = size_t(std::max(Config.WorkerThreads, 1));
	Server.new_task_queue = [Workers] { return new httplib::ThreadPool(Workers); };
	// The library's default also sets SO_REUSEPORT, which lets a second server bind a port in use
	// and share its connections; a taken port must be an error instead.
	Server.set_socket_options(
		[](socket_t Socket)
		{
			int Yes = 1;
			setsockopt(Socket, SOL_SOCKET, SO_REUSEADDR, &Yes, sizeof(Yes));
		});
	// An answer goes out as two writes, the head and then the body; with Nagle's algorithm the
	// body's last partial segment waits for the client's delayed acknowledgement of the rest,
	// tens of milliseconds on a large file, which would make every download look slower than it is.
	Server.set_tcp_nodelay(true);
	Server.set_payload_max_length(size_t(std::max<int64_t>(Config.MaxBodyBytes, 0)));
	Server.set_keep_alive_timeout(KeepAliveSeconds);
	FImpl* State = Impl.get();
	const auto Serve = [State](const httplib::Request& Request, httplib::Response& Response)
	{ State->Serve(Request, Response); };
	Server.Get(".*", Serve);
	Server.Post(".*", Serve);
	Server.Put(".*", Serve);
	Server.Patch(".*", Serve);
	Server.Delete(".*", Serve);
	Server.Options(".*", Serve);
	Server.set_error_handler(
		httplib::Server::HandlerWithResponse([State](const httplib::Request& Request, httplib::Response& Response)
			{ return State->LibraryError(Request, Response); }));
	Server.set_exception_handler(
		[](const httplib::Request&, httplib::Response& Response, std::exception_ptr)
		{
			const FZnServiceAnswer Answer =
				FZnServiceHandler::Refusal(500, EZnServiceCode::ContentFailed, "the service failed inside");
			Response.status = 500;
			Response.set_content(Answer.Body, Answer.ContentType.c_str());
		});

	// A peer that goes away mid-answer must not end the process.
	std::signal(SIGPIPE, SIG_IGN);
	int Port = Config.Port;
	if (Port == 0)
	{
		Port = Server.bind_to_any_port(Config.Host);
		if (Port <= 0)
		{
			return Fail("cannot listen on " + Config.Host + " (any port)");
		}
	}
	else if (!Server.bind_to_port(Config.Host, Port))
	{
		return Fail("cannot listen on " + Config.Host + " port " + std::to_string(Port));
	}
	Impl->BoundPort = Port;
	const std::string Host = Config.Host.find(':') != std::string::npos ? "[" + Config.Host + "]" : Config.Host;
	Impl->Base = std::string(bTls ? "https" : "http") + "://" + Host + ":" + std::to_string(Port);
	Impl->Handler->SetBaseUrl(Impl->Base);
	{
		std::lock_guard<std::mutex> Lock(Impl->WaitMutex);
		Impl->bStopping = false;
	}
	Impl->Requests = 0;
	// The socket is listening already: connections made from here on wait for the accept loop.
	Impl->bListenReturned = false;
	Impl->ListenThread = std::thread(
		[State]
		{
			State->Server->listen_after_bind();
			State->bListenReturned = true;
		});
	// The library's stop() does nothing until its accept loop has begun, so Stop right after Start
	// would leave that loop waiting forever: Start returns only once it runs.
	while (!Impl->Server->is_running() && !Impl->bListenReturned)
	{
		std::this_thread::sleep_for(std::chrono::milliseconds(1));
	}
	return true;
}

void FZnLocalService::Stop()
{
	if (!Impl->Server)
	{
		return;
	}
	{
		std::lock_guard<std::mutex> Lock(Impl->WaitMutex);
		Impl->bStopping = true;
	}
	Impl->WaitSignal.notify_all();
	Impl->Server->stop();
	if (Impl->ListenThread.joinable())
	{
		Impl->ListenThread.join();
	}
	Impl->ReleaseServer();
}

std::string FZnLocalService::BaseUrl() const
{
	return Impl->Server ? Impl->Base : std::string();
}

int32_t FZnLocalService::Port() const
{
	return Impl->Server ? Impl->BoundPort : 0;
}

std::vector<std::string> FZnLocalService::ServedPaths() const
{
	return {"/users/getAppToken", "/v3.0/api/textBroadcastMotion", "/v3.1/api/voiceBroadcastMotion",
		"/v3.0/api/AnswerCollectMotion", SpeechPath, FilesPath};
}

std::string FZnLocalService::HostFile(const std::string& Name, const std::vector<uint8_t>& Bytes)
{
	return Impl->Handler ? Impl->Handler->HostFile(Name, Bytes) : std::string();
}

std::string FZnLocalService::IssueToken(const std::string& AppId, int32_t LifetimeSeconds)
{
	return Impl->Handler ? Impl->Handler->IssueToken(AppId, LifetimeSeconds) : std::string();
}

void FZnLocalService::InjectFault(const std::string& PathPrefix, const std::string& Fault, int32_t Count)
{
	FZnServiceFault Parsed;
	std::string Error;
	if (!FZnServiceFault::Parse(Fault, Parsed, Error) || Count <= 0)
	{
		Impl->Log("InjectFault ignored: " + (Error.empty() ? std::string("a count below 1") : Error));
		return;
	}
	std::lock_guard<std::mutex> Lock(Impl->FaultMutex);
	Impl->Injected.push_back({PathPrefix, Parsed, Count});
}

std::string FZnLocalService::WithFault(const std::string& Url, const std::string& Fault)
{
	const size_t Scheme = Url.find("://");
	const size_t HostStart = Scheme == std::string::npos ? 0 : Scheme + 3;
	const size_t PathStart = Url.find_first_of("/?#", HostStart);
	const std::string Origin = Url.substr(0, PathStart);
	std::string Rest = PathStart == std::string::npos ? std::string() : Url.substr(PathStart);
	if (Rest.empty() || Rest[0] != '/')
	{
		Rest = "/" + Rest;
	}
	return Origin + FaultPrefix + Fault + Rest;
}

uint64_t FZnLocalService::RequestCount() const
{
	return Impl->Requests;
}
