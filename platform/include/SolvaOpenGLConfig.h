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

namespace Vantrel {
namespace Solva {

// The device's OpenGL ES 1.1 context (the fixed-point common profile, with
// OES_compressed_paletted_texture), for a title that turns 3D on:
//
//   ZvWidgetInstance::SetIsUseOgl(1);
//   SetSolvaOpenGLConfig(Vantrel::Solva::CreateSolvaOpenGLConfig());
//   ZvWidgetInstance::Enter();   // InitSolvaOpenGL sets the context up
//
// The context draws into a 480 x 272 RGBA surface. Every eglSwapBuffers on its
// display and surface shows what was drawn on the 3D plane: the display handle
// `hndlDisplay`, an ARGB8888 plane registered at (0, 0) with z-order 0
// (kDisplayOnBottom) and no alpha, so the canvas layers (z-order 1 and up) lie over
// it and show it where they are transparent.
//
// Call it on the frame thread (in Enter): the context is made current on the
// calling thread. The device has one 3D context; while it lives every call returns
// the same config. Null, with a message on standard output, where the device has
// no EGL or no OpenGL ES 1.x.
SolvaOpenGLConfig* CreateSolvaOpenGLConfig();

// Gives the context, its surface and its plane back; call it after
// ZvWidgetInstance::Exit, whose CloseSolvaOpenGL still draws. The config is stale
// from then on. Null, or a config that is no longer the device's, is ignored.
void DestroySolvaOpenGLConfig(SolvaOpenGLConfig* config);

}  // namespace Solva
}  // namespace Vantrel
