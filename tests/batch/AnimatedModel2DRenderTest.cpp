// The batch renderer's life: its buffers, a collection's states, the batches
// textures get, what end() draws, and its assertions.
#include "BatchFixture.h"
#include "support/TestSupport.h"

namespace {

using batchtest::BatchTest;
using batchtest::WriteQuad;

using BatchRenderer = BatchTest;

GLint BufferSize(unsigned buffer, GLenum target) {
  GLint size = 0;
  glBindBuffer(target, buffer);
  glGetBufferParameteriv(target, GL_BUFFER_SIZE, &size);
  glBindBuffer(target, 0);
  return size;
}

TEST_F(BatchRenderer, ConstructionMakesThreeDynamicBuffersAStaticIndexBufferAndTenBatches) {
  AnimatedModel2DRender& r = Render();
  EXPECT_EQ(48000, BufferSize(r.mVertexVBO, GL_ARRAY_BUFFER));
  EXPECT_EQ(48000, BufferSize(r.mTexCoordVBO, GL_ARRAY_BUFFER));
  EXPECT_EQ(24000, BufferSize(r.mColorVBO, GL_ARRAY_BUFFER));
  EXPECT_EQ(18000, BufferSize(r.mIndexVBO, GL_ELEMENT_ARRAY_BUFFER));
  GLint usage = 0;
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, r.mIndexVBO);
  glGetBufferParameteriv(GL_ELEMENT_ARRAY_BUFFER, GL_BUFFER_USAGE, &usage);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  EXPECT_EQ(GL_STATIC_DRAW, usage);
  EXPECT_EQ(0, r.mInBatch);
  EXPECT_EQ(0, r.usedBatchCount);
  for (const AnimatedModel2DRender::BatchBuffer& batch : r.mBatches) {
    EXPECT_NE(nullptr, batch.mVertexBase);
    EXPECT_EQ(batch.mVertexBase, batch.mVertexPtr);
    EXPECT_EQ(batch.mTexCoordBase, batch.mTexCoordPtr);
    EXPECT_EQ(batch.mColorBase, batch.mColorPtr);
    EXPECT_EQ(0u, batch.mTextureID);
  }
  EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
}

TEST_F(BatchRenderer, SwapTextureGivesEachNewTextureTheNextBatchAndFindsKnownOnes) {
  const unsigned a = Texture(10, 0, 0), b = Texture(0, 10, 0), c = Texture(0, 0, 10);
  Render().begin(0, 1);
  EXPECT_EQ(1, Render().mInBatch);
  EXPECT_EQ(1, Render().swapTexture(a));
  EXPECT_EQ(1, Render().usedBatchCount);
  EXPECT_EQ(1, Render().swapTexture(b));
  EXPECT_EQ(1, Render().swapTexture(c));
  EXPECT_EQ(3, Render().usedBatchCount);
  EXPECT_EQ(2, Render().mCurrentBatch);
  EXPECT_EQ(1, Render().swapTexture(b));
  EXPECT_EQ(1, Render().mCurrentBatch);
  EXPECT_EQ(3, Render().usedBatchCount);
  EXPECT_EQ(b, Render().mBatches[1].mTextureID);
  EXPECT_EQ(1, Render().mBatches[1].mInUse);
  EXPECT_EQ(0, Render().mBatches[3].mInUse);
  Render().end();
  EXPECT_EQ(0, Render().mInBatch);
  EXPECT_EQ(0, Render().usedBatchCount);
}

TEST_F(BatchRenderer, BeginTwiceThenEndOnceDrawsTheFirstCollection) {
  const unsigned a = Texture(100, 0, 0);
  Render().begin(0, 1);
  Render().swapTexture(a);
  WriteQuad(0, 0, 8, 8);
  Render().begin(1, 0);  // ignored, arguments and all
  EXPECT_EQ(0, Render().mUseColor);
  EXPECT_EQ(1, Render().mUseTexture);
  WriteQuad(10, 0, 8, 8);
  zvtest::GLCalls().Reset();
  Render().end();
  EXPECT_EQ((std::vector<int>{12}), zvtest::GLCalls().drawnIndices) << "both quads, textured, in one call";
  EXPECT_EQ((std::vector<unsigned>{a}), zvtest::GLCalls().boundTextures);
  EXPECT_NE(0xFF000000u, zvtest::ReadPixels(12, 2, 1, 1)[0]) << "the quad written after the second begin";
}

