#include "RenderSystem/BMPData.h"

#include <string.h>

#include <new>

void UnloadBMPData(BMPData* bmp) {
  delete[] bmp->pixels;
  bmp->pixels = 0;
}

int FlipBMPData(BMPData* bmp) {
  const size_t row = size_t(bmp->width) * size_t(bmp->bitsPerPixel >> 3);
  const size_t size = size_t(bmp->height) * row;
  unsigned char* copy = new (std::nothrow) unsigned char[size];
  if (copy == 0) return 0;
  memcpy(copy, bmp->pixels, size);
  for (int i = 0; i < bmp->height; ++i) memcpy(bmp->pixels + size_t(bmp->height - 1 - i) * row, copy + size_t(i) * row, row);
  delete[] copy;
  return 1;
}
