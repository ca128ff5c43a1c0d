// Entities made through the API are saved with their geometry, and an independent reader
// (Debian's python3-ezdxf) finds it and audits the file clean.
#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "dbents.h"
#include "dbpl.h"
#include "host_fixture.h"
#include "temp_dir.h"

namespace {

constexpr const char* kPython = "/usr/bin/python3";

void append(AcDbDatabase* db, AcDbEntity* ent) {
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(table->getAt(L"*Model_Space", model, AcDb::kForWrite), Acad::eOk);
  table->close();
  ASSERT_EQ(model->appendAcDbEntity(ent), Acad::eOk);
  ent->close();
  model->close();
}

std::string run(const std::string& command) {
  std::string output;
  FILE* pipe = ::popen(command.c_str(), "r");
  if (!pipe) return "popen failed";
  char buffer[4096];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
  ::pclose(pipe);
  return output;
}

class EntitiesOut : public HostTest {};

}  // namespace

TEST_F(EntitiesOut, GeometryReachesAnIndependentReader) {
  if (run(std::string(kPython) + " -c 'import ezdxf' 2>&1").find("Error") != std::string::npos || !std::filesystem::exists(kPython))
    GTEST_SKIP() << "python3-ezdxf is not installed";
  append(db.get(), new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3)));
  auto* arc = new AcDbArc(AcGePoint3d(10, 0, 0), 5.0, 0.0, 3.141592653589793 / 2);
  append(db.get(), arc);
  append(db.get(), new AcDbCircle(AcGePoint3d(0, 0, 7), AcGeVector3d::kZAxis, 2.5));
  append(db.get(), new AcDbPoint(AcGePoint3d(3200000.125, 540000.5, 101.25)));
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, AcGePoint2d(0, 0), 1.0);
  pline->addVertexAt(1, AcGePoint2d(2, 0));
  pline->addVertexAt(2, AcGePoint2d(2, 3), 0.0, 0.5, 0.5);
  pline->setClosed(true);
  append(db.get(), pline);

  TempDir dir;
  const std::string file = (dir.path() / "made.dxf").string();
  ASSERT_EQ(db->dxfOut(std::wstring(file.begin(), file.end()).c_str()), Acad::eOk);

  const std::string script =
      "import ezdxf\n"
      "doc = ezdxf.readfile('" + file + "')\n"
      "a = doc.audit()\n"
      "print('audit', len(a.errors), len(a.fixes))\n"
      "for e in doc.modelspace():\n"
      "    t = e.dxftype()\n"
      "    if t == 'LINE': print(t, tuple(e.dxf.start), tuple(e.dxf.end))\n"
      "    elif t == 'ARC': print(t, tuple(e.dxf.center), e.dxf.radius, e.dxf.start_angle, e.dxf.end_angle)\n"
      "    elif t == 'CIRCLE': print(t, tuple(e.dxf.center), e.dxf.radius)\n"
      "    elif t == 'POINT': print(t, tuple(e.dxf.location))\n"
      "    elif t == 'LWPOLYLINE': print(t, e.closed, [tuple(p) for p in e.get_points('xyseb')])\n";
  const std::string scriptFile = dir.write("check.py", script);
  const std::string out = run(std::string(kPython) + " " + scriptFile + " 2>&1");
  EXPECT_NE(out.find("audit 0 0"), std::string::npos) << out;
  EXPECT_NE(out.find("LINE (1.0, 2.0, 3.0) (4.0, 6.0, 3.0)"), std::string::npos) << out;
  EXPECT_NE(out.find("ARC (10.0, 0.0, 0.0) 5.0 0.0 90.0"), std::string::npos) << out;
  EXPECT_NE(out.find("CIRCLE (0.0, 0.0, 7.0) 2.5"), std::string::npos) << out;
  EXPECT_NE(out.find("POINT (3200000.125, 540000.5, 101.25)"), std::string::npos) << out;
  EXPECT_NE(out.find("LWPOLYLINE True [(0.0, 0.0, 0.0, 0.0, 1.0), (2.0, 0.0, 0.0, 0.0, 0.0), (2.0, 3.0, 0.5, 0.5, 0.0)]"),
            std::string::npos)
      << out;
}
