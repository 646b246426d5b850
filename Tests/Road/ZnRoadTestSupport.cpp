#include "ZnRoadTestSupport.h"

#include "Containers/StringConv.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>

IMPLEMENT_INTRINSIC_CLASS(UZnRoadListener, , UObject, COREUOBJECT_API, "/Script/ZnRoadTests", {})

FZnRoadService::FZnRoadService(FZnLocalServiceConfig Config)
{
	if (!Config.LogLine)
	{
		// Quiet: the tests read answers, not the service's request log.
		Config.LogLine = [](const std::string&) {};
	}
	Service = std::make_unique<FZnLocalService>(MoveTemp(Config));
	std::string Error;
	if (!Service->Start(Error))
	{
		ADD_FAILURE() << "the local service did not start: " << Error;
		Service.reset();
	}
}

bool ZnRoadTickUntil(const std::function<bool()>& Done, double Seconds)
{
	return FHttpModule::Get().GetHttpManager().TickUntil(Done, Seconds);
}

FString ZnText(const std::string& Utf8)
{
	const FUTF8ToTCHAR Text(Utf8.data(), int32(Utf8.size()));
	return FString(Text.Length(), Text.Get());
}

std::string ZnUtf8(const FString& Text)
{
	const FTCHARToUTF8 Utf8(*Text, Text.Len());
	return std::string(Utf8.Get(), size_t(Utf8.Length()));
}

std::string ZnBytes(const TArray<uint8>& Bytes)
{
	return std::string(reinterpret_cast<const char*>(Bytes.GetData()), size_t(Bytes.Num()));
}

TArray<uint8> ZnByteArray(const std::string& Bytes)
{
	return TArray<uint8>(reinterpret_cast<const uint8*>(Bytes.data()), int32(Bytes.size()));
}

namespace
{
long long FileSize(const char* Path)
{
	struct stat Info;
	return stat(Path, &Info) == 0 ? (long long)Info.st_size : 0;
}
} // namespace

FZnLogFileWatch::FZnLogFileWatch()
	: StartSize(FileSize("dm_ue.txt"))
{
}

std::vector<std::string> FZnLogFileWatch::NewLines() const
{
	std::ifstream File("dm_ue.txt", std::ios::binary);
	File.seekg(StartSize);
	std::vector<std::string> Lines;
	std::string Line;
	while (std::getline(File, Line))
	{
		// "[YYYY-MM-DD HH:MM:SS.mmm] " is 26 characters.
		Lines.push_back(Line.size() >= 26 ? Line.substr(26) : Line);
	}
	return Lines;
}
