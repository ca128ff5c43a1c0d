// AcDbText and AcDbMText: placement, style and approximate boxes (no font metrics yet).
#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmtext.h"
#include "entities/entity_util.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbText)
TDHOST_DEFINE_MEMBERS(AcDbMText)

namespace {

AcDbObjectId workingTextStyle() {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  return db ? db->textstyle() : AcDbObjectId();
}

// The world direction of an OCS angle about normal.
AcGeVector3d ocsDirection(double angle, const AcGeVector3d& normal) {
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(normal, x, y);
  return x * std::cos(angle) + y * std::sin(angle);
}

// Adds the corners of the rectangle [x0, x1] x [y0, y1] spanned from origin by unit axes.
void addRect(AcDbExtents& ext, const AcGePoint3d& origin, const AcGeVector3d& xDir, const AcGeVector3d& yDir,
             double x0, double x1, double y0, double y1) {
  for (double x : {x0, x1})
    for (double y : {y0, y1}) ext.addPoint(origin + xDir * x + yDir * y);
}

// The angle of the image of an OCS direction after a transform, in the new normal's OCS.
double transformedAngle(double angle, const AcGeVector3d& normal, const AcGeMatrix3d& xform,
                        const AcGeVector3d& newNormal) {
  AcGeVector3d d = ocsDirection(angle, normal);
  d.transformBy(xform);
  return tdhost::ocsAngle(d, newNormal);
}

}  // namespace

