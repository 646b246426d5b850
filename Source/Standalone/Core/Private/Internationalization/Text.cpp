#include "Internationalization/Text.h"

#include "UObject/NameTypes.h"

FText FText::FromName(const FName& Name)
{
	return FText(Name.ToString());
}
