#include "RenderSystem/AnimatedModel2D.h"

#include <GLES/gl.h>
#include <assert.h>
#include <math.h>
#include <stddef.h>
#include <string.h>

#include <algorithm>

#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/SpriteInfo.h"

namespace {
const int kTile = SpriteInfo::kTileSize;
// What a tile's far texture coordinates are pulled in by, so that the filter never
// reaches the neighbouring tile. The two differ, and are kept so.
const float kInsetRight = 0.0001001f;
const float kInsetBottom = 0.0010001f;
// A trail runs this long (bits 0x48FFFFE0) before it turns itself off.
const float kTrailTimeLeft = 524287.0f;

float BitsToFloat(uint32_t bits) {
  float value;
  memcpy(&value, &bits, sizeof value);
  return value;
}

TRealColorRGBA Lerp(const TRealColorRGBA& from, const TRealColorRGBA& to, float t) {
  TRealColorRGBA c = {from.r + t * (to.r - from.r), from.g + t * (to.g - from.g), from.b + t * (to.b - from.b),
                      from.a + t * (to.a - from.a)};
  return c;
}

// A channel as a vertex colour byte: x 255, truncated, held within a byte.
uint8_t ColourByte(float channel) { return uint8_t(std::min(255, std::max(0, int(channel * 255.0f)))); }

const TRealColorRGBA kWhite = {1.0f, 1.0f, 1.0f, 1.0f};

void EmptyBox(Math3D::Aabb2D& box) { box = Math3D::Aabb2D(); }

void SetBox(Math3D::Aabb2D& box, float left, float top, float right, float bottom) {
  box.mMinX = left;
  box.mMinY = top;
  box.mMaxX = right;
  box.mMaxY = bottom;
  box.mMirrorMinX = -right;
  box.mMirrorMaxX = -left;
}

// Box `index` of `key` in `set`'s table; empty past the table.
void KeyBox(const AnimationSet& set, const AnimationKeyFrame& key, eKeyFrameBoxIndex index, Math3D::Aabb2D& box) {
  if (int(index) < 0 || index >= eKeyFrameBox_Num || set.mBoxes == NULL ||
      key.mBoxIndex[index] >= unsigned(set.mBoxCount)) {
    EmptyBox(box);
    return;
  }
  const AnimationBox& b = set.mBoxes[key.mBoxIndex[index]];
  SetBox(box, b.mLeft, b.mTop, b.mRight, b.mBottom);
}

// `local` moved to `position`, its mirror taken under `flip`.
void PlaceBox(const Math3D::Aabb2D& local, const Math3D::vec3& position, int flip, Math3D::Aabb2D& box) {
  const float left = flip ? local.mMirrorMinX : local.mMinX;
  const float right = flip ? local.mMirrorMaxX : local.mMaxX;
  SetBox(box, position.x + left, position.y + local.mMinY, position.x + right, position.y + local.mMaxY);
}
}  // namespace

// ---- loading and playing, shared

AnimatedModel2DCore::AnimatedModel2DCore()
    : mSpriteData(NULL), mSpriteID(0), mController(NULL), mHostAnimationSet(NULL), mHandler(NULL) {}

AnimatedModel2DCore::~AnimatedModel2DCore() { release(); }

int AnimatedModel2DCore::load(const char* name, unsigned, unsigned) {
  AnimatedSpriteDataManager& manager = AnimatedSpriteDataManager::sInstance();
  const unsigned id = manager.add(name);
  if (id == 0) return 0;
  release();
  mSpriteID = id;
  mSpriteData = static_cast<AnimatedSpriteData*>(manager.mItems[id]);
  mHostAnimationSet = mSpriteData->mAnimationSet;
  mController = AnimationController::CreateAnimationController(mHostAnimationSet);
  mController->mHandler = mHandler;
  mFrame = AnimatedModel2DFrame();
  static_cast<AnimationKeyFrame&>(mFrame) = mController->mCurrent;
  return 1;
}

int AnimatedModel2DCore::loadFromID(unsigned id, unsigned a, unsigned b) {
  const char* name = AnimatedSpriteDataManager::sInstance().getSpriteNameByID(int(id));
  return name == NULL ? 0 : load(name, a, b);
}

