#pragma once
// The device's log folder and the names of its logs.
#include <string>

namespace solva {
namespace detail {

const char kUsageLogName[] = "Usage.log";
const char kAppManagerLogName[] = "AppManager.log";

// ROOT/Logs/, ending in a slash.
std::string LogFolder();

}  // namespace detail
}  // namespace solva
