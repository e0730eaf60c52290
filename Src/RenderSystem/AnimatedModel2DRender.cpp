#include "RenderSystem/AnimatedModel2DRender.h"

#include "Base/XAssert.h"

namespace {
// Bytes of one batch's arrays and of the GL buffers they are copied into.
const int kVertexBytes = AnimatedModel2DRender::MAX_VERTEX_NUM * 2 * sizeof(GLfixed);    // 48,000
const int kTexCoordBytes = AnimatedModel2DRender::MAX_VERTEX_NUM * 2 * sizeof(GLfixed);  // 48,000
const int kColorBytes = AnimatedModel2DRender::MAX_VERTEX_NUM * 4;                        // 24,000
const int kIndexCount = AnimatedModel2DRender::MAX_VERTEX_NUM / 4 * 6;                   // 9,000

// A dynamic GL_ARRAY_BUFFER of `bytes`, filled per batch at end().
unsigned int MakeDynamicBuffer(int bytes) {
  GLuint name = 0;
  glGenBuffers(1, &name);
  glBindBuffer(GL_ARRAY_BUFFER, name);
  glBufferData(GL_ARRAY_BUFFER, bytes, 0, GL_DYNAMIC_DRAW);
  return name;
}
}  // namespace

AnimatedModel2DRender::BatchBuffer::BatchBuffer()
    : mVertexBase(0),
      mTexCoordBase(0),
      mColorBase(0),
      mVertexPtr(0),
      mTexCoordPtr(0),
      mColorPtr(0),
      mTextureID(0),
      mInUse(0) {}

AnimatedModel2DRender::BatchBuffer::~BatchBuffer() {
  delete[] mVertexBase;
  delete[] mTexCoordBase;
  delete[] mColorBase;
}

void AnimatedModel2DRender::BatchBuffer::init() {
  mVertexBase = new GLfixed[MAX_VERTEX_NUM * 2];
  mTexCoordBase = new GLfixed[MAX_VERTEX_NUM * 2];
  mColorBase = new unsigned char[MAX_VERTEX_NUM * 4];
  mVertexPtr = mVertexBase;
  mTexCoordPtr = mTexCoordBase;
  mColorPtr = mColorBase;
}

AnimatedModel2DRender::AnimatedModel2DRender()
    : mVertexVBO(0),
      mTexCoordVBO(0),
      mIndexVBO(0),
      mColorVBO(0),
      mInBatch(0),
      usedBatchCount(0),
      mCurrentBatch(0),
      mUseColor(0),
      mUseTexture(0) {
  mVertexVBO = MakeDynamicBuffer(kVertexBytes);
  mTexCoordVBO = MakeDynamicBuffer(kTexCoordBytes);
  mColorVBO = MakeDynamicBuffer(kColorBytes);

  // Two triangles per quad, its vertices in the order top-left, top-right,
  // bottom-right, bottom-left; one index buffer serves every draw.
  GLushort* indices = new GLushort[kIndexCount];
  GLushort* index = indices;
  for (int b = 0; b < MAX_VERTEX_NUM; b += 4) {
    *index++ = GLushort(b);
    *index++ = GLushort(b + 1);
    *index++ = GLushort(b + 2);
    *index++ = GLushort(b + 2);
    *index++ = GLushort(b + 3);
    *index++ = GLushort(b);
  }
  glGenBuffers(1, &mIndexVBO);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mIndexVBO);
  glBufferData(GL_ELEMENT_ARRAY_BUFFER, kIndexCount * sizeof(GLushort), indices, GL_STATIC_DRAW);
  delete[] indices;
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  glBindBuffer(GL_ARRAY_BUFFER, 0);

  for (int i = 0; i < MAX_TEXTURE_SWAP; ++i) mBatches[i].init();
}

AnimatedModel2DRender::~AnimatedModel2DRender() {
  const GLuint buffers[4] = {mVertexVBO, mTexCoordVBO, mIndexVBO, mColorVBO};
  glDeleteBuffers(4, buffers);
}

