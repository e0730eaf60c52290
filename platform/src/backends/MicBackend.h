#pragma once
// The contract of a microphone backend: the host's own microphone, heard in real
// time. Backends are tried in the order of the table in Capture.cpp.
#include <cstddef>
#include <cstdint>

namespace solva {
namespace detail {

struct MicBackend {
  const char* name;
  // Starts hearing at 16 kHz mono; false when the host has no microphone.
  bool (*open)();
  // Takes up to `count` samples heard so far; returns how many it gave.
  size_t (*read)(int16_t* samples, size_t count);
  void (*close)();
};

extern const MicBackend kSdlMicBackend;

}  // namespace detail
}  // namespace solva
