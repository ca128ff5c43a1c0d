// AcDbIdMapping: the source-to-clone id pairs of a deep clone, and their iterator.
#pragma once

#include <map>
#include <vector>

#include "dbmain.h"

class TDHOST_API AcDbIdPair {
 public:
  AcDbIdPair() = default;
  AcDbIdPair(AcDbObjectId key, AcDbObjectId value, bool isCloned, bool isPrimary = false,
             bool isOwnerXlated = true)
      : mKey(key), mValue(value), mCloned(isCloned), mPrimary(isPrimary), mOwnerXlated(isOwnerXlated) {}

  AcDbObjectId key() const { return mKey; }
  AcDbObjectId value() const { return mValue; }
  bool isCloned() const { return mCloned; }
  bool isPrimary() const { return mPrimary; }
  bool isOwnerXlated() const { return mOwnerXlated; }
  void setKey(AcDbObjectId key) { mKey = key; }
  void setValue(AcDbObjectId value) { mValue = value; }
  void setIsCloned(bool cloned) { mCloned = cloned; }
  void setIsPrimary(bool primary) { mPrimary = primary; }
  void setIsOwnerXlated(bool xlated) { mOwnerXlated = xlated; }

 private:
  AcDbObjectId mKey, mValue;
  bool mCloned = false, mPrimary = false, mOwnerXlated = true;
};

class AcDbIdMappingIter;

class TDHOST_API AcDbIdMapping {
 public:
  AcDbIdMapping() = default;
  ~AcDbIdMapping();

  // Adds or replaces the pair of `pair.key()`.
  Acad::ErrorStatus assign(const AcDbIdPair& pair);
  // Fills `pair` for `pair.key()`; false when the key is not mapped.
  bool compute(AcDbIdPair& pair) const;
  bool change(const AcDbIdPair& pair);
  bool del(AcDbObjectId key);
  Acad::ErrorStatus newIterator(AcDbIdMappingIter*& iter) const;

  AcDbDatabase* destDb() const { return mDest; }
  Acad::ErrorStatus setDestDb(AcDbDatabase* db);
  Acad::ErrorStatus origDb(AcDbDatabase*& db) const;
  AcDb::DeepCloneType deepCloneContext() const { return mContext; }
  AcDb::DuplicateRecordCloning duplicateRecordCloning() const { return mDrc; }
  // Host-internal.
  void setOrigDb(AcDbDatabase* db) { mOrig = db; }
  void setDeepCloneContext(AcDb::DeepCloneType context) { mContext = context; }
  std::size_t size() const { return mPairs.size(); }

 private:
  friend class AcDbIdMappingIter;
  std::map<AcDbObjectId, AcDbIdPair> mPairs;
  std::vector<AcDbObjectId> mOrder;  // keys in assignment order
  AcDbDatabase* mDest = nullptr;
  AcDbDatabase* mOrig = nullptr;
  AcDb::DeepCloneType mContext = AcDb::kDcCopy;
  AcDb::DuplicateRecordCloning mDrc = AcDb::kDrcIgnore;
};

// Walks the pairs in the order they were assigned. Unlike the SDK's iterator it is
// handed out by AcDbIdMapping::newIterator as well as constructed on a mapping.
class TDHOST_API AcDbIdMappingIter {
 public:
  explicit AcDbIdMappingIter(const AcDbIdMapping& map) : mMap(&map) {}
  Acad::ErrorStatus iterateOn(const AcDbIdMapping& map);
  void start() { mPos = 0; }
  bool getMap(AcDbIdPair& pair);
  bool next();
  bool done() const { return mPos >= mMap->mOrder.size(); }

 private:
  const AcDbIdMapping* mMap;
  std::size_t mPos = 0;
};
