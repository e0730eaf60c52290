// StringID pooling: looking up a text already in the pool, and adding new ones.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Base/StringID.h"

namespace {

void BM_AddStringExisting(benchmark::State& state) {
  StringID::AddString("CameraSettings.Preview.Brightness");
  const std::string text = "CameraSettings.Preview.Brightness";  // a different pointer
  for (auto _ : state) benchmark::DoNotOptimize(StringID::AddString(text.c_str()));
}
BENCHMARK(BM_AddStringExisting);

// A pool that already holds `range(0)` texts, as after loading configuration.
void BM_AddStringNew(benchmark::State& state) {
  const int pooled = int(state.range(0));
  for (int i = 0; i < pooled; ++i) StringID::AddString(("pooled text " + std::to_string(i)).c_str());
  std::vector<std::string> fresh;
  fresh.reserve(state.max_iterations);
  for (benchmark::IterationCount i = 0; i < state.max_iterations; ++i)
    fresh.push_back("new text " + std::to_string(pooled) + "/" + std::to_string(i));
  size_t next = 0;
  for (auto _ : state) benchmark::DoNotOptimize(StringID::AddString(fresh[next++].c_str()));
}
// Few iterations, so that the pool stays near its starting size while measured.
BENCHMARK(BM_AddStringNew)->Arg(100)->Arg(1000)->Arg(10000)->Iterations(2000);

}  // namespace
