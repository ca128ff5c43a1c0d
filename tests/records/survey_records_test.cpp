// The exported value records: construction, copying, and the tolerances of their comparisons.
#include "TDUtilW.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <random>
#include <tuple>
#include <vector>

namespace {

SurvPoint makePoint(double x, double y, double z, const wchar_t* pno, const wchar_t* code, const wchar_t* handle) {
  SurvPoint p;
  const double pt[3] = {x, y, z};
  p.set(pt, pno, code, 0, handle);
  return p;
}

TEST(SurvPoint, SetAndCopyCarryTextsAtFullCapacityAndNullAsEmpty) {
  SurvPoint p;
  p.tag = 7;
  const double pt[3] = {100.5, 200.25, 3.125};
  p.set(pt, L"123456789012345", L"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345", 9, L"FFFFFFFFFFFFFFFF");
  SurvPoint assigned;
  std::wmemset(assigned.code, L'Z', 32);
  assigned.code[32] = L'\0';
  assigned = SurvPoint(p);
  EXPECT_EQ(std::tie(assigned.tag, assigned.attrib), std::make_tuple(7, 9));  // set leaves the tag
  EXPECT_EQ(std::tie(assigned.x, assigned.y, assigned.z), std::make_tuple(100.5, 200.25, 3.125));
  EXPECT_STREQ(assigned.pno, L"123456789012345");
  EXPECT_STREQ(assigned.code, L"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
  EXPECT_STREQ(assigned.handle, L"FFFFFFFFFFFFFFFF");
  p.set(pt, nullptr, nullptr, 0, nullptr);
  EXPECT_STREQ(p.pno, L"");
  EXPECT_STREQ(p.code, L"");
  EXPECT_STREQ(p.handle, L"");
}

// Each case changes one field of a base point; equality must be symmetric.
struct PointChange {
  const char* what;
  void (*change)(SurvPoint&);
  int equal;
};

TEST(SurvPoint, EqualityToleratesOnlyWhatItShould) {
  static const PointChange kCases[] = {
      {"attrib", [](SurvPoint& p) { p.attrib = 8; }, 1},
      {"case of code", [](SurvPoint& p) { std::wcscpy(p.code, L"edge+TOP"); }, 1},
      {"case of pno", [](SurvPoint& p) { std::wcscpy(p.pno, L"p12"); }, 1},
      {"case of a handle digit", [](SurvPoint& p) { std::wcscpy(p.handle, L"1a2F"); }, 0},
      {"code", [](SurvPoint& p) { std::wcscpy(p.code, L"EDGE"); }, 0},
      {"pno", [](SurvPoint& p) { std::wcscpy(p.pno, L"P13"); }, 0},
      {"tag", [](SurvPoint& p) { p.tag = 1; }, 0},
      {"x by 1e-6", [](SurvPoint& p) { p.x = 1e-6; }, 1},
      {"y by 1e-6", [](SurvPoint& p) { p.y = -1e-6; }, 1},
      {"z by 1e-6", [](SurvPoint& p) { p.z = 1e-6; }, 1},
      {"x by 1.5e-6", [](SurvPoint& p) { p.x = 1.5e-6; }, 0},
      {"y by 1.5e-6", [](SurvPoint& p) { p.y = 1.5e-6; }, 0},
      {"z by 1.5e-6", [](SurvPoint& p) { p.z = -1.5e-6; }, 0},
  };
  static_assert(std::size(kCases) == 13);
  const SurvPoint base = makePoint(0, 0, 0, L"P12", L"EDGE+top", L"1A2F");
  for (const PointChange& c : kCases) {
    SurvPoint other(base);
    c.change(other);
    EXPECT_EQ(base == other, c.equal) << c.what;
    EXPECT_EQ(other == base, c.equal) << c.what;
  }
}

TEST(SurvPoint, OrdersByXThenExactY) {
  const SurvPoint a = makePoint(1, 5, 0, L"", L"", L"");
  const SurvPoint b = makePoint(1 + 1e-12, 0, 0, L"", L"", L"");
  const SurvPoint c = makePoint(1, 6, -9, L"X", L"", L"");
  const SurvPoint d = makePoint(1, 5, 9, L"Y", L"", L"");
  EXPECT_EQ(a < b, 1);  // no tolerance on x
  EXPECT_EQ(b < a, 0);
  EXPECT_EQ(a < c, 1);  // equal x: by y
  EXPECT_EQ(c < a, 0);
  EXPECT_EQ(a < d, 0);  // equal x and y: neither way, z and texts ignored
  EXPECT_EQ(d < a, 0);
}

TEST(TPolyVertex, EqualityIgnoresZAndUsesPlanAndBulgeTolerances) {
  const auto equalsHalfBulgeAtOrigin = [](double x, double y, double z, double bulge) {
    TPolyVertex a, b;
    a.bulge = 0.5;
    b.x = x;
    b.y = y;
    b.z = z;
    b.bulge = bulge;
    return a == b;
  };
  EXPECT_EQ(equalsHalfBulgeAtOrigin(1e-6, -1e-6, 42.0, 0.50001), 1);
  EXPECT_EQ(equalsHalfBulgeAtOrigin(0, 0, 0, 0.50002), 0);
  EXPECT_EQ(equalsHalfBulgeAtOrigin(1.5e-6, 0, 0, 0.5), 0);
  EXPECT_EQ(equalsHalfBulgeAtOrigin(0, 1.5e-6, 0, 0.5), 0);
}

TEST(DP4, StationMatchIsStrictlyWithin1em4) {
  DP4 h;
  EXPECT_EQ(h == 9.9e-5, 1);
  EXPECT_EQ(h == -9.9e-5, 1);
  EXPECT_EQ(h == 1e-4, 0);
  EXPECT_EQ(h == -1e-4, 0);
  h.d[0] = 10.0;
  EXPECT_EQ(h == 10.00009, 1);
  // 10.0001 - 10.0 rounds to just below 1e-4 in binary, so it still matches.
  EXPECT_EQ(h == 10.0001, 1);
  EXPECT_EQ(h == 10.00011, 0);
}

TEST(DP4, SortingRunsByStationThenElevation) {
  std::mt19937 rng(11);
  std::uniform_int_distribution<int> station(0, 5), elevation(-3, 3);
  std::vector<DP4> hits(200);
  for (DP4& h : hits) {
    h.d[0] = station(rng) * 2.5;
    h.d[1] = elevation(rng) * 0.5;
  }
  std::sort(hits.begin(), hits.end());
  EXPECT_TRUE(std::is_sorted(hits.begin(), hits.end(), [](const DP4& a, const DP4& b) {
    return std::tie(a.d[0], a.d[1]) < std::tie(b.d[0], b.d[1]);
  }));
}

ConnectData connect(const wchar_t* n1, const wchar_t* n2, const wchar_t* n3, bool flag = false) {
  ConnectData c;
  std::wcscpy(c.name1, n1);
  std::wcscpy(c.name2, n2);
  std::wcscpy(c.name3, n3);
  c.flag = flag;
  return c;
}

TEST(ConnectData, EmptyNamesAreWildcards) {
  const ConnectData empty;
  EXPECT_FALSE(empty.flag);
  EXPECT_EQ(empty == connect(L"", L"", L""), 1);
  const ConnectData a = connect(L"A", L"", L"C");
  EXPECT_EQ(a == connect(L"A", L"B", L""), 1);
  EXPECT_EQ(a == empty, 1);
  EXPECT_EQ(a == connect(L"A", L"B", L"C", true), 1);  // flag takes no part
  EXPECT_EQ(a == connect(L"a", L"", L""), 0);          // case-sensitive where both are set
  EXPECT_EQ(a == connect(L"A", L"", L"D"), 0);
}

}  // namespace
