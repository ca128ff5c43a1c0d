// dxfIn/dxfOut on files: statuses, located errors for malformed input, atomic saves, and the
// data a drawing carries surviving a save and load.
#include <gtest/gtest.h>

#include "dbents.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "tdhost/dxf_io.h"
#include "temp_dir.h"

namespace {

using dxftest::wide;

const std::string kMinimal = dxftest::entities("0 LINE|8 L1|10 0|20 0|30 0|11 1|21 1|31 0");

using DxfFiles = HostTest;

struct Malformed {
  const char* name;
  std::string text;
  Acad::ErrorStatus status;
  const char* where;  // expected in the message
};

TEST_F(DxfFiles, MalformedInputIsRejectedWithLocationAndLeavesDrawingAlone) {
  const Malformed cases[] = {
      {"garbage", "\x01\x02\xff\xfe binary junk\n\n", Acad::eInvalidDxfCode, ":1:"},
      {"binary", std::string("AutoCAD Binary DXF\r\n\x1a\0", 22), Acad::eBadDwgHeader, "binary"},
      {"empty", "", Acad::eBadDwgHeader, "empty"},
      {"truncated", kMinimal.substr(0, 60), Acad::eDxfPartiallyRead, "ENTITIES"},
      {"value missing", "  0\nSECTION\n  2\n", Acad::eDxfPartiallyRead, "group code 2"},
      {"bad code", "  0\nSECTION\n  2\nENTITIES\nxx\nLINE\n", Acad::eInvalidDxfCode, ":5:"},
      {"not a section", "  0\nLINE\n  8\n0\n  0\nEOF\n", Acad::eBadDwgHeader, "not a DXF"},
      {"block without name", "  0\nSECTION\n  2\nBLOCKS\n  0\nBLOCK\n  8\n0\n  0\nENDBLK\n  0\nENDSEC\n  0\nEOF\n",
       Acad::eInvalidDxfCode, "group code 2"},
      {"entity before code 0", "  0\nSECTION\n  2\nENTITIES\n  8\n0\n  0\nENDSEC\n  0\nEOF\n", Acad::eInvalidDxfCode,
       "group code 0"},
  };
  ASSERT_EQ(std::size(cases), 9u);
  TempDir dir;
  const AcDbObjectId layers = db->layerTableId();
  for (const Malformed& c : cases) {
    const std::string path = dir.write("bad.dxf", c.text);
    EXPECT_EQ(db->dxfIn(wide(path).c_str()), c.status) << c.name << ": " << tdhost::lastDxfMessage();
    EXPECT_NE(tdhost::lastDxfMessage().find(c.where), std::string::npos) << c.name << ": " << tdhost::lastDxfMessage();
    EXPECT_NE(tdhost::lastDxfMessage().find("bad.dxf"), std::string::npos) << c.name;
    EXPECT_EQ(db->layerTableId(), layers) << c.name << " changed the drawing";
  }
}

// Files that once broke the reader (kept as a regression corpus, also the fuzzer's seeds):
// each is either refused with its location or loads, saves, reloads and saves the same again.
TEST_F(DxfFiles, KeptMalformedFilesAreRefusedOrSurviveASaveAndReload) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(TDUTILW_MALFORMED_DIR)) {
    ++files;
    const std::string path = entry.path().string(), name = entry.path().filename().string();
    AcDbDatabase loaded(false, true);
    if (loaded.dxfIn(wide(path).c_str()) != Acad::eOk) {
      EXPECT_NE(tdhost::lastDxfMessage().find(name + ":"), std::string::npos) << tdhost::lastDxfMessage();
      continue;
    }
    const std::string saved = tdhost::writeDxfText(loaded);
    AcDbDatabase again(false, true);
    ASSERT_EQ(tdhost::readDxfText(again, saved, name), Acad::eOk) << name << ": " << tdhost::lastDxfMessage();
    EXPECT_EQ(tdhost::writeDxfText(again), saved) << name;
  }
  EXPECT_GE(files, 9);
}

