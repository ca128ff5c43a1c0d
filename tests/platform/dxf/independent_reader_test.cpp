// A drawing that uses every kind of data the host keeps — layers, linetypes, text styles, named
// views and UCSs, registered applications, extended data, extension dictionaries, xrecords,
// named dictionaries and groups — saved as R2018 and R2000 and read by an independent reader
// (Debian's python3-ezdxf): it audits clean and finds what was written.
#include <gtest/gtest.h>

#include <string>

#include "arxHeaders.h"
#include "dbents.h"
#include "host_fixture.h"
#include "python_check.h"
#include "temp_dir.h"

namespace {

constexpr double kPi = 3.141592653589793;

class IndependentReader : public HostTest {
 protected:
  template <typename Table, typename Record>
  AcDbObjectId addRecord(Acad::ErrorStatus (AcDbDatabase::*get)(Table*&, AcDb::OpenMode), Record* rec,
                         const ACHAR* name) {
    Table* table = nullptr;
    EXPECT_EQ((db.get()->*get)(table, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(rec->setName(name), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, rec), Acad::eOk);
    rec->close();
    table->close();
    return id;
  }

  AcDbObjectId append(AcDbEntity* ent, const ACHAR* layer = L"0") {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
    table->close();
    EXPECT_EQ(ent->setLayer(layer), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(model->appendAcDbEntity(id, ent), Acad::eOk);
    model->close();
    ent->close();
    return id;
  }

  static AcDbXrecord* xrecord(resbuf* chain) {
    auto* rec = new AcDbXrecord;
    EXPECT_EQ(rec->setFromRbChain(*chain), Acad::eOk);
    acutRelRb(chain);
    return rec;
  }

  void buildDrawing() {
    auto* dashed = new AcDbLinetypeTableRecord;
    dashed->setComments(L"Dashed __ __ __");
    dashed->setNumDashes(2);
    dashed->setDashLengthAt(0, 0.5);
    dashed->setDashLengthAt(1, -0.25);
    dashed->setPatternLength(0.75);
    const AcDbObjectId dashedId = addRecord(&AcDbDatabase::getLinetypeTable, dashed, L"DASHED");

    auto* ground = new AcDbLayerTableRecord;
    AcCmColor green;
    green.setColorIndex(3);
    ground->setColor(green);
    ground->setLinetypeObjectId(dashedId);
    ground->setIsLocked(true);
    addRecord(&AcDbDatabase::getLayerTable, ground, L"GROUND");
    auto* trees = new AcDbLayerTableRecord;
    trees->setIsOff(true);
    addRecord(&AcDbDatabase::getLayerTable, trees, L"TREES");
    auto* korean = new AcDbLayerTableRecord;
    korean->setIsFrozen(true);
    addRecord(&AcDbDatabase::getLayerTable, korean, L"측량점");

    auto* style = new AcDbTextStyleTableRecord;
    style->setFileName(L"romans.shx");
    style->setXScale(0.8);
    style->setObliquingAngle(15.0 * kPi / 180.0);
    addRecord(&AcDbDatabase::getTextStyleTable, style, L"SURVEY");

    auto* view = new AcDbViewTableRecord;
    view->setCenterPoint(AcGePoint2d(100, 200));
    view->setHeight(50);
    view->setWidth(80);
    addRecord(&AcDbDatabase::getViewTable, view, L"SITE");
    auto* ucs = new AcDbUCSTableRecord;
    ucs->setOrigin(AcGePoint3d(1000, 2000, 0));
    ucs->setXAxis(AcGeVector3d(0.6, 0.8, 0));
    ucs->setYAxis(AcGeVector3d(-0.8, 0.6, 0));
    addRecord(&AcDbDatabase::getUCSTable, ucs, L"SETOUT");

    ASSERT_EQ(acdbRegApp(L"TDSURVEY"), RTNORM);
    ASSERT_EQ(acdbRegApp(L"TDCODE"), RTNORM);

    AcDbObjectIdArray boundary, points;
    boundary.append(append(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0)), L"GROUND"));
    boundary.append(append(new AcDbLine(AcGePoint3d(100, 0, 0), AcGePoint3d(100, 80, 0)), L"GROUND"));
    append(new AcDbLine(AcGePoint3d(0, 80, 0), AcGePoint3d(0, 0, 0)));
    for (int i = 0; i < 2; ++i) {
      auto* pt = new AcDbPoint(AcGePoint3d(10.0 + i, 20.0, 101.25));
      const std::wstring name = L"P-" + std::to_wstring(i + 1);
      resbuf* xdata = acutBuildList(AcDb::kDxfRegAppName, L"TDSURVEY", AcDb::kDxfXdAsciiString, name.c_str(),
                                    AcDb::kDxfXdReal, 101.25, AcDb::kDxfXdInteger16, 7, AcDb::kDxfRegAppName,
                                    L"TDCODE", AcDb::kDxfXdAsciiString, L"나무", RTNONE);
      EXPECT_EQ(pt->setXData(xdata), Acad::eOk);
      acutRelRb(xdata);
      points.append(append(pt, L"TREES"));
    }

    // A circle carrying an extension dictionary with one xrecord.
    AcDbCircle* circle = nullptr;
    ASSERT_EQ(acdbOpenObject(circle, append(new AcDbCircle(AcGePoint3d(50, 40, 0), AcGeVector3d::kZAxis, 12.5)),
                             AcDb::kForWrite),
              Acad::eOk);
    ASSERT_EQ(circle->createExtensionDictionary(), Acad::eOk);
    AcDbDictionary* ext = nullptr;
    ASSERT_EQ(acdbOpenObject(ext, circle->extensionDictionary(), AcDb::kForWrite), Acad::eOk);
    circle->close();
    AcDbObjectId rid;
    AcDbXrecord* meta = xrecord(acutBuildList(AcDb::kDxfText, L"경계", AcDb::kDxfReal, 3.5, AcDb::kDxfInt16, 12, RTNONE));
    EXPECT_EQ(ext->setAt(L"SURVEY_META", meta, rid), Acad::eOk);
    meta->close();
    ext->close();

    // A named dictionary of settings in the named-object dictionary.
    AcDbDictionary* nod = nullptr;
    ASSERT_EQ(db->getNamedObjectsDictionary(nod, AcDb::kForWrite), Acad::eOk);
    auto* settings = new AcDbDictionary;
    AcDbObjectId sid;
    EXPECT_EQ(nod->setAt(L"TD_SETTINGS", settings, sid), Acad::eOk);
    nod->close();
    AcDbXrecord* units = xrecord(acutBuildList(AcDb::kDxfText, L"m", AcDb::kDxfReal, 0.001, RTNONE));
    EXPECT_EQ(settings->setAt(L"UNITS", units, rid), Acad::eOk);
    units->close();
    settings->close();

    addGroup(L"BOUNDARY", L"site boundary", true, boundary);
    addGroup(L"TREE_POINTS", L"", false, points);
  }

