// Test helper: collects the engine log's lines while it lives.
#pragma once

#include "Containers/StringConv.h"
#include "CoreMinimal.h"
#include "Misc/OutputDeviceRedirector.h"

#include <string>
#include <vector>

class FZnTestLogCapture : public FOutputDevice
{
public:
	struct FLine
	{
		std::string Category;
		ELogVerbosity::Type Verbosity;
		std::string Text;
	};

	FZnTestLogCapture() { GLog->AddOutputDevice(this); }

	~FZnTestLogCapture() override { GLog->RemoveOutputDevice(this); }

	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		Lines.push_back({std::string(TCHAR_TO_UTF8(*Category.ToString())), Verbosity, std::string(TCHAR_TO_UTF8(V))});
	}

	// The texts logged under Category, oldest first.
	std::vector<std::string> TextsOf(const char* Category) const
	{
		std::vector<std::string> Texts;
		for (const FLine& Line : Lines)
		{
			if (Line.Category == Category)
			{
				Texts.push_back(Line.Text);
			}
		}
		return Texts;
	}

	std::vector<FLine> Lines;
};
