// Sequential reading: block by block through the chain, to its zero length or
// its first failure.
#include <gtest/gtest.h>

#include "WafTestSupport.h"

namespace {

using namespace waftest;

class WafReadTest : public testing::Test {
 protected:
  // An archive of one file "f" whose chain is `chain`, and which the directory
  // says is `size` bytes long.
  FilePtr OpenChain(const Bytes& chain, int32_t size) {
    Bytes bytes;
    PutHeader(bytes, 1);
    PutRecord(bytes, "f", size, 12 + RecordSize("f"));
    bytes.insert(bytes.end(), chain.begin(), chain.end());
    archive = OpenBytes(dir.file("chain.waf"), bytes);
    EXPECT_NE(nullptr, archive);
    return archive ? Open(archive, "f") : FilePtr();
  }
  FilePtr OpenData(const Bytes& data) {
    Bytes chain;
    PutChain(chain, data);
    return OpenChain(chain, int32_t(data.size()));
  }

  zvtest::TempDir dir;
  ArchivePtr archive;
};

TEST_F(WafReadTest, ASmallFileReadsWholeInOneRead) {
  const Bytes data = TextLike(40, 1);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  int got;
  EXPECT_EQ(data, ReadSome(file.get(), 40, &got));
  EXPECT_EQ(40, got);
  EXPECT_EQ(40, waf_tell(file.get()));
}

TEST_F(WafReadTest, ReadingAcrossABlockBoundaryReturnsAContiguousResult) {
  const Bytes data = Noise(3 * 65536 + 100, 2);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 65530, &got);
  ASSERT_EQ(65530, got);
  EXPECT_EQ(Slice(data, 65530, 20), ReadSome(file.get(), 20, &got));
  // Over two boundaries at once.
  EXPECT_EQ(Slice(data, 65550, 2 * 65536), ReadSome(file.get(), 2 * 65536, &got));
  EXPECT_EQ(65550 + 2 * 65536, waf_tell(file.get()));
}

TEST_F(WafReadTest, ReadingTheLastBlockAndFurtherReturnsTheCountSoFarThenZero) {
  const Bytes data = TextLike(65536 + 300, 3);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 65536 + 200, &got);
  ASSERT_EQ(65536 + 200, got);
  EXPECT_EQ(Slice(data, 65536 + 200, 100), ReadSome(file.get(), 1000, &got));
  EXPECT_EQ(100, got);
  EXPECT_EQ(data.size(), size_t(waf_tell(file.get())));
  ReadSome(file.get(), 1000, &got);
  EXPECT_EQ(0, got);
  ReadSome(file.get(), 1, &got);
  EXPECT_EQ(0, got);
  EXPECT_EQ(data.size(), size_t(waf_tell(file.get())));
}

TEST_F(WafReadTest, AFileOfWholeBlocksEndsAtItsZeroLength) {
  const Bytes data = TextLike(2 * 65536, 4);
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  int status;
  EXPECT_EQ(data, ReadAll(file.get(), 65536, &status));
  EXPECT_EQ(0, status);
}

TEST_F(WafReadTest, AnEmptyFileReadsNothing) {
  FilePtr file = OpenData(Bytes());
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 10, &got);
  EXPECT_EQ(0, got);
  EXPECT_EQ(0, waf_tell(file.get()));
}

// A fresh file's buffer is empty, so even a read of nothing loads the first block.
TEST_F(WafReadTest, ReadOfZeroBytesOnAFreshFileLoadsTheFirstBlock) {
  FilePtr file = OpenData(TextLike(70000, 5));
  ASSERT_NE(nullptr, file);
  const int32_t first = file->entry->offset;
  int got;
  ReadSome(file.get(), 0, &got);
  EXPECT_EQ(0, got);
  EXPECT_EQ(first, file->current_block);
  EXPECT_EQ(65536, file->buffer_len);
  EXPECT_EQ(0, file->buffer_pos);
  EXPECT_EQ(0, file->position);
  EXPECT_GT(file->next_block, first + 4);
}

