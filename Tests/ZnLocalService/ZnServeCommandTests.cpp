// zn serve as a process: started on port 0, its first line read, then the curl program asks it
// for a token and a motion; bad options are refused with a message and a non-zero exit.
#include "ZnServiceTestSupport.h"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

using namespace ZnServiceTest;

namespace
{
// A running zn serve with its standard output on a pipe and its standard error in a file.
class FServeProcess
{
public:
	explicit FServeProcess(const std::vector<std::string>& Args)
	{
		ErrPath = "serve_stderr_" + std::to_string(getpid()) + "_" + std::to_string(Counter++) + ".txt";
		int Pipe[2];
		if (pipe(Pipe) != 0)
		{
			return;
		}
		Pid = fork();
		if (Pid == 0)
		{
			dup2(Pipe[1], 1);
			const int Err = open(ErrPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
			dup2(Err, 2);
			close(Pipe[0]);
			std::vector<char*> Argv;
			Argv.push_back(const_cast<char*>(ZN_BINARY));
			Argv.push_back(const_cast<char*>("serve"));
			for (const std::string& Arg : Args)
			{
				Argv.push_back(const_cast<char*>(Arg.c_str()));
			}
			Argv.push_back(nullptr);
			execv(ZN_BINARY, Argv.data());
			_exit(127);
		}
		close(Pipe[1]);
		Out = Pipe[0];
	}

	~FServeProcess()
	{
		if (Pid > 0 && !bExited)
		{
			kill(Pid, SIGKILL);
			waitpid(Pid, nullptr, 0);
		}
		if (Out >= 0)
		{
			close(Out);
		}
		std::remove(ErrPath.c_str());
	}

	// The next line of standard output ("" at its end, or after 30 s without one).
	std::string ReadLine()
	{
		std::string Line;
		char C;
		pollfd Poll{Out, POLLIN, 0};
		while (poll(&Poll, 1, 30000) > 0 && read(Out, &C, 1) == 1)
		{
			if (C == '\n')
			{
				return Line;
			}
			Line += C;
		}
		return Line;
	}

	// Sends Signal and waits; the exit status (-1 when killed by a signal).
	int Finish(int Signal)
	{
		if (Signal)
		{
			kill(Pid, Signal);
		}
		// A process that should have ended but did not is killed after 30 s (status -2).
		int Raw = 0;
		for (int Attempt = 0; Attempt < 3000; ++Attempt)
		{
			if (waitpid(Pid, &Raw, WNOHANG) == Pid)
			{
				bExited = true;
				return WIFEXITED(Raw) ? WEXITSTATUS(Raw) : -1;
			}
			usleep(10000);
		}
		return -2;
	}

	std::string Err() const
	{
		std::FILE* File = std::fopen(ErrPath.c_str(), "rb");
		std::string Text;
		if (File)
		{
			char Buffer[4096];
			size_t N;
			while ((N = std::fread(Buffer, 1, sizeof(Buffer), File)) > 0)
			{
				Text.append(Buffer, N);
			}
			std::fclose(File);
		}
		return Text;
	}

private:
	static inline int Counter = 0;
	pid_t Pid = -1;
	int Out = -1;
	bool bExited = false;
	std::string ErrPath;
};

// The curl program's output for Args (each shell-quoted).
std::string Curl(const std::vector<std::string>& Args)
{
	std::string Command = "curl -s -S --max-time 30";
	for (const std::string& Arg : Args)
	{
		std::string Quoted = "'";
		for (char C : Arg)
		{
			Quoted += C == '\'' ? std::string("'\\''") : std::string(1, C);
		}
		Command += " " + Quoted + "'";
	}
	std::string Out;
	std::FILE* Pipe = popen(Command.c_str(), "r");
	if (!Pipe)
	{
		return Out;
	}
	char Buffer[4096];
	size_t N;
	while ((N = std::fread(Buffer, 1, sizeof(Buffer), Pipe)) > 0)
	{
		Out.append(Buffer, N);
	}
	pclose(Pipe);
	return Out;
}
} // namespace

TEST(ZnServeCommand, ServesTokenAndMotionToCurlAndStopsOnSignal)
{
	FServeProcess Serve({"--port", "0"});
	const std::string Base = Serve.ReadLine();
	ASSERT_EQ(Base.rfind("http://127.0.0.1:", 0), 0u) << Base << Serve.Err();
	const int Port = std::stoi(Base.substr(strlen("http://127.0.0.1:")));
	EXPECT_GT(Port, 0);
	for (const char* Path : {"/users/getAppToken", "/v3.0/api/textBroadcastMotion", "/v3.1/api/voiceBroadcastMotion",
			 "/v3.0/api/AnswerCollectMotion", "/v1.0/api/ttsSynthesize", "/files/"})
	{
		EXPECT_EQ(Serve.ReadLine(), Base + Path);
	}

	const Json Token = ParseJson(Curl({Base + TokenQueryNow("demo", "demo-secret")}));
	ASSERT_EQ(Token["code"], 0) << Token.dump();
	const std::string AccessToken = Token["data"]["access_token"];
	const Json Motion = ParseJson(Curl({"-H", "access_token: " + AccessToken, "-H", "Content-Type: application/json",
		"--data", R"({"draft_content": "one two three four five"})", Base + "/v3.0/api/textBroadcastMotion"}));
	ASSERT_EQ(Motion["code"], 0) << Motion.dump();
	const std::string FaceUrl = Motion["data"]["allfaceData"]["oss_url"];
	EXPECT_EQ(FaceUrl.rfind(Base + "/files/", 0), 0u);
	// zn serve speaks: the face is as long as the speech the service reports, to the frame.
	const Json Face = ParseJson(Curl({FaceUrl}));
	ASSERT_TRUE(Face.is_array());
	ASSERT_FALSE(Face.empty());
	EXPECT_EQ(Face[0].size(), 51u);
	const double Duration = Motion["data"]["ttsSynthesizeData"]["duration"].get<double>();
	EXPECT_NEAR(Face.size() / 30.0, Duration, 1.0 / 30.0) << Motion.dump();

	// Its refusals reach curl too.
	const Json Stale = ParseJson(Curl({Base + TokenQuery("demo", "demo-secret", "1000")}));
	EXPECT_EQ(Stale["code"], 10005);
	const Json NoToken = ParseJson(Curl({"--data", "{}", Base + "/v3.0/api/textBroadcastMotion"}));
	EXPECT_EQ(NoToken["code"], 10007);
	const Json Wrong = ParseJson(Curl({Base + TokenQueryNow("demo", "nope")}));
	EXPECT_EQ(Wrong["code"], 10003);

	EXPECT_EQ(Serve.Finish(SIGTERM), 0);
	const std::string Err = Serve.Err();
	EXPECT_NE(Err.find("accepting the app \"demo\" with secret \"demo-secret\""), std::string::npos) << Err;
	EXPECT_NE(Err.find("POST /v3.0/api/textBroadcastMotion -> 200 code 0"), std::string::npos) << Err;
	EXPECT_NE(Err.find("SIGTERM received, stopping"), std::string::npos) << Err;
}

TEST(ZnServeCommand, AppsFaultAndFolderOptions)
{
	const std::string Folder = std::filesystem::absolute("serve_folder_" + std::to_string(getpid())).string();
	FServeProcess Serve({"--app", "one:first", "--app", "two:sec:ond", "--folder", Folder, "--fault", "code=77"});
	const std::string Base = Serve.ReadLine();
	ASSERT_EQ(Base.rfind("http://127.0.0.1:", 0), 0u) << Serve.Err();
	// Every request gets the fault, the token path included.
	EXPECT_EQ(ParseJson(Curl({Base + TokenQueryNow("two", "sec:ond")}))["code"], 77);
	// The URL form replaces it: the secret may hold a colon.
	EXPECT_EQ(
		ParseJson(Curl({FZnLocalService::WithFault(Base + TokenQueryNow("two", "sec:ond"), "delay=0")}))["code"], 0);
	EXPECT_EQ(
		ParseJson(Curl({FZnLocalService::WithFault(Base + TokenQueryNow("demo", "demo-secret"), "delay=0")}))["code"],
		10002);
	EXPECT_EQ(Serve.Finish(SIGINT), 0);
	EXPECT_EQ(Serve.Err().find("accepting the app \"demo\""), std::string::npos);
	EXPECT_NE(Serve.Err().find("every request gets the fault \"code=77\""), std::string::npos);
	EXPECT_TRUE(std::filesystem::is_directory(Folder));
	std::filesystem::remove_all(Folder);
}

TEST(ZnServeCommand, BadOptionsAreRefused)
{
	struct FCase
	{
		std::vector<std::string> Args;
		const char* Needle;
	};
	const FCase Cases[] = {
		{{"--app", "nocolon"}, "--app needs ID:SECRET"},
		{{"--app", ":secret"}, "--app needs ID:SECRET"},
		{{"--tls-cert", "cert.pem"}, "--tls-cert and --tls-key go together"},
		{{"--fault", "explode"}, "unknown fault \"explode\""},
		{{"--port", "70000"}, "--port"},
		{{"--port", "many"}, "--port"},
		{{"--host", "192.0.2.1"}, "cannot listen on 192.0.2.1"},
		{{"--tls-cert", "missing.pem", "--tls-key", "missing.pem"}, "cannot read the TLS file"},
		{{"--folder", "/proc/version/sub"}, "as the folder of hosted files"},
		{{"--unknown"}, "--unknown"},
	};
	for (const FCase& Case : Cases)
	{
		FServeProcess Serve(Case.Args);
		EXPECT_EQ(Serve.ReadLine(), "");
		EXPECT_NE(Serve.Finish(0), 0);
		EXPECT_NE(Serve.Err().find(Case.Needle), std::string::npos) << Serve.Err();
	}
}

TEST(ZnServeCommand, ATakenPortIsRefused)
{
	FServeProcess First({});
	const std::string Base = First.ReadLine();
	ASSERT_FALSE(Base.empty());
	const std::string Port = Base.substr(Base.rfind(':') + 1);
	FServeProcess Second({"--port", Port});
	EXPECT_EQ(Second.ReadLine(), "");
	EXPECT_EQ(Second.Finish(0), 1);
	EXPECT_NE(Second.Err().find("cannot listen on 127.0.0.1 port " + Port), std::string::npos) << Second.Err();
	EXPECT_EQ(First.Finish(SIGTERM), 0);
}
