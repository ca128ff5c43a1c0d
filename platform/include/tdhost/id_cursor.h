// A position in a snapshot of object ids, as the host's container iterators walk them:
// both directions, optionally passing over erased objects.
#pragma once

#include <vector>

#include "acadstrc.h"
#include "dbid.h"
#include "platformexport.h"

namespace tdhost {

class TDHOST_API IdCursor {
 public:
  explicit IdCursor(std::vector<AcDbObjectId> ids) : mIds(std::move(ids)) {}

  void start(bool atBeginning, bool skipDeleted);
  bool done() const { return mPos < 0 || mPos >= static_cast<long>(mIds.size()); }
  void step(bool forward, bool skipDeleted);
  // eIteratorDone past either end.
  Acad::ErrorStatus current(AcDbObjectId& id) const;
  // eKeyNotFound when the id is not in the snapshot.
  Acad::ErrorStatus seek(AcDbObjectId id);

 private:
  void skip(bool forward, bool skipDeleted);

  std::vector<AcDbObjectId> mIds;
  long mPos = 0;
};

}  // namespace tdhost
