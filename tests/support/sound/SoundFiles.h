#pragma once
// Sound files for the sound tests, written and read through libsndfile, which
// judges our WAV output from outside. Only test programs use this.
#include <string>
#include <vector>

namespace zvtest {

struct Sound {
  std::vector<float> samples;  // the first channel, -1 to 1
  int rate = 0;
  int channels = 0;
};

enum class SoundFormat { Wav16, Ogg };

// A sine of `hz` at `amplitude` (of full scale), `seconds` long.
void WriteTone(const std::string& path, int rate, double seconds, double hz, double amplitude,
               SoundFormat format = SoundFormat::Wav16, int channels = 1);
// A straight rise from 0 at the first frame to `top` after `seconds`: the value
// of a frame tells how far into the file it lies.
void WriteRamp(const std::string& path, int rate, double seconds, double top);
// Writes exactly these samples, mono.
void WriteSamples(const std::string& path, int rate, const std::vector<float>& samples,
                  SoundFormat format = SoundFormat::Wav16);

// Throws when the file cannot be read.
Sound ReadSound(const std::string& path);

// Root mean square of `count` samples from `first`; throws std::out_of_range
// when they are not all there (or none is asked for).
double Rms(const std::vector<float>& samples, size_t first, size_t count);
// The same over the window [fromMs, toMs) of a sound.
double RmsBetween(const Sound& sound, double fromMs, double toMs);
// How far below a tone of `hz` everything else in `count` samples from `first`
// lies, in dB (negative): the tone is fitted (sine, cosine and offset) and what
// is left is compared with it. `count` must hold whole periods of the tone.
double ResidualDb(const std::vector<float>& samples, size_t first, size_t count, int rate, double hz);

}  // namespace zvtest
