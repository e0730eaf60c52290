// The arithmetic of the layers' drawing, on every build of the spans this machine
// runs, against the pixel-at-a-time reference for every value it can meet: every
// product of two bytes, every (source byte, source alpha, destination byte) and every
// (source alpha, destination alpha, byte) through each blending form, every source
// alpha at every draw alpha, and every pixel alpha of a layer pushed at 256 alphas.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "CDisplaySvc.h"
#include "Canvas/ColorBlendTable.h"
#include "Canvas/VT/ZvCanvasRender.h"
#include "CanvasTestSupport.h"
#include "solva/Display.h"

namespace {

using canvasref::Draw;
using canvasref::Form;
using canvasref::Pixels;
using canvastest::FirstDifference;
using canvastest::PathName;
using canvastest::RunForm;
using canvastest::SpanPaths;
using canvastest::UsingPath;

const int kSide = 256;
const int kPixels = kSide * kSide;

std::string Bytes(const uint8_t* p) {
  return std::to_string(p[0]) + " " + std::to_string(p[1]) + " " + std::to_string(p[2]) + " " + std::to_string(p[3]);
}

// An alpha whose byte (alpha x 255, truncated) is b.
float AlphaFor(int b) { return b == 255 ? 1.0f : (b + 0.5f) / 255.0f; }

// The forms that blend, at alpha 1.0: a = s, a = (255 s + 1) >> 8 and a = s by division.
const Form kBlendingForms[3] = {Form::ZvRGBA9, Form::ZvRGBA11, Form::PlainRGBA9};

class SpansExhaustive : public canvastest::LayerTest {
 protected:
  CanvasLayer* LayerFor(Form form) {
    return canvasref::IsPlatform(form) ? static_cast<CanvasLayer*>(MakeZv(kSide, kSide)) : MakePlain(kSide, kSide);
  }

  // For each of 256 outer values: the whole image drawn over the layer at alpha 1.0
  // with each blending form, through every path, and the pixels compared.
  template <typename Fill>
  void Sweep(Fill fill) {
    std::vector<uint8_t> image(kPixels * 4);
    Pixels start{kSide, kSide, std::vector<uint8_t>(kPixels * 4)};
    Draw draw;
    draw.w = draw.h = draw.srcW = draw.srcH = kSide;
    draw.src = image.data();
    CanvasLayer* layers[3];
    for (int f = 0; f < 3; ++f) layers[f] = LayerFor(kBlendingForms[f]);
    for (int outer = 0; outer < 256; ++outer) {
      for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
          fill(outer, x, y, &image[(y * kSide + x) * 4], &start.bytes[(y * kSide + x) * 4]);
      }
      for (int f = 0; f < 3; ++f) {
        const Form form = kBlendingForms[f];
        Pixels expected = start;
        canvasref::Apply(form, draw, expected);
        for (ECanvasSpanPath path : SpanPaths()) {
          UsingPath using_(path);
          memcpy(layers[f]->GetBuffer(), start.bytes.data(), start.bytes.size());
          RunForm(form, layers[f], draw);
          const int at = FirstDifference(layers[f]->GetBuffer(), expected.bytes.data(), kPixels);
          ASSERT_EQ(-1, at) << canvasref::Name(form) << ", " << PathName(path) << ", outer value " << outer
                            << ", pixel (" << at % kSide << ", " << at / kSide << "): source " << Bytes(&image[at * 4])
                            << " over " << Bytes(&start.bytes[at * 4]) << " gave "
                            << Bytes(layers[f]->GetBuffer() + at * 4) << ", not " << Bytes(&expected.bytes[at * 4]);
        }
      }
    }
  }
};

TEST_F(SpansExhaustive, EveryProductOfTwoBytesIsTheTableEntry) {
  // Pixel (i, j) has colour i and alpha j; premultiplied, its colour is T[i][j].
  std::vector<uint8_t> pixels(kPixels * 4);
  for (int j = 0; j < 256; ++j) {
    for (int i = 0; i < 256; ++i) {
      uint8_t* p = &pixels[(j * 256 + i) * 4];
      p[0] = p[1] = p[2] = uint8_t(i);
      p[3] = uint8_t(j);
    }
  }
  for (ECanvasSpanPath path : SpanPaths()) {
    std::vector<uint8_t> work = pixels;
    CanvasSpanOpsFor(path)->premultiply(work.data(), kPixels);
    for (int k = 0; k < kPixels; ++k) {
      const int i = k % 256, j = k / 256;
      const uint8_t expected[4] = {gColorBlendTable[i * 256 + j], gColorBlendTable[i * 256 + j],
                                   gColorBlendTable[i * 256 + j], uint8_t(j)};
      ASSERT_EQ(0, memcmp(expected, &work[k * 4], 4))
          << PathName(path) << ": " << i << " x " << j << " gave " << Bytes(&work[k * 4]);
    }
  }
}

