#pragma once
// The device's storage and identity, shared by CSystemData and BaseUtils.
#include <cstdint>
#include <string>

namespace solva {
namespace detail {

struct StorageState {
  std::string root;       // ends in a slash
  std::string titlePath;  // ends in a slash
  int32_t player = 1;
  std::string packageId = "MicrophoneWidget";
  std::string locale = "en-US";
  int64_t freeBytes = -1;  // negative: the real free room
};

StorageState& Storage();
// `path` with a slash at its end, and no doubled slashes.
std::string FolderPath(const std::string& path);

}  // namespace detail
}  // namespace solva
