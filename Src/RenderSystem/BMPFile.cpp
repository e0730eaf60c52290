#include "RenderSystem/BMPFile.h"

#include <stdint.h>
#include <string.h>

#include <new>

#include "Base/File.h"

namespace {

const uint16_t kBMPType = 0x4D42;  // "BM", little-endian
const size_t kHeadersSize = 54;
const size_t kPaletteSize = 1024;
const size_t kUnlimited = size_t(-1);

// Copies `count` bytes from `offset`, or as many as there are; the rest is zero.
void CopyClipped(void* to, const unsigned char* from, size_t size, size_t offset, size_t count) {
  size_t have = offset < size ? size - offset : 0;
  if (have > count) have = count;
  if (have > 0) memcpy(to, from + offset, have);
  if (have < count) memset(static_cast<unsigned char*>(to) + have, 0, count - have);
}

int LoadFromMemory(const unsigned char* data, size_t size, BMPFile* out) {
  CopyClipped(&out->fileHeader, data, size, 0, sizeof out->fileHeader);
  if (out->fileHeader.bfType != kBMPType) return -4;
  CopyClipped(&out->infoHeader, data, size, sizeof out->fileHeader, sizeof out->infoHeader);

  size_t pixelsAt = kHeadersSize;
  if (out->infoHeader.biBitCount == 8) {
    CopyClipped(out->palette, data, size, kHeadersSize, kPaletteSize);
    for (int i = 0; i < 256; ++i) {
      const unsigned char blue = out->palette[i][0];
      out->palette[i][0] = out->palette[i][2];
      out->palette[i][2] = blue;
      out->palette[i][3] = 4;  // a marker of converted palettes, not an alpha
    }
    pixelsAt = kHeadersSize + kPaletteSize;
  }

  // Rows are taken as contiguous: padding at row ends is not skipped.
  const int64_t height = out->infoHeader.biHeight < 0 ? -int64_t(out->infoHeader.biHeight) : out->infoHeader.biHeight;
  const int64_t count = int64_t(out->infoHeader.biBitCount >> 3) * out->infoHeader.biWidth * height;
  if (count < 0 || uint64_t(count) > size_t(-1) / 2) return -1;
  // Cleared, so that pixels beyond a short file read as zero.
  unsigned char* pixels = new (std::nothrow) unsigned char[size_t(count)]();
  if (pixels == 0) return -1;
  delete[] out->pixels;
  out->pixels = pixels;
  CopyClipped(pixels, data, size, pixelsAt, size_t(count));
  return 0;
}

// Width and rows of the converted picture; a top-down file (negative height)
// has as many rows as a bottom-up one.
void Dimensions(const BMPFile* in, size_t* width, size_t* height) {
  const int32_t h = in->infoHeader.biHeight;
  *width = in->infoHeader.biWidth < 0 ? 0 : size_t(in->infoHeader.biWidth);
  *height = h < 0 ? size_t(-int64_t(h)) : size_t(h);
}

unsigned char* Replace(BMPData* out, size_t width, size_t height, int bits) {
  unsigned char* pixels = new (std::nothrow) unsigned char[width * height * size_t(bits >> 3)];
  if (pixels == 0) return 0;
  delete[] out->pixels;
  out->pixels = pixels;
  out->width = int(width);
  out->height = int(height);
  out->bitsPerPixel = bits;
  return pixels;
}

}  // namespace

void UnloadBMPFile(BMPFile* bmp) {
  if (bmp == 0) return;
  delete[] bmp->pixels;
  bmp->pixels = 0;
}

int LoadBMPFromMemory(void* data, BMPFile* out) {
  return LoadFromMemory(static_cast<const unsigned char*>(data), kUnlimited, out);
}

int LoadBMPFromMemory(const void* data, unsigned size, BMPFile* out) {
  return LoadFromMemory(static_cast<const unsigned char*>(data), size, out);
}

int LoadBMPFile(const char* path, BMPFile* out) {
  File file;
  if (!file.open(path, "rb")) return -3;
  File::FBuffer buffer = {0, 0};
  if (!file.readFile2Buf(&buffer)) return -2;
  const int result = LoadBMPFromMemory(buffer.mData, buffer.mSize, out);
  File::releaseFileBuf(&buffer);
  return result;
}

