#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Base/HeapList.h"
#include "Base/HeapVector.h"

namespace {

struct Counted {
  explicit Counted(int* deaths) : mDeaths(deaths) {}
  Counted(const Counted& other) = default;
  ~Counted() { ++*mDeaths; }
  int* mDeaths;
};

TEST(HeapVector, HasTheLayoutOfTheStandardVector) {
  EXPECT_EQ(sizeof(std::vector<int>), sizeof(HeapVector<int>));
  EXPECT_EQ(3 * sizeof(void*), sizeof(HeapVector<int>));
}

TEST(HeapVector, DestroysItsElements) {
  int deaths = 0;
  {
    HeapVector<Counted> vector;
    vector.reserve(3);
    for (int i = 0; i < 3; ++i) vector.push_back(Counted(&deaths));
    deaths = 0;  // the temporaries
  }
  EXPECT_EQ(3, deaths);
}

TEST(HeapList, DestroysItsElementsAndKeepsOrder) {
  int deaths = 0;
  {
    HeapList<std::string> names;
    names.push_back("b");
    names.push_front("a");
    names.push_back("c");
    EXPECT_EQ("a", names.front());
    EXPECT_EQ("c", names.back());
    HeapList<Counted> counted;
    counted.push_back(Counted(&deaths));
    counted.push_back(Counted(&deaths));
    deaths = 0;
  }
  EXPECT_EQ(2, deaths);
}

}  // namespace
