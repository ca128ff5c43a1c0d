// Entities made through the API are saved with their geometry: an independent reader (Debian's
// python3-ezdxf) finds it and audits the file clean, in the current and R2000 versions, and the
// host reads back the same entities.
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dbents.h"
#include "dbpl.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "python_check.h"
#include "tdhost/dxf_io.h"
#include "temp_dir.h"

namespace {

constexpr double kPi = 3.141592653589793;

void append(AcDbDatabase* db, AcDbEntity* ent) {
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db->currentSpaceId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(model->appendAcDbEntity(ent), Acad::eOk);
  ent->close();
  model->close();
}

AcDbObjectId addBlockWithALine(AcDbDatabase* db, const ACHAR* name) {
  AcDbBlockTable* table = nullptr;
  EXPECT_EQ(db->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
  auto* rec = new AcDbBlockTableRecord;
  rec->setName(name);
  AcDbObjectId id;
  EXPECT_EQ(table->add(id, rec), Acad::eOk);
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  EXPECT_EQ(rec->appendAcDbEntity(line), Acad::eOk);
  line->close();
  rec->close();
  table->close();
  return id;
}

// Per model-space entity: its class and geometry, as the host answers them.
std::vector<std::string> digest(AcDbDatabase& db) {
  std::vector<std::string> out;
  for (AcDbObjectId id : dxftest::modelSpaceIds(db)) {
    AcDbEntity* ent = nullptr;
    EXPECT_EQ(acdbOpenObject(ent, id, AcDb::kForRead), Acad::eOk);
    if (ent == nullptr) continue;
    std::string d(dxftest::narrow(ent->isA()->name()));
    char buf[200];
    AcDbExtents box;
    if (ent->getGeomExtents(box) == Acad::eOk) {
      const AcGePoint3d a = box.minPoint(), b = box.maxPoint();
      std::snprintf(buf, sizeof buf, " %.12g %.12g %.12g %.12g %.12g %.12g", a.x, a.y, a.z, b.x, b.y, b.z);
      d += buf;
    }
    // Curves by their start, a point along them (a ray has no box) and length.
    double end = 0, length = 0;
    AcGePoint3d s, p;
    if (auto* curve = AcDbCurve::cast(ent)) {
      if (curve->getStartPoint(s) == Acad::eOk && curve->getPointAtDist(0.5, p) == Acad::eOk) {
        std::snprintf(buf, sizeof buf, " %.12g %.12g %.12g %.12g %.12g %.12g", s.x, s.y, s.z, p.x, p.y, p.z);
        d += buf;
      }
      if (curve->getEndParam(end) == Acad::eOk && curve->getDistAtParam(end, length) == Acad::eOk) {
        std::snprintf(buf, sizeof buf, " length %.12g", length);
        d += buf;
      }
    }
    out.push_back(d);
    ent->close();
  }
  return out;
}

const char* const kScript = R"(import sys, ezdxf
from ezdxf.math import OCS
doc = ezdxf.readfile(sys.argv[1])
a = doc.audit()
print('audit', len(a.errors), len(a.fixes))
r = lambda v: tuple(round(c, 9) for c in v)
for e in doc.modelspace():
    t = e.dxftype()
    if t == 'LINE': print(t, r(e.dxf.start), r(e.dxf.end))
    elif t == 'ARC': print(t, r(OCS(e.dxf.extrusion).to_wcs(e.dxf.center)), e.dxf.radius, round(e.dxf.start_angle, 9), round(e.dxf.end_angle, 9))
    elif t == 'RAY': print(t, r(e.dxf.start), r(e.dxf.unit_vector))
    elif t == 'CIRCLE': print(t, r(e.dxf.center), e.dxf.radius)
    elif t == 'POINT': print(t, r(e.dxf.location))
    elif t == 'LWPOLYLINE': print(t, e.closed, [tuple(p) for p in e.get_points('xyseb')])
    elif t == 'TEXT': print(t, e.dxf.text, r(e.dxf.insert), r(e.dxf.align_point), e.dxf.height, round(e.dxf.rotation, 9), e.dxf.halign, e.dxf.valign)
    elif t == 'MTEXT': print(t, len(e.text), e.text[:10], r(e.dxf.insert), e.dxf.char_height, e.dxf.width, e.dxf.attachment_point)
    elif t == '3DFACE': print(t, [r(v) for v in e.wcs_vertices()], [v for k, v in e.dxf.all_existing_dxf_attribs().items() if k.startswith('invisible')])
    elif t == 'INSERT': print(t, e.dxf.name, r(e.dxf.insert), e.dxf.xscale, e.dxf.yscale, e.dxf.rotation, len(doc.blocks[e.dxf.name]))
    elif t == 'POLYLINE': print(t, e.get_mode(), e.is_closed, e.dxf.elevation[2] if hasattr(e.dxf.elevation, '__len__') else e.dxf.elevation, [(r(v.dxf.location), v.dxf.bulge, v.dxf.start_width) for v in e.vertices])
)";

using EntitiesOut = HostTest;

TEST_F(EntitiesOut, EveryModelledKindReachesAnIndependentReader) {
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  append(db.get(), new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3)));
  append(db.get(), new AcDbArc(AcGePoint3d(10, 0, 0), 5.0, 0.0, kPi / 2));
  // In a tilted plane the file holds the centre in the arc's own coordinates.
  append(db.get(), new AcDbArc(AcGePoint3d(3, -2, 5), AcGeVector3d(0.3, -0.4, 0.866).normal(), 2.0, 0.25, 2.0));
  auto* ray = new AcDbRay;
  ray->setBasePoint(AcGePoint3d(3200000.5, 540000.25, 12.0));
  ray->setUnitDir(AcGeVector3d(1, -2, 2));
  append(db.get(), ray);
  append(db.get(), new AcDbCircle(AcGePoint3d(0, 0, 7), AcGeVector3d::kZAxis, 2.5));
  append(db.get(), new AcDbPoint(AcGePoint3d(3200000.125, 540000.5, 101.25)));
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, AcGePoint2d(0, 0), 1.0);
  pline->addVertexAt(1, AcGePoint2d(2, 0));
  pline->addVertexAt(2, AcGePoint2d(2, 3), 0.0, 0.5, 0.5);
  pline->setClosed(true);
  append(db.get(), pline);
  auto* text = new AcDbText(AcGePoint3d(10, 20, 0), L"P-17 \u00e9", AcDbObjectId::kNull, 2.5, kPi / 6);
  text->setHorizontalMode(AcDb::kTextCenter);
  text->setVerticalMode(AcDb::kTextTop);
  text->setAlignmentPoint(AcGePoint3d(11, 21, 0));
  append(db.get(), text);
  auto* mtext = new AcDbMText;
  mtext->setLocation(AcGePoint3d(5, 6, 0));
  mtext->setTextHeight(1.5);
  mtext->setWidth(40.0);
  mtext->setAttachment(AcDbMText::kMiddleCenter);
  // Longer than one chunk, so it is split and must come back whole.
  std::wstring longText;
  for (int i = 0; i < 60; ++i) longText += L"abcd" + std::to_wstring(i % 10);
  mtext->setContents(longText.c_str());
  append(db.get(), mtext);
  auto* face = new AcDbFace(AcGePoint3d(0, 0, 1), AcGePoint3d(4, 0, 2), AcGePoint3d(4, 3, 3), AcGePoint3d(0, 3, 4));
  face->makeEdgeInvisibleAt(1);
  face->makeEdgeInvisibleAt(3);
  append(db.get(), face);
  auto* insert = new AcDbBlockReference(AcGePoint3d(100, 200, 5), addBlockWithALine(db.get(), L"PEG"));
  insert->setScaleFactors(AcGeScale3d(2, 3, 1));
  insert->setRotation(kPi / 2);
  append(db.get(), insert);
  const AcGeDoubleArray bulges{0.0, 0.5, 0.0};
  const AcGePoint3dArray plan{AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0), AcGePoint3d(10, 5, 0)};
  append(db.get(), new AcDb2dPolyline(AcDb::k2dSimplePoly, plan, 7.5, true, 0.25, 0.25, &bulges));
  const AcGePoint3dArray space{AcGePoint3d(1, 1, 1), AcGePoint3d(2, 3, 4), AcGePoint3d(5, 5, 9), AcGePoint3d(7, 1, 2)};
  append(db.get(), new AcDb3dPolyline(AcDb::k3dSimplePoly, space, false));

  TempDir dir;
  const std::string script = dir.write("check.py", kScript);
  const char* const expected[] = {
      "audit 0 0",
      "LINE (1.0, 2.0, 3.0) (4.0, 6.0, 3.0)",
      "ARC (10.0, 0.0, 0.0) 5.0 0.0 90.0",
      "ARC (3.0, -2.0, 5.0) 2.0 14.323944878 114.591559026",
      "RAY (3200000.5, 540000.25, 12.0) (0.333333333, -0.666666667, 0.666666667)",
      "CIRCLE (0.0, 0.0, 7.0) 2.5",
      "POINT (3200000.125, 540000.5, 101.25)",
      "LWPOLYLINE True [(0.0, 0.0, 0.0, 0.0, 1.0), (2.0, 0.0, 0.0, 0.0, 0.0), (2.0, 3.0, 0.5, 0.5, 0.0)]",
      "TEXT P-17 \u00e9 (10.0, 20.0, 0.0) (11.0, 21.0, 0.0) 2.5 30.0 1 3",
      "MTEXT 300 abcd0abcd1 (5.0, 6.0, 0.0) 1.5 40.0 5",
      "3DFACE [(0.0, 0.0, 1.0), (4.0, 0.0, 2.0), (4.0, 3.0, 3.0), (0.0, 3.0, 4.0)] [10]",
      "INSERT PEG (100.0, 200.0, 5.0) 2.0 3.0 90.0 1",
      "POLYLINE AcDb2dPolyline True 7.5 [((0.0, 0.0, 7.5), 0, 0.25), ((10.0, 0.0, 7.5), 0.5, 0.25), "
      "((10.0, 5.0, 7.5), 0, 0.25)]",
      "POLYLINE AcDb3dPolyline False 0.0 [((1.0, 1.0, 1.0), 0, 0), ((2.0, 3.0, 4.0), 0, 0), ((5.0, 5.0, 9.0), 0, 0), "
      "((7.0, 1.0, 2.0), 0, 0)]",
  };
  static_assert(std::size(expected) == 14);
  const std::vector<std::string> made = digest(*db);
  ASSERT_EQ(made.size(), 13u);
  for (AcDb::AcDbDwgVersion version : {AcDb::kDHL_CURRENT, AcDb::kDHL_1015}) {
    const std::string file = (dir.path() / (version == AcDb::kDHL_1015 ? "r2000.dxf" : "made.dxf")).string();
    ASSERT_EQ(db->dxfOut(dxftest::wide(file).c_str(), 16, version), Acad::eOk);
    const std::string out = python_check::runScript(script, file);
    for (const char* line : expected)
      EXPECT_NE(out.find(std::string(line) + "\n"), std::string::npos) << line << "\n" << out;
    AcDbDatabase back(false, true);
    ASSERT_EQ(back.dxfIn(dxftest::wide(file).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
    EXPECT_EQ(digest(back), made) << file;
  }
}

}  // namespace
