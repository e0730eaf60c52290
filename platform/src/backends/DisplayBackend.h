#pragma once
// The contract between the device's display and whatever shows its screen. Each
// backend lives in its own folder and fills one of these tables; Display.cpp tries
// them in order when asked for "auto".
#include <cstdint>
#include <string>

#include "solva/Display.h"

namespace solva {
namespace detail {

struct DisplayBackend {
  const char* name;
  // Whether "auto" may try it here at all.
  bool (*Available)();
  // Starts showing; false with a message in `error` when it cannot.
  bool (*Open)(const DisplayOptions& options, std::string* error);
  void (*Close)();
  // Whether Present is worth a composition at every swap.
  bool presentsAtSwap;
  // Shows a composed screen of kScreenWidth x kScreenHeight pixels 0xAARRGGBB.
  void (*Present)(const uint32_t* screen);
  bool (*WindowToScreen)(int wx, int wy, int* x, int* y);
  uint32_t (*WindowId)();
  // The host's panel beside the screen, for backends with a window.
  void (*SetPanel)(const uint32_t* pixels, int width, int height);
  void (*PanelSize)(int* width, int* height);
  bool (*WindowToPanel)(int wx, int wy, int* x, int* y);
};

extern const DisplayBackend kSdlDisplayBackend;
extern const DisplayBackend kHeadlessDisplayBackend;

}  // namespace detail
}  // namespace solva
