// Where a pixel of the rotated screen lands in the buffer, for each orientation,
// on a layer 8 wide and 5 high.
#include <gtest/gtest.h>

#include <functional>

#include "CanvasTestSupport.h"

namespace {

using canvastest::Changed;
using canvastest::Px;
using canvastest::PixelAt;

const Px kClear = {0, 0, 0, 0};
const uint8_t kRgba[4] = {200, 100, 50, 255};
const uint8_t kRgb[3] = {200, 100, 50};

// Each draw form puts the one-pixel image at (x, y) in orientation `orient`.
using DrawForm = std::function<void(CanvasLayer*, int x, int y, int orient)>;
std::vector<std::pair<const char*, DrawForm>> Forms() {
  return {
      {"RGBA8888 9", [](CanvasLayer* l, int x, int y, int o) { l->Draw_Image_RGBA8888(x, y, 1, 1, kRgba, 1, 1, 1.0f, o); }},
      {"RGBA8888 11", [](CanvasLayer* l, int x, int y, int o) { l->Draw_Image_RGBA8888(x, y, 0, 0, 1, 1, kRgba, 1, 1, 1.0f, o); }},
      {"RGB888 6", [](CanvasLayer* l, int x, int y, int o) { l->Draw_Image_RGB888(x, y, kRgb, 1, 1, o); }},
      {"RGB888 10", [](CanvasLayer* l, int x, int y, int o) { l->Draw_Image_RGB888(x, y, 0, 0, 1, 1, kRgb, 1, 1, o); }},
  };
}

class Orientation : public canvastest::LayerTest {
 protected:
  // The one index every form, on both layer kinds, changes for (2, 1) in `orient`.
  void ExpectIndex(int orient, int expected) {
    for (bool platform : {true, false}) {
      for (const auto& form : Forms()) {
        CanvasLayer* layer = platform ? static_cast<CanvasLayer*>(MakeZv(8, 5)) : MakePlain(8, 5);
        form.second(layer, 2, 1, orient);
        EXPECT_EQ(std::vector<int>{expected}, Changed(*layer, kClear))
            << form.first << (platform ? " platform" : " plain") << " orient " << orient;
      }
    }
  }
};

TEST_F(Orientation, ZeroDrawsAsGiven) { ExpectIndex(0, 1 * 8 + 2); }
TEST_F(Orientation, OneTurnsAQuarterClockwise) { ExpectIndex(1, 2 * 8 + (8 - 1 - 1)); }
TEST_F(Orientation, TwoTurnsUpsideDown) { ExpectIndex(2, (5 - 1 - 1) * 8 + (8 - 1 - 2)); }
TEST_F(Orientation, ThreeTurnsAQuarterAnticlockwise) { ExpectIndex(3, (5 - 1 - 2) * 8 + 1); }
TEST_F(Orientation, ValuesOutsideZeroToThreeTurnLikeOne) {
  ExpectIndex(7, 2 * 8 + 6);
  ExpectIndex(-1, 2 * 8 + 6);
}

TEST_F(Orientation, WithOrientOneTheImageXRunsDownTheBufferAndYFromTheRightEdgeLeft) {
  // A 3 x 2 image whose pixel (sx, sy) has red 10 x sy + sx + 1.
  uint8_t image[3 * 2 * 3] = {};
  for (int i = 0; i < 6; ++i) image[i * 3] = uint8_t(10 * (i / 3) + i % 3 + 1);
  ZvCanvasRGBALayer* layer = MakeZv(8, 5);
  layer->Draw_Image_RGB888(0, 0, image, 3, 2, 1);
  // Buffer bytes B, G, R, A: red is byte 2.
  EXPECT_EQ(1, PixelAt(*layer, 7, 0)[2]);   // (0, 0): top row, right edge
  EXPECT_EQ(2, PixelAt(*layer, 7, 1)[2]);   // x + 1: one row down
  EXPECT_EQ(3, PixelAt(*layer, 7, 2)[2]);
  EXPECT_EQ(11, PixelAt(*layer, 6, 0)[2]);  // y + 1: one column left
  EXPECT_EQ(13, PixelAt(*layer, 6, 2)[2]);
  EXPECT_EQ(6u, Changed(*layer, kClear).size());
}

TEST_F(Orientation, SwappedOrientationsClipXAgainstTheHeight) {
  // In orient 1 and 3 x runs to the layer's height (5) and y to its width (8).
  uint8_t image[8 * 3] = {};
  for (int o : {1, 3}) {
    ZvCanvasRGBALayer* layer = MakeZv(8, 5);
    layer->Draw_Image_RGB888(0, 0, image, 8, 1, o);  // 8 wide, only 5 fit
    EXPECT_EQ(5u, Changed(*layer, kClear).size()) << o;
    layer->Clear();
    layer->Draw_Image_RGB888(0, 0, image, 1, 8, o);  // 8 high: all fit
    EXPECT_EQ(8u, Changed(*layer, kClear).size()) << o;
  }
}

}  // namespace
