#include <gtest/gtest.h>

#include <vector>

#include "Canvas/VT/ZvCanvasTypes.h"

namespace {

TEST(ClearYV12Buffer, LumaLeftOfWidthChromaToThePitch) {
  std::vector<uint8_t> buffer(8 * 3 + 4, 0x55);
  ClearYV12Buffer(buffer.data(), 8, 5, 3);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 8; ++x) EXPECT_EQ(x < 5 ? 0 : 128, buffer[y * 8 + x]) << x << "," << y;
  }
  for (int i = 24; i < 28; ++i) EXPECT_EQ(0x55, buffer[i]);  // past the last row
}

TEST(ClearYV12Buffer, PitchEqualToWidthWritesNoChroma) {
  std::vector<uint8_t> buffer(4 * 3 + 4, 0x55);
  ClearYV12Buffer(buffer.data(), 4, 4, 3);
  for (int i = 0; i < 12; ++i) EXPECT_EQ(0, buffer[i]) << i;
  for (int i = 12; i < 16; ++i) EXPECT_EQ(0x55, buffer[i]) << i;
}

TEST(ClearYV12Buffer, HeightZeroDoesNothing) {
  std::vector<uint8_t> buffer(16, 0x55);
  ClearYV12Buffer(buffer.data(), 8, 4, 0);
  EXPECT_EQ(std::vector<uint8_t>(16, 0x55), buffer);
}

}  // namespace
