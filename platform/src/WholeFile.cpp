#include "WholeFile.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include "AtomicFile.h"

namespace solva {
namespace detail {

bool ReadWholeFile(const std::string& path, std::string* text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream content;
  content << in.rdbuf();
  *text = content.str();
  return true;
}

bool WriteWholeFile(const std::string& path, const std::string& text) {
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  if (stream == nullptr) return false;
  const bool written = fwrite(text.data(), 1, text.size(), stream) == text.size();
  return fcloseAtomic(stream) == 0 && written;
}

}  // namespace detail
}  // namespace solva
