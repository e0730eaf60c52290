#include "Canvas/CanvasLayer.h"

#include <string.h>

#include "Base/XAssert.h"
#include "Canvas/CanvasClip.h"

CanvasLayer::CanvasLayer() : mBuffer(0), mPosX(0), mPosY(0), mWidth(0), mHeight(0), mVisible(1) {}

// The owner calls Destroy first; the destructor leaves the buffer alone.
CanvasLayer::~CanvasLayer() {}

void CanvasLayer::Initialize(int x, int y, int width, int height) {
  mPosX = x;
  mPosY = y;
  mWidth = width;
  mHeight = height;
  mBuffer = new uint8[width * 4 * height];
}

void CanvasLayer::InitFont() {}

void CanvasLayer::Destroy() {
  mWidth = 0;
  mHeight = 0;
  delete[] mBuffer;
  mBuffer = 0;
}

void CanvasLayer::Clear() { memset(mBuffer, 0, mWidth * mHeight * 4); }

void CanvasLayer::SetVisible(int visible) { mVisible = visible; }

namespace {

// One pixel of an R, G, B, A source laid over an R, G, B, A destination at the
// effective alpha a, with divisions.
inline void BlendDivided(uint8* DestTemp, const uint8* source, unsigned a) {
  if (a == 0) return;
  if (a == 255) {
    DestTemp[0] = source[0];
    DestTemp[1] = source[1];
    DestTemp[2] = source[2];
    DestTemp[3] = source[3];
    return;
  }
  const unsigned d = ((255 - a) * DestTemp[3]) / 255;
  for (int c = 0; c < 3; ++c) DestTemp[c] = static_cast<uint8>((source[c] * a + DestTemp[c] * d) / 255);
  DestTemp[3] = static_cast<uint8>(d + a);
}

}  // namespace

void CanvasLayer::Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                      int orient) {
  // The whole image: the part-image form from its corner, called directly so a
  // subclass's own part-image form does not take over this one.
  CanvasLayer::Draw_Image_RGBA8888(x, y, 0, 0, w, h, src, srcW, srcH, alpha, orient);
}

void CanvasLayer::Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                      int srcH, float alpha, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  const unsigned b = CanvasAlphaByte(alpha);
  const uint8* first = src + (clip.skipY * srcW + clip.skipX + srcY * srcW + srcX) * 4;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < runY; ++row) {
    const uint8* source = first + row * srcW * 4;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < runX; ++column, index += step, source += 4) {
      uint8* DestTemp = mBuffer + index * 4;
      XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
      BlendDivided(DestTemp, source, source[3] * b / 255);
    }
  }
}

void CanvasLayer::Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  if (clip.runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 3;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < clip.runY; ++row) {
    const uint8* source = first + row * srcW * 3;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < clip.runX; ++column, index += step, source += 3) {
      uint8* DestTemp = mBuffer + index * 4;
      XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
      DestTemp[0] = source[0];
      DestTemp[1] = source[1];
      DestTemp[2] = source[2];
      DestTemp[3] = 255;
    }
  }
}

void CanvasLayer::Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                    int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX + srcY * srcW + srcX) * 3;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < runY; ++row) {
    const uint8* source = first + row * srcW * 3;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < runX; ++column, index += step, source += 3) {
      uint8* DestTemp = mBuffer + index * 4;
      XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
      DestTemp[0] = source[0];
      DestTemp[1] = source[1];
      DestTemp[2] = source[2];
      DestTemp[3] = 255;
    }
  }
}

void CanvasLayer::Draw_Image_RGB565(int, int, const uint8*, int, int, int) { XASSERT(FALSE); }

void CanvasLayer::DrawString(int, int, const std::string&, int) {}

void CanvasLayer::Draw_Image_WithColor(int x, int y, int w, int h, uint8, uint8, uint8, float, int orient) {
  // Held the other way round from the image forms, as this operation always was.
  if (orient == 0) {
    if (x + w < 0 || x > mHeight || y + h < 0 || y > mWidth) return;
  } else {
    if (x + w < 0 || x > mWidth || y + h < 0 || y > mHeight) return;
  }
  if (h < 1 || w < 1) return;
  const int pixels = mWidth * mHeight;
  for (int row = 0; row < h; ++row) {
    for (int column = 0; column < w; ++column) {
      const int X = column + x;
      const int Y = row + y;
      int index = Y * mWidth + X;
      if (orient == 0) {
        uint8* DestTemp = mBuffer + index * 4;
        XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
        index = X * mWidth + (mWidth - Y);
      }
      // There is no clipping here: a pixel outside the buffer is left alone rather
      // than written.
      if (index < 0 || index >= pixels) continue;
      uint8* pixel = mBuffer + index * 4;
      const unsigned a = pixel[3];
      pixel[0] = static_cast<uint8>(pixel[0] * a / 255);
      pixel[1] = static_cast<uint8>(pixel[1] * a / 255);
      pixel[2] = static_cast<uint8>(pixel[2] * a / 255);
    }
  }
}
