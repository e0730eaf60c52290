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
  // A BMP's pixels are allocated at the size its header asks for, (depth / 8) x
  // width x rows, however little data follows, and converted at 4 bytes a pixel
  // at most; one larger than the machine has is the loader's "no memory" answer,
  // not a question of parsing (libFuzzer would stop at the allocation).
  if (data[0] % 3 == 0) {
    uint8_t header[30] = {};  // a short file's missing header bytes read as zero
    memcpy(header, data + 1, std::min(size - 1, sizeof header));
    int32_t width, height;
    uint16_t depth;
    memcpy(&width, header + 18, 4);
    memcpy(&height, header + 22, 4);
    memcpy(&depth, header + 28, 2);
    const int64_t pixels = std::llabs(int64_t(width)) * std::llabs(int64_t(height));
    if (std::max<int64_t>(depth >> 3, 4) * pixels > (int64_t(1) << 22)) return 0;
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
