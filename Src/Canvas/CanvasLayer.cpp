#include "Canvas/CanvasLayer.h"

#include <string.h>

#include "Base/XAssert.h"
#include "Canvas/CanvasClip.h"
#include "Canvas/CanvasSpans.h"

CanvasLayer::CanvasLayer() : mBuffer(0), mPosX(0), mPosY(0), mWidth(0), mHeight(0), mVisible(1) {}

// The owner calls Destroy first; the destructor leaves the buffer alone.
CanvasLayer::~CanvasLayer() {}

void CanvasLayer::Initialize(int x, int y, int width, int height) {
  mPosX = x;
  mPosY = y;
  mWidth = width;
  mHeight = height;
  mBuffer = NewCanvasBuffer(width * 4 * height);
}

void CanvasLayer::InitFont() {}

void CanvasLayer::Destroy() {
  mWidth = 0;
  mHeight = 0;
  DeleteCanvasBuffer(mBuffer);
  mBuffer = 0;
}

void CanvasLayer::Clear() { memset(mBuffer, 0, mWidth * mHeight * 4); }

void CanvasLayer::SetVisible(int visible) { mVisible = visible; }

void CanvasLayer::Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                      int orient) {
  // The whole image: the part-image form from its corner, called directly so a
  // subclass's own part-image form does not take over this one.
  CanvasLayer::Draw_Image_RGBA8888(x, y, 0, 0, w, h, src, srcW, srcH, alpha, orient);
}

// The draws go through the spans (Canvas/CanvasSpans.h). The bound check that every
// pixel had is made once, on the farthest pixel: clipping keeps them all inside.
void CanvasLayer::Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                      int srcH, float alpha, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1 || runX < 1) return;
  uint8* DestTemp = mBuffer + CanvasFarthestIndex(orient, clip.startX, clip.startY, runX, runY, mWidth, mHeight) * 4;
  XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
  // a = s x b / 255, then d = ((255 - a) x dstA) / 255 and (src x a + dst x d) / 255.
  const uint8* first = src + (clip.skipY * srcW + clip.skipX + srcY * srcW + srcX) * 4;
  CanvasBlendImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, runX, runY, first, srcW,
                   CanvasAlphaByte(alpha), kCanvasAlphaProduct, false);
}

void CanvasLayer::Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient) {
  CanvasLayer::Draw_Image_RGB888(x, y, 0, 0, srcW, srcH, src, srcW, srcH, orient);
}

void CanvasLayer::Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                    int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1 || runX < 1) return;
  uint8* DestTemp = mBuffer + CanvasFarthestIndex(orient, clip.startX, clip.startY, runX, runY, mWidth, mHeight) * 4;
  XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
  const uint8* first = src + (clip.skipY * srcW + clip.skipX + srcY * srcW + srcX) * 3;
  CanvasCopyRGBImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, runX, runY, first, srcW, false);
}

void CanvasLayer::Draw_Image_RGB565(int, int, const uint8*, int, int, int) { XASSERT(FALSE); }

void CanvasLayer::DrawString(int, int, const std::string&, int) {}

namespace {

// Premultiplies the pixels from index `from` up to `to` that lie in the buffer: there
// is no clipping here, a pixel outside is left alone rather than written.
void PremultiplyInside(uint8* buffer, int pixels, long long from, long long to) {
  if (from < 0) from = 0;
  if (to > pixels) to = pixels;
  if (from < to) CanvasSpans().premultiply(buffer + from * 4, static_cast<int>(to - from));
}

}  // namespace

// A pixel changes from itself alone, so the pixels may be taken in any order, and
// are taken where they lie side by side in the buffer.
void CanvasLayer::Draw_Image_WithColor(int x, int y, int w, int h, uint8, uint8, uint8, float, int orient) {
  // Held the other way round from the image forms, as this operation always was.
  if (orient == 0) {
    if (x + w < 0 || x > mHeight || y + h < 0 || y > mWidth) return;
  } else {
    if (x + w < 0 || x > mWidth || y + h < 0 || y > mHeight) return;
  }
  if (h < 1 || w < 1) return;
  const int pixels = mWidth * mHeight;
  if (orient != 0) {
    // Pixel Y x W + X: a row's pixels follow each other (on into the next buffer row).
    for (int row = 0; row < h; ++row) {
      const long long first = static_cast<long long>(row + y) * mWidth + x;
      PremultiplyInside(mBuffer, pixels, first, first + w);
    }
    return;
  }
  // With orient 0, rows outer and columns inner, each pixel's index Y x W + X is
  // checked against the end of the buffer and the pixel X x W + (W - Y) is changed.
  // First the rows whose every index passes, column by column: along a column the
  // changed pixels follow each other backwards.
  int rows = 0;
  while (rows < h && static_cast<long long>(rows + y) * mWidth + x + w - 1 < pixels) ++rows;
  if (rows > 0) {
    for (int column = 0; column < w; ++column) {
      const long long turned = static_cast<long long>(column + x) * mWidth + mWidth;
      PremultiplyInside(mBuffer, pixels, turned - (y + rows - 1), turned - y + 1);
    }
  }
  // Then the row with a failing index: its pixels up to that one, and the check.
  const int Y = rows + y;
  for (int column = 0; rows < h && column < w; ++column) {
    const int X = column + x;
    uint8* DestTemp = mBuffer + (Y * mWidth + X) * 4;
    XASSERT(DestTemp < mBuffer + mWidth * mHeight * 4);
    const long long turned = static_cast<long long>(X) * mWidth + (mWidth - Y);
    PremultiplyInside(mBuffer, pixels, turned, turned + 1);
  }
}
