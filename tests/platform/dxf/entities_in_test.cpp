// Entities read from files are their modelled classes: curve queries answer on loaded
// drawings, and edits are saved without losing the codes the classes do not hold.
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "tdhost/dxf_io.h"

namespace {

std::string samplePath(const char* name) { return std::string(TDUTILW_SAMPLES_DIR) + "/" + name; }

std::string slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

std::string trim(const std::string& s) {
  const auto b = s.find_first_not_of(" \t\r");
  const auto e = s.find_last_not_of(" \t\r");
  return b == std::string::npos ? std::string() : s.substr(b, e - b + 1);
}

// The LWPOLYLINE records of a file by handle, read straight from its text: vertices with
// their bulges, and the closed flag.
struct RawPline {
  std::vector<double> x, y, bulge;
  bool closed = false;
};

std::map<std::string, RawPline> rawPolylines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::pair<int, std::string>> tags;
  std::string code, value;
  while (std::getline(in, code) && std::getline(in, value)) tags.emplace_back(std::stoi(trim(code)), trim(value));
  std::map<std::string, RawPline> out;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].first != 0 || tags[i].second != "LWPOLYLINE") continue;
    RawPline p;
    std::string handle;
    for (std::size_t j = i + 1; j < tags.size() && tags[j].first != 0; ++j) {
      const auto& [c, v] = tags[j];
      if (c == 5) handle = v;
      else if (c == 70) p.closed = (std::stoi(v) & 1) != 0;
      else if (c == 10) p.x.push_back(std::stod(v)), p.bulge.push_back(0.0);
      else if (c == 20) p.y.push_back(std::stod(v));
      else if (c == 42 && !p.bulge.empty()) p.bulge.back() = std::stod(v);
    }
    out[handle] = p;
  }
  return out;
}

// Length of a bulged polyline: chord for straight segments, chord/2 * theta / sin(theta/2)
// for arcs with theta = 4 atan(bulge).
double rawLength(const RawPline& p) {
  const std::size_t n = p.x.size();
  double total = 0.0;
  for (std::size_t i = 0; i + 1 < n || (p.closed && i < n && n > 1); ++i) {
    const std::size_t k = (i + 1) % n;
    const double chord = std::hypot(p.x[k] - p.x[i], p.y[k] - p.y[i]);
    const double theta = 4.0 * std::atan(p.bulge[i]);
    total += std::fabs(theta) < 1e-12 ? chord : chord / 2.0 * theta / std::sin(theta / 2.0);
  }
  return total;
}

using dxftest::handleOf;
using EntitiesIn = HostTest;

}  // namespace

TEST_F(EntitiesIn, LoadedLightweightPolylinesMeasureAsTheirRawVerticesSay) {
  const std::string file = samplePath("kompas_bulges_AC1015.dxf");
  ASSERT_EQ(db->dxfIn(std::wstring(file.begin(), file.end()).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  const auto raw = rawPolylines(slurp(file));
  ASSERT_FALSE(raw.empty());
  int checked = 0, bulged = 0;
  for (AcDbObjectId id : dxftest::modelSpaceIds(*db)) {
    AcDbPolyline* pline = nullptr;
    if (acdbOpenObject(pline, id, AcDb::kForRead) != Acad::eOk) continue;
    const auto it = raw.find(handleOf(pline));
    ASSERT_NE(it, raw.end()) << handleOf(pline);
    EXPECT_EQ(pline->numVerts(), it->second.x.size());
    EXPECT_EQ(pline->isClosed(), it->second.closed);
    double endParam = 0.0, length = 0.0;
    EXPECT_EQ(pline->getEndParam(endParam), Acad::eOk);
    EXPECT_EQ(pline->getDistAtParam(endParam, length), Acad::eOk);
    const double expected = rawLength(it->second);
    EXPECT_NEAR(length, expected, 1e-9 * std::max(1.0, expected)) << handleOf(pline);
    for (double b : it->second.bulge) bulged += b != 0.0 ? 1 : 0;
    ++checked;
    pline->close();
  }
  EXPECT_EQ(checked, static_cast<int>(raw.size()));
  EXPECT_GT(bulged, 0);
}

TEST_F(EntitiesIn, HeaderlessClosedPolylineKeepsWidthAndClosingBulge) {
  const std::string file = samplePath("gdal_headerless_closed_bulge_gk.dxf");
  ASSERT_EQ(db->dxfIn(std::wstring(file.begin(), file.end()).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  const auto raw = rawPolylines(slurp(file));
  ASSERT_EQ(raw.size(), 1u);
  const RawPline& expected = raw.begin()->second;
  const auto ids = dxftest::modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), 1u);
  AcDbPolyline* pline = nullptr;
  ASSERT_EQ(acdbOpenObject(pline, ids[0], AcDb::kForWrite), Acad::eOk);
  EXPECT_TRUE(pline->isClosed());
  EXPECT_TRUE(pline->hasPlinegen());
  double width = 0.0;
  EXPECT_EQ(pline->getConstantWidth(width), Acad::eOk);
  EXPECT_EQ(width, 0.5);
  const unsigned int n = pline->numVerts();
  ASSERT_EQ(n, expected.x.size());
  double closingBulge = 0.0;
  pline->getBulgeAt(n - 1, closingBulge);
  EXPECT_NE(closingBulge, 0.0);
  EXPECT_EQ(closingBulge, expected.bulge.back());
  // An edit is saved with the flags and widths the file had.
  pline->setPointAt(0, AcGePoint2d(40585366.5, 3433935.5));
  pline->close();
  const std::string saved = tdhost::writeDxfText(*db);
  auto again = std::make_unique<AcDbDatabase>(false, true);
  ASSERT_EQ(tdhost::readDxfText(*again, saved, "saved.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const auto reread = rawPolylines(saved);
  ASSERT_EQ(reread.size(), 1u);
  EXPECT_EQ(reread.begin()->second.x.front(), 40585366.5);
  EXPECT_EQ(reread.begin()->second.bulge, expected.bulge);
  EXPECT_NE(saved.find("\n 70\n129\n"), std::string::npos);
  EXPECT_NE(saved.find("\n 43\n0.5\n"), std::string::npos);
}

TEST_F(EntitiesIn, FaceWithoutFourthCornerIsATriangleWithItsHiddenEdges) {
  // R12 style: no subclass markers, no 13 corner, edges 0 and 2 hidden (1 + 4).
  const std::string text = dxftest::entities("0 3DFACE|8 TIN|10 0|20 0|30 1|11 6|21 0|31 2|12 0|22 8|32 3|70 5");
  ASSERT_EQ(tdhost::readDxfText(*db, text, "face.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const auto ids = dxftest::modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), 1u);
  AcDbFace* face = nullptr;
  ASSERT_EQ(acdbOpenObject(face, ids[0], AcDb::kForRead), Acad::eOk);
  const AcGePoint3d expected[4] = {{0, 0, 1}, {6, 0, 2}, {0, 8, 3}, {0, 8, 3}};
  const bool visible[4] = {false, true, false, true};
  for (Adesk::UInt16 i = 0; i < 4; ++i) {
    AcGePoint3d p;
    bool v = true;
    EXPECT_EQ(face->getVertexAt(i, p), Acad::eOk);
    EXPECT_EQ(p, expected[i]) << i;
    EXPECT_EQ(face->isEdgeVisibleAt(i, v), Acad::eOk);
    EXPECT_EQ(v, visible[i]) << i;
  }
  face->close();
}
