// The sprite manager: the list of sprite names, and sprites shared by count.
#include <gtest/gtest.h>

#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "SpriteFolder.h"

namespace {

using spritetest::SpriteFolder;
using spritetest::TalLayout;

class AnimatedSpriteDataManagerTest : public testing::Test {
 protected:
  std::string ListPath() const { return folder.Root() + "/AnimatedSpritesList.txt"; }
  SpriteFolder folder;
};

TEST_F(AnimatedSpriteDataManagerTest, TheListIsReadWhenTheManagerIsMade) {
  folder.WriteList("hero\nslime\nboss\n");
  AnimatedSpriteDataManager::sCreate();
  AnimatedSpriteDataManager& manager = AnimatedSpriteDataManager::sInstance();
  EXPECT_EQ(0, manager.getSpriteIDByName("hero"));
  EXPECT_EQ(1, manager.getSpriteIDByName("slime"));
  EXPECT_EQ(2, manager.getSpriteIDByName("boss"));
  EXPECT_STREQ("slime", manager.getSpriteNameByID(1));
  delete AnimatedSpriteDataManager::instance_;
  AnimatedSpriteDataManager::instance_ = nullptr;
}

TEST_F(AnimatedSpriteDataManagerTest, WithoutAListNoNameIsKnown) {
  AnimatedSpriteDataManager manager;
  EXPECT_TRUE(manager.mIDToSpriteName.empty());
  EXPECT_EQ(0, manager.LoadSpriteName2ID(ListPath().c_str()));
  EXPECT_EQ(-1, manager.getSpriteIDByName("hero"));
}

TEST_F(AnimatedSpriteDataManagerTest, GetSpriteIDByNameOfANameNotInTheListGivesMinusOne) {
  folder.WriteList("hero\n");
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(0, manager.getSpriteIDByName("hero"));
  EXPECT_EQ(-1, manager.getSpriteIDByName("villain"));
  EXPECT_EQ(-1, manager.getSpriteIDByName(""));
  EXPECT_EQ(nullptr, manager.getSpriteNameByID(1));
  EXPECT_EQ(nullptr, manager.getSpriteNameByID(-1));
}

TEST_F(AnimatedSpriteDataManagerTest, AListLineAbWithItsLineEndIsSkippedAndTheNextNameTakesItsNumber) {
  folder.WriteList("hero\nab\nslime\n\nx\r\nboss");
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(-1, manager.getSpriteIDByName("ab"));
  EXPECT_EQ(1, manager.getSpriteIDByName("slime"));
  EXPECT_EQ(2, manager.getSpriteIDByName("boss"));  // the last line needs no line end
  EXPECT_EQ(3u, manager.mIDToSpriteName.size());
}

TEST_F(AnimatedSpriteDataManagerTest, UpToTwoTrailingTabsOrLineEndsAreRemoved) {
  folder.WriteList("hero\r\nslime\t\nboss\t\t\nabc\r\r\n");
  AnimatedSpriteDataManager manager;
  EXPECT_STREQ("hero", manager.getSpriteNameByID(0));
  EXPECT_STREQ("slime", manager.getSpriteNameByID(1));
  EXPECT_STREQ("boss\t", manager.getSpriteNameByID(2));  // the third goes with the name
  EXPECT_STREQ("abc\r", manager.getSpriteNameByID(3));
}

TEST_F(AnimatedSpriteDataManagerTest, ALineHoldsAtMost1023Characters) {
  const std::string longName(1030, 'n');
  folder.WriteList(longName + "\nhero\n");
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(0, manager.getSpriteIDByName(longName.substr(0, 1023)));
  EXPECT_EQ(1, manager.getSpriteIDByName(longName.substr(0, 7)));
  EXPECT_EQ(2, manager.getSpriteIDByName("hero"));
}

TEST_F(AnimatedSpriteDataManagerTest, ReloadingTheListRenumbersIt) {
  folder.WriteList("hero\nslime\n");
  AnimatedSpriteDataManager manager;
  folder.WriteList("boss\n");
  EXPECT_NE(0, manager.LoadSpriteName2ID(ListPath().c_str()));
  EXPECT_EQ(1u, manager.mIDToSpriteName.size());
  EXPECT_STREQ("boss", manager.getSpriteNameByID(0));
  EXPECT_EQ(nullptr, manager.getSpriteNameByID(1));
  EXPECT_EQ(0, manager.getSpriteIDByName("boss"));
}

TEST_F(AnimatedSpriteDataManagerTest, AddTwiceWithOneNameGivesOneIDAndTheSpriteGoesAtTheSecondDel) {
  TalLayout tal;
  tal.frames.resize(2);
  folder.WriteSprite("hero", tal);
  AnimatedSpriteDataManager manager;
  const unsigned id = manager.add("hero");
  ASSERT_EQ(1u, id);
  EXPECT_EQ(id, manager.add("hero"));
  ASSERT_EQ(1u, manager.mItems.size());
  AnimatedSpriteData* sprite = static_cast<AnimatedSpriteData*>(manager.mItems[id]);
  EXPECT_EQ(2, sprite->mRefCount);
  EXPECT_EQ("hero", sprite->mName);
  EXPECT_EQ(2u, sprite->mLayerSprites[0].size());
  manager.del(id);
  ASSERT_EQ(1u, manager.mItems.count(id));
  EXPECT_EQ(1, sprite->mRefCount);
  manager.del(id);
  EXPECT_EQ(0u, manager.mItems.count(id));
  EXPECT_EQ(0u, manager.mNameToID.count("hero"));
}

TEST_F(AnimatedSpriteDataManagerTest, ASpriteWithoutItsAnimationsIsNotAdded) {
  folder.Folder("ghost");
  TalLayout tal;
  folder.WriteSprite("hero", tal);
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(0u, manager.add("ghost"));
  EXPECT_EQ(0u, manager.mLastID);
  EXPECT_TRUE(manager.mItems.empty());
  EXPECT_EQ(1u, manager.add("hero"));
}

TEST_F(AnimatedSpriteDataManagerTest, EachSpriteHasItsOwnID) {
  TalLayout tal;
  folder.WriteSprite("hero", tal);
  folder.WriteSprite("slime", tal);
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(1u, manager.add("hero"));
  EXPECT_EQ(2u, manager.add("slime"));
  manager.delAllRef(1);
  EXPECT_EQ(1u, manager.mItems.size());
  EXPECT_EQ(3u, manager.add("hero"));
}

}  // namespace
