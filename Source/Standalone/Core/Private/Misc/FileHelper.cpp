#include "Misc/FileHelper.h"

#include "Containers/Array.h"
#include "HAL/PlatformFileManager.h"
#include "HAL/ZnNativeString.h"
#include "Misc/Paths.h"

#include <memory>
#include <string>

namespace
{
bool IsPureAnsi(const std::u16string& Text)
{
	for (const char16_t Char : Text)
	{
		if (Char > 0x7F)
		{
			return false;
		}
	}
	return true;
}

std::string EncodeAnsi(const std::u16string& Text)
{
	std::string Bytes;
	Bytes.reserve(Text.size());
	for (const char16_t Char : Text)
	{
		Bytes += Char <= 0xFF ? static_cast<char>(Char) : '?';
	}
	return Bytes;
}

std::string EncodeUtf16LittleEndian(const std::u16string& Text)
{
	std::string Bytes("\xFF\xFE", 2);
	Bytes.reserve(2 + Text.size() * 2);
	for (const char16_t Char : Text)
	{
		Bytes += static_cast<char>(Char & 0xFF);
		Bytes += static_cast<char>(Char >> 8);
	}
	return Bytes;
}

std::u16string DecodeUtf16(const uint8* Bytes, size_t Count, bool bBigEndian)
{
	std::u16string Text;
	Text.reserve(Count / 2);
	for (size_t Index = 0; Index + 1 < Count; Index += 2)
	{
		const uint16 Low = bBigEndian ? Bytes[Index + 1] : Bytes[Index];
		const uint16 High = bBigEndian ? Bytes[Index] : Bytes[Index + 1];
		Text += static_cast<char16_t>(Low | (High << 8));
	}
	return Text;
}

bool ReadAll(const TCHAR* Filename, std::string& Bytes)
{
	if (!Filename)
	{
		return false;
	}
	std::unique_ptr<IFileHandle> Handle(FPlatformFileManager::Get().GetPlatformFile().OpenRead(Filename));
	if (!Handle)
	{
		return false;
	}
	const int64 Size = Handle->Size();
	if (Size < 0)
	{
		return false;
	}
	std::string Buffer(static_cast<size_t>(Size), '\0');
	if (Size > 0 && !Handle->Read(reinterpret_cast<uint8*>(Buffer.data()), Size))
	{
		return false;
	}
	Bytes = std::move(Buffer);
	return true;
}
} // namespace

bool FFileHelper::SaveStringToFile(const FString& String, const TCHAR* Filename, EEncodingOptions EncodingOptions)
{
	if (!Filename || !*Filename)
	{
		return false;
	}
	const std::u16string Text = ZnStandalone::ToUtf16(String);
	std::string Bytes;
	switch (EncodingOptions)
	{
		case EEncodingOptions::AutoDetect:
			Bytes = IsPureAnsi(Text) ? EncodeAnsi(Text) : EncodeUtf16LittleEndian(Text);
			break;
		case EEncodingOptions::ForceAnsi:
			Bytes = EncodeAnsi(Text);
			break;
		case EEncodingOptions::ForceUnicode:
			Bytes = EncodeUtf16LittleEndian(Text);
			break;
		case EEncodingOptions::ForceUTF8:
			Bytes = "\xEF\xBB\xBF" + ZnStandalone::ToNative(String);
			break;
		case EEncodingOptions::ForceUTF8WithoutBOM:
		default:
			Bytes = ZnStandalone::ToNative(String);
			break;
	}

	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	// A writer creates the directories leading to its file, as the engine's file manager does.
	const FString Directory = FPaths::GetPath(FString(Filename));
	if (!Directory.IsEmpty())
	{
		PlatformFile.CreateDirectoryTree(*Directory);
	}
	std::unique_ptr<IFileHandle> Handle(PlatformFile.OpenWrite(Filename));
	if (!Handle)
	{
		return false;
	}
	return Bytes.empty() ||
		Handle->Write(reinterpret_cast<const uint8*>(Bytes.data()), static_cast<int64>(Bytes.size()));
}

bool FFileHelper::LoadFileToString(FString& Result, const TCHAR* Filename)
{
	std::string Bytes;
	if (!ReadAll(Filename, Bytes))
	{
		return false;
	}
	const uint8* Data = reinterpret_cast<const uint8*>(Bytes.data());
	const size_t Count = Bytes.size();
	if (Count >= 2 && Data[0] == 0xFF && Data[1] == 0xFE)
	{
		Result = ZnStandalone::FromUtf16(DecodeUtf16(Data + 2, Count - 2, false));
	}
	else if (Count >= 2 && Data[0] == 0xFE && Data[1] == 0xFF)
	{
		Result = ZnStandalone::FromUtf16(DecodeUtf16(Data + 2, Count - 2, true));
	}
	else if (Count >= 3 && Data[0] == 0xEF && Data[1] == 0xBB && Data[2] == 0xBF)
	{
		Result = ZnStandalone::FromNative(std::string_view(Bytes).substr(3));
	}
	else
	{
		Result = ZnStandalone::FromNative(Bytes);
	}
	return true;
}

bool FFileHelper::LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename)
{
	std::string Bytes;
	if (!ReadAll(Filename, Bytes))
	{
		return false;
	}
	TArray<uint8> Loaded;
	Loaded.SetNum(static_cast<int32>(Bytes.size()));
	for (size_t Index = 0; Index < Bytes.size(); ++Index)
	{
		Loaded[static_cast<int32>(Index)] = static_cast<uint8>(Bytes[Index]);
	}
	Result = std::move(Loaded);
	return true;
}
