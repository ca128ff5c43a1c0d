// IdCursor: the walk shared by the symbol table and block record iterators.
#include "tdhost/id_cursor.h"

namespace tdhost {

void IdCursor::skip(bool forward, bool skipDeleted) {
  while (!done() && skipDeleted && mIds[static_cast<size_t>(mPos)].isErased()) mPos += forward ? 1 : -1;
}

void IdCursor::start(bool atBeginning, bool skipDeleted) {
  mPos = atBeginning ? 0 : static_cast<long>(mIds.size()) - 1;
  skip(atBeginning, skipDeleted);
}

void IdCursor::step(bool forward, bool skipDeleted) {
  if (done()) return;
  mPos += forward ? 1 : -1;
  skip(forward, skipDeleted);
}

Acad::ErrorStatus IdCursor::current(AcDbObjectId& id) const {
  if (done()) return Acad::eIteratorDone;
  id = mIds[static_cast<size_t>(mPos)];
  return Acad::eOk;
}

Acad::ErrorStatus IdCursor::seek(AcDbObjectId id) {
  for (size_t i = 0; i < mIds.size(); ++i)
    if (mIds[i] == id) {
      mPos = static_cast<long>(i);
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

}  // namespace tdhost
