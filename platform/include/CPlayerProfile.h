#pragma once
// A player's profile: the badges the player has earned, by title. It is kept in
// the player's folder as the file "profile.json" and written back, whole, at Save.
#include <map>
#include <set>
#include <string>
#include <vector>

#include "PlatformTypes.h"

namespace Catalog {

class CPlayerProfile {
 public:
  // Reads the profile of `player`. A player without one starts with no badges.
  explicit CPlayerProfile(tPlayerID player);
  // Does not save: what was added and not saved is dropped.
  ~CPlayerProfile();

  tPlayerID GetPlayerID() const { return mPlayer; }
  // The file that holds the profile.
  const std::string& GetPath() const { return mPath; }

  // Adds badge `id` for the running title (CSystemData's package id); false when
  // the player had it already.
  bool AddBadge(U16 id);
  bool HasBadge(U16 id) const;
  // The running title's badges, in increasing order.
  std::vector<U16> GetBadges() const;

  // Writes the profile now, whole (through fopenAtomic). Parts of the file this
  // class does not know are kept. A profile that could not be read is first
  // moved aside as "profile.json.unreadable", so nothing in it is lost.
  // True when the file was written.
  bool Save();

 private:
  CPlayerProfile(const CPlayerProfile&);
  CPlayerProfile& operator=(const CPlayerProfile&);

  tPlayerID mPlayer;
  std::string mPath;
  // The file's text as it was read, for the parts kept as they are.
  std::string mReadText;
  bool mUnreadable;
  std::map<std::string, std::set<U16> > mBadges;  // by package id
};

}  // namespace Catalog
