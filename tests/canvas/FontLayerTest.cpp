// The RGBA layer's TrueType text, which this title leaves unloaded.
#include <gtest/gtest.h>

#include "CanvasTestSupport.h"

namespace {

using canvastest::Changed;
using canvastest::Px;

class FontLayer : public canvastest::LayerTest {};

TEST_F(FontLayer, WithoutInitFontDrawStringDrawsNothing) {
  ZvCanvasRGBALayer* layer = MakeZv(64, 32);
  layer->DrawString(0, 0, "Hello", 0);
  EXPECT_TRUE(Changed(*layer, Px{0, 0, 0, 0}).empty());
  EXPECT_EQ(Vantrel::Solva::kInvalidFontHndl, layer->GetFontHandle());
}

TEST_F(FontLayer, InitFontFallsBackToASystemFontAndDescribesTheLayersBuffer) {
  ZvCanvasRGBALayer* layer = MakeZv(64, 32);
  layer->InitFont();
  EXPECT_NE(Vantrel::Solva::kInvalidFontHndl, layer->GetFontHandle());
  const Vantrel::Solva::tFontSurf& surf = layer->GetFontSurf();
  EXPECT_EQ(64, surf.width);
  EXPECT_EQ(32, surf.height);
  EXPECT_EQ(64 * 4, surf.pitch);
  EXPECT_EQ(layer->GetBuffer(), surf.buffer);
  EXPECT_EQ(Vantrel::Solva::kPixelFormatARGB8888, surf.format);
}

TEST_F(FontLayer, DrawStringDrawsWhiteTextIntoTheLayer) {
  ZvCanvasRGBALayer* layer = MakeZv(64, 32);
  layer->InitFont();
  layer->DrawString(2, 2, "Hi", 3);  // orient is not used
  const std::vector<int> inked = Changed(*layer, Px{0, 0, 0, 0});
  ASSERT_FALSE(inked.empty());
  int full = 0;
  for (int index : inked) {
    const Px p = canvastest::PixelAt(*layer, index);
    // White text over transparent: every channel equals the coverage.
    EXPECT_EQ(p[3], p[0]);
    EXPECT_EQ(p[3], p[1]);
    EXPECT_EQ(p[3], p[2]);
    const int x = index % 64;
    const int y = index / 64;
    EXPECT_GE(x, 2);
    EXPECT_LT(x, 2 + 30);
    EXPECT_GE(y, 2);
    EXPECT_LT(y, 2 + 22);
    full += p[3] == 255 ? 1 : 0;
  }
  EXPECT_GT(full, 10);  // the stems of H and i are solid
}

TEST_F(FontLayer, DestroyUnloadsTheFont) {
  ZvCanvasRGBALayer* layer = MakeZv(16, 16);
  layer->InitFont();
  layer->Destroy();
  EXPECT_EQ(Vantrel::Solva::kInvalidFontHndl, layer->GetFontHandle());
  EXPECT_EQ(nullptr, layer->GetFontSurf().buffer);
  EXPECT_EQ(0, layer->GetFontSurf().width);
  mLayers.clear();
  delete layer;
}

}  // namespace
