#pragma once
// Helpers for the test programs: temporary folders, file bytes, child processes,
// and the virtual device clock.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zvtest {

using Bytes = std::vector<uint8_t>;

// A fresh folder under the system's temporary folder, removed with its content.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return mPath; }
  // path() + "/" + name
  std::string file(const std::string& name) const;

 private:
  std::string mPath;
};

Bytes ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const Bytes& bytes);
std::string ReadText(const std::string& path);
void WriteText(const std::string& path, const std::string& text);
bool Exists(const std::string& path);
// Names in a folder, sorted, without "." and "..".
std::vector<std::string> ListFolder(const std::string& path);

// Little-endian byte builders for laying out files in tests.
void PutU8(Bytes& out, uint8_t v);
void PutU16(Bytes& out, uint16_t v);
void PutU32(Bytes& out, uint32_t v);
void PutI32(Bytes& out, int32_t v);
void PutF64(Bytes& out, double v);
void PutText(Bytes& out, const std::string& text);  // raw bytes, no length

// Everything `body` printed on standard output.
std::string CapturedStdout(const std::function<void()>& body);

// Runs a shell command and returns what it printed on standard output.
std::string RunCommand(const std::string& command);

// `text` as a regular expression that matches exactly it (for death tests).
std::string Literal(const std::string& text);

// The message the C library's assert prints for a failure in `file` at `line`.
std::string AssertText(const std::string& file, int line, const std::string& function, const std::string& expr);

struct ChildResult {
  bool exited = false;      // ended by exit/_exit
  int exitCode = -1;        // when exited
  int signal = 0;           // when ended by a signal
  std::string out;          // everything it wrote on standard output
  // Ended other than by returning: a fault (under the sanitizers, a report and a
  // non-zero exit instead of the signal) or an abort.
  bool died() const { return !exited || exitCode != 0; }
};
// Runs `body` in a forked child with its standard output captured. The child
// ends with _exit(0) if `body` returns.
ChildResult RunInChild(const std::function<void()>& body);

// Creates gKernelSvc on a virtual device clock that reads `startMillis`; the
// destructor deletes it and puts the clock back in real mode.
class VirtualClock {
 public:
  explicit VirtualClock(uint64_t startMillis = 0);
  ~VirtualClock();
  void advance(uint32_t millis);
};

}  // namespace zvtest
