#pragma once
// What must hold after a session that nobody scripted (the monkey's): the title
// let go of the device when it ended, its answer is JSON, and the gallery passes
// solva-gallery's check. Each problem is one sentence for a person.
#include <string>
#include <vector>

class SessionCheck {
 public:
  // Call after the title's Exit. `answer` is what the simulator printed after
  // "answer: "; `root` the device root; `player` the current player.
  static std::vector<std::string> Problems(const std::string& answer, const std::string& root, int player);
};
