#pragma once
// Each part of the device model registers how it returns to its defaults;
// solva::ResetDevice() runs them all.

namespace solva {
namespace detail {

struct ResetHook {
  explicit ResetHook(void (*reset)());
};

void RunResetHooks();

}  // namespace detail
}  // namespace solva
