// Tile descriptions (.np2t): the input is the description of "pic", whose first
// four tiles exist as small pictures; the whole image is put together and scaled
// for drawing.
#include <sys/stat.h>

#include <cstring>
#include <vector>

#include "FuzzSupport.h"
#include "RenderSystem/GLTextureManager.h"
#include "YGUI/YGUITypes.h"

namespace {

// Tiles of 16 x 8 pixels, 32-bit TGA with the top-left origin.
std::string Folder() {
  static const std::string folder = [] {
    const std::string path = fuzz::ScratchFolder() + "np2t/";
    mkdir(path.c_str(), 0755);
    mkdir((path + "NP2T_pic").c_str(), 0755);
    std::vector<uint8_t> tga = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 16, 0, 8, 0, 32, 0x28};
    for (int i = 0; i < 16 * 8; ++i) tga.insert(tga.end(), {uint8_t(i), 0x40, 0x80, 0xFF});
    for (int tile = 0; tile < 4; ++tile) {
      const std::string name = path + "NP2T_pic/pic_Tile0" + std::to_string(tile) + ".tga";
      fuzz::WriteFile(name, tga.data(), tga.size());
    }
    return path;
  }();
  return folder;
}

int ReadInt(const uint8_t* at) {
  int value;
  memcpy(&value, at, 4);
  return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The whole image is allocated at the size the header asks for; one larger than
  // the machine has is the loader's assertion "Buffer", not a question of parsing.
  if (size >= 12 && int64_t(ReadInt(data + 4)) * ReadInt(data + 8) > (int64_t(1) << 22)) return 0;
  if (GLTextureManager::instance_ == nullptr) GLTextureManager::sCreate();
  fuzz::WriteFile(Folder() + "NP2T_pic/pic.np2t", data, size);
  fuzz::RunOrAssert([&] {
    YGUIRawImage image;
    if (image.IntegrateNp2Texture("pic", Folder())) image.GetRenderBuffer(40, 30, eScale_Nearest);
    image.Release();
  });
  return 0;
}
