// AcGeMatrix2d: a 3x3 affine transformation of the plane (column vectors, translation in column 2).
#pragma once

#include "gegbl.h"
#include "gepnt2d.h"
#include "gevec2d.h"
#include "platformexport.h"

class TDHOST_API AcGeMatrix2d {
 public:
  AcGeMatrix2d();

  static const AcGeMatrix2d kIdentity;

  AcGeMatrix2d& setToIdentity();
  AcGeMatrix2d operator*(const AcGeMatrix2d& mat) const;
  AcGeMatrix2d& operator*=(const AcGeMatrix2d& mat) { return postMultBy(mat); }
  AcGeMatrix2d& preMultBy(const AcGeMatrix2d& leftSide);
  AcGeMatrix2d& postMultBy(const AcGeMatrix2d& rightSide);
  AcGeMatrix2d& setToProduct(const AcGeMatrix2d& mat1, const AcGeMatrix2d& mat2);
  // A singular matrix is left unchanged by invert() and returned as is by inverse().
  AcGeMatrix2d& invert();
  AcGeMatrix2d inverse() const;
  bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeMatrix2d& transposeIt();
  AcGeMatrix2d transpose() const;
  bool operator==(const AcGeMatrix2d& mat) const { return isEqualTo(mat); }
  bool operator!=(const AcGeMatrix2d& mat) const { return !isEqualTo(mat); }
  bool isEqualTo(const AcGeMatrix2d& mat, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  bool isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  double scale() const;
  double det() const;
  AcGeMatrix2d& setTranslation(const AcGeVector2d& vec);
  AcGeVector2d translation() const;
  AcGeMatrix2d& setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0, const AcGeVector2d& e1);
  void getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const;
  AcGeMatrix2d& setToTranslation(const AcGeVector2d& vec);
  AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
  AcGeMatrix2d& setToScaling(double scaleAll, const AcGePoint2d& center = AcGePoint2d::kOrigin);
  AcGeMatrix2d& setToMirroring(const AcGePoint2d& pnt);
  AcGeMatrix2d& setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0, const AcGeVector2d& fromE1,
                                   const AcGePoint2d& toOrigin, const AcGeVector2d& toE0, const AcGeVector2d& toE1);
  static AcGeMatrix2d translation(const AcGeVector2d& vec);
  static AcGeMatrix2d rotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
  static AcGeMatrix2d scaling(double scaleAll, const AcGePoint2d& center = AcGePoint2d::kOrigin);
  static AcGeMatrix2d mirroring(const AcGePoint2d& pnt);
  static AcGeMatrix2d alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0, const AcGeVector2d& fromE1,
                                    const AcGePoint2d& toOrigin, const AcGeVector2d& toE0, const AcGeVector2d& toE1);

  double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
  double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

  double entry[3][3];
};
