// The device's display: the surfaces, the composed screen, the backends and the
// screenshots.
#include "Display.h"

#include <png.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "DeviceReset.h"
#include "solva/Display.h"

namespace solva {
namespace detail {

namespace {

using Vantrel::Solva::kPixelFormatARGB8888;
using Vantrel::Solva::kPixelFormatYUV420;

// Tried in this order by "auto".
const DisplayBackend* const kBackends[] = {&kSdlDisplayBackend, &kHeadlessDisplayBackend};

uint8_t Clamp(int v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// Premultiplied "over" at a plane opacity of `level` percent.
void LayArgb(const Surface& s, int sx, int sy, uint32_t* dst) {
  const uint8_t* p = s.FrontBuffer() + sy * s.pitch + sx * 4;
  const uint32_t under = *dst;
  if (!s.alphaEnabled) {
    *dst = 0xFF000000u | (uint32_t(p[2]) << 16) | (uint32_t(p[1]) << 8) | p[0];
    return;
  }
  const int level = std::min<int>(s.alphaLevel, 100);
  const int keep = 25500 - p[3] * level;  // what shows through, of 25500
  int out[3];
  for (int c = 0; c < 3; ++c) {
    const int d = (under >> (8 * c)) & 0xFF;
    out[c] = (p[c] * level * 255 + d * keep + 12750) / 25500;
  }
  *dst = 0xFF000000u | (uint32_t(Clamp(out[2])) << 16) | (uint32_t(Clamp(out[1])) << 8) | Clamp(out[0]);
}

// Full-range YCbCr as pictures from a camera or decoder carry it.
void LayYuv(const Surface& s, int sx, int sy, uint32_t* dst) {
  const uint8_t* picture = s.FrontBuffer();
  const int evenWidth = (s.width + 1) & ~1;
  const int evenHeight = (s.height + 1) & ~1;
  const int y = picture[sy * s.pitch + sx];
  const int u = picture[(sy / 2) * s.pitch + evenWidth + sx / 2] - 128;
  const int v = picture[(evenHeight / 2 + sy / 2) * s.pitch + evenWidth + sx / 2] - 128;
  // 16.16 factors, rounded to the nearest.
  auto fix = [](int value) { return (value + 32768) >> 16; };
  int rgb[3] = {y + fix(91881 * v), y - fix(22554 * u + 46802 * v), y + fix(116130 * u)};
  const int level = s.alphaEnabled ? std::min<int>(s.alphaLevel, 100) : 100;
  const uint32_t under = *dst;
  uint32_t out = 0xFF000000u;
  for (int c = 0; c < 3; ++c) {
    const int d = (under >> (16 - 8 * c)) & 0xFF;
    out |= uint32_t(Clamp((rgb[c] * level + d * (100 - level) + 50) / 100)) << (16 - 8 * c);
  }
  *dst = out;
}

void ResetDisplay() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  display.backend->Close();
  display.backend = &kHeadlessDisplayBackend;
  display.surfaces.clear();
  display.registrations = 0;
  display.swaps = 0;
}
ResetHook gDisplayReset(&ResetDisplay);

}  // namespace

DisplayState& Display() {
  static DisplayState* state = new DisplayState();  // never destroyed: the backend may outlive static teardown
  return *state;
}

Surface* FindSurface(DisplayState& display, void* handle) {
  auto found = display.surfaces.find(reinterpret_cast<uintptr_t>(handle));
  return found == display.surfaces.end() ? nullptr : &found->second;
}

void ClearYuvPicture(uint8_t* picture, int pitch, int width, int height) {
  for (int row = 0; row < height; ++row) {
    memset(picture + pitch * row, 0, width);
    memset(picture + pitch * row + width, 128, pitch - width);
  }
}

void ComposeScreen(DisplayState& display, uint32_t* screen) {
  std::fill(screen, screen + kScreenWidth * kScreenHeight, 0xFF000000u);
  std::vector<const Surface*> shown;
  for (const auto& entry : display.surfaces) {
    if (entry.second.registered && entry.second.visible) shown.push_back(&entry.second);
  }
  std::sort(shown.begin(), shown.end(), [](const Surface* a, const Surface* b) {
    return a->zOrder != b->zOrder ? a->zOrder < b->zOrder : a->registration < b->registration;
  });
  for (const Surface* s : shown) {
    const int w = std::min(s->windowWidth, s->width);
    const int h = std::min(s->windowHeight, s->height);
    const int x0 = std::max(0, -int(s->x));
    const int y0 = std::max(0, -int(s->y));
    const int x1 = std::min(w, kScreenWidth - s->x);
    const int y1 = std::min(h, kScreenHeight - s->y);
    for (int sy = y0; sy < y1; ++sy) {
      uint32_t* row = screen + (s->y + sy) * kScreenWidth + s->x;
      for (int sx = x0; sx < x1; ++sx) {
        if (s->format == kPixelFormatARGB8888) {
          LayArgb(*s, sx, sy, row + sx);
        } else if (s->format == kPixelFormatYUV420) {
          LayYuv(*s, sx, sy, row + sx);
        }
      }
    }
  }
}

}  // namespace detail

using detail::Display;
using detail::DisplayState;

bool SetDisplayBackend(const std::string& name, const DisplayOptions& options, std::string* error) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  display.backend->Close();
  display.backend = &detail::kHeadlessDisplayBackend;
  std::string why;
  if (name.empty() || name == "auto") {
    for (const detail::DisplayBackend* backend : detail::kBackends) {
      if (!backend->Available()) continue;
      if (backend->Open(options, &why)) {
        display.backend = backend;
        break;
      }
    }
  } else {
    const detail::DisplayBackend* chosen = nullptr;
    for (const detail::DisplayBackend* backend : detail::kBackends) {
      if (name == backend->name) chosen = backend;
    }
    if (!chosen) {
      if (error) *error = "unknown display backend \"" + name + "\" (sdl, headless or auto)";
      return false;
    }
    if (!chosen->Open(options, &why)) {
      if (error) *error = "the " + name + " display cannot start: " + why;
      return false;
    }
    display.backend = chosen;
  }
  if (display.backend->presentsAtSwap) {
    std::vector<uint32_t> screen(kScreenWidth * kScreenHeight);
    detail::ComposeScreen(display, screen.data());
    display.backend->Present(screen.data());
  }
  return true;
}

