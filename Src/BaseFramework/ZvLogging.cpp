#include "BaseFramework/ZvLogging.h"

#include <iostream>

#include "CAppManager.h"
#include "CLogFile.h"
#include "CMetaInfo.h"
#include "CPlayerProfile.h"
#include "CSystemData.h"
#include "LogDataOrrin.h"

using namespace LogData::Orrin;

namespace {

// What an inner level is closed with when an outer one closes it.
const char kUnknown[] = "Unknown";

// The records take the platform's non-const texts; they only read them.
char* Text(const char* text) { return const_cast<char*>(text); }

// Title, game, area and activity records go to the device's usage log; the
// rest to the application manager's.
void ToUsageLog(CLogData& record) { CLogFile::Instance()->Append(record); }
void ToAppManagerLog(CLogData& record) { CAppManager::Instance()->GetLogFile()->Append(record); }

}  // namespace

void ZvLogging::logTitleStart() {
  if (mTitleOpen) logTitleExit(eTitleExit_Restarted);
  Catalog::CMetaInfo meta(CSystemData::Instance()->GetCurrentTitlePath());
  if (!meta.IsValid()) return;
  const Glib::ustring partNumber = meta.GetPartNumber();
  const Glib::ustring version = meta.GetPackageVersion();
  CTitleStart record(meta.GetProductId(), Text(partNumber.c_str()), Text(version.c_str()), 1);
  ToUsageLog(record);
  std::cout << "TitleStart" << std::endl;
  mTitleOpen = 1;
}

void ZvLogging::logTitleExit(TitleExitReason reason) {
  if (!mTitleOpen) return;
  if (mCyoOpen) logCyoExit(kUnknown, kUnknown);
  if (mActivityOpen) logActivityExit(0, eActivityExit_Closed);
  if (mAreaOpen) logGameAreaExit();
  if (mGameOpen) logGameExit();
  CTitleExit record(static_cast<unsigned char>(reason));
  ToUsageLog(record);
  std::cout << "TitleExit reason: " << reason << std::endl;
  mTitleOpen = 0;
}

void ZvLogging::logGameStart(const char* id) {
  if (!mTitleOpen) return;
  if (mGameOpen) logGameExit();
  CGameStart record(Text(id));
  ToUsageLog(record);
  std::cout << "\tGameStart id: " << id << std::endl;
  mGameOpen = 1;
}

void ZvLogging::logGameExit() {
  if (!mGameOpen) return;
  if (mCyoOpen) logCyoExit(kUnknown, kUnknown);
  if (mActivityOpen) logActivityExit(0, eActivityExit_Closed);
  if (mAreaOpen) logGameAreaExit();
  CGameExit record;
  ToUsageLog(record);
  std::cout << "\tGameExit" << std::endl;
  mGameOpen = 0;
}

void ZvLogging::logGameAreaStart(const char* id) {
  if (!mTitleOpen || !mGameOpen) return;
  if (mAreaOpen) logGameAreaExit();
  CGameAreaStart record(Text(id));
  ToUsageLog(record);
  std::cout << "\t\tGameAreaStart id: " << id << std::endl;
  mAreaOpen = 1;
}

void ZvLogging::logGameAreaExit() {
  if (!mAreaOpen) return;
  if (mCyoOpen) logCyoExit(kUnknown, kUnknown);
  if (mActivityOpen) logActivityExit(0, eActivityExit_Closed);
  CGameAreaExit record;
  ToUsageLog(record);
  std::cout << "\t\tGameAreaExit" << std::endl;
  mAreaOpen = 0;
}

void ZvLogging::logActivityStart(const char* activity, const char* mode, const char* level) {
  if (!mTitleOpen || !mGameOpen || !mAreaOpen) return;
  if (mActivityOpen) logActivityExit(0, eActivityExit_Closed);
  CActivityStart record(Text(activity), Text(mode), Text(level));
  ToUsageLog(record);
  std::cout << "\t\t\tActivityStart activity: " << activity << " mode: " << mode << " level: " << level << std::endl;
  mActivityOpen = 1;
}

