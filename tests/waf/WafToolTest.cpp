// The `waf` tool as a title developer meets it: its help, its usage errors, what
// each command prints, the first fault that check reports, and packing that gives
// the same bytes every time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "WafTestSupport.h"
#include "WafTool.h"

namespace {

using namespace waftest;
using testing::HasSubstr;

class WafToolTest : public testing::Test {
 protected:
  // A folder of three files, packed into `archive`.
  void SetUp() override {
    std::filesystem::create_directories(dir.file("src/sub"));
    zvtest::WriteBytes(dir.file("src/readme.txt"), TextLike(1000, 1));
    zvtest::WriteBytes(dir.file("src/sub/big.bin"), Noise(150000, 2));
    zvtest::WriteBytes(dir.file("src/sub/empty"), Bytes());
  }
  ToolRun Waf(const std::string& arguments) { return RunWaf(dir, arguments); }
  std::string Path(const std::string& name) { return Quote(dir.file(name)); }
  ToolRun Pack(const std::string& out = "a.waf") { return Waf("pack " + Path(out) + " " + Path("src")); }
  // Writes laid-out bytes and checks them.
  ToolRun CheckBytes(const Bytes& bytes) {
    zvtest::WriteBytes(dir.file("laid.waf"), bytes);
    return Waf("check " + Path("laid.waf"));
  }

  zvtest::TempDir dir;
};

TEST_F(WafToolTest, HelpTellsTheCommandsAndExitsZero) {
  ToolRun run = Waf("--help");
  EXPECT_EQ(0, run.status);
  for (const char* word : {"pack", "list", "cat", "check", "Exit status"}) EXPECT_THAT(run.out, HasSubstr(word));
  run = Waf("pack --help");
  EXPECT_EQ(0, run.status);
  EXPECT_THAT(run.out, HasSubstr("DIR"));
  run = Waf("check --help");
  EXPECT_EQ(0, run.status);
  EXPECT_THAT(run.out, HasSubstr("--offset"));
}

TEST_F(WafToolTest, BadUsageExitsWithStatus2AndSaysWhy) {
  ASSERT_EQ(0, Pack().status);
  for (const std::string& arguments :
       {std::string(""), std::string("frobnicate"), std::string("pack ") + Path("only.waf"), std::string("list"),
        std::string("cat ") + Path("a.waf"), "list --offset -1 " + Path("a.waf"),
        "list --offset abc " + Path("a.waf"), "check --offset 4294967296 " + Path("a.waf"),
        "list " + Path("a.waf") + " extra", std::string("--no-such-option")}) {
    const ToolRun run = Waf(arguments);
    EXPECT_EQ(2, run.status) << arguments;
    EXPECT_FALSE(run.err.empty()) << arguments;
  }
}

TEST_F(WafToolTest, PackWritesEveryFileAndSaysHowMuch) {
  const ToolRun run = Pack();
  ASSERT_EQ(0, run.status) << run.err;
  EXPECT_THAT(run.out, HasSubstr("3 files"));
  ArchivePtr archive(waf_archive_open(dir.file("a.waf").c_str(), 0));
  ASSERT_NE(nullptr, archive);
  ASSERT_EQ(3, archive->count);
  EXPECT_STREQ("readme.txt", archive->entries[0]->name);
  EXPECT_STREQ("sub/big.bin", archive->entries[1]->name);
  EXPECT_STREQ("sub/empty", archive->entries[2]->name);
}

std::string ListLine(const std::string& size, const std::string& compressed, const std::string& name) {
  char line[400];
  snprintf(line, sizeof line, "%12s %12s  %s\n", size.c_str(), compressed.c_str(), name.c_str());
  return line;
}

// The compressed size is what the zlib streams of the chain hold.
TEST_F(WafToolTest, ListShowsEachSizeCompressedSizeAndName) {
  ASSERT_EQ(0, Pack().status);
  const ToolRun run = Waf("list " + Path("a.waf"));
  ASSERT_EQ(0, run.status) << run.err;
  const Bytes big = Noise(150000, 2);
  size_t bigPacked = 0;
  for (size_t at = 0; at < big.size(); at += 65536) bigPacked += Deflate(Slice(big, at, 65536), 9).size();
  EXPECT_EQ(ListLine("size", "compressed", "name") +
                ListLine("1000", std::to_string(Deflate(TextLike(1000, 1), 9).size()), "readme.txt") +
                ListLine("150000", std::to_string(bigPacked), "sub/big.bin") + ListLine("0", "0", "sub/empty"),
            run.out);
}

TEST_F(WafToolTest, CatWritesTheFileExactly) {
  ASSERT_EQ(0, Pack().status);
  ToolRun run = Waf("cat " + Path("a.waf") + " sub/big.bin");
  ASSERT_EQ(0, run.status) << run.err;
  EXPECT_EQ(Noise(150000, 2), Bytes(run.out.begin(), run.out.end()));
  run = Waf("cat " + Path("a.waf") + " sub/empty");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("", run.out);
}

TEST_F(WafToolTest, CatOfANameThatIsNotThereFails) {
  ASSERT_EQ(0, Pack().status);
  const ToolRun run = Waf("cat " + Path("a.waf") + " sub/missing");
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("no file named sub/missing"));
}

