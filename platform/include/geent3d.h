// AcGeEntity3d: the base of the geometry library's 3D entities (curves and surfaces).
#pragma once

#include "gegbl.h"
#include "geintrvl.h"
#include "gepnt3d.h"
#include "platformexport.h"

class AcGeMatrix3d;
class AcGePlane;

class TDHOST_API AcGeEntity3d {
 public:
  virtual ~AcGeEntity3d();

  // True for the entity's own kind and every kind it derives from (a line segment is a kLinearEnt3d).
  virtual bool isKindOf(AcGe::EntityId entType) const { return entType == AcGe::kEntity3d; }
  virtual AcGe::EntityId type() const = 0;
  // A new copy on the heap; the caller owns it (delete it when done).
  virtual AcGeEntity3d* copy() const = 0;

  bool operator==(const AcGeEntity3d& entity) const { return isEqualTo(entity); }
  bool operator!=(const AcGeEntity3d& entity) const { return !isEqualTo(entity); }
  // Same kind and the same defining data within tol.
  virtual bool isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol = AcGeContext::gTol) const = 0;

  virtual AcGeEntity3d& transformBy(const AcGeMatrix3d& xfm) = 0;
  AcGeEntity3d& translateBy(const AcGeVector3d& translateVec);
  AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);
  AcGeEntity3d& mirror(const AcGePlane& plane);
  AcGeEntity3d& scaleBy(double scaleFactor, const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);

  virtual bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const = 0;

 protected:
  AcGeEntity3d() = default;
  AcGeEntity3d(const AcGeEntity3d&) = default;
  AcGeEntity3d& operator=(const AcGeEntity3d&) = default;
};
