// The database's undo records: groups of creations, erasures and modifications (the state
// before the first write open in the group), with marks to go back to. The UNDO command
// drives this; it is not part of the SDK surface.
#pragma once

#include <cstddef>

#include "../acadstrc.h"
#include "../platformexport.h"

class AcDbDatabase;

namespace tdhost {

class TDHOST_API UndoController {
 public:
  virtual ~UndoController() = default;

  // Groups nest; only the outermost begin/end pair delimits a group. Changes made outside
  // any group collect in an implicit group that ends at the next begin, mark or undo.
  virtual void beginGroup() = 0;
  virtual void endGroup() = 0;
  virtual bool inGroup() const = 0;
  // _UNDO M: a mark after the last group.
  virtual void mark() = 0;
  // _UNDO B: undoes every group after the last mark and removes that mark; with no mark,
  // everything recorded. eWasOpenForWrite / eWasOpenForRead (nothing undone) while an
  // affected object is open.
  virtual Acad::ErrorStatus undoToMark() = 0;
  // Undoes the last `count` groups (marks in between are dropped).
  virtual Acad::ErrorStatus undoGroups(int count = 1) = 0;
  virtual std::size_t groupCount() const = 0;
  virtual std::size_t markCount() const = 0;
  // Recording off forgets everything recorded so far.
  virtual void setRecording(bool on) = 0;
  virtual bool isRecording() const = 0;
};

TDHOST_API UndoController& undoController(AcDbDatabase& db);

}  // namespace tdhost