void AnimatedModel2DCore::release() {
  if (mSpriteID != 0) AnimatedSpriteDataManager::sInstance().del(mSpriteID);
  mSpriteID = 0;
  mSpriteData = NULL;
  mHostAnimationSet = NULL;
  delete mController;
  mController = NULL;
}

void AnimatedModel2DCore::setAnimationPlaybackEventHandler(AnimationPlaybackEventHandler* handler) {
  mHandler = handler;
  if (mController != NULL) mController->mHandler = handler;
}

void AnimatedModel2DCore::stop() {
  if (mController != NULL) mController->Stop();
}

int AnimatedModel2DCore::isPlaying() const {
  return mController != NULL && mController->mTrack.mEnable && mController->mState == AnimationController::eState_Playing;
}

int AnimatedModel2DCore::isAnimationExists(unsigned index) const {
  return mHostAnimationSet != NULL && index < mHostAnimationSet->mAnimCount;
}

float AnimatedModel2DCore::getActionTime(unsigned index) const {
  return isAnimationExists(index) ? mHostAnimationSet->mAnimations[index].mDuration : 0.0f;
}

int AnimatedModel2DCore::getCurrentAnimationID() const {
  return isPlaying() ? mController->mTrack.mAnimIndex : -1;
}

int AnimatedModel2DCore::CanStart(unsigned index, int restart) const {
  if (mController == NULL) return 0;
  const int current = getCurrentAnimationID();
  if (int(index) == current && restart == 0) return 0;
  if (int(index) < 0 || index >= mHostAnimationSet->mAnimCount) return 0;
  return mHostAnimationSet->mAnimCount != 0;
}

void AnimatedModel2DCore::PlayTrack(unsigned index) {
  const AnimationData& anim = mHostAnimationSet->mAnimations[index];
  AnimationTrack track;
  mController->GetTrackDesc(&track);
  track.mPosition = 0.0f;
  track.mAnimIndex = uint8_t(index);
  track.mEnable = 1;
  track.mDuration = anim.mDuration;
  track.mMode = uint8_t(anim.mPlayMode & 0xFF);
  mController->SetTrackDesc(&track);
  mController->ResetTime();
  mController->mState = AnimationController::eState_Playing;
}

int AnimatedModel2DCore::switchToAction(unsigned index) {
  if (!isAnimationExists(index)) return 0;
  if (int(index) == getCurrentAnimationID()) return 1;
  mController->mTrack.mAnimIndex = uint8_t(index);
  return 1;
}

void AnimatedModel2DCore::AdvanceFrame(float seconds, bool flag) {
  mController->AdvanceTime(seconds, flag);
  static_cast<AnimationKeyFrame&>(mFrame) = mController->mCurrent;
  mFrame.mChanged = mController->mChanged;
  mFrame.mNewKey = mController->mNewKey;
}

Math3D::vec3 AnimatedModel2DCore::FramePosition(const Math3D::vec3& position, int flip) const {
  Math3D::vec3 pos = position;
  pos.x += flip ? -float(mFrame.mOffsetX) : float(mFrame.mOffsetX);
  pos.y += float(mFrame.mOffsetY);
  return pos;
}

// ---- drawing, shared

int AnimatedModel2DCore::display(int frame, int flip, const Math3D::vec3& pos, eImageLayerDefine layer, float,
                                 int ownBatch) {
  return Draw(frame, flip, NULL, pos, layer, ownBatch);
}

int AnimatedModel2DCore::displayWithColor(int frame, int flip, TRealColorRGBA& colour, const Math3D::vec3& pos,
                                          eImageLayerDefine layer, float, int ownBatch) {
  const uint8_t rgba[4] = {ColourByte(colour.r), ColourByte(colour.g), ColourByte(colour.b), ColourByte(colour.a)};
  return Draw(frame, flip, rgba, pos, layer, ownBatch);
}

