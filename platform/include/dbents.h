// The host's entity kinds: lines, arcs, circles, points, 3D faces, texts, block references and
// the old-style 2D and 3D polylines with their vertices.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbcurve.h"
#include "dbray.h"  // the host's dbents.h brings the ray along
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
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
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
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // Start, end and middle point. Moving all three moves the arc; moving some re-fits the arc
  // through the three (eDegenerateGeometry, unchanged, when they fall in line).
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
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // The centre: a circle is moved, never stretched.
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
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
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

class AcDbVertex;

namespace tdhost {

// The vertices an old-style polyline owns: database ids once the owner is resident, the vertex
// objects themselves (owned here) before that. Copies take fresh copies of held objects.
class TDHOST_API VertexStore {
 public:
  VertexStore();
  VertexStore(const VertexStore& other);
  VertexStore& operator=(const VertexStore& other);
  ~VertexStore();

  // Puts v before position pos (== count appends); a resident owner adds it to its database,
  // leaving it open for write for the caller to close. eAlreadyInDb for a resident vertex.
  Acad::ErrorStatus insert(AcDbEntity& owner, std::size_t pos, AcDbVertex* v, AcDbObjectId& id);
  // Position of a vertex by id or object (count() when absent).
  std::size_t find(AcDbObjectId id, const AcDbVertex* v) const;
  std::size_t count() const { return mIds.size() + mHeld.size(); }
  // The live (not erased) vertices in order, read without opening.
  std::vector<const AcDbVertex*> live() const;
  // For internal changes: each live vertex recorded for undo first.
  std::vector<AcDbVertex*> touchLive();
  AcDbObjectIterator* iterator() const;
  void ownedIds(AcDbObjectIdArray& ids) const;
  void translateIds(const AcDbIdMapping& idMap);
  void setErased(bool erasing);
  void addToDatabase(AcDbEntity& owner);
  // Appends a vertex the DXF reader has already placed in the owner's database.
  void attachLoaded(AcDbObjectId id) { mIds.push_back(id); }

 private:
  std::vector<AcDbObjectId> mIds;
  std::vector<std::unique_ptr<AcDbVertex>> mHeld;
};

}  // namespace tdhost

// The base of the vertices old-style polylines own.
class TDHOST_API AcDbVertex : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbVertex);
  ~AcDbVertex() override;

 protected:
  AcDbVertex();
  AcDbVertex(const AcDbVertex&) = default;
  AcDbVertex& operator=(const AcDbVertex&) = default;
};

// A 2D polyline vertex: position in the polyline's object coordinate system (z is ignored; the
// polyline's elevation holds), bulge and widths of the segment it starts.
class TDHOST_API AcDb2dVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dVertex);
  AcDb2dVertex();
  explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                        double endWidth = 0.0, double tangent = 0.0);
  ~AcDb2dVertex() override;
  TDHOST_DECLARE_COPYABLE(AcDb2dVertex)

  AcDb::Vertex2dType vertexType() const { return mType; }
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& pos);
  double bulge() const { return mBulge; }
  Acad::ErrorStatus setBulge(double newVal);
  double startWidth() const { return mStartWidth; }
  Acad::ErrorStatus setStartWidth(double newVal);
  double endWidth() const { return mEndWidth; }
  Acad::ErrorStatus setEndWidth(double newVal);
  double tangent() const { return mTangent; }
  Acad::ErrorStatus setTangent(double newVal);
  bool isTangentUsed() const { return mTangentUsed; }
  Acad::ErrorStatus useTangent();
  Acad::ErrorStatus ignoreTangent();

  // Vertices move with their polyline (which transforms them); alone they refuse.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

 protected:
  AcDb2dVertex(const AcDb2dVertex&) = default;
  AcDb2dVertex& operator=(const AcDb2dVertex&) = default;

 private:
  friend class AcDb2dPolyline;
  AcGePoint3d mPosition;
  double mBulge = 0.0;
  double mStartWidth = 0.0;
  double mEndWidth = 0.0;
  double mTangent = 0.0;
  bool mTangentUsed = false;
  AcDb::Vertex2dType mType = AcDb::k2dVertex;
};

