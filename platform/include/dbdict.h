// AcDbDictionary: named, owned entries (the named-object dictionary, groups, extension
// dictionaries) and its iterator.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "dbmain.h"

class AcDbDictionaryIterator;

class TDHOST_API AcDbDictionary : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionary);
  AcDbDictionary() = default;
  ~AcDbDictionary() override;
  TDHOST_DECLARE_COPYABLE(AcDbDictionary)

  // Keys ignore case. eKeyNotFound when absent; eWasErased for an erased entry.
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObject*& entryObj, AcDb::OpenMode mode) const;
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
  // The key of an entry (a new copy the caller releases with acutDelString).
  Acad::ErrorStatus nameAt(AcDbObjectId objId, ACHAR*& name) const;
  bool has(const ACHAR* entryName) const;
  bool has(AcDbObjectId objId) const;
  Adesk::UInt32 numEntries() const { return static_cast<Adesk::UInt32>(mOrder.size()); }

  // Adds `newValue` under `srchKey` (the dictionary must be resident and open for write).
  // A new object is added to the database and left open for write; an existing entry of
  // the name is replaced and its object erased. eInvalidKey for an empty key.
  Acad::ErrorStatus setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId);
  // Takes the entry out (the object is not erased; its owner becomes null).
  Acad::ErrorStatus remove(const ACHAR* key);
  Acad::ErrorStatus remove(const ACHAR* key, AcDbObjectId& returnId);
  Acad::ErrorStatus remove(AcDbObjectId objId);
  Acad::ErrorStatus setName(const ACHAR* oldName, const ACHAR* newName);

  // Entries in insertion order.
  AcDbDictionaryIterator* newIterator() const;

  void subOwnedIds(AcDbObjectIdArray& ids) const override;
  void subTranslateIds(const AcDbIdMapping& idMap) override;

  // Host-internal: entries in insertion order as (name, id).
  struct Entry {
    std::wstring name;
    AcDbObjectId id;
  };
  const std::vector<Entry>& entries() const { return mOrder; }
  // Renames the entry of `id` for a change made through the entry's object (a group's
  // setName): the caller has recorded this dictionary's state already.
  Acad::ErrorStatus renameEntry(AcDbObjectId id, const ACHAR* newName);
  // Host-internal (file reader): an entry for a resident object, as the file has it.
  void attachLoaded(const std::wstring& name, AcDbObjectId id) { mOrder.push_back({name, id}); }

 protected:
  AcDbDictionary(const AcDbDictionary&) = default;
  AcDbDictionary& operator=(const AcDbDictionary&) = default;

 private:
  std::vector<Entry>::const_iterator findKey(const ACHAR* key) const;
  std::vector<Entry> mOrder;
};

class TDHOST_API AcDbDictionaryIterator {
 public:
  ~AcDbDictionaryIterator();
  const ACHAR* name() const;
  AcDbObjectId objectId() const;
  Acad::ErrorStatus getObject(AcDbObject*& obj, AcDb::OpenMode mode = AcDb::kForRead);
  bool done() const { return mPos >= mEntries.size(); }
  bool next();
  bool setPosition(AcDbObjectId objId);

 private:
  friend class AcDbDictionary;
  explicit AcDbDictionaryIterator(std::vector<AcDbDictionary::Entry> entries) : mEntries(std::move(entries)) {}
  std::vector<AcDbDictionary::Entry> mEntries;
  std::size_t mPos = 0;
};
