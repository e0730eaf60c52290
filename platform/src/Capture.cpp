// The capture service and the microphone it hears.
#include <sndfile.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdio>
#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

#include "CCameraSvc.h"
#include "DeviceReset.h"
#include "Resample.h"
#include "backends/MicBackend.h"
#include "solva/Capture.h"
#include "solva/Clock.h"

namespace solva {
namespace detail {
namespace {

const int kRate = 16000;
const double kToneHz = 440.0;
const double kToneLevel = 16384.0;  // half of full scale

const MicBackend* const kMicBackends[] = {&kSdlMicBackend};

struct Capture {
  std::string path;
  SNDFILE* file = nullptr;
  bool paused = false;
  uint64_t capturedMicros = 0;  // device time heard before the current stretch
  uint64_t stretchStart = 0;    // the clock when the current stretch began
  uint64_t samples = 0;
  uint64_t maxSamples = 0;  // 0: no limit
  uint64_t sourcePosition = 0;
  const MicBackend* backend = nullptr;
};

struct CaptureState {
  MicSource source = MicSource::Default;
  std::string sourceFile;
  std::vector<int16_t> fileSamples;  // the source file at 16 kHz mono
  bool present = true;
  std::string audioPath;
  std::map<tAudCapHndl, Capture> captures;
  tAudCapHndl nextHandle = 1;
};

std::recursive_mutex gLock;
CaptureState& State() {
  static CaptureState state;
  return state;
}

void CloseAll() {
  for (auto& entry : State().captures) {
    if (entry.second.file != nullptr) sf_close(entry.second.file);
    if (entry.second.backend != nullptr) entry.second.backend->close();
  }
}

void ResetCapture() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  CloseAll();
  State() = CaptureState();
}
ResetHook gCaptureReset(&ResetCapture);

// Reads a sound file whole and brings it to 16 kHz mono by averaging the channels
// and converting the rate.
bool LoadSourceFile(const std::string& path, std::vector<int16_t>* out, std::string* error) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) {
    if (error) *error = "cannot read the microphone's sound file " + path + ": " + sf_strerror(nullptr);
    return false;
  }
  std::vector<float> frames(size_t(info.frames) * size_t(info.channels));
  const sf_count_t got = sf_readf_float(file, frames.data(), info.frames);
  sf_close(file);
  if (got <= 0) {
    if (error) *error = "the microphone's sound file " + path + " holds no sound";
    return false;
  }
  std::vector<float> mono(static_cast<size_t>(got));
  for (sf_count_t i = 0; i < got; ++i) {
    float sum = 0;
    for (int c = 0; c < info.channels; ++c) sum += frames[size_t(i) * info.channels + c];
    mono[size_t(i)] = sum / float(info.channels);
  }
  const size_t count = size_t(uint64_t(got) * kRate / uint64_t(info.samplerate));
  const std::vector<float> converted = Resample(mono, info.samplerate, kRate, count);
  out->assign(count, 0);
  for (size_t i = 0; i < count; ++i) {
    const double value = double(converted[i]) * 32767.0;
    (*out)[i] = int16_t(std::lround(std::max(-32768.0, std::min(32767.0, value))));
  }
  return !out->empty();
}

// What the microphone hears for the next `count` samples of `capture`.
void Hear(Capture& capture, int16_t* samples, size_t count) {
  CaptureState& state = State();
  if (!state.present) {
    std::fill(samples, samples + count, 0);
    return;
  }
  switch (state.source) {
    case MicSource::Tone:
      for (size_t i = 0; i < count; ++i) {
        const double t = double(capture.sourcePosition + i) / kRate;
        samples[i] = int16_t(std::lround(kToneLevel * std::sin(2.0 * M_PI * kToneHz * t)));
      }
      break;
    case MicSource::File:
      for (size_t i = 0; i < count; ++i) {
        samples[i] = state.fileSamples[(capture.sourcePosition + i) % state.fileSamples.size()];
      }
      break;
    case MicSource::Default:
      if (capture.backend != nullptr) {
        // Sound not yet arrived from the host counts as silence, so that the
        // file keeps pace with the clock.
        const size_t got = capture.backend->read(samples, count);
        std::fill(samples + got, samples + count, 0);
        break;
      }
      std::fill(samples, samples + count, 0);
      break;
    case MicSource::Silence:
      std::fill(samples, samples + count, 0);
      break;
  }
  capture.sourcePosition += count;
}

// Writes the samples of the time heard so far.
void Pump(Capture& capture) {
  if (capture.paused || capture.file == nullptr) return;
  const uint64_t heard = capture.capturedMicros + (ClockMicros() - capture.stretchStart);
  uint64_t target = heard * kRate / 1000000u;
  if (capture.maxSamples != 0 && target > capture.maxSamples) target = capture.maxSamples;
  int16_t buffer[4096];
  while (capture.samples < target) {
    const size_t count = size_t(std::min<uint64_t>(target - capture.samples, 4096));
    Hear(capture, buffer, count);
    sf_write_short(capture.file, buffer, sf_count_t(count));
    capture.samples += count;
  }
}

