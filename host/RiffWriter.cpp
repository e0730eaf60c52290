#include "RiffWriter.h"

#include <cerrno>
#include <cstring>

RiffWriter::~RiffWriter() {
  if (mFile != nullptr) fclose(mFile);
}

bool RiffWriter::Open(const std::string& path, std::string* error) {
  mFile = fopen(path.c_str(), "wb");
  if (mFile == nullptr) {
    *error = "cannot write " + path + ": " + strerror(errno);
    return false;
  }
  mPath = path;
  mPosition = 0;
  mOpen.clear();
  mFailure.clear();
  return true;
}

void RiffWriter::Fail() {
  if (mFailure.empty()) mFailure = strerror(errno != 0 ? errno : EIO);
}

void RiffWriter::Bytes(const void* data, size_t size) {
  if (mFile == nullptr || size == 0) return;
  if (fwrite(data, 1, size, mFile) != size) Fail();
  mPosition += size;
}

void RiffWriter::FourCC(const char* code) { Bytes(code, 4); }

void RiffWriter::U16(uint16_t value) {
  const uint8_t bytes[2] = {uint8_t(value), uint8_t(value >> 8)};
  Bytes(bytes, 2);
}

void RiffWriter::U32(uint32_t value) {
  const uint8_t bytes[4] = {uint8_t(value), uint8_t(value >> 8), uint8_t(value >> 16), uint8_t(value >> 24)};
  Bytes(bytes, 4);
}

void RiffWriter::BeginList(const char* id, const char* type) {
  BeginChunk(id);
  FourCC(type);
}

void RiffWriter::BeginChunk(const char* id) {
  FourCC(id);
  mOpen.push_back(mPosition);
  U32(0);  // the size, once known
}

void RiffWriter::End() {
  if (mOpen.empty()) return;
  const uint64_t sizeAt = mOpen.back();
  mOpen.pop_back();
  const uint64_t size = mPosition - sizeAt - 4;
  PatchU32(sizeAt, uint32_t(size));
  if (size % 2 != 0) {
    const uint8_t pad = 0;
    Bytes(&pad, 1);
  }
}

void RiffWriter::Chunk(const char* id, const void* data, size_t size) {
  BeginChunk(id);
  Bytes(data, size);
  End();
}

void RiffWriter::PatchU32(uint64_t at, uint32_t value) {
  if (mFile == nullptr) return;
  if (fseeko(mFile, off_t(at), SEEK_SET) != 0) {
    Fail();
    return;
  }
  const uint64_t here = mPosition;
  U32(value);
  mPosition = here;
  if (fseeko(mFile, off_t(here), SEEK_SET) != 0) Fail();
}

bool RiffWriter::Close(std::string* error) {
  if (mFile == nullptr) return true;
  while (!mOpen.empty()) End();
  if (fclose(mFile) != 0) Fail();
  mFile = nullptr;
  if (!mFailure.empty()) *error = "cannot write " + mPath + ": " + mFailure;
  return mFailure.empty();
}
