#include "CDisplaySvc.h"

#include <cstdio>
#include <vector>

#include "Display.h"
#include "solva/Display.h"

namespace Vantrel {
namespace Solva {

using solva::detail::Display;
using solva::detail::DisplayState;
using solva::detail::FindSurface;
using solva::detail::Surface;

CDisplaySvc::CDisplaySvc() = default;
CDisplaySvc::~CDisplaySvc() = default;

tDisplayHandle CDisplaySvc::CreateHandle(U16 height, U16 width, tPixelFormat colorDepth, U8* pBuffer) {
  if (pBuffer != nullptr || width == 0 || height == 0) return kInvalidDisplayHandle;
  Surface surface;
  surface.width = width;
  surface.height = height;
  surface.format = colorDepth;
  size_t bytes = 0;
  if (colorDepth == kPixelFormatARGB8888) {
    surface.pitch = static_cast<U16>(width * 4u);
    bytes = size_t(surface.pitch) * height;
  } else if (colorDepth == kPixelFormatYUV420) {
    const unsigned evenWidth = (width + 1u) & ~1u;
    const unsigned evenHeight = (height + 1u) & ~1u;
    if (evenWidth * 2u > 0xFFFFu) return kInvalidDisplayHandle;
    surface.pitch = static_cast<U16>(evenWidth * 2u);
    bytes = size_t(surface.pitch) * evenHeight;
  } else {
    return kInvalidDisplayHandle;
  }
  if (colorDepth == kPixelFormatARGB8888 && size_t(width) * 4u > 0xFFFFu) return kInvalidDisplayHandle;
  for (std::vector<uint8_t>& picture : surface.pictures) {
    picture.assign(bytes, 0);
    if (colorDepth == kPixelFormatYUV420) {
      solva::detail::ClearYuvPicture(picture.data(), surface.pitch, (width + 1) & ~1, int(bytes / surface.pitch));
    }
  }
  surface.windowWidth = width;
  surface.windowHeight = height;

  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const uintptr_t id = display.nextId++;
  display.surfaces.emplace(id, std::move(surface));
  return reinterpret_cast<tDisplayHandle>(id);
}

tErrType CDisplaySvc::DestroyHandle(tDisplayHandle hndl, Boolean) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  return display.surfaces.erase(reinterpret_cast<uintptr_t>(hndl)) ? kNoErr : kInvalidParamErr;
}

tErrType CDisplaySvc::Register(tDisplayHandle hndl, S16 xPos, S16 yPos, tDisplayZOrder initialZOrder,
                               tDisplayScreen) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  if (!s) return kInvalidParamErr;
  s->registered = true;
  s->registration = ++display.registrations;
  s->zOrder = initialZOrder;
  s->x = xPos;
  s->y = yPos;
  s->windowWidth = s->width;
  s->windowHeight = s->height;
  s->visible = true;
  return kNoErr;
}

tErrType CDisplaySvc::UnRegister(tDisplayHandle hndl, tDisplayScreen) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  if (!s || !s->registered) return kInvalidParamErr;
  s->registered = false;
  return kNoErr;
}

tErrType CDisplaySvc::SetAlpha(tDisplayHandle hndl, U8 level, Boolean enable) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  if (!s || level > 100) return kInvalidParamErr;
  s->alphaLevel = level;
  s->alphaEnabled = enable != 0;
  return kNoErr;
}

tErrType CDisplaySvc::SetWindowPosition(tDisplayHandle hndl, S16 x, S16 y, U16 width, U16 height, Boolean visible) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  if (!s) return kInvalidParamErr;
  s->x = x;
  s->y = y;
  s->windowWidth = width;
  s->windowHeight = height;
  s->visible = visible != 0;
  return kNoErr;
}

U16 CDisplaySvc::GetWidth(tDisplayHandle hndl) const {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const Surface* s = FindSurface(display, hndl);
  return s ? s->width : 0;
}

U16 CDisplaySvc::GetHeight(tDisplayHandle hndl) const {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const Surface* s = FindSurface(display, hndl);
  return s ? s->height : 0;
}

U16 CDisplaySvc::GetPitch(tDisplayHandle hndl) const {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const Surface* s = FindSurface(display, hndl);
  return s ? s->pitch : 0;
}

U8* CDisplaySvc::GetBuffer(tDisplayHandle hndl) const {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  return s ? s->BackBuffer() : nullptr;
}

tPixelFormat CDisplaySvc::GetPixelFormat(tDisplayHandle hndl) const {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  const Surface* s = FindSurface(display, hndl);
  return s ? s->format : kPixelFormatError;
}

tErrType CDisplaySvc::SwapBuffers(tDisplayHandle hndl, Boolean) {
  DisplayState& display = Display();
  std::lock_guard<std::mutex> hold(display.lock);
  Surface* s = FindSurface(display, hndl);
  if (!s) return kInvalidParamErr;
  s->back = 1 - s->back;
  ++display.swaps;
  if (display.backend->presentsAtSwap) {
    std::vector<uint32_t> screen(solva::kScreenWidth * solva::kScreenHeight);
    solva::detail::ComposeScreen(display, screen.data());
    display.backend->Present(screen.data());
  }
  return kNoErr;
}

U16 CDisplaySvc::GetNumberOfScreens() const { return 1; }

}  // namespace Solva
}  // namespace Vantrel
