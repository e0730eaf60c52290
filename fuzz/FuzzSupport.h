#pragma once
// What every harness needs: the input as a file, and assertions that end a run
// without ending the fuzzer where an assertion is the documented answer.
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace fuzz {

// An assertion of either form turned into an exception by the harness.
struct AssertionFailed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Writes the input to a file whose name ends in `ending` and returns its path.
std::string InputFile(const uint8_t* data, size_t size, const std::string& ending);

// Installs the handlers that turn failed assertions into AssertionFailed.
void ThrowOnAssertions();

}  // namespace fuzz
