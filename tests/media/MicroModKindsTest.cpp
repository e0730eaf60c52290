// One downloaded folder of each of the seven kinds, loaded in one run: each mod's
// class, paths, lists and numbers, and the application's menu textures on the
// device's real 3D context.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MicroModFixture.h"
#include "RenderSystem/GLTexture.h"
#include "support/GLTestSupport.h"
#include "support/UdiFile.h"

namespace {

using mediatest::AssertRegex;
using mediatest::MarkFile;
using mediatest::MicroModTest;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::WriteBytes;
using zvtest::WriteText;

class MicroModKindsTest : public MicroModTest {
 protected:
  // An uncompressed, top-left, 32-bit TGA of `width` x `height` in one colour
  // (0xAARRGGBB).
  static void WriteTga(const std::string& path, int width, int height, uint32_t colour) {
    Bytes file = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    zvtest::PutU16(file, uint16_t(width));
    zvtest::PutU16(file, uint16_t(height));
    zvtest::PutU8(file, 32);
    zvtest::PutU8(file, 0x20);
    for (int i = 0; i < width * height; ++i) zvtest::PutU32(file, colour);  // B, G, R, A
    zvtest::WriteBytes(path, file);
  }

  // An application mod with the textures named in `textures` (of "TexFontDesc",
  // "TexThumbnail", "TexAnimation").
  std::string LayOutApplication(const std::string& name, const std::vector<std::string>& textures) {
    const std::string folder = LayOut(name, "pkg.toy", "Application", "\"AppSo\": \"libtoy.so\"");
    for (const std::string& texture : textures) {
      if (texture == "TexThumbnail") {
        // R8G8B8A8, as the device keeps its pictures.
        zvtest::WriteUdi(folder + "/TexThumbnail.udi", 2, 2, 1, 32, 0,
                         Bytes{255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255});
      } else {
        WriteTga(folder + "/" + texture + ".tga", texture == "TexFontDesc" ? 8 : 4, 4, 0xFF2040C0);
      }
    }
    return folder;
  }
};

TEST_F(MicroModKindsTest, OneFolderOfEachKindLoadsInOneRun) {
  zvtest::GLContext gl;
  ASSERT_TRUE(gl.ok()) << gl.error();

  const std::string cards = LayOut("1-cards", "pkg.cards", "Notewright");
  ASSERT_EQ(0, mkdir((cards + "/Templates").c_str(), 0755));
  WriteText(cards + "/Templates/Birthday.xml", "<Card/>");
  const std::string app = LayOutApplication("2-toy", {"TexFontDesc", "TexThumbnail", "TexAnimation"});
  const std::string ships = LayOut("3-ships", "pkg.ships", "Pewzone");
  const std::string music = LayOut("4-music", "pkg.music", "Reelmarch");
  ASSERT_EQ(0, mkdir((music + "/Musics").c_str(), 0755));
  WriteText(music + "/Musics/Song B.ogg", "b");
  WriteText(music + "/Musics/Song A.wav", "a");
  const std::string missions = LayOut("5-missions", "pkg.missions", "Scoopcam");
  WriteText(missions + "/MicroModsConfig.xml",
            "<MissionList><M><MissionName>Zoo</MissionName><ElementNumber>5</ElementNumber></M>"
            "<M><MissionName>Farm</MissionName><ElementNumber>2</ElementNumber></M></MissionList>");
  const std::string stories = LayOut("6-stories", "pkg.stories", "Fablewright");
  WriteText(stories + "/MicroModsConfig.xml",
            "<StoryList><Story><StoryName>Owl</StoryName><PageNumber>9</PageNumber></Story></StoryList>");
  const std::string brushes = LayOut("7-brushes", "pkg.brushes", "Wigglo");
  WriteText(brushes + "/MicroModsConfig.xml",
            "<MicroMods><BrushNumber>3</BrushNumber><StampNumber>14</StampNumber>"
            "<FrameNumber>5</FrameNumber></MicroMods>");
  // Given to the player in the reverse order: the device lists them by name.
  std::vector<std::string> on;
  for (const std::string& folder : {brushes, stories, missions, music, ships, app, cards}) on.insert(on.begin(), Give(folder));
  WriteBytes(MarkPath(), MarkFile({{"pkg.music", 12}}));

  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(7u, mods.size());
  for (int i = 0; i < 7; ++i) EXPECT_EQ(EMicroModType(i + 1), mods[i]->mType) << i;
  const char* const ids[] = {"pkg.cards", "pkg.toy", "pkg.ships", "pkg.music", "pkg.missions", "pkg.stories",
                             "pkg.brushes"};
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(ids[i], mods[i]->mPackageId);
    EXPECT_EQ(i == 3 ? 12 : 1, mods[i]->mMark) << ids[i];
  }

  EXPECT_EQ(on[0] + "/Templates/", static_cast<MicroModSnipsy*>(mods[0])->mTemplatePath);

