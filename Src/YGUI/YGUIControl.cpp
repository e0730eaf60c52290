#include "YGUI/YGUIControl.h"

#include "Base/Math3D.h"
#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIGrid.h"

YGUIControl::YGUIControl(YGUIGrid& grid)
    : mId(-1),
      mFocus(0),
      mEnabled(0),
      mDisabled(0),
      mGrid(grid),
      mRenderWidth(mWidth),
      mRenderHeight(mHeight),
      mRenderTop(grid.mY + mPositionY),
      mRenderLeft(grid.mX + mPositionX),
      mRenderOpacity(4096),
      mRenderChanged(0) {
  mDirtyRect = Rect2D<int>(grid.mX + mPositionX, grid.mY + mPositionY, grid.mX + mPositionX + mWidth,
                           grid.mY + mPositionY + mHeight);
}

void YGUIControl::Update(float dt) {
  YGUIFrame::Update(dt);
  if (mAnimeAble && mAnimation) {
    // The current set stays current after it has finished, so the control keeps
    // its last pose.
    const YGUIAnimeFrame* frame = mAnimation->GetCurrentFrame();
    if (frame) {
      mAnimeFrame.mX = frame->mX;
      mAnimeFrame.mY = frame->mY;
      mAnimeFrame.mScaleX = frame->mScaleX;
      mAnimeFrame.mScaleY = frame->mScaleY;
      mAnimeFrame.mOpacity = frame->mOpacity;
    }
  }
  mRenderChanged = (SetRenderRect() == 1 || mGrid.mForceRedraw) ? 1 : 0;
}

void YGUIControl::Enable() {
  mEnabled = 1;
  mDisabled = 0;
  mRenderChanged = 1;
}

void YGUIControl::Disable() {
  mEnabled = 0;
  mDisabled = 1;
}

void YGUIControl::MarkFocus(int focus) {
  if (mEnabled) mFocus = focus;
}

bool YGUIControl::ContainPoint(int x, int y) const {
  return mVisible && mAnimeFrame.mOpacity && x >= mRenderLeft && x <= mRenderLeft + mRenderWidth &&
         y >= mRenderTop && y <= mRenderTop + mRenderHeight;
}

void YGUIControl::SetPosition(int x, int y) {
  if (x == mPositionX && y == mPositionY) return;
  mPositionX = x;
  mPositionY = y;
  SetRenderRect();
}

void YGUIControl::SetSize(int width, int height) {
  if (width == mWidth && height == mHeight) return;
  mWidth = width;
  mHeight = height;
  mRenderChanged = SetRenderRect();
}

void YGUIControl::SetOffset(int x, int y) {
  if (x == mAnimeFrame.mX && y == mAnimeFrame.mY) return;
  mAnimeFrame.mX = x;
  mAnimeFrame.mY = y;
  mRenderChanged = SetRenderRect();
}

void YGUIControl::ResetOffset() { SetOffset(0, 0); }

