// The test programs' main: GoogleTest, plus the shut-down the title's own exit
// does for process-wide pools, so that the leak checker sees a clean end.
#include <gtest/gtest.h>

#include "Base/StringID.h"

namespace {
class ProcessShutDown : public testing::Environment {
 public:
  void TearDown() override { StringID::Destroy(); }
};
}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new ProcessShutDown);
  return RUN_ALL_TESTS();
}
