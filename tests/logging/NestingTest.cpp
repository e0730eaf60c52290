// The nesting rules of the usage log: what each call needs open, what it closes
// first, and what it leaves open. Records are read back from the device's logs.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "UsageLogSupport.h"
#include "solva/Logs.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

// The state reached by the operations alone: everything open, down to `depth`
// (1 title, 2 game, 3 area, 4 activity, 5 Cyo), records and console dropped.
class NestingTest : public UsageLogTest {
 protected:
  void OpenDownTo(int depth) {
    if (depth >= 1) log.logTitleStart();
    if (depth >= 2) log.logGameStart("maze");
    if (depth >= 3) log.logGameAreaStart("cave");
    if (depth >= 4) log.logActivityStart("count", "easy", "1");
    if (depth >= 5) log.logCyoStart("paint", "2");
    ForgetWhatWasWritten();
  }
  void ForgetWhatWasWritten() {
    std::remove(solva::UsageLogPath().c_str());
    std::remove(solva::AppManagerLogPath().c_str());
    TakeConsole();
  }
  void ExpectNothingWritten() {
    EXPECT_EQ(Records{}, UsageLog());
    EXPECT_EQ(Records{}, AppManagerLog());
    EXPECT_EQ("", TakeConsole());
  }
};

// --- The cases called out on their own ---

TEST_F(NestingTest, GameExitWithAnOpenActivityAndCyoWritesCyoExitThenActivityExitThenGameExit) {
  // An activity and a Cyo open in a game without an area: the operations alone
  // never leave this state, but the rule does not depend on the area.
  log.SetLevels(true, true, false, true, true);
  log.logGameExit();
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameExit()"}), UsageLog());
  EXPECT_EQ(
      "\t\t\t\tCyoExit id: Unknown sublevel: Unknown\n"
      "\t\t\tActivityExit score: 0 reason: 5\n"
      "\tGameExit\n",
      TakeConsole());
  EXPECT_EQ("T----", log.Levels());
}

TEST_F(NestingTest, GameExitWithAnOpenAreaWritesTheAreaExitBetweenTheActivityExitAndTheGameExit) {
  OpenDownTo(5);
  log.logGameExit();
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()", "CGameExit()"}), UsageLog());
  EXPECT_EQ(
      "\t\t\t\tCyoExit id: Unknown sublevel: Unknown\n"
      "\t\t\tActivityExit score: 0 reason: 5\n"
      "\t\tGameAreaExit\n"
      "\tGameExit\n",
      TakeConsole());
  EXPECT_EQ("T----", log.Levels());
}

TEST_F(NestingTest, TitleStartTwiceWritesATitleExitWithReason3BetweenTheTwoStarts) {
  log.logTitleStart();
  log.logTitleStart();
  const std::string start =
      "CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)";
  EXPECT_EQ((Records{start, "CTitleExit(reason=3)", start}), UsageLog());
  EXPECT_EQ("TitleStart\nTitleExit reason: 3\nTitleStart\n", TakeConsole());
  EXPECT_EQ("T----", log.Levels());
}

TEST_F(NestingTest, ActivityStartWithNoOpenAreaDoesNothing) {
  OpenDownTo(2);
  log.logActivityStart("count", "easy", "1");
  ExpectNothingWritten();
  EXPECT_EQ("TG---", log.Levels());
}

// --- Title ---

TEST_F(NestingTest, TitleStartOpensTheTitleOnly) {
  log.logTitleStart();
  EXPECT_EQ(1u, UsageLog().size());
  EXPECT_EQ("T----", log.Levels());
}

TEST_F(NestingTest, TitleStartWhileEverythingIsOpenClosesEveryLevelBeforeStartingAgain) {
  OpenDownTo(5);
  log.logTitleStart();
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()", "CGameExit()", "CTitleExit(reason=3)",
                     "CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)"}),
            UsageLog());
  EXPECT_EQ("T----", log.Levels());
}

