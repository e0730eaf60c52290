#include "SpriteDescription.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <sstream>

namespace spritebuilder {

const char* const kBoxSlotNames[4] = {"align", "collision", "attack", "extra"};

namespace {

// Limits that come from the files the framework reads.
const size_t kMaxAnimations = 100;       // an ".anim" holds at most 100
const size_t kMaxFramesPerAnimation = 254;  // keys are counted in 8 bits, 255 meaning none; one more closes the line
const size_t kMaxNameLength = 15;        // 16 bytes with a terminator
const size_t kMaxSpriteNameLength = 31;  // the set's name field is 32 bytes
const size_t kMinSpriteNameLength = 3;   // shorter lines of the sprite list are skipped
const uint32_t kNoValue = 0x2539A7;      // reads as "no value"

bool IsNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

bool IsName(const std::string& word) {
  if (word.empty()) return false;
  for (char c : word) {
    if (!IsNameChar(c)) return false;
  }
  return true;
}

bool ToLong(const std::string& word, long minimum, long maximum, long* out) {
  if (word.empty()) return false;
  errno = 0;
  char* end = nullptr;
  const long long value = strtoll(word.c_str(), &end, 0);
  if (errno != 0 || *end != 0 || value < minimum || value > maximum) return false;
  *out = long(value);
  return true;
}

class Parser {
 public:
  Parser(const std::string& source, Description* out, std::string* error) : mSource(source), mOut(out), mError(error) {}

  bool Line(int number, std::vector<std::string> words) {
    mLine = number;
    const std::string keyword = words[0];
    if (keyword == "sprite") return Sprite(words);
    if (keyword == "layer") return Layer(words);
    if (keyword == "box") return BoxLine(words);
    if (keyword == "animation") return AnimationLine(words);
    if (keyword == "frame") return FrameLine(words);
    return Fail("unknown keyword \"" + keyword + "\" (sprite, layer, box, animation or frame)");
  }

  bool Finish() {
    mLine = 0;
    if (mOut->sprite.empty()) return Fail("no \"sprite NAME\" line");
    if (mOut->animations.empty()) return Fail("no animation");
    for (const Animation& anim : mOut->animations) {
      if (anim.frames.empty()) {
        mLine = anim.line;
        return Fail("animation \"" + anim.name + "\" has no frame");
      }
    }
    return true;
  }

 private:
  bool Fail(const std::string& message) {
    *mError = mSource + (mLine > 0 ? ":" + std::to_string(mLine) : std::string()) + ": " + message;
    return false;
  }

  bool Sprite(const std::vector<std::string>& w) {
    if (w.size() != 2) return Fail("expected: sprite NAME");
    if (!mOut->sprite.empty()) return Fail("the sprite is named twice");
    if (!IsName(w[1]) || w[1].size() < kMinSpriteNameLength || w[1].size() > kMaxSpriteNameLength) {
      return Fail("a sprite name has 3 to 31 letters, digits, '_' or '-'");
    }
    mOut->sprite = w[1];
    return true;
  }

  bool Layer(const std::vector<std::string>& w) {
    if (w.size() != 2) return Fail("expected: layer NAME");
    if (!IsName(w[1]) || w[1].size() > kMaxNameLength) return Fail("a layer name has 1 to 15 letters, digits, '_' or '-'");
    mOut->layer = w[1];
    return true;
  }

  bool BoxLine(const std::vector<std::string>& w) {
    if (w.size() != 6) return Fail("expected: box NAME LEFT TOP RIGHT BOTTOM");
    if (!IsName(w[1])) return Fail("a box name has letters, digits, '_' or '-'");
    if (FindBox(w[1]) >= 0) return Fail("box \"" + w[1] + "\" is defined twice");
    long v[4];
    for (int i = 0; i < 4; ++i) {
      if (!ToLong(w[2 + i], -32768, 32767, &v[i])) return Fail("\"" + w[2 + i] + "\" is not a whole number of pixels");
    }
    if (mOut->boxes.size() >= 0xFFFF) return Fail("too many boxes");
    mOut->boxes.push_back({w[1], int16_t(v[0]), int16_t(v[1]), int16_t(v[2]), int16_t(v[3])});
    return true;
  }

