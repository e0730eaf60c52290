#include "UsageLogSupport.h"

#include <sys/stat.h>

#include "solva/Device.h"
#include "solva/Logs.h"

namespace logtest {

std::vector<Json> ReadRecords(const std::string& path) {
  std::vector<Json> records;
  if (!zvtest::Exists(path)) return records;
  std::istringstream lines(zvtest::ReadText(path));
  std::string line;
  while (std::getline(lines, line)) {
    try {
      records.push_back(Json::parse(line));
    } catch (const Json::exception& error) {
      ADD_FAILURE() << path << ": a line that is not JSON: " << line << " (" << error.what() << ")";
    }
  }
  return records;
}

std::string Describe(const Json& record) {
  std::string out = record.value("record", std::string("?")) + "(";
  bool first = true;
  const Json args = record.contains("args") ? record["args"] : Json::object();
  for (auto arg = args.begin(); arg != args.end(); ++arg) {
    if (!first) out += ", ";
    first = false;
    out += arg.key() + "=" + arg->dump();
  }
  return out + ")";
}

std::vector<std::string> Describe(const std::vector<Json>& records) {
  std::vector<std::string> out;
  for (const Json& record : records) out.push_back(Describe(record));
  return out;
}

std::string OpenLogging::Levels() const {
  std::string out;
  out += IsTitleOpen() ? 'T' : '-';
  out += IsGameOpen() ? 'G' : '-';
  out += IsAreaOpen() ? 'A' : '-';
  out += IsActivityOpen() ? 'V' : '-';
  out += IsCyoOpen() ? 'C' : '-';
  return out;
}

void UsageLogTest::SetUp() {
  solva::ResetDevice();
  ASSERT_TRUE(solva::SetDeviceRoot(dir.path() + "/root"));
  root = dir.path() + "/root/";
  titleDir = dir.path() + "/title/";
  ASSERT_EQ(0, mkdir(titleDir.c_str(), 0755));
  WriteMeta(
      "{\"packageId\": \"Puzzles\", \"productId\": 123456, \"deviceType\": \"Handheld\", "
      "\"packageType\": \"Application\", \"partNumber\": \"152-9001\", \"version\": \"2.1.0.7\", \"tags\": {}}");
  solva::SetTitlePath(titleDir);
  solva::SetPackageId("Puzzles");
  mSavedConsole = std::cout.rdbuf(mConsole.rdbuf());
}

void UsageLogTest::TearDown() {
  std::cout.rdbuf(mSavedConsole);
  // A null text leaves the stream failed, as it would in a title; the next
  // test starts with a good one.
  std::cout.clear();
  solva::ResetDevice();
}

void UsageLogTest::WriteMeta(const std::string& json) { zvtest::WriteText(titleDir + "meta.json", json); }

std::string UsageLogTest::TakeConsole() {
  const std::string text = mConsole.str();
  mConsole.str(std::string());
  return text;
}

std::vector<Json> UsageLogTest::UsageRecords() const { return ReadRecords(solva::UsageLogPath()); }
std::vector<Json> UsageLogTest::AppManagerRecords() const { return ReadRecords(solva::AppManagerLogPath()); }
std::vector<std::string> UsageLogTest::UsageLog() const { return Describe(UsageRecords()); }
std::vector<std::string> UsageLogTest::AppManagerLog() const { return Describe(AppManagerRecords()); }

}  // namespace logtest
