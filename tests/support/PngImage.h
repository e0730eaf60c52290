#pragma once
// Reading PNG files back in tests, with libpng, to judge what the device wrote.
#include <cstdint>
#include <string>
#include <vector>

namespace zvtest {

struct PngImage {
  int width = 0;
  int height = 0;
  // Row by row from the top, each pixel 0xAARRGGBB (alpha 255 for files without).
  std::vector<uint32_t> pixels;
  uint32_t at(int x, int y) const { return pixels[size_t(y) * width + x]; }
};

// False, with a message in `error`, when `path` is not a readable PNG file.
bool ReadPng(const std::string& path, PngImage* image, std::string* error = nullptr);

// Writes `pixels` (0xAARRGGBB) as an RGBA PNG, for a person to look at.
bool WritePng(const std::string& path, int width, int height, const std::vector<uint32_t>& pixels);

}  // namespace zvtest
