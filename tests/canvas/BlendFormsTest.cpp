// Every draw form of both layer kinds, one pixel at a time, against pixels worked
// out by hand. Source pixel: R 200, G 100, B 50 with alpha s. The platform layer
// keeps B, G, R, A; its opaque destination is B 40, G 80, R 120. The portable layer
// keeps R, G, B, A; its opaque destination is R 120, G 80, B 40.
#include <gtest/gtest.h>

#include "CanvasTestSupport.h"

namespace {

using canvastest::Px;
using canvastest::PixelAt;
using canvastest::SetPixel;

const Px kClear = {0, 0, 0, 0};
const Px kZvOpaque = {40, 80, 120, 255};
const Px kPlainOpaque = {120, 80, 40, 255};

struct Case {
  uint8_t s;
  Px overClear;
  Px overOpaque;
};

class BlendForms : public canvastest::LayerTest {
 protected:
  // Draws the one-pixel source over a destination pixel and returns the result.
  template <typename Draw>
  Px Over(CanvasLayer* layer, const Px& destination, uint8_t s, Draw draw) {
    SetPixel(*layer, 0, destination);
    const uint8_t source[4] = {200, 100, 50, s};
    draw(layer, source);
    return PixelAt(*layer, 0);
  }
  template <typename Draw>
  void Check(CanvasLayer* layer, const Px& opaque, const Case (&cases)[4], Draw draw) {
    for (const Case& c : cases) {
      EXPECT_EQ(c.overClear, Over(layer, kClear, c.s, draw)) << "s = " << int(c.s) << " over transparent";
      EXPECT_EQ(c.overOpaque, Over(layer, opaque, c.s, draw)) << "s = " << int(c.s) << " over opaque";
    }
  }
};

TEST_F(BlendForms, ZvNineArgumentFormThroughTheTable) {
  // a = s x 255 / 255 = s; d = T[dstA][255 - a]; colour = T[dst][d] + T[src][a].
  const Case cases[4] = {
      {0, kClear, kZvOpaque},                                // a 0: skipped
      {1, {0, 0, 0, 1}, {39, 79, 119, 255}},                 // d 254: T[40][254] = 39, T[80][254] = 79, T[120][254] = 119
      {128, {25, 50, 100, 128}, {44, 89, 159, 255}},         // T[50][128] = 25 (+19), T[100][128] = 50 (+39), T[200][128] = 100 (+59)
      {255, {50, 100, 200, 255}, {50, 100, 200, 255}},       // copied, bytes turned round
  };
  Check(MakeZv(4, 4), kZvOpaque, cases, [](CanvasLayer* l, const uint8_t* src) {
    l->Draw_Image_RGBA8888(0, 0, 1, 1, src, 1, 1, 1.0f, 0);
  });
}

TEST_F(BlendForms, ZvElevenArgumentFormThroughTheTable) {
  // a = (s x 255 + 1) >> 8: 0, 1, 127, 254.
  const Case cases[4] = {
      {0, kClear, kZvOpaque},
      {1, {0, 0, 0, 1}, {39, 79, 119, 255}},
      {128, {24, 49, 99, 127}, {44, 89, 159, 255}},     // d 128: T[40][128] = 20 + 24, T[80][128] = 40 + 49, T[120][128] = 60 + 99
      {255, {49, 99, 199, 254}, {49, 99, 199, 255}},    // never copies: T[200][254] = 199; d = T[255][1] = 1
  };
  Check(MakeZv(4, 4), kZvOpaque, cases, [](CanvasLayer* l, const uint8_t* src) {
    l->Draw_Image_RGBA8888(0, 0, 0, 0, 1, 1, src, 1, 1, 1.0f, 0);
  });
}

TEST_F(BlendForms, PlainNineArgumentFormByDivision) {
  // d = (255 - a) x dstA / 255; colour = (src x a + dst x d) / 255.
  const Case cases[4] = {
      {0, kClear, kPlainOpaque},
      {1, {0, 0, 0, 1}, {120, 80, 40, 255}},          // (200 + 120 x 254) / 255 = 120.3, ...
      {128, {100, 50, 25, 128}, {160, 90, 45, 255}},  // (25600 + 15240) / 255 = 160.2, (12800 + 10160) / 255 = 90.04
      {255, {200, 100, 50, 255}, {200, 100, 50, 255}},
  };
  Check(MakePlain(4, 4), kPlainOpaque, cases, [](CanvasLayer* l, const uint8_t* src) {
    l->Draw_Image_RGBA8888(0, 0, 1, 1, src, 1, 1, 1.0f, 0);
  });
}

TEST_F(BlendForms, PlainElevenArgumentFormByDivision) {
  const Case cases[4] = {
      {0, kClear, kPlainOpaque},
      {1, {0, 0, 0, 1}, {120, 80, 40, 255}},
      {128, {100, 50, 25, 128}, {160, 90, 45, 255}},
      {255, {200, 100, 50, 255}, {200, 100, 50, 255}},
  };
  Check(MakePlain(4, 4), kPlainOpaque, cases, [](CanvasLayer* l, const uint8_t* src) {
    l->Draw_Image_RGBA8888(0, 0, 0, 0, 1, 1, src, 1, 1, 1.0f, 0);
  });
}

TEST_F(BlendForms, HalfAlphaScalesTheSourceAlphaOncePerCall) {
  // b = (unsigned)(0.5 x 255) = 127; s 255 gives a = 127 in the nine-argument forms
  // and (255 x 127 + 1) >> 8 = 126 in the platform's eleven-argument form.
  ZvCanvasRGBALayer* zv = MakeZv(4, 4);
  CanvasLayer* plain = MakePlain(4, 4);
  const uint8_t source[4] = {200, 100, 50, 255};
  zv->Draw_Image_RGBA8888(0, 0, 1, 1, source, 1, 1, 0.5f, 0);
  EXPECT_EQ((Px{24, 49, 99, 127}), PixelAt(*zv, 0));  // T[50][127], T[100][127], T[200][127]
  zv->Draw_Image_RGBA8888(1, 0, 0, 0, 1, 1, source, 1, 1, 0.5f, 0);
  EXPECT_EQ((Px{24, 49, 98, 126}), PixelAt(*zv, 1));  // T[50][126] = 24, T[100][126] = 49, T[200][126] = 98
  plain->Draw_Image_RGBA8888(0, 0, 1, 1, source, 1, 1, 0.5f, 0);
  EXPECT_EQ((Px{99, 49, 24, 127}), PixelAt(*plain, 0));  // 25400 / 255 = 99.6, 12700 / 255, 6350 / 255
  plain->Draw_Image_RGBA8888(1, 0, 0, 0, 1, 1, source, 1, 1, 0.5f, 0);
  EXPECT_EQ((Px{99, 49, 24, 127}), PixelAt(*plain, 1));
}

TEST_F(BlendForms, ZeroAlphaDrawsNothing) {
  ZvCanvasRGBALayer* zv = MakeZv(4, 4);
  CanvasLayer* plain = MakePlain(4, 4);
  canvastest::Fill(*zv, kZvOpaque);
  canvastest::Fill(*plain, kPlainOpaque);
  const uint8_t source[4] = {200, 100, 50, 255};
  zv->Draw_Image_RGBA8888(0, 0, 1, 1, source, 1, 1, 0.0f, 0);
  zv->Draw_Image_RGBA8888(0, 0, 0, 0, 1, 1, source, 1, 1, 0.0f, 0);
  plain->Draw_Image_RGBA8888(0, 0, 1, 1, source, 1, 1, 0.0f, 0);
  plain->Draw_Image_RGBA8888(0, 0, 0, 0, 1, 1, source, 1, 1, 0.0f, 0);
  EXPECT_EQ(kZvOpaque, PixelAt(*zv, 0));
  EXPECT_EQ(kPlainOpaque, PixelAt(*plain, 0));
}

TEST_F(BlendForms, OpaquePixelCopiesThroughNineArgumentsAndBlendsAt254ThroughEleven) {
  ZvCanvasRGBALayer* zv = MakeZv(4, 1);
  canvastest::Fill(*zv, kZvOpaque);
  const uint8_t source[4] = {200, 100, 50, 255};
  zv->Draw_Image_RGBA8888(0, 0, 1, 1, source, 1, 1, 1.0f, 0);
  zv->Draw_Image_RGBA8888(1, 0, 0, 0, 1, 1, source, 1, 1, 1.0f, 0);
  EXPECT_EQ((Px{50, 100, 200, 255}), PixelAt(*zv, 0));
  // d = T[255][1] = 1: T[40][1] + T[50][254] = 0 + 49, ..., alpha 1 + 254.
  EXPECT_EQ((Px{49, 99, 199, 255}), PixelAt(*zv, 1));
  // Over a lighter destination the old colour still shows through the blend.
  const Px white = {255, 255, 255, 255};
  SetPixel(*zv, 2, white);
  zv->Draw_Image_RGBA8888(2, 0, 0, 0, 1, 1, source, 1, 1, 1.0f, 0);
  EXPECT_EQ((Px{50, 100, 200, 255}), PixelAt(*zv, 2));  // T[255][1] = 1 + 49, 1 + 99, 1 + 199
}

TEST_F(BlendForms, OpaquePixelBlendedOverTransparentKeepsItsColourAndGetsAlphaA) {
  // Whatever colour a transparent destination holds, d is 0 and it drops out.
  ZvCanvasRGBALayer* zv = MakeZv(2, 1);
  SetPixel(*zv, 0, Px{0, 0, 0, 0});
  SetPixel(*zv, 1, Px{90, 90, 90, 0});
  const uint8_t source[4] = {200, 100, 50, 255};
  zv->Draw_Image_RGBA8888(0, 0, 0, 0, 1, 1, source, 1, 1, 1.0f, 0);
  zv->Draw_Image_RGBA8888(1, 0, 0, 0, 1, 1, source, 1, 1, 1.0f, 0);
  EXPECT_EQ((Px{49, 99, 199, 254}), PixelAt(*zv, 0));
  EXPECT_EQ(PixelAt(*zv, 0), PixelAt(*zv, 1));
  // At alpha 0.5 through the nine-argument form: a = 127, colour T[src][127].
  SetPixel(*zv, 1, Px{90, 90, 90, 0});
  zv->Draw_Image_RGBA8888(1, 0, 1, 1, source, 1, 1, 0.5f, 0);
  EXPECT_EQ((Px{24, 49, 99, 127}), PixelAt(*zv, 1));
}

TEST_F(BlendForms, RGB888FormsCopyAndMakeTheDestinationOpaque) {
  const uint8_t source[3] = {200, 100, 50};
  ZvCanvasRGBALayer* zv = MakeZv(4, 1);
  CanvasLayer* plain = MakePlain(4, 1);
  for (const Px& destination : {kClear, kZvOpaque}) {
    canvastest::Fill(*zv, destination);
    zv->Draw_Image_RGB888(0, 0, source, 1, 1, 0);                      // the RGBA layer's own form
    zv->ZvCanvasLayer::Draw_Image_RGB888(1, 0, source, 1, 1, 0);       // the platform layer's form
    zv->Draw_Image_RGB888(2, 0, 0, 0, 1, 1, source, 1, 1, 0);          // ten arguments
    for (int i = 0; i < 3; ++i) EXPECT_EQ((Px{50, 100, 200, 255}), PixelAt(*zv, i)) << i;
    EXPECT_EQ(destination, PixelAt(*zv, 3));
  }
  for (const Px& destination : {kClear, kPlainOpaque}) {
    canvastest::Fill(*plain, destination);
    plain->Draw_Image_RGB888(0, 0, source, 1, 1, 0);
    plain->Draw_Image_RGB888(1, 0, 0, 0, 1, 1, source, 1, 1, 0);
    for (int i = 0; i < 2; ++i) EXPECT_EQ((Px{200, 100, 50, 255}), PixelAt(*plain, i)) << i;
    EXPECT_EQ(destination, PixelAt(*plain, 2));
  }
}

TEST_F(BlendForms, FormsWithSourceOriginStartThere) {
  // A 3 x 2 source whose pixel (sx, sy) has red 10 x sy + sx; rows stay srcW apart.
  uint8_t rgba[3 * 2 * 4];
  uint8_t rgb[3 * 2 * 3];
  for (int sy = 0; sy < 2; ++sy) {
    for (int sx = 0; sx < 3; ++sx) {
      const int i = sy * 3 + sx;
      rgba[i * 4] = uint8_t(10 * sy + sx);
      rgba[i * 4 + 1] = rgba[i * 4 + 2] = 0;
      rgba[i * 4 + 3] = 255;
      rgb[i * 3] = uint8_t(10 * sy + sx);
      rgb[i * 3 + 1] = rgb[i * 3 + 2] = 0;
    }
  }
  ZvCanvasRGBALayer* zv = MakeZv(4, 4);
  CanvasLayer* plain = MakePlain(4, 4);
  // From (1, 0), 2 x 2: red 1, 2 / 11, 12.
  zv->Draw_Image_RGB888(0, 0, 1, 0, 2, 2, rgb, 3, 2, 0);
  plain->Draw_Image_RGBA8888(0, 0, 1, 0, 2, 2, rgba, 3, 2, 1.0f, 0);
  EXPECT_EQ(1, PixelAt(*zv, 0, 0)[2]);
  EXPECT_EQ(2, PixelAt(*zv, 1, 0)[2]);
  EXPECT_EQ(11, PixelAt(*zv, 0, 1)[2]);
  EXPECT_EQ(12, PixelAt(*zv, 1, 1)[2]);
  EXPECT_EQ(0, PixelAt(*zv, 2, 0)[3]);
  EXPECT_EQ(1, PixelAt(*plain, 0, 0)[0]);
  EXPECT_EQ(12, PixelAt(*plain, 1, 1)[0]);
  EXPECT_EQ(0, PixelAt(*plain, 2, 0)[3]);
}

}  // namespace
