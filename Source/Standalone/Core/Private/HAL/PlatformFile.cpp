#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/PlatformFileManager.h"

#include "Containers/UnrealString.h"
#include "HAL/ZnNativeString.h"
#include "Misc/Paths.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using ZnStandalone::ToNative;

namespace
{
std::string NativePath(const TCHAR* Filename)
{
	return Filename ? ToNative(FString(Filename)) : std::string();
}

class FPosixFileHandle final : public IFileHandle
{
public:
	explicit FPosixFileHandle(int InDescriptor)
		: Descriptor(InDescriptor)
	{
	}

	~FPosixFileHandle() override { close(Descriptor); }

	int64 Tell() override { return static_cast<int64>(lseek(Descriptor, 0, SEEK_CUR)); }

	bool Seek(int64 NewPosition) override
	{
		return NewPosition >= 0 && lseek(Descriptor, static_cast<off_t>(NewPosition), SEEK_SET) != -1;
	}

	bool SeekFromEnd(int64 NewPositionRelativeToEnd) override
	{
		return NewPositionRelativeToEnd <= 0 &&
			lseek(Descriptor, static_cast<off_t>(NewPositionRelativeToEnd), SEEK_END) != -1;
	}

	bool Read(uint8* Destination, int64 BytesToRead) override
	{
		while (BytesToRead > 0)
		{
			const ssize_t Count = read(Descriptor, Destination, static_cast<size_t>(BytesToRead));
			if (Count < 0 && errno == EINTR)
			{
				continue;
			}
			if (Count <= 0)
			{
				return false;
			}
			Destination += Count;
			BytesToRead -= Count;
		}
		return BytesToRead == 0;
	}

	bool Write(const uint8* Source, int64 BytesToWrite) override
	{
		while (BytesToWrite > 0)
		{
			const ssize_t Count = write(Descriptor, Source, static_cast<size_t>(BytesToWrite));
			if (Count < 0 && errno == EINTR)
			{
				continue;
			}
			if (Count <= 0)
			{
				return false;
			}
			Source += Count;
			BytesToWrite -= Count;
		}
		return BytesToWrite == 0;
	}

	bool Flush(const bool bFullFlush) override
	{
		// Writes go straight to the system, so only a full flush has anything left to do.
		return !bFullFlush || fsync(Descriptor) == 0;
	}

	int64 Size() override
	{
		struct stat Info;
		return fstat(Descriptor, &Info) == 0 ? static_cast<int64>(Info.st_size) : -1;
	}

private:
	int Descriptor;
};

class FPosixPlatformFile final : public IPlatformFile
{
public:
	bool FileExists(const TCHAR* Filename) override
	{
		struct stat Info;
		return stat(NativePath(Filename).c_str(), &Info) == 0 && S_ISREG(Info.st_mode);
	}

	int64 FileSize(const TCHAR* Filename) override
	{
		struct stat Info;
		if (stat(NativePath(Filename).c_str(), &Info) != 0 || !S_ISREG(Info.st_mode))
		{
			return -1;
		}
		return static_cast<int64>(Info.st_size);
	}

	bool DeleteFile(const TCHAR* Filename) override { return unlink(NativePath(Filename).c_str()) == 0; }

	bool DirectoryExists(const TCHAR* Directory) override
	{
		struct stat Info;
		return stat(NativePath(Directory).c_str(), &Info) == 0 && S_ISDIR(Info.st_mode);
	}

	bool CreateDirectory(const TCHAR* Directory) override
	{
		const std::string Path = NativePath(Directory);
		return mkdir(Path.c_str(), 0755) == 0 || (errno == EEXIST && DirectoryExists(Directory));
	}

	bool DeleteDirectory(const TCHAR* Directory) override { return rmdir(NativePath(Directory).c_str()) == 0; }

	IFileHandle* OpenRead(const TCHAR* Filename, bool bAllowWrite) override
	{
		const int Descriptor = open(NativePath(Filename).c_str(), (bAllowWrite ? O_RDWR : O_RDONLY) | O_CLOEXEC);
		if (Descriptor < 0)
		{
			return nullptr;
		}
		struct stat Info;
		if (fstat(Descriptor, &Info) != 0 || S_ISDIR(Info.st_mode))
		{
			close(Descriptor);
			return nullptr;
		}
		return new FPosixFileHandle(Descriptor);
	}

	IFileHandle* OpenWrite(const TCHAR* Filename, bool bAppend, bool bAllowRead) override
	{
		int Flags = (bAllowRead ? O_RDWR : O_WRONLY) | O_CREAT | O_CLOEXEC;
		Flags |= bAppend ? O_APPEND : O_TRUNC;
		const int Descriptor = open(NativePath(Filename).c_str(), Flags, 0644);
		return Descriptor < 0 ? nullptr : new FPosixFileHandle(Descriptor);
	}
};
} // namespace

bool IPlatformFile::CreateDirectoryTree(const TCHAR* Directory)
{
	if (!Directory || !*Directory)
	{
		return false;
	}
	FString Path(Directory);
	FPaths::NormalizeFilename(Path);
	FPaths::NormalizeDirectoryName(Path);
	if (DirectoryExists(*Path))
	{
		return true;
	}
	const FString Parent = FPaths::GetPath(Path);
	if (!Parent.IsEmpty() && Parent != Path && !DirectoryExists(*Parent))
	{
		if (!CreateDirectoryTree(*Parent))
		{
			return false;
		}
	}
	return CreateDirectory(*Path);
}

FPlatformFileManager& FPlatformFileManager::Get()
{
	static FPlatformFileManager Manager;
	return Manager;
}

IPlatformFile& FPlatformFileManager::GetPlatformFile()
{
	static FPosixPlatformFile PlatformFile;
	return PlatformFile;
}
