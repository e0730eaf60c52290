#include <gtest/gtest.h>

#include "Base/colorPrintf.h"

namespace {

TEST(ColorPrintf, PrintsLikePrintfWhateverTheColour) {
  testing::internal::CaptureStdout();
  const int red = colorPrintf(ePC_Red, "[%s] %d of %u\n", "MediaCenter", -3, 7u);
  const int plain = colorPrintf(ePC_Default, "%05.1f|%x\n", 2.25, 255);
  EXPECT_EQ("[MediaCenter] -3 of 7\n002.2|ff\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(22, red);
  EXPECT_EQ(9, plain);
}

}  // namespace
