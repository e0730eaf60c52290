#pragma once
// An AVI file of Motion-JPEG video and 16-bit mono PCM sound, interleaved frame
// by frame: each frame's picture chunk ("00dc") is followed by the sound that
// plays with it ("01wb"), and an index ("idx1") at the end lets players seek.
// The header's counts and sizes are written when the file is closed.
#include <cstdint>
#include <string>
#include <vector>

#include "RiffWriter.h"

class AviWriter {
 public:
  struct Format {
    int width = 0;
    int height = 0;
    int fps = 30;
    int sampleRate = 22050;
  };

  // A plain AVI file stays below 1 GiB so that every player reads it.
  static constexpr uint64_t kMaxFileBytes = uint64_t(1) << 30;

  explicit AviWriter(uint64_t maxFileBytes = kMaxFileBytes) : mMaxFileBytes(maxFileBytes) {}

  bool Open(const std::string& path, const Format& format, std::string* error);
  // One frame: a whole JPEG picture and the sound that plays with it. False when
  // the file would grow past its limit; the frame is not added then.
  bool AddFrame(const std::vector<uint8_t>& jpeg, const int16_t* samples, size_t count);
  // Writes the index and the header's counts. False, with a message, when the
  // file could not be written.
  bool Close(std::string* error);

  uint32_t Frames() const { return mFrames; }
  uint64_t Samples() const { return mSamples; }

 private:
  struct IndexEntry {
    char id[4];
    uint32_t offset;  // from the "movi" code
    uint32_t size;
  };

  void WriteHeaders();
  void AddChunk(const char* id, const void* data, size_t size);

  const uint64_t mMaxFileBytes;
  RiffWriter mRiff;
  Format mFormat;
  bool mOpen = false;
  uint32_t mFrames = 0;
  uint64_t mSamples = 0;
  uint32_t mLargestVideo = 0;
  uint32_t mLargestSound = 0;
  uint64_t mMoviAt = 0;  // offset of the "movi" code
  // Offsets of the header fields known only at the end.
  uint64_t mMaxBytesPerSecAt = 0;
  uint64_t mTotalFramesAt = 0;
  uint64_t mBufferSizeAt = 0;
  uint64_t mVideoLengthAt = 0;
  uint64_t mVideoBufferAt = 0;
  uint64_t mSoundLengthAt = 0;
  uint64_t mSoundBufferAt = 0;
  std::vector<IndexEntry> mIndex;
};
