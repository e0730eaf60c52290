#include "Canvas/VT/ZvCanvasTypes.h"

#include <assert.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "Canvas/CanvasClip.h"
#include "Canvas/ColorBlendTable.h"
#include "SolvaOpenGLConfig.h"
#include "Tamarin/ZvWidgetInstance.h"

using Vantrel::Solva::CDisplaySvc;
using Vantrel::Solva::tPixelFormat;

// The copies below write whole pixels as little-endian words, as the display reads them.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "layer pixels are little-endian words");

namespace {

const Vantrel::Solva::tDisplayScreen kAllScreens = 0xFFFFFFFF;

// One pixel of an R, G, B, A source laid over a B, G, R, A destination at the
// effective alpha a: two byte look-ups per channel instead of products and divides.
inline void BlendThroughTable(uint8* DestTemp, const uint8* source, unsigned a) {
  if (a == 0) return;
  if (a == 255) {
    // R, G, B, A to B, G, R, A as one word: bytes 0 and 2 change places.
    uint32_t word;
    memcpy(&word, source, 4);
    word = (word & 0xFF00FF00u) | ((word >> 16) & 0xFFu) | ((word & 0xFFu) << 16);
    memcpy(DestTemp, &word, 4);
    return;
  }
  const unsigned char* table = gColorBlendTable;
  const unsigned d = table[DestTemp[3] * 256 + (255 - a)];
  DestTemp[2] = static_cast<uint8>(table[DestTemp[2] * 256 + d] + table[source[0] * 256 + a]);
  DestTemp[1] = static_cast<uint8>(table[DestTemp[1] * 256 + d] + table[source[1] * 256 + a]);
  DestTemp[0] = static_cast<uint8>(table[DestTemp[0] * 256 + d] + table[source[2] * 256 + a]);
  DestTemp[3] = static_cast<uint8>(d + a);
}

// R, G, B to B, G, R and an opaque alpha, written as one word.
inline void CopyRGB(uint8* DestTemp, const uint8* source) {
  const uint32_t word = 0xFF000000u | (uint32_t(source[0]) << 16) | (uint32_t(source[1]) << 8) | source[2];
  memcpy(DestTemp, &word, 4);
}

}  // namespace

void ClearYV12Buffer(uint8* buffer, int pitch, int width, int height) {
  for (int y = 0; y < height; ++y) {
    memset(buffer + pitch * y, 0, width);
    memset(buffer + pitch * y + width, 128, pitch - width);
  }
}

ZvCanvasLayer::ZvCanvasLayer(EZvCanvasLayerType type)
    : mLayerType(type), mDisplayHandle(kInvalidDisplayHandle), mDisplaySvc(0), mExtraBlock(0) {}

ZvCanvasLayer::~ZvCanvasLayer() {}

void ZvCanvasLayer::Initialize(int x, int y, int width, int height) {
  mDisplaySvc = new CDisplaySvc();
  assert(mDisplaySvc);
  mDisplaySvc->GetNumberOfScreens();
  mPosX = x;
  mPosY = y;
  mWidth = width;
  mHeight = height;
  if (mLayerType == kZvLayerRGBA) {
    mDisplayHandle = mDisplaySvc->CreateHandle(static_cast<U16>(height), static_cast<U16>(width),
                                               static_cast<tPixelFormat>(mLayerType + 2), 0);
    assert(mDisplayHandle != kInvalidDisplayHandle);
    mDisplaySvc->Register(mDisplayHandle, static_cast<S16>(x), static_cast<S16>(y), 1, kAllScreens);
    puts("[ZvCanvasLayer][Initialize] Register RGBA layer layer.");
    mDisplaySvc->SetAlpha(mDisplayHandle, 100, 1);
  } else if (mLayerType == kZvLayerYUV) {
    mDisplayHandle = mDisplaySvc->CreateHandle(static_cast<U16>(height), static_cast<U16>(width),
                                               static_cast<tPixelFormat>(mLayerType + 3), 0);
    assert(mDisplayHandle != kInvalidDisplayHandle);
    puts("[ZvCanvasLayer][Initialize] Register YUV layer.");
    mDisplaySvc->Register(mDisplayHandle, static_cast<S16>(x), static_cast<S16>(y), 2, kAllScreens);
    mDisplaySvc->SetAlpha(mDisplayHandle, 100, 1);
    const int surfaceWidth = mDisplaySvc->GetWidth(mDisplayHandle);
    const int surfaceHeight = mDisplaySvc->GetHeight(mDisplayHandle);
    const int pitch = mDisplaySvc->GetPitch(mDisplayHandle);
    uint8* buffer = mDisplaySvc->GetBuffer(mDisplayHandle);
    ClearYV12Buffer(buffer, pitch, surfaceWidth, surfaceHeight);
  } else {
    assert(0);
  }
}

