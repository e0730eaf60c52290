// The speaker's mixer, per second of output, and the audio device's frame
// update with a full playing list.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "CAudioSvc.h"
#include "Sound/TamarinAudioDevice.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Device.h"

namespace {

// A title folder with res/Sound/ in a fresh temporary place.
std::string MakeTitle() {
  char pattern[] = "/tmp/zvbench-sound-XXXXXX";
  const std::string title = mkdtemp(pattern);
  mkdir((title + "/res").c_str(), 0755);
  mkdir((title + "/res/Sound").c_str(), 0755);
  return title;
}

void Put(std::string& out, uint32_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out += char((v >> (8 * i)) & 0xFF);
}

// A 16-bit mono WAV of a 440 Hz sine at half scale.
void WriteTone(const std::string& path, int rate, double seconds) {
  const uint32_t frames = uint32_t(rate * seconds);
  std::string data;
  for (uint32_t i = 0; i < frames; ++i) Put(data, uint16_t(int16_t(16000 * std::sin(2 * M_PI * 440 * i / rate))), 2);
  std::string file = "RIFF";
  Put(file, 36 + uint32_t(data.size()), 4);
  file += "WAVEfmt ";
  Put(file, 16, 4);
  Put(file, 1, 2);
  Put(file, 1, 2);
  Put(file, uint32_t(rate), 4);
  Put(file, uint32_t(rate) * 2, 4);
  Put(file, 2, 2);
  Put(file, 16, 2);
  file += "data";
  Put(file, uint32_t(data.size()), 4);
  file += data;
  FILE* out = fopen(path.c_str(), "wb");
  fwrite(file.data(), 1, file.size(), out);
  fclose(out);
}

void RemoveTitle(const std::string& title) {
  const std::string command = "rm -rf '" + title + "'";
  if (system(command.c_str()) != 0) fprintf(stderr, "could not remove %s\n", title.c_str());
}

// range(0) sounds at once, from files at range(1) frames per second, mixed into
// a WAV file; one iteration is one second of output.
void BM_MixOneSecond(benchmark::State& state) {
  const int sounds = int(state.range(0));
  const int fileRate = int(state.range(1));
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Virtual, 0);
  const std::string title = MakeTitle();
  solva::SetTitlePath(title);
  WriteTone(title + "/res/Sound/tone.wav", fileRate, 2.0);
  solva::SetSpeaker(title + "/speaker.wav");
  Vantrel::Solva::CAudioSvc svc;
  for (int i = 0; i < sounds; ++i) svc.StartAudio("res/Sound/tone.wav", 50, 0, 0, nullptr, 0x40000000, kAudioRepeat);
  for (auto _ : state) {
    solva::AdvanceClock(1000);
    solva::PumpAudio();
  }
  state.counters["mix_rate"] = solva::MixRate();
  solva::CloseSpeaker();
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Real);
  RemoveTitle(title);
}
BENCHMARK(BM_MixOneSecond)
    ->ArgNames({"sounds", "file_rate"})
    ->Args({1, solva::kDefaultMixRate})
    ->Args({8, solva::kDefaultMixRate})
    ->Args({1, 44100})
    ->Args({8, 44100})
    ->Unit(benchmark::kMicrosecond);

// One frame (1/60 s) of TamarinAudioDevice::update with 16 looping cues, each
// frame asking the service about every sound and setting its volume. The
// speaker is range(0): 0 none, 1 a WAV file (the mixing of the frame included).
void BM_TamarinUpdate16Cues(benchmark::State& state) {
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Virtual, 0);
  const std::string title = MakeTitle();
  solva::SetTitlePath(title);
  WriteTone(title + "/res/Sound/tone.wav", solva::kDefaultMixRate, 1.0);
  std::string project = "<SoundProject><Group>";
  for (int i = 0; i < 16; ++i) {
    project += "<Cue Name='cue" + std::to_string(i) + "' Volume='50'><Node Name='Loop' LoopCount='-1' Children='1;'/>"
               "<Node Name='Wave' FileName='tone.wav'/></Cue>";
  }
  project += "</Group></SoundProject>";
  const std::string projectPath = title + "/res/Sound/Bench.soundproject";
  FILE* out = fopen(projectPath.c_str(), "wb");
  fwrite(project.data(), 1, project.size(), out);
  fclose(out);
  if (state.range(0) == 1) solva::SetSpeaker(title + "/speaker.wav");

  TamarinAudioDevice* device = TamarinAudioDevice::sCreate();
  device->Initialize(projectPath);
  for (int i = 0; i < 16; ++i) device->playSoundCue("cue" + std::to_string(i), 1.0f);
  for (auto _ : state) {
    solva::AdvanceClockMicros(16667);
    device->update(1.0f / 60.0f);
  }
  state.counters["playing"] = double(solva::Sounds().size());
  fflush(stdout);
  device->Destroy();
  AudioDevice::sDestroy();
  solva::CloseSpeaker();
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Real);
  RemoveTitle(title);
}
BENCHMARK(BM_TamarinUpdate16Cues)->ArgName("wav_speaker")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
