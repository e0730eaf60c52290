#include "RenderSystem/UDImage.h"

#include <assert.h>
#include <string.h>
#include <zlib.h>

#include <fstream>
#include <new>
#include <string>

#include "RenderSystem/GLTextureManager.h"

namespace UDImage {

const char* const PreDefinePixelFormatTable[6][2] = {
    {"A8R8G8B8", "Pixel=32,A=8,R=8,G=8,B=8"}, {"R8G8B8A8", "Pixel=32,R=8,G=8,B=8,A=8"},
    {"R5G5B5A1", "Pixel=16,R=5,G=5,B=5,A=1"}, {"R5G6B5", "Pixel=16,R=5,G=6,B=5,A=0"},
    {"R4G4B4A4", "Pixel=16,R=4,G=4,B=4,A=4"}, {"L8A8", "Pixel=16,L=8,A=8"},
};

const char HEADER_TAG[4] = {'U', 'D', 'I', 0};

namespace {

const uint32_t kHeaderSize = 36;

uint32_t Word(const unsigned char* at) { return uint32_t(at[0] | (at[1] << 8) | (at[2] << 16) | (uint32_t(at[3]) << 24)); }

}  // namespace

UserDefineImage::UserDefineImage()
    : mWidth(0), mHeight(0), mPalette(0), mPixels(0), mReserved(0), mPixelsSize(0) {
  mFormat[0] = mFormat[1] = mFormat[2] = 0;
}

UserDefineImage::~UserDefineImage() { Clear(); }

// Also nulls the pointer: a failed Load calls this after the pixels were freed
// once already, and a dangling pointer would be freed twice.
void UserDefineImage::Clear() {
  delete[] mPixels;
  mPixels = 0;
  mPixelsSize = 0;
}

int UserDefineImage::Load(const char* path) {
  const std::string name(path);
  const int pos_1 = int(name.rfind('/'));
  const int pos_2 = int(name.rfind('\\'));
  assert(pos_1 >= 0 || pos_2 >= 0);
  // Textures made from these pictures belong to the texture manager.
  GLTextureManager::sInstance();

  std::ifstream in(path, std::ios::in | std::ios::binary);
  if (!in) return 0;
  in.seekg(0, std::ios::end);
  const std::streamoff length = in.tellg();
  in.seekg(0, std::ios::beg);
  if (length < 4) return 0;

  Clear();
  unsigned char header[kHeaderSize];
  memset(header, 0, sizeof header);
  in.read(reinterpret_cast<char*>(header), sizeof header);
  if (std::streamoff(Word(header + 12)) != length) return 0;
  if (strncmp(reinterpret_cast<const char*>(header), HEADER_TAG, sizeof HEADER_TAG) != 0) return 0;

  // A length field below the header's own size describes no payload at all.
  if (Word(header + 8) < kHeaderSize) return 0;
  const uint32_t unpacked = Word(header + 8) - kHeaderSize;
  const uint32_t stored = Word(header + 12) - kHeaderSize;
  // Cleared: an unknown compression leaves the payload blank, not undefined.
  unsigned char* pixels = new (std::nothrow) unsigned char[unpacked]();
  if (pixels == 0) return 0;

  const unsigned char compression = header[20];
  if (compression == 0) {
    // A stored payload longer than the unpacked length would not fit: the rest is
    // dropped.
    in.read(reinterpret_cast<char*>(pixels), stored < unpacked ? stored : unpacked);
  } else if (compression == 1) {
    unsigned char* packed = new (std::nothrow) unsigned char[stored];
    if (packed == 0) {
      delete[] pixels;
      return 0;
    }
    in.read(reinterpret_cast<char*>(packed), stored);
    uLongf size = unpacked;
    const int result = uncompress(pixels, &size, packed, stored);
    delete[] packed;
    if (result != Z_OK || size != unpacked) {
      delete[] pixels;
      Clear();
      return 0;
    }
  }
  in.close();

  mFormat[0] = Word(header + 24);
  mFormat[1] = Word(header + 28);
  mFormat[2] = Word(header + 32);
  mWidth = uint16_t(header[16] | (header[17] << 8));
  mHeight = uint16_t(header[18] | (header[19] << 8));
  mReserved = 0;
  mPixels = pixels;
  mPixelsSize = unpacked;
  return 1;
}

}  // namespace UDImage

int LoadUDIFile(const char* path, BMPData* out) {
  UDImage::UserDefineImage image;
  if (!image.Load(path)) return -2;
  const int bits = (image.mFormat[0] >> 8) & 0xFF;
  const int paletteType = (image.mFormat[0] >> 24) & 0xFF;
  out->width = image.mWidth;
  out->height = image.mHeight;
  out->bitsPerPixel = bits;
  out->paletteType = paletteType;
  out->pixelFormat = image.mFormat[0] & 0xFF;
  delete[] out->pixels;
  out->pixels = 0;

  const size_t size = UDIPixelBytes(image.mWidth, image.mHeight, bits, paletteType);
  unsigned char* pixels = new (std::nothrow) unsigned char[size]();
  if (pixels == 0) return -2;
  // A header that promises more than the payload holds gets what there is; the
  // rest stays clear.
  memcpy(pixels, image.mPixels, size < image.mPixelsSize ? size : image.mPixelsSize);
  out->pixels = pixels;
  image.Clear();
  return 0;
}

size_t UDIPixelBytes(int width, int height, int bitsPerPixel, int paletteType) {
  const size_t pixelCount = size_t(width) * size_t(height);
  if (paletteType == 1) return size_t(bitsPerPixel / 8) * 16 + pixelCount / 2;
  if (paletteType == 2) return size_t(bitsPerPixel / 8) * 256 + pixelCount;
  return pixelCount * size_t(bitsPerPixel) / 8;
}
