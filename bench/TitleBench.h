#pragma once
// What the benchmarks of whole titles share: a fresh device on the virtual clock
// under a temporary root, with the title's folder, standard output silenced
// while the title's chatter would be measured with it, and the start-up run.
#include <benchmark/benchmark.h>
#include <stdio.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"

namespace titlebench {

struct Device {
  explicit Device(const std::string& titlePath) {
    char pattern[] = "/tmp/zvbench-XXXXXX";
    root = mkdtemp(pattern) ? pattern : "/tmp";
    char here[4096] = {0};
    start = getcwd(here, sizeof here) ? here : ".";
    solva::ResetDevice();
    solva::SetDeviceRoot(root);
    solva::SetTitlePath(titlePath);
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

// Start-up from Enter to the first drawn frame, each time on a fresh device: the
// title's `Device` and application `App`, run by `frames(app, count)`.
template <class TitleDevice, class App>
void StartUpToFirstDrawnFrame(benchmark::State& state, void (*frames)(App&, int)) {
  Quiet quiet;
  for (auto _ : state) {
    state.PauseTiming();
    {
      TitleDevice device;
      App app(nullptr);
      state.ResumeTiming();
      app.Enter();
      frames(app, 3);  // the third frame is the first that draws
      state.PauseTiming();
      app.Exit();
    }
    state.ResumeTiming();
  }
}

}  // namespace titlebench
