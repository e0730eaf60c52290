#pragma once
// A log of the device: records appended one per line to a file in the device's
// log folder ("Logs/" under the device root). The device's usage log is
// CLogFile::Instance(); the application manager keeps one of its own
// (CAppManager::GetLogFile()).
#include <mutex>
#include <string>

#include "PlatformTypes.h"

class CLogData;

class CLogFile {
 public:
  // The device's usage log.
  static CLogFile* Instance();

  // A log kept in the file `fileName` of the device's log folder.
  explicit CLogFile(const char* fileName);

  // Writes `record` as one line at the end of the log. kNoErr, or kDeviceErr
  // (with a message on standard output) when the log cannot be written.
  tErrType Append(CLogData& record);

  // Where the log is on the device as it is now set up.
  std::string GetPath() const;

 private:
  CLogFile(const CLogFile&);
  CLogFile& operator=(const CLogFile&);

  std::string mFileName;
  std::mutex mLock;
};