// The steps of display; `rgba` null for no colours.
int AnimatedModel2DCore::Draw(int frame, int flip, const uint8_t* rgba, const Math3D::vec3& pos,
                              eImageLayerDefine layer, int ownBatch) {
  // 1.
  const SpriteInfo* info = mSpriteData == NULL ? NULL : mSpriteData->GetSpriteInfo(layer, frame);
  if (info == NULL) return 1;
  // 2.
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  if (ownBatch && !render.mInBatch) render.begin(rgba != NULL, 1);
  const float halfWidth = float(info->mWidth / 2);
  const float halfHeight = float(info->mHeight / 2);
  for (int c = 0; c < info->mCellCount; ++c) {
    const SpriteCell& cell = info->mCells[c];
    // 3.
    const GLTexture* page = mSpriteData->GetLayerTexture(layer, cell.mPage);
    if (page == NULL) continue;
    render.swapTexture(page->mTextureID);
    const float w = float(page->mWidth);
    const float h = float(page->mHeight);
    // 4.
    float left = float(cell.mTileColumn * kTile) / w;
    float right = float((cell.mTileColumn + 1) * kTile) / w - kInsetRight;
    const float top = float(cell.mTileRow * kTile) / h;
    const float bottom = float((cell.mTileRow + 1) * kTile) / h - kInsetBottom;
    // 5.
    float x;
    if (flip) {
      x = pos.x - float(cell.mCellColumn * kTile) + halfWidth - float(kTile);
      std::swap(left, right);
    } else {
      x = pos.x - halfWidth + float(cell.mCellColumn * kTile);
    }
    const float y = pos.y - halfHeight + float(cell.mCellRow * kTile);
    // 6.
    const float corners[4][4] = {{x, y, left, top},
                                 {x, y + kTile, left, bottom},
                                 {x + kTile, y + kTile, right, bottom},
                                 {x + kTile, y, right, top}};
    AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[render.mCurrentBatch];
    for (const float* v : corners) {
      *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(v[0]);
      *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(v[1]);
      *batch.mTexCoordPtr++ = GLfixed(v[2] * 65536.0f);
      *batch.mTexCoordPtr++ = GLfixed(v[3] * 65536.0f);
      if (rgba != NULL) {
        for (int i = 0; i < 4; ++i) *batch.mColorPtr++ = rgba[i];
      }
    }
  }
  // 7.
  if (ownBatch) render.end();
  return 1;
}

// ---- AnimatedModel2D

AnimatedModel2DTrailEffectInfo::AnimatedModel2DTrailEffectInfo()
    : mColorFrom(kWhite),
      mColorTo(kWhite),
      mSpacing(BitsToFloat(0x3D088880)),  // 0.0333333
      mSpacingFactor(1.0f),
      mSpacingAddend(0.0f),
      mLength(0.5f) {}

AnimatedModel2D::AnimatedModel2D()
    : mFlip(0),
      mDirection(kStartDirection),
      mDefaultDirection(kStartDirection),
      mBlendFrom(kWhite),
      mBlendTo(kWhite),
      mBlendColor(kWhite),
      mBlendPeriod(0.0f),
      mBlendDuration(0.0f),
      mBlendElapsed(0.0f),
      mBlendMode(0),
      mBlendParity(0),
      mBlendOn(0),
      mTrailClock(0.0f),
      mTrailTimeLeft(kTrailTimeLeft),
      mTrailOn(0),
      mEadgeInfo(),
      mEadgeAngle(0.0f),
      mEadgePulse(),
      mEadgeOn(0) {
  mBoxDelta.x = mBoxDelta.y = 0.0f;
  mPosition.x = mPosition.y = mPosition.z = 0.0f;
  EmptyBox(mLastLocalBox);
  ResetTrail();
}

AnimatedModel2D::~AnimatedModel2D() {}

void AnimatedModel2D::reset(int resetTime) {
  if (resetTime && mController != NULL) mController->ResetTime();
  mBlendOn = 0;
  mEadgeOn = 0;
  mTrailOn = 0;
  mTrailClock = 0.0f;
  mTrailTimeLeft = kTrailTimeLeft;
  ResetTrail();
}

int AnimatedModel2D::startAnimation(unsigned index, int restart) {
  if (!CanStart(index, restart)) return 0;
  if (int(index) != getCurrentAnimationID()) mController->Stop();
  getCurrentLocalBoxNoAlign(mLastLocalBox, eKeyFrameBox_Align);
  PlayTrack(index);
  return 1;
}

int AnimatedModel2D::startAnimationByName(const char* name) {
  if (mHostAnimationSet == NULL) return 0;
  const int index = mHostAnimationSet->GetAnimIndexByName(name);
  return index < 0 ? 0 : startAnimation(unsigned(index), 0);
}

void AnimatedModel2D::changeDirection(eDirection direction) {
  mDirection = direction;
  mFlip = mDirection != mDefaultDirection ? 1 : 0;
}

