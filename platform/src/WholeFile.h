#pragma once
// Whole-file reading and writing for the device's small documents (metadata,
// profiles, JSON files).
#include <string>

namespace solva {
namespace detail {

// The whole content of `path` in `text`; false when it cannot be opened.
bool ReadWholeFile(const std::string& path, std::string* text);

// Replaces `path` with `text`, whole or not at all (fopenAtomic, fcloseAtomic);
// false when any step failed.
bool WriteWholeFile(const std::string& path, const std::string& text);

}  // namespace detail
}  // namespace solva