// A 3D polyline vertex: a world position.
class TDHOST_API AcDb3dPolylineVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex);
  AcDb3dPolylineVertex();
  explicit AcDb3dPolylineVertex(const AcGePoint3d& position);
  ~AcDb3dPolylineVertex() override;
  TDHOST_DECLARE_COPYABLE(AcDb3dPolylineVertex)

  AcDb::Vertex3dType vertexType() const { return mType; }
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& pos);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

 protected:
  AcDb3dPolylineVertex(const AcDb3dPolylineVertex&) = default;
  AcDb3dPolylineVertex& operator=(const AcDb3dPolylineVertex&) = default;

 private:
  friend class AcDb3dPolyline;
  AcGePoint3d mPosition;
  AcDb::Vertex3dType mType = AcDb::k3dSimpleVertex;
};

// The old-style 2D polyline: owned AcDb2dVertex objects in the object coordinate system of its
// normal at an elevation. Parameter: vertex index plus the fraction of the following segment
// (spline control vertices are not part of the curve).
//
// Split pieces are new simple polylines with vertices of their own (bulges of their share of
// an arc, widths interpolated); splitting and extending spline-fit polylines gives
// eNotApplicable. Projection onto a parallel plane copies every vertex at the plane's
// elevation; onto another plane only polylines of straight segments project (eNotApplicable
// otherwise), into the plane's own coordinate system.
class TDHOST_API AcDb2dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
  AcDb2dPolyline();
  // Vertices from OCS points (z ignored) with optional bulges, one per point.
  AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0.0,
                 bool closed = false, double defStartWidth = 0.0, double defEndWidth = 0.0,
                 const AcGeDoubleArray* bulges = nullptr);
  ~AcDb2dPolyline() override;
  TDHOST_DECLARE_COPYABLE(AcDb2dPolyline)

  Acad::ErrorStatus appendVertex(AcDb2dVertex* pNewVertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& objId, AcDb2dVertex* pNewVertex);
  // Inserts after pIndexVert (at the start for null); eInvalidInput when it is not a vertex here.
  Acad::ErrorStatus insertVertexAt(const AcDb2dVertex* pIndexVert, AcDb2dVertex* pNewVertex);
  Acad::ErrorStatus insertVertexAt(AcDbObjectId& newVertId, const AcDbObjectId& indexVertId,
                                   AcDb2dVertex* pNewVertex);
  Acad::ErrorStatus openVertex(AcDb2dVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                               bool openErasedOne = false) const;
  // A new iterator over the vertices; the caller deletes it.
  AcDbObjectIterator* vertexIterator() const;
  // The vertex in world coordinates.
  AcGePoint3d vertexPosition(const AcDb2dVertex& vert) const;

  AcDb::Poly2dType polyType() const { return mPolyType; }
  Acad::ErrorStatus setPolyType(AcDb::Poly2dType type);
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  bool isClosed() const override { return mClosed; }
  double elevation() const { return mElevation; }
  Acad::ErrorStatus setElevation(double elev);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  double defaultStartWidth() const { return mDefStartWidth; }
  Acad::ErrorStatus setDefaultStartWidth(double width);
  double defaultEndWidth() const { return mDefEndWidth; }
  Acad::ErrorStatus setDefaultEndWidth(double width);
  // Whether the linetype runs on continuously around the vertices (flag 128 in DXF).
  Adesk::Boolean isLinetypeGenerationOn() const { return mLinetypeGen; }
  Acad::ErrorStatus setLinetypeGenerationOn();
  Acad::ErrorStatus setLinetypeGenerationOff();
  // The DXF reader's way in: a vertex it has placed in the database with this owner.
  void attachLoaded(AcDbObjectId vertexId) { mVertices.attachLoaded(vertexId); }

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // The polyline's own record; its VERTEX records are the vertices' (see attachLoaded).
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

  void subOwnedIds(AcDbObjectIdArray& ids) const override;
  void subTranslateIds(const AcDbIdMapping& idMap) override;
  Acad::ErrorStatus subErase(bool erasing) override;
  void subAddedToDatabase() override;

 protected:
  AcDb2dPolyline(const AcDb2dPolyline&) = default;
  AcDb2dPolyline& operator=(const AcDb2dPolyline&) = default;
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subExtendTo(bool atStart, double newParam) override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  Acad::ErrorStatus insertAt(std::size_t pos, AcDb2dVertex* v, AcDbObjectId& id);
  std::vector<const AcDb2dVertex*> curveVertices() const;
  bool isSplineFit() const { return mPolyType == AcDb::k2dQuadSplinePoly || mPolyType == AcDb::k2dCubicSplinePoly; }
  // A new empty polyline with this one's plane, widths and traits.
  AcDb2dPolyline* emptyCopy() const;

  tdhost::VertexStore mVertices;
  AcGeVector3d mNormal{0, 0, 1};
  double mElevation = 0.0;
  double mThickness = 0.0;
  double mDefStartWidth = 0.0;
  double mDefEndWidth = 0.0;
  AcDb::Poly2dType mPolyType = AcDb::k2dSimplePoly;
  bool mClosed = false;
  bool mLinetypeGen = false;
};

