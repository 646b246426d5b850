#include "ZnDllLoader.h"

#include "Misc/MessageDialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(ZnDllLoaderErrors, EmptyPathHoldsNullAndSaysFailed)
{
	std::vector<std::string> Messages;
	FMessageDialog::SetStandaloneObserver(
		[&Messages](EAppMsgType::Type, const FText& Message, const FText&)
		{
			Messages.push_back(std::string(TCHAR_TO_UTF8(*Message.ToString())));
			return EAppReturnType::Ok;
		});
	TArray<FString> Paths;
	Paths.Add(FString());
	Paths.Add(TEXT("/no/such/dir/libnothing.so"));
	testing::internal::CaptureStderr();
	{
		ZnDllLoader Loader(Paths, true);
		ASSERT_EQ(Loader.GetHandles().Num(), 2);
		EXPECT_EQ(Loader.GetHandles()[0], nullptr);
		EXPECT_EQ(Loader.GetHandles()[1], nullptr);
	}
	testing::internal::GetCapturedStderr();
	FMessageDialog::SetStandaloneObserver(nullptr);
	ASSERT_EQ(Messages.size(), 2u);
	EXPECT_EQ(Messages[0], "Failed to load third party library:");
	EXPECT_EQ(Messages[1], "Failed to load third party library:/no/such/dir/libnothing.so");
}

TEST(ZnDllLoaderErrors, AllNullLoaderAndItsCopiesReleaseSafely)
{
	TArray<FString> Paths;
	Paths.Add(TEXT("/no/such/lib.so"));
	Paths.Add(TEXT("/proc/self/status"));
	ZnDllLoader Loader(Paths, false);
	ZnDllLoader Copy(Loader);
	ZnDllLoader Assigned(TArray<FString>(), false);
	Assigned = Loader;
	EXPECT_EQ(Assigned.GetHandles().Num(), 2);
	EXPECT_EQ(Assigned.GetHandles()[1], nullptr);
}
