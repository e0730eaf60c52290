#ifndef SRC_YGUI_YGUIANIMATION_H
#define SRC_YGUI_YGUIANIMATION_H
// A small table of named key-frame sequences that a control or a grid carries.
// Playing a name runs that set once; there is no looping.
#include <string>

#include "YGUI/IManagerResourceManually.h"

class YGUIAnimeSet;
struct YGUIAnimeFrame;

class YGUIAnimation : public IManagerResourceManually {
 public:
  explicit YGUIAnimation(int numAnimeSet);
  virtual ~YGUIAnimation() {}

  void Initialize() override;
  void Destroy() override;

  // 0 when full; otherwise the animation owns `set` and 1 is returned.
  int AddAnimeSet(YGUIAnimeSet* set);
  bool IsAnimationExist(const std::string& name) const;
  // 0 while something plays (the new name is lost) or when no set has the name.
  int PlayAnime(const std::string& name);
  void StopAnime();
  void Update(float dt);
  bool IsAnimeFinished() const { return mState == 0; }

  // The set that plays or played last, and its pose; null when there is none.
  YGUIAnimeSet* GetCurrentAnimeSet() const;
  const YGUIAnimeFrame* GetCurrentFrame() const;

  int mNumAnimeSet;
  YGUIAnimeSet** mAnimeSetBuffer;
  int mAnimeSetIndex;
  int mState;  // 0 idle, 1 playing
  int mCurrentAnimeIndex;

 private:
  YGUIAnimation(const YGUIAnimation&);
  YGUIAnimation& operator=(const YGUIAnimation&);
};

#endif
