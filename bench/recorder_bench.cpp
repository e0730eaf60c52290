// The recorder's own costs, in process on the virtual clock with the title's real
// resources: start-up from Enter to the first drawn frame, and one frame (update
// and render) while recording and while playing.
#include <benchmark/benchmark.h>

#include <chrono>

#include "RenderSystem/XFontManager.h"
#include "TitleBench.h"
#include "VT/ZvMicrophoneWidgetInstance.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Events.h"

namespace {

// The recorder's device: its folder at the sources, room on the disk, a tone as
// the microphone.
struct Device : titlebench::Device {
  Device() : titlebench::Device(ZV_SOURCE_DIR) {
    solva::SetFreeBytes(1000000000);
    solva::SetMicSource(solva::MicSource::Tone);
  }
  ~Device() {
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
  }
};

// The title's own work in a measured frame, kept out of line so that `make profile`
// can count its instructions alone (callgrind's --toggle-collect).
__attribute__((noinline)) void CountedUpdate(ZvMicrophoneWidgetInstance& app) { app.Update(); }

// One frame as the host runs it: the device's part (events, clock, the simulated
// microphone and speaker), then the title's. A measured frame times the title's
// part alone, through CountedUpdate, and returns its seconds: on the device the
// microphone and speaker are hardware, not frame time.
double Frame(ZvMicrophoneWidgetInstance& app, bool measured = false) {
  solva::DeliverEvents();
  solva::AdvanceClockMicros(33333);
  solva::PumpCapture();
  solva::PumpAudio();
  if (!measured) {
    app.Update();
    return 0;
  }
  const auto start = std::chrono::steady_clock::now();
  CountedUpdate(app);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Frames(ZvMicrophoneWidgetInstance& app, int count) {
  for (int i = 0; i < count; ++i) Frame(app);
}

// A tap at a screen point: down for a frame, then up.
void Tap(ZvMicrophoneWidgetInstance& app, int x, int y) {
  solva::QueueTouch(true, x, y);
  Frame(app);
  solva::QueueTouch(false, x, y);
  Frame(app);
}

using titlebench::Quiet;

void BM_StartUpToFirstDrawnFrame(benchmark::State& state) {
  titlebench::StartUpToFirstDrawnFrame<Device, ZvMicrophoneWidgetInstance>(state, Frames);
}
BENCHMARK(BM_StartUpToFirstDrawnFrame)->Unit(benchmark::kMillisecond);

void BM_FrameWhileRecording(benchmark::State& state) {
  Quiet quiet;
  Device device;
  ZvMicrophoneWidgetInstance app(nullptr);
  app.Enter();
  Frames(app, 90);   // the panel is in
  Tap(app, 80, 30);  // record
  Frames(app, 30);   // the record cue ends; the capture runs
  for (auto _ : state) state.SetIterationTime(Frame(app, true));
  app.Exit();
}
// At most 95 seconds of recording: the scene stops by itself at 100.
BENCHMARK(BM_FrameWhileRecording)->Iterations(2800)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_FrameWhilePlaying(benchmark::State& state) {
  Quiet quiet;
  Device device;
  ZvMicrophoneWidgetInstance app(nullptr);
  app.Enter();
  Frames(app, 90);
  Tap(app, 80, 30);
  Frames(app, 30 + 30 * 90);  // 90 seconds of sound
  Tap(app, 80, 30);           // stop
  Frames(app, 200);           // the save hint has ended
  Tap(app, 346, 30);          // play
  for (auto _ : state) state.SetIterationTime(Frame(app, true));
  app.Exit();
}
BENCHMARK(BM_FrameWhilePlaying)->Iterations(2500)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
