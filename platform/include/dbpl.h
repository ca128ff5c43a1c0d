// AcDbPolyline: the lightweight polyline, plan vertices with bulges and widths in the object
// coordinate system of its normal at an elevation. Parameter: vertex index plus the fraction of
// the following segment's length (for an arc, also the fraction of its angle).
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "dbcurve.h"
#include "gepnt2d.h"

class AcGeCircArc3d;
class AcGeLineSeg3d;

class TDHOST_API AcDbPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPolyline);
  enum SegType { kLine = 0, kArc = 1, kCoincident = 2, kPoint = 3, kEmpty = 4 };

  AcDbPolyline();
  explicit AcDbPolyline(unsigned int num_verts);
  ~AcDbPolyline() override;
  TDHOST_DECLARE_COPYABLE(AcDbPolyline)

  // Inserts before `index` (== numVerts appends). Widths of -1 take 0. eInvalidIndex beyond.
  Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.0,
                                double startWidth = -1.0, double endWidth = -1.0);
  Acad::ErrorStatus removeVertexAt(unsigned int index);
  unsigned int numVerts() const { return static_cast<unsigned int>(mVerts.size()); }
  // Clears the vertices; with reuse the first numVerts are kept.
  Acad::ErrorStatus reset(bool reuse, unsigned int numVerts);

  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& pt) const;
  // The vertex in world coordinates.
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;
  Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& pt);
  Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
  Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
  Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
  // eInvalidInput unless every segment has one width (start = end, all equal).
  Acad::ErrorStatus getConstantWidth(double& width) const;
  Acad::ErrorStatus setConstantWidth(double width);

  // The kind of segment starting at the vertex (kLine, kArc, kCoincident for a zero-length one,
  // kPoint for a polyline of one vertex, kEmpty with none).
  SegType segType(unsigned int index) const;
  // World geometry of segment index; eInvalidIndex past the last segment.
  Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg3d& ln) const;
  Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const;
  // True when the plan point lies on segment index; param receives its curve parameter.
  bool onSegAt(unsigned int index, const AcGePoint2d& pt2d, double& param) const;

  void setClosed(bool closed);
  bool isClosed() const override { return mClosed; }
  // Linetype generation continuous over the vertices (DXF flag 128); no effect on geometry.
  bool hasPlinegen() const { return mPlinegen; }
  void setPlinegen(bool plinegen);
  bool hasBulges() const;
  bool hasWidth() const;
  bool isOnlyLines() const { return !hasBulges(); }
  double elevation() const { return mElevation; }
  void setElevation(double elev);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  // Built once per change and shared by queries (its segment index too).
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

 protected:
  AcDbPolyline(const AcDbPolyline& other);
  AcDbPolyline& operator=(const AcDbPolyline& other);
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subExtendTo(bool atStart, double newParam) override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  struct Vertex {
    AcGePoint2d pt;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
  };
  Acad::ErrorStatus modify(const char* what);
  unsigned int numSegs() const;

  std::vector<Vertex> mVerts;
  AcGeVector3d mNormal{0, 0, 1};
  double mElevation = 0.0;
  double mThickness = 0.0;
  bool mClosed = false;
  bool mPlinegen = false;
  mutable std::shared_ptr<const tdhost::CurvePath> mPath;
  mutable std::mutex mPathMutex;
};
