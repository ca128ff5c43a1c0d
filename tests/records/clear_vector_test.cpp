// SiteUtil::clearVector: callers reuse the emptied vectors, so the capacity must survive.
#include "TDUtilW.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

template <typename T>
void expectEmptiedKeepingCapacity() {
  std::vector<T> v(5);
  v.reserve(64);
  const auto capacity = v.capacity();
  SiteUtil::clearVector(v);
  EXPECT_TRUE(v.empty());
  EXPECT_EQ(v.capacity(), capacity);
  SiteUtil::clearVector(v);  // already empty: still fine
  EXPECT_TRUE(v.empty());
  EXPECT_EQ(v.capacity(), capacity);
}

TEST(ClearVector, EmptiesEveryKindKeepingCapacity) {
  expectEmptiedKeepingCapacity<SurvPoint>();
  expectEmptiedKeepingCapacity<DP4>();
  expectEmptiedKeepingCapacity<TPolyVertex>();
  expectEmptiedKeepingCapacity<AcDbObjectId>();
}

}  // namespace
