// Animation sets read from ".anim" files: every field at its place, names, look-ups,
// and damaged files.
#include <gtest/gtest.h>

#include "RenderSystem/AnimationSet.h"
#include "SpriteTestSupport.h"

namespace {

using spritetest::AnimFileLayout;
using spritetest::AnimLayout;
using spritetest::Bytes;
using spritetest::MakeAnim;

class AnimationSetTest : public testing::Test {
 protected:
  int Import(const Bytes& bytes) {
    zvtest::WriteBytes(path, bytes);
    return set.Import0(path.c_str());
  }
  zvtest::TempDir dir;
  std::string path = dir.file("hero.anim");
  AnimationSet set;
};

// One animation of two keys and one box, every byte written out by hand.
TEST_F(AnimationSetTest, EveryFieldIsReadFromItsPlace) {
  Bytes b;
  zvtest::PutText(b, "MINA");
  zvtest::PutU8(b, 0xEE);  // dropped
  zvtest::PutU32(b, 1);    // animations
  spritetest::PutName(b, "heroes", 32);
  // The animation.
  zvtest::PutU32(b, 2);           // keys
  zvtest::PutU32(b, 0x1234502);   // play mode
  spritetest::PutF32(b, 0.75f);   // duration
  spritetest::PutF32(b, 2.0f);    // scale
  spritetest::PutName(b, "walk", 16);
  // Key 0.
  zvtest::PutU32(b, 0xABCD0007);  // sprite: low 16 bits
  zvtest::PutU32(b, 0x0001FFFE);  // x offset: -2
  zvtest::PutU32(b, 0x00000005);  // y offset: 5
  spritetest::PutF32(b, 0.0f);
  zvtest::PutU16(b, 0);
  zvtest::PutU16(b, 1);
  zvtest::PutU16(b, 0xFFFF);
  zvtest::PutU16(b, 3);
  zvtest::PutU32(b, 0x00000109);  // event: low 8 bits, 9
  zvtest::PutU32(b, 0xCAFEF00D);  // value
  // Key 1.
  zvtest::PutU32(b, 8);
  zvtest::PutU32(b, 0);
  zvtest::PutU32(b, 0xFFFFFFF0);  // -16
  spritetest::PutF32(b, 0.75f);
  for (int i = 0; i < 4; ++i) zvtest::PutU16(b, uint16_t(10 + i));
  zvtest::PutU32(b, 0);
  zvtest::PutU32(b, 0);
  // The layers.
  spritetest::PutName(b, "body", 16);
  spritetest::PutName(b, "shadow", 16);
  for (int i = 2; i < 10; ++i) spritetest::PutName(b, "", 16);
  // One box.
  zvtest::PutU32(b, 1);
  zvtest::PutU32(b, 0xFFFFFFF8);  // -8
  zvtest::PutU32(b, 0x0002FFF0);  // -16
  zvtest::PutU32(b, 8);
  zvtest::PutU32(b, 0);
  ASSERT_EQ(4u + 1 + 4 + 32 + (32 + 2 * 32) + 160 + 4 + 16, b.size());

  ASSERT_EQ(1, Import(b));
  EXPECT_EQ(1u, set.mAnimCount);
  EXPECT_STREQ("heroes", set.mSetName);
  const AnimationData& anim = set.mAnimations[0];
  EXPECT_EQ(2u, anim.mKeyCount);
  EXPECT_EQ(0x1234502, anim.mPlayMode);
  EXPECT_FLOAT_EQ(0.75f, anim.mDuration);
  EXPECT_FLOAT_EQ(2.0f, anim.mScale);
  EXPECT_STREQ("walk", anim.mName);

  const AnimationKeyFrame& k0 = anim.mKeys[0];
  EXPECT_EQ(7, k0.mSpriteIndex);
  EXPECT_EQ(-2, k0.mOffsetX);
  EXPECT_EQ(5, k0.mOffsetY);
  EXPECT_FLOAT_EQ(0.0f, k0.mTime);
  EXPECT_EQ(0, k0.mBoxIndex[0]);
  EXPECT_EQ(1, k0.mBoxIndex[1]);
  EXPECT_EQ(0xFFFF, k0.mBoxIndex[2]);
  EXPECT_EQ(3, k0.mBoxIndex[3]);
  EXPECT_EQ(9, k0.mEvent);
  EXPECT_EQ(0xCAFEF00Du, k0.mValue);

  const AnimationKeyFrame& k1 = anim.mKeys[1];
  EXPECT_EQ(8, k1.mSpriteIndex);
  EXPECT_EQ(0, k1.mOffsetX);
  EXPECT_EQ(-16, k1.mOffsetY);
  EXPECT_FLOAT_EQ(0.75f, k1.mTime);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(10 + i, k1.mBoxIndex[i]);
  EXPECT_EQ(0, k1.mEvent);
  EXPECT_EQ(0u, k1.mValue);

  EXPECT_STREQ("body", set.mLayerNames[0]);
  EXPECT_STREQ("shadow", set.mLayerNames[1]);
  EXPECT_STREQ("", set.mLayerNames[9]);
  ASSERT_EQ(1, set.mBoxCount);
  EXPECT_EQ(-8, set.mBoxes[0].mLeft);
  EXPECT_EQ(-16, set.mBoxes[0].mTop);
  EXPECT_EQ(8, set.mBoxes[0].mRight);
  EXPECT_EQ(0, set.mBoxes[0].mBottom);
}

TEST_F(AnimationSetTest, AStoredDurationOfZeroPlaysAsOneSecond) {
  AnimFileLayout file;
  file.anims.resize(2);
  file.anims[0].duration = 0.0f;
  file.anims[1].duration = 0.5f;
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(1.0f, set.mAnimations[0].mDuration);
  EXPECT_EQ(0.5f, set.mAnimations[1].mDuration);
}

TEST_F(AnimationSetTest, AnAnimationCountOf101FailsTheImportAnd100Passes) {
  AnimFileLayout file;
  file.anims.resize(100);
  for (int i = 0; i < 100; ++i) file.anims[i].name = "a" + std::to_string(i);
  file.layers[0] = "base";
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(100u, set.mAnimCount);
  EXPECT_EQ(99, set.GetAnimIndexByName("a99"));
  EXPECT_STREQ("base", set.mLayerNames[0]);

  file.anims.resize(101);
  EXPECT_EQ(0, Import(MakeAnim(file)));
  EXPECT_EQ(0u, set.mAnimCount);
  EXPECT_EQ(nullptr, set.mAnimations);
}

TEST_F(AnimationSetTest, AMissingFileOrAWrongMagicFails) {
  EXPECT_EQ(0, set.Import0(dir.file("none.anim").c_str()));
  AnimFileLayout file;
  file.anims.resize(1);
  file.magic = 0x414E494E;
  EXPECT_EQ(0, Import(MakeAnim(file)));
  EXPECT_EQ(0, Import(Bytes{'M', 'I', 'N'}));
  EXPECT_EQ(0, Import(Bytes{}));
}

TEST_F(AnimationSetTest, ANewImportFreesTheAnimationsOfTheOldOne) {
  AnimFileLayout file;
  file.anims.resize(3);
  file.anims[2].keys = spritetest::KeysAt({0.0f, 1.0f});
  file.boxes.push_back({1, 2, 3, 4});
  ASSERT_EQ(1, Import(MakeAnim(file)));
  file.anims.resize(1);
  file.boxes.clear();
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(1u, set.mAnimCount);
  EXPECT_EQ(0, set.mBoxCount);
  EXPECT_EQ(nullptr, set.mBoxes);
}

TEST_F(AnimationSetTest, KeysDefaultToNoSpriteOnlyUntilTheyAreRead) {
  AnimationKeyFrame key;
  EXPECT_EQ(0xFFFF, key.mSpriteIndex);
  EXPECT_EQ(0, key.mBoxIndex[0]);
  EXPECT_EQ(0u, key.mValue);
  AnimationData anim;
  EXPECT_EQ(1.0f, anim.mScale);
  EXPECT_EQ(0.0f, anim.mDuration);
}

TEST_F(AnimationSetTest, AnimationsAreFoundByTheirNames) {
  AnimFileLayout file;
  file.anims.resize(3);
  file.anims[0].name = "idle";
  file.anims[1].name = "walk";
  file.anims[2].name = "sixteen-letters!";  // fills its field: no terminator
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(0, set.GetAnimIndexByName("idle"));
  EXPECT_EQ(1, set.GetAnimIndexByName("walk"));
  EXPECT_EQ(2, set.GetAnimIndexByName("sixteen-letters!"));
  EXPECT_EQ(-1, set.GetAnimIndexByName("sixteen-letters!x"));
  EXPECT_EQ(-1, set.GetAnimIndexByName("wal"));
  EXPECT_EQ(-1, set.GetAnimIndexByName("run"));
  EXPECT_EQ(&set.mAnimations[1], set.FindAnimationDataByName("walk"));
  EXPECT_EQ(nullptr, set.FindAnimationDataByName("run"));
}

TEST_F(AnimationSetTest, GetKeyframeSearchesTheAnimationAtATime) {
  AnimFileLayout file;
  file.anims.resize(2);
  file.anims[1].keys = spritetest::KeysAt({0.0f, 0.25f, 0.5f, 1.0f});
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(nullptr, set.GetKeyframe(0, 0.3f));  // no keys
  EXPECT_EQ(&set.mAnimations[1].mKeys[1], set.GetKeyframe(1, 0.3f));
  EXPECT_EQ(&set.mAnimations[1].mKeys[2], set.GetKeyframe(1, 0.9f));
  EXPECT_EQ(nullptr, set.GetKeyframe(2, 0.3f));
}

// ---- damaged files

// Cut anywhere, a file reads what is there and nothing beyond; only a cut inside
// the magic fails.
TEST_F(AnimationSetTest, AFileCutAnywhereReadsWhatIsThere) {
  AnimFileLayout file;
  file.anims.resize(2);
  file.anims[0].name = "idle";
  file.anims[0].keys = spritetest::KeysAt({0.0f, 0.5f, 1.0f});
  file.anims[1].name = "walk";
  file.anims[1].keys = spritetest::KeysAt({0.0f, 1.0f});
  file.layers[0] = "base";
  file.boxes.push_back({1, 2, 3, 4});
  file.boxes.push_back({5, 6, 7, 8});
  const Bytes whole = MakeAnim(file);
  for (size_t size = 0; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    const int result = Import(Bytes(whole.begin(), whole.begin() + size));
    ASSERT_EQ(size >= 4 ? 1 : 0, result);
    if (result == 0) continue;
    ASSERT_LE(set.mAnimCount, 2u);
    for (uint32_t a = 0; a < set.mAnimCount; ++a) {
      ASSERT_LE(set.mAnimations[a].mKeyCount, a == 0 ? 3u : 2u);
    }
    ASSERT_LE(set.mBoxCount, 2);
  }
  // Cut inside the second key of "idle": the animation keeps two keys, the second
  // read as far as it goes; "walk" and the rest are not there.
  const size_t secondKeyTime = 4 + 1 + 4 + 32 + 32 + 32 + 12;
  ASSERT_EQ(1, Import(Bytes(whole.begin(), whole.begin() + secondKeyTime)));
  ASSERT_EQ(1u, set.mAnimCount);
  ASSERT_EQ(2u, set.mAnimations[0].mKeyCount);
  EXPECT_EQ(1, set.mAnimations[0].mKeys[1].mSpriteIndex);
  EXPECT_EQ(0.0f, set.mAnimations[0].mKeys[1].mTime);
  EXPECT_STREQ("", set.mLayerNames[0]);
  EXPECT_EQ(0, set.mBoxCount);
  // The whole file reads whole.
  ASSERT_EQ(1, Import(whole));
  EXPECT_EQ(2u, set.mAnimCount);
  EXPECT_EQ(2, set.mBoxCount);
  EXPECT_EQ(8, set.mBoxes[1].mBottom);
}

TEST_F(AnimationSetTest, CountsPastTheEndReadOnlyTheRecordsThere) {
  AnimFileLayout file;
  file.animCount = 100;
  file.anims.resize(1);
  file.anims[0].keyCount = 0xFFFFFFFF;
  file.anims[0].keys = spritetest::KeysAt({0.0f, 0.5f});
  file.boxCount = 0x7FFFFFFF;
  file.boxes.push_back({1, 2, 3, 4});
  const Bytes bytes = MakeAnim(file);
  // The two keys are followed by the layer names, the box count and the box: all
  // of it is read as more keys, 180 bytes, that is 5 keys and part of a sixth.
  ASSERT_EQ(1, Import(bytes));
  EXPECT_EQ(1u, set.mAnimCount);
  EXPECT_EQ(2u + 6u, set.mAnimations[0].mKeyCount);
  EXPECT_EQ(0, set.mBoxCount);

  // With the keys in their right number, the box count runs past the end.
  file.anims[0].keyCount = -1;
  file.animCount = -1;
  ASSERT_EQ(1, Import(MakeAnim(file)));
  EXPECT_EQ(2u, set.mAnimations[0].mKeyCount);
  ASSERT_EQ(1, set.mBoxCount);
  EXPECT_EQ(4, set.mBoxes[0].mBottom);
}

}  // namespace
