#include "Canvas/VT/ZvCanvasTypes.h"

#include <assert.h>
#include <stdio.h>
#include <string.h>

#include "Canvas/CanvasClip.h"
#include "SolvaOpenGLConfig.h"
#include "Tamarin/ZvWidgetInstance.h"

using Vantrel::Solva::CDisplaySvc;
using Vantrel::Solva::tPixelFormat;

namespace {

const Vantrel::Solva::tDisplayScreen kAllScreens = 0xFFFFFFFF;

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

// The draws blend and copy through the spans (Canvas/CanvasSpans.h), which give the
// pixels of gColorBlendTable without reading it.
void ZvCanvasLayer::Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                        int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  // a = s x b / 255, the entry of row b of the table.
  const unsigned b = CanvasAlphaByte(alpha);
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 4;
  CanvasBlendImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, runX, runY, first, srcW, b,
                   kCanvasAlphaProduct, true);
}

void ZvCanvasLayer::Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                        int srcH, float alpha, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  // a = (s x b + 1) >> 8: never 255 for an alpha up to 1.0, so this form always blends.
  const unsigned b = CanvasAlphaByte(alpha);
  // Deliberately without skipX and skipY: an image partly off the left or top edge
  // loses its right or bottom part instead.
  const uint8* first = src + (srcY * srcW + srcX) * 4;
  CanvasBlendImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, runX, runY, first, srcW, b,
                   kCanvasAlphaShifted, true);
}

void ZvCanvasLayer::Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  if (clip.runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 3;
  CanvasCopyRGBImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, clip.runX, clip.runY, first, srcW,
                     true);
}

void ZvCanvasLayer::Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                      int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  const int runX = CanvasMin(w, clip.runX);
  const int runY = CanvasMin(h, clip.runY);
  if (runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX + srcY * srcW + srcX) * 3;
  if (runX > 0) {
    // The bound check of every pixel, made once on the farthest: clipping keeps them all inside.
    uint8* DestTemp = mBuffer + CanvasFarthestIndex(orient, clip.startX, clip.startY, runX, runY, mWidth, mHeight) * 4;
    assert(DestTemp < mBuffer + mWidth * mHeight * 4);
  }
  CanvasCopyRGBImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, runX, runY, first, srcW, true);
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
