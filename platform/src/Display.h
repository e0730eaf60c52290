#pragma once
// The device's display: its surfaces and the screen composed from them. Shared by
// CDisplaySvc (the titles' side) and the device-control API (the host's side).
#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

#include "CDisplaySvc.h"
#include "backends/DisplayBackend.h"

namespace solva {
namespace detail {

struct Surface {
  uint16_t width = 0;
  uint16_t height = 0;
  uint16_t pitch = 0;
  Vantrel::Solva::tPixelFormat format = Vantrel::Solva::kPixelFormatError;
  // Two pictures: the one being written (GetBuffer) and the one on the screen.
  std::vector<uint8_t> pictures[2];
  int back = 0;

  bool registered = false;
  uint64_t registration = 0;  // order of registration, among equal z-orders
  Vantrel::Solva::tDisplayZOrder zOrder = 0;
  int16_t x = 0;
  int16_t y = 0;
  uint16_t windowWidth = 0;
  uint16_t windowHeight = 0;
  bool visible = false;
  uint8_t alphaLevel = 100;
  bool alphaEnabled = false;

  uint8_t* BackBuffer() { return pictures[back].data(); }
  const uint8_t* FrontBuffer() const { return pictures[1 - back].data(); }
};

struct DisplayState {
  std::mutex lock;
  std::map<uintptr_t, Surface> surfaces;
  uintptr_t nextId = 1;
  uint64_t registrations = 0;
  uint64_t swaps = 0;
  const DisplayBackend* backend = &kHeadlessDisplayBackend;
};

DisplayState& Display();
// The surface of `handle`, or null for a stale or foreign handle. Under the lock.
Surface* FindSurface(DisplayState& display, void* handle);
// Composes the screen (kScreenWidth x kScreenHeight, 0xAARRGGBB). Under the lock.
void ComposeScreen(DisplayState& display, uint32_t* screen);
// Fills a YUV420 picture with black luma and neutral chroma.
void ClearYuvPicture(uint8_t* picture, int pitch, int width, int height);

}  // namespace detail
}  // namespace solva
