#include "YGUI/YGUITypes.h"

#include <assert.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <vector>

#include "Base/File.h"
#include "RenderSystem/ImageData.h"
#include "RenderSystem/UDImage.h"

using UDImage::ePixelFormat_R8G8B8A8;

namespace {

const int kNp2tTag = 0x4E503254;  // the bytes "T2PN"

std::string Stem(const std::string& name) {
  const std::string::size_type dot = name.find('.');
  return dot == std::string::npos ? name : name.substr(0, dot);
}

inline unsigned Read16(const unsigned char* p) { return unsigned(p[0]) | (unsigned(p[1]) << 8); }

// In 64 bits: from 2^19 on, value * 4096 overflows an int (a division by zero
// followed); below that the result is the same.
inline long long FixedOf(int value) { return (long long)value * 4096; }

// Source index for target index `t` of a nearest-neighbour walk; `inverse` is the
// 20.12 ratio of source to target.
inline int SourceIndex(int t, long long inverse, int limit) {
  if (t == 0) return 0;
  const long long ft = FixedOf(t);
  const long long s = ((ft * inverse + 2048) >> 12) + 2048;
  int index = (int)((float)s * (1.0f / 4096.0f));
  if (index < 1) index = 0;
  if (index >= limit) index = limit - 1;
  return index;
}

}  // namespace

YGUIRawImage::YGUIRawImage()
    : mWidth(0), mHeight(0), mData(0), mRenderBuffer(0), mDirty(1), mType(eImage_RGBA8888) {}

void YGUIRawImage::LoadImage(const std::string& name, const std::string& folder) {
  mDirty = 1;
  delete[] mData;
  mData = 0;
  delete[] mRenderBuffer;
  mRenderBuffer = 0;
  mWidth = 0;
  mHeight = 0;
  // Any extension given is ignored: the formats are tried in a fixed order.
  const std::string base = folder + Stem(name);
  if (LoadTexture(base + ".udi")) return;
  if (LoadTexture(base + ".tga")) return;
  if (LoadTexture(base + ".bmp")) return;
  IntegrateNp2Texture(name, folder);
}

bool YGUIRawImage::LoadTexture(const std::string& path) {
  mDirty = 1;
  ImageData image;
  if (!image.Load(path.c_str())) return false;

  const int width = image.mWidth;
  const int height = image.mHeight;
  delete[] mData;
  delete[] mRenderBuffer;
  mWidth = width;
  mHeight = height;
  const size_t size = size_t(width) * height * 4;
  mData = new unsigned char[size]();
  mRenderBuffer = new unsigned char[size]();
  assert(mRenderBuffer);

  if (image.mFormat != 0) {
    if (image.mPaletteType != 0)
      LoadPixelDataWithPalette(image);
    else
      LoadPixelDataNoPalette(image);
  } else {
    const size_t pixels = size_t(width) * height;
    const unsigned char* src = image.mData;
    unsigned char* dst = mData;
    if (image.mBitsPerPixel == 24) {
      // Packed R, G, B: the 255 behind each pixel is overwritten by the next one,
      // so only the last pixel keeps it.
      const size_t available = image.mDataSize / 3;
      for (size_t i = 0; i < pixels && i < available; ++i) {
        dst[0] = src[0];
        dst[1] = src[1];
        dst[2] = src[2];
        dst[3] = 255;
        src += 3;
        dst += 3;
      }
    } else if (image.mBitsPerPixel == 32) {
      // A, R, G, B to R, G, B, A.
      const size_t available = image.mDataSize / 4;
      for (size_t i = 0; i < pixels && i < available; ++i) {
        dst[0] = src[1];
        dst[1] = src[2];
        dst[2] = src[3];
        dst[3] = src[0];
        src += 4;
        dst += 4;
      }
    } else {
      assert(0);
    }
  }
  image.Unload();
  return true;
}

