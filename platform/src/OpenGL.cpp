// The device's 3D context: OpenGL ES 1.1 from Mesa on EGL's surfaceless platform,
// drawing into a 480 x 272 pbuffer whose pixels are read back at every swap onto
// the 3D plane's display handle.
//
// The title swaps with plain eglSwapBuffers, as on the device, where that call is
// what shows the 3D plane. Here libsolva is the device's EGL: it defines
// eglSwapBuffers itself, and because titles and the host find libsolva before
// Mesa's libEGL (which is libsolva's own dependency), their calls come here first.
// This one publishes the plane and hands the call on to Mesa.
#include "solva/OpenGL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GLES/gl.h>
#include <GLES/glext.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "CDisplaySvc.h"
#include "DeviceReset.h"
#include "Display.h"
#include "SolvaOpenGLConfig.h"
#include "solva/Display.h"

namespace {

using Vantrel::Solva::CDisplaySvc;

struct Context {
  SolvaOpenGLConfig config = {};
  bool alive = false;
  std::vector<uint8_t> readback;  // the pbuffer's rows, bottom row first, B, G, R, A
  uint64_t swaps = 0;
};

Context& GL() {
  static Context* context = new Context();  // never destroyed: titles may swap during static teardown
  return *context;
}

std::string EglError(const char* what) {
  char text[96];
  snprintf(text, sizeof text, "%s failed (EGL error 0x%04X)", what, unsigned(eglGetError()));
  return text;
}

// Mesa's eglSwapBuffers, the one behind ours.
PFNEGLSWAPBUFFERSPROC MesaSwapBuffers() {
  static PFNEGLSWAPBUFFERSPROC mesa = reinterpret_cast<PFNEGLSWAPBUFFERSPROC>(dlsym(RTLD_NEXT, "eglSwapBuffers"));
  return mesa;
}

// The pbuffer onto the plane's next picture (B, G, R, A, top row first), which then
// goes on the screen, as CDisplaySvc::SwapBuffers does for the other handles.
// Mesa keeps the pbuffer as B, G, R, A, the plane's own order: read so, the rows
// only change places (reading R, G, B, A would cost five times as much). Rows of
// 1,920 bytes come out alike at every pack alignment, so the title's stays.
void PublishPlane(Context& gl) {
  const int width = solva::kScreenWidth;
  const int height = solva::kScreenHeight;
  const size_t rowBytes = size_t(width) * 4;
  gl.readback.resize(rowBytes * height);
  glReadPixels(0, 0, width, height, GL_BGRA_EXT, GL_UNSIGNED_BYTE, gl.readback.data());
  ++gl.swaps;

  solva::detail::DisplayState& display = solva::detail::Display();
  std::lock_guard<std::mutex> hold(display.lock);
  solva::detail::Surface* plane = solva::detail::FindSurface(display, gl.config.hndlDisplay);
  if (plane == nullptr) return;
  uint8_t* out = plane->BackBuffer();
  for (int y = 0; y < height; ++y, out += rowBytes) {
    memcpy(out, gl.readback.data() + (height - 1 - y) * rowBytes, rowBytes);
  }
  plane->back = 1 - plane->back;
  if (display.backend->presentsAtSwap) {
    std::vector<uint32_t> screen(size_t(width) * height);
    solva::detail::ComposeScreen(display, screen.data());
    display.backend->Present(screen.data());
  }
}

// Whether a title's eglSwapBuffers lands here rather than straight in Mesa: a
// program that links Mesa's libEGL before libsolva would draw on a plane that
// never shows.
bool SwapsReachTheDevice() {
  Dl_info found = {}, self = {};
  void* swap = dlsym(RTLD_DEFAULT, "eglSwapBuffers");
  return swap != nullptr && MesaSwapBuffers() != nullptr && dladdr(swap, &found) != 0 &&
         dladdr(reinterpret_cast<void*>(&PublishPlane), &self) != 0 && found.dli_fbase == self.dli_fbase;
}

// The EGL display stays initialised for the life of the process, as EGL allows:
// terminating it would unload Mesa's driver (and lose track of what the driver
// keeps for each thread), and the next context would load it again.
void Release(Context& gl) {
  if (!gl.alive) return;
  EGLDisplay display = static_cast<EGLDisplay>(gl.config.eglDisplay);
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, static_cast<EGLContext>(gl.config.eglContext));
  eglDestroySurface(display, static_cast<EGLSurface>(gl.config.eglSurface));
  eglReleaseThread();
  CDisplaySvc service;
  service.UnRegister(gl.config.hndlDisplay, Vantrel::Solva::kDisplayScreenAllScreens);
  service.DestroyHandle(gl.config.hndlDisplay, 1);
  gl.config = SolvaOpenGLConfig();
  gl.alive = false;
  std::vector<uint8_t>().swap(gl.readback);
}

