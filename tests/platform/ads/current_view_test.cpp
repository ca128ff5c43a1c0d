// The current view: a loaded drawing's *Active viewport read back through the view variables
// (against an independent DXF reader), acedSetCurrentView's fit to the screen, and a changed
// view surviving save and reload.
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "geometry_checks.h"
#include "host_fixture.h"
#include "python_check.h"
#include "tdhost/screen.h"
#include "temp_dir.h"

namespace {

using tdtest::Vec3;

std::wstring widen(const std::string& s) { return std::wstring(s.begin(), s.end()); }
std::string samplePath(const std::string& name) { return std::string(TDUTILW_SAMPLES_DIR) + "/" + name; }

Vec3 pointVar(const ACHAR* name) {
  resbuf rb{};
  EXPECT_EQ(acedGetVar(name, &rb), RTNORM) << "variable " << name;
  return {rb.resval.rpoint[X], rb.resval.rpoint[Y], rb.resval.rpoint[Z]};
}

double realVar(const ACHAR* name) {
  resbuf rb{};
  EXPECT_EQ(acedGetVar(name, &rb), RTNORM) << "variable " << name;
  return rb.resval.rreal;
}

// The first *Active VPORT of a file as ezdxf reads it: centre x y, height, aspect, direction,
// target, twist (degrees), view mode.
std::vector<double> vportByEzdxf(const TempDir& dir, const std::string& file) {
  const char* script = R"(import sys, ezdxf
v = ezdxf.readfile(sys.argv[1]).viewports.get_config('*Active')[0].dxf
print(v.center[0], v.center[1], v.height, v.aspect_ratio, *v.direction, *v.target, v.view_twist, v.view_mode)
)";
  std::istringstream out(python_check::runScript(dir.write("vport.py", script), file));
  std::vector<double> values;
  for (double v; out >> v;) values.push_back(v);
  EXPECT_EQ(values.size(), 12u) << out.str();
  values.resize(12);
  return values;
}

void setWindow(AcDbViewTableRecord& view, double cx, double cy, double height, double width) {
  view.setCenterPoint(AcGePoint2d(cx, cy));
  view.setHeight(height);
  view.setWidth(width);
}

// A fixed screen for the test; the session's size comes back afterwards.
class CurrentView : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    ASSERT_EQ(tdhost::setScreenSize(1000, 500), Acad::eOk);  // aspect 2
  }
  void TearDown() override {
    tdhost::setScreenSize(saved.width, saved.height);
    HostTest::TearDown();
  }
  tdhost::ScreenSize saved = tdhost::screenSize();
};

class LoadedView : public HostTest, public ::testing::WithParamInterface<const char*> {};

}  // namespace

TEST_P(LoadedView, VariablesShowTheFilesActiveViewport) {
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::string file = samplePath(GetParam());
  TempDir dir;
  const std::vector<double> v = vportByEzdxf(dir, file);
  ASSERT_EQ(db->dxfIn(widen(file).c_str()), Acad::eOk);
  ASSERT_TRUE(db->ucsorg().isEqualTo(AcGePoint3d::kOrigin)) << "the samples use the world as UCS";
  const Vec3 direction{v[4], v[5], v[6]}, target{v[7], v[8], v[9]};
  EXPECT_TRUE(tdtest::nearRel(realVar(L"VIEWSIZE"), v[2], 1e-12));
  EXPECT_TRUE(tdtest::nearRel(realVar(L"VIEWTWIST"), v[10] * M_PI / 180.0, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(pointVar(L"VIEWDIR"), direction, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(pointVar(L"TARGET"), target, 1e-12));
  // The file keeps the centre relative to the target, in the plane across the view direction.
  const Vec3 fromTarget = tdtest::sub(pointVar(L"VIEWCTR"), target);
  EXPECT_NEAR(tdtest::dot(fromTarget, direction) / tdtest::norm(direction), 0.0, 1e-9);
  EXPECT_TRUE(tdtest::nearRel(tdtest::norm(fromTarget), std::hypot(v[0], v[1]), 1e-12));
  if (direction[0] == 0 && direction[1] == 0 && v[10] == 0) {
    EXPECT_TRUE(tdtest::nearRel(fromTarget, {v[0], v[1], 0.0}, 1e-12)) << "a plan view shows the centre as it is";
  }
}

// A plan view with its target off the origin, an oblique twisted view, survey coordinates.
INSTANTIATE_TEST_SUITE_P(Samples, LoadedView,
                         ::testing::Values("autocad_details_AC1027.dxf", "poli_all_R12.dxf",
                                           "topo_survey_autocad_map_AC1024.dxf"));

TEST_F(CurrentView, WindowsAreFittedToTheScreenAspect) {
  struct Case {
    double height, width, shownHeight;
  };
  // A wide window keeps its width, a tall one its height; one of the screen's shape both.
  const Case cases[] = {{10, 100, 50}, {40, 10, 40}, {30, 60, 30}};
  for (const Case& c : cases) {
    AcDbViewTableRecord view;
    setWindow(view, 50, 20, c.height, c.width);
    ASSERT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
    EXPECT_DOUBLE_EQ(realVar(L"VIEWSIZE"), c.shownHeight) << c.height << " x " << c.width;
    EXPECT_TRUE(tdtest::nearRel(pointVar(L"VIEWCTR"), {50, 20, 0}, 1e-12));
  }
  AcDbViewTableRecord paper;
  paper.setIsPaperspaceView(true);
  EXPECT_EQ(acedSetCurrentView(&paper, nullptr), Acad::eNotInPaperspace);
  EXPECT_EQ(acedSetCurrentView(nullptr, nullptr), Acad::eNullObjectPointer);
}

TEST_F(CurrentView, AChangedViewIsSavedAndComesBack) {
  ASSERT_EQ(db->dxfIn(widen(samplePath("autocad_details_AC1027.dxf")).c_str()), Acad::eOk);
  AcDbViewTableRecord view;
  setWindow(view, 12, -3, 40, 40);
  view.setViewDirection(AcGeVector3d(1, -1, 1));
  view.setTarget(AcGePoint3d(5, 6, 7));
  view.setViewTwist(0.3);
  view.setFrontClipEnabled(true);
  view.setFrontClipAtEye(false);
  view.setPerspectiveEnabled(true);
  ASSERT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
  const Vec3 centre = pointVar(L"VIEWCTR");
  TempDir dir;
  const std::string saved = (dir.path() / "view.dxf").string();
  ASSERT_EQ(db->dxfOut(widen(saved).c_str()), Acad::eOk);

  AcDbDatabase reloaded(false, true);
  ASSERT_EQ(reloaded.dxfIn(widen(saved).c_str()), Acad::eOk);
  acdbHostApplicationServices()->setWorkingDatabase(&reloaded);
  EXPECT_TRUE(tdtest::nearRel(pointVar(L"VIEWCTR"), centre, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(pointVar(L"VIEWDIR"), {1, -1, 1}, 1e-12));
  EXPECT_DOUBLE_EQ(realVar(L"VIEWSIZE"), 40);
  EXPECT_NEAR(realVar(L"VIEWTWIST"), 0.3, 1e-12);
  acdbHostApplicationServices()->setWorkingDatabase(db.get());

  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::vector<double> v = vportByEzdxf(dir, saved);
  EXPECT_DOUBLE_EQ(v[3], 2.0) << "the width follows the screen";
  EXPECT_EQ(v[11], 1 + 2 + 16) << "perspective, front clip, front clip not at the eye";
}
