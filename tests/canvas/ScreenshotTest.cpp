// A layer drawn, pushed and read back from the device's screenshot.
#include <gtest/gtest.h>

#include "Canvas/VT/ZvCanvasRender.h"
#include "CanvasTestSupport.h"
#include "solva/Display.h"
#include "support/PngImage.h"
#include "support/TestSupport.h"

namespace {

class Screenshot : public canvastest::LayerTest {
 protected:
  zvtest::PngImage Shot(const std::string& name) {
    const std::string path = mDir.file(name);
    std::string error;
    EXPECT_TRUE(solva::WriteScreenshotPNG(path, &error)) << error;
    zvtest::PngImage image;
    EXPECT_TRUE(zvtest::ReadPng(path, &image, &error)) << error;
    return image;
  }
  zvtest::TempDir mDir;
};

TEST_F(Screenshot, LayerPushedWithDrawLayerShowsOnTheScreen) {
  ZvCanvasRGBALayer* layer = MakeZv(480, 272);
  ZvCanvasRender render;
  // An opaque 40 x 20 orange block at (10, 30), a half-transparent 20 x 20 blue
  // block at (100, 100), the rest transparent over the screen's black.
  std::vector<uint8_t> orange(40 * 20 * 3);
  for (size_t i = 0; i < orange.size(); i += 3) {
    orange[i] = 255;
    orange[i + 1] = 128;
    orange[i + 2] = 0;
  }
  std::vector<uint8_t> blue(20 * 20 * 4);
  for (size_t i = 0; i < blue.size(); i += 4) {
    blue[i + 2] = 255;
    blue[i + 3] = 128;
  }
  layer->Clear();
  layer->Draw_Image_RGB888(10, 30, orange.data(), 40, 20, 0);
  layer->Draw_Image_RGBA8888(100, 100, 20, 20, blue.data(), 20, 20, 1.0f, 0);
  render.PreDraw();
  render.DrawLayer(layer, 1.0f);
  render.PostDraw();

  const zvtest::PngImage image = Shot("screen.png");
  ASSERT_EQ(480, image.width);
  ASSERT_EQ(272, image.height);
  EXPECT_EQ(0xFFFF8000u, image.at(10, 30));
  EXPECT_EQ(0xFFFF8000u, image.at(49, 49));
  EXPECT_EQ(0xFF000000u, image.at(50, 49));
  EXPECT_EQ(0xFF000000u, image.at(9, 30));
  // Blue 255 at a = 128 over transparent: T[255][128] = 128, alpha 128; over black
  // that is 128 blue.
  EXPECT_EQ(0xFF000080u, image.at(100, 100));
  EXPECT_EQ(0xFF000080u, image.at(119, 119));
  EXPECT_EQ(0xFF000000u, image.at(120, 119));
  // Every pixel agrees with the device's own reading.
  EXPECT_EQ(solva::ReadScreen(), image.pixels);
}

TEST_F(Screenshot, RotatedLayerShowsTurnedOnTheScreen) {
  ZvCanvasRGBALayer* layer = MakeZv(480, 272);
  ZvCanvasRender render;
  const uint8_t white[3] = {255, 255, 255};
  // At (0, 0) of the rotated screen, orientation 1 puts it at the top right.
  layer->Draw_Image_RGB888(0, 0, white, 1, 1, 1);
  layer->Draw_Image_RGB888(0, 0, white, 1, 1, 2);  // bottom right
  layer->Draw_Image_RGB888(0, 0, white, 1, 1, 3);  // bottom left
  render.DrawLayer(layer, 1.0f);
  const zvtest::PngImage image = Shot("rotated.png");
  EXPECT_EQ(0xFFFFFFFFu, image.at(479, 0));
  EXPECT_EQ(0xFFFFFFFFu, image.at(479, 271));
  EXPECT_EQ(0xFFFFFFFFu, image.at(0, 271));
  EXPECT_EQ(0xFF000000u, image.at(0, 0));
}

}  // namespace