TEST_F(NestingTest, TitleExitClosesCyoActivityAreaAndGameInThatOrderThenTheTitle) {
  OpenDownTo(5);
  log.logTitleExit(static_cast<TitleExitReason>(1));
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()", "CGameExit()", "CTitleExit(reason=1)"}),
            UsageLog());
  EXPECT_EQ(
      "\t\t\t\tCyoExit id: Unknown sublevel: Unknown\n"
      "\t\t\tActivityExit score: 0 reason: 5\n"
      "\t\tGameAreaExit\n"
      "\tGameExit\n"
      "TitleExit reason: 1\n",
      TakeConsole());
  EXPECT_EQ("-----", log.Levels());
}

TEST_F(NestingTest, TitleExitWithOnlyTheTitleOpenWritesOnlyItsOwnRecord) {
  OpenDownTo(1);
  log.logTitleExit(static_cast<TitleExitReason>(7));
  EXPECT_EQ((Records{"CTitleExit(reason=7)"}), UsageLog());
  EXPECT_EQ(Records{}, AppManagerLog());
  EXPECT_EQ("-----", log.Levels());
}

TEST_F(NestingTest, TitleExitWithoutAnOpenTitleDoesNothing) {
  log.logTitleExit(eTitleExit_Restarted);
  ExpectNothingWritten();
  // Inner levels open without a title are not closed either.
  log.SetLevels(false, true, true, true, true);
  log.logTitleExit(eTitleExit_Restarted);
  ExpectNothingWritten();
  EXPECT_EQ("-GAVC", log.Levels());
}

// --- Game ---

TEST_F(NestingTest, GameStartNeedsAnOpenTitle) {
  log.logGameStart("maze");
  ExpectNothingWritten();
  EXPECT_EQ("-----", log.Levels());
}

TEST_F(NestingTest, GameStartOpensTheGame) {
  OpenDownTo(1);
  log.logGameStart("maze");
  EXPECT_EQ((Records{"CGameStart(id=\"maze\")"}), UsageLog());
  EXPECT_EQ("TG---", log.Levels());
}

TEST_F(NestingTest, GameStartWhileAGameIsOpenClosesThatGameAndWhatIsInsideItFirst) {
  OpenDownTo(4);
  log.logGameStart("river");
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()", "CGameExit()", "CGameStart(id=\"river\")"}),
            UsageLog());
  EXPECT_EQ(Records{}, AppManagerLog());
  EXPECT_EQ("TG---", log.Levels());
}

TEST_F(NestingTest, GameExitWithoutAnOpenGameDoesNothing) {
  OpenDownTo(1);
  log.logGameExit();
  ExpectNothingWritten();
  EXPECT_EQ("T----", log.Levels());
}

// --- Area ---

TEST_F(NestingTest, GameAreaStartNeedsTitleAndGame) {
  OpenDownTo(1);
  log.logGameAreaStart("cave");
  ExpectNothingWritten();
  log.SetLevels(false, true, false, false, false);
  log.logGameAreaStart("cave");
  ExpectNothingWritten();
  EXPECT_EQ("-G---", log.Levels());
}

TEST_F(NestingTest, GameAreaStartOpensTheArea) {
  OpenDownTo(2);
  log.logGameAreaStart("cave");
  EXPECT_EQ((Records{"CGameAreaStart(id=\"cave\")"}), UsageLog());
  EXPECT_EQ("TGA--", log.Levels());
}

TEST_F(NestingTest, GameAreaStartWhileAnAreaIsOpenClosesItAndWhatIsInsideItFirst) {
  OpenDownTo(5);
  log.logGameAreaStart("beach");
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()", "CGameAreaStart(id=\"beach\")"}),
            UsageLog());
  EXPECT_EQ("TGA--", log.Levels());
}

TEST_F(NestingTest, GameAreaExitClosesCyoThenActivityThenWritesItsOwnRecord) {
  OpenDownTo(5);
  log.logGameAreaExit();
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=0, reason=5)", "CGameAreaExit()"}), UsageLog());
  EXPECT_EQ(
      "\t\t\t\tCyoExit id: Unknown sublevel: Unknown\n"
      "\t\t\tActivityExit score: 0 reason: 5\n"
      "\t\tGameAreaExit\n",
      TakeConsole());
  EXPECT_EQ("TG---", log.Levels());
}

