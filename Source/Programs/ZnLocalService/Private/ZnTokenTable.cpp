#include "ZnTokenTable.h"

#include <cstdio>

FZnTokenTable::FZnTokenTable()
	: Random(std::random_device{}())
{
}

void FZnTokenTable::Forget(std::set<std::pair<int64_t, std::string>>::iterator It)
{
	Tokens.erase(It->second);
	ByExpiry.erase(It);
}

std::string FZnTokenTable::Issue(const std::string& AppId, int64_t ExpiresAtMs, int64_t NowMs)
{
	std::lock_guard<std::mutex> Lock(Mutex);
	while (!ByExpiry.empty() && ByExpiry.begin()->first <= NowMs - RememberExpiredMs)
	{
		Forget(ByExpiry.begin());
	}
	if (Tokens.size() >= MostTokens)
	{
		Forget(ByExpiry.begin());
	}
	std::string Token;
	do
	{
		char Text[40];
		std::snprintf(Text, sizeof(Text), "zn%016llx%016llx", static_cast<unsigned long long>(Random()),
			static_cast<unsigned long long>(Random()));
		Token = Text;
	} while (Tokens.count(Token) != 0);
	Tokens[Token] = FEntry{AppId, ExpiresAtMs};
	ByExpiry.insert({ExpiresAtMs, Token});
	return Token;
}

EZnTokenCheck FZnTokenTable::Check(const std::string& Token, int64_t NowMs, int64_t& OutExpiredForMs) const
{
	std::lock_guard<std::mutex> Lock(Mutex);
	const auto It = Tokens.find(Token);
	if (It == Tokens.end())
	{
		return EZnTokenCheck::Unknown;
	}
	if (NowMs >= It->second.ExpiresAtMs)
	{
		OutExpiredForMs = NowMs - It->second.ExpiresAtMs;
		return EZnTokenCheck::Expired;
	}
	return EZnTokenCheck::Valid;
}
