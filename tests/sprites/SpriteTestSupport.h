#pragma once
// Sprite files laid out byte by byte, field by field in the order of their
// layouts, for the sprite tests; and a handler that writes down what it is told.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "RenderSystem/AnimationPlaybackEventHandler.h"
#include "RenderSystem/AnimationTrack.h"
#include "support/TestSupport.h"

namespace spritetest {

using zvtest::Bytes;

inline void PutF32(Bytes& out, float v) {
  uint32_t bits;
  memcpy(&bits, &v, 4);
  zvtest::PutU32(out, bits);
}

// `text` in a field of `size` bytes, zero-filled (not terminated when it fills it).
inline void PutName(Bytes& out, const std::string& text, size_t size) {
  for (size_t i = 0; i < size; ++i) out.push_back(i < text.size() ? uint8_t(text[i]) : 0);
}

// ---- ".anim"

struct KeyLayout {
  uint32_t sprite = 0xFFFF;
  uint32_t offsetX = 0;
  uint32_t offsetY = 0;
  float time = 0.0f;
  uint16_t box[4] = {0, 0, 0, 0};
  uint32_t event = 0;
  uint32_t value = 0;
};

struct AnimLayout {
  int64_t keyCount = -1;  // -1: the number of keys given
  uint32_t playMode = 1;
  float duration = 1.0f;
  float scale = 1.0f;
  std::string name;
  std::vector<KeyLayout> keys;
};

struct BoxLayout {
  uint32_t left, top, right, bottom;
};

struct AnimFileLayout {
  uint32_t magic = 0x414E494D;  // "MINA"
  uint8_t dropped = 0;
  int64_t animCount = -1;  // -1: the number of animations given
  std::string setName;
  std::vector<AnimLayout> anims;
  std::string layers[10];
  int64_t boxCount = -1;  // -1: the number of boxes given
  std::vector<BoxLayout> boxes;
};

inline Bytes MakeAnim(const AnimFileLayout& file) {
  Bytes out;
  zvtest::PutU32(out, file.magic);
  zvtest::PutU8(out, file.dropped);
  zvtest::PutU32(out, uint32_t(file.animCount < 0 ? file.anims.size() : file.animCount));
  PutName(out, file.setName, 32);
  for (const AnimLayout& anim : file.anims) {
    zvtest::PutU32(out, uint32_t(anim.keyCount < 0 ? anim.keys.size() : anim.keyCount));
    zvtest::PutU32(out, anim.playMode);
    PutF32(out, anim.duration);
    PutF32(out, anim.scale);
    PutName(out, anim.name, 16);
    for (const KeyLayout& key : anim.keys) {
      zvtest::PutU32(out, key.sprite);
      zvtest::PutU32(out, key.offsetX);
      zvtest::PutU32(out, key.offsetY);
      PutF32(out, key.time);
      for (uint16_t box : key.box) zvtest::PutU16(out, box);
      zvtest::PutU32(out, key.event);
      zvtest::PutU32(out, key.value);
    }
  }
  for (const std::string& layer : file.layers) PutName(out, layer, 16);
  zvtest::PutU32(out, uint32_t(file.boxCount < 0 ? file.boxes.size() : file.boxCount));
  for (const BoxLayout& box : file.boxes) {
    zvtest::PutU32(out, box.left);
    zvtest::PutU32(out, box.top);
    zvtest::PutU32(out, box.right);
    zvtest::PutU32(out, box.bottom);
  }
  return out;
}

// Keys at the given times, sprite i on key i.
inline std::vector<KeyLayout> KeysAt(const std::vector<float>& times) {
  std::vector<KeyLayout> keys(times.size());
  for (size_t i = 0; i < times.size(); ++i) {
    keys[i].time = times[i];
    keys[i].sprite = uint32_t(i);
  }
  return keys;
}

// ---- ".tal"

struct CellLayout {
  uint8_t page, tileColumn, tileRow, cellColumn, cellRow;  // the last two: compact form only
};

struct FrameLayout {
  uint32_t width = 16;
  uint32_t height = 16;
  uint32_t dropped = 0;  // wide form only
  int64_t cellCount = -1;  // -1: the number of cells given
  std::vector<CellLayout> cells;
};

struct TalLayout {
  uint32_t magic = 0x5354414C;  // "LATS"
  int64_t spriteCount = -1;  // -1: the number of frames given
  uint32_t compact = 1;
  uint32_t reserved = 0;
  std::vector<FrameLayout> frames;
};

inline Bytes MakeTal(const TalLayout& file) {
  Bytes out;
  zvtest::PutU32(out, file.magic);
  zvtest::PutU32(out, uint32_t(file.spriteCount < 0 ? file.frames.size() : file.spriteCount));
  zvtest::PutU32(out, file.compact);
  zvtest::PutU32(out, file.reserved);
  for (const FrameLayout& frame : file.frames) {
    const uint32_t count = uint32_t(frame.cellCount < 0 ? frame.cells.size() : frame.cellCount);
    if (file.compact != 0) {
      zvtest::PutU16(out, uint16_t(frame.width));
      zvtest::PutU16(out, uint16_t(frame.height));
      zvtest::PutU16(out, uint16_t(count));
      for (const CellLayout& cell : frame.cells) {
        out.insert(out.end(), {cell.page, cell.tileColumn, cell.tileRow, cell.cellColumn, cell.cellRow});
      }
    } else {
      zvtest::PutU32(out, frame.width);
      zvtest::PutU32(out, frame.height);
      zvtest::PutU32(out, frame.dropped);
      zvtest::PutU32(out, count);
      for (const CellLayout& cell : frame.cells) {
        zvtest::PutU32(out, cell.page);
        zvtest::PutU32(out, cell.tileColumn);
        zvtest::PutU32(out, cell.tileRow);
      }
    }
  }
  return out;
}

// ---- the handler

struct Told {
  int code;
  AnimationTrack track;  // as it stood when told
};

class RecordingHandler : public AnimationPlaybackEventHandler {
 public:
  void OnAnimationPlaybackEvent(int code, AnimationTrack* track) override { told.push_back({code, *track}); }
  std::vector<int> codes() const {
    std::vector<int> out;
    for (const Told& t : told) out.push_back(t.code);
    return out;
  }
  std::vector<Told> told;
};

}  // namespace spritetest
