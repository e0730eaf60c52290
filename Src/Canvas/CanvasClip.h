#ifndef SRC_CANVAS_CANVASCLIP_H
#define SRC_CANVAS_CANVASCLIP_H
// Clipping and destination walking shared by the image drawing of every layer.
// Clipping happens once per call, before the pixel loops.
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "Canvas/CanvasSpans.h"

struct CanvasClip {
  int startX;
  int startY;
  int runX;
  int runY;
  int skipX;
  int skipY;
};

// Clips an image of srcW x srcH at (x, y) against a layer of width x height seen in
// orientation `orient`. False when the image lies wholly outside; equality with the
// far edge is not outside (the run is then 0).
inline bool ClipCanvasImage(int x, int y, int srcW, int srcH, int orient, int width, int height, CanvasClip* clip) {
  const bool swapped = orient != 0 && orient != 2;
  const int limitX = swapped ? height : width;
  const int limitY = swapped ? width : height;
  if (x + srcW < 0 || x > limitX || y + srcH < 0 || y > limitY) return false;
  if (x < 0) {
    clip->startX = 0;
    clip->runX = limitX < x + srcW ? limitX : x + srcW;
    clip->skipX = -x;
  } else {
    clip->startX = x;
    clip->runX = x + srcW > limitX ? limitX - x : srcW;
    clip->skipX = 0;
  }
  if (y < 0) {
    clip->startY = 0;
    clip->runY = limitY < y + srcH ? limitY : y + srcH;
    clip->skipY = -y;
  } else {
    clip->startY = y;
    clip->runY = y + srcH > limitY ? limitY - y : srcH;
    clip->skipY = 0;
  }
  return true;
}

// The pixel index in the buffer of the rotated screen's pixel (X, Y).
inline int CanvasDestIndex(int orient, int X, int Y, int width, int height) {
  switch (orient) {
    case 0:
      return Y * width + X;
    case 2:
      return (height - 1 - Y) * width + (width - 1 - X);
    case 3:
      return (height - 1 - X) * width + Y;
    default:  // 1, and anything outside 0 to 3
      return X * width + (width - 1 - Y);
  }
}

inline int CanvasMin(int a, int b) { return a < b ? a : b; }

// The highest buffer index a clipped image of runX x runY pixels at (startX, startY)
// reaches: the index is linear in X and Y, so it is one of the corners'.
inline int CanvasFarthestIndex(int orient, int startX, int startY, int runX, int runY, int width, int height) {
  const int lastX = startX + runX - 1;
  const int lastY = startY + runY - 1;
  int farthest = CanvasDestIndex(orient, startX, startY, width, height);
  const int corners[3] = {CanvasDestIndex(orient, lastX, startY, width, height),
                          CanvasDestIndex(orient, startX, lastY, width, height),
                          CanvasDestIndex(orient, lastX, lastY, width, height)};
  for (int corner : corners) farthest = corner > farthest ? corner : farthest;
  return farthest;
}

// Whether the source bytes an image draw reads reach into the layer's own buffer.
inline bool CanvasSourceOverlaps(const uint8_t* buffer, int bufferBytes, const uint8_t* first, ptrdiff_t rowBytes,
                                 int runY, int lineBytes) {
  const ptrdiff_t lastRow = (runY - 1) * rowBytes;
  const uintptr_t low = reinterpret_cast<uintptr_t>(first) + (lastRow < 0 ? lastRow : 0);
  const uintptr_t high = reinterpret_cast<uintptr_t>(first) + (lastRow > 0 ? lastRow : 0) + lineBytes;
  const uintptr_t start = reinterpret_cast<uintptr_t>(buffer);
  return low < start + bufferBytes && start < high;
}

const int kCanvasScratchPixels = 256;

