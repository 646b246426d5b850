#include "ZnVoiceChoice.h"

#include <cstdint>

namespace
{
bool IsHanCodePoint(uint32_t CodePoint)
{
	return (CodePoint >= 0x4E00 && CodePoint <= 0x9FFF) || (CodePoint >= 0x3400 && CodePoint <= 0x4DBF) ||
		(CodePoint >= 0xF900 && CodePoint <= 0xFAFF) || (CodePoint >= 0x20000 && CodePoint <= 0x2FA1F);
}
} // namespace

bool ContainsHanCharacter(const std::string& Text)
{
	const size_t Size = Text.size();
	size_t Index = 0;
	while (Index < Size)
	{
		const unsigned char Lead = static_cast<unsigned char>(Text[Index]);
		size_t Length = 1;
		uint32_t CodePoint = Lead;
		if (Lead >= 0xF0 && Lead <= 0xF4)
		{
			Length = 4;
			CodePoint = Lead & 0x07u;
		}
		else if (Lead >= 0xE0)
		{
			Length = 3;
			CodePoint = Lead & 0x0Fu;
		}
		else if (Lead >= 0xC2 && Lead <= 0xDF)
		{
			Length = 2;
			CodePoint = Lead & 0x1Fu;
		}
		else
		{
			++Index;
			continue;
		}
		bool bWellFormed = Index + Length <= Size;
		for (size_t Next = 1; bWellFormed && Next < Length; ++Next)
		{
			const unsigned char Byte = static_cast<unsigned char>(Text[Index + Next]);
			bWellFormed = (Byte & 0xC0u) == 0x80u;
			CodePoint = (CodePoint << 6) | (Byte & 0x3Fu);
		}
		if (!bWellFormed)
		{
			++Index;
			continue;
		}
		if (IsHanCodePoint(CodePoint))
		{
			return true;
		}
		Index += Length;
	}
	return false;
}

std::string VoiceVariantFor(const std::string& Gender)
{
	return Gender == "female" ? "+f3" : "";
}

std::string DefaultVoiceFor(const FZnSpeechRequest& Request)
{
	return (ContainsHanCharacter(Request.Text) ? "cmn-latn-pinyin" : "en") + VoiceVariantFor(Request.Gender);
}
