#pragma once
// Sprites on the device's real 3D context (Mesa through EGL, headless): the
// context, the device clock the texture manager's load timer reads, and the
// texture manager, in the order a title brings them up; and a frame of a loaded
// sprite drawn tile by tile with plain quads, each cell's 16 x 16 tile of its page
// at the cell's place, with the texels as they are (no blending).
#include <GLES/gl.h>

#include <cstdint>
#include <vector>

#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/SpriteInfo.h"
#include "support/GLTestSupport.h"
#include "ygui/YguiTestSupport.h"

namespace spritetest {

struct SpriteGL {
  zvtest::VirtualClock clock;
  zvtest::GLContext gl;
  ygtest::ScopedTextureManager textures;
};

// Clears the whole screen to transparent black.
inline void ClearScreen() {
  glClearColorx(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
}

// Draws frame `frame` of layer 0 with its top left at (x, y). A cell whose page
// has no texture is left out, as the models leave it. Returns the tiles drawn.
inline int DrawFrame(const AnimatedSpriteData& sprite, int frame, int x, int y) {
  const SpriteInfo* info = sprite.GetSpriteInfo(eImageLayer_Base, frame);
  if (info == nullptr) return 0;
  int drawn = 0;
  for (int c = 0; c < info->mCellCount; ++c) {
    const SpriteCell& cell = info->mCells[c];
    const GLTexture* page = sprite.GetLayerTexture(eImageLayer_Base, cell.mPage);
    if (page == nullptr) continue;
    const float w = float(page->mWidth), h = float(page->mHeight);
    zvtest::DrawTextureRegion(page->mTextureID, x + cell.mCellColumn * SpriteInfo::kTileSize,
                              y + cell.mCellRow * SpriteInfo::kTileSize, SpriteInfo::kTileSize, SpriteInfo::kTileSize,
                              cell.mTileColumn * 16 / w, cell.mTileRow * 16 / h, (cell.mTileColumn + 1) * 16 / w,
                              (cell.mTileRow + 1) * 16 / h);
    ++drawn;
  }
  return drawn;
}

}  // namespace spritetest
