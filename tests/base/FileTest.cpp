// File: the one way to plain files. The three writing modes go through the
// device's whole-file replacement, every other mode through fopen; typed values
// are little-endian, a short read gives 0, strings carry a 32-bit length.
#include <dirent.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "Base/File.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Bytes;
using zvtest::Exists;
using zvtest::ReadBytes;
using zvtest::WriteBytes;

// The names in a folder, "." and ".." left out.
int EntriesIn(const std::string& folder) {
  int count = 0;
  DIR* dir = opendir(folder.c_str());
  if (dir == nullptr) return -1;
  while (dirent* entry = readdir(dir)) {
    if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) ++count;
  }
  closedir(dir);
  return count;
}

class FileTest : public testing::Test {
 protected:
  std::string path(const std::string& name = "data.bin") const { return dir.file(name); }
  zvtest::TempDir dir;
};

TEST_F(FileTest, OnlyTheThreeExactWritingModesAreDeviceWrites) {
  File file;
  for (const char* mode : {"w", "wb", "a"}) EXPECT_TRUE(file.isDeviceWrite(mode)) << mode;
  for (const char* mode : {"ab", "w+", "wb+", "a+", "r", "rb", "r+", "W", "wb "}) {
    EXPECT_FALSE(file.isDeviceWrite(mode)) << mode;
  }
}

TEST_F(FileTest, OpenWithWbReplacesTheFileWholeOnlyAtClose) {
  WriteBytes(path(), {'o', 'l', 'd'});
  File file(path().c_str(), "wb");
  ASSERT_TRUE(file.isOpened());
  file.writeInt(0x01020304);
  EXPECT_EQ(Bytes({'o', 'l', 'd'}), ReadBytes(path()));  // the old file until the close
  file.close();
  EXPECT_EQ(Bytes({4, 3, 2, 1}), ReadBytes(path()));
  EXPECT_EQ(1, EntriesIn(dir.path()));
}

TEST_F(FileTest, OpenWithAAppendsAsAWholeFileAtClose) {
  WriteBytes(path(), {1});
  File file;
  ASSERT_TRUE(file.open(path().c_str(), "a"));
  file.write("\x02\x03", 1, 2);
  EXPECT_EQ(Bytes({1}), ReadBytes(path()));
  file.close();
  EXPECT_EQ(Bytes({1, 2, 3}), ReadBytes(path()));
}

TEST_F(FileTest, OpenWithAbOrWPlusGoesStraightToTheFile) {
  WriteBytes(path("ab.bin"), {1});
  WriteBytes(path("wplus.bin"), {1, 2});
  File append(path("ab.bin").c_str(), "ab");
  File both(path("wplus.bin").c_str(), "w+");
  ASSERT_TRUE(append.isOpened());
  ASSERT_TRUE(both.isOpened());
  EXPECT_TRUE(ReadBytes(path("wplus.bin")).empty());  // fopen cut it at once
  append.writeInt(7);
  append.seek(0, SEEK_END);  // a seek flushes the stream: the bytes are in the file itself
  EXPECT_EQ(Bytes({1, 7, 0, 0, 0}), ReadBytes(path("ab.bin")));
  EXPECT_EQ(2, EntriesIn(dir.path()));  // no temporary beside them
}

TEST_F(FileTest, AFailedOpenLeavesNoStream) {
  File file;
  EXPECT_FALSE(file.open(path("missing/none.bin").c_str(), "rb"));
  EXPECT_FALSE(file.isOpened());
  EXPECT_FALSE(file.open(path("missing/none.bin").c_str(), "wb"));
  EXPECT_FALSE(file.isOpened());
  file.close();  // nothing to close
  EXPECT_EQ(0u, file.getFileSize());
}

