#include "MicrophoneStateTree/MicroPhoneOperateScene/RawImageProgressBar.h"

#include <new>

#include "Base/XAssert.h"
#include "Canvas/CanvasLayer.h"
#include "YGUI/YGUITypes.h"

namespace {
const char* const kImageFolder = "res/UI/UITexture/";

void ReleaseImage(RawImageProgressBar::ProgressComponent& component) {
  if (component.mImage == 0) return;
  component.mImage->Release();
  delete component.mImage;
  component.mImage = 0;
}

void Draw(CanvasLayer& layer, const RawImageProgressBar::ProgressComponent& component,
          EOrientationStatus orientation) {
  const YGUIRawImage& image = *component.mImage;
  layer.Draw_Image_RGBA8888(component.mX, component.mY, component.mWidth, component.mHeight, image.mData,
                            image.mWidth, image.mHeight, 1.0f, orientation);
}
}  // namespace

RawImageProgressBar::RawImageProgressBar() : mProgress(0), mShowCursor(1) {}

void RawImageProgressBar::Initialize() {
  YGUIRawImage* NewBaseImage = new (std::nothrow) YGUIRawImage();
  XASSERT(NewBaseImage);
  NewBaseImage->LoadImage("mic_time_blue", kImageFolder);
  mBase.mImage = NewBaseImage;

  YGUIRawImage* NewMaskImage = new (std::nothrow) YGUIRawImage();
  XASSERT(NewMaskImage);
  NewMaskImage->LoadImage("mic_time_yellow", kImageFolder);
  mMask.mImage = NewMaskImage;

  YGUIRawImage* NewCursorImage = new (std::nothrow) YGUIRawImage();
  XASSERT(NewCursorImage);
  NewCursorImage->LoadImage("mic_time_glide_button", kImageFolder);
  mCursor.mImage = NewCursorImage;
}

void RawImageProgressBar::Destroy() {
  ReleaseImage(mBase);
  ReleaseImage(mMask);
  ReleaseImage(mCursor);
}

// The cursor stands 6 pixels above the bar.
void RawImageProgressBar::SetPosition(int x, int y) {
  mBase.mX = x;
  mBase.mY = y;
  mMask.mX = x;
  mMask.mY = y;
  mCursor.mX = x;
  mCursor.mY = y - 6;
  SyncComponentPosition();
}

void RawImageProgressBar::GetPosition(int& x, int& y) {
  x = mBase.mX;
  y = mBase.mY;
}

void RawImageProgressBar::Update(float /*dt*/) { SyncComponentPosition(); }

// The mask is drawn from its left edge with a clipped width, nothing scaled; a
// 5-pixel margin stays at each end of the base.
void RawImageProgressBar::SyncComponentPosition() {
  mBase.mWidth = mBase.mImage->mWidth;
  mBase.mHeight = mBase.mImage->mHeight;
  const int fill = (int)((float)(mBase.mWidth - 10) * mProgress) + 5;
  mMask.mWidth = fill;
  mMask.mHeight = mMask.mImage->mHeight;
  mCursor.mX = mMask.mX + fill - 5;
  mCursor.mWidth = mCursor.mImage->mWidth;
  mCursor.mHeight = mCursor.mImage->mHeight;
}

int RawImageProgressBar::GetLength() { return mBase.mWidth > mBase.mHeight ? mBase.mWidth : mBase.mHeight; }

bool RawImageProgressBar::IsOnProgressBar(int x, int y) {
  return mBase.mX <= x && x <= mBase.mX + mBase.mWidth && mBase.mY <= y && y <= mBase.mY + mBase.mHeight;
}

// The upper bounds are the cursor's size with no position added; nothing in the
// title calls this.
bool RawImageProgressBar::IsOnCursor(int x, int y) {
  return mCursor.mX <= x && x <= mCursor.mWidth && mCursor.mY <= y && y <= mCursor.mHeight;
}

// The layer applies the orientation; the bar has none of its own.
void RawImageProgressBar::RenderToLayer(CanvasLayer& layer, EOrientationStatus orientation) {
  Draw(layer, mBase, orientation);
  Draw(layer, mMask, orientation);
  if (mShowCursor) Draw(layer, mCursor, orientation);
}
