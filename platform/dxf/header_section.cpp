// The HEADER section: variables the database models map to its accessors; every other
// variable is kept as read and written back in its place.
#include <cmath>

#include "dbsymtb.h"
#include "dxf/dxf_model.h"

namespace tdhost::dxf {

namespace {

struct Var {
  std::string_view name;
  const RawTag* begin;
  const RawTag* end;
};

std::vector<Var> variables(const std::vector<RawTag>& tags) {
  std::vector<Var> out;
  for (size_t i = 0; i < tags.size();) {
    size_t j = i + 1;
    while (j < tags.size() && tags[j].code != 9) ++j;
    if (tags[i].code == 9) out.push_back({tags[i].value, tags.data() + i + 1, tags.data() + j});
    i = j;
  }
  return out;
}

AcGePoint3d pointOf(const Var& v) {
  AcGePoint3d p;
  for (const RawTag* t = v.begin; t != v.end; ++t) {
    const int axis = t->code / 10 - 1;
    if (t->code % 10 == 0 && axis >= 0 && axis < 3) p[axis] = toDouble(t->value);
  }
  return p;
}

double realOf(const Var& v) { return v.begin != v.end ? toDouble(v.begin->value) : 0.0; }
std::string_view textOf(const Var& v) { return v.begin != v.end ? v.begin->value : std::string_view(); }

AcDbObjectId lookup(DatabaseImpl& impl, TableKind kind, std::string_view name) {
  auto* table = AcDbSymbolTable::cast(peek(impl.tables[kind]));
  return table ? table->lookup(widen(name).c_str()) : AcDbObjectId();
}

std::string recordName(AcDbObjectId id) {
  auto* rec = AcDbSymbolTableRecord::cast(peek(id));
  return rec ? narrow(rec->nameText()) : std::string();
}

}  // namespace

void readHeader(LoadContext& ctx, const Tag* begin, const Tag* end) {
  ctx.state.hasHeader = true;
  for (const Tag* t = begin; t != end; ++t) ctx.state.header.push_back({t->code, t->value});
}

void applyHeader(LoadContext& ctx) {
  HeaderVars& h = ctx.impl.header;
  h.clayer = lookup(ctx.impl, kLayerTable, "0");
  h.textstyle = lookup(ctx.impl, kTextStyleTable, "Standard");
  h.dimstyle = lookup(ctx.impl, kDimStyleTable, "Standard");
  h.celtype = ctx.impl.byLayer;
  for (const Var& v : variables(ctx.state.header)) {
    auto pick = [&](TableKind kind, AcDbObjectId& slot) {
      if (AcDbObjectId id = lookup(ctx.impl, kind, textOf(v)); !id.isNull()) slot = id;
    };
    if (v.name == "$CLAYER") pick(kLayerTable, h.clayer);
    else if (v.name == "$TEXTSTYLE") pick(kTextStyleTable, h.textstyle);
    else if (v.name == "$CELTYPE") pick(kLinetypeTable, h.celtype);
    else if (v.name == "$DIMSTYLE") pick(kDimStyleTable, h.dimstyle);
    else if (v.name == "$TEXTSIZE") h.textsize = realOf(v);
    else if (v.name == "$LTSCALE") h.ltscale = realOf(v);
    else if (v.name == "$UCSORG") h.ucsorg = pointOf(v);
    else if (v.name == "$UCSXDIR") h.ucsxdir = pointOf(v).asVector();
    else if (v.name == "$UCSYDIR") h.ucsydir = pointOf(v).asVector();
    else if (v.name == "$EXTMIN") h.extmin = pointOf(v);
    else if (v.name == "$EXTMAX") h.extmax = pointOf(v);
    else if (v.name == "$INSBASE") h.insbase = pointOf(v);
  }
}

namespace {

// Writes one modelled variable; false when `name` is not one.
bool writeModelled(Out& out, std::string_view name, AcDbDatabase& db) {
  const HeaderVars& h = db.impl().header;
  TagWriter& w = out.w;
  auto point = [&](const AcGePoint3d& p) { w.point(10, p.x, p.y, p.z); };
  if (name == "$ACADVER") out.text(1, out.opt.r2000 ? "AC1015" : "AC1032");
  else if (name == "$DWGCODEPAGE") out.text(3, out.opt.r2000 && !out.opt.codePage.empty() ? out.opt.codePage == "CP1252" ? "ANSI_1252" : "ANSI_" + out.opt.codePage.substr(2) : "ANSI_1252");
  else if (name == "$HANDSEED") w.string(5, handleText(db.handseed()));
  else if (name == "$CLAYER") out.text(8, recordName(h.clayer));
  else if (name == "$TEXTSTYLE") out.text(7, recordName(h.textstyle));
  else if (name == "$CELTYPE") out.text(6, recordName(h.celtype));
  else if (name == "$DIMSTYLE") out.text(2, recordName(h.dimstyle));
  else if (name == "$TEXTSIZE") w.real(40, h.textsize);
  else if (name == "$LTSCALE") w.real(40, h.ltscale);
  else if (name == "$UCSORG") point(h.ucsorg);
  else if (name == "$UCSXDIR") point(AcGePoint3d::kOrigin + h.ucsxdir);
  else if (name == "$UCSYDIR") point(AcGePoint3d::kOrigin + h.ucsydir);
  else if (name == "$EXTMIN") point(h.extmin);
  else if (name == "$EXTMAX") point(h.extmax);
  else if (name == "$INSBASE") point(h.insbase);
  else return false;
  return true;
}

constexpr std::string_view kModelled[] = {"$ACADVER", "$DWGCODEPAGE", "$INSBASE", "$EXTMIN", "$EXTMAX",
                                         "$LTSCALE", "$TEXTSIZE", "$CLAYER", "$CELTYPE", "$TEXTSTYLE",
                                         "$DIMSTYLE", "$HANDSEED", "$UCSORG", "$UCSXDIR", "$UCSYDIR"};

}  // namespace

void writeHeader(Out& out, AcDbDatabase& db, DxfState* state) {
  TagWriter& w = out.w;
  w.string(0, "SECTION");
  w.string(2, "HEADER");
  std::vector<std::string_view> written;
  if (state != nullptr && state->hasHeader) {
    for (const Var& v : variables(state->header)) {
      w.string(9, v.name);
      written.push_back(v.name);
      if (writeModelled(out, v.name, db)) continue;
      for (const RawTag* t = v.begin; t != v.end; ++t) out.text(t->code, t->value);
    }
  }
  for (std::string_view name : kModelled) {
    if (std::find(written.begin(), written.end(), name) != written.end()) continue;
    w.string(9, name);
    writeModelled(out, name, db);
  }
  w.string(0, "ENDSEC");
}

}  // namespace tdhost::dxf
