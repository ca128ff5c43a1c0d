// Texts, block references and old-style polylines read from files are their classes: the values
// an independent reader (Debian's python3-ezdxf) finds in real drawings, edits saved in place with
// the codes the classes do not hold, and the records that follow them kept.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "host_fixture.h"
#include "tdhost/dxf_io.h"
#include "tdhost/unmodelled.h"
#include "temp_dir.h"

namespace {

constexpr const char* kPython = "/usr/bin/python3";
constexpr double kPi = 3.141592653589793;

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

bool haveEzdxf() {
  return std::filesystem::exists(kPython) &&
         run(std::string(kPython) + " -c 'import ezdxf; print(\"ok\")' 2>&1").find("ok") == 0;
}

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
  std::istringstream in(run(std::string(kPython) + " " + script + " '" + file + "' 2>&1"));
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

std::string utf8(const std::wstring& w) {
  std::string out;
  for (wchar_t wc : w) {
    const auto c = static_cast<std::uint32_t>(wc);
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
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
  if (!haveEzdxf()) GTEST_SKIP() << "python3-ezdxf is not installed";
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

}  // namespace
