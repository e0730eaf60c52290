#pragma once
// The application manager of the simulated device: it sets the device up, loads a
// title, drives it from CreateApp to Exit frame by frame, and plays the outside
// world for it from a script or a window.
#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CAppInterface.h"
#include "CJSonFile.h"
#include "Movie.h"
#include "Script.h"
#include "ScriptWriter.h"
#include "TitleLoader.h"

struct SimOptions {
  std::string titleDir;
  std::string root;
  int player = 1;
  std::string params;  // JSON text, or @FILE
  std::string answerFile;
  bool headless = false;  // no window: the virtual clock
  std::string scriptPath;
  int fps = 30;
  std::string mic = "default";
  std::string speaker = "default";
  int64_t freeBytes = -1;
  bool noAccelerometer = false;
  std::string shotsDir;
  std::string movie;         // FILE.avi or DIR/: the session as a movie
  std::string recordScript;  // FILE: the session written down as a script
  std::vector<std::string> mods;  // PLAYER:DIR, downloaded folders given before the title starts
  // --monkey SEED[:SECONDS]: a child's session drawn from SEED (Monkey.h),
  // checked when it ends (SessionCheck.h).
  bool monkey = false;  // implies check
  bool check = false;   // --check: the checks after the session
  uint64_t monkeySeed = 0;
  double monkeySeconds = 60;
};

class Simulator {
 public:
  // Runs a whole session; the result is the process's exit status: 0 when the
  // title ran and ended, 1 when it could not be started, 2 for a mistake in the
  // options or the script.
  int Run(const SimOptions& options);

  // Carries out one command of the script language, whoever gives it (a script,
  // the window, a program driving the simulator); a recorded session writes it
  // down. False, with a message, when it cannot be carried out now.
  bool Apply(const ScriptCommand& command, std::string* error);

 private:
  bool SetUpDevice(std::string* error);
  bool LoadParams(std::string* error);
  // Gives each --mod folder to its player.
  bool InstallMods(std::string* error);
  // The movie and the script of the session, if asked for.
  bool StartRecording(std::string* error);
  // One frame: events queued so far are delivered, the clock moves one frame on
  // (virtual clock), the title updates, and a movie takes the frame.
  void Frame();
  void RunFrames(int64_t count);
  // Runs the script; false, with a message, on a command that cannot be carried out.
  bool RunScript(std::string* error);
  // Before the monkey's session: a known disk, a script to replay it, the note
  // a crash leaves.
  bool MonkeySetUp(std::string* error);
  // Runs the monkey's session, with a screenshot every two seconds under --shots.
  bool RunMonkey(std::string* error);
  // After the session (--check, and always after the monkey's): the checks of
  // SessionCheck.h, and a command the simulator `refused`, if any; on a failure,
  // what failed and how to replay it. The exit status: 0 when all is well, 1 when not.
  int Judge(const std::string& refused);
  void RunUntilTheTitleEnds();
  // Where a screenshot named `name` goes: under --shots when it is relative.
  std::string ShotPath(const std::string& name) const;
  bool TakeScreenshot(const std::string& path);
  // The command line that plays the script at `path` back.
  std::string ReplayCommand(const std::string& path) const;
  // The comment at the head of a recorded script: how to play it back.
  std::string ReplayHeader() const;
  void Suspend();
  void Resume();
  void End();

  SimOptions mOptions;
  Script mScript;
  TitleLoader mLoader;
  boost::shared_ptr<Catalog::CJSonFile> mParams;
  boost::shared_ptr<CAppInterface> mApp;
  std::unique_ptr<Movie> mMovie;
  std::unique_ptr<ScriptWriter> mRecorder;
  bool mVirtualClock = true;
  uint64_t mFrameCount = 0;
  uint64_t mClockStartMicros = 0;
  uint64_t mFrameMicros = 0;  // host time the last frame took
  bool mTitleEnded = false;
  bool mSuspended = false;
  uint32_t mButtons = 0;
  bool mWindow = false;
  std::string mStartFolder;  // where the simulator was started
  int mShotCount = 0;
  std::string mStatus;  // the last file written, for the window's panel
  std::string mAnswer;  // the launch parameters after Exit, as printed
  bool mMonkeyScriptIsScratch = false;  // made for the monkey; kept only when it fails
};
