#include "Simulator.h"

#include <sys/stat.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>

#include "BaseUtils.h"
#include "Monkey.h"
#include "SessionCheck.h"
#include "Window.h"

#include "solva/AppManager.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Downloads.h"
#include "solva/Events.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZV_SANITIZED 1
#endif
#endif
#ifdef ZV_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

volatile std::sig_atomic_t gStopRequested = 0;
void RequestStop(int) { gStopRequested = 1; }

// Written to standard error when the process dies of a fault.
char gCrashNote[8192];
size_t gCrashNoteLength = 0;
const int kFatalSignals[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};
struct sigaction gFormerActions[sizeof kFatalSignals / sizeof kFatalSignals[0]];

void WriteCrashNote() {
  if (write(STDERR_FILENO, gCrashNote, gCrashNoteLength) < 0) return;
}

void OnFatalSignal(int signal, siginfo_t* info, void*) {
  WriteCrashNote();
  // Whoever handled the signal before (the sanitizers, or the default death)
  // takes it: a fault comes again on return, a signal sent (abort, kill) is sent again.
  for (size_t i = 0; i < sizeof kFatalSignals / sizeof kFatalSignals[0]; ++i) {
    if (kFatalSignals[i] == signal) sigaction(signal, &gFormerActions[i], nullptr);
  }
  if (info == nullptr || info->si_code <= 0) raise(signal);
}

void SetCrashNote(const std::string& note) {
  gCrashNoteLength = std::min(note.size(), sizeof gCrashNote);
  memcpy(gCrashNote, note.data(), gCrashNoteLength);
  struct sigaction action;
  memset(&action, 0, sizeof action);
  action.sa_sigaction = OnFatalSignal;
  action.sa_flags = SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  for (size_t i = 0; i < sizeof kFatalSignals / sizeof kFatalSignals[0]; ++i) {
    sigaction(kFatalSignals[i], &action, &gFormerActions[i]);
  }
#ifdef ZV_SANITIZED
  // A sanitizer's report ends the process without a signal.
  __sanitizer_set_death_callback(WriteCrashNote);
#endif
}

std::string BaseName(const std::string& path) {
  const size_t slash = path.find_last_of('/', path.size() > 1 ? path.size() - 2 : 0);
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string AbsolutePath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char here[4096] = {0};
  return std::string(getcwd(here, sizeof here) ? here : ".") + "/" + path;
}

// "PLAYER:DIR" of --mod: a player number, a colon, a folder.
bool ParseModOption(const std::string& option, int* player, std::string* folder) {
  const size_t colon = option.find(':');
  if (colon == std::string::npos || colon == 0 || colon + 1 == option.size()) return false;
  char* end = nullptr;
  const long number = strtol(option.c_str(), &end, 10);
  if (end != option.c_str() + colon || number < 0 || number > 0x7FFFFFFF) return false;
  *player = int(number);
  *folder = option.substr(colon + 1);
  return true;
}

}  // namespace

