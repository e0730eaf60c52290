// The image loaders: the first byte chooses BMP, TGA or UDI, the rest is the file.
#include "FuzzSupport.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/ImageLoader.h"
#include "RenderSystem/GLTextureManager.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  fuzz::ThrowOnAssertions();
  if (GLTextureManager::instance_ == nullptr) GLTextureManager::sCreate();  // UDI asks for it
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
