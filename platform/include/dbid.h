// AcDbObjectId: the identity of a database object within a session.
#pragma once

#include <cstddef>
#include <functional>

#include "adesk.h"
#include "dbhandle.h"
#include "platformexport.h"

class AcDbStub;
class AcDbDatabase;
class AcRxClass;

// An id points at the database's stub for the object; the stub lives as long as the
// database, so an id of an erased or deleted object stays comparable and answers isErased().
class TDHOST_API AcDbObjectId {
 public:
  AcDbObjectId() = default;
  AcDbObjectId(AcDbStub* stub) : mId(stub) {}  // NOLINT: implicit as in the SDK
  static const AcDbObjectId kNull;

  bool isNull() const { return mId == nullptr; }
  void setNull() { mId = nullptr; }
  // A non-null id whose stub carries a live object (erased or not).
  bool isValid() const;
  // Erased, or no longer backed by an object. False for the null id.
  bool isErased() const;
  bool isEffectivelyErased() const { return isErased(); }
  bool isResident() const;
  AcDbHandle handle() const;
  AcDbDatabase* database() const;
  AcDbDatabase* originalDatabase() const { return database(); }
  // Class of the object behind the id, or null.
  AcRxClass* objectClass() const;

  operator AcDbStub*() const { return mId; }

  bool operator==(const AcDbObjectId& other) const { return mId == other.mId; }
  bool operator!=(const AcDbObjectId& other) const { return mId != other.mId; }
  bool operator<(const AcDbObjectId& other) const { return std::less<const AcDbStub*>()(mId, other.mId); }
  bool operator>(const AcDbObjectId& other) const { return other < *this; }
  bool operator<=(const AcDbObjectId& other) const { return !(other < *this); }
  bool operator>=(const AcDbObjectId& other) const { return !(*this < other); }

  // The id in integer form ("old id"), for passing through integer-only channels.
  Adesk::Int64 asOldId() const { return static_cast<Adesk::Int64>(reinterpret_cast<Adesk::IntPtr>(mId)); }
  AcDbObjectId& setFromOldId(Adesk::Int64 oldId) {
    mId = reinterpret_cast<AcDbStub*>(static_cast<Adesk::IntPtr>(oldId));
    return *this;
  }

 private:
  AcDbStub* mId = nullptr;
};

template <>
struct std::hash<AcDbObjectId> {
  size_t operator()(const AcDbObjectId& id) const noexcept { return std::hash<Adesk::Int64>()(id.asOldId()); }
};

using AcDbHardOwnershipId = AcDbObjectId;
using AcDbSoftOwnershipId = AcDbObjectId;
using AcDbHardPointerId = AcDbObjectId;
using AcDbSoftPointerId = AcDbObjectId;
