#include "support/sound/SoundFiles.h"

#include <sndfile.h>

#include <cmath>
#include <stdexcept>
#include <string>

namespace zvtest {

void WriteSamples(const std::string& path, int rate, const std::vector<float>& samples, SoundFormat format) {
  SF_INFO info = {};
  info.samplerate = rate;
  info.channels = 1;
  info.format = format == SoundFormat::Ogg ? (SF_FORMAT_OGG | SF_FORMAT_VORBIS) : (SF_FORMAT_WAV | SF_FORMAT_PCM_16);
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error("cannot write " + path + ": " + sf_strerror(nullptr));
  if (format == SoundFormat::Ogg) {
    double quality = 0.9;
    sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
  }
  sf_writef_float(file, samples.data(), sf_count_t(samples.size()));
  sf_close(file);
}

void WriteTone(const std::string& path, int rate, double seconds, double hz, double amplitude, SoundFormat format,
               int channels) {
  const size_t frames = size_t(std::lround(seconds * rate));
  std::vector<float> data(frames * size_t(channels));
  for (size_t i = 0; i < frames; ++i) {
    const float v = float(amplitude * std::sin(2.0 * M_PI * hz * double(i) / rate));
    for (int c = 0; c < channels; ++c) data[i * size_t(channels) + size_t(c)] = v;
  }
  SF_INFO info = {};
  info.samplerate = rate;
  info.channels = channels;
  info.format = format == SoundFormat::Ogg ? (SF_FORMAT_OGG | SF_FORMAT_VORBIS) : (SF_FORMAT_WAV | SF_FORMAT_PCM_16);
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error("cannot write " + path + ": " + sf_strerror(nullptr));
  sf_writef_float(file, data.data(), sf_count_t(frames));
  sf_close(file);
}

void WriteRamp(const std::string& path, int rate, double seconds, double top) {
  const size_t frames = size_t(std::lround(seconds * rate));
  std::vector<float> data(frames);
  for (size_t i = 0; i < frames; ++i) data[i] = float(top * double(i) / double(frames));
  WriteSamples(path, rate, data);
}

Sound ReadSound(const std::string& path) {
  SF_INFO info = {};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) throw std::runtime_error("cannot read " + path + ": " + sf_strerror(nullptr));
  std::vector<float> all(size_t(info.frames) * size_t(info.channels));
  const sf_count_t got = sf_readf_float(file, all.data(), info.frames);
  sf_close(file);
  Sound sound;
  sound.rate = info.samplerate;
  sound.channels = info.channels;
  sound.samples.resize(size_t(got));
  for (size_t i = 0; i < size_t(got); ++i) sound.samples[i] = all[i * size_t(info.channels)];
  return sound;
}

double Rms(const std::vector<float>& samples, size_t first, size_t count) {
  // A window that runs past the sound measures what is not there: a test's mistake.
  if (count == 0 || first + count > samples.size()) {
    throw std::out_of_range("a level measured over " + std::to_string(count) + " samples from " +
                            std::to_string(first) + " of a sound of " + std::to_string(samples.size()));
  }
  double sum = 0;
  for (size_t i = first; i < first + count; ++i) sum += double(samples[i]) * samples[i];
  return std::sqrt(sum / double(count));
}

double RmsBetween(const Sound& sound, double fromMs, double toMs) {
  const size_t first = size_t(std::llround(fromMs * sound.rate / 1000.0));
  const size_t last = size_t(std::llround(toMs * sound.rate / 1000.0));
  return Rms(sound.samples, first, last - first);
}

double ResidualDb(const std::vector<float>& samples, size_t first, size_t count, int rate, double hz) {
  // Over whole periods sine, cosine and offset are orthogonal: each is a projection.
  double sine = 0, cosine = 0, offset = 0;
  const double step = 2.0 * M_PI * hz / rate;
  for (size_t i = 0; i < count; ++i) {
    const double v = samples.at(first + i);
    sine += v * std::sin(step * double(i));
    cosine += v * std::cos(step * double(i));
    offset += v;
  }
  sine *= 2.0 / double(count);
  cosine *= 2.0 / double(count);
  offset /= double(count);
  double tone = 0, rest = 0;
  for (size_t i = 0; i < count; ++i) {
    const double fitted = sine * std::sin(step * double(i)) + cosine * std::cos(step * double(i));
    const double left = samples[first + i] - fitted - offset;
    tone += fitted * fitted;
    rest += left * left;
  }
  return 10.0 * std::log10(rest / tone);
}

}  // namespace zvtest
