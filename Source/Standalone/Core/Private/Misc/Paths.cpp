#include "Misc/Paths.h"

#include "HAL/ZnNativeString.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

using ZnStandalone::FromUtf16;
using ZnStandalone::ToNative;
using ZnStandalone::ToUtf16;

namespace
{
bool IsSeparator(char16_t Char)
{
	return Char == u'/' || Char == u'\\';
}

FString& ProjectDirOverride()
{
	static FString Dir;
	return Dir;
}

FString WorkingDirectory()
{
	std::string Buffer(256, '\0');
	while (getcwd(Buffer.data(), Buffer.size()) == nullptr)
	{
		if (errno != ERANGE || Buffer.size() > (1u << 20))
		{
			// Without a working directory the root is the only directory that surely exists.
			return FString(TEXT("/"));
		}
		Buffer.resize(Buffer.size() * 2);
	}
	Buffer.resize(std::char_traits<char>::length(Buffer.c_str()));
	if (Buffer.empty() || Buffer.back() != '/')
	{
		Buffer += '/';
	}
	return ZnStandalone::FromNative(Buffer);
}

// Index of the last separator, or npos.
size_t LastSeparator(const std::u16string& Path)
{
	const size_t Slash = Path.find_last_of(u"/\\");
	return Slash;
}

bool StatPath(const FString& InPath, struct stat& Info)
{
	if (InPath.IsEmpty())
	{
		return false;
	}
	return stat(ToNative(InPath).c_str(), &Info) == 0;
}
} // namespace

FString FPaths::ProjectDir()
{
	const FString& Override = ProjectDirOverride();
	return Override.IsEmpty() ? WorkingDirectory() : Override;
}

FString FPaths::ProjectContentDir()
{
	return ProjectDir() + TEXT("Content/");
}

FString FPaths::ProjectConfigDir()
{
	return ProjectDir() + TEXT("Config/");
}

FString FPaths::ProjectPluginsDir()
{
	return ProjectDir() + TEXT("Plugins/");
}

void FPaths::SetProjectDir(const FString& Dir)
{
	FString Normalised = Dir;
	NormalizeFilename(Normalised);
	std::u16string Text = ToUtf16(Normalised);
	if (!Text.empty() && Text.back() != u'/')
	{
		Text += u'/';
	}
	ProjectDirOverride() = FromUtf16(Text);
}

FString FPaths::GetCleanFilename(const FString& InPath)
{
	const std::u16string Path = ToUtf16(InPath);
	const size_t Slash = LastSeparator(Path);
	return Slash == std::u16string::npos ? InPath : FromUtf16(Path.substr(Slash + 1));
}

FString FPaths::GetBaseFilename(const FString& InPath, bool bRemovePath)
{
	const std::u16string Path = ToUtf16(bRemovePath ? GetCleanFilename(InPath) : InPath);
	const size_t Dot = Path.find_last_of(u'.');
	const size_t Slash = LastSeparator(Path);
	// A point inside a directory name is not an extension.
	if (Dot != std::u16string::npos && (Slash == std::u16string::npos || Dot > Slash))
	{
		return FromUtf16(Path.substr(0, Dot));
	}
	return FromUtf16(Path);
}

FString FPaths::GetExtension(const FString& InPath, bool bIncludeDot)
{
	const std::u16string Filename = ToUtf16(GetCleanFilename(InPath));
	const size_t Dot = Filename.find_last_of(u'.');
	if (Dot == std::u16string::npos)
	{
		return FString();
	}
	return FromUtf16(Filename.substr(bIncludeDot ? Dot : Dot + 1));
}

FString FPaths::GetPath(const FString& InPath)
{
	const std::u16string Path = ToUtf16(InPath);
	const size_t Slash = LastSeparator(Path);
	return Slash == std::u16string::npos ? FString() : FromUtf16(Path.substr(0, Slash));
}

void FPaths::Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart)
{
	PathPart = GetPath(InPath);
	FilenamePart = GetBaseFilename(InPath);
	ExtensionPart = GetExtension(InPath);
}

