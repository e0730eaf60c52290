#include "CanvasTestSupport.h"

#include <fstream>

namespace canvastest {

int LineOf(const std::string& source, const std::string& text) {
  std::ifstream in(std::string(ZV_SOURCE_DIR) + "/" + source);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find(text) != std::string::npos) return number;
  }
  return 0;
}

}  // namespace canvastest
