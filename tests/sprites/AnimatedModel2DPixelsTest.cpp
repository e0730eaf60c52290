// Animated models on the device's real 3D context: sprites made by the sprite
// builder from PNG frames, drawn through the batch renderer, read back and
// compared with the source frames; mirrored when facing away; and the blend, the
// trail and the glowing edge checked at chosen pixels against values worked out
// here from the effects' rules.
#include <GLES/gl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>

#include "RenderSystem/AnimatedModel2D.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/SpriteInfo.h"
#include "SpriteBuilder.h"
#include "SpriteGL.h"
#include "support/PngImage.h"
#include "ygui/YguiTestSupport.h"

namespace {

namespace sb = spritebuilder;

const uint32_t kSolid = 0xFF643214;  // A 255, R 100, G 50, B 20

// A frame with a pattern that shows any shift or mirror; some pixels clear.
std::vector<uint32_t> Pattern(int w, int h) {
  std::vector<uint32_t> pixels(size_t(w) * h);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const uint32_t alpha = (x * 5 + y) % 9 == 0 ? 0 : 255 - uint32_t(y * 3);
      pixels[size_t(y) * w + x] = alpha == 0 ? 0 : alpha << 24 | uint32_t(x * 6) << 16 | uint32_t(y * 9) << 8 | 77u;
    }
  }
  return pixels;
}

std::vector<uint32_t> Mirrored(const std::vector<uint32_t>& pixels, int w, int h) {
  std::vector<uint32_t> out(pixels.size());
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) out[size_t(y) * w + x] = pixels[size_t(y) * w + (w - 1 - x)];
  return out;
}

int Channel(uint32_t argb, int shift) { return int(argb >> shift & 0xFF); }

// A vertex colour byte as the model makes it: x 255, truncated.
int Byte(float channel) { return int(channel * 255.0f); }

// GL_MODULATE: texel x colour.
uint32_t Modulated(uint32_t texel, const TRealColorRGBA& c) {
  const int rgba[4] = {Byte(c.a), Byte(c.r), Byte(c.g), Byte(c.b)};
  uint32_t out = 0;
  for (int i = 0; i < 4; ++i) {
    const int shift = 24 - 8 * i;
    out |= uint32_t(std::lround(Channel(texel, shift) * rgba[i] / 255.0)) << shift;
  }
  return out;
}

// GL_ADD: colours added to the texel, alpha multiplied.
uint32_t Added(uint32_t texel, const TRealColorRGBA& c) {
  const int rgb[3] = {Byte(c.r), Byte(c.g), Byte(c.b)};
  uint32_t out = uint32_t(std::lround(Channel(texel, 24) * Byte(c.a) / 255.0)) << 24;
  for (int i = 0; i < 3; ++i) {
    const int shift = 16 - 8 * i;
    out |= uint32_t(std::min(255, Channel(texel, shift) + rgb[i])) << shift;
  }
  return out;
}

TRealColorRGBA Lerp(const TRealColorRGBA& a, const TRealColorRGBA& b, float t) {
  return {a.r + t * (b.r - a.r), a.g + t * (b.g - a.g), a.b + t * (b.b - a.b), a.a + t * (b.a - a.a)};
}

// Whether two colours agree within one step a channel, as the GL rounds.
testing::AssertionResult Near(uint32_t expected, uint32_t actual) {
  for (int shift = 0; shift < 32; shift += 8) {
    if (std::abs(Channel(expected, shift) - Channel(actual, shift)) > 1) {
      return testing::AssertionFailure() << std::hex << "expected 0x" << expected << ", got 0x" << actual;
    }
  }
  return testing::AssertionSuccess();
}

uint32_t PixelAt(int x, int y) { return zvtest::ReadPixels(x, y, 1, 1)[0]; }

