#include "Containers/Ticker.h"

#include <algorithm>

FTSTicker& FTSTicker::GetCoreTicker()
{
	static FTSTicker CoreTicker;
	return CoreTicker;
}

FTSTicker::FDelegateHandle FTSTicker::AddTicker(const FTickerDelegate& InDelegate, float InDelay)
{
	std::lock_guard<std::mutex> Lock(Mutex);
	FElement Element;
	Element.Id = NextId++;
	Element.FireTime = CurrentTime + InDelay;
	Element.DelayTime = InDelay;
	Element.Delegate = InDelegate;
	Elements.push_back(MoveTemp(Element));
	FDelegateHandle Handle;
	Handle.Id = Elements.back().Id;
	return Handle;
}

void FTSTicker::RemoveTicker(FDelegateHandle Handle)
{
	std::lock_guard<std::mutex> Lock(Mutex);
	Elements.erase(std::remove_if(Elements.begin(), Elements.end(),
					   [&Handle](const FElement& Element) { return Element.Id == Handle.Id; }),
		Elements.end());
	if (bTicking)
	{
		RemovedWhileTicking.push_back(Handle.Id);
	}
}

void FTSTicker::Tick(float DeltaTime)
{
	std::vector<FElement> Due;
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		CurrentTime += DeltaTime;
		// Due delegates leave the list while they run, so that one of them may add or remove
		// tickers (even itself) without the list changing under the loop.
		auto FirstDue = std::stable_partition(Elements.begin(), Elements.end(),
			[this](const FElement& Element) { return Element.FireTime > CurrentTime; });
		Due.assign(std::make_move_iterator(FirstDue), std::make_move_iterator(Elements.end()));
		Elements.erase(FirstDue, Elements.end());
		RemovedWhileTicking.clear();
		bTicking = true;
	}

	std::vector<FElement> Keep;
	for (FElement& Element : Due)
	{
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			if (std::find(RemovedWhileTicking.begin(), RemovedWhileTicking.end(), Element.Id) !=
				RemovedWhileTicking.end())
			{
				continue;
			}
		}
		if (Element.Delegate.IsBound() && Element.Delegate.Execute(DeltaTime))
		{
			Keep.push_back(MoveTemp(Element));
		}
	}

	std::lock_guard<std::mutex> Lock(Mutex);
	for (FElement& Element : Keep)
	{
		if (std::find(RemovedWhileTicking.begin(), RemovedWhileTicking.end(), Element.Id) == RemovedWhileTicking.end())
		{
			Element.FireTime = CurrentTime + Element.DelayTime;
			Elements.push_back(MoveTemp(Element));
		}
	}
	RemovedWhileTicking.clear();
	bTicking = false;
}
