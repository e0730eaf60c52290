// The headless display: the screen lives in memory only, where ReadScreen and the
// screenshots find it; nothing is shown.
#include "backends/DisplayBackend.h"

namespace solva {
namespace detail {
namespace {

bool Available() { return true; }
bool Open(const DisplayOptions&, std::string*) { return true; }
void Close() {}
void Present(const uint32_t*) {}
bool WindowToScreen(int, int, int*, int*) { return false; }
uint32_t WindowId() { return 0; }
void SetPanel(const uint32_t*, int, int) {}
void PanelSize(int* width, int* height) { *width = *height = 0; }
bool WindowToPanel(int, int, int*, int*) { return false; }

}  // namespace

const DisplayBackend kHeadlessDisplayBackend = {
    "headless", &Available,   &Open,        &Close,         false, &Present, &WindowToScreen, &WindowId,
    &SetPanel,  &PanelSize,   &WindowToPanel,
};

}  // namespace detail
}  // namespace solva
