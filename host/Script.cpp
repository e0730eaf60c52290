#include "Script.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

// Button names and their indices; a script is written with the first name of an
// index. Indices 8 to 11 and 14 have no key, index 15 comes with index 0.
struct NamedButton {
  const char* name;
  int index;
};
const NamedButton kButtonNames[] = {
    {"up", 0},        {"down", 1},       {"right", 2}, {"left", 3},  {"a", 4},     {"back", 5},
    {"b", 5},      {"lshoulder", 6},  {"rshoulder", 7}, {"menu", 12}, {"hint", 13}, {"pause", 16},
};

bool ParseInt(const std::string& word, int64_t* out) {
  if (word.empty()) return false;
  char* end = nullptr;
  errno = 0;
  const long long value = strtoll(word.c_str(), &end, 10);
  if (errno != 0 || *end != 0) return false;
  *out = value;
  return true;
}

bool ParseSeconds(const std::string& word, double* out) {
  if (word.empty()) return false;
  char* end = nullptr;
  const double value = strtod(word.c_str(), &end);
  if (*end != 0 || !std::isfinite(value) || value < 0) return false;
  *out = value;
  return true;
}

}  // namespace

uint32_t Script::ButtonMask(int index) {
  switch (index) {
    case 0: return 0x1;
    case 1: return 0x2;
    case 2: return 0x4;
    case 3: return 0x8;
    case 4: return 0x10;
    case 5: return 0x20;
    case 6: return 0x40;
    case 7: return 0x80;
    case 12: return 0x100;
    case 13: return 0x200;
    case 15: return 0x1;
    case 16: return 0x10000;
    default: return 0;
  }
}

std::string Script::ButtonName(int index) {
  for (const NamedButton& button : kButtonNames) {
    if (button.index == index) return button.name;
  }
  return std::to_string(index);
}

int Script::ButtonIndex(const std::string& word) {
  for (const NamedButton& button : kButtonNames) {
    if (word == button.name) return button.index;
  }
  int64_t index = 0;
  if (ParseInt(word, &index) && index >= 0 && index <= 16) return int(index);
  return -1;
}

namespace {

// Seconds with the microsecond the device's clock keeps, without trailing zeros.
std::string Seconds(double seconds) {
  char text[64];
  snprintf(text, sizeof text, "%.6f", seconds);
  std::string out = text;
  while (out.back() == '0') out.pop_back();
  if (out.back() == '.') out.pop_back();
  return out;
}

std::string Position(const ScriptCommand& command) {
  return std::to_string(command.x) + " " + std::to_string(command.y);
}

}  // namespace

std::string Script::Format(const ScriptCommand& command) {
  switch (command.kind) {
    case ScriptCommand::Wait: return "wait " + Seconds(command.seconds);
    case ScriptCommand::Frames: return "frames " + std::to_string(command.number);
    case ScriptCommand::Down: return "down " + Position(command);
    case ScriptCommand::Move: return "move " + Position(command);
    case ScriptCommand::Up: return "up " + Position(command);
    case ScriptCommand::Tap: return "tap " + Position(command);
    case ScriptCommand::Press: return "press " + ButtonName(int(command.number));
    case ScriptCommand::Release: return "release " + ButtonName(int(command.number));
    case ScriptCommand::Click: return "click " + ButtonName(int(command.number));
    case ScriptCommand::Rotate: return "rotate " + std::to_string(command.number);
    case ScriptCommand::MicUnplug: return "mic unplug";
    case ScriptCommand::MicPlug: return "mic plug";
    case ScriptCommand::PowerLow: return "power low";
    case ScriptCommand::PowerOk: return "power ok";
    case ScriptCommand::Suspend: return "suspend";
    case ScriptCommand::Resume: return "resume " + Seconds(command.seconds);
    case ScriptCommand::FreeBytes: return "free-bytes " + std::to_string(command.number);
    case ScriptCommand::Screenshot: return "screenshot " + command.text;
    case ScriptCommand::Exit: return "exit " + std::to_string(command.number);
    case ScriptCommand::Mod: return "mod " + std::to_string(command.number) + " " + command.text;
  }
  return "";
}

int64_t Script::FramesOf(const ScriptCommand& command, int fps) {
  switch (command.kind) {
    case ScriptCommand::Wait: return int64_t(command.seconds * fps + 0.5);
    case ScriptCommand::Frames: return command.number;
    case ScriptCommand::Tap:
    case ScriptCommand::Click: return 2;
    default: return 0;
  }
}

bool Script::Load(const std::string& path, std::string* error) {
  std::ifstream in(path);
  if (!in) {
    *error = "cannot open script " + path;
    return false;
  }
  std::ostringstream text;
  text << in.rdbuf();
  return Parse(text.str(), path, error);
}

