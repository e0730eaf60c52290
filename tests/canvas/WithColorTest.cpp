// CanvasLayer::Draw_Image_WithColor, which premultiplies what is already there.
#include <gtest/gtest.h>

#include "CanvasTestSupport.h"
#include "support/TestSupport.h"

namespace {

using canvastest::Changed;
using canvastest::Px;
using canvastest::PixelAt;

const Px kHalf = {200, 100, 50, 128};
// 200 x 128 / 255 = 100.4, 100 x 128 / 255 = 50.2, 50 x 128 / 255 = 25.1
const Px kPremultiplied = {100, 50, 25, 128};

class WithColor : public canvastest::LayerTest {
 protected:
  CanvasLayer* Layer() {  // 4 wide, 3 high, every pixel kHalf
    CanvasLayer* layer = MakePlain(4, 3);
    canvastest::Fill(*layer, kHalf);
    return layer;
  }
};

TEST_F(WithColor, PremultipliesTheRectangleByItsOwnAlphaIgnoringTheColour) {
  CanvasLayer* layer = Layer();
  layer->Draw_Image_WithColor(1, 1, 2, 1, 9, 9, 9, 0.1f, 1);
  EXPECT_EQ((std::vector<int>{5, 6}), Changed(*layer, kHalf));  // Y x W + X
  EXPECT_EQ(kPremultiplied, PixelAt(*layer, 5));
  EXPECT_EQ(kPremultiplied, PixelAt(*layer, 6));
}

TEST_F(WithColor, OrientZeroChecksOneIndexAndChangesTheTurnedPixel) {
  CanvasLayer* layer = Layer();
  layer->Draw_Image_WithColor(1, 1, 1, 1, 0, 0, 0, 1.0f, 0);
  EXPECT_EQ((std::vector<int>{1 * 4 + (4 - 1)}), Changed(*layer, kHalf));  // X x W + (W - Y)
  EXPECT_EQ(kPremultiplied, PixelAt(*layer, 7));
}

TEST_F(WithColor, LimitsRunTheOtherWayRoundFromTheImageForms) {
  CanvasLayer* layer = Layer();
  layer->Draw_Image_WithColor(4, 0, 1, 1, 0, 0, 0, 1.0f, 0);  // x > height (3) with orient 0
  layer->Draw_Image_WithColor(0, 5, 1, 1, 0, 0, 0, 1.0f, 0);  // y > width (4) with orient 0
  layer->Draw_Image_WithColor(5, 0, 1, 1, 0, 0, 0, 1.0f, 2);  // x > width with another orient
  layer->Draw_Image_WithColor(0, 4, 1, 1, 0, 0, 0, 1.0f, 2);  // y > height with another orient
  layer->Draw_Image_WithColor(-3, 0, 2, 1, 0, 0, 0, 1.0f, 1);  // x + w < 0
  layer->Draw_Image_WithColor(0, 0, 0, 1, 0, 0, 0, 1.0f, 1);   // w < 1
  layer->Draw_Image_WithColor(0, 0, 1, 0, 0, 0, 0, 1.0f, 1);   // h < 1
  EXPECT_TRUE(Changed(*layer, kHalf).empty());
}

TEST_F(WithColor, OrientZeroPassesXEqualToTheHeightButItsTurnedPixelLiesPastTheBuffer) {
  CanvasLayer* layer = Layer();
  layer->Draw_Image_WithColor(3, 0, 1, 1, 0, 0, 0, 1.0f, 0);  // checked index 3; turned index 3 x 4 + 4 = 16
  EXPECT_TRUE(Changed(*layer, kHalf).empty());
}

TEST_F(WithColor, PixelsPastTheBufferAreLeftAlone) {
  CanvasLayer* layer = Layer();
  layer->Draw_Image_WithColor(3, 2, 4, 4, 0, 0, 0, 1.0f, 1);  // would run past the last row
  EXPECT_EQ((std::vector<int>{11}), Changed(*layer, kHalf));
}

TEST(WithColorDeathTest, OrientZeroFailsWhenTheCheckedIndexIsPastTheBuffer) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    CanvasLayer layer;
    layer.Initialize(0, 0, 4, 3);
    layer.Clear();
    layer.Draw_Image_WithColor(0, 3, 1, 1, 0, 0, 0, 1.0f, 0);  // Y x W + X = 12
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: DestTemp < mBuffer + mWidth * mHeight * 4\n", result.out);
}

}  // namespace
