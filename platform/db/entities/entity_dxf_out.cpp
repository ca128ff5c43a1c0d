// The DXF fields of the modelled entities, written through the filer after the common entity
// fields. Centres of circles and arcs are in the entity's object coordinate system.
#include <cmath>

#include "adsdef.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "entities/entity_util.h"
#include "ge/arbitrary_axis.h"
#include "object_access.h"

namespace {

constexpr double kRadToDeg = 180.0 / 3.141592653589793;

AcDb::DxfCode code(int groupCode) { return static_cast<AcDb::DxfCode>(groupCode); }

bool isWorldZ(const AcGeVector3d& normal) { return normal.x == 0.0 && normal.y == 0.0 && normal.z == 1.0; }

// Into the object coordinate system of an extrusion direction (the arbitrary-axis rule).
AcGePoint3d worldToObject(const AcGePoint3d& p, const AcGeVector3d& normal) {
  if (isWorldZ(normal)) return p;
  AcGeVector3d ax, ay;
  tdhost::ge::arbitraryAxes(normal, ax, ay);
  const AcGeVector3d v = p.asVector();
  return {v.dotProduct(ax), v.dotProduct(ay), v.dotProduct(normal.normal())};
}

void writeThicknessAndNormal(AcDbDxfFiler* filer, double thickness, const AcGeVector3d& normal) {
  if (thickness != 0.0) filer->writeDouble(code(39), thickness);
  if (!isWorldZ(normal)) filer->writeVector3d(code(210), normal);
}

// The AcDbCircle subclass record that circles and arcs share; the centre in the OCS.
void writeCircleRecord(AcDbDxfFiler* filer, double thickness, const AcGePoint3d& center, double radius,
                       const AcGeVector3d& normal) {
  filer->writeString(code(100), L"AcDbCircle");
  if (thickness != 0.0) filer->writeDouble(code(39), thickness);
  filer->writePoint3d(code(10), worldToObject(center, normal));
  filer->writeDouble(code(40), radius);
  if (!isWorldZ(normal)) filer->writeVector3d(code(210), normal);
}

}  // namespace

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbLine");
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  filer->writePoint3d(code(10), startPoint());
  filer->writePoint3d(code(11), endPoint());
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  writeCircleRecord(filer, thickness(), center(), radius(), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  // An arc is a circle record followed by its angles, in degrees.
  writeCircleRecord(filer, thickness(), center(), radius(), normal());
  filer->writeString(code(100), L"AcDbArc");
  filer->writeDouble(code(50), startAngle() * kRadToDeg);
  filer->writeDouble(code(51), endAngle() * kRadToDeg);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbPoint");
  filer->writePoint3d(code(10), position());
  writeThicknessAndNormal(filer, thickness(), normal());
  if (ecsRotation() != 0.0) filer->writeDouble(code(50), ecsRotation() * kRadToDeg);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbPolyline");
  filer->writeInt32(code(90), static_cast<Adesk::Int32>(numVerts()));
  filer->writeInt16(code(70), static_cast<Adesk::Int16>((isClosed() ? 1 : 0) | (hasPlinegen() ? 128 : 0)));
  double constantWidth = 0.0;
  const bool constant = getConstantWidth(constantWidth) == Acad::eOk;
  if (constant) filer->writeDouble(code(43), constantWidth);
  if (elevation() != 0.0) filer->writeDouble(code(38), elevation());
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  for (unsigned int i = 0; i < numVerts(); ++i) {
    AcGePoint2d pt;
    double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
    getPointAt(i, pt);
    getBulgeAt(i, bulge);
    getWidthsAt(i, startWidth, endWidth);
    filer->writePoint2d(code(10), pt);
    if (!constant && (startWidth != 0.0 || endWidth != 0.0)) {
      filer->writeDouble(code(40), startWidth);
      filer->writeDouble(code(41), endWidth);
    }
    if (bulge != 0.0) filer->writeDouble(code(42), bulge);
  }
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

namespace {

// The name of a referenced table record; nothing when the id names none, so that a changed
// entity whose style or block was not found keeps the name its record had.
void writeSymbolName(AcDbDxfFiler* filer, int groupCode, AcDbObjectId id) {
  if (const auto* rec = AcDbSymbolTableRecord::cast(tdhost::peek(id)))
    filer->writeString(code(groupCode), rec->nameText().c_str());
}

}  // namespace

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbText");
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  filer->writePoint3d(code(10), worldToObject(position(), normal()));
  filer->writeDouble(code(40), height());
  filer->writeString(code(1), textStringConst());
  filer->writeDouble(code(50), rotation() * kRadToDeg);
  filer->writeDouble(code(41), widthFactor());
  filer->writeDouble(code(51), oblique() * kRadToDeg);
  writeSymbolName(filer, 7, textStyle());
  filer->writeInt16(code(71), static_cast<Adesk::Int16>((isMirroredInX() ? 2 : 0) | (isMirroredInY() ? 4 : 0)));
  filer->writeInt16(code(72), static_cast<Adesk::Int16>(horizontalMode()));
  if (!isDefaultAlignment()) filer->writePoint3d(code(11), worldToObject(alignmentPoint(), normal()));
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  // The vertical mode belongs to a second subclass record of the same name.
  filer->writeString(code(100), L"AcDbText");
  filer->writeInt16(code(73), static_cast<Adesk::Int16>(verticalMode()));
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbMText");
  filer->writePoint3d(code(10), location());
  filer->writeDouble(code(40), textHeight());
  filer->writeDouble(code(41), width());
  // No drawing direction (72): the class does not hold one, and readers take left to right.
  filer->writeInt16(code(71), static_cast<Adesk::Int16>(attachment()));
  // Contents over 250 characters go as 3-chunks, the remainder last as 1.
  constexpr std::size_t kChunk = 250;
  std::size_t at = 0;
  while (mContents.size() - at >= kChunk) {
    filer->writeString(code(3), mContents.substr(at, kChunk).c_str());
    at += kChunk;
  }
  filer->writeString(code(1), mContents.substr(at).c_str());
  writeSymbolName(filer, 7, textStyle());
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  // The direction vector rather than an angle, whose unit readers disagree on.
  filer->writeVector3d(code(11), direction());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbFace");
  Adesk::Int16 hidden = 0;
  for (int i = 0; i < 4; ++i) {
    filer->writePoint3d(code(10 + i), mPts[i]);
    if (!mVisible[i]) hidden = static_cast<Adesk::Int16>(hidden | (1 << i));
  }
  filer->writeInt16(code(70), hidden);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbBlockReference");
  writeSymbolName(filer, 2, blockTableRecord());
  filer->writePoint3d(code(10), worldToObject(position(), normal()));
  filer->writeDouble(code(41), mScale.sx);
  filer->writeDouble(code(42), mScale.sy);
  filer->writeDouble(code(43), mScale.sz);
  filer->writeDouble(code(50), rotation() * kRadToDeg);
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDb2dPolyline");
  filer->writeInt16(code(66), 1);  // vertices follow: older readers insist on it
  filer->writePoint3d(code(10), AcGePoint3d(0, 0, elevation()));
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  Adesk::Int16 flags = isClosed() ? 1 : 0;
  if (polyType() == AcDb::k2dFitCurvePoly) flags |= 2;
  if (polyType() == AcDb::k2dQuadSplinePoly || polyType() == AcDb::k2dCubicSplinePoly) flags |= 4;
  if (isLinetypeGenerationOn()) flags |= 128;
  filer->writeInt16(code(70), flags);
  if (defaultStartWidth() != 0.0) filer->writeDouble(code(40), defaultStartWidth());
  if (defaultEndWidth() != 0.0) filer->writeDouble(code(41), defaultEndWidth());
  if (polyType() == AcDb::k2dQuadSplinePoly) filer->writeInt16(code(75), 5);
  if (polyType() == AcDb::k2dCubicSplinePoly) filer->writeInt16(code(75), 6);
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDb3dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDb3dPolyline");
  filer->writeInt16(code(66), 1);
  filer->writePoint3d(code(10), AcGePoint3d::kOrigin);
  Adesk::Int16 flags = static_cast<Adesk::Int16>(8 | (isClosed() ? 1 : 0));
  if (polyType() != AcDb::k3dSimplePoly) flags |= 4;
  filer->writeInt16(code(70), flags);
  if (polyType() == AcDb::k3dQuadSplinePoly) filer->writeInt16(code(75), 5);
  if (polyType() == AcDb::k3dCubicSplinePoly) filer->writeInt16(code(75), 6);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbVertex");
  filer->writeString(code(100), L"AcDb2dVertex");
  filer->writePoint3d(code(10), position());
  if (startWidth() != 0.0) filer->writeDouble(code(40), startWidth());
  if (endWidth() != 0.0) filer->writeDouble(code(41), endWidth());
  if (bulge() != 0.0) filer->writeDouble(code(42), bulge());
  Adesk::Int16 flags = isTangentUsed() ? 2 : 0;
  if (vertexType() == AcDb::k2dCurveFitVertex) flags |= 1;
  if (vertexType() == AcDb::k2dSplineFitVertex) flags |= 8;
  if (vertexType() == AcDb::k2dSplineCtlVertex) flags |= 16;
  filer->writeInt16(code(70), flags);
  if (isTangentUsed()) filer->writeDouble(code(50), tangent() * kRadToDeg);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDb3dPolylineVertex::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbVertex");
  filer->writeString(code(100), L"AcDb3dPolylineVertex");
  filer->writePoint3d(code(10), position());
  Adesk::Int16 flags = 32;
  if (vertexType() == AcDb::k3dFitVertex) flags |= 8;
  if (vertexType() == AcDb::k3dControlVertex) flags |= 16;
  filer->writeInt16(code(70), flags);
  return filer->filerStatus();
}

