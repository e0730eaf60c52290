#ifndef SRC_RENDERSYSTEM_BMPDATA_H
#define SRC_RENDERSYSTEM_BMPDATA_H
// The plain decoded form of a picture, as the loaders fill it. Byte order of a
// pixel: BMP and TGA give R, G, B (24 bits) or A, R, G, B (32 bits); UDI gives
// what its pixel format number says.

struct BMPData {
  int width;
  int height;
  int bitsPerPixel;  // 24 or 32 for BMP and TGA, as the file says for UDI
  int paletteType;   // 0 none, 1 sixteen entries, 2 256 entries (UDI only)
  int pixelFormat;   // a row of UDImage::PreDefinePixelFormatTable (UDI only)
  unsigned char* pixels;  // new[], null when empty
};

// Frees the pixels and nulls them.
void UnloadBMPData(BMPData* bmp);

// Turns the rows upside down. 1 done, 0 no memory for the copy.
int FlipBMPData(BMPData* bmp);

#endif
