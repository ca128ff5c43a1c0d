// AcDbObject's owned data: extended data per registered application and the extension
// dictionary.
#include <cwctype>

#include "ads/rb_list.h"
#include "database_impl.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "object_access.h"

using tdhost::RbItem;
using tdhost::RbList;

namespace {

bool sameName(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i]))) return false;
  return true;
}

// [begin, end) of the group of `app` in `items`; begin == end == size when absent.
std::pair<size_t, size_t> findGroup(const RbList& items, const std::wstring& app) {
  for (size_t i = 0; i < items.size(); ++i) {
    if (items[i].code != 1001 || !sameName(items[i].text, app)) continue;
    size_t j = i + 1;
    while (j < items.size() && items[j].code != 1001) ++j;
    return {i, j};
  }
  return {items.size(), items.size()};
}

bool isRegistered(AcDbDatabase* db, const std::wstring& app) {
  if (db == nullptr) return true;  // nothing to check against yet
  AcDbStub* tableStub = db->regAppTableId();
  auto* table = tableStub ? AcDbSymbolTable::cast(tableStub->object.get()) : nullptr;
  if (table == nullptr) return false;
  return !table->lookup(app.c_str()).isNull();
}

}  // namespace

resbuf* AcDbObject::xData(const ACHAR* regappName) const {
  if (checkRead("xData") != Acad::eOk || mXData == nullptr) return nullptr;
  const RbList& items = mXData->items();
  if (regappName == nullptr) return tdhost::rbChainFrom(items);
  auto [begin, end] = findGroup(items, regappName);
  return begin == end ? nullptr : tdhost::rbChainFrom(items, begin, end);
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
  if (Acad::ErrorStatus es = checkWrite("setXData"); es != Acad::eOk) return es;
  RbList incoming = tdhost::rbListFrom(xdata);
  if (incoming.empty()) return Acad::eOk;
  if (incoming.front().code != 1001) return Acad::eInvalidInput;
  AcDbDatabase* db = database();
  if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
  for (const RbItem& item : incoming) {
    if (item.code < 1000 || item.code > 1071 || tdhost::rbKindOf(item.code) == tdhost::RbKind::kNone)
      return Acad::eInvalidInput;
    if (item.code == 1001 && (item.text.empty() || !isRegistered(db, item.text))) return Acad::eRegappIdNotFound;
  }
  RbList result = mXData ? mXData->items() : RbList{};
  for (size_t i = 0; i < incoming.size();) {
    size_t j = i + 1;
    while (j < incoming.size() && incoming[j].code != 1001) ++j;
    auto [begin, end] = findGroup(result, incoming[i].text);
    if (begin != end) result.erase(result.begin() + static_cast<long>(begin), result.begin() + static_cast<long>(end));
    if (j > i + 1) result.insert(result.end(), incoming.begin() + static_cast<long>(i), incoming.begin() + static_cast<long>(j));
    i = j;
  }
  if (tdhost::xdataBytes(result) > tdhost::kXDataLimit) return Acad::eXdataSizeExceeded;
  if (result.empty()) {
    mXData.reset();
  } else {
    if (!mXData) mXData = std::make_unique<tdhost::XDataStore>();
    mXData->items() = std::move(result);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
  if (Acad::ErrorStatus es = checkWrite("createExtensionDictionary"); es != Acad::eOk) return es;
  if (mStub == nullptr) return Acad::eNoDatabase;
  if (!mExtDictId.isNull() && !mExtDictId.isErased()) return Acad::eAlreadyInDb;
  auto dict = std::make_unique<AcDbDictionary>();
  tdhost::ObjectAccess::setOwner(*dict, objectId());
  AcDbStub* stub = mStub->database->impl().adopt(std::move(dict));
  stub->object->close();
  mExtDictId = AcDbObjectId(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
  if (Acad::ErrorStatus es = checkWrite("releaseExtensionDictionary"); es != Acad::eOk) return es;
  if (mExtDictId.isNull()) return Acad::eOk;
  AcDbDictionary* dict = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dict, mExtDictId, AcDb::kForWrite, true);
  if (es != Acad::eOk) return es;
  if (dict->numEntries() > 0) {
    dict->close();
    return Acad::eContainerNotEmpty;
  }
  if (!dict->isErased()) dict->erase(true);
  dict->close();
  mExtDictId.setNull();
  return Acad::eOk;
}

void AcDbObject::subTranslateIds(const AcDbIdMapping& idMap) {
  for (AcDbObjectId* ref : {&mOwnerId, &mExtDictId}) {
    AcDbIdPair pair(*ref, AcDbObjectId::kNull, false);
    if (!ref->isNull() && idMap.compute(pair) && !pair.value().isNull()) *ref = pair.value();
  }
  // Handles in extended data (1005) follow the objects they name into the clone.
  if (mXData == nullptr) return;
  AcDbDatabase* orig = nullptr;
  idMap.origDb(orig);
  if (orig == nullptr) return;
  for (RbItem& item : mXData->items()) {
    if (item.code != 1005) continue;
    AcDbObjectId source;
    if (orig->getAcDbObjectId(source, false, AcDbHandle(item.text.c_str())) != Acad::eOk) continue;
    AcDbIdPair pair(source, AcDbObjectId::kNull, false);
    if (!idMap.compute(pair) || pair.value().isNull()) continue;
    ACHAR text[17];
    pair.value().handle().getIntoAsciiBuffer(text, 17);
    item.text = text;
  }
}