TEST_F(WafReadTest, LoadingABlockMovesTheChainOnByItsLengthAndHeader) {
  const Bytes data = TextLike(65536 + 10, 6);
  const Bytes first = Deflate(Slice(data, 0, 65536));
  FilePtr file = OpenData(data);
  ASSERT_NE(nullptr, file);
  const int32_t start = file->entry->offset;
  EXPECT_EQ(0, waf_next_block(file.get()));
  EXPECT_EQ(start, file->current_block);
  EXPECT_EQ(start + 4 + int32_t(first.size()), file->next_block);
  EXPECT_EQ(Slice(data, 0, 65536), Bytes(file->buffer, file->buffer + file->buffer_len));
  EXPECT_EQ(0, waf_next_block(file.get()));
  EXPECT_EQ(10, file->buffer_len);
  const int32_t end = file->next_block;
  // The zero length: 2, and nothing moves.
  EXPECT_EQ(2, waf_next_block(file.get()));
  EXPECT_EQ(end, file->next_block);
  EXPECT_EQ(10, file->buffer_len);
  EXPECT_EQ(start + 4 + int32_t(first.size()), file->current_block);
}

// The end of the data is the chain's zero length, not the directory's size.
TEST_F(WafReadTest, ReadDoesNotStopAtTheSizeTheDirectorySays) {
  const Bytes data = TextLike(5000, 7);
  Bytes chain;
  PutChain(chain, data);
  FilePtr file = OpenChain(chain, 1000);
  ASSERT_NE(nullptr, file);
  int status;
  EXPECT_EQ(data, ReadAll(file.get(), 333, &status));
  EXPECT_EQ(0, status);
  EXPECT_EQ(1000, waf_size(file.get()));
}

// The largest block there may be: a zlib stream padded to 69632 bytes, which
// uncompress accepts as it stands.
TEST_F(WafReadTest, BlockWithACompressedLengthOf69632IsAccepted) {
  const Bytes data = Noise(65536, 8);
  Bytes stream = Deflate(data, 0);
  ASSERT_LT(stream.size(), size_t(69632));
  stream.resize(69632, 0);
  Bytes check(65536);
  uLongf length = 65536;
  ASSERT_EQ(Z_OK, uncompress(check.data(), &length, stream.data(), uLong(stream.size())));
  Bytes chain;
  PutBlock(chain, stream);
  PutEnd(chain);
  FilePtr file = OpenChain(chain, 65536);
  ASSERT_NE(nullptr, file);
  int status;
  EXPECT_EQ(data, ReadAll(file.get(), 4096, &status));
  EXPECT_EQ(0, status);
}

TEST_F(WafReadTest, BlockWithACompressedLengthOf69633GivesAnError) {
  Bytes stream = Deflate(Noise(65536, 8), 0);
  stream.resize(69633, 0);
  Bytes chain;
  PutBlock(chain, stream);
  PutEnd(chain);
  FilePtr file = OpenChain(chain, 65536);
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 10, &got);
  EXPECT_EQ(-1, got);
  EXPECT_EQ(0, waf_tell(file.get()));
}

TEST_F(WafReadTest, NegativeCompressedLengthGivesAnError) {
  Bytes chain;
  PutI32(chain, -4);
  chain.resize(100, 0);
  FilePtr file = OpenChain(chain, 10);
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(1, waf_next_block(file.get()));
}

// A failure after a good block: -1, and the good block's bytes are in the buffer.
TEST_F(WafReadTest, BlockThatDoesNotInflateGivesAnErrorAfterTheBytesBeforeIt) {
  const Bytes data = TextLike(65536 + 1000, 9);
  Bytes chain;
  PutBlock(chain, Deflate(Slice(data, 0, 65536)));
  Bytes broken = Deflate(Slice(data, 65536, 1000));
  for (size_t i = 2; i < broken.size(); ++i) broken[i] ^= 0x5a;
  PutBlock(chain, broken);
  PutEnd(chain);
  FilePtr file = OpenChain(chain, int32_t(data.size()));
  ASSERT_NE(nullptr, file);
  Bytes out(70000, 0);
  EXPECT_EQ(-1, waf_read(file.get(), out.data(), 70000));
  EXPECT_EQ(Slice(data, 0, 65536), Slice(out, 0, 65536));
  // The file stays open; its position counts what was delivered, and reading on
  // meets the same block again.
  EXPECT_EQ(65536, waf_tell(file.get()));
  EXPECT_EQ(-1, waf_read(file.get(), out.data(), 1));
  EXPECT_EQ(65536, waf_tell(file.get()));
}

