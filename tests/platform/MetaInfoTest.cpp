#include <gtest/gtest.h>

#include <string>

#include "CMetaInfo.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Exists;
using zvtest::ReadText;
using zvtest::TempDir;
using zvtest::WriteText;

TEST(MetaInfo, FolderWithoutMetaJsonIsInvalidAndEmpty) {
  TempDir dir;
  Catalog::CMetaInfo meta(dir.path());
  EXPECT_FALSE(meta.IsValid());
  EXPECT_EQ("", meta.GetPackageId().raw());
  EXPECT_EQ(0u, meta.GetProductId());
  EXPECT_EQ("", meta.GetTagString("OptionalUpload").raw());
  EXPECT_EQ(dir.path() + "/meta.json", meta.GetPath());
}

TEST(MetaInfo, ReadsEveryField) {
  TempDir dir;
  WriteText(dir.file("meta.json"),
            "{\"packageId\": \"Recorder\", \"productId\": 77, \"deviceType\": \"Handheld\", \"packageType\": "
            "\"Application\", \"partNumber\": \"152-1\", \"version\": \"2.0.1\", \"tags\": {\"ModKitType\": "
            "\"Sticker\", \"Count\": 3}}");
  Catalog::CMetaInfo meta(dir.path() + "/");
  ASSERT_TRUE(meta.IsValid());
  EXPECT_EQ("Recorder", meta.GetPackageId().raw());
  EXPECT_EQ(77u, meta.GetProductId());
  EXPECT_EQ("Handheld", meta.GetDeviceType().raw());
  EXPECT_EQ("Application", meta.GetPackageType().Name().raw());
  EXPECT_EQ("152-1", meta.GetPartNumber().raw());
  EXPECT_EQ("2.0.1", meta.GetPackageVersion().raw());
  EXPECT_EQ("Sticker", meta.GetTagString("ModKitType").raw());
  EXPECT_EQ("3", meta.GetTagString("Count").raw());
  EXPECT_TRUE(meta.HasTag("Count"));
  EXPECT_FALSE(meta.HasTag("Other"));
}

TEST(MetaInfo, MalformedFileIsInvalidAndNotOverwrittenByReading) {
  TempDir dir;
  WriteText(dir.file("meta.json"), "{not json");
  {
    Catalog::CMetaInfo meta(dir.path());
    EXPECT_FALSE(meta.IsValid());
  }
  EXPECT_EQ("{not json", ReadText(dir.file("meta.json")));
}

TEST(MetaInfo, WhatIsSetIsKeptWhenTheObjectEnds) {
  TempDir dir;
  {
    Catalog::CMetaInfo meta(dir.path());
    meta.SetPackageId("Recorder");
    meta.SetProductId(12);
    meta.SetDeviceType("Handheld");
    meta.SetPackageType(Catalog::tPackageType("Audio"));
    meta.SetPartNumber("152-2");
    meta.SetPackageVersion("1.1");
    meta.SetTagString("OptionalUpload", "1");
    EXPECT_FALSE(Exists(dir.file("meta.json"))) << "written at the end, not at each change";
  }
  Catalog::CMetaInfo again(dir.path());
  ASSERT_TRUE(again.IsValid());
  EXPECT_EQ("Recorder", again.GetPackageId().raw());
  EXPECT_EQ(12u, again.GetProductId());
  EXPECT_EQ("Audio", again.GetPackageType().Name().raw());
  EXPECT_EQ("152-2", again.GetPartNumber().raw());
  EXPECT_EQ("1.1", again.GetPackageVersion().raw());
  EXPECT_EQ("1", again.GetTagString("OptionalUpload").raw());
}

TEST(MetaInfo, ExplicitSaveWritesAtOnceAndAnUnchangedRecordIsNotRewritten) {
  TempDir dir;
  const std::string text = "{\"packageId\":\"Recorder\"}";
  WriteText(dir.file("meta.json"), text);
  {
    Catalog::CMetaInfo meta(dir.path());
    EXPECT_TRUE(meta.Save());
  }
  EXPECT_EQ(text, ReadText(dir.file("meta.json")));
  Catalog::CMetaInfo meta(dir.path());
  meta.SetTagString("OptionalUpload", "1");
  EXPECT_TRUE(meta.Save());
  EXPECT_NE(text, ReadText(dir.file("meta.json")));
  EXPECT_EQ("1", Catalog::CMetaInfo(dir.path()).GetTagString("OptionalUpload").raw());
}

TEST(MetaInfo, PackageTypesOutsideTheTableAreKeptButUnknown) {
  EXPECT_TRUE(Catalog::tPackageType("StoryBooks").IsKnown());
  EXPECT_TRUE(Catalog::tPackageType("Photos").IsKnown());
  Catalog::tPackageType odd("Music");
  EXPECT_FALSE(odd.IsKnown());
  EXPECT_EQ("Music", odd.Name().raw());
}

TEST(MetaInfo, UnwritableFolderReportsAFailedSave) {
  TempDir dir;
  Catalog::CMetaInfo meta(dir.path() + "/missing");
  meta.SetPackageId("Recorder");
  EXPECT_FALSE(meta.Save());
}

}  // namespace
