// acedGetVar and acedSetVar: names, types, read-only variables, values the drawing refuses,
// and host strings in results.
#include <string>

#include "host_fixture.h"

namespace {

using SystemVariables = HostTest;

// The string value of a variable (released as a caller does), or "<status>" on failure.
std::wstring stringVar(const ACHAR* name) {
  resbuf* rb = acutNewRb(RTSTR);
  const int status = acedGetVar(name, rb);
  std::wstring value = status == RTNORM ? rb->resval.rstring : L"<" + std::to_wstring(status) + L">";
  acutRelRb(rb);
  return value;
}

int setString(const ACHAR* name, const ACHAR* value) {
  resbuf* rb = acutBuildList(RTSTR, value, 0);
  const int status = acedSetVar(name, rb);
  acutRelRb(rb);
  return status;
}

void addLayer(AcDbDatabase& db, const ACHAR* name, bool frozen) {
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  EXPECT_EQ(layer->setName(name), Acad::eOk);
  EXPECT_EQ(layer->setIsFrozen(frozen), Acad::eOk);
  EXPECT_EQ(table->add(layer), Acad::eOk);
  layer->close();
  table->close();
}

}  // namespace

TEST_F(SystemVariables, NamesIgnoreCaseUnknownOnesAreRejectedAndDrawingOnesNeedADrawing) {
  EXPECT_EQ(stringVar(L"TextStyle"), L"Standard");
  EXPECT_EQ(stringVar(L"NOSUCHVARIABLE"), L"<" + std::to_wstring(RTREJ) + L">");
  EXPECT_EQ(setString(L"NOSUCHVARIABLE", L"x"), RTREJ);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(stringVar(L"clayer"), L"<" + std::to_wstring(RTERROR) + L">");
  resbuf screen{};
  EXPECT_EQ(acedGetVar(L"SCREENSIZE", &screen), RTNORM) << "a variable of the session";
}

TEST_F(SystemVariables, ClayerTakesOnlyAnExistingThawedLayer) {
  addLayer(*db, L"Survey", false);
  addLayer(*db, L"Archive", true);
  EXPECT_EQ(setString(L"CLAYER", L"survey"), RTNORM);
  EXPECT_EQ(stringVar(L"CLAYER"), L"Survey") << "the record's own spelling";
  EXPECT_EQ(setString(L"CLAYER", L"Missing"), RTREJ);
  EXPECT_EQ(setString(L"CLAYER", L"Archive"), RTREJ);
  EXPECT_EQ(stringVar(L"CLAYER"), L"Survey");
}

TEST_F(SystemVariables, ReadOnlyVariablesAndWrongValuesAreRefused) {
  for (const ACHAR* name : {L"VIEWCTR", L"VIEWSIZE", L"SCREENSIZE", L"UCSORG", L"EXTMIN"}) {
    resbuf rb{};
    ASSERT_EQ(acedGetVar(name, &rb), RTNORM);
    EXPECT_EQ(acedSetVar(name, &rb), RTREJ) << "setting its own value";
  }
  EXPECT_EQ(setString(L"DIMSTYLE", L"Standard"), RTREJ);
  resbuf size{};
  size.restype = RTSHORT;
  size.resval.rint = 3;
  EXPECT_EQ(acedSetVar(L"TEXTSIZE", &size), RTNORM) << "an integer for a real";
  EXPECT_EQ(db->textsize(), 3.0);
  size.resval.rint = 0;
  EXPECT_EQ(acedSetVar(L"TEXTSIZE", &size), RTREJ);
  EXPECT_EQ(setString(L"TEXTSIZE", L"2.5"), RTREJ);
  EXPECT_EQ(db->textsize(), 3.0);
}

TEST_F(SystemVariables, InsbaseIsInTheUcs) {
  // UCS at (10, 0, 0) turned 90 degrees: its x axis is world y, its y axis world -x.
  ASSERT_EQ(db->setUcs(AcGePoint3d(10, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(-1, 0, 0)), Acad::eOk);
  resbuf rb{};
  rb.restype = RT3DPOINT;
  rb.resval.rpoint[X] = 1;
  rb.resval.rpoint[Y] = 2;
  rb.resval.rpoint[Z] = 3;
  ASSERT_EQ(acedSetVar(L"INSBASE", &rb), RTNORM);
  EXPECT_TRUE(db->insbase().isEqualTo(AcGePoint3d(10 - 2, 1, 3)));
}