void YGUIRawImage::LoadPixelDataNoPalette(ImageData& CurImageData) {
  const size_t pixels = size_t(CurImageData.mWidth) * CurImageData.mHeight;
  // Never read past what the file gave.
  const size_t available = size_t(CurImageData.mDataSize);
  switch (CurImageData.mFormat) {
    case 1:
      memcpy(mData, CurImageData.mData, pixels * 4 < available ? pixels * 4 : available);
      break;
    case 2:
    case 3:
    case 4: {
      const size_t count = pixels < available / 2 ? pixels : available / 2;
      const int w = CurImageData.mWidth;
      const int h = w > 0 ? int(count / w) : 0;
      if (CurImageData.mFormat == 2) RGB5551toRGBA8888(mData, CurImageData.mData, w, h);
      if (CurImageData.mFormat == 3) RGB565toRGBA8888(mData, CurImageData.mData, w, h);
      if (CurImageData.mFormat == 4) RGBA4444toRGBA8888(mData, CurImageData.mData, w, h);
      break;
    }
    case 5:
      L8A8toRGBA8888(mData, CurImageData.mData, CurImageData.mWidth, CurImageData.mHeight);
      break;
    default:
      assert(0);
  }
}

void YGUIRawImage::LoadPixelDataWithPalette(ImageData& CurImageData) {
  const int width = CurImageData.mWidth;
  const int height = CurImageData.mHeight;
  const size_t pixels = size_t(width) * height;
  const int paletteType = CurImageData.mPaletteType;
  int entries = 0;
  if (paletteType == 1) {
    entries = 16;
  } else if (paletteType == 2) {
    entries = 256;
  } else {
    assert(0);
  }
  const int format = CurImageData.mFormat;
  const int entrySize = format == 1 ? 4 : 2;
  if (format < 1 || format > 5) assert(0);

  const unsigned char* data = CurImageData.mData;
  // What the loader holds: the palette at the file's colour size, then the
  // indices. Nothing past it is read.
  const int colourBytes = CurImageData.mBitsPerPixel > 0 ? CurImageData.mBitsPerPixel / 8 : 0;
  const size_t available = size_t(entries) * colourBytes + (paletteType == 1 ? pixels / 2 : pixels);
  const size_t paletteBytes = size_t(entries) * entrySize;
  const unsigned char* indices = data + paletteBytes;
  const size_t indexBytes = available > paletteBytes ? available - paletteBytes : 0;

  // The palette index of pixel i, or -1 past the end of the data.
  auto IndexOf = [&](size_t i) -> int {
    if (paletteType == 1) {
      // Two pixels a byte, high nibble first; the count of bytes read is rounded down.
      if (i / 2 >= pixels / 2 || i / 2 >= indexBytes) return -1;
      const unsigned char b = indices[i / 2];
      return (i & 1) ? (b & 0x0F) : (b >> 4);
    }
    if (i >= indexBytes) return -1;
    return indices[i];
  };
  auto EntryAvailable = [&](int index) { return size_t(index + 1) * entrySize <= available; };

  if (format == 1) {
    uint32_t* ExtractPixels = new uint32_t[pixels]();
    assert(ExtractPixels);
    for (size_t i = 0; i < pixels; ++i) {
      const int index = IndexOf(i);
      if (index < 0 || !EntryAvailable(index)) continue;
      memcpy(&ExtractPixels[i], data + size_t(index) * 4, 4);
    }
    assert(CurImageData.GetFormat() == ePixelFormat_R8G8B8A8);
    memcpy(mData, ExtractPixels, pixels * 4);
    delete[] ExtractPixels;
    return;
  }

  unsigned char* ExtractPixels = new unsigned char[pixels * 2]();
  assert(ExtractPixels);
  for (size_t i = 0; i < pixels; ++i) {
    const int index = IndexOf(i);
    if (index < 0 || !EntryAvailable(index)) continue;
    ExtractPixels[i * 2] = data[size_t(index) * 2];
    ExtractPixels[i * 2 + 1] = data[size_t(index) * 2 + 1];
  }
  switch (format) {
    case 2:
      RGB5551toRGBA8888(mData, ExtractPixels, width, height);
      break;
    case 3:
      RGB565toRGBA8888(mData, ExtractPixels, width, height);
      break;
    case 4:
      RGBA4444toRGBA8888(mData, ExtractPixels, width, height);
      break;
    case 5:
      L8A8toRGBA8888(mData, ExtractPixels, width, height);
      break;
    default:
      assert(0);
  }
  delete[] ExtractPixels;
}

