#include "RenderSystem/TGAFile.h"

#include <stdint.h>
#include <string.h>

#include <new>

#include "Base/File.h"

const unsigned char g_ucUTGAcompare[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
const unsigned char g_ucCTGAcompare[12] = {0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0};

namespace {

const size_t kHeaderSize = 18;
const size_t kUnlimited = size_t(-1);
const unsigned char kTopLeftOrigin = 0x20;

// One pixel in the order the rest of the system reads: a 32-bit pixel reversed,
// a 24-bit one with its outer bytes exchanged.
void PutPixel(unsigned char* to, const unsigned char* from, size_t bytes) {
  if (bytes == 4) {
    to[0] = from[3];
    to[1] = from[2];
    to[2] = from[1];
    to[3] = from[0];
  } else if (bytes == 3) {
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
  } else {
    // Narrower pixels have no three bytes to exchange; they stay as stored.
    memcpy(to, from, bytes);
  }
}

// -2 for packets that describe more pixels than the picture has; a stream that
// ends early leaves the remaining pixels clear.
int DecodeRunLength(const unsigned char* data, size_t size, unsigned char* pixels, size_t count, size_t bytes) {
  unsigned char scratch[32];
  size_t at = kHeaderSize;
  size_t done = 0;
  unsigned char* to = pixels;
  while (done < count) {
    if (at >= size) break;
    const unsigned char packet = data[at++];
    if (packet & 0x80) {
      const int run = packet - 127;
      if (size - at < bytes) break;
      memcpy(scratch, data + at, bytes);
      at += bytes;
      for (int i = 0; i < run; ++i) {
        // Checked before the store rather than after, so the surplus pixel is
        // never written past the buffer.
        if (done >= count) return -2;
        PutPixel(to, scratch, bytes);
        to += bytes;
        ++done;
      }
    } else {
      const unsigned char run = static_cast<unsigned char>(packet + 1);
      for (int i = 0; i < run; ++i) {
        if (size - at < bytes) return 0;
        memcpy(scratch, data + at, bytes);
        at += bytes;
        if (done >= count) return -2;
        PutPixel(to, scratch, bytes);
        to += bytes;
        ++done;
      }
    }
  }
  return 0;
}

const size_t kMaxPixelBytes = size_t(64) << 20;

int LoadFromMemory(const unsigned char* data, size_t size, BMPData* out) {
  unsigned char header[kHeaderSize];
  memset(header, 0, sizeof header);
  memcpy(header, data, size < kHeaderSize ? size : kHeaderSize);

  const size_t width = header[12] | (header[13] << 8);
  const size_t height = header[14] | (header[15] << 8);
  const int bits = header[16];
  const unsigned char descriptor = header[17];
  const size_t bytes = size_t(bits >> 3);
  out->width = int(width);
  out->height = int(height);
  out->bitsPerPixel = bits;

  const size_t count = width * height;
  // The device has far less memory than a header may ask for; a picture beyond
  // what it could hold is answered as the device would: no memory.
  if (count * bytes > kMaxPixelBytes) return -1;
  // Cleared: a header of an unknown kind leaves the picture blank, not undefined.
  unsigned char* pixels = new (std::nothrow) unsigned char[count * bytes]();
  if (pixels == 0) return -1;
  delete[] out->pixels;
  out->pixels = pixels;

  if (memcmp(header, g_ucUTGAcompare, sizeof g_ucUTGAcompare) == 0) {
    size_t have = size > kHeaderSize ? size - kHeaderSize : 0;
    if (have > count * bytes) have = count * bytes;
    memcpy(pixels, data + kHeaderSize, have);
    if (bits == 24 || bits == 32) {
      unsigned char stored[4];
      for (unsigned char* p = pixels; p < pixels + count * bytes; p += bytes) {
        memcpy(stored, p, bytes);
        PutPixel(p, stored, bytes);
      }
    }
  } else if (memcmp(header, g_ucCTGAcompare, sizeof g_ucCTGAcompare) == 0) {
    if (DecodeRunLength(data, size, pixels, count, bytes) != 0) {
      delete[] pixels;
      out->pixels = 0;  // not left dangling
      return -2;
    }
  }

  if ((descriptor & kTopLeftOrigin) == 0) {
    const size_t row = width * bytes;
    for (size_t i = 0; i < height / 2; ++i) {
      unsigned char* a = pixels + i * row;
      unsigned char* b = pixels + (height - 1 - i) * row;
      for (size_t k = 0; k < row; ++k) {
        const unsigned char t = a[k];
        a[k] = b[k];
        b[k] = t;
      }
    }
  }
  return 0;
}

}  // namespace

int LoadTGAFromMemory(void* data, BMPData* out) {
  return LoadFromMemory(static_cast<const unsigned char*>(data), kUnlimited, out);
}

int LoadTGAFromMemory(const void* data, unsigned size, BMPData* out) {
  return LoadFromMemory(static_cast<const unsigned char*>(data), size, out);
}

int LoadTGAFile(const char* path, BMPData* out) {
  File file;
  if (!file.open(path, "rb")) return -3;
  File::FBuffer buffer = {0, 0};
  if (!file.readFile2Buf(&buffer)) return -2;
  const int result = LoadTGAFromMemory(buffer.mData, buffer.mSize, out);
  File::releaseFileBuf(&buffer);
  return result;
}

int SaveTGA32Data(const char* path, BMPData* bmp) {
  if (bmp->bitsPerPixel != 32) return 0;
  File file;
  if (!file.open(path, "wb")) return 0;
  unsigned char header[kHeaderSize];
  memset(header, 0, sizeof header);
  header[2] = 2;  // raw true colour
  header[12] = static_cast<unsigned char>(bmp->width);
  header[13] = static_cast<unsigned char>(bmp->width >> 8);
  header[14] = static_cast<unsigned char>(bmp->height);
  header[15] = static_cast<unsigned char>(bmp->height >> 8);
  header[16] = 32;
  header[17] = 0x28;  // top-left origin, 8 bits of alpha
  file.write(header, sizeof header, 1);
  const size_t size = size_t(bmp->width) * size_t(bmp->height) * 4;
  if (size > 0) file.write(bmp->pixels, unsigned(size), 1);
  file.close();
  return 1;
}
