#include "ZnDllLoader.h"

#include "HAL/PlatformProcess.h"
#include "Misc/MessageDialog.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <optional>
#include <string>
#include <vector>

namespace
{
struct FShownBox
{
	EAppMsgType::Type Type;
	std::string Message;
	std::string Title;
};

// Records every message box while it lives.
class ZnDllLoaderTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		FMessageDialog::SetStandaloneObserver(
			[this](EAppMsgType::Type Type, const FText& Message, const FText& Title)
			{
				Boxes.push_back({Type, std::string(TCHAR_TO_UTF8(*Message.ToString())),
					std::string(TCHAR_TO_UTF8(*Title.ToString()))});
				return EAppReturnType::Ok;
			});
	}

	void TearDown() override { FMessageDialog::SetStandaloneObserver(nullptr); }

	static std::string LibraryPath() { return ZN_TEST_SHARED_LIBRARY; }

	// A path in the library's folder that does not exist.
	static std::string MissingPath()
	{
		std::string Path = LibraryPath();
		Path.insert(Path.find_last_of('/') + 1, "missing_");
		return Path;
	}

	static int CallAnswer(void* Handle)
	{
		using FAnswer = int (*)();
		FAnswer Answer =
			reinterpret_cast<FAnswer>(FPlatformProcess::GetDllExport(Handle, TEXT("ZnTestSharedLibraryAnswer")));
		return Answer ? Answer() : -1;
	}

	std::vector<FShownBox> Boxes;
};
} // namespace

TEST_F(ZnDllLoaderTest, EmptyListHoldsNothingAndShowsNothing)
{
	ZnDllLoader Loader(TArray<FString>(), true);
	EXPECT_EQ(Loader.GetHandles().Num(), 0);
	EXPECT_TRUE(Boxes.empty());
}

TEST_F(ZnDllLoaderTest, GoodAndBadPathWithDialogs)
{
	TArray<FString> Paths;
	Paths.Add(FString(LibraryPath().c_str()));
	Paths.Add(FString(MissingPath().c_str()));
	testing::internal::CaptureStderr();
	{
		ZnDllLoader Loader(Paths, true);
		ASSERT_EQ(Loader.GetHandles().Num(), 2);
		EXPECT_NE(Loader.GetHandles()[0], nullptr);
		EXPECT_EQ(Loader.GetHandles()[1], nullptr);
		EXPECT_EQ(CallAnswer(Loader.GetHandles()[0]), 42);
	}
	const std::string Console = testing::internal::GetCapturedStderr();

	ASSERT_EQ(Boxes.size(), 2u);
	EXPECT_EQ(Boxes[0].Type, EAppMsgType::Ok);
	EXPECT_EQ(Boxes[0].Title, "ThirdPartyLibrary");
	EXPECT_EQ(Boxes[0].Message, "Succeed to load third party library:" + LibraryPath());
	EXPECT_EQ(Boxes[1].Type, EAppMsgType::Ok);
	EXPECT_EQ(Boxes[1].Title, "ThirdPartyLibrary");
	EXPECT_EQ(Boxes[1].Message, "Failed to load third party library:" + MissingPath());
	// The boxes appear on the console in order.
	const size_t First = Console.find("ThirdPartyLibrary: Succeed to load third party library:" + LibraryPath() + "\n");
	const size_t Second = Console.find("ThirdPartyLibrary: Failed to load third party library:" + MissingPath() + "\n");
	ASSERT_NE(First, std::string::npos) << Console;
	ASSERT_NE(Second, std::string::npos) << Console;
	EXPECT_LT(First, Second);
}

TEST_F(ZnDllLoaderTest, WithoutDialogNothingIsShown)
{
	TArray<FString> Paths;
	Paths.Add(FString(LibraryPath().c_str()));
	Paths.Add(FString(MissingPath().c_str()));
	ZnDllLoader Loader(Paths, false);
	EXPECT_EQ(Loader.GetHandles().Num(), 2);
	EXPECT_TRUE(Boxes.empty());
}

