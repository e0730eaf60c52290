#include "support/PngImage.h"

#include <png.h>

#include <cstring>

namespace zvtest {

bool ReadPng(const std::string& path, PngImage* image, std::string* error) {
  png_image png;
  memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&png, path.c_str())) {
    if (error) *error = path + ": " + png.message;
    return false;
  }
  png.format = PNG_FORMAT_BGRA;  // little-endian words 0xAARRGGBB
  image->width = int(png.width);
  image->height = int(png.height);
  image->pixels.assign(size_t(png.width) * png.height, 0);
  if (!png_image_finish_read(&png, nullptr, image->pixels.data(), 0, nullptr)) {
    if (error) *error = path + ": " + png.message;
    png_image_free(&png);
    return false;
  }
  return true;
}

bool WritePng(const std::string& path, int width, int height, const std::vector<uint32_t>& pixels) {
  png_image png;
  memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  png.width = png_uint_32(width);
  png.height = png_uint_32(height);
  png.format = PNG_FORMAT_BGRA;
  return png_image_write_to_file(&png, path.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

}  // namespace zvtest
