// File's typed reads at the end of a file.
#include <gtest/gtest.h>

#include "Base/File.h"
#include "support/TestSupport.h"

namespace {

TEST(FileRead, AShortReadGivesZeroNotThePartOfTheValueThatWasThere) {
  zvtest::TempDir dir;
  const std::string path = dir.file("two.bin");
  zvtest::WriteBytes(path, {0x34, 0x12});
  File file(path.c_str(), "rb");
  ASSERT_TRUE(file.isOpened());
  EXPECT_EQ(0u, file.readUInt());
  EXPECT_TRUE(file.eof());
  file.seek(0, SEEK_SET);
  EXPECT_EQ(0, file.readInt());
  file.seek(0, SEEK_SET);
  EXPECT_EQ(0.0f, file.readFloat());
  file.seek(1, SEEK_SET);
  EXPECT_EQ(0, file.readUShort());
  file.seek(0, SEEK_SET);
  EXPECT_EQ(0x1234, file.readUShort());
  EXPECT_EQ(0, file.readUChar());
}

}  // namespace
