#ifndef SRC_RENDERSYSTEM_ANIMATEDMODEL2D_H
#define SRC_RENDERSYSTEM_ANIMATEDMODEL2D_H
// A sprite on the screen: a shared asset of AnimatedSpriteDataManager played by
// its own AnimationController, at a position and facing a direction, drawn tile
// by tile through the batch renderer. AnimatedModel2D adds three effects (a colour
// blend, a trail of earlier frames, a glowing edge); AnimatedModel2DLit is the
// light one, without effects or box tracking.
//
//   AnimatedModel2D hero;
//   hero.load("hero", 0, 0);            // needs AnimatedSpriteDataManager
//   hero.startAnimation(0, 0);
//   hero.mPosition = {240, 136, 0};
//   // each frame:
//   hero.update(dt, false);
//   hero.render(1);                      // needs AnimatedModel2DRender
//
// A frame is placed by its centre: its top left lies half its size (in whole
// pixels) up and left of the position plus the key's offset. Drawing with
// ownBatch 0 inside the caller's begin/end costs no GL call of its own; only the
// edge effect changes GL state and draws in batches of its own.
#include <stdint.h>

#include <list>

#include "Base/Math3D.h"
#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimationKeyFrame.h"

class AnimationController;
class AnimationPlaybackEventHandler;
class AnimationSet;

// Numbered as the title likes; a model starts facing 4, and shows its frames
// mirrored while it faces any other way than its default.
typedef int eDirection;

namespace Math3D {
// A box; the model's boxes fill all six floats: left, top, right, bottom, then the
// left and right of its mirror image (-right, -left).
struct Aabb2D {
  float mMinX, mMinY, mMaxX, mMaxY;
  float mMirrorMinX, mMirrorMaxX;
};
}  // namespace Math3D

struct TRealColorRGBA {
  float r, g, b, a;  // 0 to 1
};

// The colour blend: from `mFrom` toward `mTo` over `mPeriod` seconds, ending after
// `mDuration` seconds (never with a duration of 0 or below). Mode 0 ramps once (on
// past `mTo`), 1 ramps again each period, 2 ramps there and back.
struct AnimatedModel2DBlendEffectInfo {
  TRealColorRGBA mFrom;
  TRealColorRGBA mTo;
  float mPeriod;
  float mDuration;
  int mMode;
};

// The trail: earlier frames drawn behind the model over the last `mLength`
// seconds, at least `mSpacing` seconds apart, the gap growing to gap x
// `mSpacingFactor` + `mSpacingAddend` from the oldest on, their colours on a ramp
// from `mColorFrom` (oldest) toward `mColorTo` over `mLength`.
struct AnimatedModel2DTrailEffectInfo {
  AnimatedModel2DTrailEffectInfo();
  TRealColorRGBA mColorFrom;
  TRealColorRGBA mColorTo;
  float mSpacing;        // 0.0333333 (bits 0x3D088880) by default
  float mSpacingFactor;  // 1 by default
  float mSpacingAddend;  // 0 by default
  float mLength;         // seconds; 0.5 by default
};

// The glowing edge: the frame drawn in `mColor`, added to its texels, shifted up
// to `mRadius` pixels about itself, its alpha growing by alpha x `mFade` / radius
// toward the frame; two of the shifts turn by `mSpin` radians each draw, and with
// a `mPulsePeriod` above 0 the radius breathes in and out over that many seconds.
struct AnimatedModel2DEadgeEffectInfo {
  TRealColorRGBA mColor;
  float mRadius;
  float mFade;
  float mSpin;
  float mPulsePeriod;
};

// One earlier frame of a trail.
struct TrailFrameInfo {
  Math3D::vec3 mPosition;
  int16_t mSpriteIndex;
  int32_t mFlip;
  float mTime;  // the trail clock when it was drawn; 0 for none
};

// The controller's current key and its flags, as the last update copied them.
struct AnimatedModel2DFrame : AnimationKeyFrame {
  AnimatedModel2DFrame() : mChanged(0), mNewKey(0) {}
  uint8_t mChanged;
  uint8_t mNewKey;
};

// What both kinds of model share: the asset, the controller, loading, playing and
// drawing a frame. Not used by itself.
class AnimatedModel2DCore {
 public:
  // 1 when the sprite loaded; 0 when the manager can't load it. The two numbers
  // are not used. A model loaded before gives its earlier sprite back.
  int load(const char* name, unsigned, unsigned);
  // The same with the sprite's number in the title's sprite list.
  int loadFromID(unsigned id, unsigned, unsigned);
  // Gives the sprite back to the manager and deletes the controller.
  void release();
  void setAnimationPlaybackEventHandler(AnimationPlaybackEventHandler* handler);

  void stop();
  int isPlaying() const;
  int isAnimationExists(unsigned index) const;
  // Animations here cut from one to the next: never in a transition.
  int isInActionTransition() const { return 0; }
  // The duration of animation `index`; 0 past the table.
  float getActionTime(unsigned index) const;
  // The animation playing, -1 when none plays.
  int getCurrentAnimationID() const;
  // Plays `index` from where the clock stands; 1 when it already plays.
  int switchToAction(unsigned index);
  void changeAction(unsigned, int) {}

  // Frame `frame` of `layer` with its centre at `pos`, mirrored when `flip` is
  // set, tile by tile into the batch renderer; with `ownBatch` in a begin/end of
  // its own unless the caller's is open. A frame that does not exist draws
  // nothing. Returns 1.
  int display(int frame, int flip, const Math3D::vec3& pos, eImageLayerDefine layer, float, int ownBatch);
  // The same with every vertex in `colour`, in a batch with colours.
  int displayWithColor(int frame, int flip, TRealColorRGBA& colour, const Math3D::vec3& pos, eImageLayerDefine layer,
                       float, int ownBatch);

