// Each usage log record: its name, and its arguments in constructor order with
// the types the constructor takes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogDataOrrin.h"

namespace {

using namespace LogData::Orrin;

// name(key:kind=value, ...), kinds u (unsigned), s (signed), t (text).
std::string Show(const CLogData& record) {
  std::string out = record.GetName() + "(";
  bool first = true;
  for (const CLogData::Field& field : record.GetFields()) {
    if (!first) out += ", ";
    first = false;
    out += field.key + ":";
    switch (field.kind) {
      case CLogData::kFieldUnsigned: out += "u=" + std::to_string(field.unsignedValue); break;
      case CLogData::kFieldSigned: out += "s=" + std::to_string(field.signedValue); break;
      case CLogData::kFieldText: out += field.isNull ? std::string("t=null") : "t='" + field.text + "'"; break;
    }
  }
  return out + ")";
}

char* T(const char* text) { return const_cast<char*>(text); }

TEST(LogRecords, LevelRecords) {
  EXPECT_EQ("CTitleStart(productId:u=4097, partNumber:t='152-1', packageVersion:t='1.0', kind:u=1)",
            Show(CTitleStart(4097, T("152-1"), T("1.0"), 1)));
  EXPECT_EQ("CTitleExit(reason:u=3)", Show(CTitleExit(3)));
  EXPECT_EQ("CGameStart(id:t='g')", Show(CGameStart(T("g"))));
  EXPECT_EQ("CGameExit()", Show(CGameExit()));
  EXPECT_EQ("CGameAreaStart(id:t='a')", Show(CGameAreaStart(T("a"))));
  EXPECT_EQ("CGameAreaExit()", Show(CGameAreaExit()));
  EXPECT_EQ("CActivityStart(activity:t='v', mode:t='m', level:t='l')", Show(CActivityStart(T("v"), T("m"), T("l"))));
  EXPECT_EQ("CActivityExit(score:s=-3, reason:u=5)", Show(CActivityExit(-3, 5)));
  EXPECT_EQ("CCyoStart(id:t='c', sublevel:t='s')", Show(CCyoStart(T("c"), T("s"))));
  EXPECT_EQ("CCyoExit(id:t='c', sublevel:t='s')", Show(CCyoExit(T("c"), T("s"))));
}

TEST(LogRecords, LevelChangeTutorialAndHintRecords) {
  EXPECT_EQ("CLevelUp(newLevel:t='2')", Show(CLevelUp(T("2"))));
  EXPECT_EQ("CLevelDown(newLevel:t='1')", Show(CLevelDown(T("1"))));
  EXPECT_EQ("CTutorialStart(id:t='t')", Show(CTutorialStart(T("t"))));
  EXPECT_EQ("CTutorialExit()", Show(CTutorialExit()));
  EXPECT_EQ("CHintRequest(questionId:u=9, params:t='p')", Show(CHintRequest(9, T("p"))));
}

TEST(LogRecords, AnswerRecords) {
  EXPECT_EQ("CCorrectAnswer(questionId:u=1, params:t='p', answer:t='a')", Show(CCorrectAnswer(1, T("p"), T("a"))));
  EXPECT_EQ("CWrongAnswer(questionId:u=1, params:t='p', answer:t='a')", Show(CWrongAnswer(1, T("p"), T("a"))));
  EXPECT_EQ("CSemiCorrectAnswer(questionId:u=1, params:t='p', answer:t='a')",
            Show(CSemiCorrectAnswer(1, T("p"), T("a"))));
  EXPECT_EQ("CCorrectAnswerTimed(questionId:u=1, params:t='p', answer:t='a', time:u=100000)",
            Show(CCorrectAnswerTimed(1, T("p"), T("a"), 100000)));
  EXPECT_EQ("CWrongAnswerTimed(questionId:u=1, params:t='p', answer:t='a', time:u=65535)",
            Show(CWrongAnswerTimed(1, T("p"), T("a"), 65535)));
  EXPECT_EQ("CSemiCorrectAnswerTimed(questionId:u=1, params:t='p', answer:t='a', time:u=2)",
            Show(CSemiCorrectAnswerTimed(1, T("p"), T("a"), 2)));
}

TEST(LogRecords, NullTextIsKeptApartFromAnEmptyOne) {
  EXPECT_EQ("CCyoStart(id:t=null, sublevel:t='')", Show(CCyoStart(nullptr, T(""))));
}

TEST(LogRecords, RecordsAreLogData) {
  CGameExit exit;
  CLogData& data = exit;
  EXPECT_EQ("CGameExit", data.GetName());
  EXPECT_TRUE(data.GetFields().empty());
}

}  // namespace