bool Simulator::SetUpDevice(std::string* error) {
  char here[4096] = {0};
  mStartFolder = getcwd(here, sizeof here) ? here : ".";
  solva::ResetDevice();
  if (!mOptions.root.empty() && !solva::SetDeviceRoot(AbsolutePath(mOptions.root), error)) return false;
  solva::SetCurrentPlayer(mOptions.player);
  solva::DeviceRoot();  // the default root is made if none was given
  solva::SetTitlePath(AbsolutePath(mOptions.titleDir));
  solva::SetFreeBytes(mOptions.freeBytes);
  solva::SetAccelerometerPresent(!mOptions.noAccelerometer);
  if (mOptions.mic == "none") {
    solva::SetMicrophonePresent(false);
  } else if (mOptions.mic == "tone") {
    solva::SetMicSource(solva::MicSource::Tone);
  } else if (mOptions.mic != "default" && !solva::SetMicSource(solva::MicSource::File, mOptions.mic, error)) {
    return false;
  }
  // The screen: a window where there is a display and one was asked for.
  mWindow = false;
  if (!mOptions.headless) {
    solva::DisplayOptions display;
    display.windowTitle = "solva-sim: " + mLoader.PluginPath();
    display.panelWidth = DevicePanel::kWidth;
    std::string why;
    if (solva::SetDisplayBackend("sdl", display, &why)) {
      mWindow = true;
    } else {
      printf("solva-sim: no window (%s); running headless\n", why.c_str());
      mOptions.headless = true;
    }
  }
  if (!mWindow) solva::SetDisplayBackend("headless");
  printf("solva-sim: display backend %s\n", solva::DisplayBackendName().c_str());
  // The title works in its own folder: paths given on the command line are taken
  // from where the simulator was started.
  if (!mOptions.shotsDir.empty()) {
    mOptions.shotsDir = AbsolutePath(mOptions.shotsDir);
    mkdir(mOptions.shotsDir.c_str(), 0755);
  }
  if (!mOptions.answerFile.empty()) mOptions.answerFile = AbsolutePath(mOptions.answerFile);
  if (!mOptions.movie.empty()) mOptions.movie = AbsolutePath(mOptions.movie);
  if (!mOptions.recordScript.empty()) mOptions.recordScript = AbsolutePath(mOptions.recordScript);
  // A headless run's speaker is a file or nothing: there is no real time to play in.
  const std::string speaker = mOptions.headless && mOptions.speaker == "default" ? "none" : mOptions.speaker;
  if (!solva::SetSpeaker(speaker, error)) {
    if (speaker != "default") return false;
    // No sound card is no reason not to run: the title plays to nobody.
    printf("solva-sim: no speaker (%s); sound goes nowhere\n", error->c_str());
    solva::SetSpeaker("none");
  }
  // Headless, and in a window whose session is recorded, every frame is exactly
  // 1 / fps of device time: a movie's clock, and what a recorded script replays.
  mVirtualClock = mOptions.headless || !mOptions.movie.empty() || !mOptions.recordScript.empty();
  solva::SetClockMode(mVirtualClock ? solva::ClockMode::Virtual : solva::ClockMode::Real);
  if (mWindow && mVirtualClock && mOptions.mic == "default") {
    printf("solva-sim: a recorded session runs on the frame clock: the microphone hears silence "
           "(--mic tone or --mic FILE.wav give it something a replay hears too)\n");
  }
  printf("solva-sim: device root %s, player %d\n", solva::DeviceRoot().c_str(), mOptions.player);
  printf("solva-sim: microphone %s, speaker %s\n", mOptions.mic == "none" ? "absent" : mOptions.mic.c_str(),
         solva::SpeakerName().c_str());
  printf("solva-sim: %s at %d frames per second\n",
         !mVirtualClock ? "real time" : mWindow ? "in a window, on the frame clock" : "headless, on the virtual clock",
         mOptions.fps);
  // Last, when every path of the command line has been taken from where the
  // simulator was started: the title runs from its own folder, as on the device.
  return solva::EnterTitleFolder(error);
}

bool Simulator::LoadParams(std::string* error) {
  if (mOptions.params.empty()) return true;
  mParams.reset(new Catalog::CJSonFile());
  const bool loaded = mOptions.params[0] == '@' ? mParams->Load(mOptions.params.substr(1))
                                                : mParams->Parse(mOptions.params);
  if (!loaded) {
    *error = "bad launch parameters: " + mParams->GetError();
    return false;
  }
  return true;
}

bool Simulator::InstallMods(std::string* error) {
  for (const std::string& option : mOptions.mods) {
    ScriptCommand mod;
    mod.kind = ScriptCommand::Mod;
    int player = 0;
    ParseModOption(option, &player, &mod.text);  // checked in Run
    mod.number = player;
    if (!Apply(mod, error)) return false;
  }
  return true;
}

bool Simulator::StartRecording(std::string* error) {
  if (!mOptions.movie.empty()) {
    mMovie = Movie::Open(mOptions.movie, mOptions.fps, error);
    if (!mMovie) return false;
    printf("solva-sim: writing the session as the movie %s\n", mMovie->Path().c_str());
  }
  if (!mOptions.recordScript.empty()) {
    mRecorder.reset(new ScriptWriter(mOptions.fps));
    if (!mRecorder->Open(mOptions.recordScript, ReplayHeader(), error)) return false;
    printf("solva-sim: writing the session as the script %s\n", mOptions.recordScript.c_str());
  }
  return true;
}

std::string Simulator::ReplayCommand(const std::string& path) const {
  std::string replay = "solva-sim --script " + path + " --fps " + std::to_string(mOptions.fps) + " --title " +
                       AbsolutePath(mOptions.titleDir) + " --player " + std::to_string(mOptions.player) +
                       " --mic " + mOptions.mic;
  if (!mOptions.params.empty()) replay += " --params '" + mOptions.params + "'";
  if (mOptions.freeBytes >= 0) replay += " --free-bytes " + std::to_string(mOptions.freeBytes);
  if (mOptions.noAccelerometer) replay += " --no-accelerometer";
  for (const std::string& mod : mOptions.mods) replay += " --mod " + mod;
  return replay;
}

