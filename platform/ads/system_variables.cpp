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

// Header variables naming a symbol-table record.
int recordName(AcDbObjectId id, SysVarValue& value) {
  const auto* record = AcDbSymbolTableRecord::cast(peek(id));
  if (record == nullptr) return RTERROR;
  value = record->nameText();
  return RTNORM;
}

int setRecordByName(AcDbDatabase& db, AcDbObjectId tableId, const SysVarValue& value,
                    Acad::ErrorStatus (AcDbDatabase::*setter)(AcDbObjectId)) {
  const auto* table = AcDbSymbolTable::cast(peek(tableId));
  if (table == nullptr) return RTREJ;
  const AcDbObjectId id = table->lookup(std::get<std::wstring>(value).c_str());
  if (id.isNull()) return RTREJ;
  return statusOf((db.*setter)(id));
}

int point(const AcGePoint3d& p, SysVarValue& value) {
  value = p;
  return RTNORM;
}

int real(double r, SysVarValue& value) {
  value = r;
  return RTNORM;
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
// UCS command) and the extents (kept by the drawing). INSBASE is in UCS coordinates.
void registerHeaderVariables(SysVarRegistry& registry) {
  registry.add(L"CLAYER", {RTSTR, true, [](AcDbDatabase* db, SysVarValue& v) { return recordName(db->clayer(), v); },
                           [](AcDbDatabase* db, const SysVarValue& v) {
                             return setRecordByName(*db, db->layerTableId(), v, &AcDbDatabase::setClayer);
                           }});
  registry.add(L"TEXTSTYLE",
               {RTSTR, true, [](AcDbDatabase* db, SysVarValue& v) { return recordName(db->textstyle(), v); },
                [](AcDbDatabase* db, const SysVarValue& v) {
                  return setRecordByName(*db, db->textStyleTableId(), v, &AcDbDatabase::setTextstyle);
                }});
  registry.add(L"CELTYPE", {RTSTR, true, [](AcDbDatabase* db, SysVarValue& v) { return recordName(db->celtype(), v); },
                            [](AcDbDatabase* db, const SysVarValue& v) {
                              return setRecordByName(*db, db->linetypeTableId(), v, &AcDbDatabase::setCeltype);
                            }});
  registry.add(L"DIMSTYLE",
               {RTSTR, true, [](AcDbDatabase* db, SysVarValue& v) { return recordName(db->dimstyle(), v); }});
  registry.add(L"TEXTSIZE", {RTREAL, true, [](AcDbDatabase* db, SysVarValue& v) { return real(db->textsize(), v); },
                             [](AcDbDatabase* db, const SysVarValue& v) {
                               return statusOf(db->setTextsize(std::get<double>(v)));
                             }});
  registry.add(L"LTSCALE", {RTREAL, true, [](AcDbDatabase* db, SysVarValue& v) { return real(db->ltscale(), v); },
                            [](AcDbDatabase* db, const SysVarValue& v) {
                              return statusOf(db->setLtscale(std::get<double>(v)));
                            }});
  registry.add(L"UCSORG", {RT3DPOINT, true, [](AcDbDatabase* db, SysVarValue& v) { return point(db->ucsorg(), v); }});
  registry.add(L"UCSXDIR", {RT3DPOINT, true, [](AcDbDatabase* db, SysVarValue& v) {
                              return point(AcGePoint3d::kOrigin + db->ucsxdir(), v);
                            }});
  registry.add(L"UCSYDIR", {RT3DPOINT, true, [](AcDbDatabase* db, SysVarValue& v) {
                              return point(AcGePoint3d::kOrigin + db->ucsydir(), v);
                            }});
  registry.add(L"EXTMIN", {RT3DPOINT, true, [](AcDbDatabase* db, SysVarValue& v) { return point(db->extmin(), v); }});
  registry.add(L"EXTMAX", {RT3DPOINT, true, [](AcDbDatabase* db, SysVarValue& v) { return point(db->extmax(), v); }});
  registry.add(L"INSBASE", {RT3DPOINT, true,
                            [](AcDbDatabase* db, SysVarValue& v) {
                              return point(ucsToWorld(*db).inverse() * db->insbase(), v);
                            },
                            [](AcDbDatabase* db, const SysVarValue& v) {
                              return statusOf(db->setInsbase(ucsToWorld(*db) * std::get<AcGePoint3d>(v)));
                            }});
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
