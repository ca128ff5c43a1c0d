// AcDbObjectId: the identity of a database object within a session.
#pragma once

#include <cstddef>
#include <functional>

#include "adesk.h"
#include "platformexport.h"

class AcDbStub;

class TDHOST_API AcDbObjectId {
 public:
  AcDbObjectId() = default;
  static const AcDbObjectId kNull;

  bool isNull() const { return mId == nullptr; }
  void setNull() { mId = nullptr; }

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
