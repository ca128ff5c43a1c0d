// The UCS, display and object coordinate systems as matrices to the world.
#include "coordinate_frames.h"

#include <cmath>

#include "dbsymtb.h"
#include "ge/arbitrary_axis.h"
#include "object_access.h"

namespace tdhost {

AcGeMatrix3d ucsToWorld(const AcDbDatabase& db) {
  const AcGeVector3d x = db.ucsxdir(), y = db.ucsydir();
  return AcGeMatrix3d().setCoordSystem(db.ucsorg(), x, y, x.crossProduct(y));
}

AcGeMatrix3d displayToWorld(const AcDbAbstractViewTableRecord& view) {
  AcGeVector3d direction = view.viewDirection();
  if (direction.length() == 0.0) direction = AcGeVector3d::kZAxis;
  AcGeVector3d ex, ey;
  ge::arbitraryAxes(direction, ex, ey);
  const double c = std::cos(view.viewTwist()), s = std::sin(view.viewTwist());
  return AcGeMatrix3d().setCoordSystem(view.target(), ex * c - ey * s, ex * s + ey * c, direction.normal());
}

AcGeMatrix3d entityToWorld(const AcGeVector3d& normal) {
  return AcGeMatrix3d::planeToWorld(normal.length() == 0.0 ? AcGeVector3d::kZAxis : normal);
}

AcDbViewportTableRecord* activeViewport(const AcDbDatabase& db) {
  auto* table = AcDbViewportTable::cast(peek(db.viewportTableId()));
  if (table == nullptr) return nullptr;
  return AcDbViewportTableRecord::cast(peek(table->lookup(L"*Active")));
}

}  // namespace tdhost
