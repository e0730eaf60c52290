// Thousands of random draws of every form, on every build of the spans this machine
// runs, compared pixel for pixel with the pixel-at-a-time reference: random layer and
// image sizes, positions on and off every edge, the four orientations and values
// outside them, alphas from below 0 to above 1, images with runs of opaque and of
// clear pixels, and now and then a source inside the layer's own buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <stdexcept>
#include <vector>

#include "Base/XAssert.h"
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

int Between(std::mt19937& random, int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

// Random bytes, or runs of opaque, clear and half-covered pixels of random colours.
void FillPixels(std::mt19937& random, uint8_t* bytes, int count, int bytesPerPixel) {
  for (int i = 0; i < count * bytesPerPixel; i += 4) {
    const uint32_t word = random();
    memcpy(bytes + i, &word, std::min(4, count * bytesPerPixel - i));
  }
  if (bytesPerPixel == 3 || Between(random, 0, 3) == 0) return;
  for (int i = 0, left = 0, alpha = 0; i < count; ++i, --left) {
    if (left <= 0) {
      left = Between(random, 1, 40);
      const int kind = Between(random, 0, 3);
      alpha = kind == 0 ? 255 : kind == 1 ? 0 : kind == 2 ? -1 : Between(random, 0, 255);
    }
    if (alpha >= 0) bytes[i * 4 + 3] = uint8_t(alpha);
  }
}

float RandomAlpha(std::mt19937& random) {
  switch (Between(random, 0, 9)) {
    case 0: return 1.0f;
    case 1: return 0.0f;
    case 2: return 1.0f - 1e-8f;
    case 3: return Between(random, -50, 150) / 100.0f;
    case 4: return std::nanf("");
    case 5: return Between(random, 0, 255) / 255.0f;
    default: return std::uniform_real_distribution<float>(0.0f, 1.0f)(random);
  }
}

int RandomOrient(std::mt19937& random) {
  const int orient = Between(random, 0, 9);
  return orient < 8 ? orient % 4 : (orient == 8 ? 7 : -1);
}

class RandomDraws : public canvastest::LayerTest {
 protected:
  // `draws` random draws of `form` on a layer of random size, or of the size given,
  // with every path, each compared with the reference.
  void Run(Form form, int draws, int width = 0, int height = 0, int largest = 70) {
    for (ECanvasSpanPath path : SpanPaths()) {
      UsingPath using_(path);
      std::mt19937 random(1234 + int(form) * 17 + int(path));
      const int W = width ? width : Between(random, 1, 90);
      const int H = height ? height : Between(random, 1, 70);
      CanvasLayer* layer = canvasref::IsPlatform(form) ? static_cast<CanvasLayer*>(MakeZv(W, H)) : MakePlain(W, H);
      Pixels expected{W, H, std::vector<uint8_t>(size_t(W) * H * 4)};
      FillPixels(random, expected.bytes.data(), W * H, 4);
      memcpy(layer->GetBuffer(), expected.bytes.data(), expected.bytes.size());
      const int bytesPerPixel = canvasref::IsRGBA(form) ? 4 : 3;
      for (int n = 0; n < draws; ++n) {
        Draw draw;
        draw.orient = RandomOrient(random);
        const bool turned = draw.orient != 0 && draw.orient != 2;
        const int limitX = turned ? H : W, limitY = turned ? W : H;
        draw.srcW = Between(random, 0, largest);
        draw.srcH = Between(random, 0, largest);
        draw.x = Between(random, -draw.srcW - 3, limitX + 3);
        draw.y = Between(random, -draw.srcH - 3, limitY + 3);
        draw.w = Between(random, -2, draw.srcW + 4);
        draw.h = Between(random, -2, draw.srcH + 4);
        draw.srcX = Between(random, 0, draw.srcW);
        draw.srcY = Between(random, 0, draw.srcH);
        draw.alpha = RandomAlpha(random);
        // The draw may read a little past srcW x srcH (the origin, and the form that
        // does not skip); the image has room for it.
        const size_t reach = size_t(draw.srcY + draw.srcH + 2) * (draw.srcW + 1) + draw.srcX + 2 * draw.srcW + 8;
        std::vector<uint8_t> image(reach * bytesPerPixel);
        FillPixels(random, image.data(), int(reach), bytesPerPixel);
        draw.src = image.data();
        // Now and then from the layer's own pixels, where they have the room.
        Draw reference = draw;
        const size_t ownBytes = expected.bytes.size();
        if (Between(random, 0, 19) == 0 && image.size() < ownBytes) {
          const size_t offset = size_t(Between(random, 0, int(ownBytes - image.size())));
          draw.src = layer->GetBuffer() + offset;
          reference.src = expected.bytes.data() + offset;
        }
        canvasref::Apply(form, reference, expected);
        RunForm(form, layer, draw, Between(random, 0, 1) == 0);
        const int at = FirstDifference(layer->GetBuffer(), expected.bytes.data(), W * H);
        ASSERT_EQ(-1, at) << canvasref::Name(form) << ", " << PathName(path) << ", draw " << n << " on " << W << " x "
                          << H << ": " << draw.srcW << " x " << draw.srcH << " at (" << draw.x << ", " << draw.y
                          << "), w " << draw.w << " h " << draw.h << ", from (" << draw.srcX << ", " << draw.srcY
                          << "), alpha " << draw.alpha << ", orient " << draw.orient
                          << (draw.src != image.data() ? ", from the layer itself" : "") << "; pixel " << at;
      }
    }
  }
};

TEST_F(RandomDraws, PlatformRGBA8888NineArguments) { Run(Form::ZvRGBA9, 4000); }
TEST_F(RandomDraws, PlatformRGBA8888ElevenArguments) { Run(Form::ZvRGBA11, 4000); }
TEST_F(RandomDraws, PlatformRGB888SixArguments) { Run(Form::ZvRGB6, 4000); }
TEST_F(RandomDraws, PlatformRGB888TenArguments) { Run(Form::ZvRGB10, 4000); }
TEST_F(RandomDraws, PlainRGBA8888NineArguments) { Run(Form::PlainRGBA9, 4000); }
TEST_F(RandomDraws, PlainRGBA8888ElevenArguments) { Run(Form::PlainRGBA11, 4000); }
TEST_F(RandomDraws, PlainRGB888SixArguments) { Run(Form::PlainRGB6, 4000); }
TEST_F(RandomDraws, PlainRGB888TenArguments) { Run(Form::PlainRGB10, 4000); }

TEST_F(RandomDraws, LargeImagesOnAFullScreenLayer) {
  // Spans longer than a vector's worth many times over, and turned ones longer than
  // the scratch span they are gathered into.
  for (Form form : canvasref::kForms) Run(form, 25, 480, 272, 500);
}

// While it lives a failed check throws its expression, and says so on the captured
// standard output.
struct ThrowingChecks {
  static void Throw(const char* expression, const char*) { throw std::runtime_error(expression); }
  ThrowingChecks() : before(XAssertSetHandler(Throw)) { testing::internal::CaptureStdout(); }
  ~ThrowingChecks() {
    testing::internal::GetCapturedStdout();
    XAssertSetHandler(before);
  }
  XAssertHandler before;
};

TEST_F(RandomDraws, WithColor) {
  // Orientation 0 may stop at its check; the failed assertion throws here instead,
  // and what was premultiplied up to there must match too.
  ThrowingChecks throwing;
  for (ECanvasSpanPath path : SpanPaths()) {
    UsingPath using_(path);
    std::mt19937 random(99 + int(path));
    int stopped = 0;
    for (int n = 0; n < 3000; ++n) {
      const int W = Between(random, 1, 40), H = Between(random, 1, 40);
      CanvasLayer* layer = MakePlain(W, H);
      Pixels expected{W, H, std::vector<uint8_t>(size_t(W) * H * 4)};
      FillPixels(random, expected.bytes.data(), W * H, 4);
      memcpy(layer->GetBuffer(), expected.bytes.data(), expected.bytes.size());
      const int orient = Between(random, 0, 1) ? 0 : RandomOrient(random);
      const int x = Between(random, -50, 50), y = Between(random, -50, 50);
      const int w = Between(random, -2, 70), h = Between(random, -2, 70);
      const bool finished = canvasref::WithColor(expected, x, y, w, h, orient);
      bool threw = false;
      try {
        layer->Draw_Image_WithColor(x, y, w, h, 1, 2, 3, 0.5f, orient);
      } catch (const std::runtime_error& failure) {
        threw = true;
        EXPECT_STREQ("DestTemp < mBuffer + mWidth * mHeight * 4", failure.what());
      }
      stopped += threw;
      ASSERT_EQ(finished, !threw) << PathName(path) << ", draw " << n;
      const int at = FirstDifference(layer->GetBuffer(), expected.bytes.data(), W * H);
      ASSERT_EQ(-1, at) << PathName(path) << ", draw " << n << " on " << W << " x " << H << ": (" << x << ", " << y
                        << ") " << w << " x " << h << ", orient " << orient << "; pixel " << at;
      layer->Destroy();
      delete layer;
      mLayers.pop_back();
    }
    EXPECT_GT(stopped, 200) << "the check should stop a good share of the draws";
  }
}

TEST_F(RandomDraws, DrawLayer) {
  ZvCanvasRender render;
  for (ECanvasSpanPath path : SpanPaths()) {
    UsingPath using_(path);
    std::mt19937 random(7 + int(path));
    for (int n = 0; n < 300; ++n) {
      const int W = Between(random, 1, 100), H = Between(random, 1, 60);
      ZvCanvasRGBALayer* layer = MakeZv(W, H);
      Pixels pixels{W, H, std::vector<uint8_t>(size_t(W) * H * 4)};
      FillPixels(random, pixels.bytes.data(), W * H, 4);
      memcpy(layer->GetBuffer(), pixels.bytes.data(), pixels.bytes.size());
      float alpha = RandomAlpha(random);
      if (std::isnan(alpha)) alpha = 0.25f;
      std::vector<uint8_t> expected;
      if (std::fabs(alpha - 1.0f) <= 1.1920929e-7f) {
        expected = pixels.bytes;
      } else if (alpha == 0.0f) {
        expected.assign(pixels.bytes.size(), 0);
      } else {
        canvasref::Fade(pixels, alpha, expected);
      }
      render.DrawLayer(layer, alpha);
      const std::vector<uint8_t> shown = solva::PublishedPicture(layer->GetLayerHandle());
      ASSERT_EQ(expected.size(), shown.size());
      const int at = FirstDifference(shown.data(), expected.data(), W * H);
      ASSERT_EQ(-1, at) << PathName(path) << ", draw " << n << " on " << W << " x " << H << " at alpha " << alpha
                        << "; pixel " << at;
      layer->Destroy();
      delete layer;
      mLayers.pop_back();
    }
  }
}

}  // namespace
