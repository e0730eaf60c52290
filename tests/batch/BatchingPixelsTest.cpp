// What the batch renderer draws: quads of interleaved textures come out as if each
// were drawn alone, in one draw call per texture; across textures the first
// appearance decides the order.
#include "BatchFixture.h"

namespace {

using batchtest::BatchTest;
using batchtest::WriteQuad;

using BatchingPixels = BatchTest;

struct Placed {
  int texture;  // index into the test's textures
  int x, y;
};

TEST_F(BatchingPixels, ThreeInterleavedTexturesGiveOneDrawCallEachAndTheSamePixelsAsQuadsDrawnAlone) {
  const unsigned ids[3] = {Texture(200, 0, 0), Texture(0, 150, 0), Texture(0, 0, 220)};
  // Nine quads, the textures taking turns, none overlapping.
  std::vector<Placed> quads;
  for (int i = 0; i < 9; ++i) quads.push_back(Placed{i % 3, 8 + i * 20, 10 + (i % 2) * 24});

  Render().begin(0, 1);
  for (const Placed& quad : quads) {
    Render().swapTexture(ids[quad.texture]);
    WriteQuad(quad.x, quad.y, 16, 16);
  }
  zvtest::GLCalls().Reset();
  Render().end();
  EXPECT_EQ(3, zvtest::GLCalls().drawElements);
  EXPECT_EQ((std::vector<int>{18, 18, 18}), zvtest::GLCalls().drawnIndices) << "three quads of six indices each";
  EXPECT_EQ((std::vector<unsigned>{ids[0], ids[1], ids[2]}), zvtest::GLCalls().boundTextures);
  EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
  const std::vector<uint32_t> batched = zvtest::ReadPixels(0, 0, 200, 60);

  Clear();
  for (const Placed& quad : quads) zvtest::DrawTexture(ids[quad.texture], quad.x, quad.y, 16, 16);
  const std::vector<uint32_t> alone = zvtest::ReadPixels(0, 0, 200, 60);
  EXPECT_TRUE(zvtest::SamePixels("batch-interleaved", alone, batched, 200, 60));
  // Each texel of the 4 x 4 pattern covers 4 x 4 pixels: the fourth quad (red
  // again) at (68, 34) shows texel (1, 2) at pixel (4, 8) of it.
  EXPECT_EQ(0xFFD82000u, batched[size_t(34 + 8) * 200 + 68 + 4]);
}

TEST_F(BatchingPixels, TextureAThenBThenAAgainTakesTwoDrawCallsAndTheLastAComesOutUnderB) {
  const unsigned a = Texture(250, 0, 0), b = Texture(0, 0, 250);
  Render().begin(0, 1);
  Render().swapTexture(a);
  WriteQuad(0, 0, 16, 16);
  Render().swapTexture(b);
  WriteQuad(20, 0, 16, 16);  // B
  Render().swapTexture(a);
  WriteQuad(28, 8, 16, 16);  // the last A, half over B
  zvtest::GLCalls().Reset();
  Render().end();
  EXPECT_EQ(2, zvtest::GLCalls().drawElements);
  EXPECT_EQ((std::vector<int>{12, 6}), zvtest::GLCalls().drawnIndices);
  const std::vector<uint32_t> pixels = zvtest::ReadPixels(0, 0, 48, 32);
  auto at = [&](int x, int y) { return pixels[size_t(y) * 48 + x]; };
  EXPECT_EQ(250u, at(30, 10) & 0xFF) << "where they overlap B's blue shows";
  EXPECT_EQ(0u, at(40, 20) & 0xFF) << "A, without blue, where B is not";
}

TEST_F(BatchingPixels, QuadsOfOneTextureKeepTheirOrder) {
  const unsigned a = Texture(0, 0, 0);
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_ADD);  // the texture adds to the vertex colour
  const uint8_t red[4] = {255, 0, 0, 255}, green[4] = {0, 255, 0, 255};
  Render().begin(1, 1);
  Render().swapTexture(a);
  WriteQuad(0, 0, 16, 16, red);
  WriteQuad(8, 0, 16, 16, green);  // later, over the right half of the red one
  Render().end();
  EXPECT_EQ(1, zvtest::GLCalls().drawElements);
  const std::vector<uint32_t> pixels = zvtest::ReadPixels(0, 0, 24, 16);
  EXPECT_EQ(0xFFFF0000u, pixels[0] & 0xFFFF0000u) << "the first quad's red";
  EXPECT_EQ(0xFF00FF00u, pixels[10] & 0xFF00FF00u) << "the second quad on top";
  EXPECT_EQ(0u, pixels[10] & 0x00FF0000u);
}

TEST_F(BatchingPixels, VertexColoursWithoutTexturesFillTheQuads) {
  const uint8_t yellow[4] = {255, 255, 0, 255};
  Render().begin(1, 0);
  WriteQuad(4, 4, 10, 6, yellow);
  Render().end();
  EXPECT_EQ(1, zvtest::GLCalls().drawElements);
  EXPECT_EQ(0, zvtest::GLCalls().bindTexture) << "no texture is bound without textures";
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_TEXTURE_2D));
  std::vector<uint32_t> expected(16 * 12, 0xFF000000u);
  for (int y = 4; y < 10; ++y)
    for (int x = 4; x < 14; ++x) expected[size_t(y) * 16 + x] = 0xFFFFFF00u;
  EXPECT_TRUE(zvtest::SamePixels("batch-colours", expected, zvtest::ReadPixels(0, 0, 16, 12), 16, 12));
}

TEST_F(BatchingPixels, FractionsOfAPixelTravelAsSixteenSixteenFixedPoint) {
  EXPECT_EQ(98304, AnimatedModel2DRender::PixelToFixed(1.5f));
  EXPECT_EQ(-16384, AnimatedModel2DRender::PixelToFixed(-0.25f));
  EXPECT_EQ(479 << 16, AnimatedModel2DRender::PixelToFixed(479.0f));
  EXPECT_EQ(49152, AnimatedModel2DRender::TexelToFixed(3.0f, 4.0f));
  EXPECT_EQ(21845, AnimatedModel2DRender::TexelToFixed(1.0f, 3.0f)) << "cut toward zero, not rounded";
  // A quad from x 2.75 to 6.75 covers the pixels whose centres lie inside: 3 to 6
  // (whole pixels, 2 to 6, would cover 2 to 5).
  const unsigned a = Texture(250, 250, 250);
  Render().begin(0, 1);
  Render().swapTexture(a);
  AnimatedModel2DRender::BatchBuffer& batch = Render().mBatches[Render().mCurrentBatch];
  const float corners[4][2] = {{2.75f, 0}, {6.75f, 0}, {6.75f, 4}, {2.75f, 4}};
  for (const auto& corner : corners) {
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(corner[0]);
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(corner[1]);
    *batch.mTexCoordPtr++ = 0;
    *batch.mTexCoordPtr++ = 0;
  }
  Render().end();
  const std::vector<uint32_t> row = zvtest::ReadPixels(0, 1, 8, 1);
  for (int x = 0; x < 8; ++x) {
    EXPECT_EQ(x >= 3 && x <= 6 ? 0xFFFAFAFAu : 0xFF000000u, row[x]) << "pixel " << x;
  }
}

}  // namespace
