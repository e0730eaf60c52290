#pragma once
// The sprite builder's input: a small text file that names the sprite, its boxes
// and its animations, each a list of PNG frames with how long they show. The
// format is described in README.md beside this file.
#include <cstdint>
#include <string>
#include <vector>

namespace spritebuilder {

// A keyframe's box slots, in the order the framework numbers them.
extern const char* const kBoxSlotNames[4];  // "align", "collision", "attack", "extra"

struct Box {
  std::string name;
  int16_t left, top, right, bottom;  // pixels from the frame's centre, y downward
};

struct Frame {
  std::string png;  // as written, relative to the description's folder
  float seconds = 0.0f;
  int16_t offsetX = 0, offsetY = 0;
  uint8_t event = 0;  // 0 for none
  uint32_t value = 0;  // 0 for none
  int boxes[4] = {-1, -1, -1, -1};  // into Description::boxes, -1 for none
  int line = 0;
};

struct Animation {
  std::string name;
  uint8_t mode = 0;  // 0 once, 1 loop, 2 there and back
  std::vector<Frame> frames;
  int line = 0;
};

struct Description {
  std::string sprite;
  std::string layer = "base";
  std::vector<Box> boxes;
  std::vector<Animation> animations;
};

// False with a message naming `source` and the line when the text is not a good
// description.
bool ParseDescription(const std::string& text, const std::string& source, Description* out, std::string* error);

}  // namespace spritebuilder
