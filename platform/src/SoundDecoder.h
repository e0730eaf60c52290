#pragma once
// Reading sound files (WAV, Ogg Vorbis and whatever else libsndfile reads) into
// one channel of float samples.
#include <memory>
#include <string>
#include <vector>

namespace solva {
namespace detail {

struct DecodedSound {
  std::vector<float> samples;  // mono, -1 to 1
  int rate = 0;                // frames per second of the file
};

// The sound of `path` at `rate` frames per second, or null with a message in
// `error`. A file of another rate is converted, to ceil(frames * rate / its rate)
// frames. Recently read files are kept, so a sound effect played again is not
// read again unless its file changed.
std::shared_ptr<const DecodedSound> DecodeSoundFile(const std::string& path, int rate, std::string* error);

}  // namespace detail
}  // namespace solva