// Hands a clipped image of runX x runY pixels, whose first source pixel is `first`
// (kBytes bytes a pixel, rows srcW pixels apart), to span(ops, dst, src, count) in
// spans of destination pixels that lie next to each other in the buffer, lowest
// address first, with their source pixels in the same order; `ops` are the spans to
// draw them with. In orientation 0 those are the image's rows as they stand;
// otherwise its rows (2) or columns (1, 3 and the rest) run backwards or across the
// buffer, and their source pixels are gathered into a scratch span first.
//
// That is not the pixel order of rows outer and columns inner, and gives the same:
// every destination pixel is drawn once, from itself and its own source pixel. Only
// a source that lies in the buffer itself could read bytes drawn before; such a draw
// goes pixel by pixel in the original order, through gCanvasSpansInOrder.
template <int kBytes, typename Span>
void CanvasWalkImage(uint8_t* buffer, int width, int height, int orient, int startX, int startY, int runX, int runY,
                     const uint8_t* first, int srcW, Span span) {
  if (runX < 1 || runY < 1) return;
  const CanvasSpanOps& ops = CanvasSpans();
  const ptrdiff_t rowBytes = static_cast<ptrdiff_t>(srcW) * kBytes;
  if (CanvasSourceOverlaps(buffer, width * height * 4, first, rowBytes, runY, runX * kBytes)) {
    for (int row = 0; row < runY; ++row) {
      for (int column = 0; column < runX; ++column) {
        const int index = CanvasDestIndex(orient, startX + column, startY + row, width, height);
        span(gCanvasSpansInOrder, buffer + index * 4, first + row * rowBytes + column * kBytes, 1);
      }
    }
    return;
  }
  if (orient == 0) {
    for (int row = 0; row < runY; ++row) {
      span(ops, buffer + CanvasDestIndex(0, startX, startY + row, width, height) * 4, first + row * rowBytes, runX);
    }
    return;
  }
  // Lines of the image along which the destination is contiguous, and which way.
  const bool columns = orient != 2;
  const int lines = columns ? runX : runY;
  const int length = columns ? runY : runX;
  const ptrdiff_t lineStep = columns ? kBytes : rowBytes;
  const ptrdiff_t pixelStep = columns ? rowBytes : kBytes;
  const bool forwards = orient == 3;
  alignas(32) uint8_t scratch[kCanvasScratchPixels * kBytes];
  for (int line = 0; line < lines; ++line) {
    const uint8_t* source = first + line * lineStep;
    const int base = columns ? CanvasDestIndex(orient, startX + line, startY, width, height)
                             : CanvasDestIndex(orient, startX, startY + line, width, height);
    for (int done = 0; done < length; done += kCanvasScratchPixels) {
      const int count = CanvasMin(kCanvasScratchPixels, length - done);
      for (int k = 0; k < count; ++k) {
        const int along = forwards ? done + k : done + count - 1 - k;
        memcpy(scratch + k * kBytes, source + along * pixelStep, kBytes);
      }
      const int lowest = forwards ? base + done : base - (done + count - 1);
      span(ops, buffer + lowest * 4, scratch, count);
    }
  }
}

// alpha x 255 truncated, the factor b of the blending forms. An alpha outside 0 to 1
// is held to it: the arithmetic (and the blend table) has no room beyond.
inline unsigned CanvasAlphaByte(float alpha) {
  if (!(alpha > 0.0f)) return 0;
  if (alpha > 1.0f) return 255;
  return static_cast<unsigned>(alpha * 255.0f);
}

// The three kinds of image draw over a clipped part, through the spans the layers
// draw with. The blend of an R, G, B, A image: into B, G, R, A pixels through the
// table's products (`swapped`), or into R, G, B, A ones by division.
inline void CanvasBlendImage(uint8_t* buffer, int width, int height, int orient, int startX, int startY, int runX,
                             int runY, const uint8_t* first, int srcW, unsigned b, ECanvasAlphaRule rule,
                             bool swapped) {
  CanvasWalkImage<4>(buffer, width, height, orient, startX, startY, runX, runY, first, srcW,
                     [&](const CanvasSpanOps& ops, uint8_t* dst, const uint8_t* src, int count) {
                       if (swapped) {
                         ops.blendSwapped(dst, src, count, b, rule);
                       } else {
                         ops.blendDivided(dst, src, count, b);
                       }
                     });
}

// The copy of an R, G, B image as opaque pixels, its bytes turned round if `swapped`.
inline void CanvasCopyRGBImage(uint8_t* buffer, int width, int height, int orient, int startX, int startY, int runX,
                               int runY, const uint8_t* first, int srcW, bool swapped) {
  CanvasWalkImage<3>(buffer, width, height, orient, startX, startY, runX, runY, first, srcW,
                     [&](const CanvasSpanOps& ops, uint8_t* dst, const uint8_t* src, int count) {
                       ops.copyRGB(dst, src, count, swapped);
                     });
}

#endif
