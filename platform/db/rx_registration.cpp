// The one place where the host's runtime classes are registered, parent before child.
#include "acdocman.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbray.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "host_init.h"
#include "tdhost/unmodelled.h"

namespace {

template <class T>
AcRxObject* make() {
  return new T;
}

// Descriptions live for the whole process, like the host's class dictionary.
AcRxClass* add(AcRxClass*& slot, const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor ctor = nullptr,
               const ACHAR* dxfName = nullptr) {
  slot = new AcRxClass(name, parent, ctor, dxfName, L"ObjectDBX Classes");
  return slot;
}

}  // namespace

namespace tdhost {

void registerHostClasses() {
  AcRxClass* rx = add(AcRxObject::gpDesc, L"AcRxObject", nullptr);
  add(AcDbHostApplicationServices::gpDesc, L"AcDbHostApplicationServices", rx);
  add(AcDbDatabase::gpDesc, L"AcDbDatabase", rx);
  add(AcApDocument::gpDesc, L"AcApDocument", rx);
  add(AcApDocumentIterator::gpDesc, L"AcApDocumentIterator", rx);
  add(AcApDocManager::gpDesc, L"AcApDocManager", rx);
  AcRxClass* obj = add(AcDbObject::gpDesc, L"AcDbObject", rx);
  AcRxClass* ent = add(AcDbEntity::gpDesc, L"AcDbEntity", obj);
  add(AcDbObjectIterator::gpDesc, L"AcDbObjectIterator", rx);
  add(AcDbPoint::gpDesc, L"AcDbPoint", ent, make<AcDbPoint>, L"POINT");
  add(AcDbBlockReference::gpDesc, L"AcDbBlockReference", ent, make<AcDbBlockReference>, L"INSERT");
  add(AcDbFace::gpDesc, L"AcDbFace", ent, make<AcDbFace>, L"3DFACE");
  add(AcDbText::gpDesc, L"AcDbText", ent, make<AcDbText>, L"TEXT");
  add(AcDbMText::gpDesc, L"AcDbMText", ent, make<AcDbMText>, L"MTEXT");
  AcRxClass* curve = add(AcDbCurve::gpDesc, L"AcDbCurve", ent);
  add(AcDbLine::gpDesc, L"AcDbLine", curve, make<AcDbLine>, L"LINE");
  add(AcDbCircle::gpDesc, L"AcDbCircle", curve, make<AcDbCircle>, L"CIRCLE");
  add(AcDbArc::gpDesc, L"AcDbArc", curve, make<AcDbArc>, L"ARC");
  add(AcDbPolyline::gpDesc, L"AcDbPolyline", curve, make<AcDbPolyline>, L"LWPOLYLINE");
  add(AcDb2dPolyline::gpDesc, L"AcDb2dPolyline", curve, make<AcDb2dPolyline>, L"POLYLINE");
  add(AcDb3dPolyline::gpDesc, L"AcDb3dPolyline", curve, make<AcDb3dPolyline>, L"POLYLINE");
  add(AcDbRay::gpDesc, L"AcDbRay", curve, make<AcDbRay>, L"RAY");
  AcRxClass* vertex = add(AcDbVertex::gpDesc, L"AcDbVertex", ent);
  add(AcDb2dVertex::gpDesc, L"AcDb2dVertex", vertex, make<AcDb2dVertex>, L"VERTEX");
  add(AcDb3dPolylineVertex::gpDesc, L"AcDb3dPolylineVertex", vertex, make<AcDb3dPolylineVertex>, L"VERTEX");
  add(AcDbDictionary::gpDesc, L"AcDbDictionary", obj, make<AcDbDictionary>, L"DICTIONARY");
  add(AcDbXrecord::gpDesc, L"AcDbXrecord", obj, make<AcDbXrecord>, L"XRECORD");
  add(AcDbGroup::gpDesc, L"AcDbGroup", obj, make<AcDbGroup>, L"GROUP");
  // Kept DXF records have no DXF name of their own: each instance carries its type.
  add(tdhost::AcDbUnmodelledEntity::gpDesc, L"AcDbUnmodelledEntity", AcDbEntity::gpDesc,
      make<tdhost::AcDbUnmodelledEntity>);
  add(tdhost::AcDbUnmodelledObject::gpDesc, L"AcDbUnmodelledObject", obj, make<tdhost::AcDbUnmodelledObject>);

  AcRxClass* table = add(AcDbSymbolTable::gpDesc, L"AcDbSymbolTable", obj);
  add(AcDbBlockTable::gpDesc, L"AcDbBlockTable", table, make<AcDbBlockTable>, L"TABLE");
  add(AcDbLayerTable::gpDesc, L"AcDbLayerTable", table, make<AcDbLayerTable>, L"TABLE");
  add(AcDbTextStyleTable::gpDesc, L"AcDbTextStyleTable", table, make<AcDbTextStyleTable>, L"TABLE");
  add(AcDbLinetypeTable::gpDesc, L"AcDbLinetypeTable", table, make<AcDbLinetypeTable>, L"TABLE");
  add(AcDbViewTable::gpDesc, L"AcDbViewTable", table, make<AcDbViewTable>, L"TABLE");
  add(AcDbUCSTable::gpDesc, L"AcDbUCSTable", table, make<AcDbUCSTable>, L"TABLE");
  add(AcDbViewportTable::gpDesc, L"AcDbViewportTable", table, make<AcDbViewportTable>, L"TABLE");
  add(AcDbRegAppTable::gpDesc, L"AcDbRegAppTable", table, make<AcDbRegAppTable>, L"TABLE");
  add(AcDbDimStyleTable::gpDesc, L"AcDbDimStyleTable", table, make<AcDbDimStyleTable>, L"TABLE");

  AcRxClass* rec = add(AcDbSymbolTableRecord::gpDesc, L"AcDbSymbolTableRecord", obj);
  add(AcDbBlockTableRecord::gpDesc, L"AcDbBlockTableRecord", rec, make<AcDbBlockTableRecord>, L"BLOCK_RECORD");
  add(AcDbLayerTableRecord::gpDesc, L"AcDbLayerTableRecord", rec, make<AcDbLayerTableRecord>, L"LAYER");
  add(AcDbTextStyleTableRecord::gpDesc, L"AcDbTextStyleTableRecord", rec, make<AcDbTextStyleTableRecord>,
      L"STYLE");
  add(AcDbLinetypeTableRecord::gpDesc, L"AcDbLinetypeTableRecord", rec, make<AcDbLinetypeTableRecord>, L"LTYPE");
  AcRxClass* view = add(AcDbAbstractViewTableRecord::gpDesc, L"AcDbAbstractViewTableRecord", rec);
  add(AcDbViewTableRecord::gpDesc, L"AcDbViewTableRecord", view, make<AcDbViewTableRecord>, L"VIEW");
  add(AcDbViewportTableRecord::gpDesc, L"AcDbViewportTableRecord", view, make<AcDbViewportTableRecord>, L"VPORT");
  add(AcDbUCSTableRecord::gpDesc, L"AcDbUCSTableRecord", rec, make<AcDbUCSTableRecord>, L"UCS");
  add(AcDbRegAppTableRecord::gpDesc, L"AcDbRegAppTableRecord", rec, make<AcDbRegAppTableRecord>, L"APPID");
  add(AcDbDimStyleTableRecord::gpDesc, L"AcDbDimStyleTableRecord", rec, make<AcDbDimStyleTableRecord>,
      L"DIMSTYLE");
}

}  // namespace tdhost
