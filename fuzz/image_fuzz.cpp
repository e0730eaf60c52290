// The image loaders: the first byte chooses BMP, TGA or UDI, the rest is the file.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "FuzzSupport.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/ImageLoader.h"
#include "RenderSystem/GLTextureManager.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  fuzz::ThrowOnAssertions();
  if (GLTextureManager::instance_ == nullptr) GLTextureManager::sCreate();  // UDI asks for it
  // BMP and TGA pixels are allocated, cleared and walked at the size the header
  // asks for, however little data follows: up to the loaders' own limits, that
  // is seconds a run here (and beyond them the machine's "no memory"), not a
  // question of parsing. Headers of more than 4 MB of pixels are skipped.
  if (data[0] % 3 != 2) {
    uint8_t header[30] = {};  // a short file's missing header bytes read as zero
    memcpy(header, data + 1, std::min(size - 1, sizeof header));
    int64_t pixels, bytes;
    if (data[0] % 3 == 0) {  // BMP: 32-bit width and rows, 16-bit depth
      int32_t width, height;
      uint16_t depth;
      memcpy(&width, header + 18, 4);
      memcpy(&height, header + 22, 4);
      memcpy(&depth, header + 28, 2);
      pixels = std::llabs(int64_t(width)) * std::llabs(int64_t(height));
      bytes = depth >> 3;
    } else {  // TGA: 16-bit width and rows, 8-bit depth
      pixels = int64_t(header[12] | header[13] << 8) * (header[14] | header[15] << 8);
      bytes = header[16] >> 3;
    }
    if (std::max<int64_t>(bytes, 4) * pixels > (int64_t(1) << 22)) return 0;
  }
  static const char* const kEndings[] = {".bmp", ".tga", ".udi"};
  const std::string path = fuzz::InputFile(data + 1, size - 1, kEndings[data[0] % 3]);
  BMPData image = {};
  try {
    if (LoadImageFromFile(path.c_str(), &image) == 0) UnloadBMPData(&image);
  } catch (const fuzz::AssertionFailed&) {
    UnloadBMPData(&image);
  }
  return 0;
}
