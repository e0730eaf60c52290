// Questions by answer type, and hint requests: the record each one writes, its
// arguments, and the console line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "UsageLogSupport.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

class QuestionTest : public UsageLogTest {};

struct AnswerCase {
  int type;
  const char* record;
  const char* console;
};

TEST_F(QuestionTest, EachAnswerTypeWritesItsRecordAndLine) {
  const AnswerCase cases[] = {
      {0, "CCorrectAnswer(questionId=17, params=\"q=2+2\", answer=\"4\")",
       "\t\t\t\tCorrectAnswer questionID: 17 params: q=2+2 answer: 4\n"},
      {1, "CCorrectAnswerTimed(questionId=17, params=\"q=2+2\", answer=\"4\", time=1500)",
       "\t\t\t\tCorrectAnswerTimed questionID: 17 params: q=2+2 answer: 4 time: 1500\n"},
      {2, "CWrongAnswer(questionId=17, params=\"q=2+2\", answer=\"4\")",
       "\t\t\t\tWrongAnswer questionID: 17 params: q=2+2 answer: 4\n"},
      {3, "CWrongAnswerTimed(questionId=17, params=\"q=2+2\", answer=\"4\", time=1500)",
       "\t\t\t\tWrongAnswerTimed questionID: 17 params: q=2+2 answer: 4 time: 1500\n"},
      {4, "CSemiCorrectAnswer(questionId=17, params=\"q=2+2\", answer=\"4\")",
       "\t\t\t\tSemiCorrectAnswer questionID: 17 params: q=2+2 answer: 4\n"},
      {5, "CSemiCorrectAnswerTimed(questionId=17, params=\"q=2+2\", answer=\"4\", time=1500)",
       "\t\t\t\tSemiCorrectAnswerTimed questionID: 17 params: q=2+2 answer: 4 time: 1500\n"},
  };
  Records expected;
  for (const AnswerCase& c : cases) {
    log.logQuestion(static_cast<AnswerType>(c.type), 17, "q=2+2", "4", 1500);
    EXPECT_EQ(c.console, TakeConsole()) << "type " << c.type;
    expected.push_back(c.record);
  }
  EXPECT_EQ(expected, AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
}

TEST_F(QuestionTest, AnswerTypesCarryTheirNumbers) {
  EXPECT_EQ(0, eAnswer_Correct);
  EXPECT_EQ(1, eAnswer_CorrectTimed);
  EXPECT_EQ(2, eAnswer_Wrong);
  EXPECT_EQ(3, eAnswer_WrongTimed);
  EXPECT_EQ(4, eAnswer_SemiCorrect);
  EXPECT_EQ(5, eAnswer_SemiCorrectTimed);
}

TEST_F(QuestionTest, AnyOtherAnswerTypeDoesNothing) {
  for (int type : {6, 7, 100, -1}) {
    log.logQuestion(static_cast<AnswerType>(type), 1, "p", "a", 2);
  }
  EXPECT_EQ("", TakeConsole());
  EXPECT_EQ(Records{}, AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
}

TEST_F(QuestionTest, QuestionsNeedNoOpenLevel) {
  log.logQuestion(eAnswer_Wrong, 2, "p", "a", 0);
  EXPECT_EQ(1u, AppManagerLog().size());
  EXPECT_EQ("-----", log.Levels());
}

// The wrong and semi-correct timed records keep the time in 16 bits, the
// correct one in a long; the console line shows the time as given.
TEST_F(QuestionTest, TimedWrongAndSemiCorrectRecordsKeepTheTimeIn16BitsTheCorrectOneInFull) {
  log.logQuestion(eAnswer_CorrectTimed, 1, "p", "a", 70000);
  log.logQuestion(eAnswer_WrongTimed, 1, "p", "a", 70000);
  log.logQuestion(eAnswer_SemiCorrectTimed, 1, "p", "a", 70000);
  EXPECT_EQ((Records{"CCorrectAnswerTimed(questionId=1, params=\"p\", answer=\"a\", time=70000)",
                     "CWrongAnswerTimed(questionId=1, params=\"p\", answer=\"a\", time=4464)",
                     "CSemiCorrectAnswerTimed(questionId=1, params=\"p\", answer=\"a\", time=4464)"}),
            AppManagerLog());
  EXPECT_EQ(
      "\t\t\t\tCorrectAnswerTimed questionID: 1 params: p answer: a time: 70000\n"
      "\t\t\t\tWrongAnswerTimed questionID: 1 params: p answer: a time: 70000\n"
      "\t\t\t\tSemiCorrectAnswerTimed questionID: 1 params: p answer: a time: 70000\n",
      TakeConsole());
}

TEST_F(QuestionTest, UntimedFormsIgnoreTheTime) {
  log.logQuestion(eAnswer_Correct, 8, "p", "a", 999);
  EXPECT_EQ("\t\t\t\tCorrectAnswer questionID: 8 params: p answer: a\n", TakeConsole());
  EXPECT_EQ((Records{"CCorrectAnswer(questionId=8, params=\"p\", answer=\"a\")"}), AppManagerLog());
}

TEST_F(QuestionTest, QuestionIdIsTakenAsAnUnsignedLong) {
  log.logQuestion(eAnswer_Correct, -1, "p", "a", 0);
  log.logHintRequest(-1, "p");
  EXPECT_EQ((Records{"CCorrectAnswer(questionId=18446744073709551615, params=\"p\", answer=\"a\")",
                     "CHintRequest(questionId=18446744073709551615, params=\"p\")"}),
            AppManagerLog());
  EXPECT_EQ(
      "\t\t\t\tCorrectAnswer questionID: -1 params: p answer: a\n"
      "\t\t\t\tHintRequest questionID: -1 params: p\n",
      TakeConsole());
}

TEST_F(QuestionTest, HintRequestWritesItsRecordToTheAppManagerLog) {
  log.logHintRequest(77, "level=3");
  EXPECT_EQ((Records{"CHintRequest(questionId=77, params=\"level=3\")"}), AppManagerLog());
  EXPECT_EQ(Records{}, UsageLog());
  EXPECT_EQ("\t\t\t\tHintRequest questionID: 77 params: level=3\n", TakeConsole());
}

}  // namespace
