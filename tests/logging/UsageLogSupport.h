#pragma once
// What the usage log tests share: a device on a temporary root with a title
// folder, standard output captured from std::cout, and the device's logs read
// back as records.
#include <gtest/gtest.h>

#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "BaseFramework/ZvLogging.h"
#include "support/TestSupport.h"

namespace logtest {

using Json = nlohmann::ordered_json;

// Every line of the log at `path`, parsed; none when the file is absent. A line
// that is not JSON fails the test.
std::vector<Json> ReadRecords(const std::string& path);

// A record as one short line: CActivityExit(score=0, reason=5); texts quoted,
// a null text as null.
std::string Describe(const Json& record);
std::vector<std::string> Describe(const std::vector<Json>& records);

// Lets a test put the levels in any state, also ones the operations alone
// cannot reach.
class OpenLogging : public ZvLogging {
 public:
  void SetLevels(bool title, bool game, bool area, bool activity, bool cyo) {
    mTitleOpen = title;
    mGameOpen = game;
    mAreaOpen = area;
    mActivityOpen = activity;
    mCyoOpen = cyo;
  }
  // The five flags as one text "TGAVC", a dash for a closed level.
  std::string Levels() const;
};

class UsageLogTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Writes the title folder's meta.json.
  void WriteMeta(const std::string& json);

  // What went to std::cout since the last call.
  std::string TakeConsole();

  std::vector<std::string> UsageLog() const;
  std::vector<std::string> AppManagerLog() const;
  std::vector<Json> UsageRecords() const;
  std::vector<Json> AppManagerRecords() const;

  zvtest::TempDir dir;
  std::string root;      // ends in a slash
  std::string titleDir;  // ends in a slash
  OpenLogging log;

 private:
  std::ostringstream mConsole;
  std::streambuf* mSavedConsole = nullptr;
};

}  // namespace logtest
