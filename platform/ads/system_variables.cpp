// acedGetVar and acedSetVar over the system-variable registry, and the variables kept in the
// drawing's header.
#include "system_variables.h"

#include <climits>
#include <cwctype>

#include "acedads.h"
#include "acutads.h"
#include "coordinate_frames.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "object_access.h"

namespace tdhost {

namespace {

std::wstring upperCase(std::wstring_view name) {
  std::wstring upper(name);
  for (wchar_t& c : upper) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return upper;
}

// `in` as a value of `type`; false when the buffer holds another kind of value.
bool valueFrom(short type, const resbuf& in, SysVarValue& out) {
  const ads_u_val& v = in.resval;
  switch (type) {
    case RTSHORT:
      if (in.restype == RTSHORT) out = v.rint;
      else if (in.restype == RTLONG && v.rlong >= SHRT_MIN && v.rlong <= SHRT_MAX) out = static_cast<short>(v.rlong);
      else return false;
      return true;
    case RTREAL:
      if (in.restype == RTREAL || in.restype == RTANG) out = v.rreal;
      else if (in.restype == RTSHORT) out = static_cast<double>(v.rint);
      else if (in.restype == RTLONG) out = static_cast<double>(v.rlong);
      else return false;
      return true;
    case RTPOINT:
    case RT3DPOINT:
      if (in.restype != RTPOINT && in.restype != RT3DPOINT) return false;
      out = AcGePoint3d(v.rpoint[X], v.rpoint[Y], in.restype == RT3DPOINT && type == RT3DPOINT ? v.rpoint[Z] : 0.0);
      return true;
    case RTSTR:
      if (in.restype != RTSTR || v.rstring == nullptr) return false;
      out = std::wstring(v.rstring);
      return true;
    default: return false;
  }
}

void store(short type, const SysVarValue& value, resbuf& out) {
  out.restype = type;
  ads_u_val& v = out.resval;
  if (const auto* s = std::get_if<short>(&value)) v.rint = *s;
  else if (const auto* r = std::get_if<double>(&value)) v.rreal = *r;
  else if (const auto* p = std::get_if<AcGePoint3d>(&value)) {
    v.rpoint[X] = p->x;
    v.rpoint[Y] = p->y;
    v.rpoint[Z] = type == RTPOINT ? 0.0 : p->z;
  } else {
    v.rstring = acutNewString(std::get<std::wstring>(value).c_str());
  }
}

int statusOf(Acad::ErrorStatus es) { return es == Acad::eOk ? RTNORM : RTREJ; }

using Db = AcDbDatabase;

// Getters and setters made from the database's header accessors.
template <AcDbObjectId (Db::*Id)() const>
int recordName(Db* db, SysVarValue& value) {
  const auto* record = AcDbSymbolTableRecord::cast(peek((db->*Id)()));
  if (record == nullptr) return RTERROR;
  value = record->nameText();
  return RTNORM;
}

// The record named by the value (any case) must exist in the table.
template <AcDbObjectId (Db::*Table)() const, Acad::ErrorStatus (Db::*Set)(AcDbObjectId)>
int setRecord(Db* db, const SysVarValue& value) {
  const auto* table = AcDbSymbolTable::cast(peek((db->*Table)()));
  if (table == nullptr) return RTREJ;
  const AcDbObjectId id = table->lookup(std::get<std::wstring>(value).c_str());
  return id.isNull() ? RTREJ : statusOf((db->*Set)(id));
}

template <double (Db::*Get)() const>
int real(Db* db, SysVarValue& value) {
  value = (db->*Get)();
  return RTNORM;
}

template <Acad::ErrorStatus (Db::*Set)(double)>
int setReal(Db* db, const SysVarValue& value) {
  return statusOf((db->*Set)(std::get<double>(value)));
}

template <AcGePoint3d (Db::*Get)() const>
int point(Db* db, SysVarValue& value) {
  value = (db->*Get)();
  return RTNORM;
}

template <AcGeVector3d (Db::*Get)() const>
int direction(Db* db, SysVarValue& value) {
  value = AcGePoint3d::kOrigin + (db->*Get)();
  return RTNORM;
}

// The drawing keeps the insertion base in world coordinates; the variable is in the UCS.
int insbaseInUcs(Db* db, SysVarValue& value) {
  value = ucsToWorld(*db).inverse() * db->insbase();
  return RTNORM;
}

int setInsbaseFromUcs(Db* db, const SysVarValue& value) {
  return statusOf(db->setInsbase(ucsToWorld(*db) * std::get<AcGePoint3d>(value)));
}

}  // namespace

void SysVarRegistry::add(std::wstring_view name, const SysVar& var) { mVars[upperCase(name)] = var; }

const SysVar* SysVarRegistry::find(std::wstring_view name) const {
  auto it = mVars.find(upperCase(name));
  return it == mVars.end() ? nullptr : &it->second;
}

const SysVarRegistry& systemVariables() {
  static const SysVarRegistry registry = [] {
    SysVarRegistry r;
    registerHeaderVariables(r);
    registerViewVariables(r);
    return r;
  }();
  return registry;
}

// Read-only as on the host: DIMSTYLE (changed by restoring a style), the UCS (changed by the
// UCS command) and the extents (kept by the drawing).
void registerHeaderVariables(SysVarRegistry& registry) {
  registry.add(L"CLAYER", {RTSTR, true, recordName<&Db::clayer>, setRecord<&Db::layerTableId, &Db::setClayer>});
  registry.add(L"TEXTSTYLE",
               {RTSTR, true, recordName<&Db::textstyle>, setRecord<&Db::textStyleTableId, &Db::setTextstyle>});
  registry.add(L"CELTYPE", {RTSTR, true, recordName<&Db::celtype>, setRecord<&Db::linetypeTableId, &Db::setCeltype>});
  registry.add(L"DIMSTYLE", {RTSTR, true, recordName<&Db::dimstyle>});
  registry.add(L"TEXTSIZE", {RTREAL, true, real<&Db::textsize>, setReal<&Db::setTextsize>});
  registry.add(L"LTSCALE", {RTREAL, true, real<&Db::ltscale>, setReal<&Db::setLtscale>});
  registry.add(L"UCSORG", {RT3DPOINT, true, point<&Db::ucsorg>});
  registry.add(L"UCSXDIR", {RT3DPOINT, true, direction<&Db::ucsxdir>});
  registry.add(L"UCSYDIR", {RT3DPOINT, true, direction<&Db::ucsydir>});
  registry.add(L"EXTMIN", {RT3DPOINT, true, point<&Db::extmin>});
  registry.add(L"EXTMAX", {RT3DPOINT, true, point<&Db::extmax>});
  registry.add(L"INSBASE", {RT3DPOINT, true, insbaseInUcs, setInsbaseFromUcs});
}

}  // namespace tdhost

using tdhost::SysVar;
using tdhost::SysVarValue;

int acedGetVar(const ACHAR* sym, resbuf* result) {
  if (sym == nullptr || result == nullptr) return RTERROR;
  const SysVar* var = tdhost::systemVariables().find(sym);
  if (var == nullptr) return RTREJ;
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (var->perDrawing && db == nullptr) return RTERROR;
  SysVarValue value;
  if (int status = var->get(db, value); status != RTNORM) return status;
  tdhost::store(var->type, value, *result);
  return RTNORM;
}

int acedSetVar(const ACHAR* sym, const resbuf* val) {
  if (sym == nullptr || val == nullptr) return RTERROR;
  const SysVar* var = tdhost::systemVariables().find(sym);
  if (var == nullptr || var->set == nullptr) return RTREJ;
  SysVarValue value;
  if (!tdhost::valueFrom(var->type, *val, value)) return RTREJ;
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (var->perDrawing && db == nullptr) return RTERROR;
  return var->set(db, value);
}
