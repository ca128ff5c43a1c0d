// The state behind AcDbDatabase: the object table keyed by handle, header variables, the
// standard object ids and the undo records.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "object_arena.h"
#include "stub.h"
#include "dxf/dxf_in.h"
#include "tdhost/undo.h"

namespace tdhost {

enum TableKind : int {
  kBlockTable, kLayerTable, kTextStyleTable, kLinetypeTable, kViewTable,
  kUCSTable, kViewportTable, kRegAppTable, kDimStyleTable, kTableKindCount
};

struct HeaderVars {
  AcDbObjectId clayer, textstyle, celtype, dimstyle;
  double textsize = 0.2;
  double ltscale = 1.0;
  AcGePoint3d ucsorg;
  AcGeVector3d ucsxdir{1, 0, 0};
  AcGeVector3d ucsydir{0, 1, 0};
  AcGePoint3d extmin{1e20, 1e20, 1e20};
  AcGePoint3d extmax{-1e20, -1e20, -1e20};
  AcGePoint3d insbase;
};

class UndoRecorder;

struct DatabaseImpl {
  explicit DatabaseImpl(AcDbDatabase* owner);
  ~DatabaseImpl();

  // A new stub with the next handle (or the given one, which must be free).
  AcDbStub* newStub();
  AcDbStub* stubFor(AcDbHandle handle, bool create);
  // Gives `obj` a handle and ownership to the database; leaves it open for write.
  AcDbStub* adopt(std::unique_ptr<AcDbObject> obj);
  // Before the object of `stub` may change: undo and the loaded-file record see its state.
  void beforeWrite(AcDbStub* stub);

  AcDbDatabase* self;
  // Outlives every object and stub that may have come from it.
  ObjectArena arena;
  std::unordered_map<Adesk::UInt64, AcDbStub, std::hash<Adesk::UInt64>, std::equal_to<Adesk::UInt64>,
                     ArenaAllocator<std::pair<const Adesk::UInt64, AcDbStub>>>
      stubs;
  Adesk::UInt64 handseed = 1;
  std::size_t openCount = 0;
  std::size_t liveObjects = 0;
  AcDbObjectId tables[kTableKindCount];
  AcDbObjectId namedObjects, groupDictionary, modelSpace, paperSpace;
  AcDbObjectId byLayer, byBlock, continuous;
  HeaderVars header;
  std::unique_ptr<UndoRecorder> undo;
  bool destroying = false;
  // What a drawing read from DXF keeps for writing it back; null for other drawings.
  std::unique_ptr<dxf::DxfState, dxf::DxfStateDeleter> dxf;
};

// The recording side of the undo controller, called by the object machinery.
class UndoRecorder : public UndoController {
 public:
  virtual void recordCreated(AcDbStub* stub) = 0;
  // The object's state before its first write open in the current group.
  virtual void recordModified(AcDbStub* stub) = 0;
  virtual void recordErased(AcDbStub* stub, bool erasing) = 0;
};

std::unique_ptr<UndoRecorder> makeUndoRecorder(DatabaseImpl& db);

}  // namespace tdhost
