// The coordinate systems acedTrans and the view variables work in, each as the matrix that
// maps its coordinates to world coordinates.
#pragma once

#include "gemat3d.h"

class AcDbAbstractViewTableRecord;
class AcDbDatabase;
class AcDbViewportTableRecord;

namespace tdhost {

// The database's current UCS (UCSORG, UCSXDIR, UCSYDIR; z = x cross y).
AcGeMatrix3d ucsToWorld(const AcDbDatabase& db);
// A view's display system: origin at the target, z along the view direction, x and y the
// arbitrary-axis frame of that direction turned by -twist about it (so a twist of t shows
// the drawing turned by t counter-clockwise). A zero direction counts as a plan view.
AcGeMatrix3d displayToWorld(const AcDbAbstractViewTableRecord& view);
// The object system of an extrusion direction (arbitrary-axis rule, world origin).
AcGeMatrix3d entityToWorld(const AcGeVector3d& normal);

// The current view of `db`: its first *Active viewport record, not opened (null when the
// drawing has none). Host-internal reads only; changes go through an open for write.
AcDbViewportTableRecord* activeViewport(const AcDbDatabase& db);

}  // namespace tdhost