TEST_F(WafToolTest, CheckPassesAWholeArchive) {
  ASSERT_EQ(0, Pack().status);
  const ToolRun run = Waf("check " + Path("a.waf"));
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_THAT(run.out, HasSubstr("3 files"));
}

TEST_F(WafToolTest, OffsetReadsAnArchiveInsideAHostFile) {
  ASSERT_EQ(0, Pack().status);
  Bytes host = Noise(5000, 3);
  const Bytes archive = zvtest::ReadBytes(dir.file("a.waf"));
  host.insert(host.end(), archive.begin(), archive.end());
  zvtest::WriteBytes(dir.file("host.bin"), host);
  EXPECT_EQ(0, Waf("check --offset 5000 " + Path("host.bin")).status);
  EXPECT_EQ(0, Waf("list --offset 5000 " + Path("host.bin")).status);
  const ToolRun cat = Waf("cat --offset 5000 " + Path("host.bin") + " readme.txt");
  EXPECT_EQ(0, cat.status);
  EXPECT_EQ(TextLike(1000, 1), Bytes(cat.out.begin(), cat.out.end()));
  const ToolRun wrong = Waf("check " + Path("host.bin"));
  EXPECT_EQ(1, wrong.status);
  EXPECT_THAT(wrong.err, HasSubstr("not a WAF archive"));
}

// Sorted names, one compression level, nothing of the machine or the moment: the
// same folder gives the same bytes, whatever order its files were made in.
TEST_F(WafToolTest, PackIsDeterministic) {
  ASSERT_EQ(0, Pack("first.waf").status);
  std::filesystem::create_directories(dir.file("again/sub"));
  zvtest::WriteBytes(dir.file("again/sub/empty"), Bytes());
  zvtest::WriteBytes(dir.file("again/sub/big.bin"), Noise(150000, 2));
  zvtest::WriteBytes(dir.file("again/readme.txt"), TextLike(1000, 1));
  ASSERT_EQ(0, Waf("pack " + Path("second.waf") + " " + Path("again/")).status);
  EXPECT_EQ(zvtest::ReadBytes(dir.file("first.waf")), zvtest::ReadBytes(dir.file("second.waf")));
}

TEST_F(WafToolTest, PackOfAnEmptyOrMissingFolderFailsAndWritesNothing) {
  std::filesystem::create_directories(dir.file("nothing/inside"));
  ToolRun run = Waf("pack " + Path("none.waf") + " " + Path("nothing"));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("at least one"));
  EXPECT_FALSE(zvtest::Exists(dir.file("none.waf")));
  run = Waf("pack " + Path("none.waf") + " " + Path("absent"));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("is not a folder"));
  EXPECT_FALSE(zvtest::Exists(dir.file("none.waf")));
}

// The reader can find names of up to 259 bytes; a longer one is refused, and an
// archive that was there stays as it was.
TEST_F(WafToolTest, PackRefusesANameTooLongToBeFoundAndKeepsTheOldArchive) {
  ASSERT_EQ(0, Pack().status);
  const Bytes before = zvtest::ReadBytes(dir.file("a.waf"));
  const std::string folder = "src/" + std::string(200, 'd');
  std::filesystem::create_directories(dir.file(folder));
  zvtest::WriteBytes(dir.file(folder + "/" + std::string(60, 'n')), Bytes(3, 1));  // 261 bytes
  const ToolRun run = Pack();
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("259 at most"));
  EXPECT_EQ(before, zvtest::ReadBytes(dir.file("a.waf")));
  EXPECT_FALSE(zvtest::Exists(dir.file("a.waf.part")));

  std::filesystem::remove(dir.file(folder + "/" + std::string(60, 'n')));
  zvtest::WriteBytes(dir.file(folder + "/" + std::string(58, 'n')), Bytes(3, 1));  // 259 bytes
  ASSERT_EQ(0, Pack().status);
  EXPECT_EQ(0, Waf("check " + Path("a.waf")).status);
}

