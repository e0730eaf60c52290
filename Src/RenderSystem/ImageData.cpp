#include "RenderSystem/ImageData.h"

#include <string.h>

#include <new>

#include "RenderSystem/BMPData.h"
#include "RenderSystem/BMPFile.h"
#include "RenderSystem/ImageLoader.h"

// The palette type and format are set by Load only; they are cleared here once,
// so that an object never loaded does not report garbage.
ImageData::ImageData()
    : mData(0), mWidth(0), mHeight(0), mBitsPerPixel(0), mValid(0), mRowBytes(0), mDataSize(0), mPaletteType(0),
      mFormat(0) {}

ImageData::~ImageData() { Unload(); }

int ImageData::Load(const char* path) {
  BMPData bmp;
  memset(&bmp, 0, sizeof bmp);
  if (LoadImageFromFile(path, &bmp) != 0) {
    UnloadBMPData(&bmp);
    return 0;
  }
  delete[] mData;
  mName.clear();
  mData = bmp.pixels;
  mWidth = bmp.width;
  mHeight = bmp.height;
  mBitsPerPixel = bmp.bitsPerPixel;
  mPaletteType = bmp.paletteType;
  mFormat = bmp.pixelFormat;
  mValid = 1;
  mRowBytes = mWidth * mBitsPerPixel / 8;
  mDataSize = mHeight * mRowBytes;
  mName = path;
  return 1;
}

int ImageData::Create(unsigned width, unsigned height, unsigned bits) {
  if (width == 0 || height == 0 || bits == 0) return 0;
  unsigned char* data = new (std::nothrow) unsigned char[size_t(bits >> 3) * width * height]();
  if (data == 0) return 0;
  delete[] mData;
  mData = data;
  mWidth = int(width);
  mHeight = int(height);
  mBitsPerPixel = int(bits);
  mValid = 1;
  mRowBytes = mWidth * mBitsPerPixel / 8;
  mDataSize = mHeight * mRowBytes;
  mName = "noname";
  return 1;
}

void ImageData::Unload() {
  delete[] mData;
  mData = 0;
  mName.clear();
  mWidth = 0;
  mHeight = 0;
  mBitsPerPixel = 0;
  mValid = 0;
  mRowBytes = 0;
  mDataSize = 0;
}

int ImageData::SaveBMP(const char* path) {
  BMPData bmp;
  bmp.width = mWidth;
  bmp.height = mHeight;
  bmp.bitsPerPixel = mBitsPerPixel;
  bmp.paletteType = 0;
  bmp.pixelFormat = 0;
  bmp.pixels = mData;
  return SaveBMPData(path, &bmp);
}
