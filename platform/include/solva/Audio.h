#pragma once
// Device-control API: the speaker and what was played on it. Only the host and
// tests use this header.
//
// The mixer works on demand: whenever the device is asked (any CAudioSvc call,
// PumpAudio, FlushSpeaker), it first mixes exactly the frames of device time
// that passed since it last did, so in virtual time the output is exact and the
// same on every run. The output is mono, 16-bit, at the mixing rate; files of
// other rates are converted by a band-limited resampler (libsoxr) and stereo
// files are mixed down to one channel. A sound that is stopped, paused or moved
// while it is heard fades out over 5 ms, and one that sounds again after a pause
// or a seek fades in over as long, so that the output never steps.
#include <cstdint>
#include <string>
#include <vector>

namespace solva {

// Frames per second of the mixed output unless SetMixRate says otherwise.
const int kDefaultMixRate = 22050;

// Accepts 8000 to 96000. Stops every sound and closes the speaker (back to
// "none"), so call it before SetSpeaker. False for a rate out of range.
bool SetMixRate(int framesPerSecond);
int MixRate();

// Chooses where the mixed output goes:
//   "none"        nothing is written (sounds still play and end on time);
//   "sdl"         the host's sound card through SDL2 audio, for real-time runs;
//   a path ending in ".wav": a 16-bit mono WAV file of the output from now on;
//   "default"     the first backend that opens of those not chosen only by
//                 name (that is "sdl").
// The speaker before is closed first (a WAV file is finished). On failure the
// speaker is "none" and `error` says why.
bool SetSpeaker(const std::string& choice, std::string* error = nullptr);
// "none", "sdl" or "file".
std::string SpeakerName();

// Mixes up to the current device time. The host calls it once a frame.
void PumpAudio();
// Mixes up to now and makes the WAV file complete on disk as far as it goes
// (it stays open). False, with `error`, when the file could not be written.
bool FlushSpeaker(std::string* error = nullptr);
// Mixes up to now, finishes and closes the speaker; it is "none" afterwards.
void CloseSpeaker();

// A movie's ear: while kept, every frame the mixer makes is also held, whatever
// the speaker, until taken. Turning it on or off drops what was held.
void KeepSpeakerOutput(bool keep);
// Mixes up to now and hands over the frames held since the last call.
std::vector<int16_t> TakeSpeakerOutput();

// What the programs on the device did with their sounds, in order.
enum class AudioEventKind {
  Start,        // a sound started
  StartFailed,  // StartAudio could not read the file; `error` says why
  Stop,         // StopAudio (`existed` tells whether the id named a sound)
  End,          // a sound reached its end by itself
  Pause,
  Resume,
  Volume,       // the volume of a sound changed
  Seek,
};

struct AudioEvent {
  AudioEventKind kind = AudioEventKind::Start;
  uint64_t timeMs = 0;  // device time of the event
  int32_t id = -1;
  std::string path;     // the resolved file of the sound
  int volume = 0;       // Start, Volume: the volume given (0 to 100 sounds)
  int priority = 0;     // Start
  int pan = 0;          // Start
  uint32_t payload = 0; // Start
  uint32_t flags = 0;   // Start
  uint32_t value = 0;   // Stop: the mode; Seek: the position asked for, in ms
  bool existed = true;  // Stop, Pause, Resume, Volume, Seek: the id named a sound
  std::string error;    // StartFailed
};

// The log since the device was reset or the log cleared (the newest 65,536).
std::vector<AudioEvent> AudioEvents();
void ClearAudioEvents();

// The sounds that exist now (playing or paused), in the order they started.
struct SoundState {
  int32_t id = -1;
  std::string path;
  int volume = 0;
  bool paused = false;
  uint32_t positionMs = 0;  // into the current pass
  uint32_t playsLeft = 0;   // passes still to come, this one included
};
std::vector<SoundState> Sounds();

}  // namespace solva
