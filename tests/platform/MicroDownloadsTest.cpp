// A player's downloaded folders on the simulated device, and the control call
// that gives a player one.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "CMicroDownloads.h"
#include "solva/Device.h"
#include "solva/Downloads.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::ReadText;
using zvtest::WriteText;

class MicroDownloads : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    root = dir.path() + "/root/";
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    ASSERT_EQ(0, mkdir(dir.file("src").c_str(), 0755));
  }
  void TearDown() override { solva::ResetDevice(); }

  // A mod folder under src/ with a meta.json and a file in a subfolder.
  std::string Mod(const std::string& name, const std::string& packageId) {
    const std::string folder = dir.file("src/" + name);
    EXPECT_EQ(0, mkdir(folder.c_str(), 0755));
    EXPECT_EQ(0, mkdir((folder + "/Musics").c_str(), 0755));
    WriteText(folder + "/meta.json", "{\"packageId\": \"" + packageId + "\", \"tags\": {\"ModKitType\": \"Reelmarch\"}}");
    WriteText(folder + "/Musics/song.wav", packageId);
    return folder;
  }

  std::vector<std::string> Listed(int player) {
    std::vector<std::string> out;
    for (const Glib::ustring& folder : Catalog::CMicroDownloads().get(player)) out.push_back(folder.raw());
    return out;
  }

  zvtest::TempDir dir;
  std::string root;
};

TEST_F(MicroDownloads, APlayerWithoutDownloadsHasNone) {
  EXPECT_TRUE(Listed(1).empty());
  EXPECT_FALSE(Exists(root + "MicroDownloads")) << "asking makes no folder";
}

TEST_F(MicroDownloads, InstallCopiesTheFolderWholeBelowThePlayersDownloads) {
  std::string error;
  std::string installed;
  ASSERT_TRUE(solva::InstallMicroMod(3, Mod("songs", "pkg.songs"), &error, &installed)) << error;
  EXPECT_EQ(root + "MicroDownloads/Player3/songs", installed);
  EXPECT_EQ(root + "MicroDownloads/Player3/", solva::MicroDownloadsFolder(3));
  EXPECT_EQ("pkg.songs", ReadText(installed + "/Musics/song.wav"));
  EXPECT_TRUE(Exists(dir.file("src/songs/meta.json"))) << "the source stays";
  EXPECT_EQ(std::vector<std::string>{installed}, Listed(3));
  EXPECT_TRUE(Listed(1).empty());
}

TEST_F(MicroDownloads, FoldersAreListedInNameOrderWithoutASlashAndLooseFilesAreNot) {
  for (const char* name : {"c", "a", "b"}) ASSERT_TRUE(solva::InstallMicroMod(1, Mod(name, name), nullptr));
  WriteText(solva::MicroDownloadsFolder(1) + "notes.txt", "not a download");
  const std::string base = root + "MicroDownloads/Player1/";
  EXPECT_EQ((std::vector<std::string>{base + "a", base + "b", base + "c"}), Listed(1));
}

TEST_F(MicroDownloads, AFolderGivenWithATrailingSlashKeepsItsName) {
  std::string installed;
  ASSERT_TRUE(solva::InstallMicroMod(1, Mod("kit", "pkg.kit") + "/", nullptr, &installed));
  EXPECT_EQ(root + "MicroDownloads/Player1/kit", installed);
}

TEST_F(MicroDownloads, InstallingAgainReplacesTheFolderWhole) {
  const std::string folder = Mod("songs", "pkg.songs");
  WriteText(folder + "/old.txt", "old");
  ASSERT_TRUE(solva::InstallMicroMod(1, folder, nullptr));
  ASSERT_EQ(0, remove((folder + "/old.txt").c_str()));
  ASSERT_TRUE(solva::InstallMicroMod(1, folder, nullptr));
  EXPECT_EQ((std::vector<std::string>{"Musics", "meta.json"}), ListFolder(root + "MicroDownloads/Player1/songs"));
}

TEST_F(MicroDownloads, AFolderWithoutMetaJsonIsRefusedWithAMessageAndChangesNothing) {
  const std::string folder = dir.file("src/bare");
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  std::string error;
  EXPECT_FALSE(solva::InstallMicroMod(1, folder, &error));
  EXPECT_EQ("the mod folder " + folder + " has no meta.json (its package id and \"ModKitType\" tag)", error);
  EXPECT_TRUE(Listed(1).empty());
}

TEST_F(MicroDownloads, AMissingFolderIsRefusedWithAMessage) {
  std::string error;
  EXPECT_FALSE(solva::InstallMicroMod(1, dir.file("src/nothing"), &error));
  EXPECT_EQ("no mod folder " + dir.file("src/nothing"), error);
}

}  // namespace
