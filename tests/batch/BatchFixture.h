#pragma once
// What the batch renderer's tests share: the device's real 3D context with the
// screen's projection, the renderer, textures of small patterns, a quad writer as
// a sprite drawer writes them, and the GL's draw calls counted.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/GLTexture.h"
#include "support/GLTestSupport.h"
#include "support/gl/GLCallCounter.h"

namespace batchtest {

// A 4 x 4 texture whose texels tell their place and the texture apart (A, R, G, B
// pixels, as GLTexture takes 32-bit ones).
inline std::vector<uint8_t> Pattern(uint8_t red, uint8_t green, uint8_t blue) {
  std::vector<uint8_t> argb;
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 4; ++x) {
      argb.push_back(255);
      argb.push_back(uint8_t(red + x * 16));
      argb.push_back(uint8_t(green + y * 16));
      argb.push_back(blue);
    }
  }
  return argb;
}

// The quad's four vertices (top-left, top-right, bottom-right, bottom-left) and
// the whole texture, into the current batch; `rgba` per vertex when not null.
inline void WriteQuad(int x, int y, int width, int height, const uint8_t* rgba = nullptr) {
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[render.mCurrentBatch];
  const float corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  for (const auto& corner : corners) {
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(float(x) + corner[0] * float(width));
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(float(y) + corner[1] * float(height));
    *batch.mTexCoordPtr++ = AnimatedModel2DRender::TexelToFixed(corner[0] * 4, 4);
    *batch.mTexCoordPtr++ = AnimatedModel2DRender::TexelToFixed(corner[1] * 4, 4);
    if (rgba != nullptr) {
      for (int i = 0; i < 4; ++i) *batch.mColorPtr++ = rgba[i];
    }
  }
}

class BatchTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    AnimatedModel2DRender::sCreate();
    zvtest::UseScreenProjection(GL_REPLACE);  // every texel drawn as it is
    Clear();
    zvtest::GLCalls().Reset();
  }
  void TearDown() override {
    for (GLTexture* texture : textures) delete texture;
    delete AnimatedModel2DRender::instance_;
    AnimatedModel2DRender::instance_ = nullptr;
  }

  static void Clear() {
    glClearColorx(0, 0, 0, 1 << 16);
    glClear(GL_COLOR_BUFFER_BIT);
  }

  // A texture of the pattern of that colour; the fixture deletes it.
  unsigned Texture(uint8_t red, uint8_t green, uint8_t blue) {
    std::vector<uint8_t> argb = Pattern(red, green, blue);
    GLTexture* texture = new GLTexture();
    EXPECT_EQ(0, texture->Load(argb.data(), 4, 4, 32, "pattern"));
    textures.push_back(texture);
    return texture->mTextureID;
  }

  AnimatedModel2DRender& Render() { return AnimatedModel2DRender::sInstance(); }

  zvtest::GLContext gl;
  std::vector<GLTexture*> textures;
};

}  // namespace batchtest