void YGUIRawImage::RGB5551toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height) {
  const size_t pixels = width > 0 && height > 0 ? size_t(width) * height : 0;
  for (size_t i = 0; i < pixels; ++i) {
    const unsigned v = Read16(src + i * 2);
    dest[i * 4 + 0] = (unsigned char)((v >> 8) & 0xF8);
    dest[i * 4 + 1] = (unsigned char)((v >> 3) & 0xF8);
    dest[i * 4 + 2] = (unsigned char)((v << 2) & 0xF8);
    dest[i * 4 + 3] = (v & 1) ? 255 : 0;
  }
}

void YGUIRawImage::RGB565toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height) {
  const size_t pixels = width > 0 && height > 0 ? size_t(width) * height : 0;
  for (size_t i = 0; i < pixels; ++i) {
    const unsigned v = Read16(src + i * 2);
    dest[i * 4 + 0] = (unsigned char)((v >> 8) & 0xF8);
    dest[i * 4 + 1] = (unsigned char)((v >> 3) & 0xFC);
    dest[i * 4 + 2] = (unsigned char)((v << 3) & 0xFF);
    dest[i * 4 + 3] = 255;
  }
}

void YGUIRawImage::RGBA4444toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height) {
  const size_t pixels = width > 0 && height > 0 ? size_t(width) * height : 0;
  for (size_t i = 0; i < pixels; ++i) {
    const unsigned v = Read16(src + i * 2);
    dest[i * 4 + 0] = (unsigned char)((v >> 12) << 4);
    dest[i * 4 + 1] = (unsigned char)((v >> 4) & 0xF0);
    dest[i * 4 + 2] = (unsigned char)(v & 0xF0);
    dest[i * 4 + 3] = (unsigned char)((v << 4) & 0xFF);
  }
}

void YGUIRawImage::L8A8toRGBA8888(unsigned char*, const unsigned char*, int, int) {
  // Luminance with alpha is not supported.
  assert(0);
}

bool YGUIRawImage::IntegrateNp2Texture(const std::string& name, const std::string& folder) {
  const std::string stem = Stem(name);
  const std::string tileFolder = std::string("NP2T") + "_" + stem;
  File file;
  if (!file.open((folder + tileFolder + "/" + stem + "." + "np2t").c_str(), "rb")) return false;
  if (file.readInt() != kNp2tTag) return false;

  const int width = file.readInt();
  const int height = file.readInt();
  const int count = file.readInt();
  // A description without a usable size describes nothing.
  if (width <= 0 || height <= 0 || file.eof()) return false;
  mWidth = width;
  mHeight = height;
  delete[] mData;
  unsigned char* Buffer = new unsigned char[size_t(width) * height * 4];
  assert(Buffer);
  memset(Buffer, 0, size_t(width) * height * 4);
  mData = Buffer;

  for (int i = 0; i < count; ++i) {
    const int x = file.readInt();
    const int y = file.readInt();
    file.readInt();
    file.readInt();
    // A description that ends early keeps the tiles read so far.
    if (file.eof()) break;
    char tileName[128];
    snprintf(tileName, sizeof(tileName), "%s%02d", (tileFolder + "/" + stem + "_Tile").c_str(), i);
    YGUIRawImage tile;
    tile.LoadImage(tileName, folder);
    if (tile.mData) {
      // Cut to the whole image's edges, on every side; in 64 bits, so that a
      // place near the ends of int does not wrap round past the cut.
      for (int row = 0; row < tile.mHeight; ++row) {
        const long long ty = (long long)y + row;
        if (ty < 0) continue;
        if (ty >= height) break;
        long long from = 0;
        long long to = tile.mWidth;
        if (x < 0) from = -(long long)x;
        if (x + to > width) to = width - (long long)x;
        if (to <= from) continue;
        memcpy(mData + (size_t(ty) * width + size_t(x + from)) * 4,
               tile.mData + (size_t(row) * tile.mWidth + size_t(from)) * 4, size_t(to - from) * 4);
      }
    }
    tile.Release();
  }
  return true;
}

