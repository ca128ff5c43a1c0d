// Loaded entities keep their records as a place in the file text, read again when saved: what
// comes back must be the tags as first read, whatever the layout of the file.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "tdhost/dxf_io.h"

namespace {

using dxftest::modelSpaceIds;

std::string crlf(const std::string& text) {
  std::string out;
  for (char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return out;
}

class LoadSpeedPaths : public HostTest {};

}  // namespace

TEST_F(LoadSpeedPaths, UnchangedEntitiesAreWrittenFromTheirPlaceInTheText) {
  // CRLF line ends, a comment inside a record, padded numbers, codes the class does not hold,
  // extended data and a record without tags at the very end of the text.
  const std::string text = crlf(
      "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  5\n2A\n100\nAcDbEntity\n999\nnot kept\n  8\nL1\n370\n25\n"
      "100\nAcDbLine\n 10\n  1.50  \n 20\n2\n 30\n0\n 11\n3\n 21\n4\n 31\n0\n1001\nACAD\n1000\nnote\n"
      "  0\nPOINT\n  5\n2B\n100\nAcDbEntity\n  8\nL1\n100\nAcDbPoint\n 10\n5\n 20\n6\n 30\n7\n 48\n2.5\n"
      "  0\nCIRCLE\n  0\nENDSEC\n  0\nEOF\n");
  ASSERT_EQ(tdhost::readDxfText(*db, text, "paths.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const auto ids = modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), 3u);

  const std::string saved = tdhost::writeDxfText(*db);
  EXPECT_NE(saved.find("  0\nLINE\n  5\n2A\n330\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("  8\nL1\n370\n25\n100\nAcDbLine\n 10\n1.50\n 20\n2\n 30\n0\n 11\n3\n"), std::string::npos)
      << saved;
  EXPECT_NE(saved.find("1001\nACAD\n1000\nnote\n"), std::string::npos);
  EXPECT_NE(saved.find(" 30\n7\n 48\n2.5\n"), std::string::npos);
  EXPECT_EQ(saved.find("not kept"), std::string::npos);
  EXPECT_EQ(saved.find('\r'), std::string::npos);

  // A save of the saved drawing is the same text: nothing drifts from save to save.
  auto again = std::make_unique<AcDbDatabase>(false, true);
  ASSERT_EQ(tdhost::readDxfText(*again, saved, "saved.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  EXPECT_EQ(tdhost::writeDxfText(*again), saved);

  // A changed entity takes its fields from the class and keeps the other codes as read.
  AcDbPoint* point = nullptr;
  ASSERT_EQ(acdbOpenObject(point, ids[1], AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(point->position(), AcGePoint3d(5, 6, 7));
  point->setPosition(AcGePoint3d(8, 9, 10));
  point->close();
  const std::string changed = tdhost::writeDxfText(*db);
  EXPECT_NE(changed.find(" 10\n8.0\n 20\n9.0\n 30\n10.0\n"), std::string::npos) << changed;
  EXPECT_NE(changed.find(" 48\n2.5\n"), std::string::npos);
  EXPECT_NE(changed.find(" 10\n1.50\n"), std::string::npos);
}

TEST_F(LoadSpeedPaths, RecodedValuesAreKeptAsConverted) {
  // An ANSI file: its values are converted at load, so the record cannot be read again from
  // the file text and keeps its tags.
  const std::string text =
      "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  9\n$DWGCODEPAGE\n  3\nANSI_1252\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  5\n2A\n100\nAcDbEntity\n  8\nCaf\xE9\n 62\n1\n100\nAcDbLine\n"
      " 10\n1\n 20\n2\n 30\n0\n 11\n3\n 21\n4\n 31\n0\n  0\nENDSEC\n  0\nEOF\n";
  ASSERT_EQ(tdhost::readDxfText(*db, text, "ansi.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  ASSERT_EQ(modelSpaceIds(*db).size(), 1u);
  const std::string saved = tdhost::writeDxfText(*db);
  EXPECT_NE(saved.find("  8\nCaf\xC3\xA9\n 62\n1\n100\nAcDbLine\n 10\n1\n"), std::string::npos) << saved;
}

TEST_F(LoadSpeedPaths, ExtendedDataKeptAsTextReadsAndSavesAsItsItems) {
  // CRLF, padded numbers, a comment, a 2D point, non-ASCII and empty strings; binary data on the
  // second entity, and its empty value ending the section.
  const std::string text = crlf(
      "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  5\n2A\n100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n 10\n1\n 20\n2\n"
      " 30\n3\n1001\nSURVEY\n1000\nCaf\xC3\xA9\n1040\n  0.50 \n999\nskipped\n1070\n 7\n1010\n1\n1020\n2\n1030\n3\n"
      "1011\n4\n1021\n5\n1000\n\n  0\nPOINT\n  5\n2B\n100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n 10\n0\n 20\n0\n"
      " 30\n0\n1001\nSURVEY\n1004\n0a1B\n1000\n\n  0\nENDSEC\n  0\nEOF\n");
  ASSERT_EQ(tdhost::readDxfText(*db, text, "xdata.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  const auto ids = modelSpaceIds(*db);
  ASSERT_EQ(ids.size(), 2u);
  const std::string asText = tdhost::writeDxfText(*db);

  AcDbObject* first = nullptr;
  ASSERT_EQ(acdbOpenObject(first, ids[0], AcDb::kForRead), Acad::eOk);
  resbuf* x = first->xData(L"SURVEY");
  first->close();
  std::vector<resbuf*> items;
  for (resbuf* rb = x; rb != nullptr; rb = rb->rbnext) items.push_back(rb);
  ASSERT_EQ(items.size(), 7u);
  EXPECT_EQ(std::wstring(items[1]->resval.rstring), L"Caf\u00E9");
  EXPECT_EQ(items[2]->resval.rreal, 0.5);
  EXPECT_EQ(items[3]->resval.rint, 7);
  EXPECT_EQ(AcGePoint3d(items[4]->resval.rpoint[0], items[4]->resval.rpoint[1], items[4]->resval.rpoint[2]),
            AcGePoint3d(1, 2, 3));
  EXPECT_EQ(items[5]->restype, 1011);
  EXPECT_EQ(AcGePoint3d(items[5]->resval.rpoint[0], items[5]->resval.rpoint[1], items[5]->resval.rpoint[2]),
            AcGePoint3d(4, 5, 0));
  EXPECT_EQ(std::wstring(items[6]->resval.rstring), L"");
  acutRelRb(x);
  AcDbObject* second = nullptr;
  ASSERT_EQ(acdbOpenObject(second, ids[1], AcDb::kForRead), Acad::eOk);
  acutRelRb(second->xData());
  second->close();

  // Written from the text or from the items made of it: the same file.
  EXPECT_EQ(tdhost::writeDxfText(*db), asText);
  EXPECT_NE(asText.find("1040\n0.5\n1070\n7\n1010\n1.0\n1020\n2.0\n1030\n3.0\n1011\n4.0\n1021\n5.0\n1031\n0.0\n"),
            std::string::npos)
      << asText;
  EXPECT_NE(asText.find("1004\n0A1B\n1000\n\n"), std::string::npos);
}

TEST_F(LoadSpeedPaths, ALoadReplacesTheDrawingBeforeIt) {
  // The first drawing's objects and the memory they came from go; the second loads as into a
  // fresh database, and so does the first again after it.
  const std::string details = std::string(TDUTILW_SAMPLES_DIR) + "/autocad_details_AC1027.dxf";
  const std::string topo = std::string(TDUTILW_SAMPLES_DIR) + "/topo_survey_autocad_map_AC1024.dxf";
  auto savedFresh = [](const std::string& file) {
    AcDbDatabase fresh(false, true);
    EXPECT_EQ(fresh.dxfIn(dxftest::wide(file).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
    return tdhost::writeDxfText(fresh);
  };
  for (const std::string& file : {details, topo, details}) {
    ASSERT_EQ(db->dxfIn(dxftest::wide(file).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
    EXPECT_EQ(tdhost::writeDxfText(*db), savedFresh(file)) << file;
  }
}
