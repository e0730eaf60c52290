#pragma once
// Device-control API: the device's screen. Only the host and tests use this header.
//
// The screen is 480 x 272 pixels, composed from the registered, shown surfaces of
// the display service in their z-order over opaque black. ARGB8888 surfaces hold
// premultiplied colour (what the canvas layers leave in them) and are laid on by
// "over"; YUV surfaces are opaque. A surface shows what its last SwapBuffers
// published.
//
// Where the screen goes is the display backend's business:
//   "sdl"       a window showing the screen scaled up inside a plain device frame,
//               presented at every SwapBuffers;
//   "headless"  the screen is kept in memory only.
// Both can hand out the screen's pixels and write it as PNG at any time.
#include <cstdint>
#include <string>
#include <vector>

namespace solva {

struct DisplayOptions {
  // Screen pixels per device pixel in the window (sdl only), at least 1.
  int scale = 2;
  // The window's title (sdl only).
  std::string windowTitle = "solva";
  // Window pixels to the right of the device for the host's own panel (sdl
  // only); 0 for none.
  int panelWidth = 0;
};

// Chooses the backend: "sdl", "headless", or "auto" (also ""), which takes the SDL
// window when a display is there (DISPLAY, WAYLAND_DISPLAY or SDL_VIDEODRIVER set
// and a window can be opened) and otherwise the headless one. The backend in use
// before is closed. Returns false, with a message in `error`, when the named
// backend is unknown or cannot start; the headless backend is then in use.
bool SetDisplayBackend(const std::string& name, const DisplayOptions& options = DisplayOptions(),
                       std::string* error = nullptr);
// The name of the backend in use ("headless" until another is chosen).
std::string DisplayBackendName();

// Shows the screen again (sdl: redraws the window, e.g. after it was uncovered).
void PresentScreen();

// The window's pixel (wx, wy) as a screen pixel; false outside the screen or when
// there is no window. For the host's mouse.
bool WindowToScreen(int wx, int wy, int* x, int* y);
// SDL's id of the window, or 0 without one; lets the host tell its events apart.
uint32_t DisplayWindowId();

// The host's panel beside the device in the window (sdl only): `pixels` are
// width x height, 0xAARRGGBB, shown from the next presentation on. The panel is
// never part of the screen: not in ReadScreen, screenshots or movies.
void SetWindowPanel(const uint32_t* pixels, int width, int height);
// The panel's size (0 x 0 without one), and a window pixel as a panel pixel
// (false outside the panel).
void WindowPanelSize(int* width, int* height);
bool WindowToPanel(int wx, int wy, int* x, int* y);

const int kScreenWidth = 480;
const int kScreenHeight = 272;

// The composed screen, row by row from the top, each pixel 0xAARRGGBB (alpha 255).
std::vector<uint32_t> ReadScreen();
uint32_t ScreenPixel(int x, int y);

// Writes the composed screen as an 8-bit RGB PNG. Returns false, with a message in
// `error`, when the file cannot be written; nothing is left behind then.
bool WriteScreenshotPNG(const std::string& path, std::string* error = nullptr);

// The bytes of the picture a surface shows now (the one its last SwapBuffers
// published), pitch x rows; empty for an unknown handle.
std::vector<uint8_t> PublishedPicture(void* handle);

// How many SwapBuffers calls the display has had since the device was reset.
uint64_t DisplaySwapCount();
// How many surfaces exist, and how many of them are registered.
int DisplayHandleCount();
int RegisteredDisplayHandleCount();

}  // namespace solva
