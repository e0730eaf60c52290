#ifndef SRC_RENDERSYSTEM_MANAGER_H
#define SRC_RENDERSYSTEM_MANAGER_H
// Shares named items among their users: an item is made at its first add, counted
// at each add and del, and deleted at its last del. IDs count from 1; 0 is none.
#include <map>
#include <string>

#include "RenderSystem/ManagedItem.h"

template <typename ID>
class Manager {
 public:
  Manager() : mLastID(0) {}

  // The item's ID, made or counted once more; 0 when it can't be made.
  virtual ID add(const std::string& name) = 0;
  // Called just before an item's last reference goes; a hook for subclasses.
  virtual void doDelete(ID id) { (void)id; }
  // Deletes the item whatever its count. An unknown ID does nothing.
  virtual void delAllRef(ID id) {
    typename std::map<ID, ManagedItem*>::iterator found = mItems.find(id);
    if (found == mItems.end()) return;
    Erase(found);
  }
  // One user less; the last one deletes the item. An unknown ID does nothing.
  virtual void del(ID id) {
    typename std::map<ID, ManagedItem*>::iterator found = mItems.find(id);
    if (found == mItems.end()) return;
    if (--found->second->mRefCount != 0) return;
    Erase(found);
  }
  // Deletes all items, whatever their counts.
  virtual ~Manager() {
    for (typename std::map<ID, ManagedItem*>::iterator it = mItems.begin(); it != mItems.end(); ++it) {
      delete it->second;
    }
  }

  std::map<std::string, ID> mNameToID;
  std::map<ID, ManagedItem*> mItems;  // owning
  ID mLastID;

 private:
  void Erase(typename std::map<ID, ManagedItem*>::iterator found) {
    const ID id = found->first;
    ManagedItem* item = found->second;
    doDelete(id);
    mNameToID.erase(item->mName);
    mItems.erase(id);
    delete item;
  }

  Manager(const Manager&);
  Manager& operator=(const Manager&);
};

#endif
