#ifndef SRC_RENDERSYSTEM_BMPFILE_H
#define SRC_RENDERSYSTEM_BMPFILE_H
// A BMP file while it is read: its two headers as stored, the palette of an 8-bit
// picture, and the pixel bytes as they lie in the file. The depth conversions turn
// it into a BMPData; rows keep the file's order (bottom-up stays bottom-up).
#include <stdint.h>

#include "RenderSystem/BMPData.h"

struct BMPFile {
#pragma pack(push, 1)
  struct FileHeader {  // 14 bytes
    uint16_t bfType;   // "BM"
    uint32_t bfSize;
    uint16_t bfReserved1;
    uint16_t bfReserved2;
    uint32_t bfOffBits;  // not used: pixels are taken right behind the headers
  };
  struct InfoHeader {  // 40 bytes
    uint32_t biSize;
    int32_t biWidth;
    int32_t biHeight;
    uint16_t biPlanes;
    uint16_t biBitCount;
    uint32_t biCompression;
    uint32_t biSizeImage;
    int32_t biXPelsPerMeter;
    int32_t biYPelsPerMeter;
    uint32_t biClrUsed;
    uint32_t biClrImportant;
  };
#pragma pack(pop)

  FileHeader fileHeader;
  InfoHeader infoHeader;
  unsigned char palette[256][4];
  unsigned char* pixels;  // new[]
};

// Frees the pixels; a null file is allowed.
void UnloadBMPFile(BMPFile* bmp);

// 0, -2 read failed, -3 open failed, or the code of LoadBMPFromMemory.
int LoadBMPFile(const char* path, BMPFile* out);
// 0, -2 failed, -5 the depth is neither 24 nor 32.
int LoadBMPFile(const char* path, BMPData* out);

// 0, -4 not a BMP, -1 no memory. The two-argument form trusts `data` to hold the
// whole file; the sized one reads no further than `size` bytes.
int LoadBMPFromMemory(void* data, BMPFile* out);
int LoadBMPFromMemory(const void* data, unsigned size, BMPFile* out);

// 1 done, 0 wrong depth or no memory.
int LoadBMPDataBit32(BMPFile* in, BMPData* out);       // A, R, G, B
int LoadBMPDataBit24(BMPFile* in, BMPData* out);       // R, G, B
int LoadBMPDataBit16_To_24(BMPFile* in, BMPData* out);  // rough: 0, 0, pixel >> 9
int LoadBMPDataBit8_To_24(BMPFile* in, BMPData* out);   // the palette's R, G, B

// Writes the pixels as they lie behind a 14-byte file header. 1 done, 0 open failed.
int SaveBMPData(const char* path, BMPData* bmp);

#endif
