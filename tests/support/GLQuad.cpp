#include "support/GLQuad.h"

#include <GLES/gl.h>

namespace zvtest {

void DrawTexturedQuad(unsigned textureID, int x, int y, int width, int height) {
  DrawTexturedQuad(textureID, x, y, width, height, 0.0f, 0.0f, 1.0f, 1.0f);
}

void DrawTexturedQuad(unsigned textureID, int x, int y, int width, int height, float s0, float t0, float s1,
                      float t1) {
  const GLfixed one = 1 << 16;
  const GLfixed left = x * one, top = y * one, right = (x + width) * one, bottom = (y + height) * one;
  const GLfixed vertices[] = {left, top, right, top, left, bottom, right, bottom};
  const GLfixed sl = GLfixed(s0 * one), tt = GLfixed(t0 * one), sr = GLfixed(s1 * one), tb = GLfixed(t1 * one);
  const GLfixed texels[] = {sl, tt, sr, tt, sl, tb, sr, tb};
  glBindTexture(GL_TEXTURE_2D, textureID);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_TEXTURE_COORD_ARRAY);
  glVertexPointer(2, GL_FIXED, 0, vertices);
  glTexCoordPointer(2, GL_FIXED, 0, texels);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
}

}  // namespace zvtest