TEST_F(WafReadTest, BlockThatUnpacksToMoreThan65536BytesGivesAnError) {
  Bytes chain;
  PutBlock(chain, Deflate(TextLike(65537, 10)));
  PutEnd(chain);
  FilePtr file = OpenChain(chain, 65537);
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 100, &got);
  EXPECT_EQ(-1, got);
}

TEST_F(WafReadTest, ChainThatRunsPastTheEndOfTheFileGivesAnError) {
  const Bytes stream = Deflate(TextLike(5000, 11));
  // A length that says more than the file holds.
  Bytes chain;
  PutI32(chain, int32_t(stream.size()) + 500);
  chain.insert(chain.end(), stream.begin(), stream.end());
  FilePtr file = OpenChain(chain, 5000);
  ASSERT_NE(nullptr, file);
  int got;
  ReadSome(file.get(), 100, &got);
  EXPECT_EQ(-1, got);

  // A chain without its zero length: the blocks, then the end of the file.
  Bytes open;
  PutBlock(open, stream);
  file = OpenChain(open, 5000);
  ASSERT_NE(nullptr, file);
  Bytes out(6000);
  EXPECT_EQ(-1, waf_read(file.get(), out.data(), 6000));
  EXPECT_EQ(TextLike(5000, 11), Slice(out, 0, 5000));

  // A length field cut short.
  Bytes cut;
  cut.push_back(9);
  cut.push_back(0);
  file = OpenChain(cut, 5000);
  ASSERT_NE(nullptr, file);
  EXPECT_EQ(1, waf_next_block(file.get()));
}

// A data offset beyond the file, or one that makes the first block's place
// negative: a failure, never a read from elsewhere.
TEST_F(WafReadTest, DataOffsetOutsideTheFileGivesAnError) {
  for (int32_t offset : {1 << 20, -40, int32_t(0x7ffffff0)}) {
    Bytes bytes;
    PutHeader(bytes, 1);
    PutRecord(bytes, "f", 10, offset);
    PutChain(bytes, TextLike(10, 1));
    archive = OpenBytes(dir.file("far.waf"), bytes, 0);
    ASSERT_NE(nullptr, archive);
    FilePtr file = Open(archive, "f");
    ASSERT_NE(nullptr, file);
    char out[10];
    EXPECT_EQ(-1, waf_read(file.get(), out, 10)) << offset;
    EXPECT_EQ(-1, waf_seekabs(file.get(), 5)) << offset;
  }
}

// Every load seeks the shared stream, so files of one archive interleave.
TEST_F(WafReadTest, TwoFilesOfOneArchiveReadInTurnKeepTheirPlaces) {
  const Bytes a = TextLike(200000, 12), b = Noise(150000, 13);
  archive = OpenBytes(dir.file("two.waf"), LayArchive({{"a", a}, {"b", b}}));
  ASSERT_NE(nullptr, archive);
  FilePtr fa = Open(archive, "a"), fb = Open(archive, "b"), fa2 = Open(archive, "a");
  ASSERT_TRUE(fa && fb && fa2);
  Bytes outA, outB, outA2;
  Bytes chunk(7000);
  for (;;) {
    int ga = waf_read(fa.get(), chunk.data(), 7000);
    if (ga > 0) outA.insert(outA.end(), chunk.begin(), chunk.begin() + ga);
    int gb = waf_read(fb.get(), chunk.data(), 5000);
    if (gb > 0) outB.insert(outB.end(), chunk.begin(), chunk.begin() + gb);
    int ga2 = waf_read(fa2.get(), chunk.data(), 3000);
    if (ga2 > 0) outA2.insert(outA2.end(), chunk.begin(), chunk.begin() + ga2);
    ASSERT_TRUE(ga >= 0 && gb >= 0 && ga2 >= 0);
    if (ga == 0 && gb == 0 && ga2 == 0) break;
  }
  EXPECT_EQ(a, outA);
  EXPECT_EQ(b, outB);
  EXPECT_EQ(a, outA2);
}

}  // namespace