// The 3D polyline: owned AcDb3dPolylineVertex objects joined by straight segments. Parameter:
// vertex index plus the fraction of the following segment (control vertices are not on it).
//
// Split pieces are new simple 3D polylines; splitting and extending spline-fit ones gives
// eNotApplicable. Projection onto any plane projects every vertex (a spline's projection is the
// spline of its projected control points).
class TDHOST_API AcDb3dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolyline);
  AcDb3dPolyline();
  AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed = false);
  ~AcDb3dPolyline() override;
  TDHOST_DECLARE_COPYABLE(AcDb3dPolyline)

  Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* pNewVertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& objId, AcDb3dPolylineVertex* pNewVertex);
  Acad::ErrorStatus insertVertexAt(const AcDb3dPolylineVertex* pIndexVert, AcDb3dPolylineVertex* pNewVertex);
  Acad::ErrorStatus insertVertexAt(AcDbObjectId& newVertId, const AcDbObjectId& indexVertId,
                                   AcDb3dPolylineVertex* pNewVertex);
  Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                               bool openErasedOne = false) const;
  AcDbObjectIterator* vertexIterator() const;

  AcDb::Poly3dType polyType() const { return mPolyType; }
  Acad::ErrorStatus setPolyType(AcDb::Poly3dType type);
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  bool isClosed() const override { return mClosed; }
  // The DXF reader's way in: a vertex it has placed in the database with this owner.
  void attachLoaded(AcDbObjectId vertexId) { mVertices.attachLoaded(vertexId); }

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

  void subOwnedIds(AcDbObjectIdArray& ids) const override;
  void subTranslateIds(const AcDbIdMapping& idMap) override;
  Acad::ErrorStatus subErase(bool erasing) override;
  void subAddedToDatabase() override;

 protected:
  AcDb3dPolyline(const AcDb3dPolyline&) = default;
  AcDb3dPolyline& operator=(const AcDb3dPolyline&) = default;
  AcDbCurve* subCurveBetween(double fromParam, double toParam) const override;
  Acad::ErrorStatus subExtendTo(bool atStart, double newParam) override;
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  Acad::ErrorStatus insertAt(std::size_t pos, AcDb3dPolylineVertex* v, AcDbObjectId& id);
  std::vector<const AcDb3dPolylineVertex*> curveVertices() const;
  bool isSplineFit() const { return mPolyType == AcDb::k3dQuadSplinePoly || mPolyType == AcDb::k3dCubicSplinePoly; }

  tdhost::VertexStore mVertices;
  AcDb::Poly3dType mPolyType = AcDb::k3dSimplePoly;
  bool mClosed = false;
};

// An insertion of a block: the block's entities, taken relative to the block's origin, scaled,
// rotated about the normal in its object coordinate system and placed at the (world) position.
class TDHOST_API AcDbBlockReference : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockReference);
  AcDbBlockReference();
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec);
  ~AcDbBlockReference() override;
  TDHOST_DECLARE_COPYABLE(AcDbBlockReference)

  AcDbObjectId blockTableRecord() const { return mBlockId; }
  Acad::ErrorStatus setBlockTableRecord(AcDbObjectId blockId);
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  AcGeScale3d scaleFactors() const { return mScale; }
  // eInvalidInput for a zero factor.
  Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double newVal);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& newVal);
  // Block coordinates to world: position + OCS(normal) * rotation * scale * (p - block origin).
  AcGeMatrix3d blockTransform() const;

  // Matrices with a non-uniform scale are refused (eCannotScaleNonUniformly).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // The block is found by name in the filer's database; a name not (yet) defined there leaves
  // the block id null, and then no name is written either.
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  // The block's entities as placed (exact where the placed entity is of the same kind).
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

 protected:
  AcDbBlockReference(const AcDbBlockReference&) = default;
  AcDbBlockReference& operator=(const AcDbBlockReference&) = default;

 private:
  AcDbObjectId mBlockId;
  AcGePoint3d mPosition;
  AcGeScale3d mScale;
  AcGeVector3d mNormal{0, 0, 1};
  double mRotation = 0.0;
};

