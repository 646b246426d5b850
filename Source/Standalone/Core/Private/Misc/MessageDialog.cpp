#include "Misc/MessageDialog.h"

#include "Containers/UnrealString.h"
#include "HAL/ZnNativeString.h"
#include "Logging/LogMacros.h"

#include <cstdio>

DEFINE_LOG_CATEGORY_STATIC(LogMessageDialog, Log, All);

namespace
{
FMessageDialog::FStandaloneObserver& Observer()
{
	static FMessageDialog::FStandaloneObserver Instance;
	return Instance;
}

// The first button of each layout, which is what pressing Enter chooses.
EAppReturnType::Type DefaultAnswer(EAppMsgType::Type MessageType)
{
	switch (MessageType)
	{
		case EAppMsgType::YesNo:
		case EAppMsgType::YesNoCancel:
		case EAppMsgType::YesNoYesAllNoAll:
		case EAppMsgType::YesNoYesAllNoAllCancel:
		case EAppMsgType::YesNoYesAll:
			return EAppReturnType::Yes;
		case EAppMsgType::CancelRetryContinue:
			return EAppReturnType::Cancel;
		case EAppMsgType::Ok:
		case EAppMsgType::OkCancel:
		default:
			return EAppReturnType::Ok;
	}
}
} // namespace

EAppReturnType::Type FMessageDialog::Open(EAppMsgType::Type MessageType, const FText& Message, const FText* OptTitle)
{
	const FText Title = OptTitle ? *OptTitle : FText::FromString(FString(TEXT("Message")));
	return Open(MessageType, Message, Title);
}

EAppReturnType::Type FMessageDialog::Open(EAppMsgType::Type MessageType, const FText& Message, const FText& Title)
{
	const FString Line = Title.ToString() + TEXT(": ") + Message.ToString();
	std::fprintf(stderr, "%s\n", ZnStandalone::ToNative(Line).c_str());
	std::fflush(stderr);
	UE_LOG(LogMessageDialog, Display, TEXT("%s"), *Line);
	if (Observer())
	{
		return Observer()(MessageType, Message, Title);
	}
	return DefaultAnswer(MessageType);
}

void FMessageDialog::SetStandaloneObserver(FStandaloneObserver InObserver)
{
	Observer() = std::move(InObserver);
}
