// The key search that every caller shares.
#include <gtest/gtest.h>

#include "RenderSystem/AnimationData.h"

namespace {

// An animation whose keys stand at `times`.
struct Keys {
  explicit Keys(std::vector<float> times) {
    anim.mKeyCount = uint32_t(times.size());
    anim.mKeys = times.empty() ? nullptr : new AnimationKeyFrame[times.size()];
    for (size_t i = 0; i < times.size(); ++i) anim.mKeys[i].mTime = times[i];
  }
  int Find(float time) {
    int index = -7;
    AnimationKeyFrame* key = anim.FindKeyFrame(time, &index);
    EXPECT_EQ(index < 0 ? nullptr : &anim.mKeys[index], key);
    return index;
  }
  AnimationData anim;
};

TEST(AnimationData, AnAnimationWithoutKeysFindsNone) {
  Keys keys({});
  EXPECT_EQ(-1, keys.Find(0.0f));
  EXPECT_EQ(nullptr, keys.anim.FindKeyFrame(0.5f, nullptr));
}

TEST(AnimationData, OneOrTwoKeysFindKeyZero) {
  Keys one({0.0f});
  EXPECT_EQ(0, one.Find(5.0f));
  Keys two({0.0f, 0.5f});
  EXPECT_EQ(0, two.Find(0.75f));
  EXPECT_EQ(0u, two.anim.SearchKey(0.75f));
}

TEST(AnimationData, TheKeyStandsFromAfterItsTimeToItsSuccessorsAndTheLastIsNeverFound) {
  Keys keys({0.0f, 0.25f, 0.5f, 0.75f, 1.0f});
  EXPECT_EQ(0, keys.Find(-1.0f));
  EXPECT_EQ(0, keys.Find(0.0f));
  EXPECT_EQ(0, keys.Find(0.25f));  // a key's own time still belongs to the one before
  EXPECT_EQ(1, keys.Find(0.3f));
  EXPECT_EQ(2, keys.Find(0.5001f));
  EXPECT_EQ(3, keys.Find(0.8f));
  EXPECT_EQ(3, keys.Find(1.0f));
  EXPECT_EQ(3, keys.Find(50.0f));
  int index = 0;
  keys.anim.FindKeyFrame(0.3f, &index);
  EXPECT_EQ(1, index);
  EXPECT_NE(nullptr, keys.anim.FindKeyFrame(0.3f, nullptr));  // outIndex may be null
}

TEST(AnimationData, TheSearchHalvesEvenOverAThousandKeys) {
  std::vector<float> times;
  for (int i = 0; i < 1000; ++i) times.push_back(float(i));
  Keys keys(times);
  for (int i = 0; i < 998; ++i) EXPECT_EQ(i, keys.Find(float(i) + 0.5f));
  EXPECT_EQ(998, keys.Find(5000.0f));
}

}  // namespace
