#pragma once
// Device-control API: the microphone and what it hears.
#include <cstdint>
#include <string>

namespace solva {

enum class MicSource {
  Default,  // the host's default microphone (SDL); silence on the virtual clock
  Tone,     // a steady 440 Hz sine at half of full scale
  Silence,
  File,     // a WAV file (any rate, any channels), played in a loop
};

// What the microphone hears from now on. A file that cannot be read gives false,
// with a message, and leaves the source as it was.
bool SetMicSource(MicSource source, const std::string& file = "", std::string* error = nullptr);
MicSource GetMicSource();

// Plugs or unplugs the microphone at once, without an event (a device that starts
// with it absent, or a test that wants no event).
void SetMicrophonePresent(bool present);
// The microphone comes or goes as an event: the presence changes, and the USB
// listeners are told, when queued events are delivered.
void QueueMicrophonePlugged(bool plugged);
bool MicrophonePresent();

// Writes what the running captures have heard up to the device's clock now. The
// host calls it once a frame; every capture call does it too.
void PumpCapture();

struct CaptureInfo {
  bool active = false;
  bool paused = false;
  std::string path;
  uint64_t samples = 0;  // written so far
};
CaptureInfo GetCaptureInfo();

// How many USB listeners are registered.
int RegisteredUsbListeners();

}  // namespace solva
