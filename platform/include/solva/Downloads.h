#pragma once
// Device-control API: content a player has downloaded (micro mods). Only the host
// and tests use this header.
#include <cstdint>
#include <string>

namespace solva {

// Where `player`'s downloaded folders lie: ROOT/MicroDownloads/PlayerN/, ending
// in a slash (made when asked for).
std::string MicroDownloadsFolder(int32_t player);

// Gives `player` the downloaded folder `folder`: a copy of it, with everything in
// it, becomes MicroDownloadsFolder(player) + its last name, replacing a folder of
// that name. The folder must hold a meta.json (its package id and "ModKitType"
// tag say what it is). Returns false, with a message in `error`, and changes
// nothing when the folder is missing, has no meta.json, or cannot be copied. On
// success `installed` (if given) is the copy's path.
bool InstallMicroMod(int32_t player, const std::string& folder, std::string* error,
                     std::string* installed = nullptr);

}  // namespace solva
