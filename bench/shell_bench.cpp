// The shell's per-frame cost: one Update of a title whose scene does nothing, and
// the input manager's per-frame sampling.
#include <benchmark/benchmark.h>

#include "BaseFramework/InputManager.h"
#include "RenderSystem/XFontManager.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "support/ShellTitle.h"

namespace {

void BM_EmptyFrameThroughTheShell(benchmark::State& state) {
  solva::ResetDevice();
  solva::SetTitlePath(ZV_SOURCE_DIR);
  solva::SetClockMode(solva::ClockMode::Virtual);
  shelltitle::ShellTitleInstance app(nullptr);
  app.Enter();
  for (int i = 0; i < 3; ++i) {
    solva::AdvanceClock(33);
    app.Update();  // enter the state, its transition, the first scene
  }
  shelltitle::CallLog().reserve(1 << 20);
  for (auto _ : state) {
    solva::AdvanceClockMicros(33333);
    app.Update();
    // The test title logs its calls; keep the log from growing into the measure.
    if (shelltitle::CallLog().size() > (1 << 19)) {
      state.PauseTiming();
      shelltitle::CallLog().clear();
      state.ResumeTiming();
    }
  }
  app.Exit();
  delete XFontManager::instance_;
  XFontManager::instance_ = nullptr;
  solva::SetClockMode(solva::ClockMode::Real);
}
BENCHMARK(BM_EmptyFrameThroughTheShell);

void BM_InputManagerUpdate(benchmark::State& state) {
  solva::ResetDevice();
  InputManager::sCreate();
  InputManager& input = InputManager::sInstance();
  int frame = 0;
  for (auto _ : state) {
    // A button and the touch change now and then, as a child's would.
    input.mButtonRaw[frame & 15] = (frame >> 4) & 1;
    input.mTouchRaw.down = (frame >> 3) & 1;
    input.Update(0.033f);
    benchmark::DoNotOptimize(input.mButtonState);
    ++frame;
  }
  delete InputManager::instance_;
  InputManager::instance_ = nullptr;
}
BENCHMARK(BM_InputManagerUpdate);

}  // namespace