// The sprite builder's sprites "hero" (a 40 x 24 frame, then the same with an
// offset) and "block" (a solid 16 x 16 tile) in a title's folder, loaded by models
// on the real GL context with the renderer and the sprite manager up, the
// screen's projection set, blending off and texels modulated by vertex colours.
class AnimatedModel2DPixelsTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.gl.ok()) << gl.gl.error();
    const std::string src = dir.file("src");
    mkdir(src.c_str(), 0755);
    hero = Pattern(40, 24);
    ASSERT_TRUE(zvtest::WritePng(src + "/hero.png", 40, 24, hero));
    ASSERT_TRUE(zvtest::WritePng(src + "/block.png", 16, 16, std::vector<uint32_t>(256, kSolid)));
    Build(src, "hero.sprite",
          "sprite hero\n"
          "animation stand loop\n"
          "  frame hero.png 0.5\n"
          "  frame hero.png 0.5 offset 6 -4\n");
    Build(src, "block.sprite",
          "sprite block\n"
          "animation stand loop\n"
          "  frame block.png 1\n");
    work.reset(new ygtest::ScopedWorkDir(dir.path()));
    AnimatedModel2DRender::sCreate();
    AnimatedSpriteDataManager::sCreate();
    RenderStateStack::initialize();
    zvtest::UseScreenProjection(GL_MODULATE);
    spritetest::ClearScreen();
  }
  void TearDown() override {
    RenderStateStack::destory();
    delete AnimatedSpriteDataManager::instance_;
    AnimatedSpriteDataManager::instance_ = nullptr;
    delete AnimatedModel2DRender::instance_;
    AnimatedModel2DRender::instance_ = nullptr;
    work.reset();
  }
  void Build(const std::string& src, const std::string& name, const std::string& text) {
    zvtest::WriteText(src + "/" + name, text);
    sb::Options options;
    options.description = src + "/" + name;
    options.out = dir.file("res/AnimatedSprites");
    sb::Report report;
    std::string error;
    ASSERT_TRUE(sb::Build(options, &report, &error)) << error;
  }
  // `model` loaded with `name`, playing its first animation, on its first key.
  void Load(AnimatedModel2DCore& model, const char* name) {
    ASSERT_EQ(1, model.load(name, 0, 0));
  }
  void Start(AnimatedModel2D& model, const char* name, float x, float y) {
    Load(model, name);
    ASSERT_EQ(1, model.startAnimation(0, 0));
    model.update(0.01f, false);
    model.mPosition = {x, y, 0};
  }

  spritetest::SpriteGL gl;
  zvtest::TempDir dir;
  std::unique_ptr<ygtest::ScopedWorkDir> work;
  std::vector<uint32_t> hero;
};

// ---- the frame

TEST_F(AnimatedModel2DPixelsTest, TheFrameIsDrawnCentredOnThePositionAsItsSourceIs) {
  AnimatedModel2D model;
  Start(model, "hero", 100, 60);
  model.render(1);
  // 40 x 24 about (100, 60): its top left at (80, 48).
  EXPECT_TRUE(zvtest::SamePixels("model_frame", hero, zvtest::ReadPixels(80, 48, 40, 24), 40, 24));
  EXPECT_EQ(0u, PixelAt(79, 48));
  EXPECT_EQ(0u, PixelAt(120, 60));
}

TEST_F(AnimatedModel2DPixelsTest, AFlippedModelMirrorsTilesAndOffsetsRunTheOtherWay) {
  AnimatedModel2D model;
  Start(model, "hero", 100, 60);
  model.changeDirection(1);
  model.render(1);
  EXPECT_TRUE(zvtest::SamePixels("model_flipped", Mirrored(hero, 40, 24), zvtest::ReadPixels(80, 48, 40, 24), 40,
                                 24));
  // The second key is offset by (6, -4): to the right facing ahead, to the left
  // facing away.
  model.update(0.5f, false);
  ASSERT_EQ(6, model.mFrame.mOffsetX);
  spritetest::ClearScreen();
  model.render(1);
  EXPECT_TRUE(zvtest::SamePixels("model_flipped_offset", Mirrored(hero, 40, 24),
                                 zvtest::ReadPixels(74, 44, 40, 24), 40, 24));
  model.changeDirection(4);
  spritetest::ClearScreen();
  model.render(1);
  EXPECT_TRUE(zvtest::SamePixels("model_offset", hero, zvtest::ReadPixels(86, 44, 40, 24), 40, 24));
  Math3D::Aabb2D rect;
  ASSERT_EQ(1, model.getCurrentRenderRect(rect));
  EXPECT_EQ(86.0f, rect.mMinX);
  EXPECT_EQ(44.0f, rect.mMinY);
}