int LoadBMPFile(const char* path, BMPData* out) {
  BMPFile file;
  memset(&file, 0, sizeof file);
  if (LoadBMPFile(path, &file) != 0) {
    UnloadBMPFile(&file);
    return -2;
  }
  int done = 0;
  if (file.infoHeader.biBitCount == 24) {
    done = LoadBMPDataBit24(&file, out);
  } else if (file.infoHeader.biBitCount == 32) {
    done = LoadBMPDataBit32(&file, out);
  } else {
    UnloadBMPFile(&file);
    return -5;
  }
  UnloadBMPFile(&file);
  return done ? 0 : -2;
}

int LoadBMPDataBit32(BMPFile* in, BMPData* out) {
  if (in->infoHeader.biBitCount != 32) return 0;
  size_t width, height;
  Dimensions(in, &width, &height);
  unsigned char* to = Replace(out, width, height, 32);
  if (to == 0) return 0;
  const unsigned char* from = in->pixels;
  for (size_t i = 0, n = width * height; i < n; ++i, to += 4, from += 4) {
    to[0] = from[3];
    to[1] = from[2];
    to[2] = from[1];
    to[3] = from[0];
  }
  return 1;
}

int LoadBMPDataBit24(BMPFile* in, BMPData* out) {
  if (in->infoHeader.biBitCount != 24) return 0;
  size_t width, height;
  Dimensions(in, &width, &height);
  unsigned char* to = Replace(out, width, height, 24);
  if (to == 0) return 0;
  const unsigned char* from = in->pixels;
  for (size_t i = 0, n = width * height; i < n; ++i, to += 3, from += 3) {
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
  }
  return 1;
}

int LoadBMPDataBit16_To_24(BMPFile* in, BMPData* out) {
  if (in->infoHeader.biBitCount != 16) return 0;
  size_t width, height;
  Dimensions(in, &width, &height);
  unsigned char* to = Replace(out, width, height, 24);
  if (to == 0) return 0;
  const unsigned char* from = in->pixels;
  for (size_t i = 0, n = width * height; i < n; ++i, to += 3, from += 2) {
    const uint16_t value = uint16_t(from[0] | (from[1] << 8));
    to[0] = 0;
    to[1] = 0;
    to[2] = static_cast<unsigned char>(value >> 9);
  }
  return 1;
}

int LoadBMPDataBit8_To_24(BMPFile* in, BMPData* out) {
  if (in->infoHeader.biBitCount != 8) return 0;
  size_t width, height;
  Dimensions(in, &width, &height);
  unsigned char* to = Replace(out, width, height, 24);
  if (to == 0) return 0;
  const unsigned char* from = in->pixels;
  for (size_t i = 0, n = width * height; i < n; ++i, to += 3, ++from) {
    const unsigned char* entry = in->palette[*from];
    to[0] = entry[0];
    to[1] = entry[1];
    to[2] = entry[2];
  }
  return 1;
}

int SaveBMPData(const char* path, BMPData* bmp) {
  File file;
  if (!file.open(path, "wb")) return 0;
  const uint32_t dataSize = uint32_t(bmp->width) * uint32_t(bmp->height) * uint32_t(bmp->bitsPerPixel >> 3);
  // The information header is written from the same block as the file header, so
  // the file carries the file header twice and no information header: readers do
  // not take it for a BMP. The block is 40 bytes and cleared, so what follows the
  // repeated header is zeros rather than whatever lay behind it in memory.
  unsigned char block[40];
  memset(block, 0, sizeof block);
  BMPFile::FileHeader header;
  header.bfType = kBMPType;
  header.bfSize = dataSize + uint32_t(kHeadersSize);
  header.bfReserved1 = 0;
  header.bfReserved2 = 0;
  header.bfOffBits = uint32_t(kHeadersSize);
  memcpy(block, &header, sizeof header);
  file.write(block, sizeof header, 1);
  file.write(block, sizeof block, 1);
  if (dataSize > 0) file.write(bmp->pixels, dataSize, 1);
  file.close();
  return 1;
}
