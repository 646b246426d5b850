#include "ZnBodyData.h"

#include "ZnDecodeTestHelpers.h"
#include "ZnFaceData.h"

#include <gtest/gtest.h>

using namespace ZnDecodeTest;

TEST(ZnBodyDataTests, NewRecordIsEmptyWithAStamp)
{
	const int64 Before = FDateTime::Now().GetTicks();
	const FZnBodyData Body;
	const int64 After = FDateTime::Now().GetTicks();
	EXPECT_GE(Body.id, Before);
	EXPECT_LE(Body.id, After);
	EXPECT_EQ(Body.totalTime, 0.0f);
	EXPECT_EQ(Body.BoneNames.Num(), 0);
	EXPECT_EQ(Body.BoneFrames.Num(), 0);
	EXPECT_EQ(Body.BoneCurves.Num(), 0);
	for (int32 Channel = 0; Channel < 3; ++Channel)
	{
		EXPECT_EQ(Body.RootPositionCurve.FloatCurves[Channel].Keys.Num(), 0);
	}
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Z, 0.0);
}

TEST(ZnBodyDataTests, StampsNeverDecrease)
{
	int64 Previous = FZnBodyData().id;
	for (int32 Index = 0; Index < 1000; ++Index)
	{
		const FZnBodyData Body;
		EXPECT_GE(Body.id, Previous);
		Previous = Body.id;
		const FZnFaceData Face;
		EXPECT_GE(Face.id, Previous);
		Previous = Face.id;
	}
}

TEST(ZnBodyDataTests, NamesTextEndsEveryNameWithAComma)
{
	FZnBodyData Body;
	EXPECT_EQ(Body.GetNamesStr(), FString());
	Body.BoneNames.Add(TEXT("X"));
	EXPECT_TRUE(Body.GetNamesStr().Equals(TEXT("X,"), ESearchCase::CaseSensitive));
	Body.BoneNames.Reset();
	Body.BoneNames.Add(TEXT("Hips"));
	Body.BoneNames.Add(TEXT("Spine"));
	EXPECT_TRUE(Body.GetNamesStr().Equals(TEXT("Hips,Spine,"), ESearchCase::CaseSensitive));
}

TEST(ZnBodyDataTests, CopiesAreIndependent)
{
	const FZnBodyData Source = SentinelBody();
	FZnBodyData Copy(Source);
	EXPECT_TRUE(SameBody(Copy, Source));
	Copy.BoneCurves[0].Keys[0].Value = FQuat(0.0, 0.0, 0.0, 1.0);
	Copy.BoneCurves[0].Keys[0].Time = 9.0f;
	Copy.BoneFrames[0][0] = FQuat(1.0, 0.0, 0.0, 0.0);
	Copy.BoneNames[0] = TEXT("Changed");
	Copy.RootPositionCurve.UpdateOrAddKey(FVector(0.0, 0.0, 0.0), 10.0f);
	EXPECT_TRUE(SameBody(Source, SentinelBody()));

	FZnBodyData Assigned;
	Assigned = Source;
	EXPECT_TRUE(SameBody(Assigned, Source));
	Assigned.BoneCurves[0].UpdateOrAddKey(4.0f, FQuat(0.0, 0.0, 0.0, 1.0), 0.0001f);
	EXPECT_EQ(Source.BoneCurves[0].Keys.Num(), 1);
}

TEST(ZnBodyDataTests, FaceRecordStartsEmptyAndCopiesAreIndependent)
{
	const FZnFaceData Empty;
	EXPECT_EQ(Empty.totalTime, 0.0f);
	EXPECT_EQ(Empty.CurveNames.Num(), 0);
	EXPECT_EQ(Empty.CurveFrames.Num(), 0);
	EXPECT_EQ(Empty.Curves.Num(), 0);

	const FZnFaceData Source = SentinelFace();
	FZnFaceData Copy = Source;
	EXPECT_TRUE(SameFace(Copy, Source));
	Copy.CurveFrames[0][0] = 0.75f;
	Copy.Curves[0].UpdateOrAddKey(0.5f, 4.0f);
	Copy.CurveNames[0] = TEXT("Other");
	EXPECT_TRUE(SameFace(Source, SentinelFace()));
}
