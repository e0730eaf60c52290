// The SDL display: a window that shows the screen scaled up inside a plain device
// frame, redrawn at every swap.
#include <SDL.h>

#include <cstdlib>
#include <vector>

#include "backends/DisplayBackend.h"

namespace solva {
namespace detail {
namespace {

struct SdlWindow {
  SDL_Window* window = nullptr;
  SDL_Renderer* renderer = nullptr;
  SDL_Texture* texture = nullptr;
  int scale = 2;
  int border = 32;  // frame around the screen, in window pixels
  SDL_Texture* panel = nullptr;  // the host's, beside the device
  int panelWidth = 0;
};
SdlWindow gSdl;

bool Set(const char* variable) {
  const char* value = getenv(variable);
  return value != nullptr && *value != '\0';
}

bool Available() { return Set("DISPLAY") || Set("WAYLAND_DISPLAY") || Set("SDL_VIDEODRIVER"); }

int DeviceWidth() { return kScreenWidth * gSdl.scale + 2 * gSdl.border; }
int DeviceHeight() { return kScreenHeight * gSdl.scale + 2 * gSdl.border; }

void Close() {
  if (gSdl.panel) SDL_DestroyTexture(gSdl.panel);
  if (gSdl.texture) SDL_DestroyTexture(gSdl.texture);
  if (gSdl.renderer) SDL_DestroyRenderer(gSdl.renderer);
  if (gSdl.window) {
    SDL_DestroyWindow(gSdl.window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
  }
  gSdl = SdlWindow();
}

bool Fail(const std::string& what, std::string* error) {
  if (error) *error = what + ": " + SDL_GetError();
  Close();
  return false;
}

bool Open(const DisplayOptions& options, std::string* error) {
  Close();
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
    if (error) *error = std::string("cannot start SDL video: ") + SDL_GetError();
    return false;
  }
  gSdl.scale = options.scale < 1 ? 1 : options.scale;
  gSdl.border = 16 * gSdl.scale;
  gSdl.panelWidth = options.panelWidth < 0 ? 0 : options.panelWidth;
  gSdl.window = SDL_CreateWindow(options.windowTitle.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                 DeviceWidth() + gSdl.panelWidth, DeviceHeight(), SDL_WINDOW_SHOWN);
  if (!gSdl.window) {
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    if (error) *error = std::string("cannot open a window: ") + SDL_GetError();
    return false;
  }
  // The window draws without a GL context of its own, in software onto the X
  // window's own framebuffer: on the frame thread the title's 3D context must be
  // the only one (a window-system GL context current there keeps the EGL one from
  // being made current).
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  gSdl.renderer = SDL_CreateRenderer(gSdl.window, -1, SDL_RENDERER_SOFTWARE);
  if (!gSdl.renderer) return Fail("cannot draw into the window", error);
  // Device pixels stay sharp squares when scaled up.
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "0");
  gSdl.texture = SDL_CreateTexture(gSdl.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, kScreenWidth,
                                   kScreenHeight);
  if (!gSdl.texture) return Fail("cannot make the screen's texture", error);
  if (gSdl.panelWidth > 0) {
    gSdl.panel = SDL_CreateTexture(gSdl.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING,
                                   gSdl.panelWidth, DeviceHeight());
    if (!gSdl.panel) return Fail("cannot make the panel's texture", error);
    // Blank until the host draws it.
    const std::vector<uint32_t> blank(size_t(gSdl.panelWidth) * size_t(DeviceHeight()), 0xFF2B2F36u);
    SDL_UpdateTexture(gSdl.panel, nullptr, blank.data(), gSdl.panelWidth * 4);
  }
  return true;
}

void FillRect(int x, int y, int w, int h, Uint8 r, Uint8 g, Uint8 b) {
  SDL_SetRenderDrawColor(gSdl.renderer, r, g, b, 255);
  const SDL_Rect rect = {x, y, w, h};
  SDL_RenderFillRect(gSdl.renderer, &rect);
}

void Present(const uint32_t* screen) {
  if (!gSdl.renderer) return;
  const int screenW = kScreenWidth * gSdl.scale;
  const int screenH = kScreenHeight * gSdl.scale;
  const int edge = gSdl.scale;
  // The device's body, a lighter bezel line, and the glass.
  FillRect(0, 0, screenW + 2 * gSdl.border, screenH + 2 * gSdl.border, 0x2b, 0x2f, 0x36);
  FillRect(gSdl.border - 3 * edge, gSdl.border - 3 * edge, screenW + 6 * edge, screenH + 6 * edge, 0x58, 0x5e, 0x69);
  FillRect(gSdl.border - 2 * edge, gSdl.border - 2 * edge, screenW + 4 * edge, screenH + 4 * edge, 0x10, 0x11, 0x13);
  SDL_UpdateTexture(gSdl.texture, nullptr, screen, kScreenWidth * 4);
  const SDL_Rect target = {gSdl.border, gSdl.border, screenW, screenH};
  SDL_RenderCopy(gSdl.renderer, gSdl.texture, nullptr, &target);
  if (gSdl.panel) {
    const SDL_Rect beside = {DeviceWidth(), 0, gSdl.panelWidth, DeviceHeight()};
    SDL_RenderCopy(gSdl.renderer, gSdl.panel, nullptr, &beside);
  }
  SDL_RenderPresent(gSdl.renderer);
}

void SetPanel(const uint32_t* pixels, int width, int height) {
  if (!gSdl.panel || width != gSdl.panelWidth || height != DeviceHeight()) return;
  SDL_UpdateTexture(gSdl.panel, nullptr, pixels, width * 4);
}

void PanelSize(int* width, int* height) {
  *width = gSdl.panel ? gSdl.panelWidth : 0;
  *height = gSdl.panel ? DeviceHeight() : 0;
}

bool WindowToPanel(int wx, int wy, int* x, int* y) {
  if (!gSdl.panel || wx < DeviceWidth() || wx >= DeviceWidth() + gSdl.panelWidth || wy < 0 || wy >= DeviceHeight()) {
    return false;
  }
  *x = wx - DeviceWidth();
  *y = wy;
  return true;
}

bool WindowToScreen(int wx, int wy, int* x, int* y) {
  if (!gSdl.window) return false;
  const int sx = wx - gSdl.border;
  const int sy = wy - gSdl.border;
  if (sx < 0 || sy < 0) return false;
  const int px = sx / gSdl.scale;
  const int py = sy / gSdl.scale;
  if (px >= kScreenWidth || py >= kScreenHeight) return false;
  *x = px;
  *y = py;
  return true;
}

uint32_t WindowId() { return gSdl.window ? SDL_GetWindowID(gSdl.window) : 0; }

}  // namespace

const DisplayBackend kSdlDisplayBackend = {
    "sdl",     &Available, &Open,          &Close, true, &Present, &WindowToScreen, &WindowId,
    &SetPanel, &PanelSize, &WindowToPanel,
};

}  // namespace detail
}  // namespace solva
