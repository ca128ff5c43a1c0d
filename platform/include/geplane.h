// AcGePlane: an unbounded plane.
#pragma once

#include "geplanar.h"
#include "platformexport.h"

class AcGeLine3d;

class TDHOST_API AcGePlane : public AcGePlanarEnt {
 public:
  // The world XY plane.
  AcGePlane() = default;
  // Through origin with the given normal; the axes follow the arbitrary-axis rule (so a normal along
  // +z gives the world x and y axes). A zero normal gives a degenerate plane with a zero normal.
  AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal) { set(origin, normal); }
  AcGePlane(const AcGePoint3d& pntU, const AcGePoint3d& org, const AcGePoint3d& pntV) { set(pntU, org, pntV); }
  AcGePlane(const AcGePoint3d& org, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) { set(org, uAxis, vAxis); }
  // a x + b y + c z + d = 0.
  AcGePlane(double a, double b, double c, double d) { set(a, b, c, d); }

  static const AcGePlane kXYPlane;
  static const AcGePlane kYZPlane;
  static const AcGePlane kZXPlane;

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kPlane || AcGePlanarEnt::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kPlane; }
  AcGeEntity3d* copy() const override { return new AcGePlane(*this); }
  bool isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol = AcGeContext::gTol) const override;
  AcGeEntity3d& transformBy(const AcGeMatrix3d& xfm) override { transformFrame(xfm); return *this; }

  // Positive on the side the normal points to.
  double signedDistanceTo(const AcGePoint3d& pnt) const { return (pnt - mOrigin).dotProduct(mNormal); }
  using AcGePlanarEnt::intersectWith;
  // The line common to two non-parallel planes.
  bool intersectWith(const AcGePlane& otherPln, AcGeLine3d& resultLine, const AcGeTol& tol = AcGeContext::gTol) const;

  AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal);
  AcGePlane& set(const AcGePoint3d& pntU, const AcGePoint3d& org, const AcGePoint3d& pntV);
  AcGePlane& set(double a, double b, double c, double d);
  AcGePlane& set(const AcGePoint3d& org, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
};