  MicroModApplication* toy = static_cast<MicroModApplication*>(mods[1]);
  EXPECT_EQ(on[1] + "/libtoy.so", toy->mSoPath);
  ASSERT_NE(nullptr, toy->mTexFontDesc);
  ASSERT_NE(nullptr, toy->mTexThumbnail);
  ASSERT_NE(nullptr, toy->mTexAnimation);
  EXPECT_EQ(on[1] + "/TexFontDesc.tga", toy->mTexFontDesc->mName);
  EXPECT_EQ(on[1] + "/TexThumbnail.udi", toy->mTexThumbnail->mName);
  EXPECT_EQ(on[1] + "/TexAnimation.tga", toy->mTexAnimation->mName);
  EXPECT_EQ(8u, toy->mTexFontDesc->mWidth);
  EXPECT_EQ(4u, toy->mTexAnimation->mWidth);
  for (GLTexture* texture : {toy->mTexFontDesc, toy->mTexThumbnail, toy->mTexAnimation}) {
    EXPECT_EQ(GL_TRUE, glIsTexture(texture->mTextureID)) << texture->mName;
  }
  // The thumbnail on the screen, texel for texel.
  zvtest::DrawTexture(toy->mTexThumbnail->mTextureID, 0, 0, 2, 2);
  EXPECT_TRUE(zvtest::SamePixels("micromod_thumbnail", {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF},
                                 zvtest::ReadPixels(0, 0, 2, 2), 2, 2));

  MicroModPewzone* ship = static_cast<MicroModPewzone*>(mods[2]);
  EXPECT_EQ(on[2] + "/GameBG/", ship->mBackgroundPath);
  EXPECT_EQ(on[2] + "/GameShip/UserShip/", ship->mUserShipPath);
  EXPECT_EQ(on[2] + "/GameShip/EnemyShip/", ship->mEnemyShipPath);

  MicroModReelmarch* songs = static_cast<MicroModReelmarch*>(mods[3]);
  EXPECT_EQ(on[3] + "/Musics/", songs->mMusicPath);
  EXPECT_EQ((std::vector<std::string>{"Song A.wav", "Song B.ogg"}), songs->mMusicNames);

  MicroModScoopcam* scoop = static_cast<MicroModScoopcam*>(mods[4]);
  EXPECT_EQ(on[4] + "/", scoop->GetMicroModPath());
  ASSERT_EQ(2, scoop->GetMissionNum());
  EXPECT_EQ("Zoo", scoop->GetMissionVec()[0].mMissionName);
  EXPECT_EQ(5, scoop->GetMissionVec()[0].mElementNumber);
  EXPECT_EQ("Farm", scoop->GetMissionVec()[1].mMissionName);
  EXPECT_EQ(2, scoop->GetMissionVec()[1].mElementNumber);

  MicroModFablewright* fable = static_cast<MicroModFablewright*>(mods[5]);
  EXPECT_EQ(on[5] + "/", fable->GetMicroModPath());
  ASSERT_EQ(1, fable->GetStoryNum());
  EXPECT_EQ("Owl", fable->GetStoryVec()[0].mStoryName);
  EXPECT_EQ(9, fable->GetStoryVec()[0].mPageNumber);

  MicroModWigglo* kit = static_cast<MicroModWigglo*>(mods[6]);
  EXPECT_EQ(on[6] + "/", kit->GetMicroModPath());
  EXPECT_EQ(3, kit->GetBrushNum());
  EXPECT_EQ(14, kit->GetStampNum());
  EXPECT_EQ(5, kit->GetFrameNum());

  // The application's textures go back to the manager with the mod.
  EXPECT_EQ(3u, gxGetTextureManager()->mIDToTexture.size());
  for (MicroMod* mod : made) delete mod;
  made.clear();
  EXPECT_EQ(0u, gxGetTextureManager()->mIDToTexture.size());
}

TEST_F(MicroModKindsTest, AnApplicationModWithoutItsTexturesFailsTheAssertion) {
  Give(LayOutApplication("toy", {}));
  TestGame game;
  EXPECT_DEATH(game.archive().TryToLoadMdl(),
               AssertRegex("Src/MediaCenter/MicroMods.cpp", "mTexFontDesc"));
}

TEST_F(MicroModKindsTest, AnApplicationModWithoutItsAnimationTextureFailsTheAssertion) {
  // The child starts afresh, so that the GL's own threads are there to upload with.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  zvtest::GLContext gl;
  ASSERT_TRUE(gl.ok()) << gl.error();
  Give(LayOutApplication("toy", {"TexFontDesc", "TexThumbnail"}));
  TestGame game;
  EXPECT_DEATH(game.archive().TryToLoadMdl(),
               AssertRegex("Src/MediaCenter/MicroMods.cpp", "mTexAnimation"));
}

}  // namespace