TEST_F(AnimatedModel2DPixelsTest, TheLitModelDrawsTheSameFrame) {
  AnimatedModel2DLit lit;
  Load(lit, "hero");
  ASSERT_EQ(1, lit.startAnimation(0, 0));
  lit.update(0.01f, false);
  lit.mPosition = {200, 100, 0};
  lit.render(eImageLayer_Base, 1, 1);
  EXPECT_TRUE(zvtest::SamePixels("lit_flipped", Mirrored(hero, 40, 24), zvtest::ReadPixels(180, 88, 40, 24), 40,
                                 24));
}

TEST_F(AnimatedModel2DPixelsTest, TilesAreWrittenAsQuadsWithTheirTexturesCornersPulledIn) {
  AnimatedModel2D model;
  Start(model, "block", 50, 30);
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  render.begin(0, 1);
  model.render(0);
  // Inside the caller's batch: the quad waits there, nothing is drawn yet.
  EXPECT_EQ(1, render.mInBatch);
  EXPECT_EQ(1, render.usedBatchCount);
  const AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[0];
  ASSERT_EQ(8, batch.mVertexPtr - batch.mVertexBase);
  const GLTexture* page = model.mSpriteData->GetLayerTexture(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, page);
  EXPECT_EQ(page->mTextureID, batch.mTextureID);
  const float w = float(page->mWidth), h = float(page->mHeight);
  const float right = 16 / w - 0.0001001f, bottom = 16 / h - 0.0010001f;
  // Left-top, left-bottom, right-bottom, right-top.
  const float expected[4][4] = {{42, 22, 0, 0}, {42, 38, 0, bottom}, {58, 38, right, bottom}, {58, 22, right, 0}};
  for (int v = 0; v < 4; ++v) {
    SCOPED_TRACE(v);
    EXPECT_EQ(GLfixed(expected[v][0] * 65536.0f), batch.mVertexBase[2 * v]);
    EXPECT_EQ(GLfixed(expected[v][1] * 65536.0f), batch.mVertexBase[2 * v + 1]);
    EXPECT_EQ(GLfixed(expected[v][2] * 65536.0f), batch.mTexCoordBase[2 * v]);
    EXPECT_EQ(GLfixed(expected[v][3] * 65536.0f), batch.mTexCoordBase[2 * v + 1]);
  }
  EXPECT_EQ(0u, PixelAt(50, 30));
  render.end();
  EXPECT_EQ(kSolid, PixelAt(50, 30));
}

TEST_F(AnimatedModel2DPixelsTest, AFrameThatDoesNotExistDrawsNothing) {
  AnimatedModel2D model;
  Load(model, "hero");  // no key yet: frame 0xFFFF
  model.mPosition = {100, 60, 0};
  model.render(1);
  EXPECT_EQ(1, model.display(5, 0, model.mPosition, eImageLayer_Base, 0, 1));
  EXPECT_EQ(0u, PixelAt(100, 60));
  EXPECT_EQ(0, AnimatedModel2DRender::sInstance().mInBatch);
}

// ---- the effects

TEST_F(AnimatedModel2DPixelsTest, TheBlendColoursTheFrameAndEndsInWhite) {
  AnimatedModel2D model;
  Start(model, "hero", 100, 60);
  const AnimatedModel2DBlendEffectInfo info = {{1, 1, 1, 1}, {0.2f, 0.6f, 1.0f, 0.5f}, 2.0f, 1.0f, 0};
  model.setBlendEffect(info);
  model.update(0.4f, false);  // the clock at 0.41: still the first key
  const TRealColorRGBA colour = Lerp(info.mFrom, info.mTo, 0.4f / 2.0f);
  model.render(1);
  const int points[3][2] = {{1, 1}, {20, 10}, {39, 23}};
  for (const auto& p : points) {
    SCOPED_TRACE(p[0]);
    const uint32_t texel = hero[size_t(p[1]) * 40 + p[0]];
    ASSERT_NE(0u, texel);
    EXPECT_TRUE(Near(Modulated(texel, colour), PixelAt(80 + p[0], 48 + p[1])));
  }
  // At the duration the frame shows in white: as it is.
  model.update(0.6f, false);  // the clock wraps to 0.01
  spritetest::ClearScreen();
  model.render(1);
  EXPECT_TRUE(zvtest::SamePixels("blend_ended", hero, zvtest::ReadPixels(80, 48, 40, 24), 40, 24));
}

