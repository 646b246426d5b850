#include "Sha1.h"

#include <chrono>
#include <cstdarg>
#include <cstdio>

std::string Sha1::GetSha1(std::string appId, std::string secret, std::string timestamp)
{
	if (timestamp.empty())
	{
		timestamp = getUnixStr();
	}
	std::string Message;
	Message.reserve(appId.size() + timestamp.size() + secret.size());
	Message += appId;
	Message += timestamp;
	Message += secret;
	return sha1(Message);
}

std::string Sha1::sha1(const std::string& Message)
{
	unsigned int H[5] = {0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u, 0xC3D2E1F0u};

	int BlockCount = 0;
	std::vector<int> Padded;
	append(Message, BlockCount, Padded);

	unsigned int W[80];
	for (int Block = 0; Block < BlockCount; ++Block)
	{
		setW(Padded, Block, W);
		unsigned int A = H[0];
		unsigned int B = H[1];
		unsigned int C = H[2];
		unsigned int D = H[3];
		unsigned int E = H[4];
		for (int Round = 0; Round < 80; ++Round)
		{
			const unsigned int Temp = S(A, 5) + ft(Round, B, C, D) + E + W[Round] + Kt(Round);
			E = D;
			D = C;
			C = S(B, 30);
			B = A;
			A = Temp;
		}
		H[0] += A;
		H[1] += B;
		H[2] += C;
		H[3] += D;
		H[4] += E;
	}
	return format("%08x%08x%08x%08x%08x", H[0], H[1], H[2], H[3], H[4]);
}

int64 Sha1::getUnix()
{
	// Truncation toward zero, as a division of the clock's ticks by the ticks per millisecond.
	using namespace std::chrono;
	return static_cast<int64>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

std::string Sha1::getUnixStr()
{
	return std::to_string(getUnix());
}

void Sha1::append(const std::string& Message, int& OutBlockCount, std::vector<int>& OutPadded)
{
	const size_t Length = Message.size();
	const size_t BlockCount = (Length + 8) / 64 + 1;
	OutBlockCount = static_cast<int>(BlockCount);
	OutPadded.assign(BlockCount * 64, 0);

	for (size_t Index = 0; Index < Length; ++Index)
	{
		// Deliberately signed: the service's digest depends on bytes of 0x80 and above widening to
		// negative values.
		OutPadded[Index] = static_cast<int>(static_cast<signed char>(Message[Index]));
	}
	OutPadded[Length] = 0x80;

	const unsigned long long BitLength = static_cast<unsigned long long>(Length) * 8u;
	const size_t End = OutPadded.size();
	for (int Byte = 0; Byte < 8; ++Byte)
	{
		OutPadded[End - 1 - Byte] = static_cast<int>((BitLength >> (8 * Byte)) & 0xFFu);
	}
}

void Sha1::setW(const std::vector<int>& Padded, int BlockIndex, unsigned int OutW[80])
{
	const size_t Base = static_cast<size_t>(BlockIndex) * 64;
	for (int Word = 0; Word < 16; ++Word)
	{
		const size_t At = Base + static_cast<size_t>(Word) * 4;
		// Added, not masked, and wrapping modulo 2^32: a negative element borrows from the bytes
		// above it exactly as the service's own arithmetic does.
		unsigned int Value = static_cast<unsigned int>(Padded[At]);
		Value = Value * 256u + static_cast<unsigned int>(Padded[At + 1]);
		Value = Value * 256u + static_cast<unsigned int>(Padded[At + 2]);
		Value = Value * 256u + static_cast<unsigned int>(Padded[At + 3]);
		OutW[Word] = Value;
	}
	for (int Word = 16; Word < 80; ++Word)
	{
		OutW[Word] = S(OutW[Word - 3] ^ OutW[Word - 8] ^ OutW[Word - 14] ^ OutW[Word - 16], 1);
	}
}

unsigned int Sha1::S(unsigned int Value, int Shift)
{
	return (Value << Shift) | (Value >> (32 - Shift));
}

unsigned int Sha1::ft(int Round, unsigned int B, unsigned int C, unsigned int D)
{
	if (Round < 20)
	{
		return (B & C) | (~B & D);
	}
	if (Round >= 40 && Round < 60)
	{
		return ((C | D) & B) | (C & D);
	}
	return B ^ C ^ D;
}

unsigned int Sha1::Kt(int Round)
{
	if (Round < 20)
	{
		return 0x5A827999u;
	}
	if (Round < 40)
	{
		return 0x6ED9EBA1u;
	}
	if (Round < 60)
	{
		return 0x8F1BBCDCu;
	}
	return 0xCA62C1D6u;
}

std::string Sha1::format(const char* Format, ...)
{
	va_list Args;
	va_start(Args, Format);
	va_list Measure;
	va_copy(Measure, Args);
	const int Length = std::vsnprintf(nullptr, 0, Format, Measure);
	va_end(Measure);

	std::string Result;
	if (Length > 0)
	{
		Result.resize(static_cast<size_t>(Length));
		// The string's own terminator slot takes the formatter's trailing zero.
		std::vsnprintf(&Result[0], static_cast<size_t>(Length) + 1, Format, Args);
	}
	va_end(Args);
	return Result;
}
