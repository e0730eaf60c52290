#pragma once
// A movie of a session: the device's screen after every frame and the speaker's
// sound, on the frame clock. Frame n carries the sound of device time n / fps to
// (n + 1) / fps: exactly rate / fps samples when the frame rate divides the
// mixing rate, and otherwise floor((n + 1) * rate / fps) - floor(n * rate / fps),
// so the sound never drifts from the pictures. Headless, a scripted session
// gives the same bytes on every run.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Movie {
 public:
  virtual ~Movie();

  // "FILE.avi": one AVI file, Motion-JPEG pictures and PCM sound. "DIR/" (or an
  // existing folder): each frame as DIR/frame-NNNNNN.png, from 000000, and the
  // sound as DIR/sound.wav. From now on the speaker's output is kept for the
  // movie. Null, with a message, when the movie cannot be written.
  static std::unique_ptr<Movie> Open(const std::string& path, int fps, std::string* error);
  // Whether `path` names a movie Open takes, for checking options early.
  static bool IsMoviePath(const std::string& path);

  // Adds the screen as it is now with the sound of this frame. False, with a
  // message, when the movie cannot take it; it is closed then.
  bool Frame(std::string* error);
  // The sound made while no frame ran (the title was suspended) is not the movie's.
  void SkipSound();
  // Finishes the movie and stops keeping the speaker's output.
  bool Close(std::string* error);

  // Frames added so far; the next one's index.
  uint32_t Frames() const { return mFrames; }
  const std::string& Path() const { return mPath; }

 protected:
  Movie(const std::string& path, int fps, int sampleRate);
  virtual bool AddFrame(const std::vector<int16_t>& sound, std::string* error) = 0;
  virtual bool Finish(std::string* error) = 0;

  const std::string mPath;
  const int mFps;
  const int mSampleRate;

 private:
  uint32_t mFrames = 0;
  bool mOpen = true;
  std::vector<int16_t> mPending;  // mixed but not yet in a frame
};
