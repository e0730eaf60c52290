#pragma once
// The device's plain file operations outside the whole-file streams of
// AtomicFile.h: renaming, removing, and the report of a write into an open file.
// They behave as the C library's calls; going through them lets the device count
// them, so that a simulated power cut can fall between any two.

// As rename(2): 0 on success, -1 with errno set.
int solvaRename(const char* from, const char* to);

// As remove(3): a file or an empty folder; 0 on success, -1 with errno set.
int solvaRemove(const char* path);

// Called by a writer after each write into a device file, done or not.
void solvaFileWritten();
