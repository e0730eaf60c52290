// Programming errors end in the reader's assertions, with their texts.
#include <gtest/gtest.h>

#include "WafTestSupport.h"

namespace {

using namespace waftest;

// The C library's message for a failed assertion in the reader's source.
std::string Failed(const std::string& function, const std::string& expression) {
  return "Src/External/waf/wafexp\\.cpp:[0-9]+: " + zvtest::Literal(function) + ": Assertion `" +
         zvtest::Literal(expression) + "' failed\\.";
}

class WafAssertionDeathTest : public testing::Test {
 protected:
  void SetUp() override {
    archive = OpenBytes(dir.file("a.waf"), LayArchive({{"f", TextLike(100, 1)}}));
    ASSERT_NE(nullptr, archive);
    file = Open(archive, "f");
    ASSERT_NE(nullptr, file);
  }
  zvtest::TempDir dir;
  ArchivePtr archive;
  FilePtr file;
};

TEST_F(WafAssertionDeathTest, ArchiveOpenWithoutAFileNameFails) {
  EXPECT_DEATH(waf_archive_open(nullptr, 0), Failed("waf_archive* waf_archive_open(const char*, int)", "filename != __null"));
}

TEST_F(WafAssertionDeathTest, ArchiveOpenAtANegativeOffsetFails) {
  EXPECT_DEATH(waf_archive_open(dir.file("a.waf").c_str(), -1),
               Failed("waf_archive* waf_archive_open(const char*, int)", "offset >= 0"));
}

TEST_F(WafAssertionDeathTest, OpenWithoutAnArchiveOrANameFails) {
  EXPECT_DEATH(waf_open(nullptr, "f"), Failed("waf_file* waf_open(waf_archive*, const char*)", "arc != __null"));
  EXPECT_DEATH(waf_open(archive.get(), nullptr),
               Failed("waf_file* waf_open(waf_archive*, const char*)", "filename != __null"));
}

// The assertions on the buffer and the size come before the test for a null file.
TEST_F(WafAssertionDeathTest, ReadWithoutABufferOrWithANegativeSizeFails) {
  char byte;
  EXPECT_DEATH(waf_read(file.get(), nullptr, 1), Failed("int waf_read(waf_file*, void*, int)", "buff != __null"));
  EXPECT_DEATH(waf_read(nullptr, nullptr, 1), Failed("int waf_read(waf_file*, void*, int)", "buff != __null"));
  EXPECT_DEATH(waf_read(file.get(), &byte, -1), Failed("int waf_read(waf_file*, void*, int)", "readsize >= 0"));
  EXPECT_DEATH(waf_read(nullptr, &byte, -1), Failed("int waf_read(waf_file*, void*, int)", "readsize >= 0"));
}

// A position before the start is an assertion, not a clamp, also through a
// relative seek, and before the test for a null file.
TEST_F(WafAssertionDeathTest, SeekBeforeTheStartFails) {
  const std::string text = Failed("int waf_seekabs(waf_file*, int)", "position >= 0");
  EXPECT_DEATH(waf_seekabs(file.get(), -1), text);
  EXPECT_DEATH(waf_seekabs(nullptr, -1), text);
  EXPECT_DEATH(waf_seek(file.get(), -1, 1), text);
  EXPECT_DEATH(waf_seek(file.get(), -101, 2), text);
  EXPECT_DEATH(waf_seek(file.get(), -2147483647 - 1, 0), text);
}

TEST_F(WafAssertionDeathTest, HashOfNoStringFails) {
  EXPECT_DEATH(waf_strhash(nullptr), Failed("uint32_t waf_strhash(const char*)", "str != __null"));
}

}  // namespace
