#pragma once
// What every harness needs: the input as a file, and assertions that end a run
// without ending the fuzzer where an assertion is the documented answer.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace fuzz {

// An assertion of either form turned into an exception by the harness.
struct AssertionFailed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Writes the input to a file whose name ends in `ending` and returns its path.
std::string InputFile(const uint8_t* data, size_t size, const std::string& ending);
// Writes the input to `path`.
void WriteFile(const std::string& path, const uint8_t* data, size_t size);

// Installs the handlers that turn failed assertions into AssertionFailed.
void ThrowOnAssertions();

// Runs `body` (which must do the same each time) with the handlers installed.
// Where an assertion fails the program would end: that run is an answer, and
// what it leaves allocated is not a leak, so the first run goes unchecked for
// leaks; a run that comes to its end is made once more, with the leak checker on.
void RunOrAssert(const std::function<void()>& body);

// A folder of this process's own under /tmp, ending in a slash.
std::string ScratchFolder();

// An empty simulated device under ScratchFolder() (its root, returned, ends in a
// slash) on the virtual clock, running the title of `titlePath`.
std::string FreshDevice(const std::string& titlePath);

}  // namespace fuzz
