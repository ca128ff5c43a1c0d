// The current view: a loaded drawing's *Active viewport read back through the view variables
// (checked against an independent DXF reader), acedSetCurrentView's fit to the screen, its
// refusals, and a changed view surviving save and reload.
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "geometry_checks.h"
#include "host_fixture.h"
#include "python_check.h"
#include "tdhost/screen.h"
#include "tdhost/session.h"
#include "temp_dir.h"

namespace {

using tdtest::Vec3;

constexpr double kPi = 3.141592653589793;

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
constexpr const char* kReadVport = R"(import sys, ezdxf
v = ezdxf.readfile(sys.argv[1]).viewports.get_config('*Active')[0].dxf
print(v.center[0], v.center[1], v.height, v.aspect_ratio, *v.direction, *v.target, v.get('view_twist', 0), v.get('view_mode', 0))
)";

std::vector<double> vportByEzdxf(const TempDir& dir, const std::string& file) {
  std::istringstream out(python_check::runScript(dir.write("vport.py", kReadVport), file));
  std::vector<double> values;
  for (double v; out >> v;) values.push_back(v);
  EXPECT_EQ(values.size(), 12u) << out.str();
  values.resize(12);
  return values;
}

// Sets the screen for one test and puts the session's size back afterwards.
class ScreenGuard {
 public:
  ScreenGuard(int width, int height) : mSaved(tdhost::screenSize()) {
    EXPECT_EQ(tdhost::setScreenSize(width, height), Acad::eOk);
  }
  ~ScreenGuard() { tdhost::setScreenSize(mSaved.width, mSaved.height); }

 private:
  tdhost::ScreenSize mSaved;
};

void setWindow(AcDbViewTableRecord& view, double cx, double cy, double height, double width) {
  view.setCenterPoint(AcGePoint2d(cx, cy));
  view.setHeight(height);
  view.setWidth(width);
}

// The *Active record of `db`, open for `mode`.
AcDbViewportTableRecord* openActive(AcDbDatabase& db, AcDb::OpenMode mode) {
  AcDbViewportTable* table = nullptr;
  EXPECT_EQ(db.getViewportTable(table, AcDb::kForRead), Acad::eOk);
  AcDbSymbolTableRecord* record = nullptr;
  EXPECT_EQ(table->getAt(L"*Active", record, mode), Acad::eOk);
  table->close();
  return AcDbViewportTableRecord::cast(record);
}

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
  EXPECT_TRUE(tdtest::nearRel(realVar(L"VIEWTWIST"), v[10] * kPi / 180.0, 1e-12));
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

TEST(CurrentViewDocuments, TheCurrentDocumentsViewIsTheOneShown) {
  tdhost::resetDocuments();
  struct Open {
    std::wstring file;
    Acad::ErrorStatus status = Acad::eNotImplementedYet;
  } open{widen(samplePath("autocad_details_AC1027.dxf"))};
  acDocManager->executeInApplicationContext(
      [](void* data) {
        auto* o = static_cast<Open*>(data);
        o->status = acDocManager->appContextOpenDocument(o->file.c_str());
      },
      &open);
  ASSERT_EQ(open.status, Acad::eOk);
  AcApDocument* loaded = acDocManager->curDocument();
  EXPECT_NEAR(realVar(L"VIEWSIZE"), 767.2373701254514, 1e-9);
  ASSERT_EQ(acDocManager->newDocument(), Acad::eOk);
  EXPECT_NEAR(realVar(L"VIEWSIZE"), 1.0, 1e-12) << "a new drawing's default view";
  ASSERT_EQ(acDocManager->setCurDocument(loaded), Acad::eOk);
  EXPECT_NEAR(realVar(L"VIEWSIZE"), 767.2373701254514, 1e-9);
  tdhost::resetDocuments();
}

using CurrentView = HostTest;

TEST_F(CurrentView, WindowsAreFittedToTheScreenAspect) {
  ScreenGuard screen(1000, 500);  // aspect 2
  struct Case {
    double height, width, shownHeight;
  };
  // A wide window keeps its width, a tall one its height; one of the screen's shape both.
  const Case cases[] = {{10, 100, 50}, {40, 10, 40}, {30, 60, 30}};
  ASSERT_EQ(std::size(cases), 3u);
  for (const Case& c : cases) {
    AcDbViewTableRecord view;
    setWindow(view, 50, 20, c.height, c.width);
    ASSERT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
    EXPECT_DOUBLE_EQ(realVar(L"VIEWSIZE"), c.shownHeight) << c.height << " x " << c.width;
    EXPECT_TRUE(tdtest::nearRel(pointVar(L"VIEWCTR"), {50, 20, 0}, 1e-12));
    AcDbViewportTableRecord* active = openActive(*db, AcDb::kForRead);
    ASSERT_NE(active, nullptr);
    EXPECT_DOUBLE_EQ(active->width(), 2 * c.shownHeight);
    active->close();
  }
}

TEST_F(CurrentView, RefusesWhatThisHostCannotShow) {
  AcDbViewTableRecord view, empty, paper;
  setWindow(view, 0, 0, 10, 10);
  setWindow(paper, 0, 0, 10, 10);
  paper.setIsPaperspaceView(true);
  EXPECT_EQ(acedSetCurrentView(nullptr, nullptr), Acad::eNullObjectPointer);
  EXPECT_EQ(acedSetCurrentView(&view, reinterpret_cast<AcDbViewport*>(&view)), Acad::eInvalidInput);
  EXPECT_EQ(acedSetCurrentView(&empty, nullptr), Acad::eOk) << "a new record has a 1 x 1 window";
  setWindow(empty, 0, 0, 0, 0);
  EXPECT_EQ(acedSetCurrentView(&empty, nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acedSetCurrentView(&paper, nullptr), Acad::eNotInPaperspace);
  AcDbViewportTableRecord* active = openActive(*db, AcDb::kForWrite);
  ASSERT_NE(active, nullptr);
  EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eWasOpenForWrite);
  active->close();
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eNoDatabase);
}

TEST_F(CurrentView, AChangedViewIsSavedAndComesBack) {
  ScreenGuard screen(1600, 900);
  ASSERT_EQ(db->dxfIn(widen(samplePath("autocad_details_AC1027.dxf")).c_str()), Acad::eOk);
  AcDbViewTableRecord view;
  setWindow(view, 12, -3, 40, 40);
  view.setViewDirection(AcGeVector3d(1, -1, 1));
  view.setTarget(AcGePoint3d(5, 6, 7));
  view.setViewTwist(0.3);
  view.setLensLength(35);
  view.setFrontClipEnabled(true);
  view.setFrontClipAtEye(false);
  view.setFrontClipDistance(2);
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
  EXPECT_TRUE(tdtest::nearRel(pointVar(L"TARGET"), {5, 6, 7}, 1e-12));
  EXPECT_DOUBLE_EQ(realVar(L"VIEWSIZE"), 40);
  EXPECT_NEAR(realVar(L"VIEWTWIST"), 0.3, 1e-12);
  EXPECT_DOUBLE_EQ(realVar(L"LENSLENGTH"), 35);
  EXPECT_DOUBLE_EQ(realVar(L"FRONTZ"), 2);
  acdbHostApplicationServices()->setWorkingDatabase(db.get());

  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::vector<double> v = vportByEzdxf(dir, saved);
  EXPECT_TRUE(tdtest::nearRel(v[0], 12, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(v[1], -3, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(v[3], 1600.0 / 900.0, 1e-12)) << "the width follows the screen";
  EXPECT_EQ(v[11], 1 + 2 + 16) << "perspective, front clip, front clip not at the eye";
}
