// The texture package UITexture.pkg: its index read byte by byte as laid out
// here, the data block's size taken from the title's own package, and which
// paths count as inside it.
#include <gtest/gtest.h>
#include <malloc.h>

#include "BaseFramework/GameManager.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "RenderSystem/GLTextureManager.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Device.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Bytes;

const char kLoaded[] = "[GLTextureManager][LoadPkgFile] Load UITexture.pkg Success!\n";
const char kReleased[] = "[GLTextureManager][ReleasePkgFile] Release UITexture.pkg Success!\n";

// A title whose manager owns a device archive, so that the package's default
// place is the title's res/UI/.
class PkgGame : public GameManager {
 public:
  PkgGame() {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(4);
  }
  ~PkgGame() override {
    mArchiver->Destroy();
    delete mArchiver;
  }
};

class PkgTitle : public ZvWidgetInstance {
 public:
  PkgTitle() : ZvWidgetInstance(nullptr) {}
  void OnPreExit() override {}
};

struct Entry {
  std::string name;
  uint32_t first, second;
};

// A package: header length, count, the entries, then the data block.
Bytes Package(const std::vector<Entry>& entries, const Bytes& block, int headerError = 0) {
  Bytes index;
  for (const Entry& e : entries) {
    zvtest::PutU32(index, uint32_t(e.name.size()));
    zvtest::PutText(index, e.name);
    zvtest::PutU32(index, e.first);
    zvtest::PutU32(index, e.second);
  }
  Bytes out;
  zvtest::PutU32(out, uint32_t(8 + index.size() + headerError));
  zvtest::PutU32(out, uint32_t(entries.size()));
  out.insert(out.end(), index.begin(), index.end());
  out.insert(out.end(), block.begin(), block.end());
  return out;
}

class PkgFile : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(mRoot.path()));
    solva::SetTitlePath(mTitle.path());
    ASSERT_EQ(0, system(("mkdir -p '" + mTitle.file("res/UI") + "'").c_str()));
    mGame = new PkgGame();
    mApp.SetGameManager(mGame);
    GLTextureManager::sCreate();
  }
  void TearDown() override {
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
    delete mGame;
    solva::ResetDevice();
  }
  GLTextureManager& Manager() { return *gxGetTextureManager(); }
  std::string DefaultPackage() const { return mTitle.file("res/UI/UITexture.pkg"); }

  zvtest::TempDir mRoot;
  zvtest::TempDir mTitle;
  zvtest::VirtualClock mClock;
  PkgTitle mApp;
  PkgGame* mGame = nullptr;
};

TEST_F(PkgFile, TheIndexAndTheDataBlockAreRead) {
  const Bytes block = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  zvtest::WriteBytes(DefaultPackage(), Package({{"menu.tga", 0, 4}, {"icon", 4, 5}}, block));
  const std::string out = zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  EXPECT_EQ(kLoaded, out);
  ASSERT_EQ(2u, Manager().mPkgIndex.size());
  EXPECT_EQ(std::make_pair(0u, 4u), Manager().mPkgIndex["menu.tga"]);
  EXPECT_EQ(std::make_pair(4u, 5u), Manager().mPkgIndex["icon"]);
  ASSERT_NE(nullptr, Manager().mPkgBuffer);
  EXPECT_EQ(block, Bytes(Manager().mPkgBuffer, Manager().mPkgBuffer + block.size()));
  EXPECT_EQ(kReleased, zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); }));
  EXPECT_TRUE(Manager().mPkgIndex.empty());
  EXPECT_EQ(nullptr, Manager().mPkgBuffer);
}

