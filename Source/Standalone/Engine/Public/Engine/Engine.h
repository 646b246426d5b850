// The engine object: console commands and on-screen debug messages.
//
// The standalone engine renders nothing. It keeps what the commands set so that hosts and tests
// can read it back: the frame-rate cap ("t.maxFPS", honoured by FStandaloneEngineLoop), the
// statistics group size ("stats.MaxPerGroup") and which statistics overlays are shown ("stat <name>",
// each call toggles). Every command text passed to Exec is recorded in order. On-screen messages
// are recorded and written to the log (category LogEngine, verbosity Display) as
// "OnScreen: <message>". Game thread only.
#pragma once

#include "CoreMinimal.h"
#include "Math/Vector2D.h"
#include "UObject/Object.h"

class FOutputDevice;
class UWorld;

// One AddOnScreenDebugMessage call, as recorded by the standalone engine.
struct FStandaloneScreenMessage
{
	int32 Key = -1;
	float TimeToDisplay = 0.0f;
	FColor DisplayColor;
	FString Message;
	bool bNewerOnTop = true;
	FVector2D TextScale;
};

class ENGINE_API UEngine : public UObject
{
	DECLARE_CLASS_INTRINSIC(UEngine, UObject, CLASS_None, TEXT("/Script/Engine"))

public:
	// Runs a console command. Known here: "t.maxFPS [value]" (cap in frames per second; 0 or
	// less removes it; text that is not a number counts as 0; without a value the current cap is
	// written to Ar), "stats.MaxPerGroup [value]" (likewise, an integer), "stat <name>" (toggles the
	// overlay; names compare without case; "stat none" hides all). Names of commands compare
	// without case. Anything else writes "Command not recognized: <Cmd>" to Ar and returns false.
	// InWorld may be null.
	virtual bool Exec(UWorld* InWorld, const TCHAR* Cmd, FOutputDevice& Ar);

	// Shows DebugMessage for TimeToDisplay seconds. Key -1 adds a new line every time; another
	// key replaces the line shown under that key.
	void AddOnScreenDebugMessage(int32 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
		bool bNewerOnTop = true, const FVector2D& TextScale = FVector2D::UnitVector);
	// Removes every line shown on screen (the standalone record of past calls stays).
	void ClearOnScreenDebugMessages();

	// The world the engine runs, or null when none is running.
	virtual UWorld* GetWorld() const override;

	// The frame-rate cap set with "t.maxFPS"; 0 (no cap) at start.
	float GetMaxFPS() const { return MaxFPS; }

	// Standalone only: makes InWorld the running world (null for none).
	void SetStandaloneWorld(UWorld* InWorld) { World = InWorld; }
	// Standalone only: the value set with "stats.MaxPerGroup" (0 until set).
	int32 GetStatsMaxPerGroup() const { return StatsMaxPerGroup; }
	// Standalone only: whether "stat <StatName>" has been toggled on (names compare without case).
	bool IsStatEnabled(const FString& StatName) const;
	// Standalone only: every command passed to Exec, oldest first.
	const TArray<FString>& GetExecutedCommands() const { return ExecutedCommands; }
	// Standalone only: every AddOnScreenDebugMessage call, oldest first.
	const TArray<FStandaloneScreenMessage>& GetScreenMessageHistory() const { return ScreenMessageHistory; }
	// Standalone only: the lines currently on screen (replaced by key, removed by Clear).
	const TArray<FStandaloneScreenMessage>& GetScreenMessages() const { return ScreenMessages; }
	// Standalone only: forgets the recorded commands and messages (the settings stay).
	void ClearStandaloneRecords();

private:
	UWorld* World = nullptr;
	float MaxFPS = 0.0f;
	int32 StatsMaxPerGroup = 0;
	TArray<FString> EnabledStats;
	TArray<FString> ExecutedCommands;
	TArray<FStandaloneScreenMessage> ScreenMessageHistory;
	TArray<FStandaloneScreenMessage> ScreenMessages;
};

// The engine object, or null before the host created one (FStandaloneEngineLoop does).
extern ENGINE_API UEngine* GEngine;
