#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BaseUtils.h"
#include "CSystemData.h"
#include "solva/Device.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Exists;
using zvtest::TempDir;
using zvtest::WriteText;

class StorageTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(dir.path() + "/root"));
    root = dir.path() + "/root/";
  }
  void TearDown() override { solva::ResetDevice(); }
  TempDir dir;
  std::string root;
};

TEST_F(StorageTest, RootHoldsTheFoldersTheDeviceShipsWith) {
  for (const char* sub : {"LocalData/Shared/FileIndex", "LocalData/Shared/Photos/Thumb", "LocalData/Shared/Videos/Cover",
                          "LocalData/Shared/Music", "LocalData/Shared/Art/Thumb", "LocalData/Player1",
                          "Upload/MusicPkg", "Upload/StoryBooks"}) {
    EXPECT_TRUE(BaseUtils::Instance()->DirectoryExists(root + sub)) << sub;
  }
}

TEST_F(StorageTest, SharedDataPathIsUnderSharedAndEndsInASlash) {
  EXPECT_EQ(root + "LocalData/Shared/Music/", CSystemData::Instance()->GetLocalDataPath(kSharedPlayerID, "Music").raw());
  EXPECT_EQ(root + "LocalData/Shared/Photos/Thumb/",
            CSystemData::Instance()->GetLocalDataPath(-2, "Photos/Thumb").raw());
}

TEST_F(StorageTest, PlayerDataPathIsUnderThePlayersFolder) {
  solva::SetCurrentPlayer(3);
  EXPECT_EQ(3, CSystemData::Instance()->GetCurrentPlayerID());
  EXPECT_EQ(root + "LocalData/Player3/", CSystemData::Instance()->GetLocalDataPath(3, "").raw());
  EXPECT_EQ(root + "LocalData/Player3/Pkg/SD-1-2/Audio/",
            CSystemData::Instance()->GetLocalDataPath(3, "Pkg//SD-1-2/Audio").raw());
  EXPECT_TRUE(BaseUtils::Instance()->DirectoryExists(root + "LocalData/Player3"));
}

TEST_F(StorageTest, AskingForAPathMakesNoFolder) {
  const std::string path = CSystemData::Instance()->GetLocalDataPath(1, "Pkg/SD-4-5/Image").raw();
  EXPECT_FALSE(Exists(path));
  EXPECT_FALSE(Exists(root + "LocalData/Player1/Pkg"));
}

TEST_F(StorageTest, UploadPathIsUnderUpload) {
  EXPECT_EQ(root + "Upload/MusicPkg/", CSystemData::Instance()->GetUploadDataPath("MusicPkg").raw());
}

TEST_F(StorageTest, IdentityFollowsTheDeviceSettings) {
  solva::SetPackageId("0x00ABCDEF");
  solva::SetLocale("fr-FR");
  solva::SetTitlePath(dir.path() + "/title");
  EXPECT_EQ("0x00ABCDEF", CSystemData::Instance()->GetCurrentGamePackageID().raw());
  EXPECT_EQ("fr-FR", CSystemData::Instance()->GetLocaleCode().raw());
  EXPECT_EQ(dir.path() + "/title/", CSystemData::Instance()->GetCurrentTitlePath().raw());
}

TEST_F(StorageTest, FreeBytesAreTheToldNumberHeldTo32Bits) {
  solva::SetFreeBytes(12345);
  EXPECT_EQ(12345u, BaseUtils::Instance()->GetBulkFreeBytes());
  solva::SetFreeBytes(0);
  EXPECT_EQ(0u, BaseUtils::Instance()->GetBulkFreeBytes());
  solva::SetFreeBytes(int64_t(1) << 40);
  EXPECT_EQ(0xFFFFFFFFu, BaseUtils::Instance()->GetBulkFreeBytes());
  solva::SetFreeBytes(-1);
  EXPECT_GT(BaseUtils::Instance()->GetBulkFreeBytes(), 0u);
}

int Collect(const Glib::ustring& entry, void* context) {
  static_cast<std::vector<std::string>*>(context)->push_back(entry.raw());
  return 1;
}

int StopAtFirst(const Glib::ustring& entry, void* context) {
  static_cast<std::vector<std::string>*>(context)->push_back(entry.raw());
  return 0;
}

TEST_F(StorageTest, EnumFolderGivesFullPathsInNameOrder) {
  const std::string folder = dir.path() + "/enum";
  ASSERT_TRUE(BaseUtils::Instance()->CreateDirectory(folder));
  WriteText(folder + "/b.txt", "b");
  WriteText(folder + "/a.wav", "a");
  ASSERT_TRUE(BaseUtils::Instance()->CreateDirectory(folder + "/sub"));

  std::vector<std::string> all;
  ASSERT_TRUE(BaseUtils::Instance()->EnumFolder(folder, Collect, kFileSelectAll, &all));
  EXPECT_EQ((std::vector<std::string>{folder + "/a.wav", folder + "/b.txt", folder + "/sub"}), all);

  std::vector<std::string> files;
  BaseUtils::Instance()->EnumFolder(folder + "/", Collect, kFileSelectFiles, &files);
  EXPECT_EQ((std::vector<std::string>{folder + "/a.wav", folder + "/b.txt"}), files);

  std::vector<std::string> folders;
  BaseUtils::Instance()->EnumFolder(folder, Collect, kFileSelectFolders, &folders);
  EXPECT_EQ((std::vector<std::string>{folder + "/sub"}), folders);

  std::vector<std::string> first;
  BaseUtils::Instance()->EnumFolder(folder, StopAtFirst, kFileSelectAll, &first);
  EXPECT_EQ(1u, first.size());

  EXPECT_FALSE(BaseUtils::Instance()->EnumFolder(folder + "/missing", Collect, kFileSelectAll, &all));
}

TEST_F(StorageTest, MakeTestAndRemove) {
  BaseUtils* utils = BaseUtils::Instance();
  const std::string folder = dir.path() + "/made";
  EXPECT_FALSE(utils->DirectoryExists(folder));
  EXPECT_TRUE(utils->CreateDirectory(folder));
  EXPECT_TRUE(utils->CreateDirectory(folder));  // already there
  EXPECT_FALSE(utils->CreateDirectory(folder + "/x/y"));
  EXPECT_TRUE(utils->FileIsDir(folder));
  WriteText(folder + "/f", "f");
  EXPECT_FALSE(utils->FileIsDir(folder + "/f"));
  EXPECT_FALSE(utils->RM(folder));  // not empty
  EXPECT_TRUE(utils->RM(folder + "/f"));
  EXPECT_FALSE(utils->RM(folder + "/f"));
  EXPECT_TRUE(utils->RM(folder));
}

TEST_F(StorageTest, RemoveTreeTakesAFolderWithEverythingInIt) {
  BaseUtils* utils = BaseUtils::Instance();
  const std::string story = dir.path() + "/SD-1-2";
  ASSERT_TRUE(utils->CreateDirectory(story));
  ASSERT_TRUE(utils->CreateDirectory(story + "/Audio"));
  WriteText(story + "/Audio/1.wav", "x");
  WriteText(story + "/dataFile.json", "{}");
  EXPECT_TRUE(utils->RMTree(story));
  EXPECT_FALSE(Exists(story));
  EXPECT_TRUE(utils->RMTree(story));  // nothing there is no failure, as with rm -f
}

}  // namespace
