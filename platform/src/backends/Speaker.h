#pragma once
// The contract between the mixer and the speaker backends. Each backend lives in
// its own folder (sdl/, headless/) and publishes one SpeakerBackend; the mixer
// keeps the table of them, in the order "default" tries them.
#include <cstddef>
#include <cstdint>
#include <string>

namespace solva {
namespace detail {

class Speaker {
 public:
  virtual ~Speaker() {}
  // False when nothing is written, so the mixer need not compute samples.
  virtual bool Renders() const { return true; }
  // A real-time speaker plays what it gets at its own pace, so old output is
  // worth nothing: after a long gap the mixer sends it only the recent part.
  virtual bool RealTime() const { return false; }
  // `count` mono frames at the rate the speaker was opened with.
  virtual void Write(const int16_t* frames, size_t count) = 0;
  // Makes what was written so far complete at its destination.
  virtual bool Flush(std::string* error) {
    (void)error;
    return true;
  }
};

struct SpeakerBackend {
  const char* name;
  // Taken only when asked for by name or by argument, never by "default".
  bool demandOnly;
  // `arg` is the backend's argument (a file path for "file"). Null, with a
  // message in `error`, when the backend cannot open.
  Speaker* (*open)(const std::string& arg, int rate, std::string* error);
};

extern const SpeakerBackend kSdlSpeakerBackend;   // backends/sdl/
extern const SpeakerBackend kFileSpeakerBackend;  // backends/headless/
extern const SpeakerBackend kNullSpeakerBackend;  // backends/headless/

}  // namespace detail
}  // namespace solva