bool Script::Parse(const std::string& text, const std::string& name, std::string* error) {
  mCommands.clear();
  std::istringstream lines(text);
  std::string raw;
  int lineNumber = 0;
  while (std::getline(lines, raw)) {
    ++lineNumber;
    const size_t hash = raw.find('#');
    if (hash != std::string::npos) raw.erase(hash);
    std::istringstream words(raw);
    std::vector<std::string> w;
    for (std::string word; words >> word;) w.push_back(word);
    if (w.empty()) continue;

    auto fail = [&](const std::string& what) {
      *error = name + ":" + std::to_string(lineNumber) + ": " + what;
      return false;
    };
    auto argc = [&](size_t least, size_t most) { return w.size() - 1 >= least && w.size() - 1 <= most; };

    ScriptCommand command;
    command.line = lineNumber;
    const std::string& verb = w[0];
    int64_t a = 0, b = 0;
    if (verb == "wait") {
      if (!argc(1, 1) || !ParseSeconds(w[1], &command.seconds)) return fail("wait takes seconds, e.g. 'wait 1.5'");
      command.kind = ScriptCommand::Wait;
    } else if (verb == "frames") {
      if (!argc(1, 1) || !ParseInt(w[1], &a) || a < 0) return fail("frames takes a count, e.g. 'frames 3'");
      command.kind = ScriptCommand::Frames;
      command.number = a;
    } else if (verb == "down" || verb == "move" || verb == "tap") {
      if (!argc(2, 2) || !ParseInt(w[1], &a) || !ParseInt(w[2], &b) || a < -32768 || a > 32767 || b < -32768 ||
          b > 32767) {
        return fail(verb + " takes two coordinates, e.g. '" + verb + " 240 136'");
      }
      command.kind = verb == "down" ? ScriptCommand::Down : verb == "move" ? ScriptCommand::Move : ScriptCommand::Tap;
      command.x = int(a);
      command.y = int(b);
    } else if (verb == "up") {
      if (!argc(0, 2) || w.size() == 2 ||
          (w.size() == 3 && (!ParseInt(w[1], &a) || !ParseInt(w[2], &b) || a < -32768 || a > 32767 ||
                             b < -32768 || b > 32767))) {
        return fail("up takes nothing, or where the finger left, e.g. 'up 240 136'");
      }
      command.kind = ScriptCommand::Up;
      command.x = int(a);
      command.y = int(b);
    } else if (verb == "press" || verb == "release" || verb == "click") {
      if (!argc(1, 1)) return fail(verb + " takes a button, by index 0..16 or by name");
      const int index = ButtonIndex(w[1]);
      if (index < 0) return fail("unknown button '" + w[1] + "'");
      if (ButtonMask(index) == 0) return fail("button " + w[1] + " has no key on the device");
      command.kind =
          verb == "press" ? ScriptCommand::Press : verb == "release" ? ScriptCommand::Release : ScriptCommand::Click;
      command.number = index;
    } else if (verb == "rotate") {
      if (!argc(1, 1) || !ParseInt(w[1], &a) || a < 0 || a > 3) return fail("rotate takes an orientation 0..3");
      command.kind = ScriptCommand::Rotate;
      command.number = a;
    } else if (verb == "mic") {
      if (!argc(1, 1) || (w[1] != "unplug" && w[1] != "plug")) return fail("mic takes 'unplug' or 'plug'");
      command.kind = w[1] == "unplug" ? ScriptCommand::MicUnplug : ScriptCommand::MicPlug;
    } else if (verb == "power") {
      if (!argc(1, 1) || (w[1] != "low" && w[1] != "ok")) return fail("power takes 'low' or 'ok'");
      command.kind = w[1] == "low" ? ScriptCommand::PowerLow : ScriptCommand::PowerOk;
    } else if (verb == "suspend") {
      if (!argc(0, 0)) return fail("suspend takes nothing");
      command.kind = ScriptCommand::Suspend;
    } else if (verb == "resume") {
      if (!argc(1, 1) || !ParseSeconds(w[1], &command.seconds)) {
        return fail("resume takes the seconds spent away, e.g. 'resume 600'");
      }
      command.kind = ScriptCommand::Resume;
    } else if (verb == "free-bytes") {
      if (!argc(1, 1) || !ParseInt(w[1], &a) || a < 0) return fail("free-bytes takes a number of bytes");
      command.kind = ScriptCommand::FreeBytes;
      command.number = a;
    } else if (verb == "screenshot") {
      if (!argc(1, 1)) return fail("screenshot takes a file name, e.g. 'screenshot ready.png'");
      command.kind = ScriptCommand::Screenshot;
      command.text = w[1];
    } else if (verb == "exit") {
      if (!argc(0, 1) || (w.size() == 2 && (!ParseInt(w[1], &a) || a < 0 || a > 255))) {
        return fail("exit takes an optional pending-exit code 0..255");
      }
      command.kind = ScriptCommand::Exit;
      command.number = a;
    } else if (verb == "mod") {
      if (!argc(2, 2) || !ParseInt(w[1], &a) || a < 0 || a > 0x7FFFFFFF) {
        return fail("mod takes a player and a mod folder, e.g. 'mod 1 mods/stickers'");
      }
      command.kind = ScriptCommand::Mod;
      command.number = a;
      command.text = w[2];
    } else {
      return fail("unknown command '" + verb + "'");
    }
    mCommands.push_back(command);
  }
  return true;
}