TEST_F(FileTest, ReadFile2BufOfAnEmptyFileIsFalseAndLeavesTheBufferEmpty) {
  WriteBytes(path(), {});
  File file(path().c_str(), "rb");
  File::FBuffer buffer = {0, 0};
  EXPECT_FALSE(file.readFile2Buf(&buffer));
  EXPECT_EQ(nullptr, buffer.mData);
  EXPECT_EQ(0u, buffer.mSize);
}

TEST_F(FileTest, ReadFile2BufAfterTenBytesOfAHundredDeliversTheNinetyLeft) {
  Bytes bytes(100);
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = uint8_t(i);
  WriteBytes(path(), bytes);
  File file(path().c_str(), "rb");
  char skipped[10];
  ASSERT_EQ(1u, file.read(skipped, 10, 1));
  File::FBuffer buffer = {0, 0};
  ASSERT_TRUE(file.readFile2Buf(&buffer));
  ASSERT_EQ(90u, buffer.mSize);
  EXPECT_EQ(Bytes(bytes.begin() + 10, bytes.end()), Bytes(buffer.mData, buffer.mData + buffer.mSize));
  File::releaseFileBuf(&buffer);
  EXPECT_EQ(nullptr, buffer.mData);
  EXPECT_EQ(0u, buffer.mSize);
}

TEST_F(FileTest, ReadFile2BufAtTheEndOfANonEmptyFileIsTrueWithSizeZero) {
  WriteBytes(path(), {1, 2, 3});
  File file(path().c_str(), "rb");
  file.seek(0, SEEK_END);
  File::FBuffer buffer = {0, 0};
  EXPECT_TRUE(file.readFile2Buf(&buffer));
  EXPECT_EQ(0u, buffer.mSize);
  File::releaseFileBuf(&buffer);
}

TEST_F(FileTest, ReadFile2BufOfAnUnopenedFileIsFalse) {
  File file;
  File::FBuffer buffer = {0, 0};
  EXPECT_FALSE(file.readFile2Buf(&buffer));
  File::releaseFileBuf(&buffer);  // needs no file
}

TEST_F(FileTest, AnEmptyStringIsFourZeroBytesAndReadsBackEmpty) {
  {
    File file(path().c_str(), "wb");
    EXPECT_EQ(0u, file.writeString(""));  // the body's fwrite of zero bytes counts no item
  }
  EXPECT_EQ(Bytes({0, 0, 0, 0}), ReadBytes(path()));
  File file(path().c_str(), "rb");
  EXPECT_EQ("", file.readString());
  EXPECT_EQ(4, file.tell());
}

TEST_F(FileTest, AStringIsItsLengthThenItsBytesWithoutATerminator) {
  {
    File file(path().c_str(), "wb");
    EXPECT_EQ(1u, file.writeString("abc"));
  }
  EXPECT_EQ(Bytes({3, 0, 0, 0, 'a', 'b', 'c'}), ReadBytes(path()));
  File file(path().c_str(), "rb");
  EXPECT_EQ("abc", file.readString());
}

TEST_F(FileTest, AStringWithAZeroInsideIsCutThereButTheWholeLengthIsPassed) {
  WriteBytes(path(), {5, 0, 0, 0, 'a', 'b', 0, 'c', 'd', 0x2A, 0, 0, 0});
  File file(path().c_str(), "rb");
  EXPECT_EQ("ab", file.readString());
  EXPECT_EQ(9, file.tell());
  EXPECT_EQ(42, file.readInt());
}

TEST_F(FileTest, GetFileSizeLeavesThePositionWhereItWas) {
  WriteBytes(path(), Bytes(37, 9));
  File file(path().c_str(), "rb");
  file.seek(11, SEEK_SET);
  EXPECT_EQ(37u, file.getFileSize());
  EXPECT_EQ(11, file.tell());
  EXPECT_EQ(9, file.readUChar());
}

