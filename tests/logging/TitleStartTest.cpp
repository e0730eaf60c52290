// The title's start record comes from the title's own metadata.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "UsageLogSupport.h"
#include "solva/Device.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

class TitleStartTest : public UsageLogTest {};

TEST_F(TitleStartTest, RecordTakesProductIdPartNumberAndVersionFromTheTitlesMetadataAnd1) {
  log.logTitleStart();
  const std::vector<logtest::Json> records = UsageRecords();
  ASSERT_EQ(1u, records.size());
  EXPECT_EQ("CTitleStart", records[0]["record"]);
  const logtest::Json& args = records[0]["args"];
  EXPECT_EQ(123456u, args["productId"].get<unsigned long>());
  EXPECT_EQ("152-9001", args["partNumber"]);
  EXPECT_EQ("2.1.0.7", args["packageVersion"]);
  EXPECT_EQ(1u, args["kind"].get<unsigned>());
  EXPECT_EQ("TitleStart\n", TakeConsole());
  EXPECT_TRUE(log.IsTitleOpen());
}

TEST_F(TitleStartTest, ShippedTestTitleGivesItsOwnNumbers) {
  solva::SetTitlePath(ZV_SOURCE_DIR "/tests/media/data/title");
  log.logTitleStart();
  EXPECT_EQ((Records{"CTitleStart(productId=4097, partNumber=\"152-00417\", packageVersion=\"1.0.0.3\", kind=1)"}),
            UsageLog());
}

TEST_F(TitleStartTest, TitleWithoutMetadataWritesNothingAndStaysClosed) {
  std::remove((titleDir + "meta.json").c_str());
  log.logTitleStart();
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_EQ("", TakeConsole());
  EXPECT_FALSE(log.IsTitleOpen());
  // And what needs a title does nothing.
  log.logGameStart("maze");
  EXPECT_EQ(Records{}, UsageLog());
}

TEST_F(TitleStartTest, UnreadableMetadataWritesNothing) {
  WriteMeta("{not json");
  log.logTitleStart();
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_FALSE(log.IsTitleOpen());
}

TEST_F(TitleStartTest, OpenTitleStartedAgainWithoutMetadataIsClosedWithReason3AndStaysClosed) {
  log.logTitleStart();
  log.logGameStart("maze");
  std::remove((titleDir + "meta.json").c_str());
  log.logTitleStart();
  EXPECT_EQ((Records{"CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)",
                     "CGameStart(id=\"maze\")", "CGameExit()", "CTitleExit(reason=3)"}),
            UsageLog());
  EXPECT_EQ("-----", log.Levels());
}

TEST_F(TitleStartTest, MetadataIsReadAgainAtEachStart) {
  log.logTitleStart();
  WriteMeta("{\"productId\": 7, \"partNumber\": \"152-7\", \"version\": \"3.0\"}");
  log.logTitleStart();
  const Records records = UsageLog();
  ASSERT_EQ(3u, records.size());
  EXPECT_EQ("CTitleStart(productId=7, partNumber=\"152-7\", packageVersion=\"3.0\", kind=1)", records[2]);
}

TEST_F(TitleStartTest, MetadataWithoutItsFieldsGivesZeroAndEmptyTexts) {
  WriteMeta("{}");
  log.logTitleStart();
  EXPECT_EQ((Records{"CTitleStart(productId=0, partNumber=\"\", packageVersion=\"\", kind=1)"}), UsageLog());
  EXPECT_TRUE(log.IsTitleOpen());
}

TEST_F(TitleStartTest, LoggingLeavesTheMetadataFileAsItWas) {
  const std::string before = zvtest::ReadText(titleDir + "meta.json");
  log.logTitleStart();
  log.logTitleExit(static_cast<TitleExitReason>(1));
  EXPECT_EQ(before, zvtest::ReadText(titleDir + "meta.json"));
}

}  // namespace
