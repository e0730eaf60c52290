// The ".tal" atlas reader: the input is the atlas of a sprite whose animations are
// fine, and every frame and cell it gives is read back.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "FuzzSupport.h"
#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/SpriteInfo.h"

namespace {

void Put32(FILE* file, uint32_t v) { fwrite(&v, 4, 1, file); }

// A title folder of its own with sprite "fz": one animation, atlas layer "base".
void MakeTitleFolder() {
  const std::string root = fuzz::ScratchFolder() + "tal";
  for (const char* sub : {"", "/res", "/res/AnimatedSprites", "/res/AnimatedSprites/fz"}) {
    mkdir((root + sub).c_str(), 0755);
  }
  if (chdir(root.c_str()) != 0) abort();
  FILE* anim = fopen("res/AnimatedSprites/fz/fz.anim", "wb");
  if (anim == nullptr) abort();
  Put32(anim, 0x414E494D);
  fputc(0, anim);
  Put32(anim, 0);  // no animations
  for (int i = 0; i < 32; ++i) fputc(0, anim);
  char layers[160] = "base";
  fwrite(layers, 1, sizeof layers, anim);
  Put32(anim, 0);  // no boxes
  fclose(anim);
  // Pages are looked for through the texture manager; there are no page files, so
  // none is found and no GL is needed.
  GLTextureManager::sCreate();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool sReady = (MakeTitleFolder(), true);
  (void)sReady;
  fuzz::ThrowOnAssertions();
  FILE* tal = fopen("res/AnimatedSprites/fz/fz_base.tal", "wb");
  if (tal == nullptr) abort();
  fwrite(data, 1, size, tal);
  fclose(tal);

  AnimatedSpriteData sprite("fz");
  if (sprite.Load("fz") != 1) abort();  // the animations are fine: only the atlas is fuzzed
  unsigned sum = 0;
  for (int f = 0; SpriteInfo* info = sprite.GetSpriteInfo(eImageLayer_Base, f); ++f) {
    for (unsigned c = 0; c < info->mCellCount; ++c) {
      const SpriteCell& cell = info->mCells[c];
      sum += cell.mPage + cell.mTileColumn + cell.mTileRow + cell.mCellColumn + cell.mCellRow;
      if (sprite.GetLayerTexture(eImageLayer_Base, cell.mPage) != nullptr) abort();  // no page file exists
      if (size_t(cell.mPage) >= sprite.mLayerTextures[0].size()) abort();  // every page a cell uses is counted
    }
  }
  return int(sum & 0);
}
