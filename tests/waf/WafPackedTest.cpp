// Archives made by `waf pack` read back through the reader: whole, in reads of odd
// sizes, after thousands of random seeks, and from inside a host file.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "WafTestSupport.h"
#include "WafTool.h"

namespace {

using namespace waftest;

// Sizes around a block's edges, files of several blocks, and an empty one.
std::vector<Member> Sources() {
  return {
      {"empty", Bytes()},
      {"one", TextLike(1, 1)},
      {"edge/below", TextLike(65535, 2)},
      {"edge/exact", Noise(65536, 3)},
      {"edge/above", TextLike(65537, 4)},
      {"many/blocks.bin", Noise(3 * 65536 + 12345, 5)},
      {"many/text.txt", TextLike(5 * 65536 + 77, 6)},
      {"deep/er/still/zeros", Bytes(200000, 0)},
  };
}

uint32_t GetU32(const Bytes& bytes, size_t at) {
  return uint32_t(bytes[at]) | uint32_t(bytes[at + 1]) << 8 | uint32_t(bytes[at + 2]) << 16 |
         uint32_t(bytes[at + 3]) << 24;
}

class WafPackedTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const Member& source : Sources()) {
      const std::string path = dir.file("src/" + source.name);
      std::filesystem::create_directories(std::filesystem::path(path).parent_path());
      zvtest::WriteBytes(path, source.data);
    }
    const ToolRun run = RunWaf(dir, "pack " + Quote(dir.file("packed.waf")) + " " + Quote(dir.file("src")));
    ASSERT_EQ(0, run.status) << run.err;
    archive = ArchivePtr(waf_archive_open(dir.file("packed.waf").c_str(), 0));
    ASSERT_NE(nullptr, archive);
  }

  zvtest::TempDir dir;
  ArchivePtr archive;
};

TEST_F(WafPackedTest, EveryFileReadsBackWhole) {
  ASSERT_EQ(int(Sources().size()), archive->count);
  for (const Member& source : Sources()) {
    FilePtr file = Open(archive, source.name);
    ASSERT_NE(nullptr, file) << source.name;
    EXPECT_EQ(int(source.data.size()), waf_size(file.get())) << source.name;
    int status;
    EXPECT_EQ(source.data, ReadAll(file.get(), 1 << 20, &status)) << source.name;
    EXPECT_EQ(0, status);
  }
}

TEST_F(WafPackedTest, EveryFileReadsBackInReadsOfOddSizes) {
  for (int chunk : {1, 7, 4095, 65536, 65537}) {
    for (const Member& source : Sources()) {
      FilePtr file = Open(archive, source.name);
      ASSERT_NE(nullptr, file);
      int status;
      EXPECT_EQ(source.data, ReadAll(file.get(), chunk, &status)) << source.name << " in reads of " << chunk;
      EXPECT_EQ(0, status);
    }
  }
}

// Each seek, from any of the three origins, lands where the source file says,
// and the read after it gives the source's bytes.
TEST_F(WafPackedTest, RandomSeeksReadWhatTheSourceFileHolds) {
  std::mt19937 random(16);
  int seeks = 0;
  for (const Member& source : Sources()) {
    if (source.data.size() < 65536) continue;
    FilePtr file = Open(archive, source.name);
    ASSERT_NE(nullptr, file);
    const int size = int(source.data.size());
    Bytes buffer(70000);
    for (int i = 0; i < 1000; ++i, ++seeks) {
      const int target = std::uniform_int_distribution<int>(0, size + 100)(random);
      const int whence = i % 3;
      const int offset = whence == 0 ? target : whence == 1 ? target - waf_tell(file.get()) : target - size;
      ASSERT_EQ(0, waf_seek(file.get(), offset, whence));
      const int landed = std::min(target, size);
      ASSERT_EQ(landed, waf_tell(file.get()));
      const int want = std::uniform_int_distribution<int>(0, i % 10 == 0 ? 70000 : 5000)(random);
      const int got = waf_read(file.get(), buffer.data(), want);
      ASSERT_EQ(std::min(want, size - landed), got) << source.name << " at " << landed;
      ASSERT_TRUE(std::equal(buffer.begin(), buffer.begin() + got, source.data.begin() + landed))
          << source.name << " at " << landed;
    }
  }
  EXPECT_GE(seeks, 4000);
}

// The writer's bytes as the tables lay them out: the header, the directory in
// name order, each chain right behind the one before, every block but the last
// unpacking to 65536 bytes, each chain ended by a zero length.
TEST_F(WafPackedTest, PackedArchiveIsLaidOutAsTheTablesSay) {
  const Bytes bytes = zvtest::ReadBytes(dir.file("packed.waf"));
  std::vector<Member> sources = Sources();
  std::sort(sources.begin(), sources.end(), [](const Member& a, const Member& b) { return a.name < b.name; });

  ASSERT_EQ(Bytes({'w', 'a', 'f', 0, 0, 0, 1, 0}), Slice(bytes, 0, 8));
  ASSERT_EQ(sources.size(), GetU32(bytes, 8));
  size_t at = 12;
  size_t data = 12;
  for (const Member& source : sources) data += size_t(RecordSize(source.name));
  for (const Member& source : sources) {
    ASSERT_EQ(source.name.size(), GetU32(bytes, at));
    EXPECT_EQ(source.name, std::string(bytes.begin() + long(at) + 4, bytes.begin() + long(at + 4 + source.name.size())));
    at += 4 + source.name.size();
    EXPECT_EQ(source.data.size(), GetU32(bytes, at));
    EXPECT_EQ(data, GetU32(bytes, at + 4)) << source.name;
    at += 8;

    Bytes unpacked;
    for (;;) {
      const uint32_t length = GetU32(bytes, data);
      data += 4;
      if (length == 0) break;
      ASSERT_LE(length, 69632u);
      EXPECT_EQ(0u, unpacked.size() % 65536) << "a short block before the last, in " << source.name;
      Bytes block(65536);
      uLongf size = 65536;
      ASSERT_EQ(Z_OK, uncompress(block.data(), &size, bytes.data() + data, length));
      EXPECT_TRUE(size == 65536 || unpacked.size() + size == source.data.size());
      unpacked.insert(unpacked.end(), block.begin(), block.begin() + long(size));
      data += length;
    }
    EXPECT_EQ(source.data, unpacked) << source.name;
  }
  EXPECT_EQ(bytes.size(), data);
}

TEST_F(WafPackedTest, PackedArchiveReadsTheSameFromInsideAHostFile) {
  const Bytes alone = zvtest::ReadBytes(dir.file("packed.waf"));
  Bytes host = Noise(10007, 7);
  host.insert(host.end(), alone.begin(), alone.end());
  const Bytes tail = Noise(999, 8);
  host.insert(host.end(), tail.begin(), tail.end());
  ArchivePtr inside = OpenBytes(dir.file("host.bin"), host, 10007);
  ASSERT_NE(nullptr, inside);
  for (const Member& source : Sources()) {
    FilePtr file = Open(inside, source.name);
    ASSERT_NE(nullptr, file) << source.name;
    EXPECT_EQ(source.data, ReadAll(file.get(), 4095)) << source.name;
    if (source.data.size() > 100) {
      ASSERT_EQ(0, waf_seek(file.get(), -100, 2));
      EXPECT_EQ(Slice(source.data, source.data.size() - 100, 100), ReadAll(file.get(), 7));
    }
  }
}

}  // namespace
