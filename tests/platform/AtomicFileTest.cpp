#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "AtomicFile.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::ReadText;
using zvtest::TempDir;
using zvtest::WriteText;

TEST(AtomicFile, WriteReplacesTheWholeFileAtClose) {
  TempDir dir;
  const std::string path = dir.file("index.bin");
  WriteText(path, "old content that is longer than the new one");
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  ASSERT_NE(nullptr, stream);
  fputs("new", stream);
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("new", ReadText(path));
}

TEST(AtomicFile, TargetKeepsItsOldContentUntilClose) {
  TempDir dir;
  const std::string path = dir.file("list.txt");
  WriteText(path, "before");
  FILE* stream = fopenAtomic(path.c_str(), "w");
  ASSERT_NE(nullptr, stream);
  fputs("after", stream);
  fflush(stream);
  EXPECT_EQ("before", ReadText(path));
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("after", ReadText(path));
}

TEST(AtomicFile, WriteCreatesAMissingFile) {
  TempDir dir;
  const std::string path = dir.file("fresh.bin");
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  ASSERT_NE(nullptr, stream);
  fputs("made", stream);
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("made", ReadText(path));
}

TEST(AtomicFile, AppendStartsFromACopyOfTheOldContent) {
  TempDir dir;
  const std::string path = dir.file("UploadAudioList.txt");
  WriteText(path, "line one\n");
  FILE* stream = fopenAtomic(path.c_str(), "a");
  ASSERT_NE(nullptr, stream);
  fputs("line two\n", stream);
  EXPECT_EQ("line one\n", ReadText(path));
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("line one\nline two\n", ReadText(path));
}

TEST(AtomicFile, AppendToAMissingFileStartsEmpty) {
  TempDir dir;
  const std::string path = dir.file("new.txt");
  FILE* stream = fopenAtomic(path.c_str(), "a");
  ASSERT_NE(nullptr, stream);
  fputs("only line\n", stream);
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("only line\n", ReadText(path));
}

TEST(AtomicFile, NoTemporaryRemainsBesideTheTarget) {
  TempDir dir;
  const std::string path = dir.file("target");
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  ASSERT_NE(nullptr, stream);
  EXPECT_EQ(1u, ListFolder(dir.path()).size()) << "the temporary lies beside the target while open";
  ASSERT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ(std::vector<std::string>{"target"}, ListFolder(dir.path()));
}

TEST(AtomicFile, NewFileIsReadableByOthers) {
  TempDir dir;
  const std::string path = dir.file("shared.bin");
  const mode_t mask = umask(022);
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  ASSERT_NE(nullptr, stream);
  ASSERT_EQ(0, fcloseAtomic(stream));
  umask(mask);
  struct stat info;
  ASSERT_EQ(0, stat(path.c_str(), &info));
  EXPECT_EQ(0644u, info.st_mode & 0777u);
}

TEST(AtomicFile, OpenInAMissingFolderFails) {
  TempDir dir;
  errno = 0;
  EXPECT_EQ(nullptr, fopenAtomic(dir.file("no/such/folder/file").c_str(), "wb"));
  EXPECT_EQ(ENOENT, errno);
}

TEST(AtomicFile, ReadModesAreRefused) {
  TempDir dir;
  WriteText(dir.file("f"), "x");
  errno = 0;
  EXPECT_EQ(nullptr, fopenAtomic(dir.file("f").c_str(), "rb"));
  EXPECT_EQ(EINVAL, errno);
}

TEST(AtomicFile, ClosingAPlainStreamJustClosesIt) {
  TempDir dir;
  const std::string path = dir.file("plain");
  FILE* stream = fopen(path.c_str(), "wb");
  ASSERT_NE(nullptr, stream);
  fputs("plain", stream);
  EXPECT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("plain", ReadText(path));
}

TEST(AtomicFile, KilledWriterLeavesTheOldFileWhole) {
  TempDir dir;
  const std::string path = dir.file("resid.bin");
  const std::string old(4096, 'o');
  WriteText(path, old);

  int ready[2];
  ASSERT_EQ(0, pipe(ready));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    close(ready[0]);
    FILE* stream = fopenAtomic(path.c_str(), "wb");
    if (stream == nullptr) _exit(3);
    const std::string chunk(1 << 16, 'n');
    for (int i = 0; i < 16; ++i) fwrite(chunk.data(), 1, chunk.size(), stream);
    fflush(stream);
    // Half written, and on the disk: now the power goes.
    (void)!write(ready[1], "h", 1);
    for (;;) pause();
  }
  close(ready[1]);
  char signal = 0;
  ASSERT_EQ(1, read(ready[0], &signal, 1));
  close(ready[0]);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));

  EXPECT_EQ(old, ReadText(path));
  // Whatever the writer left lies beside the target under another name.
  for (const std::string& name : ListFolder(dir.path())) {
    if (name != "resid.bin") {
      EXPECT_EQ(0u, name.rfind("resid.bin.tmp-", 0)) << name;
    }
  }
}

}  // namespace
