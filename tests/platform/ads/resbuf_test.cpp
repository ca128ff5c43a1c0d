// Result-buffer chains, acutBuildList, application registration and extended data rules.
#include <cstring>

#include "host_fixture.h"

TEST(Resbuf, LayoutAndCodesMatchTheHost) {
  EXPECT_EQ(offsetof(resbuf, rbnext), 0u);
  EXPECT_EQ(offsetof(resbuf, restype), sizeof(void*));
  EXPECT_EQ(offsetof(resbuf, resval), 2 * sizeof(void*));
  EXPECT_EQ(sizeof(ads_u_val), 24u);
  const int codes[] = {RTNORM, RTERROR, RTCAN, RTREJ, RTFAIL, RTKWORD, RTNONE, RTREAL, RTPOINT, RTSHORT,
                       RTANG,  RTSTR,   RTENAME, RTPICKS, RTORINT, RT3DPOINT, RTLONG, RTLB, RTLE, RTDXF0};
  const int values[] = {5100, -5001, -5002, -5003, -5004, -5005, 5000, 5001, 5002, 5003,
                        5004, 5005,  5006,  5007,  5008,  5009,  5010, 5016, 5017, 5020};
  ASSERT_EQ(std::size(codes), std::size(values));
  ASSERT_EQ(std::size(codes), 20u);
  for (size_t i = 0; i < std::size(codes); ++i) EXPECT_EQ(codes[i], values[i]);
}

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
  resbuf* one = acutNewRb(RTSHORT);
  EXPECT_EQ(one->rbnext, nullptr);
  EXPECT_EQ(one->resval.rint, 0);
  acutRelRb(one);
}

using XData = HostTest;

TEST_F(XData, RegisteredApplicationsOnly) {
  EXPECT_EQ(acdbRegApp(L"TERRADON"), RTNORM);
  EXPECT_EQ(acdbRegApp(L"terradon"), RTERROR) << "already registered";
  EXPECT_EQ(acdbRegApp(L"bad*name"), RTERROR);
  AcDbObjectId id = addEntity();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite), Acad::eOk);
  resbuf* rb = acutBuildList(1001, L"UNKNOWN", 1000, L"x", 0);
  EXPECT_EQ(obj->setXData(rb), Acad::eRegappIdNotFound);
  acutRelRb(rb);
  rb = acutBuildList(1000, L"no app first", 0);
  EXPECT_EQ(obj->setXData(rb), Acad::eInvalidInput);
  acutRelRb(rb);
  obj->close();
}

TEST_F(XData, SettingAnApplicationReplacesOnlyItsGroup) {
  acdbRegApp(L"TERRADON");
  acdbRegApp(L"OTHER");
  AcDbObjectId id = addEntity();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite), Acad::eOk);
  resbuf* rb = acutBuildList(1001, L"TERRADON", 1002, L"{", 1000, L"SOURCE=3", 1002, L"}", 1001, L"OTHER",
                             1070, 5, 0);
  ASSERT_EQ(obj->setXData(rb), Acad::eOk);
  acutRelRb(rb);
  rb = acutBuildList(1001, L"terradon", 1000, L"SOURCE=4", 0);
  ASSERT_EQ(obj->setXData(rb), Acad::eOk);
  acutRelRb(rb);

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

  rb = acutBuildList(1001, L"OTHER", 0);  // an empty group removes the application's data
  ASSERT_EQ(obj->setXData(rb), Acad::eOk);
  acutRelRb(rb);
  EXPECT_EQ(obj->xData(L"OTHER"), nullptr);
  resbuf* all = obj->xData();
  int groups = 0;
  for (resbuf* r = all; r; r = r->rbnext) groups += r->restype == 1001 ? 1 : 0;
  EXPECT_EQ(groups, 1);
  acutRelRb(all);
  obj->close();
}

TEST_F(XData, SizeLimitIs16K) {
  acdbRegApp(L"TERRADON");
  AcDbObjectId id = addEntity();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite), Acad::eOk);
  std::wstring chunk(250, L'x');
  resbuf* head = acutBuildList(1001, L"TERRADON", 0);
  resbuf* tail = head;
  for (int i = 0; i < 70; ++i) {  // 70 * 253 bytes > 16383
    tail->rbnext = acutBuildList(1000, chunk.c_str(), 0);
    tail = tail->rbnext;
  }
  EXPECT_EQ(obj->setXData(head), Acad::eXdataSizeExceeded);
  acutRelRb(head);
  EXPECT_EQ(obj->xData(L"TERRADON"), nullptr) << "nothing stored on failure";
  obj->close();
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
  resbuf* rb = acutBuildList(1001, L"TERRADON", 1000, L"x", 0);
  EXPECT_EQ(obj->setXData(rb), Acad::eNotOpenForWrite);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 1u);
  acutRelRb(rb);
  obj->close();
}
