// The ".anim" reader, and a controller playing every animation it read, forwards
// and backwards, so that damaged keys and durations are played too.
#include <memory>

#include "FuzzSupport.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".anim");
  AnimationSet set;
  if (set.Import0(path.c_str()) == 0) return 0;
  set.FindAnimationDataByName(set.mLayerNames[0]);
  std::unique_ptr<AnimationController> controller(AnimationController::CreateAnimationController(&set));
  for (uint32_t a = 0; a < set.mAnimCount; ++a) {
    set.GetAnimIndexByName(set.mAnimations[a].mName);
    set.GetKeyframe(a, 0.5f);
    for (float speed : {1.0f, -1.0f}) {
      AnimationTrack track;
      track.mEnable = 1;
      track.mAnimIndex = uint8_t(a);
      track.mMode = uint8_t(set.mAnimations[a].mPlayMode);
      track.mSpeed = speed;
      controller->Stop();
      controller->SetTrackDesc(&track);
      for (int step = 0; step < 12; ++step) controller->AdvanceTime(0.1f, false);
    }
  }
  return 0;
}
