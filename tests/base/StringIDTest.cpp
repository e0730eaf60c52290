#include <gtest/gtest.h>

#include <cstring>

#include "Base/StringID.h"

namespace {

size_t PooledCount() {
  size_t count = 0;
  StringID::list* table = StringID::GetStringTable();
  for (int i = 0; i < StringID::kBucketCount; ++i) count += table[i].size();
  return count;
}

TEST(StringIDHash, EmptyTextHashesToZero) { EXPECT_EQ(0u, StringID::HashString("")); }

TEST(StringIDHash, KnownValues) {
  // h = 399283 * (h + 193951 * c) over the bytes, wrapping at 32 bits.
  EXPECT_EQ(4206868493u, StringID::HashString("a"));
  EXPECT_EQ(1307813642u, StringID::HashString("abc"));
  EXPECT_EQ(2326119682u, StringID::HashString("MicrophoneWidget"));
  EXPECT_EQ(2078609889u, StringID::HashString("res/CamCfg.xml"));
}

TEST(StringIDHash, BytesAreTakenAsUnsigned) { EXPECT_EQ(3576309203u, StringID::HashString("\xff")); }

TEST(StringIDPool, AddStringOfNullReturnsNullAndAddsNothing) {
  const size_t before = PooledCount();
  EXPECT_EQ(nullptr, StringID::AddString(nullptr));
  EXPECT_EQ(before, PooledCount());
}

TEST(StringIDPool, EqualTextsGiveTheSamePointer) {
  char first[] = "pool identity";
  char second[] = "pool identity";
  const char* a = StringID::AddString(first);
  const char* b = StringID::AddString(second);
  EXPECT_EQ(a, b);
  EXPECT_NE(static_cast<const char*>(first), a);
  EXPECT_STREQ("pool identity", a);
  EXPECT_EQ(StringID(first), StringID(second));
}

TEST(StringIDPool, NewTextIsAppendedToTheBucketOfItsHash) {
  const char* text = "a text for bucket placement";
  const unsigned bucket = StringID::HashString(text) % 61;
  const size_t before = StringID::GetStringTable()[bucket].size();
  const char* pooled = StringID::AddString(text);
  ASSERT_EQ(before + 1, StringID::GetStringTable()[bucket].size());
  EXPECT_EQ(pooled, StringID::GetStringTable()[bucket].back());
  // Asking again finds it and adds nothing.
  EXPECT_EQ(pooled, StringID::AddString(text));
  EXPECT_EQ(before + 1, StringID::GetStringTable()[bucket].size());
}

TEST(StringIDPool, EmptyTextIsARealPooledTextInBucketZero) {
  const char* empty = StringID::AddString("");
  ASSERT_NE(nullptr, empty);
  EXPECT_NE(StringID::s_EmptyString, empty);
  EXPECT_EQ('\0', empty[0]);
  bool inBucketZero = false;
  for (char* text : StringID::GetStringTable()[0]) inBucketZero |= text == empty;
  EXPECT_TRUE(inBucketZero);

  StringID id("");
  EXPECT_FALSE(id == static_cast<const char*>(nullptr));
  EXPECT_TRUE(id == "");
}

TEST(StringIDCompare, UnsetIdEqualsNull) {
  StringID unset;
  EXPECT_EQ(StringID::s_EmptyString, unset.c_str());
  EXPECT_TRUE(unset == static_cast<const char*>(nullptr));
  EXPECT_TRUE(unset == "");
}

TEST(StringIDCompare, SamePointerIsEqualWithoutLookingAtText) {
  StringID id("same pointer");
  EXPECT_TRUE(id == id.c_str());
}

TEST(StringIDCompare, OtherPointerIsComparedByText) {
  StringID id("compared by text");
  char copy[] = "compared by text";
  char other[] = "compared by txet";
  EXPECT_TRUE(id == copy);
  EXPECT_FALSE(id == other);
}

TEST(StringIDDestroy, FreesTextsAndLeavesTheNodes) {
  StringID::AddString("destroyed text");
  const size_t nodes = PooledCount();
  StringID::Destroy();
  EXPECT_EQ(nodes, PooledCount());
  for (int i = 0; i < StringID::kBucketCount; ++i) {
    for (char* text : StringID::GetStringTable()[i]) EXPECT_EQ(nullptr, text);
  }
  // The pool works again afterwards, with a fresh copy.
  const char* again = StringID::AddString("destroyed text");
  ASSERT_NE(nullptr, again);
  EXPECT_STREQ("destroyed text", again);
  EXPECT_EQ(again, StringID::AddString("destroyed text"));
}

}  // namespace
