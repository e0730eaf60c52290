// The capture service's cost: CPU time per second of captured tone, and the bytes
// of WAV it writes per second.
#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "CCameraSvc.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"

namespace {

void BM_CaptureOneSecondOfTone(benchmark::State& state) {
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Virtual);
  solva::SetMicSource(solva::MicSource::Tone);
  char folder[] = "/tmp/zvbench-XXXXXX";
  if (mkdtemp(folder) == nullptr) {
    state.SkipWithError("no temporary folder");
    return;
  }
  const std::string path = std::string(folder) + "/audio.tmp";
  Vantrel::Solva::CCameraSvc camera;
  const tAudCapHndl handle = camera.StartAudioCapture(path, nullptr, 0, false);
  for (auto _ : state) {
    // One second of device time, pumped frame by frame as the host does.
    for (int frame = 0; frame < 30; ++frame) {
      solva::AdvanceClockMicros(33334);
      solva::PumpCapture();
    }
  }
  camera.StopAudioCapture(handle);
  struct stat info;
  stat(path.c_str(), &info);
  state.counters["wav_bytes_per_s"] =
      benchmark::Counter(double(info.st_size - 44) / double(state.iterations()), benchmark::Counter::kDefaults);
  unlink(path.c_str());
  rmdir(folder);
  solva::SetClockMode(solva::ClockMode::Real);
}
BENCHMARK(BM_CaptureOneSecondOfTone)->Unit(benchmark::kMicrosecond);

}  // namespace
