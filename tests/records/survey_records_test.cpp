// The exported value records: construction, copying, and the tolerances of their comparisons.
#include "TDUtilW.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <initializer_list>
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

TEST(SurvPoint, SetFillsEverythingButTagAndTakesNullAsEmpty) {
  SurvPoint p;
  EXPECT_EQ(p.tag, 0);
  EXPECT_EQ(p.attrib, 0);
  EXPECT_STREQ(p.handle, L"");
  p.tag = 7;
  const double pt[3] = {100.5, 200.25, 3.125};
  // Texts at their full capacities.
  p.set(pt, L"123456789012345", L"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345", 9, L"FFFFFFFFFFFFFFFF");
  EXPECT_EQ(p.tag, 7);
  EXPECT_EQ(p.attrib, 9);
  EXPECT_EQ(std::tie(p.x, p.y, p.z), std::make_tuple(100.5, 200.25, 3.125));
  EXPECT_STREQ(p.pno, L"123456789012345");
  EXPECT_STREQ(p.code, L"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
  EXPECT_STREQ(p.handle, L"FFFFFFFFFFFFFFFF");
  p.set(pt, nullptr, nullptr, 0, nullptr);
  EXPECT_STREQ(p.pno, L"");
  EXPECT_STREQ(p.code, L"");
  EXPECT_STREQ(p.handle, L"");
  EXPECT_EQ(p.tag, 7);
}

TEST(SurvPoint, CopyAndAssignmentCarryEveryField) {
  SurvPoint a = makePoint(1, 2, 3, L"P1", L"TREE", L"2A");
  a.tag = 5;
  a.attrib = 8;
  const SurvPoint copy(a);
  SurvPoint assigned;
  std::wmemset(assigned.code, L'Z', 32);
  assigned.code[32] = L'\0';
  assigned = a;
  for (const SurvPoint* p : std::initializer_list<const SurvPoint*>{&copy, &assigned}) {
    EXPECT_EQ(std::tie(p->tag, p->attrib), std::make_tuple(5, 8));
    EXPECT_EQ(std::tie(p->x, p->y, p->z), std::make_tuple(1.0, 2.0, 3.0));
    EXPECT_STREQ(p->pno, L"P1");
    EXPECT_STREQ(p->code, L"TREE");
    EXPECT_STREQ(p->handle, L"2A");
  }
  EXPECT_EQ(assigned.code[5], L'Z');  // texts are copied up to their NUL only
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
  const TPolyVertex zero;
  EXPECT_EQ(std::tie(zero.x, zero.y, zero.z, zero.bulge), std::make_tuple(0.0, 0.0, 0.0, 0.0));
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

auto fieldsOf(const DP4& h) { return std::make_tuple(h.d[0], h.d[1], h.d[2], h.d[3], h.source, h.entity); }

TEST(DP4, StartsAtZeroAndAssignmentCopiesAllSixMembers) {
  DP4 a;
  EXPECT_EQ(fieldsOf(a), std::make_tuple(0.0, 0.0, 0.0, 0.0, 0, std::int64_t{0}));
  std::tie(a.d[0], a.d[1], a.d[2], a.d[3], a.source, a.entity) = std::make_tuple(1.0, 2.0, 3.0, 4.0, 77, -5);
  DP4 copied, moved;
  copied = a;
  moved = DP4(a);
  EXPECT_EQ(fieldsOf(copied), fieldsOf(a));
  EXPECT_EQ(fieldsOf(moved), fieldsOf(a));
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

TEST(ConnectData, CopyAndAssignmentCarryNamesAndFlag) {
  const ConnectData a = connect(L"PIPE", L"MH-1", L"MH-2", true);
  const ConnectData copy(a);
  ConnectData assigned;
  assigned = a;
  for (const ConnectData* p : std::initializer_list<const ConnectData*>{&copy, &assigned}) {
    EXPECT_STREQ(p->name1, L"PIPE");
    EXPECT_STREQ(p->name2, L"MH-1");
    EXPECT_STREQ(p->name3, L"MH-2");
    EXPECT_TRUE(p->flag);
  }
}

TEST(CompanionRecords, ConstructWhatTheyPromise) {
  PtAnnotParm parm;
  EXPECT_EQ(parm.point.tag, 0);
  EXPECT_STREQ(parm.point.code, L"");
  parm.point = makePoint(1, 2, 3, L"7", L"MH", L"1F");
  const PtAnnotParm parmCopy(parm);
  EXPECT_STREQ(parmCopy.point.code, L"MH");

  const CCodeTemplate tmpl;
  EXPECT_STREQ(tmpl.code, L"");
  EXPECT_STREQ(tmpl.text1, L"");
  EXPECT_STREQ(tmpl.text2, L"");
  EXPECT_EQ(std::tie(tmpl.int1, tmpl.int2, tmpl.int3, tmpl.int4, tmpl.int5), std::make_tuple(0, 0, 0, 0, 0));

  const BatCurvInfo info;
  EXPECT_EQ(std::tie(info.value1, info.value2), std::make_tuple(0.0, 0.0));
}

}  // namespace