void YGUIRawImage::SetImage(unsigned char* pixels, int width, int height, EYGUIIAMGETYPE type) {
  mType = type;
  delete[] mData;
  mData = 0;
  if (width == mWidth && height == mHeight) {
    mDirty = 1;
    mData = pixels;
    return;
  }
  delete[] mRenderBuffer;
  mRenderBuffer = new unsigned char[size_t(width > 0 ? width : 0) * (height > 0 ? height : 0) * 4];
  mDirty = 1;
  mWidth = width;
  mHeight = height;
  mData = pixels;
}

unsigned char* YGUIRawImage::GetRenderBuffer(int width, int height, ESCALETYPE type) {
  if (!mData) return 0;
  const int b = mType == eImage_RGB888 ? 3 : 4;
  if (width == mWidth && height == mHeight) {
    // An image put together from tiles has no buffer yet.
    if (!mRenderBuffer) mRenderBuffer = new unsigned char[size_t(mWidth) * mHeight * 4];
    memcpy(mRenderBuffer, mData, size_t(width) * height * b);
    mDirty = 0;
    return mRenderBuffer;
  }
  // Pixels without a size can't be scaled.
  if (mWidth <= 0 || mHeight <= 0) return 0;
  if (width > mWidth || height > mHeight || !mRenderBuffer) {
    delete[] mRenderBuffer;
    mRenderBuffer = new unsigned char[size_t(width > 0 ? width : 0) * 4 * (height > 0 ? height : 0)];
  }

  const long long fw = FixedOf(width);
  const long long fh = FixedOf(height);
  const long long fImageW = FixedOf(mWidth);
  const long long fImageH = FixedOf(mHeight);
  const long long ratioX = (fw << 12) / fImageW;
  const long long ratioY = (fh << 12) / fImageH;
  // A target size of 0 has no inverse; nothing is drawn from it then.
  const long long inverseX = ratioX != 0 ? (1LL << 24) / ratioX : 0;
  const long long inverseY = ratioY != 0 ? (1LL << 24) / ratioY : 0;

  if (type != eScale_Nearest) return 0;
  if (height <= 0) return mRenderBuffer;

  // Every row takes its pixels from the same source columns: worked out once.
  std::vector<size_t> sourceOffset(size_t(width > 0 ? width : 0));
  for (int x = 0; x < width; ++x) sourceOffset[size_t(x)] = size_t(SourceIndex(x, inverseX, mWidth)) * b;
  for (int y = 0; y < height; ++y) {
    const int sy = SourceIndex(y, inverseY, mHeight);
    const unsigned char* srcRow = mData + size_t(sy) * mWidth * b;
    unsigned char* dstRow = mRenderBuffer + size_t(y) * width * b;
    if (b == 4) {
      for (int x = 0; x < width; ++x) memcpy(dstRow + size_t(x) * 4, srcRow + sourceOffset[size_t(x)], 4);
    } else {
      for (int x = 0; x < width; ++x) memcpy(dstRow + size_t(x) * 3, srcRow + sourceOffset[size_t(x)], 3);
    }
  }
  return mRenderBuffer;
}

void YGUIRawImage::Release() {
  delete[] mData;
  mData = 0;
  delete[] mRenderBuffer;
  mRenderBuffer = 0;
  mWidth = 0;
  mHeight = 0;
}
