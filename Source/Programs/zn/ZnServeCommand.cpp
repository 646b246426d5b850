// zn serve: runs the local stand-in for the motion service until interrupted (SIGINT or
// SIGTERM end it cleanly). The first line on standard output is the base URL, then the URL of
// every path it serves, one per line; requests are logged to standard error, one line each.
#include "ZnCommand.h"
#include "ZnExit.h"
#include "ZnLocalService.h"
#include "ZnSpeechContentSource.h"

#include <csignal>
#include <memory>
#include <pthread.h>
#include <string>
#include <vector>

namespace
{
struct FZnServeOptions
{
	std::string Host = "127.0.0.1";
	int Port = 0;
	std::vector<std::string> Apps;
	std::string Folder;
	std::string TlsCert;
	std::string TlsKey;
	std::string Fault;
	bool bAllowRemoteAudio = false;
	std::string Content = "speech";
};

// "ID:SECRET" split at the first colon; false for a missing colon or an empty id.
bool ParseApp(const std::string& Text, FZnLocalServiceApp& Out)
{
	const size_t Colon = Text.find(':');
	if (Colon == std::string::npos || Colon == 0)
	{
		return false;
	}
	Out.AppId = Text.substr(0, Colon);
	Out.Secret = Text.substr(Colon + 1);
	return true;
}

int RunServe(const FZnServeOptions& Options, ZnCommandContext& Ctx)
{
	FZnLocalServiceConfig Config;
	Config.Host = Options.Host;
	Config.Port = Options.Port;
	Config.Folder = Options.Folder;
	Config.TlsCertFile = Options.TlsCert;
	Config.TlsKeyFile = Options.TlsKey;
	Config.DefaultFault = Options.Fault;
	Config.bAllowRemoteAudio = Options.bAllowRemoteAudio;
	// Real speech by default, so a client sees what zn demo shows; the motion generator's clips
	// (a tone for audio) are quicker when only the transport matters.
	if (Options.Content == "speech")
	{
		Config.Content = MakeSpeechContentSource();
	}
	for (const std::string& Text : Options.Apps)
	{
		FZnLocalServiceApp App;
		if (!ParseApp(Text, App))
		{
			ZnPrint(Ctx.Err, "zn serve: --app needs ID:SECRET with a non-empty id, not \"%s\"\n", Text.c_str());
			return ZnExit::Usage;
		}
		Config.Apps.push_back(App);
	}
	if (Options.TlsCert.empty() != Options.TlsKey.empty())
	{
		ZnPrint(Ctx.Err, "zn serve: --tls-cert and --tls-key go together\n");
		return ZnExit::Usage;
	}

	// The signals are taken by this thread alone: blocked here before the service's threads
	// exist (they inherit the mask), then waited for.
	sigset_t Signals;
	sigemptyset(&Signals);
	sigaddset(&Signals, SIGINT);
	sigaddset(&Signals, SIGTERM);
	pthread_sigmask(SIG_BLOCK, &Signals, nullptr);

	const bool bDemoApp = Config.Apps.empty();
	FZnLocalService Service(std::move(Config));
	std::string Error;
	if (!Service.Start(Error))
	{
		ZnPrint(Ctx.Err, "zn serve: %s\n", Error.c_str());
		return ZnExit::Failed;
	}
	Ctx.Out << Service.BaseUrl() << "\n";
	for (const std::string& Path : Service.ServedPaths())
	{
		Ctx.Out << Service.BaseUrl() << Path << "\n";
	}
	Ctx.Out.flush();
	if (bDemoApp)
	{
		ZnPrint(Ctx.Err, "zn serve: no --app given; accepting the app \"demo\" with secret \"demo-secret\"\n");
	}
	if (!Options.Fault.empty())
	{
		ZnPrint(Ctx.Err, "zn serve: every request gets the fault \"%s\"\n", Options.Fault.c_str());
	}
	Ctx.Err.flush();

	int Signal = 0;
	sigwait(&Signals, &Signal);
	ZnPrint(Ctx.Err, "zn serve: %s received, stopping\n", Signal == SIGINT ? "SIGINT" : "SIGTERM");
	Service.Stop();
	return 0;
}

ZnCommandRegistrar Registrar("serve", "Run the local stand-in for the motion service until interrupted",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto Options = std::make_shared<FZnServeOptions>();
		Cmd.add_option("--host", Options->Host, "Address to listen on (default 127.0.0.1, loopback only)");
		Cmd.add_option("--port", Options->Port, "Port to listen on; 0 picks a free one")
			->transform(ZnNumberOption("a port number from 0 to 65535", 0, 65535, true));
		Cmd.add_option("--app", Options->Apps, "An accepted app as ID:SECRET (repeatable; default demo:demo-secret)");
		Cmd.add_option("--folder", Options->Folder, "Folder of the hosted files (default: a temporary one)");
		Cmd.add_option("--tls-cert", Options->TlsCert, "PEM certificate: serve HTTPS (with --tls-key)");
		Cmd.add_option("--tls-key", Options->TlsKey, "PEM private key of the certificate");
		Cmd.add_option("--fault", Options->Fault,
			"A fault for every request: delay=<ms>, status=<code>, drop, truncate, malformed, code=<n>, stall, "
			"restatus=<code>, reply=<name>");
		Cmd.add_option("--content", Options->Content,
			   "What the service generates: speech (espeak-ng speech with a face and body that follow it) or "
			   "motion (generated clips and a tone)")
			->transform(CLI::IsMember({"speech", "motion"}))
			->capture_default_str();
		Cmd.add_flag("--allow-remote-audio", Options->bAllowRemoteAudio,
			"Voice requests may name audio URLs this service does not host");
		return [Options, &Ctx]() { return RunServe(*Options, Ctx); };
	});
} // namespace
