#include <assert.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "Base/XAssert.h"
#include "support/TestSupport.h"

namespace {

struct AssertionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void Throw(const char* expression, const char* reason) {
  throw AssertionError(std::string(expression) + (reason ? std::string(" / ") + reason : ""));
}

TEST(XAssert, TrueExpressionDoesNothing) {
  const zvtest::ChildResult result = zvtest::RunInChild([] { XASSERT(1 + 1 == 2); });
  EXPECT_FALSE(result.died());
  EXPECT_EQ("", result.out);
}

TEST(XAssertDeathTest, FailurePrintsTheExpressionAndFaults) {
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    int* pointer = nullptr;
    XASSERT(pointer);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: pointer\n", result.out);
}

TEST(XAssertDeathTest, FailureWithReasonPrintsBoth) {
  const zvtest::ChildResult result =
      zvtest::RunInChild([] { XASSERT_MSG(!!!"Both folder and name are supplied.", folder_name_exclusive_error); });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: !!!\"Both folder and name are supplied.\" (folder_name_exclusive_error)\n", result.out);
}

TEST(XAssert, InstalledHandlerTurnsTheFailureIntoAnException) {
  const XAssertHandler before = XAssertSetHandler(Throw);
  testing::internal::CaptureStdout();
  try {
    XASSERT(2 < 1);
    FAIL() << "the handler did not throw";
  } catch (const AssertionError& error) {
    EXPECT_STREQ("2 < 1", error.what());
  }
  EXPECT_EQ("Assertion failed: 2 < 1\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(Throw, XAssertSetHandler(before));
}

void FailAtAGivenLine(int* pointer) { ASSERT_AT_LINE(pointer, 4321); }

TEST(AssertAtLineDeathTest, ReportsTheGivenLineWithTheFileAndTheFunction) {
  EXPECT_DEATH(FailAtAGivenLine(nullptr), zvtest::Literal(zvtest::AssertText(
                                              "tests/base/XAssertTest.cpp", 4321,
                                              "void {anonymous}::FailAtAGivenLine(int*)", "pointer")));
}

TEST(AssertAtLine, ATrueExpressionDoesNothing) {
  int value = 1;
  ASSERT_AT_LINE(&value != nullptr, 1);
  EXPECT_EQ(1, value);
}

// The compiler's messages and the debugger see every line where it is: no source
// renumbers its lines to place an assertion's reported line.
TEST(AssertAtLine, NoSourceRenumbersItsLines) {
  for (const char* tree : {"Src", "src"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(std::string(ZV_SOURCE_DIR) + "/" + tree)) {
      if (!entry.is_regular_file()) continue;
      const std::string text = zvtest::ReadText(entry.path().string());
      EXPECT_EQ(std::string::npos, text.find("\n#line ")) << entry.path();
    }
  }
}

}  // namespace
