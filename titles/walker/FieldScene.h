#pragma once
// The field: a background texture from the title's WAF archive, the walker (an
// animated sprite with the three effects) and the target marker (a light model),
// all in the logical coordinates of the screen as held (Screen).
// Told where to go, the walker turns to face its way, walks there and stands;
// each footstep of the walk animation is an event that plays a sound cue.
#include "BaseFramework/IScene.h"
#include "RenderSystem/AnimatedModel2D.h"
#include "RenderSystem/AnimationPlaybackEventHandler.h"

class GLTexture;

namespace walker {

enum EEffect { eEffect_Blend, eEffect_Trail, eEffect_Glow, eEffect_Num };

class FieldScene : public IScene, public AnimationPlaybackEventHandler {
 public:
  // Walking speed, pixels a second.
  static const int kSpeed = 80;
  enum { eFacing_Right = AnimatedModel2D::kStartDirection, eFacing_Left = 6 };

  void EnterScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  void Render() override;
  void OnAnimationPlaybackEvent(int code, AnimationTrack* track) override;

  // From the walker's centre down to its feet, which stand where it was sent.
  static constexpr float kFeet = 20.0f;
  // Half the walker's frame: its centre stays that far inside the screen's
  // sides and top, its feet on the screen.
  static constexpr float kHalfWidth = 16.0f, kHalfHeight = 24.0f;

  // Sets off toward a point of the screen, in logical coordinates; a point the
  // walker would not fit at is brought inside.
  void WalkTo(float x, float y);
  // Sets off that far from where it stands.
  void WalkBy(float dx, float dy);
  void SetEffect(EEffect effect, bool on);
  bool IsEffectOn(EEffect effect) const;

  bool walking() const { return mWalking; }
  float x() const { return mWalker.mPosition.x; }
  float y() const { return mWalker.mPosition.y; }
  int steps() const { return mSteps; }
  int facing() const { return mWalker.mDirection; }
  bool loaded() const { return mLoaded; }
  bool hasBackground() const { return mBackground != nullptr; }

 private:
  GLTexture* LoadBackground();
  // Keeps the walker and where it goes on a screen of that size.
  void FitInto(int width, int height);

  AnimatedModel2D mWalker;
  AnimatedModel2DLit mMarker;
  GLTexture* mBackground = nullptr;
  float mTargetX = 0, mTargetY = 0;
  bool mWalking = false;
  bool mLoaded = false;         // both sprites
  int mSteps = 0;               // footstep events heard
  int mWidth = 0, mHeight = 0;  // the logical screen the walker was last fitted into
};

}  // namespace walker
