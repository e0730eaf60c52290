#pragma once
// The platform's description of an OpenGL ES context: the EGL display is its first
// word and the EGL surface its third.

struct SolvaOpenGLConfig {
  void* eglDisplay;
  void* eglConfig;
  void* eglSurface;
  void* eglContext;
};
