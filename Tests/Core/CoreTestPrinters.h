// Lets GoogleTest print engine strings and names in failure messages.
#pragma once

#include "CoreMinimal.h"

#include <ostream>

inline void PrintTo(const FString& String, std::ostream* Os)
{
	*Os << '"' << TCHAR_TO_UTF8(*String) << '"';
}

inline void PrintTo(const FName& Name, std::ostream* Os)
{
	*Os << TCHAR_TO_UTF8(*Name.ToString());
}

inline void PrintTo(const FVector& V, std::ostream* Os)
{
	*Os << TCHAR_TO_UTF8(*FString::Printf(TEXT("(%.9f, %.9f, %.9f)"), V.X, V.Y, V.Z));
}

inline void PrintTo(const FQuat& Q, std::ostream* Os)
{
	*Os << TCHAR_TO_UTF8(*Q.ToString());
}

inline void PrintTo(const FRotator& R, std::ostream* Os)
{
	*Os << TCHAR_TO_UTF8(*R.ToString());
}
