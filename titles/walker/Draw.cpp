#include "Draw.h"

#include <GLES/gl.h>

#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/RenderStateStack.h"

namespace walker {

void DrawTexture(unsigned textureID, float s0, float t0, float s1, float t1, int x, int y, int width, int height) {
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  render.begin(0, 1);
  render.swapTexture(textureID);
  AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[render.mCurrentBatch];
  // Top-left, top-right, bottom-right, bottom-left, as every writer stores them.
  const float corners[4][4] = {{0, 0, 0, 0}, {1, 0, 1, 0}, {1, 1, 1, 1}, {0, 1, 0, 1}};
  for (const float* c : corners) {
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(float(x + c[0] * width));
    *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(float(y + c[1] * height));
    *batch.mTexCoordPtr++ = GLfixed((s0 + c[2] * (s1 - s0)) * 65536.0f);
    *batch.mTexCoordPtr++ = GLfixed((t0 + c[3] * (t1 - t0)) * 65536.0f);
  }
  render.end();
}

void FillRect(int x, int y, int width, int height, unsigned rgba) {
  RenderStateStack guard;
  glDisable(GL_TEXTURE_2D);
  glColor4ub(GLubyte(rgba >> 24), GLubyte(rgba >> 16), GLubyte(rgba >> 8), GLubyte(rgba));
  const GLfixed one = 1 << 16;
  const GLfixed left = x * one, top = y * one, right = (x + width) * one, bottom = (y + height) * one;
  const GLfixed vertices[] = {left, top, right, top, left, bottom, right, bottom};
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(2, GL_FIXED, 0, vertices);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  glDisableClientState(GL_VERTEX_ARRAY);
}

}  // namespace walker
