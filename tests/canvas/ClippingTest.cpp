// Clipping of every image form at the four edges of a layer 8 wide and 5 high.
// The 4 x 3 source's pixel (sx, sy) carries 10 x sy + sx + 1 in its red byte.
#include <gtest/gtest.h>

#include <functional>

#include "CanvasTestSupport.h"

namespace {

using canvastest::Changed;
using canvastest::Px;
using canvastest::PixelAt;

const Px kClear = {0, 0, 0, 0};

struct Source {
  uint8_t rgba[4 * 3 * 4] = {};
  uint8_t rgb[4 * 3 * 3] = {};
  Source() {
    for (int i = 0; i < 12; ++i) {
      const uint8_t value = uint8_t(10 * (i / 4) + i % 4 + 1);
      rgba[i * 4] = value;
      rgba[i * 4 + 3] = 255;
      rgb[i * 3] = value;
    }
  }
};
const Source kSource;

struct Form {
  const char* name;
  bool platform;
  std::function<void(CanvasLayer*, int x, int y)> draw;
  // Blends opaque pixels at 254: a value v arrives as floor(v x 254 / 255) = v - 1.
  bool blendsAt254 = false;
};

// The forms that skip what lies off the left and top edges (all but the platform's
// eleven-argument form).
std::vector<Form> SkippingForms() {
  return {
      {"platform RGBA 9", true, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGBA8888(x, y, 4, 3, kSource.rgba, 4, 3, 1.0f, 0); }},
      {"platform RGB 6", true, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGB888(x, y, kSource.rgb, 4, 3, 0); }},
      {"platform RGB 10", true, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGB888(x, y, 0, 0, 4, 3, kSource.rgb, 4, 3, 0); }},
      {"plain RGBA 9", false, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGBA8888(x, y, 4, 3, kSource.rgba, 4, 3, 1.0f, 0); }},
      {"plain RGBA 11", false, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGBA8888(x, y, 0, 0, 4, 3, kSource.rgba, 4, 3, 1.0f, 0); }},
      {"plain RGB 6", false, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGB888(x, y, kSource.rgb, 4, 3, 0); }},
      {"plain RGB 10", false, [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGB888(x, y, 0, 0, 4, 3, kSource.rgb, 4, 3, 0); }},
  };
}
Form ElevenArgumentPlatformForm() {
  return {"platform RGBA 11", true,
          [](CanvasLayer* l, int x, int y) { l->Draw_Image_RGBA8888(x, y, 0, 0, 4, 3, kSource.rgba, 4, 3, 1.0f, 0); },
          true};
}

class Clipping : public canvastest::LayerTest {
 protected:
  CanvasLayer* Layer(const Form& form) { return form.platform ? static_cast<CanvasLayer*>(MakeZv(8, 5)) : MakePlain(8, 5); }
  // The source value at layer pixel (x, y), or 0 when it was left alone.
  static int ValueAt(const Form& form, const CanvasLayer& layer, int x, int y) {
    const Px p = PixelAt(layer, x, y);
    if (p[3] == 0) return 0;
    return p[form.platform ? 2 : 0] + (form.blendsAt254 ? 1 : 0);
  }
  // What the layer holds, row by row, as source values.
  static std::vector<std::vector<int>> Picture(const Form& form, const CanvasLayer& layer) {
    std::vector<std::vector<int>> rows(5, std::vector<int>(8));
    for (int y = 0; y < 5; ++y) {
      for (int x = 0; x < 8; ++x) rows[y][x] = ValueAt(form, layer, x, y);
    }
    return rows;
  }
};

using Rows = std::vector<std::vector<int>>;

TEST_F(Clipping, LeftEdgeSkipsTheSourceColumnsOffTheLayer) {
  const Rows expected = {{0, 0, 0, 0, 0, 0, 0, 0}, {3, 4, 0, 0, 0, 0, 0, 0}, {13, 14, 0, 0, 0, 0, 0, 0},
                         {23, 24, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0}};
  for (const Form& form : SkippingForms()) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, -2, 1);
    EXPECT_EQ(expected, Picture(form, *layer)) << form.name;
  }
}

TEST_F(Clipping, RightEdgeCutsTheRunWithoutWrappingIntoTheNextRow) {
  const Rows expected = {{0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 1, 2}, {0, 0, 0, 0, 0, 0, 11, 12},
                         {0, 0, 0, 0, 0, 0, 21, 22}, {0, 0, 0, 0, 0, 0, 0, 0}};
  std::vector<Form> forms = SkippingForms();
  forms.push_back(ElevenArgumentPlatformForm());
  for (const Form& form : forms) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, 6, 1);
    EXPECT_EQ(expected, Picture(form, *layer)) << form.name;
  }
}

TEST_F(Clipping, TopEdgeSkipsTheSourceRowsOffTheLayer) {
  const Rows expected = {{0, 21, 22, 23, 24, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0},
                         {0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0}};
  for (const Form& form : SkippingForms()) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, 1, -2);
    EXPECT_EQ(expected, Picture(form, *layer)) << form.name;
  }
}

