#pragma once
// The device's power-cut switch, as the file operations see it.

namespace solva {
namespace detail {

// One file operation has happened; ends the process if the power is to go now.
void FileOperationDone();

}  // namespace detail
}  // namespace solva