void AnimatedModel2DRender::begin(int useColor, int useTexture) {
  if (mInBatch) return;
  for (int i = 0; i < MAX_TEXTURE_SWAP; ++i) {
    BatchBuffer& batch = mBatches[i];
    batch.mVertexPtr = batch.mVertexBase;
    batch.mTexCoordPtr = batch.mTexCoordBase;
    batch.mColorPtr = batch.mColorBase;
    batch.mTextureID = 0;
    batch.mInUse = 0;
  }
  usedBatchCount = 0;
  mCurrentBatch = 0;
  mUseColor = useColor;
  mUseTexture = useTexture;
  mInBatch = 1;
  // Without textures batch 0 takes every quad.
  if (useTexture == 0) usedBatchCount = 1;
}

int AnimatedModel2DRender::swapTexture(unsigned int texID) {
  XASSERT(texID);
  if (usedBatchCount == 0) {
    usedBatchCount = 1;
    mBatches[0].mTextureID = texID;
    mBatches[0].mInUse = 1;
    return 1;
  }
  if (mBatches[mCurrentBatch].mTextureID == texID) return 1;
  for (int i = 0; i < usedBatchCount; ++i) {
    if (mBatches[i].mTextureID == texID) {
      mCurrentBatch = i;
      return 1;
    }
  }
  ++usedBatchCount;
  // Checked before the new batch is touched: an eleventh would lie past the array.
  XASSERT(usedBatchCount <= MAX_TEXTURE_SWAP && "reach max texture swap buffer!! need expends the buffer! ");
  mCurrentBatch = usedBatchCount - 1;
  mBatches[mCurrentBatch].mTextureID = texID;
  mBatches[mCurrentBatch].mInUse = 1;
  return 1;
}

void AnimatedModel2DRender::end() {
  mInBatch = 0;
  if (usedBatchCount == 0) return;

  glDisableClientState(GL_NORMAL_ARRAY);
  if (mUseColor) {
    glEnableClientState(GL_COLOR_ARRAY);
  } else {
    glDisableClientState(GL_COLOR_ARRAY);
  }
  if (mUseTexture) {
    glEnable(GL_TEXTURE_2D);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
  } else {
    glDisable(GL_TEXTURE_2D);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  }
  // GL_ELEMENT_ARRAY_BUFFER is no client state: handing it to glEnableClientState,
  // as the device's code did, only leaves GL_INVALID_ENUM for the title to find.
  glEnableClientState(GL_VERTEX_ARRAY);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mIndexVBO);

  for (int i = 0; i < usedBatchCount; ++i) {
    BatchBuffer& batch = mBatches[i];
    const int numVertex = int(batch.mVertexPtr - batch.mVertexBase) / 2;
    if (mUseTexture) glBindTexture(GL_TEXTURE_2D, batch.mTextureID);
    XASSERT(numVertex<MAX_VERTEX_NUM);
    glBindBuffer(GL_ARRAY_BUFFER, mVertexVBO);
    glBufferSubData(GL_ARRAY_BUFFER, 0, numVertex * 8, batch.mVertexBase);
    glVertexPointer(2, GL_FIXED, 0, 0);
    if (mUseTexture) {
      glBindBuffer(GL_ARRAY_BUFFER, mTexCoordVBO);
      glBufferSubData(GL_ARRAY_BUFFER, 0, numVertex * 8, batch.mTexCoordBase);
      glTexCoordPointer(2, GL_FIXED, 0, 0);
    }
    if (mUseColor) {
      glBindBuffer(GL_ARRAY_BUFFER, mColorVBO);
      glBufferSubData(GL_ARRAY_BUFFER, 0, numVertex * 4, batch.mColorBase);
      glColorPointer(4, GL_UNSIGNED_BYTE, 0, 0);
    }
    glDrawElements(GL_TRIANGLES, (numVertex / 4) * 6, GL_UNSIGNED_SHORT, 0);
  }

  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  usedBatchCount = 0;
}
