#include "Resample.h"

#include <soxr.h>

#include <algorithm>
#include <cstdio>

namespace solva {
namespace detail {

std::vector<float> Resample(const std::vector<float>& in, int fromRate, int toRate, size_t frames) {
  std::vector<float> out(frames, 0.0f);
  if (in.empty() || frames == 0) return out;
  if (fromRate == toRate) {
    std::copy(in.begin(), in.begin() + std::min(in.size(), frames), out.begin());
    return out;
  }
  const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
  // 20-bit precision, linear phase: images and aliases lie some 120 dB down.
  const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
  size_t done = 0;
  const soxr_error_t error = soxr_oneshot(fromRate, toRate, 1, in.data(), in.size(), nullptr, out.data(),
                                          out.size(), &done, &io, &quality, nullptr);
  if (error != nullptr) {
    fprintf(stderr, "solva: audio: cannot convert %d Hz to %d Hz: %s\n", fromRate, toRate, error);
    std::fill(out.begin(), out.end(), 0.0f);
  }
  return out;
}

}  // namespace detail
}  // namespace solva