TEST_F(AnimatedModel2DPixelsTest, TheTrailDrawsEarlierFramesSpacedAndColouredOnItsRamp) {
  AnimatedModel2D model;
  Start(model, "block", 20, 100);
  AnimatedModel2DTrailEffectInfo info;
  info.mColorFrom = {1.0f, 0.0f, 0.0f, 1.0f};
  info.mColorTo = {0.0f, 0.0f, 1.0f, 1.0f};
  info.mSpacing = 0.2f;
  info.mLength = 0.25f;
  model.setTrailEffect(info);
  // Four frames 0.1 s apart, the model 30 pixels further right each time.
  for (int f = 0; f < 4; ++f) {
    model.update(0.1f, false);
    model.mPosition.x = 20.0f + 30.0f * float(f);
    spritetest::ClearScreen();
    model.render(1);
    ASSERT_EQ(20u, model.mTrailFrames.size());
  }
  // The records of the clock at 0.1, 0.2 and 0.3 stood at x 20, 50 and 80. At the
  // fourth (clock 0.4) the cursor starts at 0.4 - 0.25 = 0.15: the one of 0.1 is
  // before it; that of 0.2 is drawn, at 0.2 / 0.25 along the ramp, and moves the
  // cursor to 0.35, past the one of 0.3.
  EXPECT_EQ(0u, PixelAt(20, 100));
  EXPECT_TRUE(Near(Modulated(kSolid, Lerp(info.mColorFrom, info.mColorTo, 0.2f / 0.25f)), PixelAt(50, 100)));
  EXPECT_EQ(0u, PixelAt(80, 100));
  // The model's own frame is not among them yet: it was added to the back.
  EXPECT_EQ(0u, PixelAt(110, 100));
  const TrailFrameInfo& newest = model.mTrailFrames.back();
  EXPECT_EQ(110.0f, newest.mPosition.x);
  EXPECT_FLOAT_EQ(0.4f, newest.mTime);
  EXPECT_EQ(0, newest.mSpriteIndex);
  EXPECT_EQ(0.0f, model.mTrailFrames.front().mTime);  // zeroed records remain
}

TEST_F(AnimatedModel2DPixelsTest, TheTrailsGapGrowsByItsFactorAndAddend) {
  AnimatedModel2D model;
  Start(model, "block", 20, 100);
  AnimatedModel2DTrailEffectInfo info;
  info.mColorFrom = {0.0f, 1.0f, 0.0f, 1.0f};
  info.mColorTo = {1.0f, 1.0f, 1.0f, 1.0f};
  info.mSpacing = 0.1f;
  info.mSpacingFactor = 2.0f;
  info.mSpacingAddend = 0.06f;
  info.mLength = 1.0f;
  model.setTrailEffect(info);
  for (int f = 0; f < 6; ++f) {
    model.update(0.1f, false);
    model.mPosition.x = 20.0f + 20.0f * float(f);
    spritetest::ClearScreen();
    model.render(1);
  }
  // Records at 0.1 ... 0.5 (x 20 ... 100); at clock 0.6 the cursor starts at
  // -0.4. Drawn: 0.1 (cursor -0.3, gap now 0.26), 0.2 (cursor -0.04, gap 0.58),
  // 0.3 (cursor 0.54); 0.4 and 0.5 lie before the cursor.
  const float distances[3] = {0.1f, 0.1f + 0.26f, 0.1f + 0.26f + 0.58f};
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(Near(Modulated(kSolid, Lerp(info.mColorFrom, info.mColorTo, distances[i])),
                     PixelAt(20 + 20 * i, 100)));
  }
  EXPECT_EQ(0u, PixelAt(80, 100));
  EXPECT_EQ(0u, PixelAt(100, 100));
  EXPECT_EQ(0u, PixelAt(120, 100));
}