void AnimatedModel2D::update(float seconds, bool flag) {
  if (mController == NULL) return;
  AdvanceFrame(seconds, flag);
  Math3D::Aabb2D align;
  getCurrentLocalBoxNoAlign(align, eKeyFrameBox_Align);
  mBoxDelta.x = align.mMinX - mLastLocalBox.mMinX;
  mBoxDelta.y = align.mMinY - mLastLocalBox.mMinY;
  if (mBlendOn) UpdateBlend(seconds);
  if (mTrailOn) UpdateTrail(seconds);
  if (mEadgeOn && mEadgeInfo.mPulsePeriod > 0.0f) UpdatePulse(seconds);
}

// ---- boxes

void AnimatedModel2D::getCurrentLocalBoxNoAlign(Math3D::Aabb2D& box, eKeyFrameBoxIndex index) {
  assert(mHostAnimationSet != NULL);
  KeyBox(*mHostAnimationSet, mFrame, index, box);
}

void AnimatedModel2D::getCurrentBoxNoAlign(Math3D::Aabb2D& box, eKeyFrameBoxIndex index) {
  Math3D::Aabb2D local;
  getCurrentLocalBoxNoAlign(local, index);
  PlaceBox(local, mPosition, mFlip, box);
}

int AnimatedModel2D::getFrameBoxNoAlign(Math3D::Aabb2D& box, unsigned anim, unsigned key, eKeyFrameBoxIndex index) {
  const AnimationKeyFrame* frame = mController == NULL ? NULL : mController->GetKeyFrame(anim, key);
  if (frame == NULL) {
    EmptyBox(box);
    return 0;
  }
  assert(mHostAnimationSet != NULL);
  KeyBox(*mHostAnimationSet, *frame, index, box);
  return 1;
}

void AnimatedModel2D::getCurrentCollisionBoxNoAlign(Math3D::Aabb2D& box) {
  getCurrentLocalBoxNoAlign(box, eKeyFrameBox_Collision);
}

void AnimatedModel2D::getCurrentLocalCollisionBox(Math3D::Aabb2D& box) {
  Math3D::Aabb2D stored;
  getCurrentLocalBoxNoAlign(stored, eKeyFrameBox_Collision);
  SetBox(box, stored.mMinX - mBoxDelta.x, stored.mMinY - mBoxDelta.y, stored.mMaxX - mBoxDelta.x,
         stored.mMaxY - mBoxDelta.y);
}

void AnimatedModel2D::getCurrentCollisionBox(Math3D::Aabb2D& box) {
  Math3D::Aabb2D local;
  getCurrentLocalCollisionBox(local);
  PlaceBox(local, mPosition, mFlip, box);
}

int AnimatedModel2D::getCurrentRenderRect(Math3D::Aabb2D& box) {
  const SpriteInfo* info = mSpriteData == NULL ? NULL : mSpriteData->GetSpriteInfo(eImageLayer_Base, mFrame.mSpriteIndex);
  if (info == NULL) {
    EmptyBox(box);
    return 0;
  }
  const Math3D::vec3 pos = FramePosition(mPosition, mFlip);
  const float left = pos.x - float(info->mWidth / 2);
  const float top = pos.y - float(info->mHeight / 2);
  SetBox(box, left, top, left + info->mWidth, top + info->mHeight);
  return 1;
}

int AnimatedModel2D::layerExistNow(eImageLayerDefine layer) const {
  return mSpriteData != NULL && mSpriteData->GetSpriteInfo(layer, mFrame.mSpriteIndex) != NULL;
}

// ---- drawing

void AnimatedModel2D::renderWithOutEffect(int ownBatch) {
  display(mFrame.mSpriteIndex, mFlip, FramePosition(mPosition, mFlip), eImageLayer_Base, 0.0f, ownBatch);
}

void AnimatedModel2D::renderFrame(eImageLayerDefine layer, int anim, int key, int ownBatch) {
  const AnimationKeyFrame* frame = mController == NULL ? NULL : mController->GetKeyFrame(unsigned(anim), unsigned(key));
  if (frame == NULL) return;
  Math3D::vec3 pos = mPosition;
  pos.x += mFlip ? -float(frame->mOffsetX) : float(frame->mOffsetX);
  pos.y += float(frame->mOffsetY);
  display(frame->mSpriteIndex, mFlip, pos, layer, 0.0f, ownBatch);
}

