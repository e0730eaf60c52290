#include <gtest/gtest.h>

#include "Base/singleton.h"
#include "support/TestSupport.h"

namespace {

struct Gadget : Singleton<Gadget, Tag_Singleton_Manual> {
  int value = 42;
};

struct Unmade : Singleton<Unmade, Tag_Singleton_Manual> {};

void DestroyGadget() {
  delete Gadget::instance_;
  Gadget::instance_ = nullptr;
}

TEST(Singleton, InstanceIsNullUntilCreated) {
  EXPECT_EQ(nullptr, Unmade::instance_);
  EXPECT_FALSE(Unmade::sIsCreated());
}

TEST(Singleton, CreateStoresTheInstanceAndInstanceReturnsIt) {
  Gadget* made = Gadget::sCreate();
  ASSERT_NE(nullptr, made);
  EXPECT_EQ(made, Gadget::instance_);
  EXPECT_EQ(made, &Gadget::sInstance());
  EXPECT_EQ(42, Gadget::sInstance().value);
  DestroyGadget();
  EXPECT_FALSE(Gadget::sIsCreated());
}

TEST(Singleton, OwnerMayCreateAgainAfterDeletingAndClearing) {
  Gadget::sCreate();
  DestroyGadget();
  EXPECT_NE(nullptr, Gadget::sCreate());
  DestroyGadget();
}

TEST(SingletonDeathTest, SecondCreateFailsTheAssertion) {
  const std::string text = zvtest::AssertText(
      "Src/Base/singleton.h", 22, "static T* Singleton<T, Tag_Singleton_Manual>::sCreate() [with T = {anonymous}::Gadget]",
      "false");
  EXPECT_DEATH(
      {
        Gadget::sCreate();
        Gadget::sCreate();
      },
      zvtest::Literal(text));
}

TEST(SingletonDeathTest, InstanceBeforeCreateFailsTheAssertion) {
  const std::string text = zvtest::AssertText(
      "Src/Base/singleton.h", 40, "static T& Singleton<T, Tag_Singleton_Manual>::sInstance() [with T = {anonymous}::Unmade]",
      "instance_");
  EXPECT_DEATH(Unmade::sInstance(), zvtest::Literal(text));
}

}  // namespace
