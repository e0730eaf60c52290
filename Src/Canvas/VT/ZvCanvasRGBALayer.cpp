#include "Canvas/VT/ZvCanvasRGBALayer.h"

#include <assert.h>
#include <string.h>

#include "CSystemData.h"
#include "Canvas/CanvasClip.h"

using Vantrel::Solva::CDisplaySvc;
using Vantrel::Solva::CFontSvc;
using Vantrel::Solva::kInvalidFontHndl;

ZvCanvasRGBALayer::ZvCanvasRGBALayer(EZvCanvasLayerType type) : ZvCanvasLayer(type), mFontHandle(kInvalidFontHndl), mFontSvc(0) {
  memset(&mFontSurf, 0, sizeof mFontSurf);
}

ZvCanvasRGBALayer::~ZvCanvasRGBALayer() {}

void ZvCanvasRGBALayer::Initialize(int x, int y, int width, int height) {
  ZvCanvasLayer::Initialize(x, y, width, height);
  mWidth = width;
  mHeight = height;
  mBuffer = NewCanvasBuffer(width * 4 * height);
  assert(mBuffer);
  memset(mBuffer, 0, width * 4 * height);
}

void ZvCanvasRGBALayer::InitFont() {
  mFontSvc = new CFontSvc();
  assert(mFontSvc);
  const Glib::ustring path = CSystemData::FindFont("VTCurry.ttf");
  mFontHandle = mFontSvc->LoadFont(path, 18);
  assert(mFontHandle != kInvalidFontHndl);
  mFontSvc->SelectFont(mFontHandle);
  mFontSvc->SetFontColor(0xFFFFFFFF);
  assert(mDisplayHandle != kInvalidDisplayHandle);
  CDisplaySvc display;
  mFontSurf.width = display.GetWidth(mDisplayHandle);
  mFontSurf.height = display.GetHeight(mDisplayHandle);
  mFontSurf.pitch = display.GetPitch(mDisplayHandle);
  mFontSurf.buffer = mBuffer;
  mFontSurf.format = display.GetPixelFormat(mDisplayHandle);
}

void ZvCanvasRGBALayer::Destroy() {
  ZvCanvasLayer::Destroy();
  DeleteCanvasBuffer(mBuffer);
  mBuffer = 0;
  if (mFontSvc) {
    mFontHandle = kInvalidFontHndl;
    delete mFontSvc;
    mFontSvc = 0;
    memset(&mFontSurf, 0, sizeof mFontSurf);
  }
}

void ZvCanvasRGBALayer::Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient) {
  CanvasClip clip;
  if (!ClipCanvasImage(x, y, srcW, srcH, orient, mWidth, mHeight, &clip)) return;
  if (clip.runY < 1) return;
  const uint8* first = src + (clip.skipY * srcW + clip.skipX) * 3;
  if (clip.runX > 0) {
    // The bound check of every pixel, made once on the farthest: clipping keeps them all inside.
    uint8* DestTemp =
        mBuffer + CanvasFarthestIndex(orient, clip.startX, clip.startY, clip.runX, clip.runY, mWidth, mHeight) * 4;
    assert(DestTemp < mBuffer + mWidth * mHeight * 4);
  }
  CanvasCopyRGBImage(mBuffer, mWidth, mHeight, orient, clip.startX, clip.startY, clip.runX, clip.runY, first, srcW,
                     true);
}

void ZvCanvasRGBALayer::DrawString(int x, int y, const std::string& text, int) {
  if (!mFontSvc) return;
  mString = text;
  mFontSvc->DrawString(&mString, x, y, &mFontSurf);
}
