#include "YGUI/YGUILabel.h"

#include "Canvas/CanvasLayer.h"
#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeFrame.h"
#include "YGUI/YGUIGrid.h"

YGUILabel::YGUILabel(YGUIGrid& grid) : YGUIControl(grid) {}

void YGUILabel::Initialize() {
  mEnabled = 0;
  mAnimeAble = 1;
  mVisible = 1;
}

void YGUILabel::Render(CanvasLayer& canvas, int orient) {
  int x = mGrid.mX + mPositionX + 10;
  int y = mGrid.mY + mPositionY + 15;
  if (mAnimeAble && mAnimation) {
    const YGUIAnimeFrame* frame = mAnimation->GetCurrentFrame();
    if (frame) {
      x += frame->mX;
      y += frame->mY;
    }
  }
  canvas.DrawString(x, y, mContent, orient);
}