void ZvLogging::logActivityExit(int score, ActivityExitReason reason) {
  if (!mActivityOpen) return;
  if (mCyoOpen) logCyoExit(kUnknown, kUnknown);
  CActivityExit record(score, static_cast<unsigned char>(reason));
  ToUsageLog(record);
  std::cout << "\t\t\tActivityExit score: " << score << " reason: " << reason << std::endl;
  mActivityOpen = 0;
}

void ZvLogging::logCyoStart(const char* id, const char* sublevel) {
  if (!mTitleOpen || !mGameOpen || !mAreaOpen || !mActivityOpen) return;
  if (mCyoOpen) logCyoExit(kUnknown, kUnknown);
  CCyoStart record(Text(id), Text(sublevel));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tCyoStart id: " << id << " sublevel: " << sublevel << std::endl;
  mCyoOpen = 1;
}

void ZvLogging::logCyoExit(const char* id, const char* sublevel) {
  if (!mCyoOpen) return;
  CCyoExit record(Text(id), Text(sublevel));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tCyoExit id: " << id << " sublevel: " << sublevel << std::endl;
  mCyoOpen = 0;
}

void ZvLogging::logLevelUp(const char* level) {
  CLevelUp record(Text(level));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tLevelUp newLevel: " << level << std::endl;
}

void ZvLogging::logLevelDown(const char* level) {
  CLevelDown record(Text(level));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tLevelDown newLevel: " << level << std::endl;
}

void ZvLogging::logTutorialStart(const char* id) {
  CTutorialStart record(Text(id));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tTutorialStart id: " << id << std::endl;
}

void ZvLogging::logTutorialExit() {
  CTutorialExit record;
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tTutorialExit" << std::endl;
}

void ZvLogging::logAchievementEarned(unsigned short id) {
  if (!mTitleOpen) return;
  std::cout << "\tAchievementEarned id: " << id << std::endl;
  // Badges belong to the player, not to the log.
  Catalog::CPlayerProfile profile(CSystemData::Instance()->GetCurrentPlayerID());
  profile.AddBadge(id);
  profile.Save();
}

void ZvLogging::logHintRequest(int id, const char* params) {
  CHintRequest record(static_cast<unsigned long>(id), Text(params));
  ToAppManagerLog(record);
  std::cout << "\t\t\t\tHintRequest questionID: " << id << " params: " << params << std::endl;
}

void ZvLogging::logQuestion(AnswerType type, int id, const char* params, const char* answer, int time) {
  const unsigned long questionId = static_cast<unsigned long>(id);
  switch (type) {
    case eAnswer_Correct: {
      CCorrectAnswer record(questionId, Text(params), Text(answer));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tCorrectAnswer questionID: " << id << " params: " << params << " answer: " << answer
                << std::endl;
      break;
    }
    case eAnswer_CorrectTimed: {
      CCorrectAnswerTimed record(questionId, Text(params), Text(answer), static_cast<unsigned long>(time));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tCorrectAnswerTimed questionID: " << id << " params: " << params << " answer: " << answer
                << " time: " << time << std::endl;
      break;
    }
    case eAnswer_Wrong: {
      CWrongAnswer record(questionId, Text(params), Text(answer));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tWrongAnswer questionID: " << id << " params: " << params << " answer: " << answer
                << std::endl;
      break;
    }
    case eAnswer_WrongTimed: {
      CWrongAnswerTimed record(questionId, Text(params), Text(answer), static_cast<unsigned short>(time));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tWrongAnswerTimed questionID: " << id << " params: " << params << " answer: " << answer
                << " time: " << time << std::endl;
      break;
    }
    case eAnswer_SemiCorrect: {
      CSemiCorrectAnswer record(questionId, Text(params), Text(answer));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tSemiCorrectAnswer questionID: " << id << " params: " << params << " answer: " << answer
                << std::endl;
      break;
    }
    case eAnswer_SemiCorrectTimed: {
      CSemiCorrectAnswerTimed record(questionId, Text(params), Text(answer), static_cast<unsigned short>(time));
      ToAppManagerLog(record);
      std::cout << "\t\t\t\tSemiCorrectAnswerTimed questionID: " << id << " params: " << params << " answer: " << answer
                << " time: " << time << std::endl;
      break;
    }
    default: break;
  }
}