TEST_F(BatchRenderer, TenDistinctTexturesInOneCollectionPass) {
  std::vector<unsigned> ids;
  for (int i = 0; i < 10; ++i) ids.push_back(Texture(uint8_t(20 * i), 0, 0));
  Render().begin(0, 1);
  for (int i = 0; i < 10; ++i) {
    Render().swapTexture(ids[i]);
    WriteQuad(i * 10, 0, 8, 8);
  }
  EXPECT_EQ(10, Render().usedBatchCount);
  Render().end();
  EXPECT_EQ(10, zvtest::GLCalls().drawElements);
}

TEST_F(BatchRenderer, AnEleventhDistinctTextureEndsInTheSwapAssertion) {
  std::vector<unsigned> ids;
  for (int i = 0; i < 11; ++i) ids.push_back(Texture(uint8_t(20 * i), 0, 0));
  zvtest::ChildResult result = zvtest::RunInChild([&] {
    Render().begin(0, 1);
    for (unsigned id : ids) Render().swapTexture(id);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ(
      "Assertion failed: usedBatchCount <= MAX_TEXTURE_SWAP && \"reach max texture swap buffer!! need expends the "
      "buffer! \"\n",
      result.out);
}

TEST_F(BatchRenderer, TextureZeroEndsInTheTexIDAssertion) {
  zvtest::ChildResult result = zvtest::RunInChild([&] {
    Render().begin(0, 1);
    Render().swapTexture(0);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: texID\n", result.out);
}

TEST_F(BatchRenderer, EndWithNoQuadsAfterBeginWithTexturesReturnsAtOnce) {
  glDisableClientState(GL_VERTEX_ARRAY);
  glDisable(GL_TEXTURE_2D);
  Render().begin(0, 1);
  Render().end();
  EXPECT_EQ(0, zvtest::GLCalls().drawElements);
  EXPECT_EQ(0, zvtest::GLCalls().bindTexture);
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_VERTEX_ARRAY)) << "no state was touched";
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_TEXTURE_2D));
  EXPECT_EQ(0, Render().mInBatch);
}

TEST_F(BatchRenderer, EndAfterBeginWithoutTexturesRunsOnePassOverBatchZeroDrawingNoTriangles) {
  Render().begin(0, 0);
  EXPECT_EQ(1, Render().usedBatchCount);
  Render().end();
  EXPECT_EQ((std::vector<int>{0}), zvtest::GLCalls().drawnIndices);
  EXPECT_EQ(0, zvtest::GLCalls().bindTexture);
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_TEXTURE_2D));
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_VERTEX_ARRAY));
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_TEXTURE_COORD_ARRAY));
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_COLOR_ARRAY));
  EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
}

TEST_F(BatchRenderer, QuadsWrittenWhileIdleAreLostAtTheNextBegin) {
  const unsigned a = Texture(100, 0, 0);
  WriteQuad(0, 0, 8, 8);  // idle: into the last cursors
  Render().begin(0, 1);
  EXPECT_EQ(Render().mBatches[0].mVertexBase, Render().mBatches[0].mVertexPtr);
  Render().swapTexture(a);
  WriteQuad(20, 0, 8, 8);
  Render().end();
  EXPECT_EQ((std::vector<int>{6}), zvtest::GLCalls().drawnIndices);
  EXPECT_EQ(0xFF000000u, zvtest::ReadPixels(2, 2, 1, 1)[0]);
}

TEST_F(BatchRenderer, FifteenHundredQuadsLessOnePassTheVertexLimit) {
  const unsigned a = Texture(100, 0, 0);
  Render().begin(0, 1);
  Render().swapTexture(a);
  for (int i = 0; i < 1499; ++i) WriteQuad(i % 400, i / 400 * 10, 1, 1);
  Render().end();
  EXPECT_EQ((std::vector<int>{1499 * 6}), zvtest::GLCalls().drawnIndices);
}

TEST_F(BatchRenderer, SixThousandVerticesInABatchEndInTheVertexAssertionAtEnd) {
  const unsigned a = Texture(100, 0, 0);
  zvtest::ChildResult result = zvtest::RunInChild([&] {
    Render().begin(0, 1);
    Render().swapTexture(a);
    for (int i = 0; i < 1500; ++i) WriteQuad(0, 0, 1, 1);
    puts("written");
    Render().end();
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("written\nAssertion failed: numVertex<MAX_VERTEX_NUM\n", result.out);
}

TEST(BatchRendererDeathTest, TheRendererBeforeItExistsFailsTheAssertion) {
  ASSERT_EQ(nullptr, AnimatedModel2DRender::instance_);
  EXPECT_DEATH(AnimatedModel2DRender::sInstance(),
               zvtest::Literal(zvtest::AssertText(
                   "Src/Base/singleton.h", 40,
                   "static T& Singleton<T, Tag_Singleton_Manual>::sInstance() [with T = AnimatedModel2DRender]",
                   "instance_")));
}

}  // namespace