// Missing files and directories give file statuses; a failed save keeps the old file and says
// why; a save replaces its target; only the versions the writer knows are written.
TEST_F(DxfFiles, FileStatusesAndAtomicSaves) {
  TempDir dir;
  EXPECT_EQ(db->dxfIn(wide((dir.path() / "none.dxf").string()).c_str()), Acad::eFileNotFound);
  EXPECT_EQ(db->dxfIn(wide(dir.path().string()).c_str()), Acad::eFileAccessErr);
  // A directory in the target's place cannot be replaced: the rename fails after writing.
  std::filesystem::create_directory(dir.path() / "keep.dxf");
  const std::string inner = dir.write("keep.dxf/inner.txt", "old content");
  EXPECT_EQ(db->dxfOut(wide((dir.path() / "keep.dxf").string()).c_str()), Acad::eFileAccessErr);
  EXPECT_NE(tdhost::lastDxfMessage().find("keep.dxf"), std::string::npos) << tdhost::lastDxfMessage();
  EXPECT_EQ(TempDir::read(inner), "old content");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1) << "temporary file left behind";
  EXPECT_EQ(db->dxfOut(wide((dir.path() / "no" / "such.dxf").string()).c_str()), Acad::eFileAccessErr);
  const std::string target = dir.write("new.dxf", "old");
  ASSERT_EQ(db->dxfOut(wide(target).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  EXPECT_NE(TempDir::read(target).find("AC1032"), std::string::npos);
  ASSERT_EQ(db->dxfOut(wide(target).c_str(), 16, AcDb::kDHL_1015), Acad::eOk);
  EXPECT_NE(TempDir::read(target).find("AC1015"), std::string::npos);
  EXPECT_EQ(db->dxfOut(wide(target).c_str(), 16, AcDb::kDHL_1009), Acad::eInvalidDwgVersion);
  AcDbDatabase back(false, true);
  EXPECT_EQ(back.dxfIn(wide(target).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
}

// A file without header or handles: its LINE lands in model space as its class, on its layer,
// with a handle assigned. Opened and written back unchanged it saves as read; the smallest
// changes through the API (one unit in the last place, the sign of a zero, colour, layer,
// extended data, an extension dictionary) are saved and reloaded.
TEST_F(DxfFiles, HeaderlessLineIsModelledAndChangesThroughTheApiAreSavedAndReloaded) {
  ASSERT_EQ(tdhost::readDxfText(*db, kMinimal, "mini.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const auto ids = dxftest::modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), 1u);
  const AcDbObjectId lineId = ids[0];
  EXPECT_FALSE(lineId.handle().isNull()) << "a file without handles gets them assigned";
  const std::string unchanged = tdhost::writeDxfText(*db);
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  ACHAR* before = line->layer();
  EXPECT_STREQ(before, L"L1");
  acutDelString(before);
  line->setEndPoint(line->endPoint());
  line->close();
  EXPECT_EQ(tdhost::writeDxfText(*db), unchanged) << "an entity written back unchanged saves as read";

  const double nudged = std::nextafter(1.0, 2.0);
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  line->setEndPoint(AcGePoint3d(1.0, nudged, 0.0));
  line->setStartPoint(AcGePoint3d(-0.0, 0.0, 0.0));
  EXPECT_EQ(line->setColorIndex(3), Acad::eOk);
  EXPECT_EQ(line->setLayer(L"0"), Acad::eOk);
  resbuf app{nullptr, 1001, {}};
  app.resval.rstring = const_cast<ACHAR*>(L"ACAD");
  resbuf val{nullptr, 1000, {}};
  val.resval.rstring = const_cast<ACHAR*>(L"\u0416 survey");
  app.rbnext = &val;
  EXPECT_EQ(line->setXData(&app), Acad::eOk);
  EXPECT_EQ(line->createExtensionDictionary(), Acad::eOk);
  line->close();

  const std::string text = tdhost::writeDxfText(*db);
  EXPECT_NE(text.find(" 10\n-0.0\n"), std::string::npos) << text;
  AcDbDatabase back(false, true);
  ASSERT_EQ(tdhost::readDxfText(back, text, "back.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  AcDbObjectId backId;
  ASSERT_EQ(back.getAcDbObjectId(backId, false, lineId.handle()), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(line, backId, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(line->endPoint().y, nudged);
  EXPECT_TRUE(std::signbit(line->startPoint().x));
  EXPECT_EQ(line->colorIndex(), 3);
  ACHAR* layer = line->layer();
  EXPECT_STREQ(layer, L"0");
  acutDelString(layer);
  resbuf* x = line->xData(L"ACAD");
  ASSERT_NE(x, nullptr);
  ASSERT_NE(x->rbnext, nullptr);
  EXPECT_STREQ(x->rbnext->resval.rstring, L"\u0416 survey");
  acutRelRb(x);
  EXPECT_FALSE(line->extensionDictionary().isNull());
  line->close();
  EXPECT_EQ(tdhost::writeDxfText(back), text);
}

TEST_F(DxfFiles, LargeEntitySectionsKeepFollowersCommentsAndOrder) {
  // More tags than the reader takes apart at once, with an old-style polyline whose vertices
  // straddle where the first batch would end, and comments among the entities.
  constexpr int kLines = 600, kVertices = 300;
  std::string text = "  0\nSECTION\n  2\nENTITIES\n";
  auto line = [&](int i) {
    text += "  0\nLINE\n  8\nL" + std::to_string(i % 7) + "\n 10\n" + std::to_string(i) + ".5\n 20\n0\n 30\n0\n";
    text += " 11\n" + std::to_string(i) + "\n 21\n1\n 31\n0\n";
  };
  for (int i = 0; i < kLines / 2; ++i) line(i);
  text += "999\na comment\n  0\nPOLYLINE\n  8\nP\n 66\n1\n 70\n8\n";
  for (int v = 0; v < kVertices; ++v)
    text += "  0\nVERTEX\n  8\nP\n 10\n" + std::to_string(v) + "\n 20\n0\n 30\n0\n 70\n32\n";
  text += "  0\nSEQEND\n  8\nP\n";
  for (int i = kLines / 2; i < kLines; ++i) line(i);
  text += "999\nlast comment\n  0\nENDSEC\n  0\nEOF\n";

  ASSERT_EQ(tdhost::readDxfText(*db, text, "big.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const std::vector<AcDbObjectId> ids = dxftest::modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), static_cast<std::size_t>(kLines + 1));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    AcDbEntity* ent = nullptr;
    ASSERT_EQ(acdbOpenObject(ent, ids[i], AcDb::kForRead), Acad::eOk);
    if (i == kLines / 2) {
      auto* poly = AcDb3dPolyline::cast(ent);
      ASSERT_NE(poly, nullptr);
      double endParam = 0.0;
      EXPECT_EQ(poly->getEndParam(endParam), Acad::eOk);
      EXPECT_EQ(endParam, kVertices - 1) << "one parameter per vertex";
    } else {
      const int n = static_cast<int>(i < kLines / 2 ? i : i - 1);
      auto* l = AcDbLine::cast(ent);
      ASSERT_NE(l, nullptr) << i;
      EXPECT_EQ(l->startPoint().x, n + 0.5) << "entity " << i << " out of order";
    }
    ent->close();
  }
  const std::string first = tdhost::writeDxfText(*db);
  AcDbDatabase again(false, true);
  ASSERT_EQ(tdhost::readDxfText(again, first, "first.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  EXPECT_EQ(tdhost::writeDxfText(again), first);
}

TEST_F(DxfFiles, MalformedEntityDeepInALargeSectionChangesNothing) {
  std::string text = "  0\nSECTION\n  2\nENTITIES\n";
  for (int i = 0; i < 2000; ++i) text += "  0\nPOINT\n  8\n0\n 10\n1\n 20\n2\n 30\n3\n";
  const int badLine = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
  text += "x1\n0\n  0\nENDSEC\n  0\nEOF\n";
  const AcDbObjectId layers = db->layerTableId();
  EXPECT_EQ(tdhost::readDxfText(*db, text, "deep.dxf"), Acad::eInvalidDxfCode);
  EXPECT_NE(tdhost::lastDxfMessage().find("deep.dxf:" + std::to_string(badLine) + ":"), std::string::npos)
      << tdhost::lastDxfMessage();
  EXPECT_EQ(db->layerTableId(), layers);
}

}  // namespace

