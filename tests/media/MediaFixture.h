#pragma once
// What the media store's tests share: a game that owns an archive and a store on a
// fresh simulated device, and builders for the gallery's files.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

#include "BaseFramework/GameManager.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "solva/Device.h"
#include "support/TestSupport.h"

namespace mediatest {

using zvtest::Bytes;

// The title's manager in miniature: it owns the archive and the media store, and
// brings them up and down in the title's order.
class TestGame : public GameManager {
 public:
  explicit TestGame(int uploadMask = 4) {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(uploadMask);
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
  }
  ~TestGame() override {
    Destroy();
    delete mMediaCenter;
    delete mArchiver;
  }
  // Only the store's part of the framework's shut-down.
  void Destroy() override {
    mArchiver->Destroy();
    mMediaCenter->Destroy();
  }
  ZvArchive& archive() { return static_cast<ZvArchive&>(GetArchiver()); }
  MediaCenter& store() { return GetMediaCenter(); }
};

inline void PutF32(Bytes& out, float value) {
  uint32_t raw;
  memcpy(&raw, &value, 4);
  zvtest::PutU32(out, raw);
}

// A name as the index holds it: length, then the bytes.
inline void PutName(Bytes& out, const std::string& name) {
  zvtest::PutU32(out, uint32_t(name.size()));
  zvtest::PutText(out, name);
}

inline Bytes ResIdFile(const uint32_t (&maxima)[9]) {
  Bytes out;
  zvtest::PutU32(out, 0x00444952u);
  for (uint32_t value : maxima) zvtest::PutU32(out, value);
  return out;
}

// Everything `body` prints on standard output.
inline std::string CaptureOut(const std::function<void()>& body) {
  fflush(stdout);
  testing::internal::CaptureStdout();
  body();
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

// How often `needle` occurs in `text`.
inline int Occurrences(const std::string& text, const std::string& needle) {
  int count = 0;
  for (size_t at = text.find(needle); at != std::string::npos; at = text.find(needle, at + needle.size())) ++count;
  return count;
}

// The C library's assertion message for `expr` failing in `file`.
inline std::string AssertRegex(const std::string& file, const std::string& expr) {
  return zvtest::Literal(file + ":") + ".*" + zvtest::Literal("Assertion `" + expr + "' failed.");
}

// A fresh device: its storage under a temporary root, the title's folder with its
// meta.json, and a working folder of its own.
class MediaTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    root = dir.path() + "/root/";
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    title = dir.path() + "/title/";
    work = dir.path() + "/work/";
    ASSERT_EQ(0, mkdir(title.c_str(), 0755));
    ASSERT_EQ(0, mkdir(work.c_str(), 0755));
    zvtest::WriteText(title + "meta.json", zvtest::ReadText(ZV_SOURCE_DIR "/tests/media/data/title/meta.json"));
    solva::SetTitlePath(title);
    char here[4096];
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    oldCwd = here;
    ASSERT_EQ(0, chdir(work.c_str()));
    solva::SetFreeBytes(1000000000);
  }
  void TearDown() override {
    if (!oldCwd.empty()) {
      EXPECT_EQ(0, chdir(oldCwd.c_str()));
    }
    solva::ResetDevice();
  }

  std::string Shared(const std::string& sub) const { return root + "LocalData/Shared/" + sub; }
  std::string Index(const std::string& name) const { return Shared("FileIndex/") + name; }
  std::string Music(const std::string& name) const { return Shared("Music/") + name; }
  std::string Upload(const std::string& sub) const { return root + "Upload/" + sub; }

  zvtest::TempDir dir;
  std::string root;
  std::string title;
  std::string work;
  std::string oldCwd;
};

}  // namespace mediatest
