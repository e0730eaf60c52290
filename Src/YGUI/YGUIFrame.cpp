#include "YGUI/YGUIFrame.h"

#include "YGUI/YGUIAnimation.h"

YGUIFrame::YGUIFrame()
    : mAnimation(0),
      mAnimeAble(0),
      mVisible(1),
      mPositionX(0),
      mPositionY(0),
      mWidth(0),
      mHeight(0),
      mDirty(true) {}

void YGUIFrame::Destroy() {
  if (mAnimation) {
    mAnimation->Destroy();
    delete mAnimation;
  }
  mAnimation = 0;
}

void YGUIFrame::Update(float dt) {
  if (mAnimeAble && mAnimation) mAnimation->Update(dt);
}

bool YGUIFrame::IsAnimeFinished() const {
  if (!mAnimeAble || !mAnimation) return true;
  return mAnimation->IsAnimeFinished();
}

int YGUIFrame::PlayAnime(const std::string& name) {
  if (!mAnimeAble || !mAnimation) return 0;
  return mAnimation->PlayAnime(name);
}

void YGUIFrame::StopAnime() {
  if (mAnimeAble && mAnimation) mAnimation->StopAnime();
}