std::string Simulator::ReplayHeader() const {
  const std::string monkey = mOptions.monkey ? "# The monkey's session of seed " + std::to_string(mOptions.monkeySeed) +
                                                   " (solva-sim --monkey " +
                                                   Monkey::Argument(mOptions.monkeySeed, mOptions.monkeySeconds) + ").\n"
                                             : "";
  return "# A session recorded by solva-sim " ZV_VERSION " at " + std::to_string(mOptions.fps) +
         " frames per second.\n" + monkey +
         "# Played back headless on a fresh device root, it gives the same screens and gallery:\n#   " +
         ReplayCommand("THIS_FILE") + "\n";
}

void Simulator::Frame() {
  solva::DeliverEvents();
  ++mFrameCount;
  if (mVirtualClock) {
    // Frame k starts at k / fps seconds, rounded up to the microsecond: no drift,
    // whatever the rate, and the mixer has made exactly its share of sound by then.
    const uint64_t fps = uint64_t(mOptions.fps);
    const uint64_t target = mClockStartMicros + (mFrameCount * 1000000u + fps - 1) / fps;
    solva::AdvanceClockMicros(target - solva::ClockMicros());
  }
  const auto begin = std::chrono::steady_clock::now();
  // The devices catch up with the clock before the title looks at them.
  solva::PumpCapture();
  solva::PumpAudio();
  mApp->Update();
  mFrameMicros = uint64_t(
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin).count());
  if (solva::PopAppRequested()) mTitleEnded = true;
  std::string error;
  if (mMovie && !mMovie->Frame(&error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    mMovie.reset();
  }
}

void Simulator::RunFrames(int64_t count) {
  for (int64_t i = 0; i < count && !mTitleEnded && !gStopRequested; ++i) Frame();
}

bool Simulator::Apply(const ScriptCommand& command, std::string* error) {
  if (mSuspended && command.kind != ScriptCommand::Resume && command.kind != ScriptCommand::Exit &&
      command.kind != ScriptCommand::Screenshot) {
    *error = "the title is suspended; 'resume S' first";
    return false;
  }
  if (command.kind == ScriptCommand::Resume && !mSuspended) {
    *error = "'resume' without 'suspend' before it";
    return false;
  }
  // Written down before it is carried out, so that a session that dies in the
  // middle of a command leaves a script that runs into the same death.
  if (mRecorder) mRecorder->Add(mFrameCount, command);
  switch (command.kind) {
    case ScriptCommand::Wait:
    case ScriptCommand::Frames:
      RunFrames(Script::FramesOf(command, mOptions.fps));
      break;
    case ScriptCommand::Down:
    case ScriptCommand::Move:
      solva::QueueTouch(true, command.x, command.y);
      break;
    case ScriptCommand::Up:
      solva::QueueTouch(false, command.x, command.y);
      break;
    case ScriptCommand::Tap:
      solva::QueueTouch(true, command.x, command.y);
      RunFrames(1);
      solva::QueueTouch(false, command.x, command.y);
      RunFrames(1);
      break;
    case ScriptCommand::Press:
      mButtons |= Script::ButtonMask(int(command.number));
      solva::QueueButtons(mButtons);
      break;
    case ScriptCommand::Release:
      mButtons &= ~Script::ButtonMask(int(command.number));
      solva::QueueButtons(mButtons);
      break;
    case ScriptCommand::Click:
      mButtons |= Script::ButtonMask(int(command.number));
      solva::QueueButtons(mButtons);
      RunFrames(1);
      mButtons &= ~Script::ButtonMask(int(command.number));
      solva::QueueButtons(mButtons);
      RunFrames(1);
      break;
    case ScriptCommand::Rotate:
      solva::QueueOrientation(int(command.number));
      break;
    case ScriptCommand::MicUnplug:
      solva::QueueMicrophonePlugged(false);
      break;
    case ScriptCommand::MicPlug:
      solva::QueueMicrophonePlugged(true);
      break;
    case ScriptCommand::PowerLow:
      solva::QueuePowerState(3);
      break;
    case ScriptCommand::PowerOk:
      solva::QueuePowerState(1);
      break;
    case ScriptCommand::Suspend:
      Suspend();
      break;
    case ScriptCommand::Resume: {
      // Time passes on the device while the title is away; no frame runs, and
      // what sounded meanwhile is not the movie's.
      solva::PumpCapture();
      const uint64_t away = uint64_t(command.seconds * 1e6 + 0.5);
      solva::AdvanceClockMicros(away);
      mClockStartMicros += away;
      if (mMovie) mMovie->SkipSound();
      Resume();
      break;
    }
    case ScriptCommand::FreeBytes:
      solva::SetFreeBytes(command.number);
      break;
    case ScriptCommand::Screenshot:
      if (!TakeScreenshot(ShotPath(command.text))) {
        *error = "no screenshot written";
        return false;
      }
      break;
    case ScriptCommand::Exit:
      solva::SetPendingExitCode(uint8_t(command.number));
      mTitleEnded = true;
      break;
    case ScriptCommand::Mod: {
      // The title works in its own folder: the mod's is taken from where the
      // simulator was started.
      const std::string folder = command.text[0] == '/' ? command.text : mStartFolder + "/" + command.text;
      std::string installed;
      if (!solva::InstallMicroMod(int32_t(command.number), folder, error, &installed)) return false;
      printf("solva-sim: player %d has the mod %s\n", int(command.number), installed.c_str());
      break;
    }
  }
  return true;
}

