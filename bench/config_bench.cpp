// Loading the title's configuration tree in its two forms.
#include <benchmark/benchmark.h>

#include "ConfigSystem/ConfigFile.h"

namespace {

void LoadTree(benchmark::State& state, const char* path) {
  for (auto _ : state) {
    ConfigFile config;
    if (!config.load(path) || config.getRoot() == nullptr) {
      state.SkipWithError("the tree did not load");
      break;
    }
    benchmark::DoNotOptimize(config.getRoot());
  }
}

void BM_LoadCamCfgXml(benchmark::State& state) { LoadTree(state, ZV_SOURCE_DIR "/res/CamCfg.xml"); }
BENCHMARK(BM_LoadCamCfgXml);

void BM_LoadCamCfgPar(benchmark::State& state) { LoadTree(state, ZV_SOURCE_DIR "/res/CamCfg.par"); }
BENCHMARK(BM_LoadCamCfgPar);

}  // namespace
