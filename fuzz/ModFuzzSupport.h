#pragma once
// What the micro-mod harnesses share: a simulated device with player 1, the
// title's configuration (whose "Archive" section names the mark file), and an
// archive on it.
#include <string>

#include "MediaCenter/VT/ZvArchive.h"

namespace fuzz {

// The device and the archive, made at the first call.
ZvArchive& ModArchive();
// The folder of player 1's one downloaded mod, "mod", ending in a slash.
std::string ModFolder();
// TryToLoadMdl, and every mod it made deleted again (the archive never releases
// them, and the leak checker would count them).
void LoadAndForgetMods();

}  // namespace fuzz
