#pragma once
// Sample-rate conversion of whole sounds, for the mixer and the microphone's
// file source: a band-limited converter (libsoxr), so that no mirror images of
// the sound come back into the audible band as they do with interpolation.
#include <cstddef>
#include <vector>

namespace solva {
namespace detail {

// `in` (mono, at `fromRate`) at `toRate`, `frames` long: the converter's output,
// cut or padded with silence to that length.
std::vector<float> Resample(const std::vector<float>& in, int fromRate, int toRate, size_t frames);

}  // namespace detail
}  // namespace solva
