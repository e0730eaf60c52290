#include "FuzzSupport.h"

#include <sanitizer/lsan_interface.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "Base/StringID.h"
#include "Base/XAssert.h"
#include "solva/Clock.h"
#include "solva/Device.h"

namespace fuzz {

void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return;
  fwrite(data, 1, size, file);
  fclose(file);
}

namespace {
// Made at the first use, removed when the fuzzer ends.
struct Scratch {
  Scratch() : path("/tmp/zvfuzz-" + std::to_string(getpid()) + "/") { std::filesystem::create_directories(path); }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::string path;
};
}  // namespace

std::string ScratchFolder() {
  static Scratch scratch;
  return scratch.path;
}

std::string InputFile(const uint8_t* data, size_t size, const std::string& ending) {
  const std::string path = ScratchFolder() + "input" + ending;
  WriteFile(path, data, size);
  return path;
}

std::string FreshDevice(const std::string& titlePath) {
  const std::string root = ScratchFolder() + "device/";
  std::filesystem::remove_all(root);
  solva::ResetDevice();
  solva::SetDeviceRoot(root);
  solva::SetTitlePath(titlePath);
  solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
  solva::SetFreeBytes(1000000000);
  return root;
}

namespace {
// The title's shut-down frees the pooled names; the fuzzer's exit does it here,
// so that the leak checker sees only real leaks.
struct FreePoolAtExit {
  // The pool exists before this object is complete, so it is destroyed after it.
  FreePoolAtExit() { StringID::GetStringTable(); }
  ~FreePoolAtExit() { StringID::Destroy(); }
} sFreePoolAtExit;

void ThrowFromXAssert(const char* expression, const char*) { throw AssertionFailed(expression); }
}  // namespace

void ThrowOnAssertions() { XAssertSetHandler(ThrowFromXAssert); }

void RunOrAssert(const std::function<void()>& body) {
  ThrowOnAssertions();
  bool asserted = false;
  __lsan_disable();
  try {
    body();
  } catch (const AssertionFailed&) {
    asserted = true;
  }
  __lsan_enable();
  if (!asserted) body();
}

}  // namespace fuzz

// The C library's assertion, replaced for the harnesses: a failed assertion is an
// answer of the code under test, not a crash of the fuzzer.
extern "C" void __assert_fail(const char* expression, const char* file, unsigned line, const char*) {
  throw fuzz::AssertionFailed(std::string(file) + ":" + std::to_string(line) + ": " + expression);
}

// Allocation failures are answers the loaders give ("no memory"), not crashes.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
