#include "Simulator.h"

#include <sys/stat.h>

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <thread>

#include "Window.h"

#include "solva/AppManager.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Events.h"

namespace {

volatile std::sig_atomic_t gStopRequested = 0;
void RequestStop(int) { gStopRequested = 1; }

std::string AbsolutePath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char here[4096] = {0};
  return std::string(getcwd(here, sizeof here) ? here : ".") + "/" + path;
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
  // A headless run's speaker is a file or nothing: there is no real time to play in.
  const std::string speaker = mOptions.headless && mOptions.speaker == "default" ? "none" : mOptions.speaker;
  if (!solva::SetSpeaker(speaker, error)) {
    if (speaker != "default") return false;
    // No sound card is no reason not to run: the title plays to nobody.
    printf("solva-sim: no speaker (%s); sound goes nowhere\n", error->c_str());
    solva::SetSpeaker("none");
  }
  mVirtualClock = mOptions.headless;
  solva::SetClockMode(mVirtualClock ? solva::ClockMode::Virtual : solva::ClockMode::Real);
  printf("solva-sim: device root %s, player %d\n", solva::DeviceRoot().c_str(), mOptions.player);
  printf("solva-sim: microphone %s, speaker %s\n", mOptions.mic == "none" ? "absent" : mOptions.mic.c_str(),
         solva::SpeakerName().c_str());
  printf("solva-sim: %s at %d frames per second\n",
         mVirtualClock ? "headless, on the virtual clock" : "real time", mOptions.fps);
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

void Simulator::Frame() {
  solva::DeliverEvents();
  ++mFrameCount;
  if (mVirtualClock) {
    // Frame k starts at exactly k / fps seconds: no drift, whatever the rate.
    const uint64_t target = mClockStartMicros + mFrameCount * 1000000u / uint64_t(mOptions.fps);
    solva::AdvanceClockMicros(target - solva::ClockMicros());
  }
  // The devices catch up with the clock before the title looks at them.
  solva::PumpCapture();
  solva::PumpAudio();
  mApp->Update();
  if (solva::PopAppRequested()) mTitleEnded = true;
}

void Simulator::RunFrames(int64_t count) {
  for (int64_t i = 0; i < count && !mTitleEnded && !gStopRequested; ++i) Frame();
}

bool Simulator::RunScript(std::string* error) {
  for (const ScriptCommand& command : mScript.Commands()) {
    if (mTitleEnded || gStopRequested) break;
    auto fail = [&](const std::string& what) {
      *error = mOptions.scriptPath + ":" + std::to_string(command.line) + ": " + what;
      return false;
    };
    if (mSuspended && command.kind != ScriptCommand::Resume && command.kind != ScriptCommand::Exit &&
        command.kind != ScriptCommand::Screenshot) {
      return fail("the title is suspended; 'resume S' first");
    }
    switch (command.kind) {
      case ScriptCommand::Wait:
        RunFrames(int64_t(command.seconds * mOptions.fps + 0.5));
        break;
      case ScriptCommand::Frames:
        RunFrames(command.number);
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
      case ScriptCommand::Resume:
        if (!mSuspended) return fail("'resume' without 'suspend' before it");
        // Time passes on the device while the title is away; no frame runs.
        solva::PumpCapture();
        solva::AdvanceClockMicros(uint64_t(command.seconds * 1e6 + 0.5));
        mClockStartMicros += uint64_t(command.seconds * 1e6 + 0.5);
        Resume();
        break;
      case ScriptCommand::FreeBytes:
        solva::SetFreeBytes(command.number);
        break;
      case ScriptCommand::Screenshot:
        if (!TakeScreenshot(ShotPath(command.text))) return fail("no screenshot written");
        break;
      case ScriptCommand::Exit:
        solva::SetPendingExitCode(uint8_t(command.number));
        mTitleEnded = true;
        break;
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
  printf("solva-sim: screenshot %s\n", path.c_str());
  return true;
}

void Simulator::RunUntilTheTitleEnds() {
  using Clock = std::chrono::steady_clock;
  const auto period = std::chrono::microseconds(1000000 / mOptions.fps);
  auto next = Clock::now();
  WindowInput window;
  if (mWindow) printf("solva-sim: %s\n", WindowInput::KeyHelp());
  while (!mTitleEnded && !gStopRequested) {
    if (mWindow) {
      WindowInput::Actions actions;
      window.Poll(&actions);
      if (actions.quit) break;
      if (actions.screenshot) TakeScreenshot(ShotPath("solva-" + std::to_string(++mShotCount) + ".png"));
      if (actions.toggleSuspend) {
        if (mSuspended) {
          Resume();
        } else {
          Suspend();
        }
        printf("solva-sim: %s\n", mSuspended ? "suspended (S resumes)" : "resumed");
      }
    }
    if (!mSuspended) Frame();
    if (!mVirtualClock) {
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
  mApp->Exit();
  solva::CloseSpeaker();
  const std::string answer = mParams ? mParams->ToString() : "null";
  printf("answer: %s\n", answer.c_str());
  fflush(stdout);
  if (!mOptions.answerFile.empty()) {
    std::ofstream out(mOptions.answerFile);
    out << answer << "\n";
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
  printf("solva-sim: title %s\n", mLoader.PluginPath().c_str());
  fflush(stdout);

  std::signal(SIGINT, RequestStop);
  std::signal(SIGTERM, RequestStop);

  mApp = mLoader.CreateApp(mParams ? static_cast<void*>(&mParams) : nullptr);
  mClockStartMicros = solva::ClockMicros();
  mApp->Enter();

  int status = 0;
  if (!mOptions.scriptPath.empty()) {
    if (!RunScript(&error)) {
      fprintf(stderr, "solva-sim: %s\n", error.c_str());
      status = 2;
    }
  } else {
    RunUntilTheTitleEnds();
  }
  End();
  return status;
}
