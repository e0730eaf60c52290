// The exit reasons carry whatever number a title reports: both enumerations are
// ints, so every value of an int is one of theirs and reads back as it was.
#include <gtest/gtest.h>

#include <type_traits>

#include "BaseFramework/Logging.h"

namespace {

TEST(ExitReason, BothEnumerationsAreInts) {
  EXPECT_TRUE((std::is_same<std::underlying_type<TitleExitReason>::type, int>::value));
  EXPECT_TRUE((std::is_same<std::underlying_type<ActivityExitReason>::type, int>::value));
}

TEST(ExitReason, NumbersBeyondTheNamedOnesReadBackAsTheyWere) {
  // Through memory, where a value outside an unfixed enumeration's range is undefined.
  volatile TitleExitReason title = static_cast<TitleExitReason>(7);
  volatile ActivityExitReason activity = static_cast<ActivityExitReason>(-2);
  EXPECT_EQ(7, static_cast<int>(title));
  EXPECT_EQ(-2, static_cast<int>(activity));
}

}  // namespace
