#include "Components/SkeletalMeshComponent.h"

#include <gtest/gtest.h>

#include <string>

TEST(USkeletalMeshComponent, BoneNamesByIndex)
{
	USkeletalMeshComponent* Mesh = NewObject<USkeletalMeshComponent>();
	EXPECT_EQ(Mesh->GetNumBones(), 0);
	TArray<FName> Bones;
	Bones.Add(FName(TEXT("root")));
	Bones.Add(FName(TEXT("spine_01")));
	Mesh->SetStandaloneBoneNames(Bones);
	ASSERT_EQ(Mesh->GetNumBones(), 2);
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Mesh->GetBoneName(1).ToString())), "spine_01");
}

TEST(USkeletalMeshComponentErrors, IndexOutsideTheSkeletonIsNone)
{
	USkeletalMeshComponent* Mesh = NewObject<USkeletalMeshComponent>();
	TArray<FName> Bones;
	Bones.Add(FName(TEXT("root")));
	Mesh->SetStandaloneBoneNames(Bones);
	EXPECT_TRUE(Mesh->GetBoneName(-1) == NAME_None);
	EXPECT_TRUE(Mesh->GetBoneName(1) == NAME_None);
}
