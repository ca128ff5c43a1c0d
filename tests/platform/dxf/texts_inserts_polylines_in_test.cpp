// Texts, block references and old-style polylines read from files are their classes: the values
// an independent reader (Debian's python3-ezdxf) finds in real drawings, edits saved in place with
// the codes the classes do not hold, and the records that follow them kept.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "python_check.h"
#include "tdhost/dxf_io.h"
#include "tdhost/unmodelled.h"
#include "temp_dir.h"

using dxftest::dxf;
using dxftest::entities;
using dxftest::idOf;
using dxftest::occurrences;
using dxftest::recordOf;

namespace {

constexpr double kPi = 3.141592653589793;

// One line per TEXT, MTEXT, INSERT and POLYLINE (and per vertex), keyed by block, type and
// ordinal of the type in the block so that files without handles match too. Strings as hex.
const char* const kScript = R"(
import math, sys, ezdxf
from ezdxf.math import OCS, Vec3
doc = ezdxf.readfile(sys.argv[1])
def hx(s): return s.encode('utf-8').hex() or '-'
def low(s): return ''.join(c.lower() if c.isascii() else c for c in s)
def p(v): return ' '.join(repr(float(c)) for c in v)
for block in doc.blocks:
    counts = {}
    for e in block:
        t = e.dxftype()
        if t not in ('TEXT', 'MTEXT', 'INSERT', 'POLYLINE'): continue
        n = counts.get(t, 0); counts[t] = n + 1
        key = hx(low(block.name)) + '|' + t + '|' + str(n)
        ocs = OCS(e.dxf.get('extrusion', (0, 0, 1)))
        if t == 'TEXT':
            ins = ocs.to_wcs(e.dxf.insert)
            al = ocs.to_wcs(e.dxf.align_point) if e.dxf.hasattr('align_point') else ins
            print(key, hx(e.dxf.text), p(ins), p(al), e.dxf.height, e.dxf.rotation, e.dxf.width, e.dxf.oblique,
                  e.dxf.halign, e.dxf.valign, e.dxf.text_generation_flag, hx(low(e.dxf.style)))
        elif t == 'MTEXT':
            # The world direction: the vector when given, else the angle about the extrusion.
            if e.dxf.hasattr('text_direction'): d = Vec3(e.dxf.text_direction)
            else: d = ocs.to_wcs(Vec3.from_deg_angle(e.dxf.get('rotation', 0.0)))
            print(key, hx(e.text), p(e.dxf.insert), e.dxf.char_height, e.dxf.get('width', 0.0),
                  e.dxf.attachment_point, p(d.normalize()), hx(low(e.dxf.style)))
        elif t == 'INSERT':
            print(key, hx(low(e.dxf.name)), p(ocs.to_wcs(e.dxf.insert)), e.dxf.xscale, e.dxf.yscale, e.dxf.zscale,
                  e.dxf.rotation, p(e.dxf.extrusion))
        else:
            vs = list(e.vertices)
            pts = [Vec3(v.dxf.location) for v in vs]
            closed = e.is_closed
            length = 0.0
            for i in range(len(vs) if closed else len(vs) - 1):
                a, b = pts[i], pts[(i + 1) % len(vs)]
                if e.is_3d_polyline:
                    length += a.distance(b)
                    continue
                chord = math.hypot(b.x - a.x, b.y - a.y)
                theta = 4 * math.atan(vs[i].dxf.bulge)
                length += chord if abs(theta) < 1e-12 else chord / 2 * theta / math.sin(theta / 2)
            elevation = e.dxf.elevation.z
            print(key, e.get_mode(), int(closed), repr(elevation), p(e.dxf.extrusion), len(vs), repr(length))
            for i, v in enumerate(vs):
                world = pts[i] if e.is_3d_polyline else ocs.to_wcs(Vec3(pts[i].x, pts[i].y, elevation))
                print(key + '|v|' + str(i), p(pts[i]), v.dxf.bulge, v.dxf.start_width, v.dxf.end_width, p(world))
)";

