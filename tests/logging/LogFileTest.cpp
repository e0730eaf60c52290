// The device's logs: one JSON object a line, appended, under the device root.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "CAppManager.h"
#include "CLogFile.h"
#include "LogDataOrrin.h"
#include "UsageLogSupport.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Logs.h"

namespace {

using logtest::Json;
using logtest::ReadRecords;
using Records = std::vector<std::string>;

class LogFileTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(dir.path() + "/root"));
    root = dir.path() + "/root/";
  }
  void TearDown() override { solva::ResetDevice(); }
  zvtest::TempDir dir;
  std::string root;
};

TEST_F(LogFileTest, AppendWritesOneLineThatNamesTheRecordAndItsArguments) {
  char mode[] = "easy";
  LogData::Orrin::CActivityStart record(const_cast<char*>("count"), mode, nullptr);
  ASSERT_EQ(kNoErr, CLogFile::Instance()->Append(record));
  const std::string text = zvtest::ReadText(root + "Logs/Usage.log");
  ASSERT_FALSE(text.empty());
  EXPECT_EQ('\n', text.back());
  EXPECT_EQ(text.size() - 1, text.find('\n')) << "one line";
  const Json line = Json::parse(text);
  EXPECT_EQ("CActivityStart", line["record"]);
  EXPECT_EQ(Json::parse("{\"activity\": \"count\", \"mode\": \"easy\", \"level\": null}"), line["args"]);
  // Arguments keep the order of the constructor.
  std::vector<std::string> keys;
  for (auto arg = line["args"].begin(); arg != line["args"].end(); ++arg) keys.push_back(arg.key());
  EXPECT_EQ((std::vector<std::string>{"activity", "mode", "level"}), keys);
}

TEST_F(LogFileTest, AppendKeepsWhatWasThere) {
  LogData::Orrin::CGameExit first;
  LogData::Orrin::CTitleExit second(4);
  CLogFile::Instance()->Append(first);
  CLogFile::Instance()->Append(second);
  EXPECT_EQ((Records{"CGameExit()", "CTitleExit(reason=4)"}), logtest::Describe(ReadRecords(solva::UsageLogPath())));
}

TEST_F(LogFileTest, RecordCarriesThePlayerAndTheDeviceTimeInMilliseconds) {
  solva::SetClockMode(solva::ClockMode::Virtual, 2500000);
  solva::SetCurrentPlayer(6);
  LogData::Orrin::CTutorialExit record;
  CLogFile::Instance()->Append(record);
  const std::vector<Json> records = ReadRecords(solva::UsageLogPath());
  ASSERT_EQ(1u, records.size());
  EXPECT_EQ(6, records[0]["player"].get<int>());
  EXPECT_EQ(2500u, records[0]["time"].get<unsigned>());
  solva::SetClockMode(solva::ClockMode::Real);
}

TEST_F(LogFileTest, TheTwoLogsAreSeparateFiles) {
  LogData::Orrin::CLevelUp up(const_cast<char*>("2"));
  LogData::Orrin::CGameExit exit;
  CAppManager::Instance()->GetLogFile()->Append(up);
  CLogFile::Instance()->Append(exit);
  EXPECT_EQ((Records{"CLevelUp(newLevel=\"2\")"}), logtest::Describe(ReadRecords(solva::AppManagerLogPath())));
  EXPECT_EQ((Records{"CGameExit()"}), logtest::Describe(ReadRecords(solva::UsageLogPath())));
}

TEST_F(LogFileTest, ALogOfItsOwnNameLiesBesideTheOthers) {
  CLogFile own("Extra.log");
  EXPECT_EQ(root + "Logs/Extra.log", own.GetPath());
  LogData::Orrin::CGameAreaExit record;
  ASSERT_EQ(kNoErr, own.Append(record));
  EXPECT_EQ(1u, ReadRecords(root + "Logs/Extra.log").size());
}

TEST_F(LogFileTest, TextThatIsNotUtf8IsKeptAsReplacementCharactersRatherThanLost) {
  char bad[] = {'a', char(0xFF), 'b', 0};
  LogData::Orrin::CGameStart record(bad);
  ASSERT_EQ(kNoErr, CLogFile::Instance()->Append(record));
  const std::vector<Json> records = ReadRecords(solva::UsageLogPath());
  ASSERT_EQ(1u, records.size());
  EXPECT_EQ(
      "a\xEF\xBF\xBD"
      "b",
      records[0]["args"]["id"]);
}

TEST_F(LogFileTest, QuotesAndNewLinesInTextsStayInsideTheirLine) {
  char text[] = "say \"hi\"\nthen go";
  LogData::Orrin::CTutorialStart record(text);
  CLogFile::Instance()->Append(record);
  const std::vector<Json> records = ReadRecords(solva::UsageLogPath());
  ASSERT_EQ(1u, records.size());
  EXPECT_EQ(text, records[0]["args"]["id"]);
}

TEST_F(LogFileTest, AppendThatCannotWriteSaysSoAndReportsADeviceError) {
  // A file where the log folder should be.
  zvtest::WriteText(root + "Logs", "not a folder");
  const zvtest::ChildResult child = zvtest::RunInChild([] {
    LogData::Orrin::CGameExit record;
    printf("result=%d\n", int(CLogFile::Instance()->Append(record)));
  });
  EXPECT_FALSE(child.died());
  EXPECT_NE(std::string::npos, child.out.find("result=" + std::to_string(kDeviceErr))) << child.out;
  EXPECT_NE(std::string::npos, child.out.find("[CLogFile] cannot append to " + root + "Logs/Usage.log")) << child.out;
  EXPECT_NE(std::string::npos, child.out.find("CGameExit not written")) << child.out;
  EXPECT_EQ("not a folder", zvtest::ReadText(root + "Logs"));
}

}  // namespace