TEST_F(NestingTest, GameAreaExitWithoutAnOpenAreaDoesNothing) {
  OpenDownTo(2);
  log.logGameAreaExit();
  ExpectNothingWritten();
  EXPECT_EQ("TG---", log.Levels());
}

// --- Activity ---

TEST_F(NestingTest, ActivityStartNeedsTitleGameAndArea) {
  for (int missing = 0; missing < 3; ++missing) {
    log.SetLevels(missing != 0, missing != 1, missing != 2, false, false);
    log.logActivityStart("count", "easy", "1");
    ExpectNothingWritten();
    EXPECT_FALSE(log.IsActivityOpen()) << "missing level " << missing;
  }
}

TEST_F(NestingTest, ActivityStartOpensTheActivity) {
  OpenDownTo(3);
  log.logActivityStart("count", "easy", "1");
  EXPECT_EQ((Records{"CActivityStart(activity=\"count\", mode=\"easy\", level=\"1\")"}), UsageLog());
  EXPECT_EQ("TGAV-", log.Levels());
}

TEST_F(NestingTest, ActivityStartWhileAnActivityIsOpenClosesItWithScore0AndReason5First) {
  OpenDownTo(5);
  log.logActivityStart("spell", "hard", "3");
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ(
      (Records{"CActivityExit(score=0, reason=5)", "CActivityStart(activity=\"spell\", mode=\"hard\", level=\"3\")"}),
      UsageLog());
  EXPECT_EQ("TGAV-", log.Levels());
}

TEST_F(NestingTest, ActivityExitClosesAnOpenCyoWithUnknownTextsFirst) {
  OpenDownTo(5);
  log.logActivityExit(42, static_cast<ActivityExitReason>(2));
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")"}), AppManagerLog());
  EXPECT_EQ((Records{"CActivityExit(score=42, reason=2)"}), UsageLog());
  EXPECT_EQ("\t\t\t\tCyoExit id: Unknown sublevel: Unknown\n\t\t\tActivityExit score: 42 reason: 2\n", TakeConsole());
  EXPECT_EQ("TGA--", log.Levels());
}

TEST_F(NestingTest, ActivityExitKeepsANegativeScore) {
  OpenDownTo(4);
  log.logActivityExit(-17, eActivityExit_Closed);
  EXPECT_EQ((Records{"CActivityExit(score=-17, reason=5)"}), UsageLog());
}

TEST_F(NestingTest, ActivityExitWithoutAnOpenActivityDoesNothing) {
  OpenDownTo(3);
  log.logActivityExit(1, static_cast<ActivityExitReason>(1));
  ExpectNothingWritten();
  EXPECT_EQ("TGA--", log.Levels());
}

// --- Cyo ---

TEST_F(NestingTest, CyoStartNeedsEveryOuterLevel) {
  for (int missing = 0; missing < 4; ++missing) {
    log.SetLevels(missing != 0, missing != 1, missing != 2, missing != 3, false);
    log.logCyoStart("paint", "2");
    ExpectNothingWritten();
    EXPECT_FALSE(log.IsCyoOpen()) << "missing level " << missing;
  }
}

