// The host's entity kinds: lines, arcs, circles, points, 3D faces, texts, block references and
// the old-style 2D and 3D polylines with their vertices.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbcurve.h"
#include "gepnt2d.h"
#include "gescl3d.h"

class AcGeMatrix3d;

// A line segment. Parameter: distance from the start point (0 .. length).
class TDHOST_API AcDbLine : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine);
  AcDbLine();
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
  ~AcDbLine() override;
  TDHOST_DECLARE_COPYABLE(AcDbLine)

  AcGePoint3d startPoint() const { return mStart; }
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& pt);
  AcGePoint3d endPoint() const { return mEnd; }
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& pt);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

 protected:
  AcDbLine(const AcDbLine&) = default;
  AcDbLine& operator=(const AcDbLine&) = default;
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subExtendTo(bool atStart, double newParam) override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  AcGePoint3d mStart, mEnd;
  AcGeVector3d mNormal{0, 0, 1};
  double mThickness = 0.0;
};

// A circular arc in the plane of its normal; angles in the object coordinate system of the
// normal (arbitrary-axis rule), counter-clockwise. Parameter: the angle, from startAngle up to
// endAngle (raised by 2pi when the end angle is not above the start).
class TDHOST_API AcDbArc : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbArc);
  AcDbArc();
  AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
  AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle, double endAngle);
  ~AcDbArc() override;
  TDHOST_DECLARE_COPYABLE(AcDbArc)

  AcGePoint3d center() const { return mCenter; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  double radius() const { return mRadius; }
  // eInvalidInput for a radius not above zero.
  Acad::ErrorStatus setRadius(double radius);
  double startAngle() const { return mStartAngle; }
  Acad::ErrorStatus setStartAngle(double angle);
  double endAngle() const { return mEndAngle; }
  Acad::ErrorStatus setEndAngle(double angle);
  double totalAngle() const;
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

 protected:
  AcDbArc(const AcDbArc&) = default;
  AcDbArc& operator=(const AcDbArc&) = default;
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subExtendTo(bool atStart, double newParam) override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  AcGePoint3d mCenter;
  AcGeVector3d mNormal{0, 0, 1};
  double mRadius = 1.0;
  double mStartAngle = 0.0;
  double mEndAngle = 0.0;
  double mThickness = 0.0;
};

// A circle; parameter: the angle 0 .. 2pi from the OCS x axis. Closed and periodic.
class TDHOST_API AcDbCircle : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCircle);
  AcDbCircle();
  AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
  ~AcDbCircle() override;
  TDHOST_DECLARE_COPYABLE(AcDbCircle)

  AcGePoint3d center() const { return mCenter; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  double radius() const { return mRadius; }
  Acad::ErrorStatus setRadius(double radius);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  double circumference() const;
  double diameter() const { return 2.0 * mRadius; }

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

 protected:
  AcDbCircle(const AcDbCircle&) = default;
  AcDbCircle& operator=(const AcDbCircle&) = default;
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  AcGePoint3d mCenter;
  AcGeVector3d mNormal{0, 0, 1};
  double mRadius = 1.0;
  double mThickness = 0.0;
};

// A point entity.
class TDHOST_API AcDbPoint : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPoint);
  AcDbPoint();
  explicit AcDbPoint(const AcGePoint3d& position);
  ~AcDbPoint() override;
  TDHOST_DECLARE_COPYABLE(AcDbPoint)

  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& pt);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double ecsRotation() const { return mEcsRotation; }
  Acad::ErrorStatus setEcsRotation(double rotation);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

 protected:
  AcDbPoint(const AcDbPoint&) = default;
  AcDbPoint& operator=(const AcDbPoint&) = default;

 private:
  AcGePoint3d mPosition;
  AcGeVector3d mNormal{0, 0, 1};
  double mThickness = 0.0;
  double mEcsRotation = 0.0;
};
