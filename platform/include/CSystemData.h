#pragma once
// The device's system data: the running title, the current player, the locale and
// the data folders. Text passes as Glib::ustring, as on the device.
#include <glibmm/ustring.h>

#include "PlatformTypes.h"

class CSystemData {
 public:
  // The device's one instance; never null on the simulated device.
  static CSystemData* Instance();

  tPlayerID GetCurrentPlayerID() const;
  Glib::ustring GetCurrentGamePackageID() const;
  Glib::ustring GetLocaleCode() const;
  // The folder of the running title, ending in a slash.
  Glib::ustring GetCurrentTitlePath() const;
  // The folder `sub` of `player`'s data, or of all players' for kSharedPlayerID,
  // ending in a slash. The device's own folders exist; others are not made here.
  Glib::ustring GetLocalDataPath(tPlayerID player, const Glib::ustring& sub) const;
  // The folder `sub` of the upload area, ending in a slash.
  Glib::ustring GetUploadDataPath(const Glib::ustring& sub) const;
  // The path of the font file `name`: the title's own fonts first (its folder, res/,
  // res/Fonts/, Fonts/), then the device's (ROOT/Fonts/ and the system's font
  // folders); a font found nowhere gives DejaVu Sans.
  static Glib::ustring FindFont(const Glib::ustring& name);

 private:
  CSystemData() = default;
};
