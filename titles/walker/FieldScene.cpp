#include "FieldScene.h"

#include <GLES/gl.h>
#include <math.h>

#include <vector>

#include "Draw.h"
#include "External/waf/wafexp.h"
#include "RenderSystem/AnimationTrack.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/TGAFile.h"
#include "Sound/AudioDevice.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "WalkerManager.h"

namespace walker {

namespace {
const int kFootstepEvent = 1;  // the walk animation's event on each foot that lands
}  // namespace

void FieldScene::EnterScene() {
  if (!ZvWidgetInstance::GetIsUseOgl()) return;
  mBackground = LoadBackground();
  mLoaded = mWalker.load("walker", 0, 0) != 0 && mMarker.load("marker", 0, 0) != 0;
  mWalker.setAnimationPlaybackEventHandler(this);
  mWalker.startAnimationByName("idle");
  mWalker.mPosition = {240.0f, 150.0f, 0.0f};
  mMarker.startAnimation(0, 0);
  // A first key for the first frame drawn, which comes before the field's first update.
  mWalker.update(0.0f, false);
  mMarker.update(0.0f, false);
}

// The background is a TGA file inside the title's archive: read whole through
// the archive, decoded from memory, handed to the texture manager.
GLTexture* FieldScene::LoadBackground() {
  waf_archive* archive = WalkerManager::sInstance().archive();
  waf_file* file = archive != nullptr ? waf_open(archive, "Background.tga") : nullptr;
  if (file == nullptr) return nullptr;
  std::vector<unsigned char> bytes(waf_size(file) > 0 ? waf_size(file) : 0);
  const int read = waf_read(file, bytes.data(), int(bytes.size()));
  waf_close(file);
  BMPData image = {};
  if (read != int(bytes.size()) || LoadTGAFromMemory(bytes.data(), unsigned(bytes.size()), &image) != 0) {
    UnloadBMPData(&image);
    return nullptr;
  }
  std::string name = "walker/Background";
  GLTexture* texture = gxGetTextureManager()->LoadTexture(image.pixels, unsigned(image.width), unsigned(image.height),
                                                          unsigned(image.bitsPerPixel), name, nullptr);
  UnloadBMPData(&image);
  return texture;
}

void FieldScene::ExitScene() {
  mWalker.release();
  mMarker.release();
  if (mBackground != nullptr) gxGetTextureManager()->ReleaseTexture(mBackground);
  mBackground = nullptr;
}

void FieldScene::WalkTo(float x, float y) {
  if (!mLoaded) return;
  mTargetX = x;
  mTargetY = y - kFeet;
  if (mTargetX != mWalker.mPosition.x)
    mWalker.changeDirection(mTargetX < mWalker.mPosition.x ? eFacing_Left : eFacing_Right);
  if (!mWalking) mWalker.startAnimationByName("walk");
  mWalking = true;
}

void FieldScene::WalkBy(float dx, float dy) { WalkTo(x() + dx, y() + kFeet + dy); }

void FieldScene::Update(float dt) {
  if (!mLoaded) return;
  if (mWalking) {
    const float dx = mTargetX - mWalker.mPosition.x, dy = mTargetY - mWalker.mPosition.y;
    const float distance = sqrtf(dx * dx + dy * dy), step = kSpeed * dt;
    if (distance <= step) {
      mWalker.mPosition.x = mTargetX;
      mWalker.mPosition.y = mTargetY;
      mWalking = false;
      mWalker.startAnimationByName("idle");
    } else {
      mWalker.mPosition.x += dx / distance * step;
      mWalker.mPosition.y += dy / distance * step;
    }
  }
  mWalker.update(dt, false);
  mMarker.update(dt, false);
}

void FieldScene::Render() {
  if (!ZvWidgetInstance::GetIsUseOgl()) return;
  glClearColorx(0x4000, 0x8000, 0x4000, 1 << 16);
  glClear(GL_COLOR_BUFFER_BIT);
  // The field is 240 x 136 texels at the top left of its texture, drawn twice the size.
  if (mBackground != nullptr)
    DrawTexture(mBackground->mTextureID, 240.0f / mBackground->mWidth, 136.0f / mBackground->mHeight, 0, 0, 480, 272);
  if (!mLoaded) return;
  if (mWalking) {
    mMarker.mPosition = {mTargetX, mTargetY + kFeet, 0.0f};
    mMarker.render(eImageLayer_Base, 0, 1);
  }
  mWalker.render(1);
}

// Called inside the walker's update.
void FieldScene::OnAnimationPlaybackEvent(int code, AnimationTrack* track) {
  if (code != eEvent_KeyEvent || track->mEvent != kFootstepEvent) return;
  ++mSteps;
  WalkerManager::sInstance().audio().playSoundCue("SFX_STEP");
}

void FieldScene::SetEffect(EEffect effect, bool on) {
  switch (effect) {
    case eEffect_Blend:
      if (on) {
        // White to a warm red and back, every second, for as long as it is on.
        const AnimatedModel2DBlendEffectInfo blend = {{1, 1, 1, 1}, {1, 0.3f, 0.3f, 1}, 1.0f, 1e9f, 2};
        mWalker.setBlendEffect(blend);
      }
      mWalker.mBlendOn = on;
      break;
    case eEffect_Trail:
      if (on) {
        AnimatedModel2DTrailEffectInfo trail;
        trail.mColorFrom = {0.3f, 0.5f, 1.0f, 0.0f};
        trail.mColorTo = {0.6f, 0.8f, 1.0f, 0.7f};
        trail.mSpacing = 0.05f;
        trail.mLength = 0.5f;
        mWalker.setTrailEffect(trail);
      }
      mWalker.mTrailOn = on;
      break;
    case eEffect_Glow:
      if (on) {
        const AnimatedModel2DEadgeEffectInfo glow = {{1.0f, 0.9f, 0.2f, 0.8f}, 3.0f, 1.0f, 0.2f, 1.0f};
        mWalker.setEadgeEffect(glow);
      }
      mWalker.mEadgeOn = on;
      break;
    default: break;
  }
}

bool FieldScene::IsEffectOn(EEffect effect) const {
  switch (effect) {
    case eEffect_Blend: return mWalker.mBlendOn != 0;
    case eEffect_Trail: return mWalker.mTrailOn != 0;
    case eEffect_Glow: return mWalker.mEadgeOn != 0;
    default: return false;
  }
}

}  // namespace walker