  bool AnimationLine(const std::vector<std::string>& w) {
    if (w.size() != 3) return Fail("expected: animation NAME once|loop|pingpong");
    if (!IsName(w[1]) || w[1].size() > kMaxNameLength) {
      return Fail("an animation name has 1 to 15 letters, digits, '_' or '-'");
    }
    for (const Animation& anim : mOut->animations) {
      if (anim.name == w[1]) return Fail("animation \"" + w[1] + "\" is defined twice");
    }
    if (mOut->animations.size() >= kMaxAnimations) return Fail("a sprite has at most 100 animations");
    Animation anim;
    anim.name = w[1];
    anim.line = mLine;
    if (w[2] == "once") {
      anim.mode = 0;
    } else if (w[2] == "loop") {
      anim.mode = 1;
    } else if (w[2] == "pingpong") {
      anim.mode = 2;
    } else {
      return Fail("\"" + w[2] + "\" is no way of playing (once, loop or pingpong)");
    }
    mOut->animations.push_back(anim);
    return true;
  }

  bool FrameLine(const std::vector<std::string>& w) {
    if (mOut->animations.empty()) return Fail("a frame before any animation");
    Animation& anim = mOut->animations.back();
    if (w.size() < 3) return Fail("expected: frame FILE.png SECONDS [options]");
    if (anim.frames.size() >= kMaxFramesPerAnimation) return Fail("an animation has at most 254 frames");
    Frame frame;
    frame.png = w[1];
    frame.line = mLine;
    char* end = nullptr;
    const double seconds = strtod(w[2].c_str(), &end);
    if (*end != 0 || !std::isfinite(seconds) || seconds <= 0.0 || seconds > 3600.0) {
      return Fail("\"" + w[2] + "\" is not a time in seconds above 0");
    }
    frame.seconds = float(seconds);
    for (size_t i = 3; i < w.size();) {
      const std::string& option = w[i];
      const size_t args = option == "offset" ? 2 : 1;
      if (i + args >= w.size()) return Fail("\"" + option + "\" needs " + (args == 2 ? "two values" : "a value"));
      long a = 0, b = 0;
      if (option == "offset") {
        if (!ToLong(w[i + 1], -32768, 32767, &a) || !ToLong(w[i + 2], -32768, 32767, &b)) {
          return Fail("an offset is two whole numbers of pixels");
        }
        frame.offsetX = int16_t(a);
        frame.offsetY = int16_t(b);
      } else if (option == "event") {
        if (!ToLong(w[i + 1], 1, 255, &a)) return Fail("an event is a number from 1 to 255");
        frame.event = uint8_t(a);
      } else if (option == "value") {
        if (!ToLong(w[i + 1], 1, 0xFFFFFFFFL, &a) || uint32_t(a) == kNoValue) {
          return Fail("a value is a number from 1 to 4294967295, but not 2439591, which reads as none");
        }
        frame.value = uint32_t(a);
      } else {
        int slot = -1;
        for (int s = 0; s < 4; ++s) {
          if (option == kBoxSlotNames[s]) slot = s;
        }
        if (slot < 0) return Fail("unknown frame option \"" + option + "\" (offset, event, value, align, collision, attack, extra)");
        const int box = FindBox(w[i + 1]);
        if (box < 0) return Fail("no box \"" + w[i + 1] + "\" defined before this line");
        frame.boxes[slot] = box;
      }
      i += args + 1;
    }
    anim.frames.push_back(frame);
    return true;
  }

  int FindBox(const std::string& name) const {
    for (size_t i = 0; i < mOut->boxes.size(); ++i) {
      if (mOut->boxes[i].name == name) return int(i);
    }
    return -1;
  }

  std::string mSource;
  Description* mOut;
  std::string* mError;
  int mLine = 0;
};

}  // namespace

bool ParseDescription(const std::string& text, const std::string& source, Description* out, std::string* error) {
  *out = Description();
  Parser parser(source, out, error);
  std::istringstream lines(text);
  std::string line;
  int number = 0;
  while (std::getline(lines, line)) {
    ++number;
    const size_t hash = line.find('#');
    if (hash != std::string::npos) line.erase(hash);
    std::istringstream words(line);
    std::vector<std::string> split;
    for (std::string word; words >> word;) split.push_back(word);
    if (split.empty()) continue;
    if (!parser.Line(number, split)) return false;
  }
  return parser.Finish();
}

}  // namespace spritebuilder
