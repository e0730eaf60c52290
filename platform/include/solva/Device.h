#pragma once
// Device-control API: who the device is and where its storage lives. Only the host
// and tests use this header.
#include <cstdint>
#include <string>

namespace solva {

// Puts every setting of the device back to its default: root folder, player,
// package, locale, free bytes, accelerometer, microphone, power, pending exit
// code, queued events, registered listeners.
void ResetDevice();

// The device's storage lives under `root`, which is created with the folders the
// device ships with (the shared gallery folders and the upload folders).
// Returns false, with a message in `error`, when the folders cannot be made.
bool SetDeviceRoot(const std::string& root, std::string* error = nullptr);
std::string DeviceRoot();

// The folder of the running title (where its plug-in, meta.json and res/ are).
void SetTitlePath(const std::string& folder);
void SetCurrentPlayer(int32_t player);
void SetPackageId(const std::string& packageId);
void SetLocale(const std::string& locale);

// What the disk reports as free from now on; a negative value returns to the real
// free room of the root's file system.
void SetFreeBytes(int64_t bytes);

}  // namespace solva
