// The archive manager: three slots, empty until a title fills them, closed with it.
#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "External/waf/WafArchiveManager.h"
#include "WafTestSupport.h"

namespace {

using namespace waftest;

TEST(WafArchiveManagerTest, ThreeSlotsAreEmptyAfterConstructionAndInitialize) {
  WafArchiveManager manager;
  manager.Initialize("/any/title/path");
  for (int slot = 0; slot < WafArchiveManager::eArchive_Num; ++slot) {
    EXPECT_EQ(nullptr, manager.getCompressedArchive(WafArchiveManager::E_Archive(slot))) << slot;
  }
  EXPECT_EQ(3, WafArchiveManager::eArchive_Num);
}

TEST(WafArchiveManagerTest, EachSlotAnswersWithItsOwnArchive) {
  zvtest::TempDir dir;
  WafArchiveManager manager;
  ArchivePtr archive = OpenBytes(dir.file("a.waf"), LayArchive({{"f", TextLike(10, 1)}}));
  ASSERT_NE(nullptr, archive);
  manager.mCompressedArchives[WafArchiveManager::eArchive_1] = archive.get();
  EXPECT_EQ(nullptr, manager.getCompressedArchive(WafArchiveManager::eArchive_0));
  EXPECT_EQ(archive.get(), manager.getCompressedArchive(WafArchiveManager::eArchive_1));
  EXPECT_EQ(nullptr, manager.getCompressedArchive(WafArchiveManager::eArchive_2));
  manager.mCompressedArchives[WafArchiveManager::eArchive_1] = nullptr;
}

// The destructor closes every archive in a slot: their streams' descriptors go.
TEST(WafArchiveManagerTest, DestructorClosesEachSlotThatHoldsAnArchive) {
  zvtest::TempDir dir;
  zvtest::WriteBytes(dir.file("a.waf"), LayArchive({{"f", TextLike(10, 1)}}));
  WafArchiveManager::sCreate();
  WafArchiveManager& manager = WafArchiveManager::sInstance();
  int descriptors[2];
  for (int i = 0; i < 2; ++i) {
    waf_archive* archive = waf_archive_open(dir.file("a.waf").c_str(), 0);
    ASSERT_NE(nullptr, archive);
    descriptors[i] = fileno(archive->stream);
    manager.mCompressedArchives[i == 0 ? WafArchiveManager::eArchive_0 : WafArchiveManager::eArchive_2] = archive;
  }
  for (int fd : descriptors) EXPECT_NE(-1, fcntl(fd, F_GETFD));
  delete WafArchiveManager::instance_;
  WafArchiveManager::instance_ = 0;
  for (int fd : descriptors) {
    EXPECT_EQ(-1, fcntl(fd, F_GETFD));
    EXPECT_EQ(EBADF, errno);
  }
}

}  // namespace