TEST_F(FileTest, DestroyingAnOpenFileClosesItTheWayItWasOpened) {
  WriteBytes(path("read.bin"), {1, 2});
  const int before = EntriesIn("/proc/self/fd");
  {
    File written(path().c_str(), "wb");
    written.writeUInt(0xAABBCCDDu);
    File read(path("read.bin").c_str(), "rb");
    EXPECT_EQ(before + 2, EntriesIn("/proc/self/fd"));
  }
  EXPECT_EQ(before, EntriesIn("/proc/self/fd"));  // both streams closed
  EXPECT_EQ(Bytes({0xDD, 0xCC, 0xBB, 0xAA}), ReadBytes(path()));  // the atomic one finished
  EXPECT_EQ(2, EntriesIn(dir.path()));
}

TEST_F(FileTest, ReadUIntAtTheEndIsZeroAndEofIsThen) {
  WriteBytes(path(), {1, 0, 0, 0});
  File file(path().c_str(), "rb");
  EXPECT_EQ(1u, file.readUInt());
  EXPECT_FALSE(file.eof());
  EXPECT_EQ(0u, file.readUInt());
  EXPECT_TRUE(file.eof());
}

// A value that only partly fits reads as 0, at every width, not as the bytes that were there.
TEST_F(FileTest, AShortReadGivesZeroAtEachWidth) {
  WriteBytes(path("three.bin"), {0xFF, 0xFF, 0xFF});
  WriteBytes(path("one.bin"), {0xFF});
  WriteBytes(path("none.bin"), {});
  {
    File file(path("three.bin").c_str(), "rb");
    EXPECT_EQ(0, file.readInt());
    file.seek(0, SEEK_SET);
    EXPECT_EQ(0u, file.readUInt());
    file.seek(0, SEEK_SET);
    EXPECT_EQ(0.0f, file.readFloat());
    EXPECT_TRUE(file.eof());
  }
  {
    File file(path("one.bin").c_str(), "rb");
    EXPECT_EQ(0u, file.readUShort());
    file.seek(0, SEEK_SET);
    EXPECT_EQ(0, file.readShort());
    EXPECT_TRUE(file.eof());
  }
  {
    File file(path("none.bin").c_str(), "rb");
    EXPECT_EQ(0u, file.readUChar());
    EXPECT_EQ(0u, file.readChar());
    EXPECT_TRUE(file.eof());
  }
}

TEST_F(FileTest, TypedValuesAreLittleEndianAtTheirWidths) {
  WriteBytes(path(), {0x04, 0x03, 0x02, 0x81, 0xFE, 0xFF, 0x34, 0x12, 0x80, 0x90, 0x00, 0x00, 0xC0, 0x3F});
  File file(path().c_str(), "rb");
  EXPECT_EQ(int(0x81020304u), file.readInt());
  EXPECT_EQ(-2, file.readShort());
  EXPECT_EQ(0x1234u, file.readUShort());
  EXPECT_EQ(0x80u, file.readUChar());
  EXPECT_EQ(0x90u, file.readChar());  // unsigned on the device
  EXPECT_EQ(1.5f, file.readFloat());
}

TEST_F(FileTest, ReadAndWriteCountWholeItems) {
  {
    File file(path().c_str(), "wb");
    EXPECT_EQ(3u, file.write("abcdef", 2, 3));
    EXPECT_EQ(1u, file.writeInt(-1));
  }
  File file(path().c_str(), "rb");
  char items[10];
  EXPECT_EQ(2u, file.read(items, 4, 3));  // ten bytes: two whole items of four
  EXPECT_EQ(0, memcmp(items, "abcdef\xFF\xFF", 8));
}

TEST_F(FileTest, GetsReadsALine) {
  WriteBytes(path(), {'o', 'n', 'e', '\n', 't', 'w', 'o'});
  File file(path().c_str(), "r");
  char line[16];
  ASSERT_NE(nullptr, file.gets(line, sizeof line));
  EXPECT_STREQ("one\n", line);
  ASSERT_NE(nullptr, file.gets(line, sizeof line));
  EXPECT_STREQ("two", line);
  EXPECT_EQ(nullptr, file.gets(line, sizeof line));
}

}  // namespace
