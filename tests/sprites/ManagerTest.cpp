// The generic manager: counted items, deletion at the last user, the hook.
#include <gtest/gtest.h>

#include "RenderSystem/SimpleManager.h"

namespace {

// Items that say when they go.
struct Item : ManagedItem {
  Item(const std::string& name, std::vector<std::string>* gone) : ManagedItem(name), mGone(gone) {}
  ~Item() override { mGone->push_back(mName); }
  std::vector<std::string>* mGone;
};

// Makes an item for any name but "bad", the way the sprite manager does.
// What the items leave in `gone` must outlive the manager, whose base deletes them.
class ItemManager : public SimpleManager {
 public:
  explicit ItemManager(std::vector<std::string>* gone) : gone(*gone) {}
  unsigned int add(const std::string& name) override {
    auto known = mNameToID.find(name);
    if (known != mNameToID.end()) {
      ++mItems[known->second]->mRefCount;
      return known->second;
    }
    if (name == "bad") return 0;
    const unsigned int id = ++mLastID;
    mNameToID[name] = id;
    mItems[id] = new Item(name, &gone);
    ++mItems[id]->mRefCount;
    return id;
  }
  void doDelete(unsigned int id) override {
    hooked.push_back(id);
    EXPECT_EQ(1u, mItems.count(id));  // still there when the hook runs
  }
  std::vector<std::string>& gone;
  std::vector<unsigned int> hooked;
};

TEST(Manager, StartsEmptyWithIDsFromOne) {
  std::vector<std::string> gone;
  ItemManager manager(&gone);
  EXPECT_EQ(0u, manager.mLastID);
  EXPECT_EQ(1u, manager.add("a"));
  EXPECT_EQ(2u, manager.add("b"));
  EXPECT_EQ(0u, manager.add("bad"));
  EXPECT_EQ(3u, manager.add("c"));
}

TEST(Manager, AnItemGoesAtItsLastDelNotBefore) {
  std::vector<std::string> gone;
  ItemManager manager(&gone);
  const unsigned id = manager.add("a");
  EXPECT_EQ(id, manager.add("a"));
  EXPECT_EQ(2, manager.mItems[id]->mRefCount);
  manager.del(id);
  EXPECT_TRUE(gone.empty());
  EXPECT_EQ(1, manager.mItems[id]->mRefCount);
  manager.del(id);
  EXPECT_EQ(std::vector<std::string>({"a"}), gone);
  EXPECT_EQ(std::vector<unsigned int>({id}), manager.hooked);
  EXPECT_EQ(0u, manager.mItems.count(id));
  EXPECT_EQ(0u, manager.mNameToID.count("a"));
  // A name that comes back gets a new ID.
  EXPECT_EQ(id + 1, manager.add("a"));
}

TEST(Manager, UnknownIDsAreIgnored) {
  std::vector<std::string> gone;
  ItemManager manager(&gone);
  manager.add("a");
  manager.del(7);
  manager.delAllRef(7);
  EXPECT_TRUE(gone.empty());
  EXPECT_TRUE(manager.hooked.empty());
  EXPECT_EQ(1u, manager.mItems.size());
}

TEST(Manager, DelAllRefDeletesWhateverTheCount) {
  std::vector<std::string> gone;
  ItemManager manager(&gone);
  const unsigned id = manager.add("a");
  manager.add("a");
  manager.add("a");
  manager.delAllRef(id);
  EXPECT_EQ(std::vector<std::string>({"a"}), gone);
  EXPECT_EQ(std::vector<unsigned int>({id}), manager.hooked);
  EXPECT_TRUE(manager.mItems.empty());
  EXPECT_TRUE(manager.mNameToID.empty());
}

TEST(Manager, TheDestructorDeletesEveryItemWithoutTheHook) {
  std::vector<std::string> gone;
  std::vector<unsigned int> hooked;
  {
    ItemManager manager(&gone);
    manager.add("a");
    manager.add("b");
    manager.add("b");
    manager.del(manager.add("c"));
    hooked = manager.hooked;
  }
  EXPECT_EQ(std::vector<unsigned int>({3}), hooked);
  EXPECT_EQ(std::vector<std::string>({"c", "a", "b"}), gone);
}

TEST(Manager, AnItemStartsUncounted) {
  ManagedItem item("x");
  EXPECT_EQ(0, item.mRefCount);
  EXPECT_EQ("x", item.mName);
}

}  // namespace
