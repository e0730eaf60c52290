#include "AviWriter.h"

#include <algorithm>
#include <cstring>

namespace {

const uint32_t kHasIndex = 0x10;        // AVIF_HASINDEX
const uint32_t kIsInterleaved = 0x100;  // AVIF_ISINTERLEAVED
const uint32_t kKeyFrame = 0x10;        // AVIIF_KEYFRAME
const uint16_t kPcm = 1;                // WAVE_FORMAT_PCM
const uint32_t kBytesPerSample = 2;     // 16-bit mono

}  // namespace

bool AviWriter::Open(const std::string& path, const Format& format, std::string* error) {
  if (!mRiff.Open(path, error)) return false;
  mFormat = format;
  mOpen = true;
  mFrames = 0;
  mSamples = 0;
  mLargestVideo = 0;
  mLargestSound = 0;
  mIndex.clear();
  WriteHeaders();
  return true;
}

void AviWriter::WriteHeaders() {
  const uint32_t width = uint32_t(mFormat.width);
  const uint32_t height = uint32_t(mFormat.height);
  const uint32_t fps = uint32_t(mFormat.fps);
  const uint32_t rate = uint32_t(mFormat.sampleRate);

  mRiff.BeginList("RIFF", "AVI ");
  mRiff.BeginList("LIST", "hdrl");

  mRiff.BeginChunk("avih");
  mRiff.U32((1000000u + fps / 2) / fps);  // microseconds per frame
  mMaxBytesPerSecAt = mRiff.Tell();
  mRiff.U32(0);
  mRiff.U32(0);  // padding granularity
  mRiff.U32(kHasIndex | kIsInterleaved);
  mTotalFramesAt = mRiff.Tell();
  mRiff.U32(0);
  mRiff.U32(0);  // initial frames
  mRiff.U32(2);  // streams
  mBufferSizeAt = mRiff.Tell();
  mRiff.U32(0);
  mRiff.U32(width);
  mRiff.U32(height);
  for (int i = 0; i < 4; ++i) mRiff.U32(0);  // reserved
  mRiff.End();

  // The picture stream.
  mRiff.BeginList("LIST", "strl");
  mRiff.BeginChunk("strh");
  mRiff.FourCC("vids");
  mRiff.FourCC("MJPG");
  mRiff.U32(0);  // flags
  mRiff.U16(0);  // priority
  mRiff.U16(0);  // language
  mRiff.U32(0);  // initial frames
  mRiff.U32(1);  // scale: a frame is 1 / fps seconds
  mRiff.U32(fps);
  mRiff.U32(0);  // start
  mVideoLengthAt = mRiff.Tell();
  mRiff.U32(0);
  mVideoBufferAt = mRiff.Tell();
  mRiff.U32(0);
  mRiff.U32(0xFFFFFFFFu);  // quality: the default
  mRiff.U32(0);            // sample size: frames vary in size
  mRiff.U16(0);
  mRiff.U16(0);
  mRiff.U16(uint16_t(width));
  mRiff.U16(uint16_t(height));
  mRiff.End();
  mRiff.BeginChunk("strf");  // BITMAPINFOHEADER
  mRiff.U32(40);
  mRiff.U32(width);
  mRiff.U32(height);
  mRiff.U16(1);   // planes
  mRiff.U16(24);  // bits per pixel once decoded
  mRiff.FourCC("MJPG");
  mRiff.U32(width * height * 3);
  for (int i = 0; i < 4; ++i) mRiff.U32(0);  // resolution, colours used and important
  mRiff.End();
  mRiff.End();

  // The sound stream: its unit is one sample of 2 bytes.
  mRiff.BeginList("LIST", "strl");
  mRiff.BeginChunk("strh");
  mRiff.FourCC("auds");
  mRiff.U32(0);  // handler
  mRiff.U32(0);  // flags
  mRiff.U16(0);  // priority
  mRiff.U16(0);  // language
  mRiff.U32(0);  // initial frames
  mRiff.U32(kBytesPerSample);  // scale
  mRiff.U32(rate * kBytesPerSample);
  mRiff.U32(0);  // start
  mSoundLengthAt = mRiff.Tell();
  mRiff.U32(0);
  mSoundBufferAt = mRiff.Tell();
  mRiff.U32(0);
  mRiff.U32(0xFFFFFFFFu);  // quality: the default
  mRiff.U32(kBytesPerSample);
  for (int i = 0; i < 4; ++i) mRiff.U16(0);  // no frame rectangle
  mRiff.End();
  mRiff.BeginChunk("strf");  // WAVEFORMATEX
  mRiff.U16(kPcm);
  mRiff.U16(1);  // channels
  mRiff.U32(rate);
  mRiff.U32(rate * kBytesPerSample);
  mRiff.U16(uint16_t(kBytesPerSample));  // block align
  mRiff.U16(16);                         // bits per sample
  mRiff.U16(0);                          // no extra bytes
  mRiff.End();
  mRiff.End();

  mRiff.End();  // hdrl

  mRiff.BeginList("LIST", "movi");
  mMoviAt = mRiff.Tell() - 4;
}