TEST_F(Clipping, BottomEdgeCutsTheRows) {
  const Rows expected = {{0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0},
                         {0, 1, 2, 3, 4, 0, 0, 0}, {0, 11, 12, 13, 14, 0, 0, 0}};
  std::vector<Form> forms = SkippingForms();
  forms.push_back(ElevenArgumentPlatformForm());
  for (const Form& form : forms) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, 1, 3);
    EXPECT_EQ(expected, Picture(form, *layer)) << form.name;
  }
}

TEST_F(Clipping, ElevenArgumentPlatformFormCutsTheRightAndBottomOfTheSourceInstead) {
  const Form form = ElevenArgumentPlatformForm();
  CanvasLayer* layer = Layer(form);
  form.draw(layer, -2, 1);  // two columns show: source columns 0 and 1
  EXPECT_EQ(1, ValueAt(form, *layer, 0, 1));
  EXPECT_EQ(2, ValueAt(form, *layer, 1, 1));
  EXPECT_EQ(21, ValueAt(form, *layer, 0, 3));
  EXPECT_EQ(0, ValueAt(form, *layer, 2, 1));
  layer->Clear();
  form.draw(layer, 1, -2);  // one row shows: source row 0
  EXPECT_EQ(1, ValueAt(form, *layer, 1, 0));
  EXPECT_EQ(4, ValueAt(form, *layer, 4, 0));
  EXPECT_EQ(4u, Changed(*layer, kClear).size());
}

TEST_F(Clipping, ImageAtXMinusTenThroughElevenArgumentFormShowsItsLeftmostColumnsAtColumnZero) {
  // 20 x 1 source, red = column + 1.
  uint8_t wide[20 * 4] = {};
  for (int i = 0; i < 20; ++i) {
    wide[i * 4] = uint8_t(i + 1);
    wide[i * 4 + 3] = 255;
  }
  ZvCanvasRGBALayer* layer = MakeZv(8, 5);
  layer->Draw_Image_RGBA8888(-10, 0, 0, 0, 20, 1, wide, 20, 1, 1.0f, 0);
  // Blended at 254 over transparent: red v arrives as floor(v x 254 / 255) = v - 1.
  EXPECT_EQ((Px{0, 0, 0, 254}), PixelAt(*layer, 0, 0));  // source column 0 (red 1)
  EXPECT_EQ((Px{0, 0, 1, 254}), PixelAt(*layer, 1, 0));  // source column 1 (red 2)
  EXPECT_EQ((Px{0, 0, 7, 254}), PixelAt(*layer, 7, 0));  // source column 7 (red 8)
  // The nine-argument form skips the ten columns off the layer.
  ZvCanvasRGBALayer* other = MakeZv(8, 5);
  other->Draw_Image_RGBA8888(-10, 0, 20, 1, wide, 20, 1, 1.0f, 0);
  EXPECT_EQ(11, PixelAt(*other, 0, 0)[2]);
}

TEST_F(Clipping, ImageAtXEqualToTheLimitPassesTheRejectionWithARunOfZero) {
  std::vector<Form> forms = SkippingForms();
  forms.push_back(ElevenArgumentPlatformForm());
  for (const Form& form : forms) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, 8, 0);  // x == width
    form.draw(layer, 0, 5);  // y == height
    EXPECT_TRUE(Changed(*layer, kClear).empty()) << form.name;
  }
}

TEST_F(Clipping, ImagesWhollyOutsideAreRejectedSilently) {
  std::vector<Form> forms = SkippingForms();
  forms.push_back(ElevenArgumentPlatformForm());
  for (const Form& form : forms) {
    CanvasLayer* layer = Layer(form);
    form.draw(layer, -5, 0);   // x + srcW = -1
    form.draw(layer, 9, 0);    // beyond the right
    form.draw(layer, 0, -4);   // y + srcH = -1
    form.draw(layer, 0, 6);    // beyond the bottom
    form.draw(layer, -4, 0);   // x + srcW = 0: passes, draws nothing
    EXPECT_TRUE(Changed(*layer, kClear).empty()) << form.name;
  }
}

TEST_F(Clipping, WidthAndHeightLimitTheRun) {
  ZvCanvasRGBALayer* layer = MakeZv(8, 5);
  layer->Draw_Image_RGBA8888(0, 0, 2, 1, kSource.rgba, 4, 3, 1.0f, 0);
  EXPECT_EQ((std::vector<int>{0, 1}), Changed(*layer, kClear));
  CanvasLayer* plain = MakePlain(8, 5);
  plain->Draw_Image_RGB888(0, 0, 1, 1, 3, 2, kSource.rgb, 4, 3, 0);
  EXPECT_EQ(12, PixelAt(*plain, 0, 0)[0]);  // source (1, 1)
  EXPECT_EQ(22, PixelAt(*plain, 0, 1)[0]);  // next row: srcW apart
  EXPECT_EQ((std::vector<int>{0, 1, 2, 8, 9, 10}), Changed(*plain, kClear));
}

}  // namespace
