#pragma once
// Device-control API: where the device's logs are, so that the host and tests can
// read them back. Each line of a log is one JSON object:
//   {"record":"CGameStart","args":{"id":"maze"},"player":1,"time":1500}
// "args" holds the record's arguments in the order of its constructor (a null
// text is null), "player" the current player and "time" the device clock in
// milliseconds when the record was written.
#include <string>

namespace solva {

// The device's usage log (CLogFile::Instance()).
std::string UsageLogPath();
// The application manager's own log (CAppManager::GetLogFile()).
std::string AppManagerLogPath();

}  // namespace solva
