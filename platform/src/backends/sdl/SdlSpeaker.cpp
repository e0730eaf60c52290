// "sdl": the host's sound card. The mixer runs on the device clock and pushes its
// frames into SDL's queue; SDL's own thread only drains that queue, so nothing
// of the device is touched from another thread.
#include <SDL.h>

#include <vector>

#include "backends/Speaker.h"
#include "backends/sdl/QuietStderr.h"

namespace solva {
namespace detail {
namespace {

class SdlSpeaker : public Speaker {
 public:
  SdlSpeaker(SDL_AudioDeviceID device, int rate) : mDevice(device), mRate(rate) {}
  ~SdlSpeaker() override {
    SDL_CloseAudioDevice(mDevice);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
  }

  bool RealTime() const override { return true; }

  void Write(const int16_t* frames, size_t count) override {
    const Uint32 queued = SDL_GetQueuedAudioSize(mDevice) / sizeof(int16_t);
    if (queued == 0) {
      // Ran dry (start, or a slow frame): a short cushion of silence keeps the
      // card from running dry again at the next frame.
      const std::vector<int16_t> cushion(size_t(mRate / 25), 0);
      SDL_QueueAudio(mDevice, cushion.data(), Uint32(cushion.size() * sizeof(int16_t)));
    } else if (queued > Uint32(mRate / 4)) {
      // The card lags the device clock by more than a quarter second: drop this
      // part rather than let the delay grow.
      return;
    }
    SDL_QueueAudio(mDevice, frames, Uint32(count * sizeof(int16_t)));
  }

 private:
  SDL_AudioDeviceID mDevice;
  int mRate;
};

Speaker* OpenSdlSpeaker(const std::string&, int rate, std::string* error) {
  QuietStderr quiet;
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
    if (error) *error = std::string("SDL audio: ") + SDL_GetError();
    return nullptr;
  }
  SDL_AudioSpec want;
  SDL_zero(want);
  want.freq = rate;
  want.format = AUDIO_S16SYS;
  want.channels = 1;
  want.samples = 512;
  want.callback = nullptr;  // queued, not pulled
  SDL_AudioSpec have;
  // No changes allowed: SDL converts to whatever the card wants.
  const SDL_AudioDeviceID device = SDL_OpenAudioDevice(nullptr, 0, &want, &have, 0);
  if (device == 0) {
    if (error) *error = std::string("SDL audio: ") + SDL_GetError();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return nullptr;
  }
  SDL_PauseAudioDevice(device, 0);
  return new SdlSpeaker(device, rate);
}

}  // namespace

const SpeakerBackend kSdlSpeakerBackend = {"sdl", false, &OpenSdlSpeaker};

}  // namespace detail
}  // namespace solva