bool Simulator::RunScript(std::string* error) {
  for (const ScriptCommand& command : mScript.Commands()) {
    if (mTitleEnded || gStopRequested) break;
    if (!Apply(command, error)) {
      *error = mOptions.scriptPath + ":" + std::to_string(command.line) + ": " + *error;
      return false;
    }
  }
  return true;
}

std::string Simulator::ShotPath(const std::string& name) const {
  if (!name.empty() && name[0] == '/') return name;
  return (mOptions.shotsDir.empty() ? mStartFolder : mOptions.shotsDir) + "/" + name;
}

bool Simulator::TakeScreenshot(const std::string& path) {
  std::string error;
  if (!solva::WriteScreenshotPNG(path, &error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return false;
  }
  // The movie's frame that shows the same screen, for comparing the two.
  const std::string frame =
      mMovie && mMovie->Frames() > 0 ? " (movie frame " + std::to_string(mMovie->Frames() - 1) + ")" : "";
  printf("solva-sim: screenshot %s%s\n", path.c_str(), frame.c_str());
  mStatus = "wrote " + BaseName(path) + frame;
  return true;
}

bool Simulator::MonkeySetUp(std::string* error) {
  mOptions.headless = true;
  // The disk's real room would make a session depend on the machine.
  if (mOptions.freeBytes < 0) mOptions.freeBytes = Monkey::kPlentyOfRoom;
  if (mOptions.recordScript.empty()) {
    // A failure must leave its replay: a scratch script, removed when all is well.
    const char* tmp = getenv("TMPDIR");
    std::string path = std::string(tmp && *tmp ? tmp : "/tmp") + "/solva-monkey-" +
                       std::to_string(mOptions.monkeySeed) + "-XXXXXX.script";
    const int fd = mkstemps(&path[0], 7);
    if (fd < 0) {
      *error = "cannot make a file for the monkey's script: " + std::string(strerror(errno));
      return false;
    }
    close(fd);
    mOptions.recordScript = path;
    mMonkeyScriptIsScratch = true;
  }
  const std::string seed = Monkey::Argument(mOptions.monkeySeed, mOptions.monkeySeconds);
  printf("solva-sim: monkey %s; its session is written to %s\n", seed.c_str(),
         AbsolutePath(mOptions.recordScript).c_str());
  // Should the title crash, the seed and the replay are the last words.
  SetCrashNote("\nsolva-sim: monkey " + seed + " CRASHED; replay it on a fresh --root: " +
               ReplayCommand(AbsolutePath(mOptions.recordScript)) + " --check\n");
  return true;
}

bool Simulator::RunMonkey(std::string* error) {
  Monkey monkey(mOptions.monkeySeed, int64_t(std::llround(mOptions.monkeySeconds * mOptions.fps)), mOptions.fps);
  const uint64_t shotEvery = 2 * uint64_t(mOptions.fps);
  uint64_t nextShot = 0;
  ScriptCommand command;
  while (!mTitleEnded && !gStopRequested && monkey.Next(&command)) {
    if (!Apply(command, error)) return false;
    if (!mOptions.shotsDir.empty() && mFrameCount >= nextShot && !mTitleEnded) {
      char name[64];
      snprintf(name, sizeof name, "monkey-%06llu.png", static_cast<unsigned long long>(mFrameCount));
      ScriptCommand shot;
      shot.kind = ScriptCommand::Screenshot;
      shot.text = name;
      if (!Apply(shot, error)) return false;
      nextShot = mFrameCount + shotEvery;
    }
  }
  printf("solva-sim: the monkey's session ran %.3f s of device time in %llu frames%s\n",
         double(mFrameCount) / mOptions.fps, static_cast<unsigned long long>(mFrameCount),
         mTitleEnded ? "; the title has ended" : "");
  return true;
}

int Simulator::Judge(const std::string& refused) {
  std::vector<std::string> problems = SessionCheck::Problems(mAnswer, solva::DeviceRoot(), mOptions.player);
  if (!refused.empty()) problems.insert(problems.begin(), refused);
  const std::string who =
      mOptions.monkey ? "monkey " + Monkey::Argument(mOptions.monkeySeed, mOptions.monkeySeconds) : "session";
  if (problems.empty()) {
    printf("solva-sim: %s passed: the title ended cleanly, its answer is JSON, solva-gallery check passes\n",
           who.c_str());
    if (mMonkeyScriptIsScratch) remove(mOptions.recordScript.c_str());
    return 0;
  }
  fflush(stdout);
  for (const std::string& problem : problems) fprintf(stderr, "solva-sim: %s: %s\n", who.c_str(), problem.c_str());
  if (!mOptions.recordScript.empty()) {
    fprintf(stderr, "solva-sim: %s FAILED; replay it on a fresh --root: %s --check\n", who.c_str(),
            ReplayCommand(mOptions.recordScript).c_str());
  } else {
    fprintf(stderr, "solva-sim: %s FAILED\n", who.c_str());
  }
  return 1;
}

void Simulator::RunUntilTheTitleEnds() {
  using Clock = std::chrono::steady_clock;
  const auto period = std::chrono::microseconds(1000000 / mOptions.fps);
  auto next = Clock::now();
  auto suspendedAt = Clock::now();
  WindowInput window;
  if (mWindow) {
    printf("solva-sim: %s\n", WindowInput::KeyHelp());
    std::string why;
    if (!window.OpenPanel(&why)) printf("solva-sim: no device panel (%s)\n", why.c_str());
  }

  while (!mTitleEnded && !gStopRequested) {
    if (mWindow) {
      WindowInput::World world;
      world.micPresent = solva::MicrophonePresent();
      world.orientation = solva::Orientation();
      world.powerLow = solva::PowerState() == 3;
      world.suspended = mSuspended;
      std::vector<ScriptCommand> commands;
      WindowInput::Actions actions;
      window.Poll(world, &commands, &actions);
      if (actions.quit) break;
      std::string error;
      for (const ScriptCommand& command : commands) {
        if (!Apply(command, &error)) fprintf(stderr, "solva-sim: %s\n", error.c_str());
      }
      if (actions.screenshot) {
        ScriptCommand shot;
        shot.kind = ScriptCommand::Screenshot;
        shot.text = "solva-" + std::to_string(++mShotCount) + ".png";
        Apply(shot, &error);
      }
      if (actions.toggleSuspend) {
        ScriptCommand change;
        change.kind = mSuspended ? ScriptCommand::Resume : ScriptCommand::Suspend;
        if (mSuspended) {
          // The time away, to the millisecond, as a script would give it.
          change.seconds = double(std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - suspendedAt)
                                      .count()) / 1000.0;
        }
        suspendedAt = Clock::now();
        Apply(change, &error);
        printf("solva-sim: %s\n", mSuspended ? "suspended (S resumes)" : "resumed");
      }
    }
    if (!mSuspended) Frame();
    if (mWindow) {
      DevicePanel::State panel;
      panel.micPresent = solva::MicrophonePresent();
      panel.orientation = solva::Orientation();
      panel.powerLow = solva::PowerState() == 3;
      panel.suspended = mSuspended;
      panel.freeBytes = BaseUtils::Instance()->GetBulkFreeBytes();
      panel.deviceMicros = solva::ClockMicros();
      panel.frameMicros = mFrameMicros;
      panel.frames = mFrameCount;
      panel.clock = mVirtualClock ? "frame clock" : "real time";
      panel.status = mStatus;
      if (mMovie) panel.recording = "writing movie " + BaseName(mMovie->Path());
      if (mRecorder) panel.recording += (mMovie ? ", script " : "writing script ") + BaseName(mOptions.recordScript);
      // The title's next swap shows the panel; while it is suspended there is none.
      if (window.ShowPanel(panel) && mSuspended) solva::PresentScreen();
      next += period;
      std::this_thread::sleep_until(next);
    }
  }
}

