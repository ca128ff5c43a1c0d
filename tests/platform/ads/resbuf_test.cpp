// Result-buffer chains, acutBuildList, application registration and extended data rules.
#include <cstring>

#include "host_fixture.h"

TEST(Resbuf, BuildListTakesEachValueKind) {
  ads_point p = {1, 2, 3};
  ads_name name = {42, 0};
  char bytes[] = {1, 2, 3};
  ads_binary bin{3, bytes};
  resbuf* rb = acutBuildList(RTSTR, L"abc", RTREAL, 1.5, RTSHORT, 12, RTLONG, 70000, RT3DPOINT, p, RTPOINT, p,
                             RTENAME, name, RTLB, RTLE, 1004, &bin, 1070, 3, 1071, 99, RTNONE);
  ASSERT_NE(rb, nullptr);
  int n = 0;
  for (resbuf* r = rb; r; r = r->rbnext) ++n;
  EXPECT_EQ(n, 12);
  EXPECT_STREQ(rb->resval.rstring, L"abc");
  EXPECT_EQ(rb->rbnext->resval.rreal, 1.5);
  EXPECT_EQ(rb->rbnext->rbnext->resval.rint, 12);
  EXPECT_EQ(rb->rbnext->rbnext->rbnext->resval.rlong, 70000);
  resbuf* pt = rb->rbnext->rbnext->rbnext->rbnext;
  EXPECT_EQ(pt->resval.rpoint[2], 3.0);
  EXPECT_EQ(pt->rbnext->rbnext->resval.rlname[0], 42);
  resbuf* binRb = pt->rbnext->rbnext->rbnext->rbnext->rbnext;
  ASSERT_EQ(binRb->restype, 1004);
  EXPECT_EQ(binRb->resval.rbinary.clen, 3);
  EXPECT_EQ(std::memcmp(binRb->resval.rbinary.buf, bytes, 3), 0);
  EXPECT_EQ(acutRelRb(rb), RTNORM);
  EXPECT_EQ(acutBuildList(RTVOID + 1000, 0), nullptr) << "unknown code";
}

using XData = HostTest;

namespace {

// Sets and releases the chain.
Acad::ErrorStatus setXData(AcDbObject* obj, resbuf* rb) {
  const Acad::ErrorStatus es = obj->setXData(rb);
  acutRelRb(rb);
  return es;
}

}  // namespace

TEST_F(XData, RefusesUnregisteredAppsOversizedDataAndReadOnlyObjects) {
  EXPECT_EQ(acdbRegApp(L"TERRADON"), RTNORM);
  EXPECT_EQ(acdbRegApp(L"terradon"), RTERROR) << "already registered";
  EXPECT_EQ(acdbRegApp(L"bad*name"), RTERROR);
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, addEntity(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(setXData(obj, acutBuildList(1001, L"UNKNOWN", 1000, L"x", 0)), Acad::eRegappIdNotFound);
  EXPECT_EQ(setXData(obj, acutBuildList(1000, L"no app first", 0)), Acad::eInvalidInput);
  const std::wstring chunk(250, L'x');
  resbuf* head = acutBuildList(1001, L"TERRADON", 0);
  resbuf* tail = head;
  for (int i = 0; i < 70; ++i) tail = tail->rbnext = acutBuildList(1000, chunk.c_str(), 0);  // 70 * 253 > 16383 bytes
  EXPECT_EQ(setXData(obj, head), Acad::eXdataSizeExceeded);
  EXPECT_EQ(obj->xData(L"TERRADON"), nullptr) << "nothing stored on failure";
  ASSERT_EQ(obj->downgradeOpen(), Acad::eOk);
  EXPECT_EQ(setXData(obj, acutBuildList(1001, L"TERRADON", 1000, L"x", 0)), Acad::eNotOpenForWrite);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 1u);
  obj->close();
}

TEST_F(XData, SettingAnApplicationReplacesOnlyItsGroup) {
  acdbRegApp(L"TERRADON");
  acdbRegApp(L"OTHER");
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, addEntity(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(setXData(obj, acutBuildList(1001, L"TERRADON", 1002, L"{", 1000, L"SOURCE=3", 1002, L"}", 1001, L"OTHER",
                                        1070, 5, 0)),
            Acad::eOk);
  ASSERT_EQ(setXData(obj, acutBuildList(1001, L"terradon", 1000, L"SOURCE=4", 0)), Acad::eOk);
  resbuf* mine = obj->xData(L"TERRADON");
  ASSERT_NE(mine, nullptr);
  EXPECT_EQ(mine->restype, 1001);
  EXPECT_STREQ(mine->rbnext->resval.rstring, L"SOURCE=4");
  EXPECT_EQ(mine->rbnext->rbnext, nullptr);
  acutRelRb(mine);
  resbuf* other = obj->xData(L"OTHER");
  ASSERT_NE(other, nullptr);
  EXPECT_EQ(other->rbnext->resval.rint, 5);
  acutRelRb(other);

  ASSERT_EQ(setXData(obj, acutBuildList(1001, L"OTHER", 0)), Acad::eOk);  // an empty group removes the data
  EXPECT_EQ(obj->xData(L"OTHER"), nullptr);
  resbuf* all = obj->xData();
  int groups = 0;
  for (resbuf* r = all; r; r = r->rbnext) groups += r->restype == 1001 ? 1 : 0;
  EXPECT_EQ(groups, 1);
  acutRelRb(all);
  obj->close();
}
