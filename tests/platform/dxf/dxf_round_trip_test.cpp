// Real drawings from other programs: they load, keep every record, and write back stably.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>

#include "arxHeaders.h"
#include "dxf_test_support.h"
#include "host_fixture.h"
#include "tdhost/dxf_io.h"
#include "tdhost/unmodelled.h"
#include "temp_dir.h"

namespace {

const char* const kSamples[] = {
    "topo_survey_autocad_map_AC1024.dxf", "kompas_bulges_AC1015.dxf",      "leica_disto_s910_R12.dxf",
    "poli_all_R12.dxf",                   "cloudcompare_3dpolyline_R12.dxf", "autocad_details_AC1027.dxf",
    "xdata_qcad_AC1027.dxf",              "librecad_dim_sample_AC1021.dxf", "groups_AC1027.dxf",
    "gdal_headerless_closed_bulge_gk.dxf"};
static_assert(std::size(kSamples) == 10);

std::wstring samplePath(const char* name) {
  std::string p = std::string(TDUTILW_SAMPLES_DIR) + "/" + name;
  return std::wstring(p.begin(), p.end());
}

std::string fmt(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.17g", v);
  return buf;
}

// Per entity (by handle): its type, layer, colour, tags and extended data.
std::map<std::string, std::string> entityDigest(AcDbDatabase& db) {
  std::map<std::string, std::string> out;
  AcDbBlockTable* table = nullptr;
  EXPECT_EQ(db.getBlockTable(table), Acad::eOk);
  AcDbBlockTableIterator* it = nullptr;
  table->newIterator(it);
  for (; !it->done(); it->step()) {
    AcDbBlockTableRecord* btr = nullptr;
    it->getRecord(btr, AcDb::kForRead);
    for (AcDbObjectId id : btr->entityIds()) {
      AcDbEntity* ent = nullptr;
      if (acdbOpenObject(ent, id, AcDb::kForRead) != Acad::eOk) continue;
      std::string d;
      if (auto* g = tdhost::AcDbUnmodelledEntity::cast(ent)) {
        d += std::string(g->dxfName()) + "|";
        for (const auto& t : g->content().tags) d += std::to_string(t.code) + "=" + std::string(t.value) + ";";
        d += "|followers " + std::to_string(g->content().followers.size());
      } else {
        // A modelled entity: its class and its geometry, by box and (for curves) length.
        d += dxftest::narrow(ent->isA()->name());
        AcDbExtents box;
        if (ent->getGeomExtents(box) == Acad::eOk)
          d += "|box " + fmt(box.minPoint().x) + " " + fmt(box.minPoint().y) + " " + fmt(box.maxPoint().x) + " " +
               fmt(box.maxPoint().y);
        if (auto* curve = AcDbCurve::cast(ent)) {
          double endParam = 0.0, length = 0.0;
          curve->getEndParam(endParam);
          curve->getDistAtParam(endParam, length);
          d += "|length " + fmt(length);
        }
      }
      ACHAR* layer = ent->layer();
      d += "|layer " + std::to_string(std::wstring(layer).size()) + " colour " + std::to_string(ent->colorIndex());
      acutDelString(layer);
      if (resbuf* x = ent->xData()) {
        int n = 0;
        for (resbuf* r = x; r; r = r->rbnext) ++n;
        d += "|xdata " + std::to_string(n);
        acutRelRb(x);
      }
      AcDbHandle h;
      ent->getAcDbHandle(h);
      ACHAR buf[32];
      h.getIntoAsciiBuffer(buf);
      out[std::string(buf, buf + wcslen(buf))] = d;
      ent->close();
    }
    btr->close();
  }
  delete it;
  table->close();
  return out;
}

class SampleRoundTrip : public HostTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(SampleRoundTrip, LoadsAndSecondSaveIsByteIdentical) {
  ASSERT_EQ(db->dxfIn(samplePath(GetParam()).c_str()), Acad::eOk) << tdhost::lastDxfMessage();
  const auto before = entityDigest(*db);
  EXPECT_FALSE(before.empty());
  const std::string first = tdhost::writeDxfText(*db);
  EXPECT_EQ(tdhost::writeDxfText(*db), first) << "saving twice without changes differs";

  AcDbDatabase again(false, true);
  ASSERT_EQ(tdhost::readDxfText(again, first, "first.dxf"), Acad::eOk) << tdhost::lastDxfMessage();
  EXPECT_EQ(entityDigest(again), before) << "entities changed through save and load";
  EXPECT_EQ(tdhost::writeDxfText(again), first) << "a reloaded drawing saves differently";
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleRoundTrip, ::testing::ValuesIn(kSamples));

}  // namespace
