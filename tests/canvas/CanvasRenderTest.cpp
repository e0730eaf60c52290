// ZvCanvasRender pushing a layer into its surface and showing it.
#include <gtest/gtest.h>

#include "CDisplaySvc.h"
#include "Canvas/VT/ZvCanvasRender.h"
#include "CanvasTestSupport.h"
#include "solva/Display.h"

namespace {

using canvastest::Px;
using canvastest::SetPixel;

class CanvasRenderTest : public canvastest::LayerTest {
 protected:
  // A 2 x 2 layer: opaque B 50 G 100 R 200, half-covered B 0 G 64 R 128 alpha 128,
  // transparent, and opaque white.
  ZvCanvasRGBALayer* Layer() {
    ZvCanvasRGBALayer* layer = MakeZv(2, 2);
    SetPixel(*layer, 0, Px{50, 100, 200, 255});
    SetPixel(*layer, 1, Px{0, 64, 128, 128});
    SetPixel(*layer, 2, Px{0, 0, 0, 0});
    SetPixel(*layer, 3, Px{255, 255, 255, 255});
    return layer;
  }
  std::vector<uint8_t> Shown(ZvCanvasLayer* layer) { return solva::PublishedPicture(layer->GetLayerHandle()); }
  ZvCanvasRender mRender;
};

TEST_F(CanvasRenderTest, BaseRenderDoesNothing) {
  CanvasRender base;
  ZvCanvasRGBALayer* layer = Layer();
  base.PreDraw();
  base.DrawLayer(layer, 1.0f);
  base.PostDraw();
  EXPECT_EQ(0u, solva::DisplaySwapCount());
}

TEST_F(CanvasRenderTest, AlphaOneCopiesTheLayerAndSwaps) {
  ZvCanvasRGBALayer* layer = Layer();
  mRender.PreDraw();
  mRender.DrawLayer(layer, 1.0f);
  mRender.PostDraw();
  EXPECT_EQ(1u, solva::DisplaySwapCount());
  const std::vector<uint8_t> expected(layer->GetBuffer(), layer->GetBuffer() + 16);
  EXPECT_EQ(expected, Shown(layer));
  // Within one step of float precision of 1.0 is still a copy.
  mRender.DrawLayer(layer, 1.0f - 1.1920929e-7f / 2);
  EXPECT_EQ(expected, Shown(layer));
}

TEST_F(CanvasRenderTest, AlphaZeroClearsTheDisplayBufferAndStillSwaps) {
  ZvCanvasRGBALayer* layer = Layer();
  mRender.DrawLayer(layer, 1.0f);
  mRender.DrawLayer(layer, 1.0f);  // both pictures of the surface now hold the layer
  mRender.DrawLayer(layer, 0.0f);
  EXPECT_EQ(3u, solva::DisplaySwapCount());
  EXPECT_EQ(std::vector<uint8_t>(16, 0), Shown(layer));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
}

TEST_F(CanvasRenderTest, AlphaHalfScalesEachAlphaAndPremultipliesTheColour) {
  ZvCanvasRGBALayer* layer = Layer();
  mRender.DrawLayer(layer, 0.5f);
  EXPECT_EQ(1u, solva::DisplaySwapCount());
  // a = (unsigned)(A x 0.5): 127, 64, 0, 127; bytes T[byte][a].
  const std::vector<uint8_t> expected = {
      24, 49, 99, 127,     // T[50][127], T[100][127], T[200][127]
      0, 16, 32, 64,       // T[64][64] = 16.06, T[128][64] = 32.1
      0, 0, 0, 0,          //
      127, 127, 127, 127,  // T[255][127]
  };
  EXPECT_EQ(expected, Shown(layer));
}

TEST_F(CanvasRenderTest, YUVAndOglLayersReturnWithoutASwap) {
  testing::internal::CaptureStdout();
  CanvasLayer* yuv = mFactory.CreateYUVLayer(0, 0, 4, 4);
  testing::internal::GetCapturedStdout();
  mLayers.push_back(yuv);
  CanvasLayer* ogl = mFactory.CreateOglLayer(0, 0, 4, 4);
  mLayers.push_back(ogl);
  mRender.DrawLayer(yuv, 1.0f);
  mRender.DrawLayer(ogl, 1.0f);
  mRender.DrawLayer(yuv, 0.0f);
  EXPECT_EQ(0u, solva::DisplaySwapCount());
}

TEST_F(CanvasRenderTest, ShowsWhatWasPushedAndNotWhatIsDrawnSince) {
  ZvCanvasRGBALayer* layer = MakeZv(480, 272);
  const uint8_t green[3] = {0, 255, 0};
  layer->Draw_Image_RGB888(0, 0, green, 1, 1, 0);
  mRender.DrawLayer(layer, 1.0f);
  const uint8_t blue[3] = {0, 0, 255};
  layer->Draw_Image_RGB888(0, 0, blue, 1, 1, 0);
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(0, 0));
  mRender.DrawLayer(layer, 1.0f);
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(0, 0));
}

}  // namespace
