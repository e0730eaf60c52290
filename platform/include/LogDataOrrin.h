#pragma once
// The usage log's records. Each class is only its constructor: it names the
// record and its arguments; CLogFile writes them. They share one header because
// each is a few lines and they are only ever used together.
#include "CLogData.h"

namespace LogData {
namespace Orrin {

class CTitleStart : public CLogData {
 public:
  CTitleStart(unsigned long productId, char* partNumber, char* packageVersion, unsigned char kind);
};

class CTitleExit : public CLogData {
 public:
  explicit CTitleExit(unsigned char reason);
};

class CGameStart : public CLogData {
 public:
  explicit CGameStart(char* id);
};

class CGameExit : public CLogData {
 public:
  CGameExit();
};

class CGameAreaStart : public CLogData {
 public:
  explicit CGameAreaStart(char* id);
};

class CGameAreaExit : public CLogData {
 public:
  CGameAreaExit();
};

class CActivityStart : public CLogData {
 public:
  CActivityStart(char* activity, char* mode, char* level);
};

class CActivityExit : public CLogData {
 public:
  CActivityExit(long score, unsigned char reason);
};

class CCyoStart : public CLogData {
 public:
  CCyoStart(char* id, char* sublevel);
};

class CCyoExit : public CLogData {
 public:
  CCyoExit(char* id, char* sublevel);
};

class CLevelUp : public CLogData {
 public:
  explicit CLevelUp(char* newLevel);
};

class CLevelDown : public CLogData {
 public:
  explicit CLevelDown(char* newLevel);
};

class CTutorialStart : public CLogData {
 public:
  explicit CTutorialStart(char* id);
};

class CTutorialExit : public CLogData {
 public:
  CTutorialExit();
};

class CHintRequest : public CLogData {
 public:
  CHintRequest(unsigned long questionId, char* params);
};

class CCorrectAnswer : public CLogData {
 public:
  CCorrectAnswer(unsigned long questionId, char* params, char* answer);
};

class CWrongAnswer : public CLogData {
 public:
  CWrongAnswer(unsigned long questionId, char* params, char* answer);
};

class CSemiCorrectAnswer : public CLogData {
 public:
  CSemiCorrectAnswer(unsigned long questionId, char* params, char* answer);
};

class CCorrectAnswerTimed : public CLogData {
 public:
  CCorrectAnswerTimed(unsigned long questionId, char* params, char* answer, unsigned long time);
};

class CWrongAnswerTimed : public CLogData {
 public:
  CWrongAnswerTimed(unsigned long questionId, char* params, char* answer, unsigned short time);
};

class CSemiCorrectAnswerTimed : public CLogData {
 public:
  CSemiCorrectAnswerTimed(unsigned long questionId, char* params, char* answer, unsigned short time);
};

}  // namespace Orrin
}  // namespace LogData
