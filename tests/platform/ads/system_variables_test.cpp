// acedGetVar and acedSetVar: names, types, read-only variables, values the drawing refuses,
// and host strings in results.
#include <cstring>
#include <iterator>
#include <string>

#include "host_fixture.h"
#include "tdhost/screen.h"

namespace {

using SystemVariables = HostTest;

// The string value of a variable, or "<status>" when acedGetVar fails.
std::wstring stringVar(const ACHAR* name) {
  resbuf* rb = acutNewRb(RTSTR);
  const int status = acedGetVar(name, rb);
  std::wstring value = status == RTNORM && rb->restype == RTSTR ? rb->resval.rstring : L"<" + std::to_wstring(status) + L">";
  acutRelRb(rb);
  return value;
}

int setString(const ACHAR* name, const ACHAR* value) {
  resbuf* rb = acutBuildList(RTSTR, value, 0);
  const int status = acedSetVar(name, rb);
  acutRelRb(rb);
  return status;
}

AcDbObjectId addLayer(AcDbDatabase& db, const ACHAR* name, bool frozen) {
  AcDbLayerTable* table = nullptr;
  EXPECT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  EXPECT_EQ(layer->setName(name), Acad::eOk);
  EXPECT_EQ(layer->setIsFrozen(frozen), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(table->add(id, layer), Acad::eOk);
  layer->close();
  table->close();
  return id;
}

}  // namespace

TEST_F(SystemVariables, NamesIgnoreCaseAndUnknownNamesAreRejected) {
  EXPECT_EQ(stringVar(L"clayer"), L"0");
  EXPECT_EQ(stringVar(L"TextStyle"), L"Standard");
  resbuf rb{};
  EXPECT_EQ(acedGetVar(L"NOSUCHVARIABLE", &rb), RTREJ);
  EXPECT_EQ(setString(L"NOSUCHVARIABLE", L"x"), RTREJ);
  EXPECT_EQ(acedGetVar(nullptr, &rb), RTERROR);
  EXPECT_EQ(acedGetVar(L"CLAYER", nullptr), RTERROR);
}

TEST_F(SystemVariables, ClayerTakesOnlyAnExistingThawedLayer) {
  addLayer(*db, L"Survey", false);
  const AcDbObjectId frozen = addLayer(*db, L"Archive", true);
  EXPECT_EQ(setString(L"CLAYER", L"survey"), RTNORM);
  EXPECT_EQ(stringVar(L"CLAYER"), L"Survey") << "the record's own spelling";
  EXPECT_EQ(setString(L"CLAYER", L"Missing"), RTREJ);
  EXPECT_EQ(setString(L"CLAYER", L"Archive"), RTREJ);
  EXPECT_EQ(stringVar(L"CLAYER"), L"Survey");
  EXPECT_NE(db->clayer(), frozen);
  resbuf number{};
  number.restype = RTSHORT;
  number.resval.rint = 1;
  EXPECT_EQ(acedSetVar(L"CLAYER", &number), RTREJ) << "wrong type";
}

TEST_F(SystemVariables, ReadOnlyVariablesRefuseWritesAndKeepTheirValues) {
  const char* const names[] = {"VIEWCTR", "VIEWSIZE", "VIEWDIR", "TARGET", "VIEWTWIST", "LENSLENGTH",
                               "SCREENSIZE", "DIMSTYLE", "UCSORG", "UCSXDIR", "EXTMIN", "EXTMAX"};
  ASSERT_EQ(std::size(names), 12u);
  for (const char* narrow : names) {
    const std::wstring name(narrow, narrow + std::strlen(narrow));
    resbuf before{}, after{};
    ASSERT_EQ(acedGetVar(name.c_str(), &before), RTNORM) << narrow;
    if (before.restype == RTSTR) {
      EXPECT_EQ(setString(name.c_str(), L"Standard"), RTREJ) << narrow;
      acutDelString(before.resval.rstring);
      continue;
    }
    resbuf changed = before;
    double& x = before.restype == RTREAL ? changed.resval.rreal : changed.resval.rpoint[X];
    x += 7.0;
    EXPECT_EQ(acedSetVar(name.c_str(), &changed), RTREJ) << narrow;
    ASSERT_EQ(acedGetVar(name.c_str(), &after), RTNORM);
    EXPECT_EQ(std::memcmp(&after.resval, &before.resval, sizeof before.resval), 0) << narrow;
  }
}

TEST_F(SystemVariables, RealsTakeIntegersAndRefuseWhatTheDrawingRefuses) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = 3;
  EXPECT_EQ(acedSetVar(L"TEXTSIZE", &rb), RTNORM);
  EXPECT_EQ(db->textsize(), 3.0);
  rb.restype = RTREAL;
  rb.resval.rreal = 0.0;
  EXPECT_EQ(acedSetVar(L"TEXTSIZE", &rb), RTREJ);
  EXPECT_EQ(acedSetVar(L"LTSCALE", &rb), RTREJ);
  EXPECT_EQ(setString(L"TEXTSIZE", L"2.5"), RTREJ);
  EXPECT_EQ(db->textsize(), 3.0);
  EXPECT_EQ(setString(L"TEXTSTYLE", L"NoSuchStyle"), RTREJ);
  EXPECT_EQ(setString(L"CELTYPE", L"continuous"), RTNORM);
  EXPECT_EQ(db->celtype(), db->continuousLinetype());
}

TEST_F(SystemVariables, InsbaseIsReadAndSetInTheUcs) {
  // UCS at (10, 0, 0) turned 90 degrees: its x axis is world y, its y axis world -x.
  ASSERT_EQ(db->setUcs(AcGePoint3d(10, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(-1, 0, 0)), Acad::eOk);
  resbuf rb{};
  rb.restype = RT3DPOINT;
  rb.resval.rpoint[X] = 1;
  rb.resval.rpoint[Y] = 2;
  rb.resval.rpoint[Z] = 3;
  ASSERT_EQ(acedSetVar(L"INSBASE", &rb), RTNORM);
  EXPECT_TRUE(db->insbase().isEqualTo(AcGePoint3d(10 - 2, 1, 3))) << db->insbase().x << " " << db->insbase().y;
  resbuf back{};
  ASSERT_EQ(acedGetVar(L"INSBASE", &back), RTNORM);
  EXPECT_NEAR(back.resval.rpoint[X], 1, 1e-12);
  EXPECT_NEAR(back.resval.rpoint[Y], 2, 1e-12);
  EXPECT_NEAR(back.resval.rpoint[Z], 3, 1e-12);
}

TEST_F(SystemVariables, WithoutAWorkingDatabaseOnlySessionVariablesAnswer) {
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(stringVar(L"CLAYER"), L"<" + std::to_wstring(RTERROR) + L">");
  resbuf rb{};
  ASSERT_EQ(acedGetVar(L"SCREENSIZE", &rb), RTNORM);
  EXPECT_EQ(rb.restype, RTPOINT);
  EXPECT_EQ(rb.resval.rpoint[X], tdhost::screenSize().width);
  EXPECT_EQ(rb.resval.rpoint[Y], tdhost::screenSize().height);
}