  void addGroup(const ACHAR* name, const ACHAR* description, bool selectable, const AcDbObjectIdArray& members) {
    AcDbDictionary* groups = nullptr;
    ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
    auto* group = new AcDbGroup(description, selectable);
    AcDbObjectId id;
    EXPECT_EQ(groups->setAt(name, group, id), Acad::eOk);
    groups->close();
    EXPECT_EQ(group->append(members), Acad::eOk);
    group->close();
  }
};

// What the independent reader reports, one fact per line.
const char* const kReport = R"(import sys, ezdxf.recover
# The recovering reader decodes the \U+ escapes that R2000 files use beyond their code page.
doc, _ = ezdxf.recover.readfile(sys.argv[1])
a = doc.audit()
print('audit', len(a.errors), len(a.fixes))
msp = doc.modelspace()
for t in ('LINE', 'POINT', 'CIRCLE'): print('count', t, len(msp.query(t)))
for name in ('GROUND', 'TREES', '측량점'):
    l = doc.layers.get(name)
    print('layer', name, l.dxf.color, l.dxf.linetype, l.is_off(), l.is_frozen(), l.is_locked())
lt = doc.linetypes.get('DASHED')
print('linetype', lt.dxf.description, [t.value for t in lt.pattern_tags.tags if t.code in (40, 49)])
st = doc.styles.get('SURVEY')
print('style', st.dxf.font, st.dxf.width, round(st.dxf.oblique, 9))
v = doc.views.get('SITE')
print('view', tuple(v.dxf.center), v.dxf.height, v.dxf.width)
u = doc.ucs.get('SETOUT')
print('ucs', tuple(u.dxf.origin), tuple(u.dxf.xaxis), tuple(u.dxf.yaxis))
print('appids', sorted(a.dxf.name for a in doc.appids if a.dxf.name.startswith('TD')))
for p in msp.query('POINT'):
    print('xdata', p.dxf.layer, [tuple(t) for t in p.get_xdata('TDSURVEY')], [tuple(t) for t in p.get_xdata('TDCODE')])
c = msp.query('CIRCLE')[0]
x = c.get_extension_dict()['SURVEY_META']
print('xrecord', [tuple(t) for t in x.tags])
s = doc.rootdict['TD_SETTINGS']['UNITS']
print('settings', [tuple(t) for t in s.tags])
for name, g in sorted(doc.groups):
    print('group', name, g.dxf.description, g.dxf.selectable, sorted(e.dxf.layer + ':' + e.dxftype() for e in g))
)";

