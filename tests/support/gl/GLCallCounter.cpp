#include "support/gl/GLCallCounter.h"

#include <GLES/gl.h>
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>

namespace zvtest {

GLCallCounts& GLCalls() {
  static GLCallCounts counts;
  return counts;
}

}  // namespace zvtest

namespace {
// The GL library's own entry point of that name: the next definition after ours.
template <class Function>
Function Next(const char* name) {
  void* symbol = dlsym(RTLD_NEXT, name);
  if (symbol == nullptr) {
    fprintf(stderr, "GLCallCounter: the GL library has no %s\n", name);
    abort();
  }
  return reinterpret_cast<Function>(symbol);
}
}  // namespace

extern "C" {

GL_API void GL_APIENTRY glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
  static const auto real = Next<void (*)(GLenum, GLsizei, GLenum, const void*)>("glDrawElements");
  zvtest::GLCalls().drawElements++;
  zvtest::GLCalls().drawnIndices.push_back(count);
  real(mode, count, type, indices);
}

GL_API void GL_APIENTRY glBindTexture(GLenum target, GLuint texture) {
  static const auto real = Next<void (*)(GLenum, GLuint)>("glBindTexture");
  zvtest::GLCalls().bindTexture++;
  zvtest::GLCalls().boundTextures.push_back(texture);
  real(target, texture);
}

GL_API void GL_APIENTRY glBindBuffer(GLenum target, GLuint buffer) {
  static const auto real = Next<void (*)(GLenum, GLuint)>("glBindBuffer");
  if (target == GL_ARRAY_BUFFER) zvtest::GLCalls().arrayBuffer = buffer;
  real(target, buffer);
}

GL_API void GL_APIENTRY glBufferSubData(GLenum target, GLintptr offset, GLsizeiptr size, const void* data) {
  static const auto real = Next<void (*)(GLenum, GLintptr, GLsizeiptr, const void*)>("glBufferSubData");
  zvtest::GLCallCounts& calls = zvtest::GLCalls();
  if (target == GL_ARRAY_BUFFER && calls.keepUploads) {
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    calls.uploads.push_back(zvtest::GLCallCounts::Upload{calls.arrayBuffer, {bytes, bytes + size}});
  }
  real(target, offset, size, data);
}

}  // extern "C"
