#ifndef SRC_YGUI_YGUIANIMESET_H
#define SRC_YGUI_YGUIANIMESET_H
// A named sequence of key frames, played once; the pose between two keys is
// interpolated linearly in fixed point.
#include <string>

#include "YGUI/IManagerResourceManually.h"
#include "YGUI/YGUIAnimeFrame.h"

class YGUIAnimeSet : public IManagerResourceManually {
 public:
  enum EAnimeSetState {
    EAS_Idle = 0,
    EAS_DoingAnime = 1,
  };

  explicit YGUIAnimeSet(int numKeyFrame);
  virtual ~YGUIAnimeSet() {}

  void Initialize() override;
  void Destroy() override;

  // 0 when full; otherwise the set owns `frame` and 1 is returned.
  int AddKeyFrame(YGUIAnimeFrame* frame);
  void PlayAnime();
  void StopAnime();
  void Update(float dt);
  void CapculateSweepFrame(float dt);
  bool IsAnimeFinished() const { return mCurrentAnimeSetState == EAS_Idle; }

  int mNumKeyFrame;
  std::string mName;
  YGUIAnimeFrame** mKeyFrameBuffer;
  int mKeyFrameIndex;
  int mCurrentTime;
  int mTotalTime;
  YGUIAnimeFrame mCurrentFrame;
  int mCurrentAnimeSetState;

 private:
  YGUIAnimeSet(const YGUIAnimeSet&);
  YGUIAnimeSet& operator=(const YGUIAnimeSet&);
};

#endif