// The device pauses a suspended title's sound, and resumes it with the title.
void Simulator::Suspend() {
  mApp->Suspend();
  solva::SetTitleSuspended(true);
  mSuspended = true;
}

void Simulator::Resume() {
  solva::SetTitleSuspended(false);
  mSuspended = false;
  mApp->Resume();
}

void Simulator::End() {
  if (mSuspended) Resume();
  std::string error;
  if (mMovie) {
    const uint32_t frames = mMovie->Frames();
    if (mMovie->Close(&error)) {
      printf("solva-sim: movie %s: %u frames, %.3f s\n", mMovie->Path().c_str(), frames, double(frames) / mOptions.fps);
    } else {
      fprintf(stderr, "solva-sim: %s\n", error.c_str());
    }
    mMovie.reset();
  }
  if (mRecorder) {
    if (!mRecorder->Finish(mFrameCount, &error)) fprintf(stderr, "solva-sim: %s\n", error.c_str());
    mRecorder.reset();
  }
  mApp->Exit();
  solva::CloseSpeaker();
  mAnswer = mParams ? mParams->ToString() : "null";
  printf("answer: %s\n", mAnswer.c_str());
  fflush(stdout);
  if (!mOptions.answerFile.empty()) {
    std::ofstream out(mOptions.answerFile);
    out << mAnswer << "\n";
    if (!out) fprintf(stderr, "solva-sim: cannot write the answer to %s\n", mOptions.answerFile.c_str());
  }
  mApp.reset();
  // The manager's own folder again, now that no title runs.
  if (chdir(mStartFolder.c_str()) != 0) fprintf(stderr, "solva-sim: cannot return to %s\n", mStartFolder.c_str());
}

