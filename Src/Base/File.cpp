#include "Base/File.h"

#include <stdlib.h>
#include <string.h>

#include "AtomicFile.h"
#include "SolvaFileOps.h"

namespace {
// Strings longer than this are checked against the bytes left in the file.
const unsigned kLongString = 1u << 16;

// One value of its width; a short read gives 0, not the part of it that was there.
template <class T>
T ReadValue(FILE* stream) {
  T value = T();
  if (fread(&value, sizeof value, 1, stream) != 1) value = T();
  return value;
}
}  // namespace

File::File() : mStream(0), mIsAtomic(false) {}

File::File(const char* path, const char* mode) : mStream(0), mIsAtomic(false) { open(path, mode); }

File::~File() { close(); }

bool File::isDeviceWrite(const char* mode) {
  return strcmp(mode, "w") == 0 || strcmp(mode, "wb") == 0 || strcmp(mode, "a") == 0;
}

bool File::open(const char* path, const char* mode) {
  // The flag is set before trying; a failed atomic open leaves a null stream, and
  // close() then does nothing. An open stream is not closed first.
  if (isDeviceWrite(mode)) {
    mIsAtomic = true;
    mStream = fopenAtomic(path, mode);
  } else {
    mIsAtomic = false;
    mStream = fopen(path, mode);
  }
  return mStream != 0;
}

void File::close() {
  if (mStream == 0) return;
  if (mIsAtomic) {
    fcloseAtomic(mStream);
  } else {
    fclose(mStream);
  }
  mStream = 0;
  mIsAtomic = false;
}

bool File::isOpened() const { return mStream != 0; }

int File::readInt() { return ReadValue<int>(mStream); }

unsigned File::readUInt() { return ReadValue<unsigned>(mStream); }

float File::readFloat() { return ReadValue<float>(mStream); }

unsigned short File::readUShort() { return ReadValue<unsigned short>(mStream); }

unsigned char File::readUChar() { return ReadValue<unsigned char>(mStream); }

// The device leaves the next two uncleared, so a short read gives whatever was on
// the stack; 0 here, since reading an indeterminate value is undefined.
short File::readShort() { return ReadValue<short>(mStream); }

unsigned char File::readChar() { return ReadValue<unsigned char>(mStream); }

// Each write is reported to the device, whose power-cut switch counts it.
unsigned File::writeInt(int value) {
  const unsigned done = fwrite(&value, sizeof value, 1, mStream);
  solvaFileWritten();
  return done;
}

unsigned File::writeUInt(unsigned value) {
  const unsigned done = fwrite(&value, sizeof value, 1, mStream);
  solvaFileWritten();
  return done;
}

unsigned File::write(const void* data, unsigned size, unsigned count) {
  const unsigned done = fwrite(data, size, count, mStream);
  solvaFileWritten();
  return done;
}

unsigned File::read(void* data, unsigned size, unsigned count) { return fread(data, size, count, mStream); }

unsigned File::writeString(const char* text) {
  const unsigned length = strlen(text);
  fwrite(&length, sizeof length, 1, mStream);
  const unsigned done = fwrite(text, length, 1, mStream);
  solvaFileWritten();
  return done;
}

std::string File::readString() {
  unsigned length = 0;
  fread(&length, sizeof length, 1, mStream);
  if (length > kLongString) {
    // A length beyond the data is a damaged file: read what is there, as if the
    // file ended with it, instead of allocating what the number says.
    const long here = ftell(mStream);
    const unsigned size = getFileSize();
    const unsigned rest = here >= 0 && unsigned(here) < size ? size - unsigned(here) : 0;
    if (length > rest) length = rest;
  }
  char* body = new char[size_t(length) + 1];
  // A short read must not leave the tail indeterminate: what is missing reads as
  // the end of the text.
  memset(body, 0, size_t(length) + 1);
  fread(body, length, 1, mStream);
  body[length] = 0;
  std::string text(body);  // up to the first zero byte
  delete[] body;
  return text;
}

long File::tell() { return ftell(mStream); }

int File::seek(long offset, int whence) { return fseek(mStream, offset, whence); }

bool File::eof() { return feof(mStream) != 0; }

char* File::gets(char* buffer, int size) { return fgets(buffer, size, mStream); }

unsigned File::getFileSize() {
  if (mStream == 0) return 0;
  const long here = ftell(mStream);
  fseek(mStream, 0, SEEK_END);
  const long size = ftell(mStream);
  fseek(mStream, here, SEEK_SET);
  return static_cast<unsigned>(size);
}

bool File::readFile2Buf(FBuffer* buffer) {
  if (mStream == 0) return false;
  const unsigned size = getFileSize();
  if (size == 0) return false;
  const long here = ftell(mStream);
  const unsigned rest = here >= 0 && unsigned(here) < size ? size - unsigned(here) : 0;
  buffer->mData = static_cast<unsigned char*>(malloc(rest > 0 ? rest : 1));
  buffer->mSize = rest;
  fread(buffer->mData, 1, rest, mStream);
  return true;
}

void File::releaseFileBuf(FBuffer* buffer) {
  if (buffer->mData != 0) free(buffer->mData);
  buffer->mData = 0;
  buffer->mSize = 0;
}