TEST_F(ZnDllLoaderTest, LibraryIsReleasedWithTheLoader)
{
	// Our own extra reference keeps the library mapped so that we can watch its count: after the
	// loader is gone, a no-load open still finds it only because of our reference.
	void* Ours = FPlatformProcess::GetDllHandle(*FString(LibraryPath().c_str()));
	ASSERT_NE(Ours, nullptr);
	{
		TArray<FString> Paths;
		Paths.Add(FString(LibraryPath().c_str()));
		ZnDllLoader Loader(Paths, false);
		EXPECT_EQ(Loader.GetHandles()[0], Ours);
	}
	FPlatformProcess::FreeDllHandle(Ours);
	EXPECT_EQ(dlopen(LibraryPath().c_str(), RTLD_NOLOAD | RTLD_LAZY), nullptr);
}

TEST_F(ZnDllLoaderTest, ACopyOutlivingTheOriginalKeepsTheLibraryLoaded)
{
	TArray<FString> Paths;
	Paths.Add(FString(LibraryPath().c_str()));
	std::optional<ZnDllLoader> Original;
	Original.emplace(Paths, false);
	void* const Handle = Original->GetHandles()[0];
	ASSERT_NE(Handle, nullptr);
	{
		ZnDllLoader Copy(*Original);
		ASSERT_EQ(Copy.GetHandles().Num(), 1);
		EXPECT_EQ(Copy.GetHandles()[0], Handle);
		Original.reset();
		// The library was loaded once: were the original's destruction to release it, the
		// copy's handle would now point at an unmapped library.
		EXPECT_NE(dlopen(LibraryPath().c_str(), RTLD_NOLOAD | RTLD_LAZY), nullptr);
		dlclose(Handle);
		EXPECT_EQ(CallAnswer(Copy.GetHandles()[0]), 42);
	}
	// The last sharer released it, once.
	EXPECT_EQ(dlopen(LibraryPath().c_str(), RTLD_NOLOAD | RTLD_LAZY), nullptr);
}

TEST_F(ZnDllLoaderTest, AssignedLoaderSharesTheHandlesAndReleasesItsOwn)
{
	TArray<FString> Paths;
	Paths.Add(FString(LibraryPath().c_str()));
	ZnDllLoader Assigned(Paths, false);
	void* const Handle = Assigned.GetHandles()[0];
	ASSERT_NE(Handle, nullptr);
	{
		ZnDllLoader Other(Paths, false);
		// Assigning over drops the loader's own share: one of the two loads is released here.
		Assigned = Other;
		EXPECT_EQ(Assigned.GetHandles()[0], Handle);
	}
	// The other loader is gone; its load is still held by the loader it was assigned to.
	EXPECT_EQ(CallAnswer(Assigned.GetHandles()[0]), 42);
	Assigned = ZnDllLoader(TArray<FString>(), false);
	EXPECT_EQ(Assigned.GetHandles().Num(), 0);
	EXPECT_EQ(dlopen(LibraryPath().c_str(), RTLD_NOLOAD | RTLD_LAZY), nullptr);
}

TEST_F(ZnDllLoaderTest, PathsAreUsedExactlyAsGiven)
{
	// No extension or directory is added: the bare name of the library is not found.
	std::string BareName = LibraryPath().substr(LibraryPath().find_last_of('/') + 1);
	BareName = BareName.substr(0, BareName.find(".so"));
	TArray<FString> Paths;
	Paths.Add(FString(BareName.c_str()));
	ZnDllLoader Loader(Paths, true);
	EXPECT_EQ(Loader.GetHandles()[0], nullptr);
	ASSERT_EQ(Boxes.size(), 1u);
	EXPECT_EQ(Boxes[0].Message, "Failed to load third party library:" + BareName);
}
