// The walker's screen as held: what it draws in logical coordinates through the
// real GL lands on the framebuffer pixels where the canvas layers put the same
// image in the same orientation, and a touch on a framebuffer pixel comes back
// as the logical pixel the canvas drew there.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "Canvas/CanvasLayer.h"
#include "Draw.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/RenderStateStack.h"
#include "Screen.h"
#include "support/GLTestSupport.h"

namespace {

using walker::Screen;

// A 5 x 3 image, every pixel a colour of its own, so that a turn or a mirror shows.
const int kImageWidth = 5, kImageHeight = 3;
uint32_t ImageRgba(int x, int y) {
  return 0x000000FFu | uint32_t(40 + 40 * x) << 24 | uint32_t(60 + 70 * y) << 16 | 0x9900u;
}

struct Place {
  int x, y;
};
// The corners of the logical screen and a point inside it.
std::vector<Place> Places(const Screen& screen) {
  return {{0, 0}, {screen.width() - kImageWidth, screen.height() - kImageHeight}, {37, 101}};
}

// The framebuffer as the canvas leaves it, 0xAARRGGBB, after drawing the image at
// each place in the orientation (the portable layer keeps R, G, B, A).
std::vector<uint32_t> CanvasPicture(const Screen& screen) {
  std::vector<uint8_t> rgb;
  for (int y = 0; y < kImageHeight; ++y) {
    for (int x = 0; x < kImageWidth; ++x) {
      for (int shift : {24, 16, 8}) rgb.push_back(uint8_t(ImageRgba(x, y) >> shift));
    }
  }
  CanvasLayer layer;
  layer.Initialize(0, 0, Screen::kWidth, Screen::kHeight);
  layer.Clear();
  for (const Place& p : Places(screen))
    layer.Draw_Image_RGB888(p.x, p.y, rgb.data(), kImageWidth, kImageHeight, screen.orientation());
  std::vector<uint32_t> picture;
  const uint8_t* b = layer.GetBuffer();
  for (int i = 0; i < Screen::kWidth * Screen::kHeight; ++i, b += 4)
    picture.push_back(uint32_t(b[3]) << 24 | uint32_t(b[0]) << 16 | uint32_t(b[1]) << 8 | b[2]);
  layer.Destroy();
  return picture;
}

class WalkerScreen : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    RenderStateStack::initialize();
    zvtest::UseScreenProjection(GL_REPLACE);  // the widget's projection; every colour drawn as it is
    screen.Follow(GetParam());
    screen.Apply();
    glClearColorx(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
  }
  void TearDown() override { RenderStateStack::destory(); }
  std::string Name(const char* what) const { return std::string(what) + std::to_string(GetParam()); }

  zvtest::GLContext gl;
  Screen screen;
};

TEST_P(WalkerScreen, RectanglesLandWhereTheCanvasPutsTheSameImage) {
  for (const Place& p : Places(screen)) {
    for (int y = 0; y < kImageHeight; ++y) {
      for (int x = 0; x < kImageWidth; ++x) walker::FillRect(p.x + x, p.y + y, 1, 1, ImageRgba(x, y));
    }
  }
  EXPECT_TRUE(zvtest::SamePixels(Name("walker_rects_"), CanvasPicture(screen),
                                 zvtest::ReadPixels(0, 0, Screen::kWidth, Screen::kHeight), Screen::kWidth,
                                 Screen::kHeight));
}

TEST_P(WalkerScreen, TexturesLandWhereTheCanvasPutsTheSameImage) {
  // The image in the corner of an 8 x 4 texture, drawn through the batch renderer.
  std::vector<uint8_t> texels(8 * 4 * 4, 0);
  for (int y = 0; y < kImageHeight; ++y) {
    for (int x = 0; x < kImageWidth; ++x) {
      for (int c = 0; c < 4; ++c) texels[(y * 8 + x) * 4 + c] = uint8_t(ImageRgba(x, y) >> (24 - 8 * c));
    }
  }
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameterx(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameterx(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 8, 4, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
  AnimatedModel2DRender::sCreate();
  for (const Place& p : Places(screen))
    walker::DrawTexture(texture, 0.0f, 0.0f, kImageWidth / 8.0f, kImageHeight / 4.0f, p.x, p.y, kImageWidth,
                        kImageHeight);
  delete AnimatedModel2DRender::instance_;
  AnimatedModel2DRender::instance_ = nullptr;
  glDeleteTextures(1, &texture);
  EXPECT_TRUE(zvtest::SamePixels(Name("walker_texture_"), CanvasPicture(screen),
                                 zvtest::ReadPixels(0, 0, Screen::kWidth, Screen::kHeight), Screen::kWidth,
                                 Screen::kHeight));
}

// Every framebuffer pixel: the canvas, drawing a one-pixel image at the logical
// pixel the touch maps to, changes exactly that framebuffer pixel.
TEST_P(WalkerScreen, ATouchMapsToTheLogicalPixelTheCanvasDrewThere) {
  CanvasLayer layer;
  layer.Initialize(0, 0, Screen::kWidth, Screen::kHeight);
  layer.Clear();
  const uint8_t white[3] = {255, 255, 255};
  int wrong = 0;
  for (int y = 0; y < Screen::kHeight; ++y) {
    for (int x = 0; x < Screen::kWidth; ++x) {
      int lx = -1, ly = -1;
      screen.ToLogical(x, y, &lx, &ly);
      ASSERT_TRUE(lx >= 0 && lx < screen.width() && ly >= 0 && ly < screen.height())
          << "(" << x << ", " << y << ") maps off the screen, to (" << lx << ", " << ly << ")";
      layer.Draw_Image_RGB888(lx, ly, white, 1, 1, screen.orientation());
      uint8_t* pixel = layer.GetBuffer() + (y * Screen::kWidth + x) * 4;
      if (pixel[0] != 255 && wrong++ == 0)
        ADD_FAILURE() << "(" << x << ", " << y << ") maps to (" << lx << ", " << ly << ")";
      for (int i = 0; i < 4; ++i) pixel[i] = 0;
    }
  }
  EXPECT_EQ(0, wrong);
  // And nothing was drawn elsewhere: each pixel was cleared again as it was checked.
  const std::vector<uint8_t> left(layer.GetBuffer(), layer.GetBuffer() + Screen::kWidth * Screen::kHeight * 4);
  EXPECT_EQ(std::vector<uint8_t>(left.size(), 0), left);
  layer.Destroy();
}

std::string OrientationName(const testing::TestParamInfo<int>& info) {
  static const char* const names[4] = {"Flat", "Upright", "FlatUpsideDown", "UprightUpsideDown"};
  return names[info.param];
}
INSTANTIATE_TEST_SUITE_P(Orientations, WalkerScreen, testing::Values(0, 1, 2, 3), OrientationName);

TEST(WalkerScreenSize, FlatIs480By272AndUprightIs272By480) {
  Screen screen;
  for (int orientation = 0; orientation < 4; ++orientation) {
    screen.Follow(orientation);
    const bool upright = orientation == 1 || orientation == 3;
    EXPECT_EQ(upright, screen.upright()) << orientation;
    EXPECT_EQ(upright ? 272 : 480, screen.width()) << orientation;
    EXPECT_EQ(upright ? 480 : 272, screen.height()) << orientation;
  }
}

// As the canvas turns such a value.
TEST(WalkerScreenSize, AnOrientationOutside0To3TurnsAsUpright) {
  for (int orientation : {-1, 4, 7}) {
    Screen screen;
    screen.Follow(orientation);
    EXPECT_EQ(1, screen.orientation()) << orientation;
  }
}

}  // namespace
