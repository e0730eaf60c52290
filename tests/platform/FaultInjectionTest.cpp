#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>

#include <string>

#include "AtomicFile.h"
#include "Base/File.h"
#include "BaseUtils.h"
#include "SolvaFileOps.h"
#include "solva/Device.h"
#include "solva/FaultInjection.h"
#include "support/TestSupport.h"

namespace {

using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::ReadText;
using zvtest::TempDir;
using zvtest::WriteText;

class FaultInjectionTest : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override {
    unsetenv("SOLVA_POWER_CUT_AFTER");
    solva::ResetDevice();
  }
  TempDir dir;
};

TEST_F(FaultInjectionTest, EveryFileOperationOfTheDeviceIsCounted) {
  solva::SetPowerCutAfter(0);
  EXPECT_EQ(0, solva::FileOperationCount());
  FILE* stream = fopenAtomic(dir.file("a").c_str(), "wb");
  EXPECT_EQ(1, solva::FileOperationCount());
  fcloseAtomic(stream);
  EXPECT_EQ(2, solva::FileOperationCount());
  {
    File file(dir.file("b").c_str(), "wb");  // open: 3
    file.writeInt(7);                        // 4
    file.writeString("seven");               // 5, one write however many bytes
    file.write("x", 1, 1);                   // 6
  }                                          // close: 7
  EXPECT_EQ(7, solva::FileOperationCount());
  EXPECT_EQ(0, solvaRename(dir.file("a").c_str(), dir.file("c").c_str()));
  EXPECT_EQ(8, solva::FileOperationCount());
  EXPECT_EQ(0, solvaRemove(dir.file("c").c_str()));
  EXPECT_TRUE(BaseUtils::Instance()->RM(dir.file("b")));
  EXPECT_EQ(10, solva::FileOperationCount());
  EXPECT_EQ(-1, solvaRemove(dir.file("c").c_str())) << "a failed removal is still an operation";
  EXPECT_EQ(11, solva::FileOperationCount());
  // Reading is not an operation that a power cut can break.
  WriteText(dir.file("d"), "text");
  File reader(dir.file("d").c_str(), "rb");
  reader.readInt();
  reader.close();
  EXPECT_EQ(11, solva::FileOperationCount());
}

TEST_F(FaultInjectionTest, ArmedSwitchKillsTheProcessRightAfterTheNthOperation) {
  const std::string path = dir.file("index.bin");
  WriteText(path, "old");
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    solva::SetPowerCutAfter(2);
    FILE* stream = fopenAtomic(path.c_str(), "wb");
    fputs("new", stream);
    fcloseAtomic(stream);  // the second: the file is replaced, then the power goes
    printf("still running\n");
  });
  EXPECT_FALSE(child.exited);
  EXPECT_EQ(SIGKILL, child.signal);
  EXPECT_EQ("", child.out);
  EXPECT_EQ("new", ReadText(path));
}

TEST_F(FaultInjectionTest, CutBetweenOpenAndCloseLeavesTheOldFileWhole) {
  const std::string path = dir.file("index.bin");
  WriteText(path, "old");
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    solva::SetPowerCutAfter(2);
    File file(path.c_str(), "wb");
    file.writeInt(1);  // the second operation
    file.close();
  });
  EXPECT_EQ(SIGKILL, child.signal);
  EXPECT_EQ("old", ReadText(path));
  // The unfinished temporary stays beside it, as after a real power cut.
  EXPECT_EQ(2u, ListFolder(dir.path()).size());
}

TEST_F(FaultInjectionTest, RemovalAndRenameAreCutPoints) {
  WriteText(dir.file("a"), "a");
  WriteText(dir.file("b"), "b");
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    solva::SetPowerCutAfter(2);
    BaseUtils::Instance()->RM(dir.file("a"));
    solvaRename(dir.file("b").c_str(), dir.file("c").c_str());
    BaseUtils::Instance()->RM(dir.file("c"));
  });
  EXPECT_EQ(SIGKILL, child.signal);
  EXPECT_FALSE(Exists(dir.file("a")));
  EXPECT_TRUE(Exists(dir.file("c")));
}

TEST_F(FaultInjectionTest, DisarmedSwitchLetsEverythingRun) {
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    solva::SetPowerCutAfter(1);
    solva::SetPowerCutAfter(0);
    for (int i = 0; i < 5; ++i) solvaRemove(dir.file("none").c_str());
    printf("done %d\n", solva::FileOperationCount());
  });
  EXPECT_TRUE(child.exited);
  EXPECT_EQ("done 5\n", child.out);
  EXPECT_EQ(0, solva::PowerCutAfter());
}

TEST_F(FaultInjectionTest, EnvironmentVariableArmsTheSwitchAtReset) {
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    setenv("SOLVA_POWER_CUT_AFTER", "3", 1);
    solva::ResetDevice();
    printf("armed %d\n", solva::PowerCutAfter());
    fflush(stdout);
    for (int i = 0; i < 5; ++i) {
      solvaRemove(dir.file("none").c_str());
      printf("op %d\n", i + 1);
      fflush(stdout);
    }
  });
  EXPECT_EQ(SIGKILL, child.signal);
  EXPECT_EQ("armed 3\nop 1\nop 2\n", child.out);
}

TEST_F(FaultInjectionTest, MalformedEnvironmentValueArmsNothing) {
  setenv("SOLVA_POWER_CUT_AFTER", "three", 1);
  solva::ResetDevice();
  EXPECT_EQ(0, solva::PowerCutAfter());
}

TEST_F(FaultInjectionTest, WritesWithoutForcingToDiskStillReplaceTheFile) {
  solva::SetSyncWrites(false);
  EXPECT_FALSE(solva::SyncWrites());
  FILE* stream = fopenAtomic(dir.file("x").c_str(), "wb");
  fputs("content", stream);
  EXPECT_EQ(0, fcloseAtomic(stream));
  EXPECT_EQ("content", ReadText(dir.file("x")));
  solva::ResetDevice();
  EXPECT_TRUE(solva::SyncWrites());
}

}  // namespace
