#include "HAL/PlatformStackWalk.h"

#include <cxxabi.h>
#include <elfutils/libdwfl.h>
#include <execinfo.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{
void CopyText(ANSICHAR* Destination, const char* Source)
{
	std::strncpy(Destination, Source ? Source : "", FProgramCounterSymbolInfo::MaxNameLength - 1);
	Destination[FProgramCounterSymbolInfo::MaxNameLength - 1] = '\0';
}

// A session over the process's loaded modules. Modules loaded later are found after a fresh
// report, so each walk builds its own session: walks are rare and meant for diagnostics.
class FSymbolSession
{
public:
	FSymbolSession()
	{
		Callbacks.find_elf = dwfl_linux_proc_find_elf;
		Callbacks.find_debuginfo = dwfl_standard_find_debuginfo;
		Callbacks.section_address = nullptr;
		Callbacks.debuginfo_path = nullptr;
		Session = dwfl_begin(&Callbacks);
		if (Session)
		{
			if (dwfl_linux_proc_report(Session, getpid()) != 0 || dwfl_report_end(Session, nullptr, nullptr) != 0)
			{
				dwfl_end(Session);
				Session = nullptr;
			}
		}
	}

	~FSymbolSession()
	{
		if (Session)
		{
			dwfl_end(Session);
		}
	}

	void Resolve(uint64 ReturnAddress, FProgramCounterSymbolInfo& Info) const
	{
		Info.ProgramCounter = ReturnAddress;
		if (!Session)
		{
			return;
		}
		// A return address points after the call; one byte back lies inside the call itself,
		// which names the calling line rather than the next one.
		const Dwarf_Addr Address = static_cast<Dwarf_Addr>(ReturnAddress - 1);
		Dwfl_Module* Module = dwfl_addrmodule(Session, Address);
		if (!Module)
		{
			return;
		}
		Dwarf_Addr ModuleStart = 0;
		const char* ModuleName =
			dwfl_module_info(Module, nullptr, &ModuleStart, nullptr, nullptr, nullptr, nullptr, nullptr);
		CopyText(Info.ModuleName, ModuleName);
		Info.OffsetInModule = ReturnAddress - ModuleStart;

		GElf_Off Offset = 0;
		GElf_Sym Symbol;
		const char* Name = dwfl_module_addrinfo(Module, Address, &Offset, &Symbol, nullptr, nullptr, nullptr);
		if (Name)
		{
			int Status = -1;
			char* Demangled = abi::__cxa_demangle(Name, nullptr, nullptr, &Status);
			CopyText(Info.FunctionName, Status == 0 && Demangled ? Demangled : Name);
			std::free(Demangled);
			Info.SymbolDisplacement = static_cast<int32>(Offset);
		}

		Dwfl_Line* Line = dwfl_module_getsrc(Module, Address);
		if (Line)
		{
			int LineNumber = 0;
			const char* File = dwfl_lineinfo(Line, nullptr, &LineNumber, nullptr, nullptr, nullptr);
			if (File)
			{
				CopyText(Info.Filename, File);
				Info.LineNumber = LineNumber;
			}
		}
	}

private:
	Dwfl_Callbacks Callbacks;
	Dwfl* Session = nullptr;
};
} // namespace

FProgramCounterSymbolInfo::FProgramCounterSymbolInfo()
	: LineNumber(0)
	, SymbolDisplacement(0)
	, OffsetInModule(0)
	, ProgramCounter(0)
{
	ModuleName[0] = '\0';
	CopyText(FunctionName, "UnknownFunction");
	CopyText(Filename, "UnknownFile");
}

FORCENOINLINE TArray<FProgramCounterSymbolInfo> FPlatformStackWalk::GetStack(
	int32 IgnoreCount, int32 MaxDepth, void* Context)
{
	TArray<FProgramCounterSymbolInfo> Stack;
	if (MaxDepth <= 0)
	{
		return Stack;
	}
	if (IgnoreCount < 0)
	{
		IgnoreCount = 0;
	}
	// The capture starts inside this function, possibly below it too (a sanitizer's wrapper of
	// backtrace adds a frame). The caller's frame is the one whose return address is ours.
	void* const CallerReturnAddress = __builtin_return_address(0);
	constexpr int64 ExtraFrames = 8;
	const int64 Wanted = ExtraFrames + static_cast<int64>(IgnoreCount) + MaxDepth;
	const int Capacity = static_cast<int>(Wanted < 4096 ? Wanted : 4096);
	std::vector<void*> Addresses(static_cast<size_t>(Capacity));
	const int Captured = backtrace(Addresses.data(), Capacity);
	int64 CallerIndex = 1;
	for (int64 Index = 0; Index < Captured && Index < ExtraFrames; ++Index)
	{
		if (Addresses[static_cast<size_t>(Index)] == CallerReturnAddress)
		{
			CallerIndex = Index;
			break;
		}
	}

	const FSymbolSession Session;
	for (int64 Index = CallerIndex + static_cast<int64>(IgnoreCount); Index < Captured && Stack.Num() < MaxDepth;
		 ++Index)
	{
		FProgramCounterSymbolInfo Info;
		Session.Resolve(reinterpret_cast<uint64>(Addresses[static_cast<size_t>(Index)]), Info);
		Stack.Add(Info);
	}
	return Stack;
}
