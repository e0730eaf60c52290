// What the usage log prints on standard output, line for line, and what a null
// text does to the stream.
#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "UsageLogSupport.h"
#include "solva/Device.h"
#include "solva/Logs.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

class ConsoleTest : public UsageLogTest {};

TEST_F(ConsoleTest, EveryLevelPrintsItsLineIndentedByItsDepth) {
  log.logTitleStart();
  log.logGameStart("maze");
  log.logGameAreaStart("cave");
  log.logActivityStart("count", "easy", "1");
  log.logCyoStart("paint", "2");
  log.logCyoExit("paint", "3");
  log.logActivityExit(12, static_cast<ActivityExitReason>(1));
  log.logGameAreaExit();
  log.logGameExit();
  log.logTitleExit(static_cast<TitleExitReason>(2));
  EXPECT_EQ(
      "TitleStart\n"
      "\tGameStart id: maze\n"
      "\t\tGameAreaStart id: cave\n"
      "\t\t\tActivityStart activity: count mode: easy level: 1\n"
      "\t\t\t\tCyoStart id: paint sublevel: 2\n"
      "\t\t\t\tCyoExit id: paint sublevel: 3\n"
      "\t\t\tActivityExit score: 12 reason: 1\n"
      "\t\tGameAreaExit\n"
      "\tGameExit\n"
      "TitleExit reason: 2\n",
      TakeConsole());
}

TEST_F(ConsoleTest, LevelTutorialAndHintLines) {
  log.logLevelUp("5");
  log.logLevelDown("4");
  log.logTutorialStart("intro");
  log.logTutorialExit();
  log.logHintRequest(31, "x=1");
  EXPECT_EQ(
      "\t\t\t\tLevelUp newLevel: 5\n"
      "\t\t\t\tLevelDown newLevel: 4\n"
      "\t\t\t\tTutorialStart id: intro\n"
      "\t\t\t\tTutorialExit\n"
      "\t\t\t\tHintRequest questionID: 31 params: x=1\n",
      TakeConsole());
}

TEST_F(ConsoleTest, AchievementLineShowsTheNumber) {
  log.logTitleStart();
  TakeConsole();
  log.logAchievementEarned(65535);
  EXPECT_EQ("\tAchievementEarned id: 65535\n", TakeConsole());
}

TEST_F(ConsoleTest, NegativeNumbersPrintWithTheirSign) {
  log.logHintRequest(-4, "p");
  EXPECT_EQ("\t\t\t\tHintRequest questionID: -4 params: p\n", TakeConsole());
}

TEST_F(ConsoleTest, EmptyTextsPrintAsNothingBetweenTheLabels) {
  log.logTitleStart();
  log.logGameStart("");
  TakeConsole();
  EXPECT_TRUE(std::cout.good());
  log.logGameExit();
  log.logGameStart("");
  EXPECT_EQ("\tGameExit\n\tGameStart id: \n", TakeConsole());
  EXPECT_TRUE(std::cout.good());
}

TEST_F(ConsoleTest, NullIdSetsTheStreamsBadBitAndTheRecordIsWrittenAllTheSame) {
  log.logTitleStart();
  TakeConsole();
  ASSERT_TRUE(std::cout.good());
  log.logGameStart(nullptr);
  // The standard stream prints up to the null text and then stops.
  EXPECT_EQ("\tGameStart id: ", TakeConsole());
  EXPECT_TRUE(std::cout.bad());
  EXPECT_TRUE(std::cout.fail());
  EXPECT_EQ((Records{"CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)",
                     "CGameStart(id=null)"}),
            UsageLog());
  EXPECT_TRUE(log.IsGameOpen());
}

TEST_F(ConsoleTest, NullTextInTheMiddleCutsTheLineThere) {
  log.logTitleStart();
  log.logGameStart("maze");
  log.logGameAreaStart("cave");
  TakeConsole();
  log.logActivityStart("count", nullptr, "1");
  EXPECT_EQ("\t\t\tActivityStart activity: count mode: ", TakeConsole());
  EXPECT_TRUE(std::cout.fail());
  EXPECT_EQ("CActivityStart(activity=\"count\", mode=null, level=\"1\")", UsageLog().back());
  EXPECT_TRUE(log.IsActivityOpen());
}

TEST_F(ConsoleTest, AfterANullTextLaterLinesAreLostButTheirRecordsAreWritten) {
  log.logLevelUp(nullptr);
  EXPECT_EQ("\t\t\t\tLevelUp newLevel: ", TakeConsole());
  log.logLevelDown("1");
  log.logTutorialExit();
  EXPECT_EQ("", TakeConsole());
  EXPECT_EQ((Records{"CLevelUp(newLevel=null)", "CLevelDown(newLevel=\"1\")", "CTutorialExit()"}), AppManagerLog());
  // Once the title clears the stream, lines come back.
  std::cout.clear();
  log.logTutorialExit();
  EXPECT_EQ("\t\t\t\tTutorialExit\n", TakeConsole());
}

TEST_F(ConsoleTest, NullTextsInEveryTextArgumentStillWriteEveryRecord) {
  log.logTitleStart();
  log.logGameStart(nullptr);
  log.logGameAreaStart(nullptr);
  log.logActivityStart(nullptr, nullptr, nullptr);
  log.logCyoStart(nullptr, nullptr);
  log.logCyoExit(nullptr, nullptr);
  log.logTutorialStart(nullptr);
  log.logHintRequest(1, nullptr);
  log.logQuestion(eAnswer_SemiCorrectTimed, 1, nullptr, nullptr, 9);
  EXPECT_EQ((Records{"CCyoStart(id=null, sublevel=null)", "CCyoExit(id=null, sublevel=null)", "CTutorialStart(id=null)",
                     "CHintRequest(questionId=1, params=null)",
                     "CSemiCorrectAnswerTimed(questionId=1, params=null, answer=null, time=9)"}),
            AppManagerLog());
  const Records usage = UsageLog();
  ASSERT_EQ(4u, usage.size());
  EXPECT_EQ("CGameStart(id=null)", usage[1]);
  EXPECT_EQ("CGameAreaStart(id=null)", usage[2]);
  EXPECT_EQ("CActivityStart(activity=null, mode=null, level=null)", usage[3]);
  EXPECT_EQ("TGAV-", log.Levels());
}

// The lines above were caught at std::cout; here they are read where a person
// sees them, on the process's standard output.
TEST(ConsoleOutput, LinesReachStandardOutput) {
  zvtest::TempDir dir;
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    solva::ResetDevice();
    solva::SetDeviceRoot(dir.path() + "/root");
    ZvLogging log;
    log.logTutorialStart("intro");
    log.logQuestion(eAnswer_CorrectTimed, 3, "p", "a", 250);
    std::cout.flush();
  });
  EXPECT_FALSE(child.died());
  EXPECT_EQ(
      "\t\t\t\tTutorialStart id: intro\n"
      "\t\t\t\tCorrectAnswerTimed questionID: 3 params: p answer: a time: 250\n",
      child.out);
}

}  // namespace
