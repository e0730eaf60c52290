#ifndef SRC_BASEFRAMEWORK_LOGGING_H
#define SRC_BASEFRAMEWORK_LOGGING_H
// The framework's interface to the device's usage log: what a child does in a
// title, as levels opened and closed in the order title, game, area, activity,
// Cyo, plus level changes, tutorials, hints, questions and achievements.
//
// The enumerations carry the numbers titles report; only the values the
// framework itself gives have names, and a title may pass any other number.

enum TitleExitReason : int {
  // The title was started again while it was still open.
  eTitleExit_Restarted = 3,
};

enum ActivityExitReason : int {
  // The activity was closed because a level around it closed.
  eActivityExit_Closed = 5,
};

enum AnswerType {
  eAnswer_Correct = 0,
  eAnswer_CorrectTimed = 1,
  eAnswer_Wrong = 2,
  eAnswer_WrongTimed = 3,
  eAnswer_SemiCorrect = 4,
  eAnswer_SemiCorrectTimed = 5,
};

class Logging {
 public:
  Logging() : mTitleOpen(0), mGameOpen(0), mAreaOpen(0), mActivityOpen(0), mCyoOpen(0) {}
  virtual ~Logging() {}

  virtual void logTitleStart() = 0;
  virtual void logTitleExit(TitleExitReason reason) = 0;
  virtual void logGameStart(const char* id) = 0;
  virtual void logGameExit() = 0;
  virtual void logGameAreaStart(const char* id) = 0;
  virtual void logGameAreaExit() = 0;
  virtual void logActivityStart(const char* activity, const char* mode, const char* level) = 0;
  virtual void logActivityExit(int score, ActivityExitReason reason) = 0;
  virtual void logCyoStart(const char* id, const char* sublevel) = 0;
  virtual void logCyoExit(const char* id, const char* sublevel) = 0;
  virtual void logLevelUp(const char* level) = 0;
  virtual void logLevelDown(const char* level) = 0;
  virtual void logTutorialStart(const char* id) = 0;
  virtual void logTutorialExit() = 0;
  virtual void logAchievementEarned(unsigned short id) = 0;
  virtual void logHintRequest(int id, const char* params) = 0;
  virtual void logQuestion(AnswerType type, int id, const char* params, const char* answer, int time) = 0;

  // Which levels are open now.
  bool IsTitleOpen() const { return mTitleOpen != 0; }
  bool IsGameOpen() const { return mGameOpen != 0; }
  bool IsAreaOpen() const { return mAreaOpen != 0; }
  bool IsActivityOpen() const { return mActivityOpen != 0; }
  bool IsCyoOpen() const { return mCyoOpen != 0; }

 protected:
  unsigned char mTitleOpen;
  unsigned char mGameOpen;
  unsigned char mAreaOpen;
  unsigned char mActivityOpen;
  unsigned char mCyoOpen;
};

#endif
