#include "YGUI/YGUIImageButton.h"

#include "Canvas/CanvasLayer.h"

YGUIImageButton::YGUIImageButton(YGUIGrid& grid)
    : YGUIControl(grid), mRenderBuffer(0), mStateChanged(0), mScaleType(eScale_Nearest), mLastFocus(0) {}

void YGUIImageButton::Initialize() {
  mEnabled = 1;
  mVisible = 1;
  mAnimeAble = 1;
  Enable();
}

void YGUIImageButton::Destroy() {
  for (int i = 0; i < 3; ++i) mImages[i].Release();
  mRenderBuffer = 0;
  YGUIFrame::Destroy();
}

void YGUIImageButton::Enable() {
  if (!mDisabled) return;
  YGUIControl::Enable();
  mStateChanged = 1;
}

void YGUIImageButton::Disable() {
  if (mDisabled) return;
  YGUIControl::Disable();
  mStateChanged = 1;
}

void YGUIImageButton::SetNormalImage(const std::string& file, const std::string& folder) {
  mImages[eImage_Normal].LoadImage(file, folder);
}

void YGUIImageButton::SetFocusImage(const std::string& file, const std::string& folder) {
  mImages[eImage_Focus].LoadImage(file, folder);
}

void YGUIImageButton::SetDisableImage(const std::string& file, const std::string& folder) {
  mImages[eImage_Disabled].LoadImage(file, folder);
}

void YGUIImageButton::Update(float dt) {
  YGUIControl::Update(dt);
  // Whether focus came or went since the last update.
  mStateChanged = ((mFocus != 0) != (mLastFocus != 0)) ? 1 : 0;
  mLastFocus = mFocus;
}

void YGUIImageButton::Render(CanvasLayer& canvas, EOrientationStatus orient) {
  if (!mVisible) return;
  const int index = mDisabled ? eImage_Disabled : (mFocus ? eImage_Focus : eImage_Normal);
  mStateChanged = 1;
  YGUIRawImage& image = mImages[index];
  // A picture that wasn't given draws nothing.
  if (!image.mData) return;
  mRenderBuffer = image.GetRenderBuffer(mRenderWidth, mRenderHeight, mScaleType);
  if (!mRenderBuffer) return;
  canvas.Draw_Image_RGBA8888(mRenderLeft, mRenderTop, mRenderWidth, mRenderHeight, mRenderBuffer, mRenderWidth,
                             mRenderHeight, mRenderOpacity / 4096.0f, orient);
}
