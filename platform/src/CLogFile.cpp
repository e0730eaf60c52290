#include "CLogFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>

#include "CLogData.h"
#include "LogFolder.h"
#include "Storage.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Logs.h"

namespace {

using Json = nlohmann::ordered_json;

std::string RecordLine(const CLogData& record) {
  Json args = Json::object();
  for (const CLogData::Field& field : record.GetFields()) {
    switch (field.kind) {
      case CLogData::kFieldUnsigned: args[field.key] = field.unsignedValue; break;
      case CLogData::kFieldSigned: args[field.key] = field.signedValue; break;
      case CLogData::kFieldText:
        if (field.isNull) {
          args[field.key] = nullptr;
        } else {
          args[field.key] = field.text;
        }
        break;
    }
  }
  Json line = Json::object();
  line["record"] = record.GetName();
  line["args"] = args;
  line["player"] = solva::detail::Storage().player;
  line["time"] = solva::ClockMicros() / 1000u;
  // A title's texts are not always UTF-8; a byte that is not becomes U+FFFD
  // rather than the record being lost.
  return line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// Writes all of `text` at the end of the file; one write, so that lines of two
// writers never interleave.
bool AppendLine(const std::string& path, const std::string& text, std::string* error) {
  const int fd = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) {
    *error = strerror(errno);
    return false;
  }
  size_t done = 0;
  while (done < text.size()) {
    const ssize_t n = write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      *error = n < 0 ? strerror(errno) : "nothing written";
      close(fd);
      return false;
    }
    done += size_t(n);
  }
  if (close(fd) != 0) {
    *error = strerror(errno);
    return false;
  }
  return true;
}

}  // namespace

namespace solva {
namespace detail {
std::string LogFolder() { return DeviceRoot() + "Logs/"; }
}  // namespace detail

std::string UsageLogPath() { return detail::LogFolder() + detail::kUsageLogName; }
std::string AppManagerLogPath() { return detail::LogFolder() + detail::kAppManagerLogName; }
}  // namespace solva

CLogFile* CLogFile::Instance() {
  static CLogFile log(solva::detail::kUsageLogName);
  return &log;
}

CLogFile::CLogFile(const char* fileName) : mFileName(fileName) {}

std::string CLogFile::GetPath() const { return solva::detail::LogFolder() + mFileName; }

tErrType CLogFile::Append(CLogData& record) {
  const std::string line = RecordLine(record);
  std::lock_guard<std::mutex> lock(mLock);
  const std::string folder = solva::detail::LogFolder();
  std::string error;
  if (mkdir(folder.c_str(), 0755) != 0 && errno != EEXIST) {
    printf("[CLogFile] cannot make the log folder %s: %s; %s not written.\n", folder.c_str(), strerror(errno),
           record.GetName().c_str());
    return kDeviceErr;
  }
  const std::string path = folder + mFileName;
  if (!AppendLine(path, line, &error)) {
    printf("[CLogFile] cannot append to %s: %s; %s not written.\n", path.c_str(), error.c_str(),
           record.GetName().c_str());
    return kDeviceErr;
  }
  return kNoErr;
}