void ZvCanvasLayer::InitFont() {}

void ZvCanvasLayer::Destroy() {
  mDisplaySvc->UnRegister(mDisplayHandle, kAllScreens);
  mDisplaySvc->DestroyHandle(mDisplayHandle, 1);
  mDisplayHandle = kInvalidDisplayHandle;
  delete mDisplaySvc;
  mDisplaySvc = 0;
  if (mExtraBlock) {
    delete[] mExtraBlock;
    mExtraBlock = 0;
  }
}

void ZvCanvasLayer::SetVisible(int visible) {
  mVisible = visible;
  mDisplaySvc->SetWindowPosition(mDisplayHandle, static_cast<S16>(mPosX), static_cast<S16>(mPosY),
                                 static_cast<U16>(mWidth), static_cast<U16>(mHeight), static_cast<uint8>(visible));
}

void ZvCanvasLayer::Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                        int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  // Row b of the table gives s x b / 255 for every source alpha s.
  const unsigned char* alphaRow = gColorBlendTable + CanvasAlphaByte(alpha) * 256;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 4;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < runY; ++row) {
    const uint8* source = first + row * srcW * 4;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < runX; ++column, index += step, source += 4) {
      BlendThroughTable(mBuffer + index * 4, source, alphaRow[source[3]]);
    }
  }
}

void ZvCanvasLayer::Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                        int srcH, float alpha, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  const unsigned b = CanvasAlphaByte(alpha);
  // Deliberately without skipX and skipY: an image partly off the left or top edge
  // loses its right or bottom part instead.
  const uint8* first = src + (srcY * srcW + srcX) * 4;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < runY; ++row) {
    const uint8* source = first + row * srcW * 4;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < runX; ++column, index += step, source += 4) {
      // Never 255 for an alpha up to 1.0, so this form always blends.
      BlendThroughTable(mBuffer + index * 4, source, (source[3] * b + 1) >> 8);
    }
  }
}

void ZvCanvasLayer::Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  if (clip.runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 3;
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < clip.runY; ++row) {
    const uint8* source = first + row * srcW * 3;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < clip.runX; ++column, index += step, source += 3) {
      CopyRGB(mBuffer + index * 4, source);
    }
  }
}

void ZvCanvasLayer::Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
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
      assert(DestTemp < mBuffer + mWidth * mHeight * 4);
      CopyRGB(DestTemp, source);
    }
  }
}

ZvCanvasYUVLayer::ZvCanvasYUVLayer(EZvCanvasLayerType type) : ZvCanvasLayer(type) {}
ZvCanvasYUVLayer::~ZvCanvasYUVLayer() {}
void ZvCanvasYUVLayer::Clear() {}

ZvCanvasOglLayer::ZvCanvasOglLayer(EZvCanvasLayerType type) : ZvCanvasLayer(type) {}
ZvCanvasOglLayer::~ZvCanvasOglLayer() {}

void ZvCanvasOglLayer::Initialize(int, int, int, int) {
  mDisplaySvc = new CDisplaySvc();
  assert(mDisplaySvc);
  if (ZvWidgetInstance::GetIsUseOgl()) {
    mDisplayHandle = ZvWidgetInstance::GetActiveInstance()->GetSolvaOpenGLConfig()->hndlDisplay;
  }
}

// The handle belongs to the 3D context: it is neither taken off nor freed here.
void ZvCanvasOglLayer::Destroy() {
  delete mDisplaySvc;
  mDisplaySvc = 0;
  mDisplayHandle = kInvalidDisplayHandle;
}

void ZvCanvasOglLayer::Clear() {}
