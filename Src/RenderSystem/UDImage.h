#ifndef SRC_RENDERSYSTEM_UDIMAGE_H
#define SRC_RENDERSYSTEM_UDIMAGE_H
// The system's own picture format, UDI: a 36-byte header and the pixels in a
// device format, stored or zlib-packed, with or without a palette. Pixels are
// ready to upload as they are, so loading costs no per-pixel work.
//
// Header (little-endian): 0 tag "UDI\0"; 4 not read; 8 header + unpacked payload
// length; 12 stored file length (must be the file's length); 16 width (16 bits);
// 18 height (16 bits); 20 compression (0 stored, 1 zlib); 24 pixel format number;
// 25 bits per pixel of a colour (of a palette entry with a palette); 26 not read;
// 27 palette type (0 none, 1 sixteen entries, 2 256 entries); 28 eight bytes
// carried along; 36 the payload.
#include <stddef.h>
#include <stdint.h>

#include "RenderSystem/BMPData.h"

namespace UDImage {

enum EPixelFormat {
  ePixelFormat_A8R8G8B8 = 0,
  ePixelFormat_R8G8B8A8 = 1,
  ePixelFormat_R5G5B5A1 = 2,
  ePixelFormat_R5G6B5 = 3,
  ePixelFormat_R4G4B4A4 = 4,
  ePixelFormat_L8A8 = 5,
};

// Name and description of each pixel format, by number.
extern const char* const PreDefinePixelFormatTable[6][2];

extern const char HEADER_TAG[4];  // "UDI" and a zero byte

class UserDefineImage {
 public:
  UserDefineImage();
  ~UserDefineImage();

  // 1 loaded, 0 failed. The path must contain a folder separator, and the
  // texture manager must exist. Reads the real file system, never an archive.
  int Load(const char* path);
  void Clear();

  uint16_t mWidth;
  uint16_t mHeight;
  // Header bytes 24 to 35: byte 24 the pixel format, 25 the bits per pixel, 27 the
  // palette type; the rest is carried along.
  uint32_t mFormat[3];
  void* mPalette;  // stays null
  unsigned char* mPixels;  // the unpacked payload, new[]
  uint32_t mReserved;  // 0
  // Length of mPixels, so that no copy reads beyond it.
  uint32_t mPixelsSize;

 private:
  UserDefineImage(const UserDefineImage&);
  UserDefineImage& operator=(const UserDefineImage&);
};

}  // namespace UDImage

// 0 loaded, -2 failed.
int LoadUDIFile(const char* path, BMPData* out);

// How many bytes of pixels LoadUDIFile hands out for a picture of that size, colour
// size and palette type: the palette and the indices, or the pixels.
size_t UDIPixelBytes(int width, int height, int bitsPerPixel, int paletteType);

#endif
