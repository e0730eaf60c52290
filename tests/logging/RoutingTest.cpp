// Which of the device's logs takes which record: the usage log the title, game,
// area and activity records; the application manager's log the rest.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CAppManager.h"
#include "CLogFile.h"
#include "UsageLogSupport.h"
#include "solva/Device.h"
#include "solva/Logs.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

class RoutingTest : public UsageLogTest {};

TEST_F(RoutingTest, LogsLieInTheLogFolderUnderTheDeviceRoot) {
  EXPECT_EQ(root + "Logs/Usage.log", solva::UsageLogPath());
  EXPECT_EQ(root + "Logs/AppManager.log", solva::AppManagerLogPath());
  EXPECT_EQ(solva::UsageLogPath(), CLogFile::Instance()->GetPath());
  EXPECT_EQ(solva::AppManagerLogPath(), CAppManager::Instance()->GetLogFile()->GetPath());
}

TEST_F(RoutingTest, EachRecordLandsInItsLogWithItsArguments) {
  log.logTitleStart();
  log.logGameStart("maze");
  log.logGameAreaStart("cave");
  log.logActivityStart("count", "easy", "1");
  log.logCyoStart("paint", "2");
  log.logLevelUp("3");
  log.logLevelDown("2");
  log.logTutorialStart("intro");
  log.logTutorialExit();
  log.logHintRequest(5, "h");
  log.logQuestion(eAnswer_WrongTimed, 6, "p", "b", 40);
  log.logCyoExit("paint", "3");
  log.logActivityExit(88, static_cast<ActivityExitReason>(0));
  log.logGameAreaExit();
  log.logGameExit();
  log.logTitleExit(static_cast<TitleExitReason>(0));
  EXPECT_EQ((Records{"CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)",
                     "CGameStart(id=\"maze\")", "CGameAreaStart(id=\"cave\")",
                     "CActivityStart(activity=\"count\", mode=\"easy\", level=\"1\")",
                     "CActivityExit(score=88, reason=0)", "CGameAreaExit()", "CGameExit()", "CTitleExit(reason=0)"}),
            UsageLog());
  EXPECT_EQ(
      (Records{"CCyoStart(id=\"paint\", sublevel=\"2\")", "CLevelUp(newLevel=\"3\")", "CLevelDown(newLevel=\"2\")",
               "CTutorialStart(id=\"intro\")", "CTutorialExit()", "CHintRequest(questionId=5, params=\"h\")",
               "CWrongAnswerTimed(questionId=6, params=\"p\", answer=\"b\", time=40)",
               "CCyoExit(id=\"paint\", sublevel=\"3\")"}),
      AppManagerLog());
}

TEST_F(RoutingTest, EveryRecordNamesThePlayerAndTheDeviceTime) {
  solva::SetCurrentPlayer(4);
  log.logTitleStart();
  log.logLevelUp("2");
  for (const std::vector<logtest::Json>& records : {UsageRecords(), AppManagerRecords()}) {
    ASSERT_EQ(1u, records.size());
    EXPECT_EQ(4, records[0]["player"].get<int>());
    EXPECT_TRUE(records[0]["time"].is_number_unsigned());
  }
}

TEST_F(RoutingTest, AnotherDeviceRootTakesTheFollowingRecords) {
  log.logTutorialExit();
  ASSERT_TRUE(solva::SetDeviceRoot(dir.path() + "/other"));
  log.logTutorialExit();
  EXPECT_EQ(1u, logtest::ReadRecords(root + "Logs/AppManager.log").size());
  EXPECT_EQ(1u, logtest::ReadRecords(dir.path() + "/other/Logs/AppManager.log").size());
}

}  // namespace