using Lines = std::map<std::string, std::vector<std::string>>;

Lines ezdxfView(const std::string& file) {
  TempDir dir;
  const std::string script = dir.write("view.py", kScript);
  std::istringstream in(python_check::runScript(script, file));
  Lines out;
  std::string line;
  while (std::getline(in, line)) {
    std::istringstream words(line);
    std::string key, w;
    words >> key;
    while (words >> w) out[key].push_back(w);
  }
  return out;
}

// Encoded here rather than by the host, so that a wrong decoder is not undone by its encoder.
std::string utf8(const std::wstring& w) {
  std::string out;
  for (wchar_t wc : w) {
    const auto c = static_cast<std::uint32_t>(wc);
    const int extra = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const std::uint32_t lead[] = {0x00, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(lead[extra] | (c >> (6 * extra)));
    for (int k = extra - 1; k >= 0; --k) out += static_cast<char>(0x80 | ((c >> (6 * k)) & 0x3F));
  }
  return out;
}

std::string hexOf(const std::wstring& w, bool lower = false) {
  std::string s = utf8(w);
  if (s.empty()) return "-";
  std::string out;
  char buf[3];
  for (unsigned char c : s) {
    if (lower && c < 0x80) c = static_cast<unsigned char>(std::tolower(c));
    std::snprintf(buf, sizeof buf, "%02x", c);
    out += buf;
  }
  return out;
}

std::wstring nameOf(AcDbObjectId id) {
  AcDbSymbolTableRecord* rec = nullptr;
  if (acdbOpenObject(rec, id, AcDb::kForRead) != Acad::eOk) return L"";
  ACHAR* name = nullptr;
  rec->getName(name);
  std::wstring out = name ? name : L"";
  acutDelString(name);
  rec->close();
  return out;
}

// Compares numbers of a line from position `at` on; angles in degrees modulo 360.
class Checker {
 public:
  Checker(const std::vector<std::string>& words, std::string what) : mWords(words), mWhat(std::move(what)) {}
  void word(const std::string& expected) { EXPECT_EQ(next(), expected) << mWhat << " word " << mAt; }
  void number(double actual) {
    const double expected = std::stod(next());
    EXPECT_NEAR(actual, expected, 1e-9 * std::max({1.0, std::fabs(expected)})) << mWhat << " word " << mAt;
  }
  void point(const AcGePoint3d& p) {
    number(p.x);
    number(p.y);
    number(p.z);
  }
  void degrees(double radians) {
    const double d = std::fmod(std::fabs(radians * 180.0 / kPi - std::stod(next())), 360.0);
    EXPECT_NEAR(std::min(d, 360.0 - d), 0.0, 1e-9) << mWhat << " word " << mAt;
  }
  void skip() { next(); }

 private:
  std::string next() {
    if (mAt >= mWords.size()) {
      ADD_FAILURE() << mWhat << ": line too short";
      return "0";
    }
    return mWords[mAt++];
  }
  const std::vector<std::string>& mWords;
  std::string mWhat;
  std::size_t mAt = 0;
};

void checkText(const AcDbText& t, Checker& c) {
  c.word(hexOf(t.textStringConst()));
  c.point(t.position());
  c.point(t.alignmentPoint());
  c.number(t.height());
  c.degrees(t.rotation());
  c.number(t.widthFactor());
  c.degrees(t.oblique());
  c.number(t.horizontalMode());
  c.number(t.verticalMode());
  c.number((t.isMirroredInX() ? 2 : 0) | (t.isMirroredInY() ? 4 : 0));
  c.word(hexOf(nameOf(t.textStyle()), true));
}

void checkMText(const AcDbMText& m, Checker& c) {
  ACHAR* contents = m.contents();
  c.word(hexOf(contents));
  acutDelString(contents);
  c.point(m.location());
  c.number(m.textHeight());
  c.number(m.width());
  c.number(m.attachment());
  c.point(AcGePoint3d::kOrigin + m.direction().normal());
  c.word(hexOf(nameOf(m.textStyle()), true));
}

void checkInsert(const AcDbBlockReference& r, Checker& c) {
  c.word(hexOf(nameOf(r.blockTableRecord()), true));
  c.point(r.position());
  c.number(r.scaleFactors().sx);
  c.number(r.scaleFactors().sy);
  c.number(r.scaleFactors().sz);
  c.degrees(r.rotation());
  c.point(AcGePoint3d::kOrigin + r.normal());
}

// The polyline's line, then one line per vertex.
template <class Poly, class Vertex>
int checkPolyline(const Poly& poly, const Lines& lines, const std::string& key) {
  Checker c(lines.at(key), key);
  const bool is3d = AcDb3dPolyline::cast(&poly) != nullptr;
  c.word(is3d ? "AcDb3dPolyline" : "AcDb2dPolyline");
  c.number(poly.isClosed() ? 1 : 0);
  int n = 0;
  AcDbObjectIterator* it = poly.vertexIterator();
  for (it->start(); !it->done(); it->step()) ++n;
  if constexpr (std::is_same_v<Poly, AcDb2dPolyline>) {
    c.number(poly.elevation());
    c.point(AcGePoint3d::kOrigin + poly.normal());
  } else {
    c.skip();
    c.point(AcGePoint3d(0, 0, 1));
  }
  c.number(n);
  double endParam = 0.0, length = 0.0;
  EXPECT_EQ(poly.getEndParam(endParam), Acad::eOk);
  EXPECT_EQ(poly.getDistAtParam(endParam, length), Acad::eOk);
  c.number(length);
  int i = 0;
  for (it->start(); !it->done(); it->step(), ++i) {
    const std::string vkey = key + "|v|" + std::to_string(i);
    if (lines.count(vkey) == 0) {
      ADD_FAILURE() << vkey << " not found by ezdxf";
      continue;
    }
    Checker v(lines.at(vkey), vkey);
    Vertex* vertex = nullptr;
    EXPECT_EQ(poly.openVertex(vertex, it->objectId(), AcDb::kForRead), Acad::eOk);
    if (vertex == nullptr) continue;
    v.point(vertex->position());
    if constexpr (std::is_same_v<Vertex, AcDb2dVertex>) {
      v.number(vertex->bulge());
      v.number(vertex->startWidth());
      v.number(vertex->endWidth());
      v.point(poly.vertexPosition(*vertex));
    }
    vertex->close();
  }
  delete it;
  return 1 + i;
}

std::string typeOf(const AcDbEntity* ent) {
  if (const auto* g = tdhost::AcDbUnmodelledEntity::cast(ent)) return std::string(g->dxfName());
  return utf8(ent->isA()->dxfName());
}

const char* const kEzdxfSamples[] = {"leica_disto_s910_R12.dxf",      "topo_survey_autocad_map_AC1024.dxf",
                                     "autocad_details_AC1027.dxf",    "librecad_dim_sample_AC1021.dxf",
                                     "poli_all_R12.dxf",              "cloudcompare_3dpolyline_R12.dxf"};
static_assert(std::size(kEzdxfSamples) == 6);

class SampleAgainstEzdxf : public HostTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(SampleAgainstEzdxf, TextsInsertsAndPolylinesAreTheirClassesWithEzdxfValues) {
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::string file = std::string(TDUTILW_SAMPLES_DIR) + "/" + GetParam();
  ASSERT_EQ(db->dxfIn(std::wstring(file.begin(), file.end()).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  const Lines lines = ezdxfView(file);
  ASSERT_FALSE(lines.empty());
  std::size_t matched = 0;
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableIterator* blocks = nullptr;
  table->newIterator(blocks);
  for (; !blocks->done(); blocks->step()) {
    AcDbBlockTableRecord* btr = nullptr;
    blocks->getRecord(btr, AcDb::kForRead);
    const std::string block = hexOf(nameOf(btr->objectId()), true);
    std::map<std::string, int> counts;
    for (AcDbObjectId id : btr->entityIds()) {
      AcDbEntity* ent = nullptr;
      ASSERT_EQ(acdbOpenObject(ent, id, AcDb::kForRead), Acad::eOk);
      const std::string type = typeOf(ent);
      if (type != "TEXT" && type != "MTEXT" && type != "INSERT" && type != "POLYLINE") {
        ent->close();
        continue;
      }
      const std::string key = block + "|" + type + "|" + std::to_string(counts[type]++);
      if (lines.count(key) == 0) {
        ADD_FAILURE() << key << " not found by ezdxf";
      } else if (tdhost::AcDbUnmodelledEntity::cast(ent) != nullptr) {
        ADD_FAILURE() << key << " stayed generic";
      } else if (const auto* t = AcDbText::cast(ent)) {
        Checker c(lines.at(key), key);
        checkText(*t, c);
        ++matched;
      } else if (const auto* m = AcDbMText::cast(ent)) {
        Checker c(lines.at(key), key);
        checkMText(*m, c);
        ++matched;
      } else if (const auto* r = AcDbBlockReference::cast(ent)) {
        Checker c(lines.at(key), key);
        checkInsert(*r, c);
        ++matched;
      } else if (const auto* p2 = AcDb2dPolyline::cast(ent)) {
        matched += checkPolyline<AcDb2dPolyline, AcDb2dVertex>(*p2, lines, key);
      } else if (const auto* p3 = AcDb3dPolyline::cast(ent)) {
        matched += checkPolyline<AcDb3dPolyline, AcDb3dPolylineVertex>(*p3, lines, key);
      }
      ent->close();
    }
    btr->close();
  }
  delete blocks;
  table->close();
  EXPECT_EQ(matched, lines.size()) << "entities ezdxf found that the drawing does not have";
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleAgainstEzdxf, ::testing::ValuesIn(kEzdxfSamples));

class LoadedEdits : public HostTest {
 protected:
  void load(const std::string& text) {
    ASSERT_EQ(tdhost::readDxfText(*db, text, "edits.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  }
  void reload(const std::string& saved) {
    again = std::make_unique<AcDbDatabase>(false, true);
    ASSERT_EQ(tdhost::readDxfText(*again, saved, "saved.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  }
  std::unique_ptr<AcDbDatabase> again;
};

TEST_F(LoadedEdits, EditedTextKeepsUnheldCodesUnknownStyleAndSecondSubclassRecord) {
  load(entities("0 TEXT|5 2A|100 AcDbEntity|8 L1|370 25|100 AcDbText|10 1|20 2|30 0|40 2.5|1 old|7 FANCY|72 1|"
                "11 5|21 2|31 0|100 AcDbText|73 2|"
                "0 TEXT|5 2B|100 AcDbEntity|8 L1|100 AcDbText|10 3|20 4|30 0|40 1|1 keep|100 AcDbText|"
                "0 TEXT|5 2C|100 AcDbEntity|8 L1|100 AcDbText|10 3|20 6|30 0|40 1|1 taller|100 AcDbText"));
  AcDbText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(text, idOf(*db, "2A"), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(text->alignmentPoint(), AcGePoint3d(5, 2, 0));
  EXPECT_EQ(text->horizontalMode(), AcDb::kTextCenter);
  EXPECT_EQ(text->verticalMode(), AcDb::kTextVertMid);
  EXPECT_TRUE(text->textStyle().isNull()) << "the drawing has no style FANCY";
  const std::string before = tdhost::writeDxfText(*db);
  EXPECT_EQ(text->setTextString(L"new"), Acad::eOk);
  text->close();
  ASSERT_EQ(acdbOpenObject(text, idOf(*db, "2C"), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(text->setHeight(2.0), Acad::eOk);
  text->close();
  const std::string after = tdhost::writeDxfText(*db);
  // A vertical mode the record did not have goes into the second subclass record.
  const std::string taller = recordOf(after, "2C");
  EXPECT_EQ(occurrences(taller, " 73\n"), 1u) << taller;
  const std::string tail = "100\nAcDbText\n 73\n0\n";
  EXPECT_EQ(taller.substr(taller.size() - tail.size()), tail) << taller;
  EXPECT_NE(taller.find(" 40\n2.0\n"), std::string::npos) << taller;
  EXPECT_EQ(recordOf(after, "2B"), recordOf(before, "2B")) << "an unedited text changed";
  const std::string rec = recordOf(after, "2A");
  EXPECT_NE(rec.find("  1\nnew\n"), std::string::npos) << rec;
  EXPECT_EQ(rec.find("old"), std::string::npos) << rec;
  EXPECT_NE(rec.find("370\n25\n"), std::string::npos) << rec;
  EXPECT_NE(rec.find("  7\nFANCY\n"), std::string::npos) << rec;
  EXPECT_EQ(occurrences(rec, "100\nAcDbText\n"), 2u) << rec;
  EXPECT_EQ(occurrences(rec, " 73\n"), 1u) << rec;
  EXPECT_NE(rec.find("100\nAcDbText\n 73\n2\n"), std::string::npos) << rec;
  reload(after);
  ASSERT_EQ(acdbOpenObject(text, idOf(*again, "2A"), AcDb::kForRead), Acad::eOk);
  EXPECT_STREQ(text->textStringConst(), L"new");
  EXPECT_EQ(text->verticalMode(), AcDb::kTextVertMid);
  text->close();
  EXPECT_EQ(tdhost::writeDxfText(*again), after);
}

TEST_F(LoadedEdits, R12TextWithoutSubclassMarkersReadsInItsPlaneAndStaysWithoutThem) {
  // Extrusion -z: the object x axis is world -x (arbitrary-axis rule), so OCS (10, 20) is
  // world (-10, 20).
  load(dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|0 ENDSEC|0 SECTION|2 ENTITIES|0 TEXT|5 2A|8 0|10 10|20 20|30 0|"
           "40 3|1 R12|50 30|72 2|11 40|21 20|31 0|210 0|220 0|230 -1|73 3|0 ENDSEC|0 EOF"));
  AcDbText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(text, idOf(*db, "2A"), AcDb::kForWrite), Acad::eOk);
  EXPECT_NEAR(text->position().distanceTo(AcGePoint3d(-10, 20, 0)), 0.0, 1e-12);
  EXPECT_NEAR(text->alignmentPoint().distanceTo(AcGePoint3d(-40, 20, 0)), 0.0, 1e-12);
  EXPECT_EQ(text->normal(), AcGeVector3d(0, 0, -1));
  EXPECT_NEAR(text->rotation(), kPi / 6, 1e-15);
  EXPECT_EQ(text->horizontalMode(), AcDb::kTextRight);
  EXPECT_EQ(text->verticalMode(), AcDb::kTextTop);
  EXPECT_FALSE(text->textStyle().isNull()) << "no code 7 means the standard style";
  EXPECT_EQ(text->setRotation(kPi / 4), Acad::eOk);
  text->close();
  const std::string saved = tdhost::writeDxfText(*db);
  const std::string rec = recordOf(saved, "2A");
  EXPECT_EQ(rec.find("100\n"), std::string::npos) << "subclass markers added to an R12 record: " << rec;
  EXPECT_EQ(occurrences(rec, " 50\n"), 1u) << rec;
  EXPECT_NE(rec.find(" 73\n3\n"), std::string::npos) << rec;
  reload(saved);
  ASSERT_EQ(acdbOpenObject(text, idOf(*again, "2A"), AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(text->rotation(), kPi / 4, 1e-15);
  EXPECT_NEAR(text->alignmentPoint().distanceTo(AcGePoint3d(-40, 20, 0)), 0.0, 1e-12);
  text->close();
}

TEST_F(LoadedEdits, MTextChunksJoinAndAnEditLeavesTheEmbeddedObjectAlone) {
  const std::string a(250, 'a'), b(250, 'b');
  load(entities("0 MTEXT|5 3C|100 AcDbEntity|8 0|100 AcDbMText|10 7|20 8|30 0|40 2|41 12|71 5|72 5|3 " + a + "|3 " + b +
                "|1 tail|50 10|11 0|21 1|31 0|73 1|44 1.0|101 Embedded Object|70 1|10 1|20 0|30 0|11 7|21 8|31 0|"
                "40 12|41 4|46 0"));
  AcDbMText* mtext = nullptr;
  ASSERT_EQ(acdbOpenObject(mtext, idOf(*db, "3C"), AcDb::kForWrite), Acad::eOk);
  ACHAR* contents = mtext->contents();
  EXPECT_EQ(utf8(contents), a + b + "tail");
  acutDelString(contents);
  EXPECT_EQ(mtext->location(), AcGePoint3d(7, 8, 0));
  EXPECT_EQ(mtext->attachment(), AcDbMText::kMiddleCenter);
  EXPECT_NEAR(mtext->rotation(), kPi / 2, 1e-15) << "the direction vector wins over code 50";
  const std::string before = recordOf(tdhost::writeDxfText(*db), "3C");
  EXPECT_EQ(mtext->setContents(L"short"), Acad::eOk);
  mtext->close();
  const std::string rec = recordOf(tdhost::writeDxfText(*db), "3C");
  const std::string embedded = "101\nEmbedded Object\n";
  ASSERT_NE(rec.find(embedded), std::string::npos) << rec;
  EXPECT_EQ(rec.substr(rec.find(embedded)), before.substr(before.find(embedded)));
  const std::string head = rec.substr(0, rec.find(embedded));
  EXPECT_NE(head.find("  1\nshort\n"), std::string::npos) << rec;
  EXPECT_EQ(head.find("  3\n"), std::string::npos) << rec;
  EXPECT_EQ(head.find(" 50\n"), std::string::npos) << "a rotation beside the direction: " << rec;
  EXPECT_NE(head.find(" 72\n5\n"), std::string::npos) << "the drawing direction the class does not hold: " << rec;
  EXPECT_NE(head.find(" 44\n1.0\n"), std::string::npos) << rec;
}

TEST_F(LoadedEdits, InsertsFindBlocksDefinedAfterThemAndKeepTheirAttributes) {
  // OUTER places INNER, defined after it, at (5, 0); the drawing places OUTER at (100, 100),
  // scaled 2 and turned 90 degrees: INNER's line (0,0)-(1,0) lands on (100,110)-(100,112).
  load(dxf("0 SECTION|2 BLOCKS|0 BLOCK|5 20|8 0|2 OUTER|70 0|10 0|20 0|30 0|3 OUTER|"
           "0 INSERT|5 21|8 0|2 INNER|10 5|20 0|30 0|0 ENDBLK|5 22|8 0|"
           "0 BLOCK|5 23|8 0|2 INNER|70 0|10 0|20 0|30 0|3 INNER|0 LINE|5 24|8 0|10 0|20 0|30 0|11 1|21 0|31 0|"
           "0 ENDBLK|5 25|8 0|0 ENDSEC|0 SECTION|2 ENTITIES|"
           "0 INSERT|5 30|8 0|66 1|2 OUTER|10 100|20 100|30 0|41 2|42 2|43 2|50 90|"
           "0 ATTRIB|5 31|8 0|10 100|20 100|30 0|40 1|1 P-17|2 NO|70 0|1001 SURVEY|1000 kept|"
           "0 SEQEND|5 32|8 0|0 ENDSEC|0 EOF"));
  AcDbBlockReference* nested = nullptr;
  ASSERT_EQ(acdbOpenObject(nested, idOf(*db, "21"), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(nameOf(nested->blockTableRecord()), L"INNER");
  nested->close();
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, idOf(*db, "30"), AcDb::kForWrite), Acad::eOk);
  AcDbExtents box;
  ASSERT_EQ(ref->getGeomExtents(box), Acad::eOk);
  EXPECT_NEAR(box.minPoint().distanceTo(AcGePoint3d(100, 110, 0)), 0.0, 1e-12);
  EXPECT_NEAR(box.maxPoint().distanceTo(AcGePoint3d(100, 112, 0)), 0.0, 1e-12);
  const std::string attrib = recordOf(tdhost::writeDxfText(*db), "31");
  EXPECT_NE(attrib.find("1001\nSURVEY\n1000\nkept\n"), std::string::npos) << "its extended data: " << attrib;
  EXPECT_EQ(ref->setPosition(AcGePoint3d(200, 100, 0)), Acad::eOk);
  ref->close();
  const std::string after = tdhost::writeDxfText(*db);
  const std::string rec = recordOf(after, "30");
  EXPECT_NE(rec.find(" 66\n1\n"), std::string::npos) << rec;
  EXPECT_NE(rec.find(" 10\n200.0\n"), std::string::npos) << rec;
  // The attribute and the SEQEND still follow their insertion.
  const std::size_t insertAt = after.find(rec);
  EXPECT_EQ(after.find(attrib), insertAt + rec.size());
  EXPECT_EQ(after.find(recordOf(after, "32")), insertAt + rec.size() + attrib.size());
}

TEST_F(LoadedEdits, BlockPlacedInsideItselfGivesTheBoxOfItsOtherEntities) {
  // SELF holds a line and an insertion of itself; the drawing places SELF stretched (1, 2, 1),
  // a placement a nested reference cannot take, so its box is placed instead.
  load(dxf("0 SECTION|2 BLOCKS|0 BLOCK|5 20|8 0|2 SELF|70 0|10 0|20 0|30 0|"
           "0 LINE|5 21|8 0|10 0|20 0|30 0|11 1|21 1|31 0|0 INSERT|5 22|8 0|2 SELF|10 5|20 0|30 0|"
           "0 ENDBLK|5 23|8 0|0 ENDSEC|0 SECTION|2 ENTITIES|"
           "0 INSERT|5 30|8 0|2 SELF|10 0|20 0|30 0|42 2|0 INSERT|5 31|8 0|2 SELF|10 0|20 0|30 0|0 ENDSEC|0 EOF"));
  for (const auto& [handle, top] : {std::pair{"30", AcGePoint3d(1, 2, 0)}, std::pair{"31", AcGePoint3d(1, 1, 0)}}) {
    AcDbBlockReference* ref = nullptr;
    ASSERT_EQ(acdbOpenObject(ref, idOf(*db, handle), AcDb::kForRead), Acad::eOk);
    AcDbExtents box;
    EXPECT_EQ(ref->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.minPoint(), AcGePoint3d(0, 0, 0)) << handle;
    EXPECT_EQ(box.maxPoint(), top) << handle;
    ref->close();
  }
}

TEST_F(LoadedEdits, OldPolylineVerticesKeepTheirHandlesAndAVertexEditStaysInItsRecord) {
  const std::string file = std::string(TDUTILW_SAMPLES_DIR) + "/poli_all_R12.dxf";
  ASSERT_EQ(db->dxfIn(std::wstring(file.begin(), file.end()).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  // Polyline 29 as the file has it: VERTEX records 4E..52, SEQEND 53.
  AcDb2dPolyline* pline = nullptr;
  ASSERT_EQ(acdbOpenObject(pline, idOf(*db, "29"), AcDb::kForWrite), Acad::eOk);
  std::vector<std::string> handles;
  std::unique_ptr<AcDbObjectIterator> it(pline->vertexIterator());
  for (it->start(); !it->done(); it->step()) {
    AcDb2dVertex* v = nullptr;
    ASSERT_EQ(pline->openVertex(v, it->objectId(), AcDb::kForRead), Acad::eOk);
    handles.push_back(dxftest::handleOf(v));
    v->close();
  }
  EXPECT_EQ(handles, (std::vector<std::string>{"4E", "4F", "50", "51", "52"}));
  const std::string before = tdhost::writeDxfText(*db);
  EXPECT_NE(before.find("SEQEND\n  5\n53\n330\n29\n"), std::string::npos);
  AcDb2dVertex* moved = nullptr;
  ASSERT_EQ(pline->openVertex(moved, idOf(*db, "4F"), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(moved->startWidth(), 1.226339350689633);
  EXPECT_EQ(moved->setPosition(AcGePoint3d(-7.5, -5.25, moved->position().z)), Acad::eOk);
  moved->close();
  auto* added = new AcDb2dVertex(AcGePoint3d(-30, -5, 0));
  ASSERT_EQ(pline->appendVertex(added), Acad::eOk);
  added->close();
  pline->close();
  const std::string after = tdhost::writeDxfText(*db);
  const std::string rec = recordOf(after, "4F");
  EXPECT_NE(rec.find(" 10\n-7.5\n 20\n-5.25\n"), std::string::npos) << rec;
  EXPECT_NE(rec.find(" 62\n20\n"), std::string::npos) << "the vertex's own colour: " << rec;
  EXPECT_NE(rec.find(" 40\n1.226339350689633\n"), std::string::npos) << rec;
  for (const char* same : {"29", "4E", "50", "51", "52"}) EXPECT_EQ(recordOf(after, same), recordOf(before, same)) << same;
  // The new vertex goes between the last one read and the SEQEND, with a handle of its own.
  const std::size_t last = after.find(recordOf(after, "52")) + recordOf(after, "52").size();
  const std::size_t seqEnd = after.find("  0\nSEQEND\n  5\n53\n");
  ASSERT_NE(seqEnd, std::string::npos);
  const std::string between = after.substr(last, seqEnd - last);
  EXPECT_EQ(occurrences(between, "  0\nVERTEX\n"), 1u) << between;
  EXPECT_NE(between.find(" 10\n-30.0\n"), std::string::npos) << between;
  reload(after);
  ASSERT_EQ(acdbOpenObject(pline, idOf(*again, "29"), AcDb::kForRead), Acad::eOk);
  AcGePoint3dArray pts;
  ASSERT_EQ(pline->getStretchPoints(pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 6);
  pline->close();
  EXPECT_EQ(tdhost::writeDxfText(*again), after);
}

TEST_F(LoadedEdits, MeshesAndMultipleInsertsStayGeneric) {
  const std::string vertex = "|0 VERTEX|8 0|10 0|20 0|30 0|0 SEQEND|8 0";
  load(entities("0 POLYLINE|5 40|8 0|66 1|70 64|71 1|72 1" + vertex + "|0 POLYLINE|5 41|8 0|66 1|70 16|71 1|72 1" +
                vertex + "|0 INSERT|5 42|8 0|2 B|10 0|20 0|30 0|70 3|44 10|0 POLYLINE|5 43|8 0|66 1|70 8" + vertex));
  for (const char* handle : {"40", "41", "42"}) {
    AcDbEntity* ent = nullptr;
    ASSERT_EQ(acdbOpenObject(ent, idOf(*db, handle), AcDb::kForRead), Acad::eOk);
    EXPECT_NE(tdhost::AcDbUnmodelledEntity::cast(ent), nullptr) << handle;
    ent->close();
  }
  AcDb3dPolyline* poly = nullptr;
  ASSERT_EQ(acdbOpenObject(poly, idOf(*db, "43"), AcDb::kForRead), Acad::eOk) << "a 3D polyline is modelled";
  poly->close();
  const std::string saved = tdhost::writeDxfText(*db);
  EXPECT_EQ(occurrences(saved, "  0\nVERTEX\n"), 3u);
  EXPECT_EQ(occurrences(saved, "  0\nSEQEND\n"), 3u);
}

}  // namespace
