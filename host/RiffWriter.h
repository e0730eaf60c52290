#pragma once
// Writes a RIFF file front to back: chunks and lists whose sizes are filled in
// when they end, numbers little-endian, and a pad byte after a chunk of odd size.
// Sizes are 32-bit, so a file stays below 4 GiB; callers keep their own limit.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

class RiffWriter {
 public:
  RiffWriter() = default;
  ~RiffWriter();
  RiffWriter(const RiffWriter&) = delete;
  RiffWriter& operator=(const RiffWriter&) = delete;

  // Creates (or replaces) the file. False, with a message, when it cannot.
  bool Open(const std::string& path, std::string* error);

  // "RIFF" or "LIST" with its form type, e.g. BeginList("RIFF", "AVI ").
  void BeginList(const char* id, const char* type);
  void BeginChunk(const char* id);
  // Ends the innermost open list or chunk: its size is written, and a chunk of
  // odd size gets its pad byte.
  void End();
  // A whole chunk at once.
  void Chunk(const char* id, const void* data, size_t size);

  void FourCC(const char* code);
  void U16(uint16_t value);
  void U32(uint32_t value);
  void Bytes(const void* data, size_t size);

  // Where the next byte goes.
  uint64_t Tell() const { return mPosition; }
  // Overwrites a number written before, at offset `at`.
  void PatchU32(uint64_t at, uint32_t value);

  // Ends what is still open and closes the file. False, with a message, when
  // anything could not be written.
  bool Close(std::string* error);

 private:
  FILE* mFile = nullptr;
  std::string mPath;
  uint64_t mPosition = 0;
  std::vector<uint64_t> mOpen;  // offsets of the size fields of open lists and chunks
  std::string mFailure;  // the first error, if any

  void Fail();
};
