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
  const Screen& screen = WalkerManager::sInstance().screen();
  mWidth = screen.width();
  mHeight = screen.height();
  mWalker.mPosition = {mWidth / 2.0f, mHeight - 122.0f, 0.0f};
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

namespace {
float Clamp(float value, float low, float high) { return value < low ? low : value > high ? high : value; }
}  // namespace

void FieldScene::WalkTo(float x, float y) {
  if (!mLoaded) return;
  mTargetX = Clamp(x, kHalfWidth, mWidth - kHalfWidth);
  mTargetY = Clamp(y - kFeet, kHalfHeight, mHeight - kFeet);
  if (mTargetX != mWalker.mPosition.x)
    mWalker.changeDirection(mTargetX < mWalker.mPosition.x ? eFacing_Left : eFacing_Right);
  if (!mWalking) mWalker.startAnimationByName("walk");
  mWalking = true;
}

void FieldScene::WalkBy(float dx, float dy) { WalkTo(x() + dx, y() + kFeet + dy); }

// Turned between flat and upright, the walker keeps its place on the field as
// far as the new screen has room for it, and so does where it is going.
void FieldScene::FitInto(int width, int height) {
  mWidth = width;
  mHeight = height;
  mWalker.mPosition.x = Clamp(mWalker.mPosition.x, kHalfWidth, width - kHalfWidth);
  mWalker.mPosition.y = Clamp(mWalker.mPosition.y, kHalfHeight, height - kFeet);
  if (mWalking) WalkTo(mTargetX, mTargetY + kFeet);
}

void FieldScene::Update(float dt) {
  if (!mLoaded) return;
  const Screen& screen = WalkerManager::sInstance().screen();
  if (screen.width() != mWidth) FitInto(screen.width(), screen.height());
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
  // The field draws first: everything after it is in logical coordinates too.
  const Screen& screen = WalkerManager::sInstance().screen();
  screen.Apply();
  glClearColorx(0x4000, 0x8000, 0x4000, 1 << 16);
  glClear(GL_COLOR_BUFFER_BIT);
  if (mBackground != nullptr) {
    // The field is 240 x 136 texels at the top left of its texture. It covers
    // the screen at the least whole scale that does (twice the size held flat,
    // four times upright), seen from its bottom right corner, where the grass
    // and the sun are.
    const int fieldWidth = 240, fieldHeight = 136, width = screen.width(), height = screen.height();
    const int scaleX = (width + fieldWidth - 1) / fieldWidth, scaleY = (height + fieldHeight - 1) / fieldHeight;
    const int scale = scaleX > scaleY ? scaleX : scaleY;
    const float textureWidth = float(mBackground->mWidth), textureHeight = float(mBackground->mHeight);
    DrawTexture(mBackground->mTextureID, (fieldWidth - width / scale) / textureWidth,
                (fieldHeight - height / scale) / textureHeight, fieldWidth / textureWidth, fieldHeight / textureHeight,
                0, 0, width, height);
  }
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
