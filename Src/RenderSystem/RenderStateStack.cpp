#include "RenderSystem/RenderStateStack.h"

#include <GLES/gl.h>
#include <assert.h>
#include <stddef.h>

RenderStateStack::ColorRing* RenderStateStack::mpStack = NULL;

void RenderStateStack::initialize() {
  assert(mpStack==NULL);
  mpStack = new ColorRing();
}

void RenderStateStack::destory() {
  delete mpStack;
  mpStack = NULL;
}

RenderStateStack::ColorRing* RenderStateStack::GetColorContainer() {
  assert(mpStack);
  return mpStack;
}

RenderStateStack::RenderStateStack() : mTexEnvMode(0), mBlendEnabled(0), mBlendDst(0), mBlendSrc(0) {
  GLfixed mode = 0;
  glGetTexEnvxv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
  mTexEnvMode = mode;
  if (glIsEnabled(GL_BLEND)) {
    mBlendEnabled = 1;
    glGetIntegerv(GL_BLEND_DST, &mBlendDst);
    glGetIntegerv(GL_BLEND_SRC, &mBlendSrc);
  }
  mTexture2DEnabled = glIsEnabled(GL_TEXTURE_2D) ? 1 : 0;
}

RenderStateStack::~RenderStateStack() {
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, mTexEnvMode);
  assert(mpStack);
  if (!mpStack->empty()) {
    const Color& c = mpStack->front();
    glColor4x(GLfixed(c.r * 65536.0f), GLfixed(c.g * 65536.0f), GLfixed(c.b * 65536.0f), GLfixed(c.a * 65536.0f));
  }
  if (mBlendEnabled) {
    glEnable(GL_BLEND);
    glBlendFunc(mBlendSrc, mBlendDst);
  } else {
    glDisable(GL_BLEND);
  }
  if (mTexture2DEnabled) {
    glEnable(GL_TEXTURE_2D);
  } else {
    glDisable(GL_TEXTURE_2D);
  }
}
