#include <gtest/gtest.h>

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

}  // namespace
