// AcGeMatrix3d: a 4x4 affine transformation of space. Points are column vectors: p' = M p, the
// translation sits in column 3, and A * B applies B first.
#pragma once

#include "gegbl.h"
#include "gemat2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "platformexport.h"

class AcGeLine3d;
class AcGePlane;

class TDHOST_API AcGeMatrix3d {
 public:
  AcGeMatrix3d();

  static const AcGeMatrix3d kIdentity;

  AcGeMatrix3d& setToIdentity();
  AcGeMatrix3d operator*(const AcGeMatrix3d& mat) const;
  AcGeMatrix3d& operator*=(const AcGeMatrix3d& mat) { return postMultBy(mat); }
  AcGeMatrix3d& preMultBy(const AcGeMatrix3d& leftSide);    // this = leftSide * this
  AcGeMatrix3d& postMultBy(const AcGeMatrix3d& rightSide);  // this = this * rightSide
  AcGeMatrix3d& setToProduct(const AcGeMatrix3d& mat1, const AcGeMatrix3d& mat2);

  // Gauss-Jordan elimination with partial pivoting. A singular matrix (|pivot| below the tolerance's
  // equalPoint relative to the largest entry) is left unchanged by invert() and returned unchanged by
  // inverse(); inverse(inv, tol) reports it with false.
  AcGeMatrix3d& invert();
  AcGeMatrix3d inverse() const;
  AcGeMatrix3d inverse(const AcGeTol& tol) const;
  bool inverse(AcGeMatrix3d& inv, double tol) const;
  bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeMatrix3d& transposeIt();
  AcGeMatrix3d transpose() const;

  bool operator==(const AcGeMatrix3d& mat) const { return isEqualTo(mat); }
  bool operator!=(const AcGeMatrix3d& mat) const { return !isEqualTo(mat); }
  // Entry-wise comparison within tol.equalVector().
  bool isEqualTo(const AcGeMatrix3d& mat, const AcGeTol& tol = AcGeContext::gTol) const;
  // Linear part is a rotation (or reflection) times one uniform scale.
  bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  // Linear part has mutually perpendicular columns (scales may differ).
  bool isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  double det() const;

  AcGeMatrix3d& setTranslation(const AcGeVector3d& vec);
  AcGeVector3d translation() const;
  AcGeVector3d getTranslation() const { return translation(); }
  // Columns 0..2 take the axes and column 3 the origin: the matrix maps local coordinates to world.
  AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis,
                               const AcGeVector3d& zAxis);
  void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis, AcGeVector3d& zAxis) const;

  AcGeMatrix3d& setToTranslation(const AcGeVector3d& vec);
  // Right-handed rotation by angle radians about axis through center.
  AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  AcGeMatrix3d& setToScaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  AcGeMatrix3d& setToMirroring(const AcGePlane& pln);
  AcGeMatrix3d& setToMirroring(const AcGePoint3d& pnt);
  AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
  // Parallel projection onto the plane along projectDir (identity when projectDir is parallel to it).
  AcGeMatrix3d& setToProjection(const AcGePlane& projectionPlane, const AcGeVector3d& projectDir);
  // Maps the "from" frame onto the "to" frame: to-frame * inverse(from-frame).
  AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                   const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                   const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                   const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
  // World to the plane's own coordinate system (x, y in the plane, z along the normal). The normal
  // forms use a plane through the origin with axes from the arbitrary-axis rule.
  AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
  AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);
  AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
  AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);

  static AcGeMatrix3d translation(const AcGeVector3d& vec);
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d mirroring(const AcGePlane& pln);
  static AcGeMatrix3d mirroring(const AcGePoint3d& pnt);
  static AcGeMatrix3d mirroring(const AcGeLine3d& line);
  static AcGeMatrix3d projection(const AcGePlane& projectionPlane, const AcGeVector3d& projectDir);
  static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                    const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                    const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                    const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
  static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
  static AcGeMatrix3d worldToPlane(const AcGePlane& plane);
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  static AcGeMatrix3d planeToWorld(const AcGePlane& plane);

  // Largest length of the images of the three unit axes (the largest column length of the linear part).
  double scale() const;
  // Largest absolute row sum (the infinity norm).
  double norm() const;

  double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
  double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

  double entry[4][4];
};