TEST_F(WafToolTest, PackingIntoTheFolderLeavesTheArchiveItselfOut) {
  ASSERT_EQ(0, Waf("pack " + Path("src/self.waf") + " " + Path("src")).status);
  ASSERT_EQ(0, Waf("pack " + Path("src/self.waf") + " " + Path("src")).status);
  ArchivePtr archive(waf_archive_open(dir.file("src/self.waf").c_str(), 0));
  ASSERT_NE(nullptr, archive);
  EXPECT_EQ(3, archive->count);
}

// --- check: the first fault, with status 1 ------------------------------------

TEST_F(WafToolTest, CheckNamesAWrongMagicVersionOrCount) {
  Bytes bytes = LayArchive({{"a", TextLike(10, 1)}});
  bytes[3] = 1;
  ToolRun run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("not a WAF archive"));

  bytes = LayArchive({{"a", TextLike(10, 1)}});
  bytes[4] = 1;
  run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("version 0x00010001"));

  Bytes empty;
  PutHeader(empty, 0);
  run = CheckBytes(empty);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("a file count of 0"));

  Bytes badName;
  PutHeader(badName, 1);
  PutI32(badName, 261);
  badName.resize(400, 'x');
  run = CheckBytes(badName);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("directory is damaged"));
}

TEST_F(WafToolTest, CheckReportsABlockThatDoesNotInflate) {
  const Bytes data = TextLike(100000, 2);
  Bytes bytes = LayArchive({{"good", TextLike(10, 1)}, {"bad", data}, {"later", Bytes()}});
  const size_t chains = 12 + RecordSize("good") + RecordSize("bad") + RecordSize("later");
  Bytes first;
  PutChain(first, TextLike(10, 1));
  const size_t secondBlock = chains + first.size() + 4 + Deflate(Slice(data, 0, 65536)).size();
  bytes[secondBlock + 4 + 30] ^= 0xff;
  const ToolRun run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("entry 1 (bad): block 1 at offset " + std::to_string(secondBlock) + " does not load"));
}

TEST_F(WafToolTest, CheckReportsSizesThatDisagree) {
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "f", 999, 12 + RecordSize("f"));
  PutChain(bytes, TextLike(1000, 1));
  const ToolRun run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("entry 0 (f): the blocks hold 1000 bytes, the directory says 999"));
}

TEST_F(WafToolTest, CheckReportsAShortBlockBeforeTheLast) {
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "f", 1100, 12 + RecordSize("f"));
  PutBlock(bytes, Deflate(TextLike(1000, 1)));
  PutBlock(bytes, Deflate(TextLike(100, 2)));
  PutEnd(bytes);
  const ToolRun run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("block 0 unpacks to 1000 bytes"));
}

TEST_F(WafToolTest, CheckReportsAChainThatRunsPastTheEnd) {
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "f", 1000, 12 + RecordSize("f"));
  PutBlock(bytes, Deflate(TextLike(1000, 1)));  // and no zero length
  const ToolRun run = CheckBytes(bytes);
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("block 1 at offset"));
}

TEST_F(WafToolTest, CheckReportsANameThatComesTwiceOrCantBeFound) {
  ToolRun run = CheckBytes(LayArchive({{"twice", Bytes()}, {"twice", Bytes()}}));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("entry 1 (twice): the name comes twice"));
  run = CheckBytes(LayArchive({{std::string(260, 'n'), Bytes()}}));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("can't be opened by its name"));
}

TEST_F(WafToolTest, ListAndCatOfADamagedArchiveFail) {
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "f", 1000, 12 + RecordSize("f"));
  PutI32(bytes, 70000);
  bytes.resize(bytes.size() + 100, 0);
  zvtest::WriteBytes(dir.file("bad.waf"), bytes);
  ToolRun run = Waf("list " + Path("bad.waf"));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.out, HasSubstr("damaged  f"));
  run = Waf("cat " + Path("bad.waf") + " f");
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("does not load"));
  run = Waf("list " + Path("missing.waf"));
  EXPECT_EQ(1, run.status);
  EXPECT_THAT(run.err, HasSubstr("cannot open"));
}

}  // namespace
