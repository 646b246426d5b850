// The export library as a program that already holds decoded records calls it: one call per
// file, the same bytes the commands write, and clear refusals that write nothing.
#include "ZnBvhWriter.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnExportMotion.h"
#include "ZnFaceCsvWriter.h"
#include "ZnMotionGenerator.h"
#include "ZnPreviewPage.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

using namespace ZnTest;

namespace
{
FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

// A body whose only bone is the head, turned by Degrees about the export axis 'X', 'Y' or 'Z'.
FZnBodyData HeadTurnedAbout(char Axis, double Degrees)
{
	const double Half = Degrees * 3.14159265358979323846 / 360.0;
	// Export X, Y, Z are engine Y, Z, X.
	const FQuat Engine = Axis == 'X' ? FQuat(0, std::sin(Half), 0, std::cos(Half))
		: Axis == 'Y'				 ? FQuat(0, 0, std::sin(Half), std::cos(Half))
									 : FQuat(std::sin(Half), 0, 0, std::cos(Half));
	FZnBodyData Body;
	Body.BoneNames.Add(TEXT("Head"));
	Body.BoneFrames.AddDefaulted();
	Body.BoneCurves.AddDefaulted();
	Body.BoneCurves[0].Keys.Add(FZnQuatCurveKey(0.0f, Engine));
	return Body;
}
} // namespace

class ZnExportLibraryTest : public FZnFolderTest
{
};

TEST_F(ZnExportLibraryTest, WriteFunctionsGiveTheCommandsBytes)
{
	FZnGenBodyOptions BodyOptions;
	BodyOptions.FrameCount = 30;
	const std::string BodyText = FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(BodyOptions));
	FZnGenFaceOptions FaceOptions;
	FaceOptions.FrameCount = 30;
	const std::string FaceText = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(FaceOptions));
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(BodyText), Body);
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(ToFString(FaceText), Face);

	std::string Error;
	ASSERT_TRUE(FZnBvhWriter::WriteFile(Body, PathOf("lib.bvh"), Error)) << Error;
	ASSERT_TRUE(FZnFaceCsvWriter::WriteFile(Face, &Body, PathOf("lib.csv"), Error)) << Error;
	FZnPreviewInput Input;
	Input.Body = &Body;
	Input.Face = &Face;
	Input.Title = "Preview of body.json";
	ASSERT_TRUE(FZnPreviewPage::Write(Input, PathOf("lib_page"), Error)) << Error;

	const std::string BodyPath = Write("body.json", BodyText);
	const std::string FacePath = Write("face.json", FaceText);
	EXPECT_EQ(RunZn({"export", "bvh", BodyPath, "-o", PathOf("cmd.bvh")}).Status, 0);
	EXPECT_EQ(RunZn({"export", "csv", FacePath, "--body", BodyPath, "-o", PathOf("cmd.csv")}).Status, 0);
	EXPECT_EQ(RunZn({"preview", "--body", BodyPath, "--face", FacePath, "-o", PathOf("cmd_page")}).Status, 0);
	EXPECT_EQ(ReadAll(PathOf("lib.bvh")), ReadAll(PathOf("cmd.bvh")));
	EXPECT_EQ(ReadAll(PathOf("lib.csv")), ReadAll(PathOf("cmd.csv")));
	EXPECT_EQ(ReadAll(PathOf("lib_page/index.html")), ReadAll(PathOf("cmd_page/index.html")));
	// Nothing but the finished files is left in the folder.
	for (const auto& Entry : std::filesystem::directory_iterator(Folder))
	{
		EXPECT_EQ(Entry.path().string().find(".part"), std::string::npos) << Entry.path();
	}
}

TEST_F(ZnExportLibraryTest, RecordsWithoutFramesAreRefused)
{
	const FZnBodyData Body;
	const FZnFaceData Face;
	std::string Error;
	EXPECT_FALSE(FZnBvhWriter::WriteFile(Body, PathOf("out.bvh"), Error));
	EXPECT_EQ(Error, "the body clip has no frames");
	EXPECT_FALSE(FZnFaceCsvWriter::WriteFile(Face, nullptr, PathOf("out.csv"), Error));
	EXPECT_EQ(Error, "the face clip has no frames");
	FZnPreviewInput Input;
	EXPECT_FALSE(FZnPreviewPage::Write(Input, PathOf("page"), Error));
	EXPECT_EQ(Error, "a preview needs a body clip, a face clip or both");
	Input.Face = &Face;
	EXPECT_FALSE(FZnPreviewPage::Write(Input, PathOf("page"), Error));
	EXPECT_EQ(Error, "the face clip has no frames");
	EXPECT_TRUE(std::filesystem::is_empty(Folder));
}

TEST_F(ZnExportLibraryTest, HeadAnglesFollowTheDocumentedSigns)
{
	struct FCase
	{
		char Axis;
		int Column;
	};
	// About up (Y): yaw; about left (X): pitch; about forward (Z): roll; 30 degrees each.
	for (const FCase Case : {FCase{'Y', 0}, FCase{'X', 1}, FCase{'Z', 2}})
	{
		FZnExportMotion Motion;
		std::string Error;
		ASSERT_TRUE(FZnExportMotion::FromBody(HeadTurnedAbout(Case.Axis, 30.0), Motion, Error)) << Error;
		const FVector Angles = FZnFaceCsvWriter::HeadYawPitchRoll(Motion, 0);
		for (int Column = 0; Column < 3; ++Column)
		{
			EXPECT_NEAR(Angles[Column], Column == Case.Column ? 30.0 * 3.14159265358979323846 / 180.0 : 0.0, 1e-12)
				<< Case.Axis;
		}
		// The turned face's forward direction (+Z) goes to the left (+X) for yaw, down (-Y) for
		// pitch; the head's up (+Y) leans right (-X) for roll.
		const FQuat Head = Motion.Rotation(0, 13);
		ASSERT_EQ(Motion.Joints[13].Name, "Head");
		const FVector Forward = Head.RotateVector(FVector(0, 0, 1));
		const FVector Up = Head.RotateVector(FVector(0, 1, 0));
		if (Case.Axis == 'Y')
		{
			EXPECT_GT(Forward.X, 0.4);
		}
		if (Case.Axis == 'X')
		{
			EXPECT_LT(Forward.Y, -0.4);
		}
		if (Case.Axis == 'Z')
		{
			EXPECT_LT(Up.X, -0.4);
		}
	}
}