TEST_F(PkgFile, ALaterEntryOfTheSameNameReplacesTheEarlierPair) {
  zvtest::WriteBytes(DefaultPackage(), Package({{"a", 1, 2}, {"a", 3, 4}}, {0, 0}));
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  ASSERT_EQ(1u, Manager().mPkgIndex.size());
  EXPECT_EQ(std::make_pair(3u, 4u), Manager().mPkgIndex["a"]);
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, LoadingTwiceKeepsTheLastIndex) {
  zvtest::WriteBytes(DefaultPackage(), Package({{"first", 1, 1}}, {7, 7, 7}));
  const std::string second = mTitle.file("second.pkg");
  zvtest::WriteBytes(second, Package({{"second", 2, 2}, {"third", 3, 3}}, {8, 8, 8}));
  zvtest::CapturedStdout([&] {
    Manager().LoadPkgFile(DefaultPackage(), 0);
    Manager().LoadPkgFile(second, 0);
  });
  EXPECT_EQ(0u, Manager().mPkgIndex.count("first"));
  EXPECT_EQ(std::make_pair(2u, 2u), Manager().mPkgIndex["second"]);
  EXPECT_EQ(std::make_pair(3u, 3u), Manager().mPkgIndex["third"]);
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, AMissingPackageLeavesTheIndexEmptyQuietly) {
  zvtest::WriteBytes(DefaultPackage(), Package({{"old", 1, 1}}, {1}));
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  std::string out = zvtest::CapturedStdout([&] { Manager().LoadPkgFile(mTitle.file("none.pkg"), 0); });
  EXPECT_EQ("", out);
  EXPECT_TRUE(Manager().mPkgIndex.empty());
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, TheDataBlockIsAsLongAsTheTitlesOwnPackageMakesIt) {
  // The default package is 20 bytes longer than the one loaded: the block is read
  // to the other's end and the rest stays zero.
  const Bytes block = {9, 8, 7};
  const Bytes loaded = Package({{"x", 0, 3}}, block);
  Bytes longer = loaded;
  longer.resize(loaded.size() + 20, 0xEE);
  zvtest::WriteBytes(DefaultPackage(), longer);
  const std::string path = mTitle.file("other.pkg");
  zvtest::WriteBytes(path, loaded);
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(path, 0); });
  Bytes expected = block;
  expected.resize(23, 0);
  EXPECT_EQ(expected, Bytes(Manager().mPkgBuffer, Manager().mPkgBuffer + 23));
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, ANameTooLongForTheReaderEndsTheIndexThere) {
  zvtest::WriteBytes(DefaultPackage(),
                     Package({{"kept", 1, 1}, {std::string(128, 'n'), 2, 2}, {"after", 3, 3}}, {1, 2}));
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  ASSERT_EQ(1u, Manager().mPkgIndex.size());
  EXPECT_EQ(std::make_pair(1u, 1u), Manager().mPkgIndex["kept"]);
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, ACountBeyondTheEntriesEndsTheIndexAtTheEndOfTheFile) {
  Bytes file = Package({{"only", 5, 6}}, {});
  file[4] = 200;  // the count
  zvtest::WriteBytes(DefaultPackage(), file);
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  ASSERT_EQ(1u, Manager().mPkgIndex.size());
  EXPECT_EQ(std::make_pair(5u, 6u), Manager().mPkgIndex["only"]);
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, AHeaderReachingBeyondTheFileLeavesNoDataBlock) {
  zvtest::WriteBytes(DefaultPackage(), Package({{"a", 1, 1}}, {1, 2, 3}, 1000));
  zvtest::CapturedStdout([&] { Manager().LoadPkgFile(DefaultPackage(), 0); });
  EXPECT_EQ(1u, Manager().mPkgIndex.size());
  ASSERT_NE(nullptr, Manager().mPkgBuffer);
  EXPECT_LT(malloc_usable_size(Manager().mPkgBuffer), 64u) << "an empty block, not 4 GB";
  zvtest::CapturedStdout([&] { Manager().ReleasePkgFile(); });
}

TEST_F(PkgFile, PathsUnderResUIUITextureAreInThePackageEvenWithNoneLoaded) {
  ASSERT_TRUE(Manager().mPkgIndex.empty());
  EXPECT_EQ(1, Manager().IsInPkgFile("res/UI/UITexture/x.tga"));
  EXPECT_EQ(1, Manager().IsInPkgFile("res\\UI\\UITexture"));
  EXPECT_EQ(1, Manager().IsInPkgFile("/title/res//UI\\/UITexture/menu/a.udi"));
  EXPECT_EQ(0, Manager().IsInPkgFile("res/x/UI/UITexture"));
  EXPECT_EQ(0, Manager().IsInPkgFile("res/UI/Textures/x.tga"));
  EXPECT_EQ(0, Manager().IsInPkgFile("UI/UITexture/x.tga"));
  EXPECT_EQ(0, Manager().IsInPkgFile("res/UI/x/UITexture"));
  EXPECT_EQ(0, Manager().IsInPkgFile(""));
}

TEST_F(PkgFile, TheFirstOccurrencesDecide) {
  // "UI" first occurs inside "UITexture": nothing lies between them.
  EXPECT_EQ(1, Manager().IsInPkgFile("res/UITexture/a.tga"));
  // "res" first occurs in "resource": "ource/" lies before "UI".
  EXPECT_EQ(0, Manager().IsInPkgFile("resource/res/UI/UITexture/a.tga"));
}

TEST(PkgFileDeathTest, ATitleWithoutAnArchiveFailsTheAssertion) {
  GameManager bare;
  PkgTitle app;
  app.SetGameManager(&bare);
  GLTextureManager::sCreate();
  EXPECT_DEATH(gxGetTextureManager()->LoadPkgFile("res/UI/UITexture.pkg", 0),
               zvtest::Literal(zvtest::AssertText("Src/BaseFramework/GameManager.h", 42,
                                                  "Archive& GameManager::GetArchiver()", "mArchiver")));
  delete GLTextureManager::instance_;
  GLTextureManager::instance_ = nullptr;
}

}  // namespace
