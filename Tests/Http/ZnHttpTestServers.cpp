#include "ZnHttpTestServers.h"

#include "HAL/PlatformTLS.h"

#include <httplib.h>

#include <arpa/inet.h>
#include <cstdlib>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

FZnTestHttpServer::FZnTestHttpServer(
	const std::function<void(httplib::Server&)>& Routes, const std::string& CertFile, const std::string& KeyFile)
{
	bTls = !CertFile.empty();
	if (bTls)
	{
		Server = std::make_unique<httplib::SSLServer>(CertFile.c_str(), KeyFile.c_str());
	}
	else
	{
		Server = std::make_unique<httplib::Server>();
	}
	// One request per connection: a kept-alive connection would hold the server's stop for
	// its keep-alive time.
	Server->set_keep_alive_max_count(1);
	Routes(*Server);
	BoundPort = Server->bind_to_any_port("127.0.0.1");
	Thread = std::thread([this]() { Server->listen_after_bind(); });
	// stop() only ends a server that has started listening.
	while (!Server->is_running())
	{
		std::this_thread::sleep_for(std::chrono::milliseconds(1));
	}
}

FZnTestHttpServer::~FZnTestHttpServer()
{
	Server->stop();
	Thread.join();
}

std::string FZnTestHttpServer::Url(const std::string& Path) const
{
	return std::string(bTls ? "https" : "http") + "://127.0.0.1:" + std::to_string(BoundPort) + Path;
}

FZnRawTestServer::FZnRawTestServer(FHandler InHandler)
	: Handler(MoveTemp(InHandler))
{
	ListenSocket = socket(AF_INET, SOCK_STREAM, 0);
	sockaddr_in Address = {};
	Address.sin_family = AF_INET;
	Address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
	Address.sin_port = 0;
	bind(ListenSocket, reinterpret_cast<sockaddr*>(&Address), sizeof(Address));
	listen(ListenSocket, 64);
	socklen_t Length = sizeof(Address);
	getsockname(ListenSocket, reinterpret_cast<sockaddr*>(&Address), &Length);
	BoundPort = ntohs(Address.sin_port);
	AcceptThread = std::thread([this]() { AcceptLoop(); });
}

FZnRawTestServer::~FZnRawTestServer()
{
	Stopping = true;
	shutdown(ListenSocket, SHUT_RDWR);
	close(ListenSocket);
	AcceptThread.join();
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		for (int Socket : Connections)
		{
			shutdown(Socket, SHUT_RDWR);
		}
	}
	for (std::thread& Worker : Workers)
	{
		Worker.join();
	}
	for (int Socket : Connections)
	{
		close(Socket);
	}
}

std::string FZnRawTestServer::Url(const std::string& Path) const
{
	return "http://127.0.0.1:" + std::to_string(BoundPort) + Path;
}

void FZnRawTestServer::AcceptLoop()
{
	for (;;)
	{
		const int Socket = accept(ListenSocket, nullptr, nullptr);
		if (Socket < 0)
		{
			return;
		}
		++AcceptedCount;
		std::lock_guard<std::mutex> Lock(Mutex);
		Connections.push_back(Socket);
		Workers.emplace_back(
			[this, Socket]()
			{
				Handler(Socket, Stopping);
				// The connection ends with the handler (the descriptor is closed with the server).
				shutdown(Socket, SHUT_RDWR);
			});
	}
}

std::string FZnRawTestServer::ReadRequestHead(int Socket)
{
	std::string Head;
	char Buffer[1024];
	while (Head.find("\r\n\r\n") == std::string::npos)
	{
		const ssize_t Read = recv(Socket, Buffer, sizeof(Buffer), 0);
		if (Read <= 0)
		{
			return std::string();
		}
		Head.append(Buffer, size_t(Read));
	}
	return Head;
}

