#pragma once
// The content a player has downloaded for the device's titles: one folder per
// package, each with its meta.json (package id, and the tags that say what the
// content is for). On the simulated device they lie under the device root in
// MicroDownloads/PlayerN/, one folder each; solva::InstallMicroMod puts them there.
#include <glibmm/ustring.h>

#include <vector>

#include "PlatformTypes.h"

namespace Catalog {

class CMicroDownloads {
 public:
  CMicroDownloads();
  ~CMicroDownloads();

  // The full paths of `player`'s downloaded folders, without a slash at the end,
  // in name order; empty when the player has none.
  std::vector<Glib::ustring> get(tPlayerID player);
};

}  // namespace Catalog
