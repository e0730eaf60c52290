#ifndef SRC_BASEFRAMEWORK_ZVLOGGING_H
#define SRC_BASEFRAMEWORK_ZVLOGGING_H
// The device's usage log behind Logging: each event becomes a record in one of
// the device's logs and a line on standard output.
#include "BaseFramework/Logging.h"

class ZvLogging : public Logging {
 public:
  ZvLogging() {}
  virtual ~ZvLogging() {}

  virtual void logTitleStart();
  virtual void logTitleExit(TitleExitReason reason);
  virtual void logGameStart(const char* id);
  virtual void logGameExit();
  virtual void logGameAreaStart(const char* id);
  virtual void logGameAreaExit();
  virtual void logActivityStart(const char* activity, const char* mode, const char* level);
  virtual void logActivityExit(int score, ActivityExitReason reason);
  virtual void logCyoStart(const char* id, const char* sublevel);
  virtual void logCyoExit(const char* id, const char* sublevel);
  virtual void logLevelUp(const char* level);
  virtual void logLevelDown(const char* level);
  virtual void logTutorialStart(const char* id);
  virtual void logTutorialExit();
  virtual void logAchievementEarned(unsigned short id);
  virtual void logHintRequest(int id, const char* params);
  virtual void logQuestion(AnswerType type, int id, const char* params, const char* answer, int time);
};

#endif