std::string FZnRawTestServer::ReadRequest(int Socket)
{
	std::string Request = ReadRequestHead(Socket);
	const size_t HeadEnd = Request.find("\r\n\r\n");
	if (HeadEnd == std::string::npos)
	{
		return Request;
	}
	size_t Length = 0;
	std::string Lower = Request.substr(0, HeadEnd);
	for (char& Char : Lower)
	{
		Char = char(tolower(Char));
	}
	const size_t Header = Lower.find("\r\ncontent-length:");
	if (Header != std::string::npos)
	{
		Length = std::stoul(Lower.substr(Header + 18));
	}
	char Buffer[4096];
	while (Request.size() < HeadEnd + 4 + Length)
	{
		const ssize_t Read = recv(Socket, Buffer, sizeof(Buffer), 0);
		if (Read <= 0)
		{
			break;
		}
		Request.append(Buffer, size_t(Read));
	}
	return Request;
}

void FZnRawTestServer::SendAll(int Socket, const std::string& Bytes)
{
	size_t Sent = 0;
	while (Sent < Bytes.size())
	{
		const ssize_t Wrote = send(Socket, Bytes.data() + Sent, Bytes.size() - Sent, MSG_NOSIGNAL);
		if (Wrote <= 0)
		{
			return;
		}
		Sent += size_t(Wrote);
	}
}

FZnTestCertificates FZnTestCertificates::Make(const std::string& Folder)
{
	FZnTestCertificates Made;
	mkdir(Folder.c_str(), 0755);
	Made.CaFile = Folder + "/ca.pem";
	Made.CertFile = Folder + "/server.pem";
	Made.KeyFile = Folder + "/server.key";
	const std::string CaKey = Folder + "/ca.key";
	const std::string Request = Folder + "/server.csr";
	const std::string Extensions = Folder + "/server.ext";
	{
		FILE* File = fopen(Extensions.c_str(), "w");
		if (!File)
		{
			return Made;
		}
		fputs("subjectAltName=IP:127.0.0.1\nbasicConstraints=CA:FALSE\n", File);
		fclose(File);
	}
	const std::string Quiet = " >/dev/null 2>&1";
	const std::string Commands[] = {
		"openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=ZnTestCA -keyout " + CaKey + " -out " +
			Made.CaFile + Quiet,
		"openssl req -newkey rsa:2048 -nodes -subj /CN=127.0.0.1 -keyout " + Made.KeyFile + " -out " + Request + Quiet,
		"openssl x509 -req -in " + Request + " -CA " + Made.CaFile + " -CAkey " + CaKey +
			" -CAcreateserial -days 2 -extfile " + Extensions + " -out " + Made.CertFile + Quiet,
	};
	for (const std::string& Command : Commands)
	{
		if (std::system(Command.c_str()) != 0)
		{
			return Made;
		}
	}
	Made.bMade = true;
	return Made;
}

void FZnRecordedCompletion::Bind(IHttpRequest& Request)
{
	Request.OnProcessRequestComplete().BindLambda(
		[this](FHttpRequestPtr InRequest, FHttpResponsePtr Response, bool bConnectedSuccessfully)
		{
			++Calls;
			bConnected = bConnectedSuccessfully;
			bResponseValid = Response.IsValid();
			Code = Response ? Response->GetResponseCode() : -1;
			if (Response)
			{
				const TArray<uint8>& Content = Response->GetContent();
				Body.assign(reinterpret_cast<const char*>(Content.GetData()), size_t(Content.Num()));
			}
			ThreadId = FPlatformTLS::GetCurrentThreadId();
			StatusInCall = InRequest->GetStatus();
		});
}

bool ZnTickUntil(const std::function<bool()>& Done, double Seconds)
{
	return FHttpModule::Get().GetHttpManager().TickUntil(Done, Seconds);
}

TSharedRef<IHttpRequest, ESPMode::ThreadSafe> ZnNewRequest(const std::string& Url)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetURL(UTF8_TO_TCHAR(Url.c_str()));
	return Request;
}

FZnRecordedCompletion ZnFetch(const std::string& Url)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Url);
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	const bool bStarted = Request->ProcessRequest();
	if (bStarted)
	{
		ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; });
	}
	// The recorder is returned by value: the request must not call into this copy later.
	Request->OnProcessRequestComplete().Unbind();
	return Recorded;
}
