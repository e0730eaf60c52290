#pragma once
// The platform's description of an OpenGL ES context: the EGL display is its first
// word and the EGL surface its third; the last is the display service's handle of
// the plane the context draws on.

struct SolvaOpenGLConfig {
  void* eglDisplay;
  void* eglConfig;
  void* eglSurface;
  void* eglContext;
  void* hndlDisplay;  // a Vantrel::Solva::tDisplayHandle
};
