#ifndef SRC_BASE_FILE_H
#define SRC_BASE_FILE_H
// The one way to plain files: a stream plus how it was opened. Values travel in the
// machine's (little-endian) byte order. Opening with exactly "w", "wb" or "a" goes
// through the platform's atomic replacement, so whoever writes a whole file gets it
// whole or not at all, without knowing about it.
#include <stdio.h>

#include <string>

class File {
 public:
  // Filled by readFile2Buf; the holder zeroes it first and frees it with
  // releaseFileBuf.
  struct FBuffer {
    unsigned char* mData;
    unsigned mSize;
  };

  File();
  // As open(), with the result not reported: ask isOpened().
  File(const char* path, const char* mode);
  ~File();

  bool open(const char* path, const char* mode);
  void close();
  bool isOpened() const;
  static bool isDeviceWrite(const char* mode);

  int readInt();
  unsigned readUInt();
  float readFloat();
  unsigned short readUShort();
  unsigned char readUChar();
  short readShort();
  unsigned char readChar();

  unsigned writeInt(int value);
  unsigned writeUInt(unsigned value);
  unsigned write(const void* data, unsigned size, unsigned count);
  unsigned read(void* data, unsigned size, unsigned count);

  // A 32-bit length, then the bytes, no terminator.
  unsigned writeString(const char* text);
  std::string readString();

  long tell();
  int seek(long offset, int whence);
  bool eof();
  char* gets(char* buffer, int size);
  unsigned getFileSize();

  bool readFile2Buf(FBuffer* buffer);
  static void releaseFileBuf(FBuffer* buffer);

  FILE* stream() const { return mStream; }
  bool isAtomic() const { return mIsAtomic; }

 private:
  File(const File&);
  File& operator=(const File&);

  FILE* mStream;
  bool mIsAtomic;
};

#endif
