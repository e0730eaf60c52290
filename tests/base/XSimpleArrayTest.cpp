#include <gtest/gtest.h>

#include "Base/XSimpleArray.h"
#include "support/TestSupport.h"

namespace {

TEST(XSimpleArray, StartsEmptyWithItsCapacityInPlace) {
  XSimpleArray<int, 7> array;
  EXPECT_EQ(0, array.size());
  EXPECT_TRUE(array.empty());
  EXPECT_EQ(7, array.capacity());
  EXPECT_EQ(sizeof(int) + 7 * sizeof(int), sizeof array);
}

TEST(XSimpleArray, PushBackStoresAtNextThenCounts) {
  XSimpleArray<const char*, 7> array;
  array.push_back("zero");
  array.push_back("one");
  EXPECT_EQ(2, array.size());
  EXPECT_STREQ("zero", array[0]);
  EXPECT_STREQ("one", array[1]);
}

TEST(XSimpleArray, SeventhPushBackOfSevenSucceeds) {
  XSimpleArray<int, 7> array;
  for (int i = 0; i < 7; ++i) array.push_back(i * 10);
  EXPECT_EQ(7, array.size());
  EXPECT_EQ(60, array[6]);
}

TEST(XSimpleArrayDeathTest, EighthPushBackOfSevenFailsTheAssertion) {
  const std::string text = zvtest::AssertText(
      "Src/Base/XSimpleArray.h", 33,
      "void XSimpleArray<T, TLength>::push_back(const T&) [with T = int; int TLength = 7]",
      "(mNext<TLength) && \"XSimpleArray Out of Range\\r\\n\"");
  XSimpleArray<int, 7> array;
  for (int i = 0; i < 7; ++i) array.push_back(i);
  EXPECT_DEATH(array.push_back(7), zvtest::Literal(text));
}

}  // namespace
