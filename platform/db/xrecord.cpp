// AcDbXrecord: a stored result-buffer chain; object references are kept as ids.
#include "ads/rb_list.h"
#include "dbidmap.h"
#include "dbxrecrd.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbXrecord)

AcDbXrecord::AcDbXrecord() = default;
AcDbXrecord::~AcDbXrecord() = default;

AcDbXrecord::AcDbXrecord(const AcDbXrecord& other)
    : AcDbObject(other),
      mData(other.mData ? std::make_unique<tdhost::XDataStore>(*other.mData) : nullptr),
      mXlate(other.mXlate) {}

AcDbXrecord& AcDbXrecord::operator=(const AcDbXrecord& other) {
  if (this == &other) return *this;
  AcDbObject::operator=(other);
  mData = other.mData ? std::make_unique<tdhost::XDataStore>(*other.mData) : nullptr;
  mXlate = other.mXlate;
  return *this;
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** ppRb, AcDbDatabase*) const {
  if (ppRb == nullptr) return Acad::eInvalidInput;
  *ppRb = nullptr;
  if (Acad::ErrorStatus es = checkRead("rbChain"); es != Acad::eOk) return es;
  if (mData) *ppRb = tdhost::rbChainFrom(mData->items());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& pRb, AcDbDatabase*) {
  if (Acad::ErrorStatus es = checkWrite("setFromRbChain"); es != Acad::eOk) return es;
  tdhost::RbList items = tdhost::rbListFrom(&pRb);
  for (const tdhost::RbItem& item : items)
    if (item.code >= 1000 || (tdhost::rbKindOf(item.code) == tdhost::RbKind::kNone && item.code != 0 &&
                              item.code != 102))
      return Acad::eInvalidInput;
  if (!mData) mData = std::make_unique<tdhost::XDataStore>();
  mData->items() = std::move(items);
  return Acad::eOk;
}

void AcDbXrecord::setXlateReferences(bool translate) {
  if (checkWrite("setXlateReferences") != Acad::eOk) return;
  mXlate = translate;
}

void AcDbXrecord::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbObject::subTranslateIds(idMap);
  if (!mData || !mXlate) return;
  for (tdhost::RbItem& item : mData->items()) {
    if (item.kind != tdhost::RbKind::kName) continue;
    AcDbObjectId id;
    id.setFromOldId(item.ints[0]);
    AcDbIdPair pair(id, AcDbObjectId::kNull, false);
    if (idMap.compute(pair) && !pair.value().isNull()) item.ints[0] = pair.value().asOldId();
  }
}

void AcDbXrecord::attachLoaded(std::unique_ptr<tdhost::XDataStore> data) { mData = std::move(data); }
