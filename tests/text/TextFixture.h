#pragma once
// What the text tests share: a glyph table laid out byte by byte, the device's
// real 3D context with the screen's projection, the device clock and the
// managers text needs, and the quads each draw sent to the GL (read from the
// vertex uploads).
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/XFontManager.h"
#include "support/GLTestSupport.h"
#include "support/TestSupport.h"
#include "support/gl/GLCallCounter.h"

namespace texttest {

using zvtest::Bytes;

// A font .bin file: the 7-byte header, then 256 records of 9 bytes.
struct FontTable {
  Bytes bytes = Bytes(7 + 256 * 9, 0);
  FontTable(int emSize, int spacing, int height, int sheetWidth = 32, int sheetHeight = 16) {
    bytes[0] = uint8_t(emSize);
    bytes[1] = uint8_t(spacing);
    bytes[2] = uint8_t(height);
    bytes[3] = uint8_t(sheetWidth);
    bytes[4] = uint8_t(sheetWidth >> 8);
    bytes[5] = uint8_t(sheetHeight);
    bytes[6] = uint8_t(sheetHeight >> 8);
  }
  // Offsets as the file stores them: one unsigned byte each.
  void glyph(unsigned char code, int sheetX, int sheetY, int width, int height, uint8_t offsetX, uint8_t offsetY,
             int advance) {
    uint8_t* r = &bytes[7 + code * 9];
    r[0] = uint8_t(sheetX);
    r[1] = uint8_t(sheetX >> 8);
    r[2] = uint8_t(sheetY);
    r[3] = uint8_t(sheetY >> 8);
    r[4] = uint8_t(width);
    r[5] = uint8_t(height);
    r[6] = offsetX;
    r[7] = offsetY;
    r[8] = uint8_t(advance);
  }
};

// The test font, whose widths the tests compute by hand: spacing 1, em 12 (a
// third: 4), line 10. The space has no picture and advance 3 (so 4 as a space,
// 13 as a tab). Lowercase letters but 'b', 'c', 'd' and 'z': 4 x 6 from
// (0, 8), 2 below the line top, advance 5 (6 each). 'b': 5 x 8 from (4, 0),
// offset (1, 0), advance 6 (7). 'c': offset byte 128, 'd': offset bytes 129 and
// 255 (-127, -1), both 3 x 4, advance 4 (5). 'W': 8 x 8, advance 9 (10). '|': 1 x
// 8, advance 2 (3). '-': 3 x 1 at 4 down, advance 4 (5). 'z', '^', '\\' and the
// tab have no glyph.
inline FontTable TestFont(int spaceAdvance = 3) {
  FontTable table(12, 1, 10);
  table.glyph(' ', 0, 0, 0, 0, 0, 0, spaceAdvance);
  for (char c = 'a'; c < 'z'; ++c) table.glyph(c, 0, 8, 4, 6, 0, 2, 5);
  table.glyph('b', 4, 0, 5, 8, 1, 0, 6);
  table.glyph('c', 9, 0, 3, 4, 128, 3, 4);
  table.glyph('d', 12, 0, 3, 4, 129, 255, 4);
  table.glyph('W', 16, 0, 8, 8, 0, 0, 9);
  table.glyph('|', 24, 0, 1, 8, 0, 0, 2);
  table.glyph('-', 26, 0, 3, 1, 0, 4, 4);
  return table;
}

// A quad as it reached the GL, in whole pixels.
struct Quad {
  int left, top, right, bottom;
  bool operator==(const Quad& o) const {
    return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
  }
};
inline std::ostream& operator<<(std::ostream& out, const Quad& q) {
  return out << "{" << q.left << ", " << q.top << ", " << q.right << ", " << q.bottom << "}";
}

class TextTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    GLTextureManager::sCreate();
    AnimatedModel2DRender::sCreate();
    XFontManager::sCreate();
    zvtest::UseScreenProjection(GL_REPLACE);
    glClearColorx(0, 0, 0, 1 << 16);
    glClear(GL_COLOR_BUFFER_BIT);
  }
  void TearDown() override {
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    delete AnimatedModel2DRender::instance_;
    AnimatedModel2DRender::instance_ = nullptr;
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
  }

  XFontManager& Fonts() { return XFontManager::sInstance(); }

  // The table as font 0's .bin file, read by createFont; with a sheet of opaque
  // white 32 x 16 unless `sheet` is false.
  void LoadFont(const FontTable& table, bool sheet = true) {
    const std::string path = dir.file("font.bin");
    zvtest::WriteBytes(path, table.bytes);
    ASSERT_EQ(1, Fonts().createFont(0, path.c_str()));
    if (!sheet) return;
    std::vector<uint8_t> white(32 * 16 * 4, 255);
    std::string name = "sheet";
    GLTexture* texture = gxGetTextureManager()->LoadTexture(white.data(), 32, 16, 32, name, nullptr);
    ASSERT_NE(nullptr, texture);
    Fonts().mFontTextures.push_back(texture);
  }

  // What `draw` sends to the GL: every quad uploaded to the renderer's vertex
  // buffer, in order.
  template <class Draw>
  std::vector<Quad> Drawn(Draw draw) {
    zvtest::GLCalls().Reset();
    draw();
    std::vector<Quad> quads;
    for (const auto& upload : zvtest::GLCalls().uploads) {
      if (upload.buffer != AnimatedModel2DRender::sInstance().mVertexVBO) continue;
      const GLfixed* v = reinterpret_cast<const GLfixed*>(upload.bytes.data());
      for (size_t i = 0; i + 8 <= upload.bytes.size() / sizeof(GLfixed); i += 8) {
        Quad q{v[i] >> 16, v[i + 1] >> 16, v[i] >> 16, v[i + 1] >> 16};
        for (size_t k = 0; k < 8; k += 2) {
          q.left = std::min(q.left, v[i + k] >> 16);
          q.right = std::max(q.right, v[i + k] >> 16);
          q.top = std::min(q.top, v[i + k + 1] >> 16);
          q.bottom = std::max(q.bottom, v[i + k + 1] >> 16);
        }
        quads.push_back(q);
      }
    }
    return quads;
  }

  zvtest::VirtualClock clock;  // the texture manager's load timer reads it
  zvtest::GLContext gl;
  zvtest::TempDir dir;
};

}  // namespace texttest
