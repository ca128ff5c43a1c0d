// The table kinds and the record classes' state accessors.
#include "acutads.h"
#include "dbsymtb.h"
#include "host_init.h"

#define TDHOST_TABLE_KIND(TABLE, RECORD)                                    \
  TDHOST_DEFINE_MEMBERS(TABLE)                                              \
  TDHOST_DEFINE_MEMBERS(RECORD)                                             \
  TABLE::~TABLE() = default;                                                \
  RECORD::~RECORD() = default;                                              \
  AcRxClass* TABLE::recordClass() const { return RECORD::desc(); }

TDHOST_TABLE_KIND(AcDbBlockTable, AcDbBlockTableRecord)
TDHOST_TABLE_KIND(AcDbLayerTable, AcDbLayerTableRecord)
TDHOST_TABLE_KIND(AcDbTextStyleTable, AcDbTextStyleTableRecord)
TDHOST_TABLE_KIND(AcDbLinetypeTable, AcDbLinetypeTableRecord)
TDHOST_TABLE_KIND(AcDbViewTable, AcDbViewTableRecord)
TDHOST_TABLE_KIND(AcDbUCSTable, AcDbUCSTableRecord)
TDHOST_TABLE_KIND(AcDbViewportTable, AcDbViewportTableRecord)
TDHOST_TABLE_KIND(AcDbRegAppTable, AcDbRegAppTableRecord)
TDHOST_TABLE_KIND(AcDbDimStyleTable, AcDbDimStyleTableRecord)
TDHOST_DEFINE_MEMBERS(AcDbAbstractViewTableRecord)
AcDbAbstractViewTableRecord::~AcDbAbstractViewTableRecord() = default;

// A setter that returns nothing: the change is refused (and reported) unless write-open.
#define TDHOST_SET(MEMBER, VALUE) \
  if (checkWrite(__func__) != Acad::eOk) return; \
  MEMBER = VALUE

#define TDHOST_SET_ES(MEMBER, VALUE)                                                    \
  if (Acad::ErrorStatus es = checkWrite(__func__); es != Acad::eOk) return es;           \
  MEMBER = VALUE;                                                                       \
  return Acad::eOk

// Layers.
void AcDbLayerTableRecord::setIsOff(bool off) { TDHOST_SET(mOff, off); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) { TDHOST_SET_ES(mFrozen, frozen); }
void AcDbLayerTableRecord::setIsLocked(bool locked) { TDHOST_SET(mLocked, locked); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) { TDHOST_SET_ES(mPlottable, plottable); }
void AcDbLayerTableRecord::setColor(const AcCmColor& color) { TDHOST_SET(mColor, color); }
void AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) { TDHOST_SET(mLinetype, id); }

