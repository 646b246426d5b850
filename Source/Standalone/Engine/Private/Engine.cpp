#include "Engine/Engine.h"

#include "Engine/World.h"
#include "EngineLogs.h"

DEFINE_LOG_CATEGORY(LogEngine);

IMPLEMENT_INTRINSIC_CLASS(UEngine, ENGINE_API, UObject, COREUOBJECT_API, "/Script/Engine", {})

UEngine* GEngine = nullptr;

namespace
{
// The command word and the rest of the line, trimmed.
void SplitCommand(const FString& Line, FString& Command, FString& Argument)
{
	const FString Trimmed = Line.TrimStartAndEnd();
	int32 Space = INDEX_NONE;
	for (int32 Index = 0; Index < Trimmed.Len(); ++Index)
	{
		if (Trimmed[Index] == TEXT(' ') || Trimmed[Index] == TEXT('\t'))
		{
			Space = Index;
			break;
		}
	}
	if (Space == INDEX_NONE)
	{
		Command = Trimmed;
		Argument = FString();
		return;
	}
	Command = Trimmed.Left(Space);
	Argument = Trimmed.Mid(Space + 1).TrimStartAndEnd();
}
} // namespace

bool UEngine::Exec(UWorld* InWorld, const TCHAR* Cmd, FOutputDevice& Ar)
{
	const FString Line = Cmd ? FString(Cmd) : FString();
	ExecutedCommands.Add(Line);

	FString Command;
	FString Argument;
	SplitCommand(Line, Command, Argument);

	if (Command.Equals(TEXT("t.maxFPS"), ESearchCase::IgnoreCase))
	{
		if (Argument.IsEmpty())
		{
			Ar.Log(FString::Printf(TEXT("t.maxFPS = \"%s\""), *FString::SanitizeFloat(MaxFPS, 0)));
			return true;
		}
		MaxFPS = FCString::Atof(*Argument);
		return true;
	}
	if (Command.Equals(TEXT("stats.MaxPerGroup"), ESearchCase::IgnoreCase))
	{
		if (Argument.IsEmpty())
		{
			Ar.Log(FString::Printf(TEXT("stats.MaxPerGroup = \"%d\""), StatsMaxPerGroup));
			return true;
		}
		StatsMaxPerGroup = FCString::Atoi(*Argument);
		return true;
	}
	if (Command.Equals(TEXT("stat"), ESearchCase::IgnoreCase))
	{
		if (Argument.Equals(TEXT("none"), ESearchCase::IgnoreCase))
		{
			EnabledStats.Empty();
			return true;
		}
		if (Argument.IsEmpty())
		{
			Ar.Log(TEXT("stat: name an overlay, e.g. stat fps"));
			return true;
		}
		for (int32 Index = 0; Index < EnabledStats.Num(); ++Index)
		{
			if (EnabledStats[Index].Equals(Argument, ESearchCase::IgnoreCase))
			{
				EnabledStats.RemoveAt(Index);
				return true;
			}
		}
		EnabledStats.Add(Argument);
		return true;
	}
	Ar.Log(FString(TEXT("Command not recognized: ")) + Line);
	return false;
}

void UEngine::AddOnScreenDebugMessage(int32 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
	bool bNewerOnTop, const FVector2D& TextScale)
{
	FStandaloneScreenMessage Message;
	Message.Key = Key;
	Message.TimeToDisplay = TimeToDisplay;
	Message.DisplayColor = DisplayColor;
	Message.Message = DebugMessage;
	Message.bNewerOnTop = bNewerOnTop;
	Message.TextScale = TextScale;
	ScreenMessageHistory.Add(Message);

	bool bReplaced = false;
	if (Key != -1)
	{
		for (FStandaloneScreenMessage& Shown : ScreenMessages)
		{
			if (Shown.Key == Key)
			{
				Shown = Message;
				bReplaced = true;
				break;
			}
		}
	}
	if (!bReplaced)
	{
		ScreenMessages.Add(Message);
	}
	UE_LOG(LogEngine, Display, TEXT("OnScreen: %s"), *DebugMessage);
}

void UEngine::ClearOnScreenDebugMessages()
{
	ScreenMessages.Empty();
}

UWorld* UEngine::GetWorld() const
{
	return World;
}

bool UEngine::IsStatEnabled(const FString& StatName) const
{
	for (const FString& Name : EnabledStats)
	{
		if (Name.Equals(StatName, ESearchCase::IgnoreCase))
		{
			return true;
		}
	}
	return false;
}

void UEngine::ClearStandaloneRecords()
{
	ExecutedCommands.Empty();
	ScreenMessageHistory.Empty();
}
