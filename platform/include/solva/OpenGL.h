#pragma once
// Device-control API: the device's 3D context (see SolvaOpenGLConfig.h for the
// title's side). Only the host and tests use this header.
//
// The device renders OpenGL ES 1.1 with Mesa (llvmpipe through EGL's surfaceless
// platform, so no display server is needed) into a 480 x 272 pbuffer. Each
// eglSwapBuffers on that surface reads its pixels back once (glReadPixels) and
// publishes them on the 3D plane's display handle, which the screen composes with
// the other handles by z-order: windows and screenshots show GL output like any
// layer.
#include <cstdint>

namespace solva {

// Whether the 3D context exists now.
bool OpenGLContextAlive();

// How many times the 3D surface has been swapped, and so read back onto its
// plane, since the device was reset.
uint64_t OpenGLSwapCount();

}  // namespace solva
