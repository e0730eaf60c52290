// The host's default microphone through SDL2's capture devices.
#include <SDL2/SDL.h>

#include <cstdio>
#include <deque>
#include <mutex>
#include <string>

#include "backends/MicBackend.h"
#include "backends/sdl/QuietStderr.h"

namespace solva {
namespace detail {
namespace {

SDL_AudioDeviceID gDevice = 0;
std::mutex gLock;
std::deque<int16_t> gHeard;
// A few seconds at most wait to be written; older sound is dropped.
const size_t kMaxBuffered = 16000 * 4;

void Heard(void*, Uint8* stream, int length) {
  const int16_t* samples = reinterpret_cast<const int16_t*>(stream);
  std::lock_guard<std::mutex> lock(gLock);
  for (int i = 0; i < length / 2; ++i) gHeard.push_back(samples[i]);
  while (gHeard.size() > kMaxBuffered) gHeard.pop_front();
}

// Opens the host's default capture device; false, with SDL's reason, when none.
bool OpenDevice(std::string* why) {
  QuietStderr quiet;
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
    *why = std::string("no audio on this host: ") + SDL_GetError();
    return false;
  }
  SDL_AudioSpec want{}, have{};
  want.freq = 16000;
  want.format = AUDIO_S16SYS;
  want.channels = 1;
  want.samples = 512;
  want.callback = Heard;
  gDevice = SDL_OpenAudioDevice(nullptr, 1, &want, &have, 0);
  if (gDevice == 0) {
    *why = std::string("no microphone on this host: ") + SDL_GetError();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return false;
  }
  return true;
}

bool Open() {
  std::string why;
  if (!OpenDevice(&why)) {
    fprintf(stderr, "solva: %s\n", why.c_str());
    return false;
  }
  {
    std::lock_guard<std::mutex> lock(gLock);
    gHeard.clear();
  }
  SDL_PauseAudioDevice(gDevice, 0);
  return true;
}

size_t Read(int16_t* samples, size_t count) {
  std::lock_guard<std::mutex> lock(gLock);
  size_t given = 0;
  while (given < count && !gHeard.empty()) {
    samples[given++] = gHeard.front();
    gHeard.pop_front();
  }
  return given;
}

void Close() {
  if (gDevice != 0) SDL_CloseAudioDevice(gDevice);
  gDevice = 0;
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

}  // namespace

const MicBackend kSdlMicBackend = {"sdl", Open, Read, Close};

}  // namespace detail
}  // namespace solva
