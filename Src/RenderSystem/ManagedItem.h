#ifndef SRC_RENDERSYSTEM_MANAGEDITEM_H
#define SRC_RENDERSYSTEM_MANAGEDITEM_H
// Anything a Manager holds: a name and the count of its users.
#include <string>

class ManagedItem {
 public:
  explicit ManagedItem(const std::string& name) : mRefCount(0), mName(name) {}
  virtual ~ManagedItem() {}

  int mRefCount;
  std::string mName;

 private:
  ManagedItem(const ManagedItem&);
  ManagedItem& operator=(const ManagedItem&);
};

#endif
