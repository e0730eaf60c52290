// "file": the output as a 16-bit mono WAV file, frame for frame of device time.
#include <sndfile.h>

#include "backends/Speaker.h"

namespace solva {
namespace detail {
namespace {

class FileSpeaker : public Speaker {
 public:
  explicit FileSpeaker(SNDFILE* file) : mFile(file) {}
  ~FileSpeaker() override { sf_close(mFile); }

  void Write(const int16_t* frames, size_t count) override {
    const sf_count_t written = sf_writef_short(mFile, frames, sf_count_t(count));
    if (written != sf_count_t(count)) mFailed = true;
  }

  bool Flush(std::string* error) override {
    // Rewrites the header's sizes, so the file reads complete up to here.
    sf_write_sync(mFile);
    if (mFailed && error) *error = std::string("cannot write the speaker file: ") + sf_strerror(mFile);
    return !mFailed;
  }

 private:
  SNDFILE* mFile;
  bool mFailed = false;
};

Speaker* OpenFileSpeaker(const std::string& path, int rate, std::string* error) {
  SF_INFO info = {};
  info.samplerate = rate;
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  if (file == nullptr) {
    if (error) *error = "cannot write " + path + ": " + sf_strerror(nullptr);
    return nullptr;
  }
  return new FileSpeaker(file);
}

}  // namespace

const SpeakerBackend kFileSpeakerBackend = {"file", true, &OpenFileSpeaker};

}  // namespace detail
}  // namespace solva