  AnimatedSpriteData* mSpriteData;  // not owned: the manager counts it
  unsigned int mSpriteID;           // the manager's ID of mSpriteData; 0 when none
  AnimationController* mController; // owned
  AnimatedModel2DFrame mFrame;
  AnimationSet* mHostAnimationSet;  // the sprite's
  AnimationPlaybackEventHandler* mHandler;

 protected:
  AnimatedModel2DCore();
  ~AnimatedModel2DCore();

  // The steps of startAnimation before and after the model's own work: whether
  // `index` may start (0 when it already plays and restart is 0, is out of range
  // or there are no animations), then the track set going from 0.
  int CanStart(unsigned index, int restart) const;
  void PlayTrack(unsigned index);
  // Advances the controller and copies its current key into mFrame.
  void AdvanceFrame(float seconds, bool flag);
  // The position the current frame is drawn at: `position` moved by the key's
  // offset, the x offset the other way under `flip`.
  Math3D::vec3 FramePosition(const Math3D::vec3& position, int flip) const;

 private:
  int Draw(int frame, int flip, const uint8_t* rgba, const Math3D::vec3& pos, eImageLayerDefine layer, int ownBatch);

  AnimatedModel2DCore(const AnimatedModel2DCore&);
  AnimatedModel2DCore& operator=(const AnimatedModel2DCore&);
};

class AnimatedModel2D : public AnimatedModel2DCore {
 public:
  enum { kTrailFrames = 20, kStartDirection = 4 };

  AnimatedModel2D();
  ~AnimatedModel2D();

  // Turns the effects off and empties the trail; with `resetTime` the clock goes
  // back to the start of the animation.
  void reset(int resetTime);

  // 1 when animation `index` starts from 0; 0 when it already plays and restart is
  // 0, or is out of range.
  int startAnimation(unsigned index, int restart);
  // startAnimation(index, 0) of the animation so named; 0 when none is.
  int startAnimationByName(const char* name);
  void changeDirection(eDirection direction);
  // Moves the clock and the effects on by `seconds`; the flag has no effect.
  void update(float seconds, bool flag);

  // The current key's box `index` as stored; an index past the table gives an
  // empty box.
  void getCurrentLocalBoxNoAlign(Math3D::Aabb2D& box, eKeyFrameBoxIndex index);
  // The same on the screen: moved to the position, mirrored under flip.
  void getCurrentBoxNoAlign(Math3D::Aabb2D& box, eKeyFrameBoxIndex index);
  // Box `index` of key `key` of animation `anim`, as stored; 0 when there is no
  // such key.
  int getFrameBoxNoAlign(Math3D::Aabb2D& box, unsigned anim, unsigned key, eKeyFrameBoxIndex index);
  // The collision box: as stored, then less the alignment box's move since the
  // animation started (local), then that on the screen.
  void getCurrentCollisionBoxNoAlign(Math3D::Aabb2D& box);
  void getCurrentLocalCollisionBox(Math3D::Aabb2D& box);
  void getCurrentCollisionBox(Math3D::Aabb2D& box);
  // Where the current frame is drawn, its padding to whole tiles left out; 0 (and
  // an empty box) when there is no frame.
  int getCurrentRenderRect(Math3D::Aabb2D& box);
  int layerExistNow(eImageLayerDefine layer) const;
  void drawOBB() {}

  // The trail, the edge and the blend as they are on; the plain frame when none is.
  void render(int ownBatch);
  void renderWithOutEffect(int ownBatch);
  // Key `key` of animation `anim`, placed as the current one would be.
  void renderFrame(eImageLayerDefine layer, int anim, int key, int ownBatch);
  void renderBlendEfffect();
  void renderEadgeEffect();
  void renderTrailEffect();
  void setBlendEffect(const AnimatedModel2DBlendEffectInfo& info);
  void setEadgeEffect(const AnimatedModel2DEadgeEffectInfo& info);
  void setTrailEffect(const AnimatedModel2DTrailEffectInfo& info);

  Math3D::vec2 mBoxDelta;  // how far the alignment box moved from mLastLocalBox
  int32_t mFlip;
  Math3D::vec3 mPosition;
  eDirection mDirection;
  eDirection mDefaultDirection;
  Math3D::Aabb2D mLastLocalBox;  // the alignment box when the animation started

  // The blend.
  TRealColorRGBA mBlendFrom, mBlendTo, mBlendColor;
  float mBlendPeriod, mBlendDuration, mBlendElapsed;
  int mBlendMode;
  int mBlendParity;  // in mode 2, 1 while the ramp runs back
  int mBlendOn;

  // The trail.
  AnimatedModel2DTrailEffectInfo mTrailInfo;
  std::list<TrailFrameInfo> mTrailFrames;  // always kTrailFrames, oldest first
  float mTrailClock;
  float mTrailTimeLeft;
  int mTrailOn;

  // The edge.
  AnimatedModel2DEadgeEffectInfo mEadgeInfo;
  float mEadgeAngle;
  struct Pulse {
    float mValue;  // 0 to 1
    int mFalling;
  } mEadgePulse;
  int mEadgeOn;

 private:
  void UpdateBlend(float seconds);
  void UpdateTrail(float seconds);
  void UpdatePulse(float seconds);
  void ResetTrail();
};

class AnimatedModel2DLit : public AnimatedModel2DCore {
 public:
  AnimatedModel2DLit();

  // As AnimatedModel2D's, without the alignment box.
  int startAnimation(unsigned index, int restart);
  void update(float seconds, bool flag);
  // The current frame of `layer` at mPosition, mirrored when `flip` is set.
  void render(eImageLayerDefine layer, int flip, int ownBatch);

  Math3D::vec3 mPosition;
};

#endif