TEST_F(NestingTest, CyoStartOpensTheCyo) {
  OpenDownTo(4);
  log.logCyoStart("paint", "2");
  EXPECT_EQ((Records{"CCyoStart(id=\"paint\", sublevel=\"2\")"}), AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_EQ("TGAVC", log.Levels());
}

TEST_F(NestingTest, CyoStartWhileACyoIsOpenClosesItWithUnknownTextsFirst) {
  OpenDownTo(5);
  log.logCyoStart("draw", "4");
  EXPECT_EQ((Records{"CCyoExit(id=\"Unknown\", sublevel=\"Unknown\")", "CCyoStart(id=\"draw\", sublevel=\"4\")"}),
            AppManagerLog());
  EXPECT_EQ("TGAVC", log.Levels());
}

TEST_F(NestingTest, CyoExitWritesTheGivenTextsAndClosesOnlyTheCyo) {
  OpenDownTo(5);
  log.logCyoExit("paint", "2");
  EXPECT_EQ((Records{"CCyoExit(id=\"paint\", sublevel=\"2\")"}), AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_EQ("TGAV-", log.Levels());
}

TEST_F(NestingTest, CyoExitWithoutAnOpenCyoDoesNothing) {
  OpenDownTo(4);
  log.logCyoExit("paint", "2");
  ExpectNothingWritten();
  EXPECT_EQ("TGAV-", log.Levels());
}

// --- Calls that need nothing open and change no level ---

TEST_F(NestingTest, LevelTutorialHintAndQuestionNeedNoOpenLevelAndChangeNone) {
  log.logLevelUp("3");
  log.logLevelDown("2");
  log.logTutorialStart("intro");
  log.logTutorialExit();
  log.logHintRequest(9, "p");
  log.logQuestion(eAnswer_Correct, 9, "p", "a", 0);
  EXPECT_EQ((Records{"CLevelUp(newLevel=\"3\")", "CLevelDown(newLevel=\"2\")", "CTutorialStart(id=\"intro\")",
                     "CTutorialExit()", "CHintRequest(questionId=9, params=\"p\")",
                     "CCorrectAnswer(questionId=9, params=\"p\", answer=\"a\")"}),
            AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_EQ("-----", log.Levels());
  OpenDownTo(5);
  log.logLevelUp("4");
  log.logTutorialExit();
  EXPECT_EQ("TGAVC", log.Levels());
}

// --- Every call against every combination of open levels ---

struct Call {
  const char* name;
  unsigned needs;  // bits: 1 title, 2 game, 4 area, 8 activity, 16 Cyo
  std::function<void(Logging&)> run;
};

TEST_F(NestingTest, EveryCallWritesExactlyWhenAllTheLevelsItNeedsAreOpen) {
  const std::vector<Call> calls = {
      {"logTitleStart", 0, [](Logging& l) { l.logTitleStart(); }},
      {"logTitleExit", 1, [](Logging& l) { l.logTitleExit(static_cast<TitleExitReason>(1)); }},
      {"logGameStart", 1, [](Logging& l) { l.logGameStart("g"); }},
      {"logGameExit", 2, [](Logging& l) { l.logGameExit(); }},
      {"logGameAreaStart", 1 | 2, [](Logging& l) { l.logGameAreaStart("a"); }},
      {"logGameAreaExit", 4, [](Logging& l) { l.logGameAreaExit(); }},
      {"logActivityStart", 1 | 2 | 4, [](Logging& l) { l.logActivityStart("v", "m", "l"); }},
      {"logActivityExit", 8, [](Logging& l) { l.logActivityExit(3, static_cast<ActivityExitReason>(1)); }},
      {"logCyoStart", 1 | 2 | 4 | 8, [](Logging& l) { l.logCyoStart("c", "s"); }},
      {"logCyoExit", 16, [](Logging& l) { l.logCyoExit("c", "s"); }},
      {"logLevelUp", 0, [](Logging& l) { l.logLevelUp("2"); }},
      {"logLevelDown", 0, [](Logging& l) { l.logLevelDown("1"); }},
      {"logTutorialStart", 0, [](Logging& l) { l.logTutorialStart("t"); }},
      {"logTutorialExit", 0, [](Logging& l) { l.logTutorialExit(); }},
      {"logHintRequest", 0, [](Logging& l) { l.logHintRequest(1, "p"); }},
      {"logQuestion", 0, [](Logging& l) { l.logQuestion(eAnswer_Wrong, 1, "p", "a", 0); }},
  };
  for (const Call& call : calls) {
    for (unsigned open = 0; open < 32; ++open) {
      log.SetLevels(open & 1, open & 2, open & 4, open & 8, open & 16);
      const std::string before = log.Levels();
      call.run(log);
      const bool expected = (open & call.needs) == call.needs;
      const size_t records = UsageLog().size() + AppManagerLog().size();
      const std::string console = TakeConsole();
      if (expected) {
        EXPECT_GE(records, 1u) << call.name << " with levels " << before;
        EXPECT_NE("", console) << call.name << " with levels " << before;
      } else {
        EXPECT_EQ(0u, records) << call.name << " with levels " << before;
        EXPECT_EQ("", console) << call.name << " with levels " << before;
        EXPECT_EQ(before, log.Levels()) << call.name << " with levels " << before;
      }
      ForgetWhatWasWritten();
    }
  }
}

}  // namespace
