#pragma once
// What the micro-mod tests share: a fresh device with the title's configuration
// (whose "Archive" section names the mark file), a texture manager, mod folders
// laid out in a temporary folder and given to the player through the device, and
// the mods a load made, deleted when the test ends.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "ConfigSystem/CameraConfig.h"
#include "MediaFixture.h"
#include "MediaCenter/MicroMods.h"
#include "RenderSystem/GLTextureManager.h"
#include "solva/Downloads.h"

namespace mediatest {

// One record of the mark file: package id and mark.
typedef std::pair<std::string, int32_t> MarkRecord;

// The mark file laid out from its table: record count, then per record the
// identifier's length, its bytes without a terminator, and the mark.
inline Bytes MarkFile(const std::vector<MarkRecord>& records) {
  Bytes out;
  zvtest::PutU32(out, uint32_t(records.size()));
  for (const MarkRecord& record : records) {
    PutName(out, record.first);
    zvtest::PutI32(out, record.second);
  }
  return out;
}

class MicroModTest : public MediaTest {
 protected:
  void SetUp() override {
    MediaTest::SetUp();
    CameraConfig::sCreate();
    ASSERT_TRUE(CameraConfig::sInstance().load(ZV_SOURCE_DIR "/res/CamCfg.xml"));
    GLTextureManager::sCreate();
    source = dir.path() + "/mods/";
    ASSERT_EQ(0, mkdir(source.c_str(), 0755));
  }
  void TearDown() override {
    for (MicroMod* mod : made) delete mod;
    made.clear();
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
    CameraConfig::sInstance().ReleaseConfig();
    delete CameraConfig::instance_;
    CameraConfig::instance_ = nullptr;
    MediaTest::TearDown();
  }

  // A mod folder `name` with a meta.json of that package id and "ModKitType"
  // (none when empty) and the extra tags, laid out under the test's folder but not
  // yet given to anybody. Returns its path.
  std::string LayOut(const std::string& name, const std::string& packageId, const std::string& kit,
                     const std::string& extraTags = "") {
    const std::string folder = source + name;
    EXPECT_EQ(0, mkdir(folder.c_str(), 0755));
    std::string tags = kit.empty() ? "" : "\"ModKitType\": \"" + kit + "\"";
    if (!extraTags.empty()) tags += (tags.empty() ? "" : ", ") + extraTags;
    zvtest::WriteText(folder + "/meta.json", "{\n  \"packageId\": \"" + packageId +
                                                 "\",\n  \"packageType\": \"MicroMod\",\n  \"tags\": {" + tags +
                                                 "}\n}\n");
    return folder;
  }

  // Gives player 1 the folder through the device, as a download; returns where it
  // lies on the device.
  std::string Give(const std::string& folder, int player = 1) {
    std::string error;
    std::string installed;
    EXPECT_TRUE(solva::InstallMicroMod(player, folder, &error, &installed)) << error;
    return installed;
  }

  // LayOut and Give at once.
  std::string Download(const std::string& name, const std::string& packageId, const std::string& kit,
                       const std::string& extraTags = "") {
    return Give(LayOut(name, packageId, kit, extraTags));
  }

  // TryToLoadMdl; the mods it made are the test's to delete (the archive never
  // deletes them).
  std::vector<MicroMod*> Load(ZvArchive& archive) {
    archive.TryToLoadMdl();
    made.insert(made.end(), archive.mMicroMods.begin(), archive.mMicroMods.end());
    return archive.mMicroMods;
  }

  std::string MarkPath() const { return Index("MicroModMarks.bin"); }

  zvtest::VirtualClock clock;  // the texture manager's load timer reads it
  std::string source;
  std::vector<MicroMod*> made;
};

}  // namespace mediatest
