#include "FuzzSupport.h"

#include <unistd.h>

#include <cstdio>

#include "Base/StringID.h"
#include "Base/XAssert.h"

namespace fuzz {

std::string InputFile(const uint8_t* data, size_t size, const std::string& ending) {
  const std::string path = "/tmp/zvfuzz-" + std::to_string(getpid()) + ending;
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return path;
  fwrite(data, 1, size, file);
  fclose(file);
  return path;
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

}  // namespace fuzz

// The C library's assertion, replaced for the harnesses: a failed assertion is an
// answer of the code under test, not a crash of the fuzzer.
extern "C" void __assert_fail(const char* expression, const char* file, unsigned line, const char*) {
  throw fuzz::AssertionFailed(std::string(file) + ":" + std::to_string(line) + ": " + expression);
}

// Allocation failures are answers the loaders give ("no memory"), not crashes.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
