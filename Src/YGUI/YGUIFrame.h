#ifndef SRC_YGUI_YGUIFRAME_H
#define SRC_YGUI_YGUIFRAME_H
// Something with a place, a size, a name and an optional animation: the base of
// every control a grid holds.
#include <string>

#include "BaseFramework/InputManager.h"  // EOrientationStatus
#include "YGUI/IManagerResourceManually.h"
#include "YGUI/YGUIMessage.h"
#include "YGUI/YGUITypes.h"

class CanvasLayer;
class YGUIAnimation;

class YGUIFrame : public IManagerResourceManually {
 public:
  YGUIFrame();

  void Initialize() override {}
  // Destroys and deletes the animation.
  void Destroy() override;
  virtual ~YGUIFrame() {}
  virtual void Update(float dt);
  virtual void Render(CanvasLayer& /*canvas*/, EOrientationStatus /*orient*/) {}
  // True without a running animation, or when animation is off.
  virtual bool IsAnimeFinished() const;
  virtual int DealMessage(const YGUIMessage& /*message*/) { return 0; }

  // 0 unless animation is on and there is one; else what the animation answers.
  int PlayAnime(const std::string& name);
  void StopAnime();

  YGUIAnimation* GetAnimation() const { return mAnimation; }
  int GetPositionX() const { return mPositionX; }
  int GetPositionY() const { return mPositionY; }
  int GetWidth() const { return mWidth; }
  int GetHeight() const { return mHeight; }
  std::string GetCurrentAnimeName() const { return std::string(); }

  std::string mName;
  YGUIAnimation* mAnimation;  // owned; may stay null
  int mAnimeAble;
  int mVisible;
  int mPositionX;
  int mPositionY;
  int mWidth;
  int mHeight;
  std::string mFocusAnimation;
  std::string mFocusOffAnimation;
  Rect2D<int> mDirtyRect;  // the area the latest change of the rectangle touched
  bool mDirty;

 private:
  YGUIFrame(const YGUIFrame&);
  YGUIFrame& operator=(const YGUIFrame&);
};

#endif