TEST_F(SpansExhaustive, EverySourceByteSourceAlphaAndDestinationByte) {
  // Source (v, 255 - v, u, s) over (u, u, u, 255): v and u run over x and y, s over the
  // outer values. The destination's full alpha makes every sum of the two products of
  // the portable layer's division, 0 to 255 x 255, appear.
  Sweep([](int s, int v, int u, uint8_t* source, uint8_t* destination) {
    const uint8_t src[4] = {uint8_t(v), uint8_t(255 - v), uint8_t(u), uint8_t(s)};
    const uint8_t dst[4] = {uint8_t(u), uint8_t(u), uint8_t(u), 255};
    memcpy(source, src, 4);
    memcpy(destination, dst, 4);
  });
}

TEST_F(SpansExhaustive, EverySourceAlphaDestinationAlphaAndByte) {
  Sweep([](int s, int dA, int c, uint8_t* source, uint8_t* destination) {
    const uint8_t src[4] = {uint8_t(c), uint8_t(255 - c), uint8_t(c ^ 0x5A), uint8_t(s)};
    const uint8_t dst[4] = {uint8_t(c ^ 0xA5), uint8_t(255 - c), uint8_t(c), uint8_t(dA)};
    memcpy(source, src, 4);
    memcpy(destination, dst, 4);
  });
}

TEST_F(SpansExhaustive, EverySourceAlphaAtEveryDrawAlpha) {
  // Row b of the layer gets a row of every source alpha drawn at the alpha whose byte is b.
  std::vector<uint8_t> row(kSide * 4);
  for (int s = 0; s < 256; ++s) {
    const uint8_t src[4] = {uint8_t(s * 7), uint8_t(255 - s), uint8_t(s ^ 0x33), uint8_t(s)};
    memcpy(&row[s * 4], src, 4);
  }
  Pixels start{kSide, kSide, std::vector<uint8_t>(kPixels * 4)};
  for (int i = 0; i < kPixels * 4; ++i) start.bytes[i] = uint8_t(i * 37 + (i >> 9));
  for (Form form : kBlendingForms) {
    CanvasLayer* layer = LayerFor(form);
    Draw draw;
    draw.src = row.data();
    draw.srcW = draw.w = kSide;
    draw.srcH = draw.h = 1;
    Pixels expected = start;
    for (int b = 0; b < 256; ++b) {
      ASSERT_EQ(unsigned(b), static_cast<unsigned>(AlphaFor(b) * 255.0f));
      draw.y = b;
      draw.alpha = AlphaFor(b);
      canvasref::Apply(form, draw, expected);
    }
    for (ECanvasSpanPath path : SpanPaths()) {
      UsingPath using_(path);
      memcpy(layer->GetBuffer(), start.bytes.data(), start.bytes.size());
      for (int b = 0; b < 256; ++b) {
        draw.y = b;
        draw.alpha = AlphaFor(b);
        RunForm(form, layer, draw);
      }
      const int at = FirstDifference(layer->GetBuffer(), expected.bytes.data(), kPixels);
      ASSERT_EQ(-1, at) << canvasref::Name(form) << ", " << PathName(path) << ": source alpha " << at % kSide
                        << " at alpha byte " << at / kSide << " gave " << Bytes(layer->GetBuffer() + at * 4) << ", not "
                        << Bytes(&expected.bytes[at * 4]);
    }
  }
}

TEST_F(SpansExhaustive, DrawLayerGivesEveryPixelAlphaAtEveryAlphaByteAndBetween) {
  // Pixel (c, A) holds colour bytes made from c and alpha A; the layer is pushed at
  // alphas just above each multiple of 1/255 and half-way between.
  ZvCanvasRGBALayer* layer = MakeZv(kSide, kSide);
  Pixels pixels{kSide, kSide, std::vector<uint8_t>(kPixels * 4)};
  for (int A = 0; A < 256; ++A) {
    for (int c = 0; c < 256; ++c) {
      const uint8_t p[4] = {uint8_t(c), uint8_t(255 - c), uint8_t(c ^ 0x6C), uint8_t(A)};
      memcpy(&pixels.bytes[(A * kSide + c) * 4], p, 4);
    }
  }
  memcpy(layer->GetBuffer(), pixels.bytes.data(), pixels.bytes.size());
  std::vector<float> alphas;
  for (int b = 1; b < 255; ++b) {
    alphas.push_back(b / 255.0f);
    alphas.push_back(AlphaFor(b));
  }
  alphas.push_back(0.999f);
  alphas.push_back(1e-6f);
  ZvCanvasRender render;
  std::vector<uint8_t> expected;
  for (float alpha : alphas) {
    canvasref::Fade(pixels, alpha, expected);
    for (ECanvasSpanPath path : SpanPaths()) {
      UsingPath using_(path);
      render.DrawLayer(layer, alpha);
      const std::vector<uint8_t> shown = solva::PublishedPicture(layer->GetLayerHandle());
      ASSERT_EQ(expected.size(), shown.size());
      const int at = FirstDifference(shown.data(), expected.data(), kPixels);
      ASSERT_EQ(-1, at) << PathName(path) << " at alpha " << alpha << ": " << Bytes(&pixels.bytes[at * 4]) << " gave "
                        << Bytes(&shown[at * 4]) << ", not " << Bytes(&expected[at * 4]);
    }
  }
}

}  // namespace