// Reading: each class takes the codes it holds and leaves the rest to the reader, which keeps
// them. Points in the object coordinate system are turned back into world points.
namespace {

constexpr double kDegToRad = 3.141592653589793 / 180.0;

AcGePoint3d objectToWorld(const AcGePoint3d& p, const AcGeVector3d& normal) {
  if (isWorldZ(normal)) return p;
  AcGeVector3d ax, ay;
  tdhost::ge::arbitraryAxes(normal, ax, ay);
  return AcGePoint3d::kOrigin + ax * p.x + ay * p.y + normal.normal() * p.z;
}

AcGePoint3d pointOf(const resbuf& rb) { return {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]}; }

// A usable extrusion direction: a zero or non-finite one reads as world z.
AcGeVector3d normalOf(const resbuf& rb) {
  const AcGeVector3d v(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]);
  const double len = v.length();
  if (!(len > 1e-12) || !std::isfinite(len)) return AcGeVector3d::kZAxis;
  return v;
}

template <class F>
Acad::ErrorStatus readAll(AcDbDxfFiler* filer, F take) {
  if (filer == nullptr) return Acad::eNullObjectPointer;
  resbuf rb{};
  while (filer->readItem(&rb) == Acad::eOk) take(rb);
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
  return readAll(filer, [this](const resbuf& rb) {
    switch (rb.restype) {
      case 10: mStart = pointOf(rb); break;
      case 11: mEnd = pointOf(rb); break;
      case 39: mThickness = rb.resval.rreal; break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
  AcGePoint3d ocsCenter;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    switch (rb.restype) {
      case 10: ocsCenter = pointOf(rb); break;
      case 40: mRadius = rb.resval.rreal; break;
      case 39: mThickness = rb.resval.rreal; break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
  mCenter = objectToWorld(ocsCenter, mNormal);
  return es;
}

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
  AcGePoint3d ocsCenter;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    switch (rb.restype) {
      case 10: ocsCenter = pointOf(rb); break;
      case 40: mRadius = rb.resval.rreal; break;
      case 39: mThickness = rb.resval.rreal; break;
      case 50: mStartAngle = rb.resval.rreal * kDegToRad; break;
      case 51: mEndAngle = rb.resval.rreal * kDegToRad; break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
  mCenter = objectToWorld(ocsCenter, mNormal);
  return es;
}

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
  return readAll(filer, [this](const resbuf& rb) {
    switch (rb.restype) {
      case 10: mPosition = pointOf(rb); break;
      case 39: mThickness = rb.resval.rreal; break;
      case 50: mEcsRotation = rb.resval.rreal * kDegToRad; break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* filer) {
  bool fourth = false;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    if (rb.restype >= 10 && rb.restype <= 13) {
      mPts[rb.restype - 10] = pointOf(rb);
      fourth = fourth || rb.restype == 13;
    } else if (rb.restype == 70) {
      for (int i = 0; i < 4; ++i) mVisible[i] = (rb.resval.rint & (1 << i)) == 0;
    }
  });
  // A triangle written without its fourth corner repeats the third.
  if (!fourth) mPts[3] = mPts[2];
  return es;
}

namespace {

// A record of a symbol table of the filer's database by name (case-insensitive, as the host
// looks names up); null when there is none.
AcDbObjectId recordNamed(AcDbDxfFiler* filer, AcDbObjectId (AcDbDatabase::*table)() const, const std::wstring& name) {
  AcDbDatabase* db = filer->database();
  const auto* t = db != nullptr ? AcDbSymbolTable::cast(tdhost::peek((db->*table)())) : nullptr;
  return t != nullptr ? t->lookup(name.c_str()) : AcDbObjectId();
}

std::wstring stringOf(const resbuf& rb) { return rb.resval.rstring != nullptr ? rb.resval.rstring : L""; }

AcDb::TextHorzMode horizontalModeOf(int v) {
  return v >= AcDb::kTextLeft && v <= AcDb::kTextFit ? static_cast<AcDb::TextHorzMode>(v) : AcDb::kTextLeft;
}

AcDb::TextVertMode verticalModeOf(int v) {
  return v >= AcDb::kTextBase && v <= AcDb::kTextTop ? static_cast<AcDb::TextVertMode>(v) : AcDb::kTextBase;
}

}  // namespace

Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* filer) {
  AcGePoint3d ocsPosition, ocsAlignment;
  bool aligned = false;
  std::wstring style = L"Standard";  // what a record without code 7 means
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    switch (rb.restype) {
      case 1: mText = stringOf(rb); break;
      case 7: style = stringOf(rb); break;
      case 10: ocsPosition = pointOf(rb); break;
      case 11:
        ocsAlignment = pointOf(rb);
        aligned = true;
        break;
      case 39: mThickness = rb.resval.rreal; break;
      case 40: mHeight = rb.resval.rreal; break;
      case 41: mWidthFactor = rb.resval.rreal; break;
      case 50: mRotation = tdhost::wrapAngle(rb.resval.rreal * kDegToRad); break;
      case 51: mOblique = rb.resval.rreal * kDegToRad; break;
      case 71:
        mMirrorX = (rb.resval.rint & 2) != 0;
        mMirrorY = (rb.resval.rint & 4) != 0;
        break;
      case 72: mHorz = horizontalModeOf(rb.resval.rint); break;
      // In the second AcDbText subclass record; R12 records have it among the others.
      case 73: mVert = verticalModeOf(rb.resval.rint); break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
  if (es != Acad::eOk) return es;
  mPosition = objectToWorld(ocsPosition, mNormal);
  mAlignment = aligned ? objectToWorld(ocsAlignment, mNormal) : mPosition;
  mStyle = recordNamed(filer, &AcDbDatabase::textStyleTableId, style);
  return es;
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
  if (filer == nullptr) return Acad::eNullObjectPointer;
  std::wstring contents, style = L"Standard";
  AcGeVector3d direction;
  bool hasDirection = false, hasRotation = false;
  double rotation = 0.0;
  resbuf rb{};
  while (filer->readItem(&rb) == Acad::eOk) {
    // The codes after an embedded object's marker are that object's, not the text's.
    if (rb.restype == 101) break;
    switch (rb.restype) {
      case 1: case 3: contents += stringOf(rb); break;
      case 7: style = stringOf(rb); break;
      case 10: mLocation = pointOf(rb); break;
      case 11:
        direction = AcGeVector3d(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]);
        hasDirection = true;
        break;
      case 40: mHeight = rb.resval.rreal; break;
      case 41: mWidth = rb.resval.rreal; break;
      // Later 50s of newer files are column heights.
      case 50:
        if (!hasRotation) rotation = rb.resval.rreal * kDegToRad;
        hasRotation = true;
        break;
      case 71:
        if (rb.resval.rint >= kTopLeft && rb.resval.rint <= kBottomRight)
          mAttachment = static_cast<AttachmentPoint>(rb.resval.rint);
        break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  }
  mContents = std::move(contents);
  mRotation = hasDirection && !direction.isZeroLength() ? tdhost::ocsAngle(direction, mNormal)
                                                         : tdhost::wrapAngle(rotation);
  mStyle = recordNamed(filer, &AcDbDatabase::textStyleTableId, style);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* filer) {
  AcGePoint3d ocsPosition;
  std::wstring name;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    switch (rb.restype) {
      case 2: name = stringOf(rb); break;
      case 10: ocsPosition = pointOf(rb); break;
      case 41: mScale.sx = rb.resval.rreal; break;
      case 42: mScale.sy = rb.resval.rreal; break;
      case 43: mScale.sz = rb.resval.rreal; break;
      case 50: mRotation = tdhost::wrapAngle(rb.resval.rreal * kDegToRad); break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
  if (es != Acad::eOk) return es;
  mPosition = objectToWorld(ocsPosition, mNormal);
  mBlockId = recordNamed(filer, &AcDbDatabase::blockTableId, name);
  return es;
}

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
  int flags = 0, curveType = 0;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    switch (rb.restype) {
      case 10: mElevation = rb.resval.rpoint[2]; break;  // x and y are always 0
      case 39: mThickness = rb.resval.rreal; break;
      case 40: mDefStartWidth = rb.resval.rreal; break;
      case 41: mDefEndWidth = rb.resval.rreal; break;
      case 70: flags = rb.resval.rint; break;
      case 75: curveType = rb.resval.rint; break;
      case 210: mNormal = normalOf(rb); break;
      default: break;
    }
  });
  mClosed = (flags & 1) != 0;
  mLinetypeGen = (flags & 128) != 0;
  if ((flags & 4) != 0) mPolyType = curveType == 5 ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
  else mPolyType = (flags & 2) != 0 ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
  return es;
}

Acad::ErrorStatus AcDb3dPolyline::dxfInFields(AcDbDxfFiler* filer) {
  int flags = 0, curveType = 0;
  const Acad::ErrorStatus es = readAll(filer, [&](const resbuf& rb) {
    if (rb.restype == 70) flags = rb.resval.rint;
    else if (rb.restype == 75) curveType = rb.resval.rint;
  });
  mClosed = (flags & 1) != 0;
  if ((flags & 4) != 0) mPolyType = curveType == 5 ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly;
  else mPolyType = AcDb::k3dSimplePoly;
  return es;
}

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
  return readAll(filer, [this](const resbuf& rb) {
    switch (rb.restype) {
      case 10: mPosition = pointOf(rb); break;
      case 40: mStartWidth = rb.resval.rreal; break;
      case 41: mEndWidth = rb.resval.rreal; break;
      case 42: mBulge = rb.resval.rreal; break;
      case 50: mTangent = rb.resval.rreal * kDegToRad; break;
      case 70: {
        const int flags = rb.resval.rint;
        mTangentUsed = (flags & 2) != 0;
        if ((flags & 16) != 0) mType = AcDb::k2dSplineCtlVertex;
        else if ((flags & 8) != 0) mType = AcDb::k2dSplineFitVertex;
        else if ((flags & 1) != 0) mType = AcDb::k2dCurveFitVertex;
        else mType = AcDb::k2dVertex;
        break;
      }
      default: break;
    }
  });
}

Acad::ErrorStatus AcDb3dPolylineVertex::dxfInFields(AcDbDxfFiler* filer) {
  return readAll(filer, [this](const resbuf& rb) {
    if (rb.restype == 10) {
      mPosition = pointOf(rb);
    } else if (rb.restype == 70) {
      if ((rb.resval.rint & 16) != 0) mType = AcDb::k3dControlVertex;
      else if ((rb.resval.rint & 8) != 0) mType = AcDb::k3dFitVertex;
      else mType = AcDb::k3dSimpleVertex;
    }
  });
}