void AviWriter::AddChunk(const char* id, const void* data, size_t size) {
  IndexEntry entry;
  memcpy(entry.id, id, 4);
  entry.offset = uint32_t(mRiff.Tell() - mMoviAt);
  entry.size = uint32_t(size);
  mIndex.push_back(entry);
  mRiff.Chunk(id, data, size);
}

bool AviWriter::AddFrame(const std::vector<uint8_t>& jpeg, const int16_t* samples, size_t count) {
  if (!mOpen) return false;
  const uint64_t soundBytes = count * kBytesPerSample;
  // Two chunks of header and pad, two index entries, and the index's own head.
  const uint64_t grows = jpeg.size() + soundBytes + 2 * (8 + 1 + 16) + 8;
  if (mRiff.Tell() + grows + mIndex.size() * 16 > mMaxFileBytes) return false;
  AddChunk("00dc", jpeg.data(), jpeg.size());
  mLargestVideo = std::max(mLargestVideo, uint32_t(jpeg.size()));
  if (count > 0) {
    // PCM in a RIFF file is little-endian, whatever the machine.
    std::vector<uint8_t> bytes(static_cast<size_t>(soundBytes));
    for (size_t i = 0; i < count; ++i) {
      bytes[2 * i] = uint8_t(uint16_t(samples[i]));
      bytes[2 * i + 1] = uint8_t(uint16_t(samples[i]) >> 8);
    }
    AddChunk("01wb", bytes.data(), bytes.size());
    mLargestSound = std::max(mLargestSound, uint32_t(soundBytes));
  }
  ++mFrames;
  mSamples += count;
  return true;
}

bool AviWriter::Close(std::string* error) {
  if (!mOpen) return true;
  mOpen = false;
  mRiff.End();  // movi
  mRiff.BeginChunk("idx1");
  for (const IndexEntry& entry : mIndex) {
    mRiff.Bytes(entry.id, 4);
    mRiff.U32(kKeyFrame);
    mRiff.U32(entry.offset);
    mRiff.U32(entry.size);
  }
  mRiff.End();
  mRiff.End();  // RIFF

  const uint32_t fps = uint32_t(mFormat.fps);
  const uint32_t soundPerSecond = uint32_t(mFormat.sampleRate) * kBytesPerSample;
  mRiff.PatchU32(mMaxBytesPerSecAt, mLargestVideo * fps + soundPerSecond);
  mRiff.PatchU32(mTotalFramesAt, mFrames);
  mRiff.PatchU32(mBufferSizeAt, std::max(mLargestVideo, mLargestSound));
  mRiff.PatchU32(mVideoLengthAt, mFrames);
  mRiff.PatchU32(mVideoBufferAt, mLargestVideo);
  mRiff.PatchU32(mSoundLengthAt, uint32_t(mSamples));
  mRiff.PatchU32(mSoundBufferAt, mLargestSound);
  return mRiff.Close(error);
}
