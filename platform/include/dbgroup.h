// AcDbGroup: a named, ordered set of entity references kept in the group dictionary.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

class TDHOST_API AcDbGroup : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbGroup);
  AcDbGroup() = default;
  explicit AcDbGroup(const ACHAR* grpDesc, bool selectable = true);
  ~AcDbGroup() override;
  TDHOST_DECLARE_COPYABLE(AcDbGroup)

  // The group's name is its key in the group dictionary (new copy; acutDelString).
  Acad::ErrorStatus getName(ACHAR*& name) const;
  // Renames the dictionary entry too when the group is in one (eDuplicateKey if taken).
  Acad::ErrorStatus setName(const ACHAR* newName);
  const ACHAR* description() const { return mDescription.c_str(); }
  Acad::ErrorStatus setDescription(const ACHAR* text);
  bool isSelectable() const { return mSelectable; }
  Acad::ErrorStatus setSelectable(bool selectable);
  bool isAnonymous() const { return !mName.empty() && mName[0] == L'*'; }

  // eNullObjectId, eAlreadyInGroup, eNotAnEntity / eWrongDatabase for ids that are no
  // entities of this group's database.
  Acad::ErrorStatus append(AcDbObjectId id);
  Acad::ErrorStatus append(const AcDbObjectIdArray& ids);
  Acad::ErrorStatus prepend(AcDbObjectId id);
  Acad::ErrorStatus insertAt(Adesk::UInt32 idx, AcDbObjectId id);
  // eNotInGroup when absent.
  Acad::ErrorStatus remove(AcDbObjectId id);
  Acad::ErrorStatus removeAt(Adesk::UInt32 idx);
  Acad::ErrorStatus clear();
  bool has(const AcDbEntity* entity) const;
  bool has(AcDbObjectId id) const;
  Adesk::UInt32 numEntities() const;
  // Member ids, erased members left out (allEntityIds) or not (numEntities counts live ones).
  Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;
  Acad::ErrorStatus getIndex(AcDbObjectId id, Adesk::UInt32& idx) const;

  void subTranslateIds(const AcDbIdMapping& idMap) override;
  // Host-internal: keeps the stored name in step with the dictionary key.
  void setNameFromDictionary(const std::wstring& name) { mName = name; }
  // Host-internal (file reader): the members as the file lists them.
  void attachLoaded(std::vector<AcDbObjectId> members) { mMembers = std::move(members); }

 protected:
  AcDbGroup(const AcDbGroup&) = default;
  AcDbGroup& operator=(const AcDbGroup&) = default;

 private:
  std::wstring mName, mDescription;
  bool mSelectable = true;
  std::vector<AcDbObjectId> mMembers;
};
