// The walker's costs, in process on the virtual clock with its staged resources:
// start-up from Enter to the first drawn frame (the 3D context, fonts, sprites,
// the archive's background, the sound project), and one frame (update, draw,
// swap with its read-back) with everything moving: the walker walking with its
// blend, trail and glowing edge on, the marker pulsing, footsteps playing.
// llvmpipe works in threads of its own: the runs report wall time and the CPU
// time of the whole process.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "FieldScene.h"
#include "PanelScene.h"
#include "WalkerInstance.h"
#include "WalkerManager.h"
#include "WalkerState.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Events.h"

namespace {

// A fresh device under a temporary root, the title's staged folder.
struct Device {
  Device() {
    char pattern[] = "/tmp/zvbench-XXXXXX";
    root = mkdtemp(pattern) ? pattern : "/tmp";
    char here[4096] = {0};
    start = getcwd(here, sizeof here) ? here : ".";
    solva::ResetDevice();
    solva::SetDeviceRoot(root);
    solva::SetTitlePath(ZV_WALKER_DIR);
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    solva::SetDisplayBackend("headless");
  }
  ~Device() {
    if (chdir(start.c_str()) != 0) abort();
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Real);
    const std::string remove = "rm -rf '" + root + "'";
    if (system(remove.c_str()) != 0) abort();
  }
  std::string root, start;
};

void Frame(walker::WalkerInstance& app) {
  solva::DeliverEvents();
  solva::AdvanceClockMicros(33333);
  solva::PumpAudio();
  app.Update();
}

void Frames(walker::WalkerInstance& app, int count) {
  for (int i = 0; i < count; ++i) Frame(app);
}

// The title's chatter would be measured with it; it goes to /dev/null here.
struct Quiet {
  Quiet() : saved(dup(1)) {
    fflush(stdout);
    if (freopen("/dev/null", "w", stdout) == nullptr) abort();
  }
  ~Quiet() {
    fflush(stdout);
    dup2(saved, 1);
    close(saved);
  }
  int saved;
};

void BM_StartUpToFirstDrawnFrame(benchmark::State& state) {
  Quiet quiet;
  for (auto _ : state) {
    state.PauseTiming();
    {
      Device device;
      walker::WalkerInstance app(nullptr);
      state.ResumeTiming();
      app.Enter();
      Frames(app, 3);  // the third frame is the first that draws
      state.PauseTiming();
      app.Exit();
    }
    state.ResumeTiming();
  }
}
BENCHMARK(BM_StartUpToFirstDrawnFrame)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_FrameEverythingMoving(benchmark::State& state) {
  Quiet quiet;
  Device device;
  walker::WalkerInstance app(nullptr);
  app.Enter();
  Frames(app, 3);
  walker::FieldScene& field = *walker::WalkerManager::sInstance().state()->field();
  for (int effect = 0; effect < walker::eEffect_Num; ++effect) field.SetEffect(walker::EEffect(effect), true);
  bool right = true;
  for (auto _ : state) {
    // Back and forth across the field, never standing.
    if (!field.walking()) {
      field.WalkTo(right ? 440.0f : 40.0f, 200.0f);
      right = !right;
    }
    Frame(app);
  }
  app.Exit();
}
BENCHMARK(BM_FrameEverythingMoving)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
