#include "SoundDecoder.h"

#include <sndfile.h>
#include <sys/stat.h>

#include <map>
#include <mutex>

#include "DeviceReset.h"
#include "Resample.h"

namespace solva {
namespace detail {
namespace {

struct CacheKey {
  std::string path;
  int64_t size;
  int64_t mtimeNanos;
  int rate;
  bool operator<(const CacheKey& other) const {
    if (path != other.path) return path < other.path;
    if (size != other.size) return size < other.size;
    if (mtimeNanos != other.mtimeNanos) return mtimeNanos < other.mtimeNanos;
    return rate < other.rate;
  }
};

const size_t kCacheEntries = 32;

std::mutex gCacheLock;
std::map<CacheKey, std::shared_ptr<const DecodedSound>>& Cache() {
  static std::map<CacheKey, std::shared_ptr<const DecodedSound>> cache;
  return cache;
}

void ResetCache() {
  std::lock_guard<std::mutex> lock(gCacheLock);
  Cache().clear();
}
ResetHook gCacheReset(&ResetCache);

std::shared_ptr<const DecodedSound> Decode(const std::string& path, int rate, std::string* error) {
  SF_INFO info = {};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) {
    if (error) *error = sf_strerror(nullptr);
    return nullptr;
  }
  if (info.channels <= 0 || info.samplerate <= 0) {
    sf_close(file);
    if (error) *error = "no sound in the file";
    return nullptr;
  }
  auto sound = std::make_shared<DecodedSound>();
  sound->rate = info.samplerate;
  if (info.frames > 0) sound->samples.reserve(size_t(info.frames));
  const int channels = info.channels;
  std::vector<float> block(size_t(4096) * size_t(channels));
  for (;;) {
    const sf_count_t got = sf_readf_float(file, block.data(), 4096);
    if (got <= 0) break;
    for (sf_count_t f = 0; f < got; ++f) {
      float sum = 0;
      for (int c = 0; c < channels; ++c) sum += block[size_t(f) * size_t(channels) + size_t(c)];
      sound->samples.push_back(sum / float(channels));
    }
  }
  sf_close(file);
  if (sound->rate != rate) {
    const uint64_t frames = sound->samples.size();
    const uint64_t converted = (frames * uint64_t(rate) + uint64_t(sound->rate) - 1) / uint64_t(sound->rate);
    sound->samples = Resample(sound->samples, sound->rate, rate, size_t(converted));
    sound->rate = rate;
  }
  return sound;
}

}  // namespace

std::shared_ptr<const DecodedSound> DecodeSoundFile(const std::string& path, int rate, std::string* error) {
  struct stat st;
  if (stat(path.c_str(), &st) != 0) {
    if (error) *error = "no such file";
    return nullptr;
  }
  const CacheKey key = {path, int64_t(st.st_size), int64_t(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec,
                        rate};
  {
    std::lock_guard<std::mutex> lock(gCacheLock);
    auto found = Cache().find(key);
    if (found != Cache().end()) return found->second;
  }
  std::shared_ptr<const DecodedSound> sound = Decode(path, rate, error);
  if (sound) {
    std::lock_guard<std::mutex> lock(gCacheLock);
    if (Cache().size() >= kCacheEntries) Cache().clear();
    Cache()[key] = sound;
  }
  return sound;
}

}  // namespace detail
}  // namespace solva
