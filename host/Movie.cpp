#include "Movie.h"

#include <sndfile.h>
#include <strings.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "AviWriter.h"
#include "JpegFrame.h"
#include "solva/Audio.h"
#include "solva/Display.h"

namespace {

// Below JPEG's visible error on the screen's flat colours and sharp text.
const int kJpegQuality = 92;

bool EndsWith(const std::string& text, const char* end) {
  const size_t n = strlen(end);
  return text.size() >= n && strcasecmp(text.c_str() + text.size() - n, end) == 0;
}

bool IsFolder(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

class AviMovie : public Movie {
 public:
  AviMovie(const std::string& path, int fps, int rate) : Movie(path, fps, rate) {}

  bool Start(std::string* error) {
    AviWriter::Format format;
    format.width = solva::kScreenWidth;
    format.height = solva::kScreenHeight;
    format.fps = mFps;
    format.sampleRate = mSampleRate;
    return mAvi.Open(mPath, format, error);
  }

 protected:
  bool AddFrame(const std::vector<int16_t>& sound, std::string* error) override {
    const std::vector<uint32_t> screen = solva::ReadScreen();
    const std::vector<uint8_t> jpeg = EncodeJpegFrame(screen.data(), solva::kScreenWidth, solva::kScreenHeight,
                                                      kJpegQuality);
    if (mAvi.AddFrame(jpeg, sound.data(), sound.size())) return true;
    *error = "the movie " + mPath + " reached the 1 GiB an AVI file may hold; the rest of the session is not in it";
    return false;
  }

  bool Finish(std::string* error) override { return mAvi.Close(error); }

 private:
  AviWriter mAvi;
};

class PngMovie : public Movie {
 public:
  PngMovie(const std::string& folder, int fps, int rate) : Movie(folder, fps, rate) {}
  ~PngMovie() override {
    if (mSound != nullptr) sf_close(mSound);
  }

  bool Start(std::string* error) {
    if (mkdir(mPath.c_str(), 0755) != 0 && errno != EEXIST) {
      *error = "cannot make the movie folder " + mPath + ": " + strerror(errno);
      return false;
    }
    SF_INFO info = {};
    info.samplerate = mSampleRate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const std::string soundPath = mPath + "sound.wav";
    mSound = sf_open(soundPath.c_str(), SFM_WRITE, &info);
    if (mSound == nullptr) {
      *error = "cannot write " + soundPath + ": " + sf_strerror(nullptr);
      return false;
    }
    return true;
  }

 protected:
  bool AddFrame(const std::vector<int16_t>& sound, std::string* error) override {
    char name[32];
    snprintf(name, sizeof name, "frame-%06u.png", Frames());
    if (!solva::WriteScreenshotPNG(mPath + name, error)) return false;
    if (sf_writef_short(mSound, sound.data(), sf_count_t(sound.size())) != sf_count_t(sound.size())) {
      *error = "cannot write " + mPath + "sound.wav: " + sf_strerror(mSound);
      return false;
    }
    return true;
  }

  bool Finish(std::string* error) override {
    const int status = sf_close(mSound);
    mSound = nullptr;
    if (status != 0) *error = "cannot finish " + mPath + "sound.wav: " + sf_error_number(status);
    return status == 0;
  }

 private:
  SNDFILE* mSound = nullptr;
};

}  // namespace

Movie::Movie(const std::string& path, int fps, int sampleRate) : mPath(path), mFps(fps), mSampleRate(sampleRate) {}

Movie::~Movie() {
  if (mOpen) solva::KeepSpeakerOutput(false);
}

bool Movie::IsMoviePath(const std::string& path) {
  return EndsWith(path, ".avi") || (!path.empty() && path.back() == '/') || IsFolder(path);
}

std::unique_ptr<Movie> Movie::Open(const std::string& path, int fps, std::string* error) {
  const int rate = solva::MixRate();
  if (EndsWith(path, ".avi")) {
    std::unique_ptr<AviMovie> movie(new AviMovie(path, fps, rate));
    if (!movie->Start(error)) return nullptr;
    solva::KeepSpeakerOutput(true);
    return movie;
  }
  if (!IsMoviePath(path)) {
    *error = "a movie is FILE.avi or a folder DIR/, not " + path;
    return nullptr;
  }
  std::unique_ptr<PngMovie> movie(new PngMovie(path.back() == '/' ? path : path + "/", fps, rate));
  if (!movie->Start(error)) return nullptr;
  solva::KeepSpeakerOutput(true);
  return movie;
}

bool Movie::Frame(std::string* error) {
  if (!mOpen) return false;
  const std::vector<int16_t> mixed = solva::TakeSpeakerOutput();
  mPending.insert(mPending.end(), mixed.begin(), mixed.end());
  // This frame's share of the sound, counted from the movie's start so that
  // rounding never adds up.
  const uint64_t n = mFrames;
  const size_t share = size_t((n + 1) * uint64_t(mSampleRate) / uint64_t(mFps) - n * uint64_t(mSampleRate) / uint64_t(mFps));
  std::vector<int16_t> sound(share, 0);
  const size_t have = std::min(share, mPending.size());
  std::copy(mPending.begin(), mPending.begin() + long(have), sound.begin());
  mPending.erase(mPending.begin(), mPending.begin() + long(have));
  if (!AddFrame(sound, error)) {
    std::string ignored;
    Close(&ignored);
    return false;
  }
  ++mFrames;
  return true;
}

void Movie::SkipSound() {
  solva::TakeSpeakerOutput();
  mPending.clear();
}

bool Movie::Close(std::string* error) {
  if (!mOpen) return true;
  mOpen = false;
  solva::KeepSpeakerOutput(false);
  return Finish(error);
}
