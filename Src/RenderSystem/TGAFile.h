#ifndef SRC_RENDERSYSTEM_TGAFILE_H
#define SRC_RENDERSYSTEM_TGAFILE_H
// TGA pictures: true colour, raw or run-length, either origin. Pixels come out top
// row first, R, G, B (24 bits) or A, R, G, B (32 bits).
#include "RenderSystem/BMPData.h"

// The first 12 header bytes of the two kinds that are decoded: raw and run-length
// true colour, with no image id and no colour map.
extern const unsigned char g_ucUTGAcompare[12];
extern const unsigned char g_ucCTGAcompare[12];

// 0, -2 read failed, -3 open failed, or the code of LoadTGAFromMemory.
int LoadTGAFile(const char* path, BMPData* out);

// 0, -1 no memory, -2 corrupt run-length data (the pixels are then gone). A header
// of another kind is not a failure: the pixels stay unfilled. The two-argument form
// trusts `data` to hold the whole file; the sized one reads no further than `size`
// bytes.
int LoadTGAFromMemory(void* data, BMPData* out);
int LoadTGAFromMemory(const void* data, unsigned size, BMPData* out);

// Writes a 32-bit picture with its pixel bytes as they lie. 1 done, 0 otherwise.
int SaveTGA32Data(const char* path, BMPData* bmp);

#endif