// A single-line text. Position and alignment point are world points; the rotation is the angle
// of the baseline in the object coordinate system of the normal. Without font metrics the box is
// approximate: each character height x width factor wide.
class TDHOST_API AcDbText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbText);
  // The style defaults to the working database's current text style (or the database's own once
  // added, when none was set).
  AcDbText();
  AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId::kNull,
           double height = 0.0, double rotation = 0.0);
  ~AcDbText() override;
  TDHOST_DECLARE_COPYABLE(AcDbText)

  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  AcGePoint3d alignmentPoint() const { return mAlignment; }
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
  bool isDefaultAlignment() const { return mHorz == AcDb::kTextLeft && mVert == AcDb::kTextBase; }
  // A new copy the caller releases with acutDelString.
  ACHAR* textString() const;
  const ACHAR* textStringConst() const { return mText.c_str(); }
  Acad::ErrorStatus setTextString(const ACHAR* text);
  double height() const { return mHeight; }
  // eInvalidInput for a height not above zero.
  Acad::ErrorStatus setHeight(double height);
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double rotation);
  double widthFactor() const { return mWidthFactor; }
  // eInvalidInput for a factor not above zero.
  Acad::ErrorStatus setWidthFactor(double factor);
  double oblique() const { return mOblique; }
  Acad::ErrorStatus setOblique(double angle);
  AcDb::TextHorzMode horizontalMode() const { return mHorz; }
  Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
  AcDb::TextVertMode verticalMode() const { return mVert; }
  Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
  AcDbObjectId textStyle() const { return mStyle; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  bool isMirroredInX() const { return mMirrorX; }
  Acad::ErrorStatus mirrorInX(bool mirror);
  bool isMirroredInY() const { return mMirrorY; }
  Acad::ErrorStatus mirrorInY(bool mirror);

  // Uniform transforms only (eCannotScaleNonUniformly); a reflection turns the normal over.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // The style is found by name in the filer's database (null when it has none of that name,
  // and then no style name is written either).
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  void subAddedToDatabase() override;

 protected:
  AcDbText(const AcDbText&) = default;
  AcDbText& operator=(const AcDbText&) = default;

 private:
  std::wstring mText;
  AcGePoint3d mPosition, mAlignment;
  AcGeVector3d mNormal{0, 0, 1};
  AcDbObjectId mStyle;
  double mHeight = 0.0;
  double mRotation = 0.0;
  double mWidthFactor = 1.0;
  double mOblique = 0.0;
  double mThickness = 0.0;
  AcDb::TextHorzMode mHorz = AcDb::kTextLeft;
  AcDb::TextVertMode mVert = AcDb::kTextBase;
  bool mMirrorX = false;
  bool mMirrorY = false;
};

// A 3D face: four world corners (a triangle repeats the third) and which edges are visible;
// edge i runs from corner i to corner i+1 (the last back to corner 0).
class TDHOST_API AcDbFace : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbFace);
  AcDbFace();
  AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3,
           bool e0vis = true, bool e1vis = true, bool e2vis = true, bool e3vis = true);
  AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, bool e0vis = true,
           bool e1vis = true, bool e2vis = true, bool e3vis = true);
  ~AcDbFace() override;
  TDHOST_DECLARE_COPYABLE(AcDbFace)

  // eInvalidIndex for an index above 3.
  Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& pt) const;
  Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& pt);
  Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const;
  Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
  Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

 protected:
  AcDbFace(const AcDbFace&) = default;
  AcDbFace& operator=(const AcDbFace&) = default;

 private:
  AcGePoint3d mPts[4];
  bool mVisible[4] = {true, true, true, true};
};