TEST_F(IndependentReader, EveryKindOfDrawingDataReachesEzdxfInBothVersions) {
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  buildDrawing();
  TempDir dir;
  const std::string script = dir.write("report.py", kReport);
  for (const auto& [version, file] : {std::pair{AcDb::kDHL_1032, "r2018.dxf"}, std::pair{AcDb::kDHL_1015, "r2000.dxf"}}) {
    SCOPED_TRACE(file);
    const std::string path = (dir.path() / file).string();
    ASSERT_EQ(db->dxfOut(std::wstring(path.begin(), path.end()).c_str(), 16, version), Acad::eOk);
    const std::string out = python_check::runScript(script, path);
    const char* const expected[] = {
        "audit 0 0\n",
        "count LINE 3\n",
        "count POINT 2\n",
        "count CIRCLE 1\n",
        "layer GROUND 3 DASHED False False True\n",
        "layer TREES -7 Continuous True False False\n",
        "layer 측량점 7 Continuous False True False\n",
        "linetype Dashed __ __ __ [0.75, 0.5, -0.25]\n",
        "style romans.shx 0.8 15.0\n",
        "view (100.0, 200.0, 0.0) 50.0 80.0\n",
        "ucs (1000.0, 2000.0, 0.0) (0.6, 0.8, 0.0) (-0.8, 0.6, 0.0)\n",
        "appids ['TDCODE', 'TDSURVEY']\n",
        "xdata TREES [(1000, 'P-1'), (1040, 101.25), (1070, 7)] [(1000, '나무')]\n",
        "xdata TREES [(1000, 'P-2'), (1040, 101.25), (1070, 7)] [(1000, '나무')]\n",
        "xrecord [(1, '경계'), (40, 3.5), (70, 12)]\n",
        "settings [(1, 'm'), (40, 0.001)]\n",
        "group BOUNDARY site boundary 1 ['GROUND:LINE', 'GROUND:LINE']\n",
        "group TREE_POINTS  0 ['TREES:POINT', 'TREES:POINT']\n",
    };
    for (const char* line : expected) EXPECT_NE(out.find(line), std::string::npos) << "missing: " << line << "\n" << out;
  }
}

}  // namespace

