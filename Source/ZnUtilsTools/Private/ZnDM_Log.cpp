#include "ZnDM_Log.h"

#include "Components/SkeletalMeshComponent.h"
#include "Engine/Engine.h"
#include "ZnTimeTools.h"

DEFINE_LOG_CATEGORY(ZnDM);

ZnDM_Log* ZnDM_Log::mInstancePtr = nullptr;

namespace
{
const TCHAR* const LogFileName = TEXT("dm_ue.txt");

bool IsWarningSuppressed()
{
	return ZnDM.IsSuppressed(ELogVerbosity::Warning);
}

FString TransformFields(const FTransform& transform)
{
	const FQuat rotation = transform.GetRotation();
	const FVector euler = rotation.Euler();
	return FString::Printf(TEXT("{rot:[%lf, %lf, %lf], quat:[%lf, %lf, %lf, %lf]}"), euler.X, euler.Y, euler.Z,
		rotation.W, rotation.X, rotation.Y, rotation.Z);
}
} // namespace

ZnDM_Log::ZnDM_Log()
	: std::ofstream(TCHAR_TO_UTF8(LogFileName), std::ios::out | std::ios::app)
{
	if (!is_open())
	{
		printString(TEXT("open file error"));
	}
}

ZnDM_Log::~ZnDM_Log()
{
	close();
}

ZnDM_Log& ZnDM_Log::GetInstance()
{
	if (!mInstancePtr)
	{
		mInstancePtr = new ZnDM_Log();
	}
	return *mInstancePtr;
}

void ZnDM_Log::Log(const FString& msg)
{
	if (!is_open())
	{
		return;
	}
	const FString line = TEXT("[") + ZnTimeTools::FormatLogTime(FDateTime::Now()) + TEXT("] ") + msg;
	const FTCHARToUTF8 utf8(*line, line.Len());
	write(utf8.Get(), utf8.Length());
	*this << std::endl;
}

void ZnDM_Log::Release()
{
	close();
	if (mInstancePtr == this)
	{
		mInstancePtr = nullptr;
	}
	delete this;
}

void ZnDM_Log::printString(FString msg)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s"), *msg);
}

void ZnDM_Log::printInt(FString name, int32 value)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s:[%d]"), *name, value);
}

void ZnDM_Log::printFloat(FString name, float value)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s:[%lf]"), *name, static_cast<double>(value));
}

void ZnDM_Log::printVector(FString name, FVector vec)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s:[%lf, %lf, %lf]"), *name, vec.X, vec.Y, vec.Z);
}

void ZnDM_Log::printQuat(FString name, FQuat quat)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s(wxyz):[%lf, %lf, %lf, %lf]"), *name, quat.W, quat.X, quat.Y, quat.Z);
}

void ZnDM_Log::printTransform(FString title, FString name1, FTransform transform1, FString name2, FTransform transform2)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s, %s:%s, %s:%s"), *title, *name1, *TransformFields(transform1), *name2,
		*TransformFields(transform2));
}

void ZnDM_Log::printTransform(FString name, FTransform transform)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("%s:%s"), *name, *TransformFields(transform));
}

void ZnDM_Log::printSkeleton(USkeletalMeshComponent* skeletalMesh)
{
	if (IsWarningSuppressed())
	{
		return;
	}
	UE_LOG(ZnDM, Warning, TEXT("---------------------------"));
	if (skeletalMesh)
	{
		const int32 boneCount = skeletalMesh->GetNumBones();
		for (int32 index = 0; index < boneCount; ++index)
		{
			UE_LOG(ZnDM, Warning, TEXT("-->%d: %s"), index, *skeletalMesh->GetBoneName(index).ToString());
		}
	}
	UE_LOG(ZnDM, Warning, TEXT("---------------------------"));
}

void ZnDM_Log::printString_ScreenLog(FString msg)
{
	// The screen line obeys the log category too, like every other printer.
	if (IsWarningSuppressed())
	{
		return;
	}
	if (GEngine)
	{
		GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, msg, true, FVector2D(1.0f, 1.0f));
	}
}
