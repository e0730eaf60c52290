#include "LogDataOrrin.h"

namespace LogData {
namespace Orrin {

CTitleStart::CTitleStart(unsigned long productId, char* partNumber, char* packageVersion, unsigned char kind)
    : CLogData("CTitleStart") {
  AddUnsigned("productId", productId);
  AddText("partNumber", partNumber);
  AddText("packageVersion", packageVersion);
  AddUnsigned("kind", kind);
}

CTitleExit::CTitleExit(unsigned char reason) : CLogData("CTitleExit") { AddUnsigned("reason", reason); }

CGameStart::CGameStart(char* id) : CLogData("CGameStart") { AddText("id", id); }

CGameExit::CGameExit() : CLogData("CGameExit") {}

CGameAreaStart::CGameAreaStart(char* id) : CLogData("CGameAreaStart") { AddText("id", id); }

CGameAreaExit::CGameAreaExit() : CLogData("CGameAreaExit") {}

CActivityStart::CActivityStart(char* activity, char* mode, char* level) : CLogData("CActivityStart") {
  AddText("activity", activity);
  AddText("mode", mode);
  AddText("level", level);
}

CActivityExit::CActivityExit(long score, unsigned char reason) : CLogData("CActivityExit") {
  AddSigned("score", score);
  AddUnsigned("reason", reason);
}

CCyoStart::CCyoStart(char* id, char* sublevel) : CLogData("CCyoStart") {
  AddText("id", id);
  AddText("sublevel", sublevel);
}

CCyoExit::CCyoExit(char* id, char* sublevel) : CLogData("CCyoExit") {
  AddText("id", id);
  AddText("sublevel", sublevel);
}

CLevelUp::CLevelUp(char* newLevel) : CLogData("CLevelUp") { AddText("newLevel", newLevel); }

CLevelDown::CLevelDown(char* newLevel) : CLogData("CLevelDown") { AddText("newLevel", newLevel); }

CTutorialStart::CTutorialStart(char* id) : CLogData("CTutorialStart") { AddText("id", id); }

CTutorialExit::CTutorialExit() : CLogData("CTutorialExit") {}

CHintRequest::CHintRequest(unsigned long questionId, char* params) : CLogData("CHintRequest") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
}

CCorrectAnswer::CCorrectAnswer(unsigned long questionId, char* params, char* answer) : CLogData("CCorrectAnswer") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
}

CWrongAnswer::CWrongAnswer(unsigned long questionId, char* params, char* answer) : CLogData("CWrongAnswer") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
}

CSemiCorrectAnswer::CSemiCorrectAnswer(unsigned long questionId, char* params, char* answer)
    : CLogData("CSemiCorrectAnswer") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
}

CCorrectAnswerTimed::CCorrectAnswerTimed(unsigned long questionId, char* params, char* answer, unsigned long time)
    : CLogData("CCorrectAnswerTimed") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
  AddUnsigned("time", time);
}

CWrongAnswerTimed::CWrongAnswerTimed(unsigned long questionId, char* params, char* answer, unsigned short time)
    : CLogData("CWrongAnswerTimed") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
  AddUnsigned("time", time);
}

CSemiCorrectAnswerTimed::CSemiCorrectAnswerTimed(unsigned long questionId, char* params, char* answer,
                                                 unsigned short time)
    : CLogData("CSemiCorrectAnswerTimed") {
  AddUnsigned("questionId", questionId);
  AddText("params", params);
  AddText("answer", answer);
  AddUnsigned("time", time);
}

}  // namespace Orrin
}  // namespace LogData