int YGUIControl::SetRenderRect() {
  const int oldLeft = mRenderLeft;
  const int oldTop = mRenderTop;
  const int oldWidth = mRenderWidth;
  const int oldHeight = mRenderHeight;

  int baseX = mGrid.mX + mPositionX;
  int baseY = mGrid.mY + mPositionY;
  long long w = mWidth;
  long long h = mHeight;
  const int sx = mGrid.mScaleX;
  const int sy = mGrid.mScaleY;
  if (sx != 4096 || sy != 4096) {
    w = (w * sx + 2048) >> 12;
    h = (h * sy + 2048) >> 12;
    Math3D::vec2 base = {(float)baseX, (float)baseY};
    const Math3D::vec2 scaled = mGrid.GetAfterScalePoint(base);
    baseX = (int)scaled.x;
    baseY = (int)scaled.y;
  }
  mRenderWidth = (int)((w * mAnimeFrame.mScaleX + 2048) >> 12);
  mRenderHeight = (int)((h * mAnimeFrame.mScaleY + 2048) >> 12);
  // A control grows around the point a quarter of the way across and down.
  mRenderLeft = mAnimeFrame.mX - (mRenderWidth >> 2) + baseX + (int)(w >> 2);
  mRenderTop = mAnimeFrame.mY - (mRenderHeight >> 2) + baseY + (int)(h >> 2);

  const int result = (mRenderLeft != oldLeft || mRenderTop != oldTop || mRenderWidth != oldWidth ||
                      mRenderHeight != oldHeight)
                         ? 1
                         : 0;
  if (!result && mRenderOpacity == mAnimeFrame.mOpacity) return 0;

  const int left = mRenderLeft;
  const int top = mRenderTop;
  const int right = left + mRenderWidth;
  const int bottom = top + mRenderHeight;
  const bool outside = (left <= 0 && right <= 0) || (left > kScreenWidth - 1 && right > kScreenWidth - 1) ||
                       (top <= 0 && bottom <= 0) || (top > kScreenHeight - 1 && bottom > kScreenHeight - 1);
  if (!outside) {
    int l = oldLeft < left ? oldLeft : left;
    int t = oldTop < top ? oldTop : top;
    int r = oldLeft + oldWidth > right ? oldLeft + oldWidth : right;
    int b = oldTop + oldHeight > bottom ? oldTop + oldHeight : bottom;
    if (l < 0) l = 0;
    if (t < 0) t = 0;
    if (r > kScreenWidth) r = kScreenWidth;
    if (b > kScreenHeight) b = kScreenHeight;
    mDirtyRect = Rect2D<int>(l, t, r, b);
    mDirty = true;
  }
  mRenderOpacity = mAnimeFrame.mOpacity;
  return result;
}

int YGUIControl::DealMessage(const YGUIMessage& message) {
  if (!mVisible || message.mType != 0) return 0;
  if (mAnimation) {
    const YGUIAnimeFrame* frame = mAnimation->GetCurrentFrame();
    if (frame && frame->mOpacity == 0) return 0;
  }
  const int x = message.mX;
  const int y = message.mY;
  // A press is taken where the control is seen; release and drag where the
  // layout put it.
  const bool inFrame = x >= mPositionX && x <= mPositionX + mWidth && y >= mPositionY && y <= mPositionY + mHeight;
  switch (message.mEvent) {
    case YGUIMessage::eEvent_StylusDown:
      if (!(x >= mRenderLeft && x <= mRenderLeft + mRenderWidth && y >= mRenderTop &&
            y <= mRenderTop + mRenderHeight) ||
          !mEnabled)
        return 0;
      mGrid.RequestFocus(this);
      mFocus = 1;
      mGrid.NotifyMsgIsHandled(*this);
      return 1;
    case YGUIMessage::eEvent_StylusUp: {
      if (!inFrame) return 0;
      const int hadFocus = mFocus;
      if (mFocus) mGrid.NotifyMsgIsHandled(*this);
      if (!mEnabled) return hadFocus ? 1 : 0;
      mFocus = 0;
      return 1;
    }
    case YGUIMessage::eEvent_StylusMove:
      if (!inFrame && mFocus) mFocus = 0;
      break;
    case YGUIMessage::eEvent_Button:
      break;
    default:
      return 0;
  }

  switch (message.mKey) {
    case YGUIMessage::eKey_Confirm:
      if (!mFocus) return 0;
      mGrid.NotifyMsgIsHandled(*this);
      return 1;
    case YGUIMessage::eKey_Back:
      return 0;
    case YGUIMessage::eKey_Up:
    case YGUIMessage::eKey_Down:
    case YGUIMessage::eKey_Left:
    case YGUIMessage::eKey_Right: {
      if (mGrid.mFocusControl != this) return 0;
      int id = -1;
      if (message.mKey == YGUIMessage::eKey_Up) id = mNavigate.mUp;
      if (message.mKey == YGUIMessage::eKey_Down) id = mNavigate.mDown;
      if (message.mKey == YGUIMessage::eKey_Left) id = mNavigate.mLeft;
      if (message.mKey == YGUIMessage::eKey_Right) id = mNavigate.mRight;
      if (id == -1) return 0;
      mGrid.FocusOnControlById(id);
      mGrid.NotifyMsgIsHandled(*this);
      return 1;
    }
    default:
      return 0;
  }
}