// Text styles.
void AcDbTextStyleTableRecord::setIsShapeFile(bool shape) { TDHOST_SET(mShapeFile, shape); }
void AcDbTextStyleTableRecord::setIsVertical(bool vertical) { TDHOST_SET(mVertical, vertical); }
void AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 bits) { TDHOST_SET(mFlagBits, bits); }

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (size < 0.0) return Acad::eInvalidInput;
  TDHOST_SET_ES(mTextSize, size);
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double factor) {
  if (!(factor > 0.0)) return Acad::eInvalidInput;
  TDHOST_SET_ES(mXScale, factor);
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) { TDHOST_SET_ES(mOblique, angle); }
Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
  if (size < 0.0) return Acad::eInvalidInput;
  TDHOST_SET_ES(mPriorSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
  name = acutNewString(mFileName.c_str());
  return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(const ACHAR*& name) const {
  name = mFileName.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) { TDHOST_SET_ES(mFileName, name ? name : L""); }
Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
  name = acutNewString(mBigFontFileName.c_str());
  return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(const ACHAR*& name) const {
  name = mBigFontFileName.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
  TDHOST_SET_ES(mBigFontFileName, name ? name : L"");
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFont(const ACHAR* typeface, bool bold, bool italic, int charset,
                                                    int pitchAndFamily) {
  if (Acad::ErrorStatus es = checkWrite("setFont"); es != Acad::eOk) return es;
  mTypeface = typeface ? typeface : L"";
  mBold = bold;
  mItalic = italic;
  mCharset = charset;
  mPitchAndFamily = pitchAndFamily;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::font(ACHAR*& typeface, bool& bold, bool& italic, int& charset,
                                                 int& pitchAndFamily) const {
  typeface = acutNewString(mTypeface.c_str());
  bold = mBold;
  italic = mItalic;
  charset = mCharset;
  pitchAndFamily = mPitchAndFamily;
  return Acad::eOk;
}

// Linetypes.
Acad::ErrorStatus AcDbLinetypeTableRecord::comments(const ACHAR*& text) const {
  text = mComments.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) { TDHOST_SET_ES(mComments, text ? text : L""); }
void AcDbLinetypeTableRecord::setPatternLength(double length) { TDHOST_SET(mPatternLength, length); }
void AcDbLinetypeTableRecord::setNumDashes(int count) {
  if (checkWrite("setNumDashes") != Acad::eOk || count < 0) return;
  mDashes.resize(static_cast<size_t>(count), 0.0);
}
double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
  return index >= 0 && index < numDashes() ? mDashes[static_cast<size_t>(index)] : 0.0;
}
void AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
  if (checkWrite("setDashLengthAt") != Acad::eOk || index < 0 || index >= numDashes()) return;
  mDashes[static_cast<size_t>(index)] = length;
}

// Views and viewports.
void AcDbAbstractViewTableRecord::setHeight(double v) { TDHOST_SET(mHeight, v); }
void AcDbAbstractViewTableRecord::setWidth(double v) { TDHOST_SET(mWidth, v); }
void AcDbAbstractViewTableRecord::setTarget(const AcGePoint3d& v) { TDHOST_SET(mTarget, v); }
void AcDbAbstractViewTableRecord::setViewDirection(const AcGeVector3d& v) { TDHOST_SET(mDirection, v); }
void AcDbAbstractViewTableRecord::setViewTwist(double v) { TDHOST_SET(mTwist, v); }
void AcDbAbstractViewTableRecord::setLensLength(double v) { TDHOST_SET(mLens, v); }
void AcDbAbstractViewTableRecord::setFrontClipDistance(double v) { TDHOST_SET(mFront, v); }
void AcDbAbstractViewTableRecord::setBackClipDistance(double v) { TDHOST_SET(mBack, v); }
void AcDbAbstractViewTableRecord::setFrontClipEnabled(bool v) { TDHOST_SET(mFrontOn, v); }
void AcDbAbstractViewTableRecord::setBackClipEnabled(bool v) { TDHOST_SET(mBackOn, v); }
void AcDbAbstractViewTableRecord::setFrontClipAtEye(bool v) { TDHOST_SET(mFrontAtEye, v); }
void AcDbAbstractViewTableRecord::setPerspectiveEnabled(bool v) { TDHOST_SET(mPerspective, v); }
void AcDbAbstractViewTableRecord::setCenter(double x, double y) {
  if (checkWrite("setCenterPoint") != Acad::eOk) return;
  mCenterX = x;
  mCenterY = y;
}
void AcDbViewTableRecord::setIsPaperspaceView(bool v) { TDHOST_SET(mPaper, v); }

// UCSs.
void AcDbUCSTableRecord::setOrigin(const AcGePoint3d& v) { TDHOST_SET(mOrigin, v); }
void AcDbUCSTableRecord::setXAxis(const AcGeVector3d& v) { TDHOST_SET(mX, v); }
void AcDbUCSTableRecord::setYAxis(const AcGeVector3d& v) { TDHOST_SET(mY, v); }

// Dimension styles.
Acad::ErrorStatus AcDbDimStyleTableRecord::setDimtxt(double v) {
  if (v < 0.0) return Acad::eInvalidInput;
  TDHOST_SET_ES(mDimtxt, v);
}
Acad::ErrorStatus AcDbDimStyleTableRecord::setDimscale(double v) {
  if (v < 0.0) return Acad::eInvalidInput;
  TDHOST_SET_ES(mDimscale, v);
}
