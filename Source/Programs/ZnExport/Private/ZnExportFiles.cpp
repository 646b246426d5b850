#include "ZnExportFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <unistd.h>

bool FZnExportFiles::WriteWhole(const std::string& Path, const std::string& Text, std::string& OutError)
{
	const std::string Temporary = Path + ".part" + std::to_string(getpid());
	{
		std::ofstream Out(Temporary, std::ios::binary | std::ios::trunc);
		if (!Out)
		{
			OutError = "cannot write " + Path + ": " + std::strerror(errno);
			return false;
		}
		Out.write(Text.data(), static_cast<std::streamsize>(Text.size()));
		Out.close();
		if (!Out)
		{
			OutError = "cannot write " + Path + ": " + std::strerror(errno);
			std::remove(Temporary.c_str());
			return false;
		}
	}
	if (std::rename(Temporary.c_str(), Path.c_str()) != 0)
	{
		OutError = "cannot write " + Path + ": " + std::strerror(errno);
		std::remove(Temporary.c_str());
		return false;
	}
	return true;
}
