// Seeking: the clamp to the size, the table of block offsets learnt on the way,
// and a block in the buffer that is not loaded again.
#include <gtest/gtest.h>

#include "WafTestSupport.h"

namespace {

using namespace waftest;

class WafSeekTest : public testing::Test {
 protected:
  FilePtr OpenData(const Bytes& data) {
    archive = OpenBytes(dir.file("seek.waf"), LayArchive({{"f", data}}));
    EXPECT_NE(nullptr, archive);
    return archive ? Open(archive, "f") : FilePtr();
  }

  zvtest::TempDir dir;
  ArchivePtr archive;
};

TEST_F(WafSeekTest, SeekBeyondTheEndLandsAtTheSizeAndTellEqualsSize) {
  const Bytes data = TextLike(100000, 1);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(0, waf_seek(file.get(), 500000, 0));
  EXPECT_EQ(waf_size(file.get()), waf_tell(file.get()));
  EXPECT_EQ(Bytes(), ReadSome(file.get(), 10));
  EXPECT_EQ(0, waf_seek(file.get(), 10, 2));
  EXPECT_EQ(100000, waf_tell(file.get()));
  EXPECT_EQ(0, waf_seek(file.get(), 10, 1));
  EXPECT_EQ(100000, waf_tell(file.get()));
  EXPECT_EQ(0, waf_seek(file.get(), 0x7fffffff, 1));  // past 32 bits: clamped all the same
  EXPECT_EQ(100000, waf_tell(file.get()));
  // Exactly at the size.
  EXPECT_EQ(0, waf_seekabs(file.get(), 100000));
  EXPECT_EQ(100000, waf_tell(file.get()));
  EXPECT_EQ(Bytes(), ReadSome(file.get(), 10));
}

// The end of a file of whole blocks is the place of one block more: its zero
// length. Reading there gives nothing, also when a block was in the buffer.
TEST_F(WafSeekTest, SeekToTheEndOfAFileOfWholeBlocksReadsNothing) {
  const Bytes data = TextLike(2 * 65536, 2);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(Slice(data, 0, 100), ReadSome(file.get(), 100));
  EXPECT_EQ(0, waf_seek(file.get(), 0, 2));
  EXPECT_EQ(2 * 65536, waf_tell(file.get()));
  EXPECT_NE(0, file->block_offsets[2]);
  EXPECT_EQ(Bytes(), ReadSome(file.get(), 100));
  EXPECT_EQ(0, waf_seek(file.get(), -50, 2));
  EXPECT_EQ(Slice(data, 2 * 65536 - 50, 50), ReadSome(file.get(), 100));
}

TEST_F(WafSeekTest, AnEmptyFileSeeksToZeroAndReadsNothing) {
  FilePtr file = OpenData(Bytes());
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(0, waf_seek(file.get(), 5, 0));
  EXPECT_EQ(0, waf_tell(file.get()));
  EXPECT_EQ(Bytes(), ReadSome(file.get(), 10));
}

TEST_F(WafSeekTest, WhenceCountsFromTheStartThePositionOrTheEnd) {
  const Bytes data = Noise(200000, 3);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(0, waf_seek(file.get(), 70000, 0));
  EXPECT_EQ(70000, waf_tell(file.get()));
  EXPECT_EQ(Slice(data, 70000, 10), ReadSome(file.get(), 10));
  EXPECT_EQ(0, waf_seek(file.get(), -30000, 1));
  EXPECT_EQ(40010, waf_tell(file.get()));
  EXPECT_EQ(Slice(data, 40010, 10), ReadSome(file.get(), 10));
  EXPECT_EQ(0, waf_seek(file.get(), -1, 2));
  EXPECT_EQ(199999, waf_tell(file.get()));
  EXPECT_EQ(Slice(data, 199999, 1), ReadSome(file.get(), 10));
}

TEST_F(WafSeekTest, OtherWhenceValuesFailAndMoveNothing) {
  FilePtr file = OpenData(TextLike(1000, 4));
  ASSERT_NE(nullptr, file);
  ASSERT_EQ(0, waf_seek(file.get(), 300, 0));
  for (int whence : {3, -1, 100}) EXPECT_EQ(-1, waf_seek(file.get(), 10, whence)) << whence;
  EXPECT_EQ(300, waf_tell(file.get()));
}

// Nothing is loaded: what the buffer holds is what the next read gives.
TEST_F(WafSeekTest, SeekWithinTheCurrentBlockLoadsNothing) {
  const Bytes data = TextLike(3 * 65536, 5);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  ASSERT_EQ(0, waf_seekabs(file.get(), 65536 + 10));
  const int32_t block = file->current_block;
  const int32_t next = file->next_block;
  file->buffer[500] = uint8_t(data[65536 + 500] ^ 0xff);  // a mark no load would leave
  EXPECT_EQ(0, waf_seekabs(file.get(), 65536 + 500));
  EXPECT_EQ(block, file->current_block);
  EXPECT_EQ(next, file->next_block);
  EXPECT_EQ(500, file->buffer_pos);
  EXPECT_EQ(Bytes{uint8_t(data[65536 + 500] ^ 0xff)}, ReadSome(file.get(), 1));
  // Another block is loaded, and coming back loads this one afresh.
  EXPECT_EQ(0, waf_seekabs(file.get(), 10));
  EXPECT_EQ(0, waf_seekabs(file.get(), 65536 + 500));
  EXPECT_EQ(Slice(data, 65536 + 500, 1), ReadSome(file.get(), 1));
}

// The walk goes from the first block, storing each offset it passes; a known
// offset is taken from the table.
TEST_F(WafSeekTest, SeekLearnsTheOffsetsOfEveryBlockOnTheWay) {
  const Bytes data = Noise(4 * 65536 + 1, 6);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  std::vector<int32_t> expected;
  for (int i = 0; i <= 4; ++i) expected.push_back(int32_t(BlockStart("f", data, i)));
  ASSERT_EQ(file->entry->offset, expected[0]);

  ASSERT_EQ(0, waf_seekabs(file.get(), 2 * 65536 + 7));
  for (int i = 0; i <= 2; ++i) EXPECT_EQ(expected[size_t(i)], file->block_offsets[i]) << i;
  EXPECT_EQ(0, file->block_offsets[3]);
  EXPECT_EQ(expected[2], file->current_block);
  EXPECT_EQ(expected[3], file->next_block);
  EXPECT_EQ(Slice(data, 2 * 65536 + 7, 65536), ReadSome(file.get(), 65536));

  ASSERT_EQ(0, waf_seekabs(file.get(), 4 * 65536));
  for (int i = 0; i <= 4; ++i) EXPECT_EQ(expected[size_t(i)], file->block_offsets[i]) << i;
  EXPECT_EQ(Slice(data, 4 * 65536, 1), ReadSome(file.get(), 10));

  // Back to a block the table knows.
  ASSERT_EQ(0, waf_seekabs(file.get(), 65536));
  EXPECT_EQ(expected[1], file->current_block);
  EXPECT_EQ(Slice(data, 65536, 3), ReadSome(file.get(), 3));
}

TEST_F(WafSeekTest, WalkOverADamagedBlockHeaderFails) {
  const Bytes data = TextLike(3 * 65536, 7);
  Bytes bytes = LayArchive({{"f", data}});
  const size_t second = BlockStart("f", data, 1);
  bytes[second + 3] = 0x40;  // a length far above 69632
  archive = OpenBytes(dir.file("walk.waf"), bytes);
  ASSERT_NE(nullptr, archive);
  FilePtr file = Open(archive, "f");
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(-1, waf_seekabs(file.get(), 2 * 65536));
  EXPECT_EQ(0, waf_tell(file.get()));
  // The first block is still there to be read.
  EXPECT_EQ(Slice(data, 0, 10), ReadSome(file.get(), 10));
}

// A block that fails to load: -1, with position, buffer_pos and next_block as
// they were; a later seek elsewhere succeeds.
TEST_F(WafSeekTest, SeekToABlockThatDoesNotLoadKeepsThePlace) {
  const Bytes data = TextLike(3 * 65536, 8);
  Bytes bytes = LayArchive({{"f", data}});
  const size_t second = BlockStart("f", data, 1);
  bytes[second + 4 + 20] ^= 0xff;  // inside the second block's stream
  archive = OpenBytes(dir.file("bad.waf"), bytes);
  ASSERT_NE(nullptr, archive);
  FilePtr file = Open(archive, "f");
  ASSERT_NE(nullptr, file);
  ASSERT_EQ(Slice(data, 0, 100), ReadSome(file.get(), 100));
  const int32_t next = file->next_block;
  EXPECT_EQ(-1, waf_seekabs(file.get(), 65536 + 5));
  EXPECT_EQ(100, waf_tell(file.get()));
  EXPECT_EQ(100, file->buffer_pos);
  EXPECT_EQ(next, file->next_block);
  EXPECT_EQ(0, waf_seekabs(file.get(), 2 * 65536 + 1));
  EXPECT_EQ(Slice(data, 2 * 65536 + 1, 10), ReadSome(file.get(), 10));
  EXPECT_EQ(0, waf_seekabs(file.get(), 60));
  EXPECT_EQ(Slice(data, 60, 10), ReadSome(file.get(), 10));
}

// A negative size in a damaged directory counts as an empty file for seeking.
TEST_F(WafSeekTest, NegativeSizeSeeksAsAnEmptyFile) {
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "f", -70000, 12 + RecordSize("f"));
  PutChain(bytes, TextLike(10, 1));
  archive = OpenBytes(dir.file("neg.waf"), bytes);
  ASSERT_NE(nullptr, archive);
  FilePtr file = Open(archive, "f");
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(-70000, waf_size(file.get()));
  EXPECT_EQ(0, waf_seekabs(file.get(), 100));
  EXPECT_EQ(0, waf_tell(file.get()));
  EXPECT_EQ(TextLike(10, 1), ReadSome(file.get(), 100));
}

}  // namespace
