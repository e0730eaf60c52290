#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "CKernelSvc.h"
#include "Tamarin/SolvaServices.h"
#include "solva/Clock.h"

namespace zvtest {

TempDir::TempDir() {
  const char* base = getenv("TMPDIR");
  std::string pattern = std::string(base && *base ? base : "/tmp") + "/zvtest-XXXXXX";
  if (mkdtemp(&pattern[0]) == nullptr) throw std::runtime_error("mkdtemp failed");
  mPath = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(mPath, ignored);
}

std::string TempDir::file(const std::string& name) const { return mPath + "/" + name; }

Bytes ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& path, const Bytes& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot write " + path);
  out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

std::string ReadText(const std::string& path) {
  const Bytes bytes = ReadBytes(path);
  return std::string(bytes.begin(), bytes.end());
}

void WriteText(const std::string& path, const std::string& text) { WriteBytes(path, Bytes(text.begin(), text.end())); }

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

std::vector<std::string> ListFolder(const std::string& path) {
  std::vector<std::string> names;
  DIR* dir = opendir(path.c_str());
  if (dir == nullptr) return names;
  while (dirent* entry = readdir(dir)) {
    if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) names.push_back(entry->d_name);
  }
  closedir(dir);
  std::sort(names.begin(), names.end());
  return names;
}

void PutU8(Bytes& out, uint8_t v) { out.push_back(v); }
void PutU16(Bytes& out, uint16_t v) {
  for (int i = 0; i < 2; ++i) out.push_back(uint8_t(v >> (8 * i)));
}
void PutU32(Bytes& out, uint32_t v) {
  for (int i = 0; i < 4; ++i) out.push_back(uint8_t(v >> (8 * i)));
}
void PutI32(Bytes& out, int32_t v) { PutU32(out, uint32_t(v)); }
void PutF64(Bytes& out, double v) {
  uint64_t bits;
  memcpy(&bits, &v, sizeof bits);
  for (int i = 0; i < 8; ++i) out.push_back(uint8_t(bits >> (8 * i)));
}
void PutText(Bytes& out, const std::string& text) { out.insert(out.end(), text.begin(), text.end()); }

std::string CapturedStdout(const std::function<void()>& body) {
  fflush(stdout);
  testing::internal::CaptureStdout();
  body();
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

std::string RunCommand(const std::string& command) {
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return out;
  char buffer[256];
  while (fgets(buffer, sizeof buffer, pipe)) out += buffer;
  pclose(pipe);
  return out;
}

std::string Literal(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (strchr("\\^$.|?*+()[]{}", c) != nullptr) out += '\\';
    out += c;
  }
  return out;
}

std::string AssertText(const std::string& file, int line, const std::string& function, const std::string& expr) {
  return file + ":" + std::to_string(line) + ": " + function + ": Assertion `" + expr + "' failed.";
}

ChildResult RunInChild(const std::function<void()>& body) {
  fflush(stdout);
  fflush(stderr);
  int pipeFds[2];
  if (pipe(pipeFds) != 0) throw std::runtime_error("pipe failed");
  const pid_t pid = fork();
  if (pid < 0) throw std::runtime_error("fork failed");
  if (pid == 0) {
    close(pipeFds[0]);
    dup2(pipeFds[1], STDOUT_FILENO);
    close(pipeFds[1]);
    body();
    fflush(stdout);
    _exit(0);
  }
  close(pipeFds[1]);
  ChildResult result;
  char buffer[4096];
  for (;;) {
    const ssize_t got = read(pipeFds[0], buffer, sizeof buffer);
    if (got <= 0) break;
    result.out.append(buffer, size_t(got));
  }
  close(pipeFds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  if (WIFEXITED(status)) {
    result.exited = true;
    result.exitCode = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    result.signal = WTERMSIG(status);
  }
  return result;
}

VirtualClock::VirtualClock(uint64_t startMillis) {
  solva::SetClockMode(solva::ClockMode::Virtual, startMillis * 1000u);
  gKernelSvc = new Vantrel::Solva::CKernelSvc();
}

VirtualClock::~VirtualClock() {
  delete gKernelSvc;
  gKernelSvc = nullptr;
  solva::SetClockMode(solva::ClockMode::Real);
}

void VirtualClock::advance(uint32_t millis) { solva::AdvanceClock(millis); }

}  // namespace zvtest