int Simulator::Run(const SimOptions& options) {
  mOptions = options;
  std::string error;
  if (mOptions.fps <= 0 || mOptions.fps > 1000) {
    fprintf(stderr, "solva-sim: --fps must be between 1 and 1000\n");
    return 2;
  }
  if (!mOptions.movie.empty() && !Movie::IsMoviePath(mOptions.movie)) {
    fprintf(stderr, "solva-sim: --movie takes FILE.avi or a folder DIR/, not %s\n", mOptions.movie.c_str());
    return 2;
  }
  for (const std::string& mod : mOptions.mods) {
    int player = 0;
    std::string folder;
    if (!ParseModOption(mod, &player, &folder)) {
      fprintf(stderr, "solva-sim: --mod takes PLAYER:DIR, e.g. --mod 1:mods/stickers, not %s\n", mod.c_str());
      return 2;
    }
  }
  if (mOptions.monkey && !MonkeySetUp(&error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 1;
  }
  if (!mOptions.scriptPath.empty() && !mScript.Load(mOptions.scriptPath, &error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 2;
  }
  if (!LoadParams(&error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 2;
  }
  if (!mLoader.Load(mOptions.titleDir, &error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 1;
  }
  if (!SetUpDevice(&error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 1;
  }
  if (!InstallMods(&error)) {
    fprintf(stderr, "solva-sim: --mod: %s\n", error.c_str());
    return 2;
  }
  if (!StartRecording(&error)) {
    fprintf(stderr, "solva-sim: %s\n", error.c_str());
    return 1;
  }
  printf("solva-sim: title %s\n", mLoader.PluginPath().c_str());
  fflush(stdout);

  std::signal(SIGINT, RequestStop);
  std::signal(SIGTERM, RequestStop);

  mApp = mLoader.CreateApp(mParams ? static_cast<void*>(&mParams) : nullptr);
  mClockStartMicros = solva::ClockMicros();
  mApp->Enter();

  int status = 0;
  std::string refused;
  if (mOptions.monkey) {
    // The monkey keeps to the rules of the language: a refusal is the simulator's fault.
    if (!RunMonkey(&error)) refused = "the simulator refused the monkey's command: " + error;
  } else if (!mOptions.scriptPath.empty()) {
    if (!RunScript(&error)) {
      fprintf(stderr, "solva-sim: %s\n", error.c_str());
      status = 2;
    }
  } else {
    RunUntilTheTitleEnds();
  }
  End();
  if (mOptions.check && status == 0) status = Judge(refused);
  return status;
}
