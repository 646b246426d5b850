#include "Misc/MessageDialog.h"

#include "Containers/StringConv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
std::string Utf8(const FText& Text)
{
	return std::string(TCHAR_TO_UTF8(*Text.ToString()));
}

class FMessageDialogTest : public ::testing::Test
{
protected:
	void TearDown() override { FMessageDialog::SetStandaloneObserver(nullptr); }
};
} // namespace

TEST_F(FMessageDialogTest, BoxBecomesAConsoleLineAndReturnsOk)
{
	testing::internal::CaptureStderr();
	const FText Title = FText::FromString(TEXT("Notice"));
	const EAppReturnType::Type Answer =
		FMessageDialog::Open(EAppMsgType::Ok, FText::FromString(TEXT("Disk full")), &Title);
	const std::string Console = testing::internal::GetCapturedStderr();
	EXPECT_EQ(Answer, EAppReturnType::Ok);
	EXPECT_NE(Console.find("Notice: Disk full\n"), std::string::npos) << Console;
}

TEST_F(FMessageDialogTest, UntitledBoxIsTitledMessage)
{
	testing::internal::CaptureStderr();
	FMessageDialog::Open(EAppMsgType::Ok, FText::FromString(TEXT("hello")));
	const std::string Console = testing::internal::GetCapturedStderr();
	EXPECT_NE(Console.find("Message: hello\n"), std::string::npos) << Console;
}

TEST_F(FMessageDialogTest, ObserverSeesEveryBoxAndChoosesTheAnswer)
{
	struct FSeen
	{
		EAppMsgType::Type Type;
		std::string Message;
		std::string Title;
	};
	std::vector<FSeen> Seen;
	FMessageDialog::SetStandaloneObserver(
		[&Seen](EAppMsgType::Type Type, const FText& Message, const FText& Title)
		{
			Seen.push_back({Type, Utf8(Message), Utf8(Title)});
			return EAppReturnType::No;
		});
	testing::internal::CaptureStderr();
	const EAppReturnType::Type Answer =
		FMessageDialog::Open(EAppMsgType::YesNo, FText::FromString(TEXT("Quit?")), FText::FromString(TEXT("Game")));
	testing::internal::GetCapturedStderr();
	EXPECT_EQ(Answer, EAppReturnType::No);
	ASSERT_EQ(Seen.size(), 1u);
	EXPECT_EQ(Seen[0].Type, EAppMsgType::YesNo);
	EXPECT_EQ(Seen[0].Message, "Quit?");
	EXPECT_EQ(Seen[0].Title, "Game");
}

TEST_F(FMessageDialogTest, WithoutObserverTheFirstButtonAnswers)
{
	testing::internal::CaptureStderr();
	EXPECT_EQ(FMessageDialog::Open(EAppMsgType::YesNo, FText::FromString(TEXT("a"))), EAppReturnType::Yes);
	EXPECT_EQ(FMessageDialog::Open(EAppMsgType::OkCancel, FText::FromString(TEXT("b"))), EAppReturnType::Ok);
	EXPECT_EQ(
		FMessageDialog::Open(EAppMsgType::CancelRetryContinue, FText::FromString(TEXT("c"))), EAppReturnType::Cancel);
	testing::internal::GetCapturedStderr();
}
