// AcDbIdMapping and its iterator.
#include "dbidmap.h"

AcDbIdMapping::~AcDbIdMapping() = default;

Acad::ErrorStatus AcDbIdMapping::assign(const AcDbIdPair& pair) {
  if (pair.key().isNull()) return Acad::eNullObjectId;
  auto [it, inserted] = mPairs.insert_or_assign(pair.key(), pair);
  if (inserted) mOrder.push_back(pair.key());
  return Acad::eOk;
}

bool AcDbIdMapping::compute(AcDbIdPair& pair) const {
  auto it = mPairs.find(pair.key());
  if (it == mPairs.end()) return false;
  pair = it->second;
  return true;
}

bool AcDbIdMapping::change(const AcDbIdPair& pair) {
  auto it = mPairs.find(pair.key());
  if (it == mPairs.end()) return false;
  it->second = pair;
  return true;
}

bool AcDbIdMapping::del(AcDbObjectId key) {
  if (mPairs.erase(key) == 0) return false;
  for (auto it = mOrder.begin(); it != mOrder.end(); ++it)
    if (*it == key) {
      mOrder.erase(it);
      break;
    }
  return true;
}

Acad::ErrorStatus AcDbIdMapping::newIterator(AcDbIdMappingIter*& iter) const {
  iter = new AcDbIdMappingIter(*this);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::setDestDb(AcDbDatabase* db) {
  mDest = db;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::origDb(AcDbDatabase*& db) const {
  db = mOrig;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMappingIter::iterateOn(const AcDbIdMapping& map) {
  mMap = &map;
  mPos = 0;
  return Acad::eOk;
}

bool AcDbIdMappingIter::getMap(AcDbIdPair& pair) {
  if (done()) return false;
  auto it = mMap->mPairs.find(mMap->mOrder[mPos]);
  if (it == mMap->mPairs.end()) return false;
  pair = it->second;
  return true;
}

bool AcDbIdMappingIter::next() {
  if (!done()) ++mPos;
  return !done();
}