// Brings the context up into `gl`; false with the reason in `why`, and nothing
// left behind.
bool Create(Context& gl, std::string* why) {
  if (!SwapsReachTheDevice()) {
    *why = "eglSwapBuffers does not reach libsolva (link libsolva before libEGL)";
    return false;
  }
  const char* clientExtensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  auto getPlatformDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (clientExtensions == nullptr || strstr(clientExtensions, "EGL_MESA_platform_surfaceless") == nullptr ||
      getPlatformDisplay == nullptr) {
    *why = "EGL has no surfaceless platform (are Mesa's EGL drivers installed?)";
    return false;
  }
  EGLDisplay display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (display == EGL_NO_DISPLAY) {
    *why = "EGL gives no surfaceless display (are Mesa's EGL drivers installed?)";
    return false;
  }
  EGLint major = 0, minor = 0;
  if (!eglInitialize(display, &major, &minor)) {
    *why = EglError("eglInitialize");
    return false;
  }
  auto fail = [&](const std::string& reason, EGLSurface surface, EGLContext context) {
    *why = reason;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context != EGL_NO_CONTEXT) eglDestroyContext(display, context);
    if (surface != EGL_NO_SURFACE) eglDestroySurface(display, surface);
    eglReleaseThread();
    return false;
  };
  const EGLint configAttributes[] = {EGL_SURFACE_TYPE,
                                     EGL_PBUFFER_BIT,
                                     EGL_RENDERABLE_TYPE,
                                     EGL_OPENGL_ES_BIT,
                                     EGL_RED_SIZE,
                                     8,
                                     EGL_GREEN_SIZE,
                                     8,
                                     EGL_BLUE_SIZE,
                                     8,
                                     EGL_ALPHA_SIZE,
                                     8,
                                     EGL_DEPTH_SIZE,
                                     16,
                                     EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (!eglBindAPI(EGL_OPENGL_ES_API) || !eglChooseConfig(display, configAttributes, &config, 1, &count) || count < 1) {
    return fail("EGL offers no OpenGL ES 1.x pbuffer with 8-bit RGBA", EGL_NO_SURFACE, EGL_NO_CONTEXT);
  }
  const EGLint surfaceAttributes[] = {EGL_WIDTH, solva::kScreenWidth, EGL_HEIGHT, solva::kScreenHeight, EGL_NONE};
  EGLSurface surface = eglCreatePbufferSurface(display, config, surfaceAttributes);
  if (surface == EGL_NO_SURFACE) return fail(EglError("eglCreatePbufferSurface"), surface, EGL_NO_CONTEXT);
  const EGLint contextAttributes[] = {EGL_CONTEXT_CLIENT_VERSION, 1, EGL_NONE};
  EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, contextAttributes);
  if (context == EGL_NO_CONTEXT) return fail(EglError("eglCreateContext (OpenGL ES 1.x)"), surface, context);
  if (!eglMakeCurrent(display, surface, surface, context)) return fail(EglError("eglMakeCurrent"), surface, context);
  const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  if (version == nullptr || strncmp(version, "OpenGL ES-CM 1.", 15) != 0) {
    return fail(std::string("the context is ") + (version ? version : "of no version") + ", not OpenGL ES-CM 1.x",
                surface, context);
  }
  const char* extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
  if (extensions == nullptr || strstr(extensions, "GL_EXT_read_format_bgra") == nullptr) {
    return fail("the GL cannot read its pixels as B, G, R, A (GL_EXT_read_format_bgra)", surface, context);
  }

  CDisplaySvc service;
  void* plane =
      service.CreateHandle(solva::kScreenHeight, solva::kScreenWidth, Vantrel::Solva::kPixelFormatARGB8888, nullptr);
  service.Register(plane, 0, 0, Vantrel::Solva::kDisplayOnBottom, Vantrel::Solva::kDisplayScreenAllScreens);
  gl.config.eglDisplay = display;
  gl.config.eglConfig = config;
  gl.config.eglSurface = surface;
  gl.config.eglContext = context;
  gl.config.hndlDisplay = plane;
  gl.alive = true;
  return true;
}

void ResetOpenGL() {
  Release(GL());
  GL().swaps = 0;
}
solva::detail::ResetHook gOpenGLReset(&ResetOpenGL);

}  // namespace

// The device's eglSwapBuffers: the 3D surface's picture goes on its plane, then
// Mesa swaps (for a pbuffer that changes nothing).
extern "C" EGLBoolean EGLAPIENTRY eglSwapBuffers(EGLDisplay display, EGLSurface surface) {
  Context& gl = GL();
  if (gl.alive && display == gl.config.eglDisplay && surface == gl.config.eglSurface &&
      eglGetCurrentSurface(EGL_DRAW) == surface) {
    PublishPlane(gl);
  }
  PFNEGLSWAPBUFFERSPROC mesa = MesaSwapBuffers();
  return mesa != nullptr ? mesa(display, surface) : EGL_FALSE;
}

namespace Vantrel {
namespace Solva {

SolvaOpenGLConfig* CreateSolvaOpenGLConfig() {
  Context& gl = GL();
  if (gl.alive) return &gl.config;
  std::string why;
  if (!Create(gl, &why)) {
    printf("[SolvaOpenGL] cannot create the 3D context: %s\n", why.c_str());
    return nullptr;
  }
  return &gl.config;
}

void DestroySolvaOpenGLConfig(SolvaOpenGLConfig* config) {
  Context& gl = GL();
  if (config == &gl.config) Release(gl);
}

}  // namespace Solva
}  // namespace Vantrel

namespace solva {

bool OpenGLContextAlive() { return GL().alive; }

uint64_t OpenGLSwapCount() { return GL().swaps; }

}  // namespace solva