#define TDHOST_TEXT_SETTER(CLASS, NAME, TYPE, FIELD)                               \
  Acad::ErrorStatus CLASS::NAME(TYPE value) {                                      \
    if (Acad::ErrorStatus es = checkWrite(#NAME); es != Acad::eOk) return es;     \
    FIELD = value;                                                                 \
    return Acad::eOk;                                                              \
  }

#define TDHOST_TEXT_POSITIVE_SETTER(CLASS, NAME, FIELD)                            \
  Acad::ErrorStatus CLASS::NAME(double value) {                                    \
    if (Acad::ErrorStatus es = checkWrite(#NAME); es != Acad::eOk) return es;     \
    if (!(value > 0.0)) return Acad::eInvalidInput;                                \
    FIELD = value;                                                                 \
    return Acad::eOk;                                                              \
  }

// ---- AcDbText

AcDbText::AcDbText() : mStyle(workingTextStyle()) {}

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height,
                   double rotation)
    : mText(text ? text : L""),
      mPosition(position),
      mAlignment(position),
      mStyle(style.isNull() ? workingTextStyle() : style),
      mHeight(height),
      mRotation(rotation) {}

AcDbText::~AcDbText() = default;

ACHAR* AcDbText::textString() const { return acutNewString(mText.c_str()); }

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  if (Acad::ErrorStatus es = checkWrite("setTextString"); es != Acad::eOk) return es;
  if (text == nullptr) return Acad::eNullPtr;
  mText = text;
  return Acad::eOk;
}

TDHOST_TEXT_SETTER(AcDbText, setPosition, const AcGePoint3d&, mPosition)
TDHOST_TEXT_SETTER(AcDbText, setAlignmentPoint, const AcGePoint3d&, mAlignment)
TDHOST_TEXT_POSITIVE_SETTER(AcDbText, setHeight, mHeight)
TDHOST_TEXT_POSITIVE_SETTER(AcDbText, setWidthFactor, mWidthFactor)
TDHOST_TEXT_SETTER(AcDbText, setOblique, double, mOblique)
TDHOST_TEXT_SETTER(AcDbText, setHorizontalMode, AcDb::TextHorzMode, mHorz)
TDHOST_TEXT_SETTER(AcDbText, setVerticalMode, AcDb::TextVertMode, mVert)
TDHOST_TEXT_SETTER(AcDbText, setTextStyle, AcDbObjectId, mStyle)
TDHOST_TEXT_SETTER(AcDbText, setThickness, double, mThickness)
TDHOST_TEXT_SETTER(AcDbText, mirrorInX, bool, mMirrorX)
TDHOST_TEXT_SETTER(AcDbText, mirrorInY, bool, mMirrorY)

Acad::ErrorStatus AcDbText::setRotation(double rotation) {
  if (Acad::ErrorStatus es = checkWrite("setRotation"); es != Acad::eOk) return es;
  mRotation = tdhost::wrapAngle(rotation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double s = 1.0;
  if (!tdhost::uniformScale(xform, s)) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d newNormal = tdhost::transformNormal(mNormal, xform);
  mRotation = transformedAngle(mRotation, mNormal, xform, newNormal);
  mNormal = newNormal;
  mPosition.transformBy(xform);
  mAlignment.transformBy(xform);
  mHeight *= s;
  mThickness *= s;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  const AcGeVector3d xDir = ocsDirection(mRotation, mNormal);
  const AcGeVector3d yDir = mNormal.crossProduct(xDir);
  const double h = mHeight;
  double w = h * mWidthFactor * static_cast<double>(mText.size());
  AcGePoint3d base = mPosition;
  if (mHorz == AcDb::kTextAlign || mHorz == AcDb::kTextFit) {
    w = mPosition.distanceTo(mAlignment);  // the text is fitted between the two points
  } else if (!isDefaultAlignment()) {
    double dx = 0.0, dy = 0.0;
    if (mHorz == AcDb::kTextCenter || mHorz == AcDb::kTextMid) dx = -w / 2.0;
    if (mHorz == AcDb::kTextRight) dx = -w;
    if (mVert == AcDb::kTextVertMid || mHorz == AcDb::kTextMid) dy = -h / 2.0;
    if (mVert == AcDb::kTextTop) dy = -h;
    base = mAlignment + xDir * dx + yDir * dy;
  }
  AcDbExtents box;
  addRect(box, base, xDir, yDir, mMirrorX ? -w : 0.0, mMirrorX ? 0.0 : w, mMirrorY ? -h : 0.0, mMirrorY ? 0.0 : h);
  if (mThickness != 0.0) box.addExt(AcDbExtents(box.minPoint() + mNormal * mThickness, box.maxPoint() + mNormal * mThickness));
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(isDefaultAlignment() ? mPosition : mAlignment);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices) {
    if (i != 0) return Acad::eInvalidIndex;
    mPosition += offset;
    mAlignment += offset;
  }
  return Acad::eOk;
}

void AcDbText::subAddedToDatabase() {
  if (mStyle.isNull()) mStyle = database()->textstyle();
}

// ---- AcDbMText

AcDbMText::AcDbMText() : mStyle(workingTextStyle()) {}
AcDbMText::~AcDbMText() = default;

ACHAR* AcDbMText::contents() const { return acutNewString(mContents.c_str()); }

Acad::ErrorStatus AcDbMText::setContents(const ACHAR* text) {
  if (Acad::ErrorStatus es = checkWrite("setContents"); es != Acad::eOk) return es;
  if (text == nullptr) return Acad::eNullPtr;
  mContents = text;
  return Acad::eOk;
}

TDHOST_TEXT_SETTER(AcDbMText, setLocation, const AcGePoint3d&, mLocation)
TDHOST_TEXT_POSITIVE_SETTER(AcDbMText, setTextHeight, mHeight)
TDHOST_TEXT_SETTER(AcDbMText, setTextStyle, AcDbObjectId, mStyle)

Acad::ErrorStatus AcDbMText::setWidth(double width) {
  if (Acad::ErrorStatus es = checkWrite("setWidth"); es != Acad::eOk) return es;
  if (width < 0.0) return Acad::eInvalidInput;
  mWidth = width;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint type) {
  if (Acad::ErrorStatus es = checkWrite("setAttachment"); es != Acad::eOk) return es;
  if (type < kTopLeft || type > kBottomRight) return Acad::eInvalidInput;
  mAttachment = type;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setRotation(double rotation) {
  if (Acad::ErrorStatus es = checkWrite("setRotation"); es != Acad::eOk) return es;
  mRotation = tdhost::wrapAngle(rotation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

AcGeVector3d AcDbMText::direction() const { return ocsDirection(mRotation, mNormal); }

Acad::ErrorStatus AcDbMText::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double s = 1.0;
  if (!tdhost::uniformScale(xform, s)) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d newNormal = tdhost::transformNormal(mNormal, xform);
  mRotation = transformedAngle(mRotation, mNormal, xform, newNormal);
  mNormal = newNormal;
  mLocation.transformBy(xform);
  mHeight *= s;
  mWidth *= s;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  std::size_t lines = 1, longest = 0, run = 0;
  for (std::size_t i = 0; i < mContents.size(); ++i) {
    if (mContents[i] == L'\\' && i + 1 < mContents.size() && mContents[i + 1] == L'P') {
      ++lines;
      longest = std::max(longest, run);
      run = 0;
      ++i;
    } else {
      ++run;
    }
  }
  longest = std::max(longest, run);
  const double w = mWidth > 0.0 ? mWidth : mHeight * static_cast<double>(longest);
  const double h = mHeight * (1.0 + (static_cast<double>(lines) - 1.0) * 5.0 / 3.0);
  const int column = (mAttachment - 1) % 3, row = (mAttachment - 1) / 3;
  const double x0 = -w * column / 2.0;
  const double yTop = h * row / 2.0;  // top attachment: the box hangs below the location
  const AcGeVector3d xDir = direction();
  AcDbExtents box;
  addRect(box, mLocation, xDir, mNormal.crossProduct(xDir), x0, x0 + w, yTop - h, yTop);
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mLocation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices) {
    if (i != 0) return Acad::eInvalidIndex;
    mLocation += offset;
  }
  return Acad::eOk;
}

void AcDbMText::subAddedToDatabase() {
  if (mStyle.isNull()) mStyle = database()->textstyle();
}
