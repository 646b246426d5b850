// Fuzz target bodies for the service-message code: the four response parsers, the request-body
// writer and the byte buffer. Each checks what must hold for any input and traps otherwise:
// a parser that fails leaves every output as it was; a written body parses back to the text that
// went in; the byte buffer never reads or writes outside its storage (the sanitizers watch).
#pragma once

#include "ZnDM_BpFuncLib.h"
#include "ZnByteArray.h"
#include "ZnJsonReader.h"
#include "ZnRequestBodies.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ZnServiceFuzz
{
inline void Require(bool bCondition)
{
	if (!bCondition)
	{
		__builtin_trap();
	}
}

// Exact comparison: the engine's operator== ignores case.
inline bool Same(const FString& A, const FString& B)
{
	if (A.Len() != B.Len())
	{
		return false;
	}
	for (int32 Index = 0; Index < A.Len(); ++Index)
	{
		if (A[Index] != B[Index])
		{
			return false;
		}
	}
	return true;
}

inline FString FromUtf8(const uint8_t* Data, size_t Size)
{
	return FString(FUTF8ToTCHAR(reinterpret_cast<const char*>(Data), int32(Size)).Get());
}

// The raw text, and the same bytes placed where a well-formed envelope carries its data, so the
// search reaches the member lookups without having to invent the envelope first.
inline std::vector<FString> Texts(const uint8_t* Data, size_t Size, const char* Prefix, const char* Suffix)
{
	std::vector<FString> Result;
	Result.push_back(FromUtf8(Data, Size));
	std::string Wrapped = Prefix;
	Wrapped.append(reinterpret_cast<const char*>(Data), Size);
	Wrapped += Suffix;
	Result.push_back(FromUtf8(reinterpret_cast<const uint8_t*>(Wrapped.data()), Wrapped.size()));
	return Result;
}

inline void MotionResponse(const uint8_t* Data, size_t Size)
{
	for (const FString& Text : Texts(Data, Size, "{\"code\":0,\"data\":", "}"))
	{
		for (uint8 Type = 0; Type < 4; ++Type)
		{
			const FString InAudio = TEXT("in-audio");
			FString Audio = TEXT("a0");
			FString Face = TEXT("f0");
			FString Body = TEXT("b0");
			FString Answer = TEXT("t0");
			const bool bOk = UZnDM_BpFuncLib::ParseJsonTmp(
				Text, InAudio, static_cast<ZnJsonDataType>(Type), Audio, Face, Body, Answer);
			if (!bOk)
			{
				Require(Same(Audio, TEXT("a0")) && Same(Face, TEXT("f0")) && Same(Body, TEXT("b0")) &&
					Same(Answer, TEXT("t0")));
			}
			else if (Type == 0)
			{
				Require(Same(Audio, InAudio) && Same(Answer, TEXT("t0")));
			}
			else if (Type == 1)
			{
				Require(Same(Answer, TEXT("t0")));
			}
		}
	}
}

inline void SpeechResponse(const uint8_t* Data, size_t Size)
{
	for (const FString& Text : Texts(Data, Size, "{\"code\":200,\"data\":", "}"))
	{
		FString Audio = TEXT("a0");
		FString Body = TEXT("b0");
		FString Face = TEXT("f0");
		if (!UZnDM_BpFuncLib::TTS_ParseResponseJson(Text, Audio, Body, Face))
		{
			Require(Same(Audio, TEXT("a0")) && Same(Face, TEXT("f0")) && Same(Body, TEXT("b0")));
		}
	}
}

inline void FormResponse(const uint8_t* Data, size_t Size)
{
	for (const FString& Text : Texts(Data, Size, "{\"code\":0,\"oss_url\":", "}"))
	{
		const FString Url = UZnDM_BpFuncLib::ParseJsonForm(Text);
		FZnJsonReader Reader;
		FZnJsonObject Root;
		if (!Reader.ParseObject(Text, Root))
		{
			Require(Url.IsEmpty());
		}
	}
}

inline void DigestResponse(const uint8_t* Data, size_t Size)
{
	for (const FString& Text : Texts(Data, Size, "{\"T1348647853363\":", "}"))
	{
		TArray<FString> Digests;
		Digests.Add(TEXT("kept"));
		const bool bOk = UZnDM_BpFuncLib::ParseJsonToGetDigest(Text, Digests);
		Require(Digests.Num() >= 1 && Same(Digests[0], TEXT("kept")));
		if (!bOk)
		{
			Require(Digests.Num() == 1);
		}
		for (int32 Index = 1; Index < Digests.Num(); ++Index)
		{
			Require(!Digests[Index].IsEmpty());
		}
	}
}

// Whatever text goes into a body comes back out of it unchanged when the body is parsed. Texts
// with unpaired surrogates are skipped: they have no UTF-8 form to compare.
inline void RequestBody(const uint8_t* Data, size_t Size)
{
	const FString Text = FromUtf8(Data, Size);
	for (int32 Index = 0; Index < Text.Len(); ++Index)
	{
		if (Text[Index] == 0xFFFD)
		{
			return;
		}
	}
	const int32 Type = Size > 0 ? int32(Data[0] % 3) : 0;
	const FString Bodies[] = {UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(Text, Text, Text),
		UZnDM_BpFuncLib::MakeJsonTmp(Text),
		UZnDM_BpFuncLib::MakeJsonTmpRefText(Text, 0, 1, 2, 3, true, Type, 4, Text, 5, Text, Text),
		UZnDM_BpFuncLib::TTS_ParamsToJson(Text, Text, Text, Text, Text, Text, int32(Size))};
	const char* const Keys[] = {"draft_content", "text", "request_id", "pitch"};
	for (int32 Index = 0; Index < 4; ++Index)
	{
		FZnJsonReader Reader;
		FZnJsonObject Root;
		Require(Reader.ParseObject(Bodies[Index], Root));
		Require(Same(Root.GetStringField(Keys[Index]), Text));
	}
}

// The bytes are a program for the buffer: each step's opcode picks an operation, the next bytes
// its argument.
inline void ByteArrayOps(const uint8_t* Data, size_t Size)
{
	ZnByteArray Buffer(Size > 0 ? int32(Data[0] % 40) : 256);
	ZnByteArray Copy;
	uint8 Scratch[300];
	size_t At = 1;
	const auto Next = [&]() -> uint8 { return At < Size ? Data[At++] : 0; };
	while (At < Size)
	{
		switch (Next() % 20)
		{
			case 0:
				Buffer.WriteBool8(Next() & 1);
				break;
			case 1:
				Buffer.WriteByte8(Next());
				break;
			case 2:
				Buffer.WriteShort16(Next());
				break;
			case 3:
				Buffer.WriteInt32(int32(Next()) - 128);
				break;
			case 4:
				Buffer.WriteDouble64(Next());
				break;
			case 5:
			{
				const int32 Length = Next() % 64;
				const int32 Available = int32(Size - At);
				const int32 Take = Length < Available ? Length : Available;
				Buffer.WriteUTF(Data + At, Take);
				At += size_t(Take);
				break;
			}
			case 6:
				Buffer.ReadBool8();
				break;
			case 7:
				Buffer.ReadShort16();
				break;
			case 8:
				Buffer.ReadInt32();
				break;
			case 9:
				Buffer.ReadLong64();
				break;
			case 10:
				Buffer.ReadUTF(Scratch, Next());
				break;
			case 11:
				Buffer.ResetPos();
				break;
			case 12:
				Buffer.EndPos();
				break;
			case 13:
			{
				const int32 Length = Next() * 2;
				const int32 Available = int32(Size - At);
				Buffer.CopyData(Data + At, Length < Available ? Length : Available);
				break;
			}
			case 14:
				Buffer.ensureCapacity(int32(Next()) - 16);
				break;
			case 15:
				Buffer.UpdateHeadInt32(Next());
				break;
			case 16:
				Buffer.ReadHeadInt();
				break;
			case 17:
				Copy = Buffer;
				break;
			case 18:
				Copy.WriteInt32(7);
				Copy.ReadFloat32();
				break;
			default:
			{
				// Whatever RemainData points at must be inside the storage or at its end.
				const uint8* Remain = Buffer.RemainData();
				Require(Remain >= Buffer.Data());
				break;
			}
		}
		Require(Buffer.GetPos() >= 0 && Buffer.Length() >= 0);
	}
}
} // namespace ZnServiceFuzz