std::string FullPath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  std::string folder = State().audioPath;
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder + path;
}

Capture* Find(tAudCapHndl handle) {
  auto found = State().captures.find(handle);
  return found == State().captures.end() ? nullptr : &found->second;
}

}  // namespace
}  // namespace detail

using detail::gLock;
using detail::State;

bool SetMicSource(MicSource source, const std::string& file, std::string* error) {
  std::vector<int16_t> samples;
  if (source == MicSource::File && !detail::LoadSourceFile(file, &samples, error)) return false;
  std::lock_guard<std::recursive_mutex> lock(gLock);
  State().source = source;
  State().sourceFile = file;
  State().fileSamples.swap(samples);
  return true;
}

MicSource GetMicSource() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  return State().source;
}

void SetMicrophonePresent(bool present) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  // What was heard up to now was heard with the microphone as it was.
  for (auto& entry : State().captures) detail::Pump(entry.second);
  State().present = present;
}

bool MicrophonePresent() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  return State().present;
}

void PumpCapture() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  for (auto& entry : State().captures) detail::Pump(entry.second);
}

CaptureInfo GetCaptureInfo() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  CaptureInfo info;
  if (State().captures.empty()) return info;
  detail::Capture& capture = State().captures.begin()->second;
  detail::Pump(capture);
  info.active = true;
  info.paused = capture.paused;
  info.path = capture.path;
  info.samples = capture.samples;
  return info;
}

}  // namespace solva

namespace Vantrel {
namespace Solva {

using solva::detail::Capture;
using solva::detail::gLock;
using solva::detail::State;

CCameraSvc::CCameraSvc() = default;
CCameraSvc::~CCameraSvc() = default;

bool CCameraSvc::IsCameraPresent() const { return solva::MicrophonePresent(); }

tErrType CCameraSvc::SetCameraAudioPath(const Glib::ustring& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return kNotFoundErr;
  std::lock_guard<std::recursive_mutex> lock(gLock);
  State().audioPath = path.raw();
  return kNoErr;
}

Glib::ustring CCameraSvc::GetCameraAudioPath() const {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  return State().audioPath;
}

tAudCapHndl CCameraSvc::StartAudioCapture(const Glib::ustring& path, const IEventListener* /*listener*/,
                                          U32 maxLength, bool /*flag*/) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  if (!State().present) return kInvalidAudCapHndl;
  Capture capture;
  capture.path = solva::detail::FullPath(path.raw());
  SF_INFO info{};
  info.samplerate = solva::detail::kRate;
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  capture.file = sf_open(capture.path.c_str(), SFM_WRITE, &info);
  if (capture.file == nullptr) {
    fprintf(stderr, "solva: cannot capture into %s: %s\n", capture.path.c_str(), sf_strerror(nullptr));
    return kInvalidAudCapHndl;
  }
  // The header's sizes follow the data as it is written, so a reader sees a
  // valid file at any moment.
  sf_command(capture.file, SFC_SET_UPDATE_HEADER_AUTO, nullptr, SF_TRUE);
  capture.stretchStart = solva::ClockMicros();
  capture.maxSamples = uint64_t(maxLength) * solva::detail::kRate;
  if (State().source == solva::MicSource::Default && solva::GetClockMode() == solva::ClockMode::Real) {
    for (const solva::detail::MicBackend* backend : solva::detail::kMicBackends) {
      if (backend->open()) {
        capture.backend = backend;
        break;
      }
    }
  }
  const tAudCapHndl handle = State().nextHandle++;
  State().captures[handle] = capture;
  return handle;
}

bool CCameraSvc::PauseAudioCapture(tAudCapHndl handle) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  Capture* capture = solva::detail::Find(handle);
  if (capture == nullptr || capture->paused) return false;
  solva::detail::Pump(*capture);
  capture->capturedMicros += solva::ClockMicros() - capture->stretchStart;
  capture->paused = true;
  return true;
}

bool CCameraSvc::ResumeAudioCapture(tAudCapHndl handle) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  Capture* capture = solva::detail::Find(handle);
  if (capture == nullptr || !capture->paused) return false;
  capture->paused = false;
  capture->stretchStart = solva::ClockMicros();
  return true;
}

bool CCameraSvc::StopAudioCapture(tAudCapHndl handle) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  Capture* capture = solva::detail::Find(handle);
  if (capture == nullptr) return false;
  solva::detail::Pump(*capture);
  const bool closed = sf_close(capture->file) == 0;
  if (capture->backend != nullptr) capture->backend->close();
  State().captures.erase(handle);
  return closed;
}

}  // namespace Solva
}  // namespace Vantrel