std::string DisplayBackendName() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.backend->name;
}

void PresentScreen() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  std::vector<uint32_t> screen(kScreenWidth * kScreenHeight);
  detail::ComposeScreen(display, screen.data());
  display.backend->Present(screen.data());
}

bool WindowToScreen(int wx, int wy, int* x, int* y) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.backend->WindowToScreen(wx, wy, x, y);
}

uint32_t DisplayWindowId() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.backend->WindowId();
}

void SetWindowPanel(const uint32_t* pixels, int width, int height) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  display.backend->SetPanel(pixels, width, height);
}

void WindowPanelSize(int* width, int* height) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  display.backend->PanelSize(width, height);
}

bool WindowToPanel(int wx, int wy, int* x, int* y) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.backend->WindowToPanel(wx, wy, x, y);
}

std::vector<uint32_t> ReadScreen() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  std::vector<uint32_t> screen(kScreenWidth * kScreenHeight);
  detail::ComposeScreen(display, screen.data());
  return screen;
}

uint32_t ScreenPixel(int x, int y) {
  if (x < 0 || y < 0 || x >= kScreenWidth || y >= kScreenHeight) return 0;
  return ReadScreen()[y * kScreenWidth + x];
}

namespace {

struct PngWriter {
  FILE* file = nullptr;
  png_structp png = nullptr;
  png_infop info = nullptr;
  std::string message;
};

void PngError(png_structp png, png_const_charp text) {
  static_cast<PngWriter*>(png_get_error_ptr(png))->message = text;
  png_longjmp(png, 1);
}
void PngWarning(png_structp, png_const_charp) {}

// libpng reports errors by longjmp: nothing with a destructor lives in here.
bool WriteRows(PngWriter& w, png_bytep* rows) {
  if (setjmp(png_jmpbuf(w.png))) return false;
  png_init_io(w.png, w.file);
  png_set_IHDR(w.png, w.info, kScreenWidth, kScreenHeight, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(w.png, w.info);
  png_write_image(w.png, rows);
  png_write_end(w.png, nullptr);
  return true;
}

}  // namespace

bool WriteScreenshotPNG(const std::string& path, std::string* error) {
  const std::vector<uint32_t> screen = ReadScreen();
  std::vector<png_byte> rgb(kScreenWidth * kScreenHeight * 3);
  for (size_t i = 0; i < screen.size(); ++i) {
    rgb[i * 3] = png_byte(screen[i] >> 16);
    rgb[i * 3 + 1] = png_byte(screen[i] >> 8);
    rgb[i * 3 + 2] = png_byte(screen[i]);
  }
  std::vector<png_bytep> rows(kScreenHeight);
  for (int y = 0; y < kScreenHeight; ++y) rows[y] = &rgb[y * kScreenWidth * 3];

  PngWriter w;
  w.file = fopen(path.c_str(), "wb");
  if (!w.file) {
    if (error) *error = "cannot write the screenshot " + path + ": " + strerror(errno);
    return false;
  }
  w.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &w, &PngError, &PngWarning);
  if (w.png) w.info = png_create_info_struct(w.png);
  bool ok = w.png && w.info && WriteRows(w, rows.data());
  png_destroy_write_struct(&w.png, &w.info);
  if (fclose(w.file) != 0 && ok) {
    ok = false;
    w.message = strerror(errno);
  }
  if (!ok) {
    remove(path.c_str());
    if (error) *error = "cannot write the screenshot " + path + ": " + (w.message.empty() ? "out of memory" : w.message);
  }
  return ok;
}

std::vector<uint8_t> PublishedPicture(void* handle) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const detail::Surface* s = detail::FindSurface(display, handle);
  return s ? s->pictures[1 - s->back] : std::vector<uint8_t>();
}

uint64_t DisplaySwapCount() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.swaps;
}

int DisplayHandleCount() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return int(display.surfaces.size());
}

int RegisteredDisplayHandleCount() {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  int count = 0;
  for (const auto& entry : display.surfaces) count += entry.second.registered ? 1 : 0;
  return count;
}

}  // namespace solva
