// The walker's costs, in process on the virtual clock with its staged resources:
// start-up from Enter to the first drawn frame (the 3D context, fonts, sprites,
// the archive's background, the sound project), and one frame (update, draw,
// swap with its read-back) with everything moving: the walker walking with its
// blend, trail and glowing edge on, the marker pulsing, footsteps playing.
// llvmpipe works in threads of its own: the runs report wall time and the CPU
// time of the whole process.
#include <benchmark/benchmark.h>

#include "FieldScene.h"
#include "PanelScene.h"
#include "TitleBench.h"
#include "WalkerInstance.h"
#include "WalkerManager.h"
#include "WalkerState.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Events.h"

namespace {

using titlebench::Quiet;

// A fresh device with the title's staged folder.
struct Device : titlebench::Device {
  Device() : titlebench::Device(ZV_WALKER_DIR) {}
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

void BM_StartUpToFirstDrawnFrame(benchmark::State& state) {
  titlebench::StartUpToFirstDrawnFrame<Device, walker::WalkerInstance>(state, Frames);
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