void AnimatedModel2D::render(int ownBatch) {
  if (mTrailOn) renderTrailEffect();
  if (mEadgeOn) renderEadgeEffect();
  if (mBlendOn) {
    TRealColorRGBA colour = mBlendDuration > 0.0f && mBlendElapsed >= mBlendDuration ? kWhite : mBlendColor;
    displayWithColor(mFrame.mSpriteIndex, mFlip, colour, FramePosition(mPosition, mFlip), eImageLayer_Base, 0.0f,
                     ownBatch);
  }
  if (!mTrailOn && !mEadgeOn && !mBlendOn) renderWithOutEffect(ownBatch);
}

void AnimatedModel2D::renderBlendEfffect() {
  displayWithColor(mFrame.mSpriteIndex, mFlip, mBlendColor, FramePosition(mPosition, mFlip), eImageLayer_Base, 0.0f,
                   1);
}

// ---- the blend

void AnimatedModel2D::setBlendEffect(const AnimatedModel2DBlendEffectInfo& info) {
  mBlendFrom = info.mFrom;
  mBlendTo = info.mTo;
  mBlendColor = info.mFrom;
  mBlendPeriod = info.mPeriod;
  mBlendDuration = info.mDuration;
  mBlendMode = info.mMode;
  mBlendParity = 0;
  mBlendElapsed = 0.0f;
  mBlendOn = 1;
}

void AnimatedModel2D::UpdateBlend(float seconds) {
  mBlendElapsed += seconds;
  if (mBlendDuration > 0.0f && mBlendElapsed > mBlendDuration) mBlendElapsed = mBlendDuration;
  // A period of 0 or less has no ramp: the colour is there at once.
  if (mBlendPeriod <= 0.0f) {
    mBlendColor = mBlendTo;
    return;
  }
  switch (mBlendMode) {
    case 0:
      mBlendColor = Lerp(mBlendFrom, mBlendTo, mBlendElapsed / mBlendPeriod);
      break;
    case 1:
      mBlendColor = Lerp(mBlendFrom, mBlendTo, fmodf(mBlendElapsed, mBlendPeriod) / mBlendPeriod);
      break;
    case 2: {
      const float t = fmodf(mBlendElapsed, mBlendPeriod) / mBlendPeriod;
      mBlendParity = int(mBlendElapsed / mBlendPeriod) & 1;
      mBlendColor = mBlendParity ? Lerp(mBlendTo, mBlendFrom, t) : Lerp(mBlendFrom, mBlendTo, t);
      break;
    }
    default:
      break;
  }
}

// ---- the trail

void AnimatedModel2D::ResetTrail() {
  mTrailFrames.clear();
  TrailFrameInfo none;
  memset(&none, 0, sizeof none);
  mTrailFrames.assign(kTrailFrames, none);
}

void AnimatedModel2D::setTrailEffect(const AnimatedModel2DTrailEffectInfo& info) {
  ResetTrail();
  mTrailInfo = info;
  mTrailClock = 0.0f;
  mTrailTimeLeft = kTrailTimeLeft;
  mTrailOn = 1;
}

void AnimatedModel2D::UpdateTrail(float seconds) {
  mTrailClock += seconds;
  mTrailTimeLeft -= seconds;
  if (mTrailTimeLeft <= 0.0f) {
    mTrailOn = 0;
    mTrailClock = 0.0f;
    mTrailTimeLeft = kTrailTimeLeft;
  }
}

void AnimatedModel2D::renderTrailEffect() {
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  render.begin(1, 1);
  const float length = mTrailInfo.mLength;
  float cursor = mTrailClock - length;
  float distance = 0.0f;
  float spacing = mTrailInfo.mSpacing;
  for (std::list<TrailFrameInfo>::iterator it = mTrailFrames.begin(); it != mTrailFrames.end(); ++it) {
    const TrailFrameInfo& past = *it;
    if (!(past.mTime > 0.0f && past.mTime >= cursor)) continue;
    cursor += spacing;
    distance += spacing;
    const float t = length > 0.0f ? std::min(1.0f, distance / length) : 1.0f;
    TRealColorRGBA colour = Lerp(mTrailInfo.mColorFrom, mTrailInfo.mColorTo, t);
    displayWithColor(past.mSpriteIndex, past.mFlip, colour, past.mPosition, eImageLayer_Base, 0.0f, 0);
    spacing = spacing * mTrailInfo.mSpacingFactor + mTrailInfo.mSpacingAddend;
  }
  render.end();
  mTrailFrames.pop_front();
  TrailFrameInfo now;
  now.mPosition = FramePosition(mPosition, mFlip);
  now.mSpriteIndex = int16_t(mFrame.mSpriteIndex);
  now.mFlip = mFlip;
  now.mTime = mTrailClock;
  mTrailFrames.push_back(now);
}

