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

}  // namespace

const DisplayBackend kHeadlessDisplayBackend = {
    "headless", &Available, &Open, &Close, false, &Present, &WindowToScreen, &WindowId,
};

}  // namespace detail
}  // namespace solva
