// Programming faults end in the assertions the layers are known by.
#include <gtest/gtest.h>

#include "Canvas/VT/ZvCanvasRender.h"
#include "CanvasTestSupport.h"
#include "support/TestSupport.h"

namespace {

const uint8_t kPixels[16] = {};

TEST(CanvasAssertionDeathTest, RGB565OnAPlainLayerEndsTheProgram) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    CanvasLayer layer;
    layer.Initialize(0, 0, 4, 4);
    layer.Draw_Image_RGB565(0, 0, kPixels, 1, 1, 0);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: FALSE\n", result.out);
}

TEST(CanvasAssertionDeathTest, RGB565OnEveryPlatformLayerEndsTheProgram) {
  for (int kind = 0; kind < 3; ++kind) {
    const zvtest::ChildResult result = zvtest::RunInChild([kind] {
      solva::ResetDevice();
      ZvCanvasFactory factory;
      CanvasLayer* layer = kind == 0 ? factory.CreateRGBALayer(0, 0, 4, 4)
                           : kind == 1 ? factory.CreateYUVLayer(0, 0, 4, 4)
                                       : factory.CreateOglLayer(0, 0, 4, 4);
      fflush(stdout);
      printf("drawing\n");
      layer->Draw_Image_RGB565(0, 0, kPixels, 1, 1, 0);
    });
    EXPECT_TRUE(result.died()) << kind;
    const std::string tail = "drawing\nAssertion failed: FALSE\n";
    ASSERT_GE(result.out.size(), tail.size()) << kind;
    EXPECT_EQ(tail, result.out.substr(result.out.size() - tail.size())) << kind;
  }
}

TEST(CanvasAssertionDeathTest, DrawLayerOfANullLayerFails) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    ZvCanvasRender render;
    render.DrawLayer(nullptr, 1.0f);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: ZvLayer\n", result.out);
}

TEST(CanvasAssertionDeathTest, DrawLayerOfAForeignLayerFails) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    CanvasLayer layer;
    ZvCanvasRender render;
    render.DrawLayer(&layer, 1.0f);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: ZvLayer\n", result.out);
}

TEST(CanvasAssertionDeathTest, DrawLayerWithoutAnARGBSurfaceFails) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    solva::ResetDevice();
    ZvCanvasFactory factory;
    CanvasLayer* layer = factory.CreateRGBALayer(0, 0, 4, 4);
    layer->Destroy();  // the surface is gone
    ZvCanvasRender render;
    fflush(stdout);
    printf("pushing\n");
    render.DrawLayer(layer, 1.0f);
  });
  EXPECT_TRUE(result.died());
  const std::string tail = "pushing\nAssertion failed: PixelFormat == kPixelFormatARGB8888\n";
  ASSERT_GE(result.out.size(), tail.size());
  EXPECT_EQ(tail, result.out.substr(result.out.size() - tail.size()));
}

TEST(CanvasAssertionDeathTest, PlatformLayerOfAnotherTypeFailsToInitialize) {
  const int line = canvastest::LineOf("Src/Canvas/VT/ZvCanvasTypes.cpp", "assert(0);");
  ASSERT_NE(0, line);
  EXPECT_DEATH(
      {
        ZvCanvasLayer layer(kZvLayerOgl);
        layer.Initialize(0, 0, 4, 4);
      },
      zvtest::Literal(zvtest::AssertText("Src/Canvas/VT/ZvCanvasTypes.cpp", line,
                                         "virtual void ZvCanvasLayer::Initialize(int, int, int, int)", "0")));
}

}  // namespace