// ---- the edge

void AnimatedModel2D::setEadgeEffect(const AnimatedModel2DEadgeEffectInfo& info) {
  mEadgeInfo = info;
  mEadgePulse.mValue = 0.0f;
  mEadgePulse.mFalling = 0;
  mEadgeOn = 1;
}

void AnimatedModel2D::UpdatePulse(float seconds) {
  const float step = seconds / mEadgeInfo.mPulsePeriod;
  if (mEadgePulse.mFalling) {
    mEadgePulse.mValue -= step;
    if (mEadgePulse.mValue <= 0.0f) {
      mEadgePulse.mValue = 0.0f;
      mEadgePulse.mFalling = 0;
    }
  } else {
    mEadgePulse.mValue += step;
    if (mEadgePulse.mValue >= 1.0f) {
      mEadgePulse.mValue = 1.0f;
      mEadgePulse.mFalling = 1;
    }
  }
}

void AnimatedModel2D::renderEadgeEffect() {
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  const Math3D::vec3 centre = FramePosition(mPosition, mFlip);
  const int frame = mFrame.mSpriteIndex;
  // 1.
  RenderStateStack saved;
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_ADD);  // 260: the colour adds to the tile
  render.begin(1, 1);
  // 2. The step falls by a fixed share of where it started, so that a radius of r
  // makes r passes, the glow brightening toward the frame.
  const float r = mEadgeInfo.mRadius;
  float step = mEadgeInfo.mPulsePeriod > 0.0f ? r * mEadgePulse.mValue : r;
  float fall = r > 0.0f ? step / r : 0.0f;
  bool onePass = false;
  if (step > 0.0f && step < 1.0f) {
    step = 1.0f;
    fall = 1.0f / r;
    onePass = true;
  }
  TRealColorRGBA colour = mEadgeInfo.mColor;
  colour.a = 0.1f;
  const float grow = r > 0.0f ? mEadgeInfo.mColor.a * mEadgeInfo.mFade / r : 0.0f;
  const float c = cosf(mEadgeAngle), s = sinf(mEadgeAngle);
  // 3.
  while (step > 0.0f) {
    const float shifts[6][2] = {{-step, 0.0f}, {step, 0.0f}, {0.0f, -step}, {0.0f, step}, {-step * c, -step * s},
                                {step * c, step * s}};
    for (const float* shift : shifts) {
      Math3D::vec3 at = centre;
      at.x += shift[0];
      at.y += shift[1];
      displayWithColor(frame, mFlip, colour, at, eImageLayer_Base, 0.0f, 0);
    }
    colour.a += grow;
    step -= fall;
    if (onePass) break;
  }
  // 4.
  render.end();
  mEadgeAngle += mEadgeInfo.mSpin;
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);  // 8448
  TRealColorRGBA white = kWhite;
  displayWithColor(frame, mFlip, white, centre, eImageLayer_Base, 0.0f, 1);
}

// ---- AnimatedModel2DLit

AnimatedModel2DLit::AnimatedModel2DLit() { mPosition.x = mPosition.y = mPosition.z = 0.0f; }

int AnimatedModel2DLit::startAnimation(unsigned index, int restart) {
  if (!CanStart(index, restart)) return 0;
  if (int(index) != getCurrentAnimationID()) mController->Stop();
  PlayTrack(index);
  return 1;
}

void AnimatedModel2DLit::update(float seconds, bool flag) {
  if (mController != NULL) AdvanceFrame(seconds, flag);
}

void AnimatedModel2DLit::render(eImageLayerDefine layer, int flip, int ownBatch) {
  display(mFrame.mSpriteIndex, flip, FramePosition(mPosition, flip), layer, 0.0f, ownBatch);
}
