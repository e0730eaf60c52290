#pragma once
// Device-control API: power cuts and the disk's write-through. Only the host and
// tests use this header.
//
// Every file operation of the device counts: opening and finishing a whole-file
// replacement (fopenAtomic, fcloseAtomic), each write of the framework's File,
// rename and removal. With a power cut armed, the process ends right after the
// N-th of them, as the device does when its battery is pulled: no buffer is
// flushed, no destructor runs (SIGKILL to itself). The environment variable
// SOLVA_POWER_CUT_AFTER=N arms the same switch when the device starts or is reset.
#include <cstdint>

namespace solva {

// From now on the power goes right after the `operations`-th file operation,
// counted from this call; 0 or a negative value disarms the switch.
void SetPowerCutAfter(int operations);
int PowerCutAfter();

// File operations done since the switch was last set or the device was reset.
int FileOperationCount();

// Whether a finished file is forced to the disk (fsync of the file and of its
// folder) before it replaces the old one. On by default; turning it off is for
// measuring what the forcing costs, never for a device that may lose power.
void SetSyncWrites(bool sync);
bool SyncWrites();

}  // namespace solva
