#include "Canvas/VT/ZvCanvasRGBALayer.h"

#include <assert.h>
#include <stdint.h>
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
  mBuffer = new uint8[width * 4 * height];
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
  delete[] mBuffer;
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
  const int step = CanvasDestStep(orient, mWidth);
  for (int row = 0; row < clip.runY; ++row) {
    const uint8* source = first + row * srcW * 3;
    int index = CanvasDestIndex(orient, clip.startX, clip.startY + row, mWidth, mHeight);
    for (int column = 0; column < clip.runX; ++column, index += step, source += 3) {
      uint8* DestTemp = mBuffer + index * 4;
      assert(DestTemp < mBuffer + mWidth * mHeight * 4);
      const uint32_t word = 0xFF000000u | (uint32_t(source[0]) << 16) | (uint32_t(source[1]) << 8) | source[2];
      memcpy(DestTemp, &word, 4);
    }
  }
}

void ZvCanvasRGBALayer::DrawString(int x, int y, const std::string& text, int) {
  if (!mFontSvc) return;
  mString = text;
  mFontSvc->DrawString(&mString, x, y, &mFontSurf);
}