bool FPaths::FileExists(const FString& InPath)
{
	struct stat Info;
	return StatPath(InPath, Info) && S_ISREG(Info.st_mode);
}

bool FPaths::DirectoryExists(const FString& InPath)
{
	struct stat Info;
	return StatPath(InPath, Info) && S_ISDIR(Info.st_mode);
}

bool FPaths::IsRelative(const FString& InPath)
{
	const std::u16string Path = ToUtf16(InPath);
	if (!Path.empty() && IsSeparator(Path[0]))
	{
		return false;
	}
	const bool bDriveLetter = Path.size() >= 2 && Path[1] == u':' &&
		((Path[0] >= u'A' && Path[0] <= u'Z') || (Path[0] >= u'a' && Path[0] <= u'z'));
	return !bDriveLetter;
}

void FPaths::NormalizeFilename(FString& InPath)
{
	std::u16string Path = ToUtf16(InPath);
	for (char16_t& Char : Path)
	{
		if (Char == u'\\')
		{
			Char = u'/';
		}
	}
	InPath = FromUtf16(Path);
}

void FPaths::NormalizeDirectoryName(FString& InPath)
{
	std::u16string Path = ToUtf16(InPath);
	while (Path.size() > 1 && IsSeparator(Path.back()))
	{
		Path.pop_back();
	}
	InPath = FromUtf16(Path);
}

bool FPaths::CollapseRelativeDirectories(FString& InPath)
{
	const std::u16string Path = ToUtf16(InPath);
	const bool bRooted = !Path.empty() && Path[0] == u'/';
	const bool bTrailing = !Path.empty() && Path.back() == u'/';

	std::vector<std::u16string> Parts;
	size_t Start = 0;
	while (Start <= Path.size())
	{
		size_t End = Path.find(u'/', Start);
		if (End == std::u16string::npos)
		{
			End = Path.size();
		}
		const std::u16string Part = Path.substr(Start, End - Start);
		if (Part == u"..")
		{
			if (!Parts.empty() && Parts.back() != u"..")
			{
				Parts.pop_back();
			}
			else if (!bRooted)
			{
				return false;
			}
			// Above the root is the root itself.
		}
		else if (!Part.empty() && Part != u".")
		{
			Parts.push_back(Part);
		}
		Start = End + 1;
	}

	std::u16string Result = bRooted ? u"/" : u"";
	for (size_t Index = 0; Index < Parts.size(); ++Index)
	{
		Result += Parts[Index];
		if (Index + 1 < Parts.size())
		{
			Result += u'/';
		}
	}
	if (bTrailing && !Parts.empty())
	{
		Result += u'/';
	}
	InPath = FromUtf16(Result);
	return true;
}

FString FPaths::ConvertRelativePathToFull(const FString& InPath)
{
	return ConvertRelativePathToFull(WorkingDirectory(), InPath);
}

FString FPaths::ConvertRelativePathToFull(const FString& BasePath, const FString& InPath)
{
	FString Full;
	if (IsRelative(InPath))
	{
		Full = BasePath;
		FString Normalised = InPath;
		NormalizeFilename(Normalised);
		const std::u16string Base = ToUtf16(Full);
		if (!Base.empty() && !IsSeparator(Base.back()))
		{
			Full += TEXT("/");
		}
		Full += Normalised;
	}
	else
	{
		Full = InPath;
	}
	NormalizeFilename(Full);
	FString Collapsed = Full;
	if (CollapseRelativeDirectories(Collapsed))
	{
		Full = Collapsed;
	}
	return Full;
}

void FPaths::AppendPart(FString& Result, const FString& Part)
{
	if (Part.IsEmpty())
	{
		return;
	}
	const std::u16string Left = ToUtf16(Result);
	const std::u16string Right = ToUtf16(Part);
	if (!Left.empty() && !IsSeparator(Left.back()) && Right[0] != u'/')
	{
		Result += TEXT("/");
	}
	Result += Part;
}