// The alpha of the glow `beyond` pixels past the frame's right edge along its row,
// by the rules of the edge: passes from `step` down by `fall`, the alpha from 0.1
// up by `grow`, each pass drawing over the one before; a shift of s covers the
// pixel when its centre lies inside the shifted frame. -1 when no pass reaches it.
float GlowAlpha(int beyond, float step, float fall, float grow) {
  float alpha = 0.1f, last = -1.0f;
  for (; step > 0.0f; step -= fall, alpha += grow) {
    if (step > float(beyond) + 0.5f) last = alpha;
  }
  return last;
}

TRealColorRGBA WithAlpha(TRealColorRGBA c, float alpha) {
  c.a = alpha;
  return c;
}

TEST_F(AnimatedModel2DPixelsTest, TheEdgeGlowsAddedAroundTheFrameBrighteningInward) {
  AnimatedModel2D model;
  Start(model, "block", 100, 100);  // the tile covers 92 to 107
  const AnimatedModel2DEadgeEffectInfo info = {{0.5f, 0.25f, 0.0f, 1.0f}, 2.0f, 1.0f, float(M_PI / 2), 0.0f};
  model.setEadgeEffect(info);
  model.render(1);
  // Radius 2: passes at step 2 and 1, the alpha growing by 1 x 1 / 2; the spin
  // angle is 0, so the turning shifts lie across. The frame itself comes last, in
  // white. Shifts left, right, up and down are alike: the frame is square.
  const TRealColorRGBA& c = info.mColor;
  ASSERT_FLOAT_EQ(0.6f, GlowAlpha(0, 2.0f, 1.0f, 0.5f));
  ASSERT_FLOAT_EQ(0.1f, GlowAlpha(1, 2.0f, 1.0f, 0.5f));
  ASSERT_EQ(-1.0f, GlowAlpha(2, 2.0f, 1.0f, 0.5f));
  EXPECT_TRUE(Near(kSolid, PixelAt(100, 100)));
  for (int beyond = 0; beyond < 2; ++beyond) {
    SCOPED_TRACE(beyond);
    const uint32_t glow = Added(kSolid, WithAlpha(c, GlowAlpha(beyond, 2.0f, 1.0f, 0.5f)));
    EXPECT_TRUE(Near(glow, PixelAt(108 + beyond, 100)));
    EXPECT_TRUE(Near(glow, PixelAt(91 - beyond, 100)));
    EXPECT_TRUE(Near(glow, PixelAt(100, 108 + beyond)));
    EXPECT_TRUE(Near(glow, PixelAt(100, 91 - beyond)));
  }
  EXPECT_EQ(0u, PixelAt(110, 100));
  EXPECT_EQ(0u, PixelAt(100, 89));
  // The texture environment is back as it was.
  GLint mode = 0;
  glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
  EXPECT_EQ(GL_MODULATE, mode);
  EXPECT_FLOAT_EQ(float(M_PI / 2), model.mEadgeAngle);
}

TEST_F(AnimatedModel2DPixelsTest, TheEdgesPulseScalesItsRadius) {
  AnimatedModel2D model;
  Start(model, "block", 100, 100);
  const AnimatedModel2DEadgeEffectInfo info = {{0.0f, 0.5f, 0.5f, 1.0f}, 8.0f, 0.5f, 0.0f, 1.0f};
  model.setEadgeEffect(info);
  model.update(0.25f, false);  // pulse 0.25: step 2, falling by 2 / 8 a pass
  model.render(1);
  // Eight passes from step 2 down by 0.25, the alpha growing by 1 x 0.5 / 8.
  for (int beyond = 0; beyond < 2; ++beyond) {
    SCOPED_TRACE(beyond);
    const float alpha = GlowAlpha(beyond, 2.0f, 0.25f, 0.0625f);
    ASSERT_GT(alpha, 0.1f);
    EXPECT_TRUE(Near(Added(kSolid, WithAlpha(info.mColor, alpha)), PixelAt(108 + beyond, 100)));
  }
  EXPECT_EQ(0u, PixelAt(110, 100));
}

}  // namespace