namespace {

// Every object the original file gives a handle to must come back with the same attributes
// and extended data, as the independent reader sees them. Names compare without case, as
// symbol-table lookups do (a layer may name linetype "CONTINUOUS" for record "Continuous");
// a table record's owner is its table, whatever handle the file wrote; no owner is owner 0.
const char* const kCompare = R"(import sys, ezdxf
def handles(path):
    lines = open(path, encoding='latin-1').read().splitlines()
    pairs = [(lines[i].strip(), lines[i + 1].strip()) for i in range(0, len(lines) - 1, 2)]
    seed = {v for (c, v), prev in zip(pairs[1:], pairs) if prev == ('9', '$HANDSEED')}
    return {v.upper() for c, v in pairs if c in ('5', '105')} - {s.upper() for s in seed}
def norm(v):
    if isinstance(v, float): return round(v, 9)
    if isinstance(v, str): return v.upper()
    if hasattr(v, '__iter__'): return tuple(norm(x) for x in v)
    return v
RECORDS = {'VPORT', 'LTYPE', 'LAYER', 'STYLE', 'VIEW', 'UCS', 'APPID', 'DIMSTYLE', 'BLOCK_RECORD'}
def facts(path, keep):
    out = {}
    for e in ezdxf.readfile(path).entitydb.values():
        if e.dxf.handle not in keep: continue
        a = {k: norm(v) for k, v in e.dxfattribs().items()}
        if e.dxftype() in RECORDS or a.get('owner') == '0': a.pop('owner', None)
        if getattr(e, 'xdata', None): a['xdata'] = norm([tuple(t) for app in e.xdata.data.values() for t in app])
        if e.dxftype() == 'XRECORD': a['tags'] = norm([tuple(t) for t in e.tags])
        out[(e.dxftype(), e.dxf.handle)] = a
    return out
keep = handles(sys.argv[1])
a, b = facts(sys.argv[1], keep), facts(sys.argv[2], keep)
print('objects', len(a))
for k in a:
    if k not in b: print('missing', k)
    elif a[k] != b[k]: print('changed', k, {x: (a[k].get(x), b[k].get(x)) for x in set(a[k]) | set(b[k]) if a[k].get(x) != b[k].get(x)})
print('done')
)";

class SampleThroughEzdxf : public HostTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(SampleThroughEzdxf, EveryObjectOfTheFileComesBackUnchanged) {
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::string original = std::string(TDUTILW_SAMPLES_DIR) + "/" + GetParam();
  ASSERT_EQ(db->dxfIn(std::wstring(original.begin(), original.end()).c_str()), Acad::eOk);
  TempDir dir;
  const std::string saved = (dir.path() / "saved.dxf").string();
  ASSERT_EQ(db->dxfOut(std::wstring(saved.begin(), saved.end()).c_str()), Acad::eOk);
  const std::string out = python_check::runScript(dir.write("compare.py", kCompare), original + "' '" + saved);
  EXPECT_NE(out.find("objects "), std::string::npos) << out;
  EXPECT_EQ(out.find("objects 0\n"), std::string::npos) << out;
  EXPECT_NE(out.find("\ndone\n"), std::string::npos) << out;
  EXPECT_EQ(out.find("missing"), std::string::npos) << out;
  EXPECT_EQ(out.find("changed"), std::string::npos) << out;
}

// The files that carry handles (R2000 and later); R12 files get theirs from the reader.
INSTANTIATE_TEST_SUITE_P(Samples, SampleThroughEzdxf,
                         ::testing::Values("topo_survey_autocad_map_AC1024.dxf", "kompas_bulges_AC1015.dxf",
                                           "autocad_details_AC1027.dxf", "xdata_qcad_AC1027.dxf",
                                           "librecad_dim_sample_AC1021.dxf", "groups_AC1027.dxf"));

}  // namespace
