#include "ScriptWriter.h"

bool ScriptWriter::Open(const std::string& path, const std::string& header, std::string* error) {
  mFile.open(path, std::ios::out | std::ios::trunc);
  if (!mFile) {
    *error = "cannot write the script " + path;
    return false;
  }
  mPath = path;
  mText.insert(0, header);
  mFile << mText;
  mFile.flush();
  return true;
}

void ScriptWriter::Line(const std::string& line) {
  mText += line + "\n";
  if (mFile.is_open()) {
    // Line by line, so that a session ended by force still leaves its script.
    mFile << line << "\n";
    mFile.flush();
  }
}

void ScriptWriter::WaitUntil(uint64_t frame) {
  if (frame <= mFrame) return;
  ScriptCommand wait;
  wait.kind = ScriptCommand::Wait;
  wait.seconds = double(frame - mFrame) / mFps;
  Line(Script::Format(wait));
  mFrame = frame;
}

void ScriptWriter::Add(uint64_t frame, const ScriptCommand& command) {
  WaitUntil(frame);
  Line(Script::Format(command));
  mFrame += uint64_t(Script::FramesOf(command, mFps));
}

bool ScriptWriter::Finish(uint64_t frame, std::string* error) {
  WaitUntil(frame);
  if (!mFile.is_open()) return true;
  mFile.close();
  if (mFile.fail()) {
    *error = "cannot write the script " + mPath;
    return false;
  }
  return true;
}
