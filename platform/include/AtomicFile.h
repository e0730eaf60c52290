#pragma once
// Whole-file replacement: a stream from fopenAtomic writes a temporary beside the
// target; fcloseAtomic flushes it to the disk and renames it over the target, so a
// reader (or the next start after a power cut) sees the old file or the new one,
// never a mix.
#include <cstdio>

// Modes "w", "wb" start empty; "a", "ab" start from a copy of the current content.
// Returns null, with errno set, when the temporary cannot be made.
FILE* fopenAtomic(const char* path, const char* mode);

// Finishes a stream from fopenAtomic: fflush, fsync, fclose, rename, fsync of the
// folder. Returns 0 on success, EOF when any step failed (the target is then left
// as it was). A stream that fopenAtomic did not make is simply closed.
int fcloseAtomic(FILE* stream);
