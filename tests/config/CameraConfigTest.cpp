#include "ConfigSystem/CameraConfig.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <string>

namespace {

// Runs a test with the working directory at the sources, as the title runs with it
// at its own folder, so that "res/CamCfg.xml" resolves.
class CameraConfigTest : public testing::Test {
 protected:
  void SetUp() override {
    char here[1000] = {0};
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    mWorkingPath = here;
    ASSERT_EQ(0, chdir(ZV_SOURCE_DIR));
  }
  void TearDown() override {
    if (CameraConfig::instance_ != nullptr) {
      CameraConfig::sInstance().ReleaseConfig();
      delete CameraConfig::instance_;
      CameraConfig::instance_ = nullptr;
    }
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
  }
  std::string mWorkingPath;
};

TEST_F(CameraConfigTest, LoadsTheTitlesConfigurationFromRes) {
  CameraConfig::sCreate();
  ASSERT_TRUE(CameraConfig::sInstance().LoadConfig());
  int seconds = 0;
  EXPECT_TRUE(CameraConfig::sInstance().getProperty_Int("Recorder.MaxSeconds", seconds));
  EXPECT_EQ(100, seconds);
  std::string stem;
  EXPECT_TRUE(CameraConfig::sInstance().getProperty_String("Recorder.FileStem", stem));
  EXPECT_EQ("vtwgaudio", stem);
  CameraConfig::sInstance().ReleaseConfig();
  EXPECT_EQ(nullptr, CameraConfig::sInstance().getRoot());
}

// The section the archive reads the name of the micro mods' mark file from.
TEST_F(CameraConfigTest, TheArchiveSectionNamesTheModsMarkFileInBothForms) {
  for (const char* path : {"res/CamCfg.xml", "res/CamCfg.par"}) {
    ConfigFile config;
    ASSERT_TRUE(config.load(path)) << path;
    std::string name;
    EXPECT_TRUE(config.getProperty_String("Archive.ArchiveDataFileName", name)) << path;
    EXPECT_EQ("MicroModMarks.bin", name) << path;
  }
}

// Every property of the tree, asked of both forms: the answers must agree.
TEST_F(CameraConfigTest, XmlAndParFormsOfTheTreeGiveTheSameAnswers) {
  ConfigFile xml;
  ConfigFile par;
  ASSERT_TRUE(xml.load("res/CamCfg.xml"));
  ASSERT_TRUE(par.load("res/CamCfg.par"));

  int compared = 0;
  // Walks both trees side by side: same names, same properties, same values.
  std::function<void(ConfigTreeNode*, ConfigTreeNode*, const std::string&)> walk =
      [&](ConfigTreeNode* a, ConfigTreeNode* b, const std::string& prefix) {
        for (; a != nullptr || b != nullptr; a = a->mNextSibling, b = b->mNextSibling) {
          ASSERT_NE(nullptr, a);
          ASSERT_NE(nullptr, b);
          ASSERT_EQ(a->mName, b->mName);
          const std::string path = prefix.empty() ? a->mName : prefix + "." + a->mName;
          ASSERT_EQ(a->mProperties.size(), b->mProperties.size()) << path;
          for (size_t i = 0; i < a->mProperties.size(); ++i) {
            const ConfigDefine::ConfigDataNode* pa = a->mProperties[i];
            const ConfigDefine::ConfigDataNode* pb = b->mProperties[i];
            const std::string name = path + "." + pa->mName.c_str();
            EXPECT_EQ(pa->mName, pb->mName) << name;
            ASSERT_EQ(pa->mType, pb->mType) << name;
            ASSERT_EQ(pa->valueSize(), pb->valueSize()) << name;
            EXPECT_EQ(0, memcmp(pa->mValue, pb->mValue, pa->valueSize())) << name;
            // And through the getters' path look-up.
            EXPECT_EQ(xml.findPropertyNodeFrom(name.c_str()) != nullptr, par.findPropertyNodeFrom(name.c_str()) != nullptr);
            ++compared;
          }
          walk(a->mFirstChild, b->mFirstChild, path);
        }
      };
  walk(xml.getRoot(), par.getRoot(), "");
  EXPECT_EQ(22, compared);

  float margin = 0;
  float parMargin = 0;
  EXPECT_TRUE(xml.getProperty_Float("Recorder.StopMargin", margin));
  EXPECT_TRUE(par.getProperty_Float("Recorder.StopMargin", parMargin));
  EXPECT_EQ(margin, parMargin);
  long retries = 0;
  EXPECT_TRUE(par.getProperty_Long("Recorder.Retries", retries));
  EXPECT_EQ(-1, retries);
  Math3D::vec4 tint{};
  EXPECT_TRUE(par.getProperty_Vec4("Panel.Tint", tint));
  EXPECT_FLOAT_EQ(0.85f, tint.y);
}

}  // namespace
