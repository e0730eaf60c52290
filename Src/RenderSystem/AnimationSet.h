#ifndef SRC_RENDERSYSTEM_ANIMATIONSET_H
#define SRC_RENDERSYSTEM_ANIMATIONSET_H
// Every animation of one sprite, with the boxes its keys point to, read from an
// ".anim" file (little-endian):
//
//   "MINA"; 1 byte dropped; animation count (at most 100); 32 bytes set name;
//   the animations; 10 layer names of 16 bytes; box count; the boxes.
//   An animation: key count, play mode, duration (float), scale (float),
//   16 bytes name, the keys.
//   A key (32 bytes): sprite index, x offset, y offset (4 bytes each, low 16 bits
//   kept), time (float), 4 box indices of 2 bytes, event (4 bytes, low 8 bits
//   kept), value.
//   A box (16 bytes): left, top, right, bottom, 4 bytes each, low 16 bits kept.
#include <stdint.h>

#include "RenderSystem/AnimationData.h"

struct AnimationBox {
  int16_t mLeft;
  int16_t mTop;
  int16_t mRight;
  int16_t mBottom;
};

class AnimationSet {
 public:
  static constexpr uint32_t kMagic = 0x414E494D;  // "MINA"
  static constexpr uint32_t kMaxAnimations = 100;
  static constexpr int kLayerCount = 10;
  static constexpr int kLayerNameSize = 16;

  AnimationSet();
  ~AnimationSet();

  // 1 read, 0 when the file can't be opened, has the wrong magic or more than
  // 100 animations. Read errors are not looked for: a short file gives zeros.
  int Import0(const char* path);
  void Clear();

  int GetAnimIndexByName(const char* name) const;  // -1 when absent
  AnimationData* FindAnimationDataByName(const char* name);
  // The key of animation `anim` at `time`; null for an animation without keys or
  // an index past the table.
  AnimationKeyFrame* GetKeyframe(unsigned int anim, float time);

  uint32_t mAnimCount;
  char mSetName[32];  // as read; read by nothing
  // The first names the atlas files of the sprite; each may fill all 16 bytes.
  char mLayerNames[kLayerCount][kLayerNameSize];
  AnimationData* mAnimations;
  AnimationBox* mBoxes;
  int32_t mBoxCount;

 private:
  AnimationSet(const AnimationSet&);
  AnimationSet& operator=(const AnimationSet&);
};

#endif
