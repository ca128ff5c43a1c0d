// Symbol tables, their records and iterators (blocks, layers, text styles, linetypes,
// views, UCSs, viewports, registered applications, dimension styles).
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tdhost/id_cursor.h"
#include "cmcolor.h"
#include "dbmain.h"
#include "gepnt2d.h"

class AcDbSymbolTableIterator;
class AcDbBlockTableRecordIterator;

class TDHOST_API AcDbSymbolTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);
  ~AcDbSymbolTableRecord() override;

  // A new copy the caller releases with acutDelString.
  Acad::ErrorStatus getName(ACHAR*& name) const;
  // The record's own text, valid while the record is open.
  Acad::ErrorStatus getName(const ACHAR*& name) const;
  // eInvalidInput for an empty name, one over 255 characters or one with <>/\":;?*|,=`;
  // eDuplicateRecordName when another record of the table has the name.
  Acad::ErrorStatus setName(const ACHAR* name);
  bool isDependent() const { return false; }
  bool isResolved() const { return true; }

  // Host-internal: the name as stored.
  const std::wstring& nameText() const { return mName; }
  // Host-internal (file reader): the name as the file has it, unchecked.
  void setNameLoaded(std::wstring name) { mName = std::move(name); }

 protected:
  AcDbSymbolTableRecord() = default;
  AcDbSymbolTableRecord(const AcDbSymbolTableRecord&) = default;
  AcDbSymbolTableRecord& operator=(const AcDbSymbolTableRecord&) = default;

 private:
  std::wstring mName;
};

class TDHOST_API AcDbSymbolTable : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTable);
  ~AcDbSymbolTable() override;

  // Lookups ignore case. eKeyNotFound when no (non-erased, unless asked) record has the name.
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& record, AcDb::OpenMode openMode,
                          bool openErasedRec = false) const;
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord = false) const;
  Acad::ErrorStatus getIdAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord = false) const;
  bool has(const ACHAR* name) const;
  bool has(AcDbObjectId id) const;
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  // Adds a new named record of this table's kind (the table must be open for write). The
  // record is left open for write. eDuplicateRecordName, eInvalidInput (unnamed or wrong
  // record class), eAlreadyInDb.
  Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
  Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbSymbolTableRecord* record);

  void subOwnedIds(AcDbObjectIdArray& ids) const override;
  TDHOST_DECLARE_COPYABLE(AcDbSymbolTable)

  // Host-internal: the record class this table holds and the name index.
  virtual AcRxClass* recordClass() const;
  virtual AcDbSymbolTableIterator* makeIterator(std::vector<AcDbObjectId> ids) const;
  const std::vector<AcDbObjectId>& recordIds() const { return mOrder; }
  // The record of a name without the open check (host lookups on closed tables); null id
  // when absent or erased.
  AcDbObjectId lookup(const ACHAR* name, bool getErased = false) const;
  Acad::ErrorStatus rename(AcDbObjectId id, const std::wstring& oldName, const std::wstring& newName);
  // Host-internal (file reader): a resident record joins the table as it is.
  void attachLoaded(AcDbObjectId id, const std::wstring& name);

 protected:
  AcDbSymbolTable() = default;
  AcDbSymbolTable(const AcDbSymbolTable&) = default;
  AcDbSymbolTable& operator=(const AcDbSymbolTable&) = default;

 private:
  friend class AcDbDatabase;
  std::map<std::wstring, AcDbObjectId> mIndex;  // upper-cased name -> record
  std::vector<AcDbObjectId> mOrder;             // insertion order, for iteration
};

class TDHOST_API AcDbSymbolTableIterator {
 public:
  virtual ~AcDbSymbolTableIterator();
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
  Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode openMode = AcDb::kForRead,
                              bool openErasedRec = false) const;
  // eKeyNotFound when the record is not in the table.
  Acad::ErrorStatus seek(AcDbObjectId id);
  Acad::ErrorStatus seek(const AcDbSymbolTableRecord* record);

 protected:
  friend class AcDbSymbolTable;
  explicit AcDbSymbolTableIterator(std::vector<AcDbObjectId> ids) : mCursor(std::move(ids)) {}
  tdhost::IdCursor mCursor;
};

// Typed overloads of a table kind, as the SDK declares them on each table class.
#define TDHOST_SYMBOL_TABLE_MEMBERS(TABLE, RECORD, ITERATOR)                                                \
 public:                                                                                                    \
  ACRX_DECLARE_MEMBERS(TABLE);                                                                              \
  TABLE() = default;                                                                                        \
  ~TABLE() override;                                                                                        \
  TDHOST_DECLARE_COPYABLE(TABLE)                                                                            \
  using AcDbSymbolTable::getAt;                                                                             \
  using AcDbSymbolTable::add;                                                                               \
  using AcDbSymbolTable::newIterator;                                                                       \
  Acad::ErrorStatus getAt(const ACHAR* entryName, RECORD*& record, AcDb::OpenMode openMode,                 \
                          bool openErasedRec = false) const {                                               \
    AcDbSymbolTableRecord* rec = nullptr;                                                                   \
    Acad::ErrorStatus es = AcDbSymbolTable::getAt(entryName, rec, openMode, openErasedRec);                 \
    record = static_cast<RECORD*>(rec);                                                                     \
    return es;                                                                                              \
  }                                                                                                         \
  Acad::ErrorStatus add(RECORD* record) { return AcDbSymbolTable::add(record); }                            \
  Acad::ErrorStatus add(AcDbObjectId& id, RECORD* record) { return AcDbSymbolTable::add(id, record); }      \
  Acad::ErrorStatus newIterator(ITERATOR*& iterator, bool atBeginning = true, bool skipDeleted = true) const { \
    AcDbSymbolTableIterator* it = nullptr;                                                                  \
    Acad::ErrorStatus es = AcDbSymbolTable::newIterator(it, atBeginning, skipDeleted);                      \
    iterator = static_cast<ITERATOR*>(it);                                                                  \
    return es;                                                                                              \
  }                                                                                                         \
  AcRxClass* recordClass() const override;                                                                  \
  AcDbSymbolTableIterator* makeIterator(std::vector<AcDbObjectId> ids) const override {                     \
    return new ITERATOR(std::move(ids));                                                                    \
  }                                                                                                         \
                                                                                                            \
 protected:                                                                                                 \
  TABLE(const TABLE&) = default;                                                                            \
  TABLE& operator=(const TABLE&) = default

#define TDHOST_SYMBOL_TABLE_ITERATOR(ITERATOR, RECORD)                                             \
  class TDHOST_API ITERATOR : public AcDbSymbolTableIterator {                                     \
   public:                                                                                         \
    using AcDbSymbolTableIterator::getRecord;                                                      \
    Acad::ErrorStatus getRecord(RECORD*& record, AcDb::OpenMode openMode = AcDb::kForRead,         \
                                bool openErasedRec = false) const {                                \
      AcDbSymbolTableRecord* rec = nullptr;                                                        \
      Acad::ErrorStatus es = AcDbSymbolTableIterator::getRecord(rec, openMode, openErasedRec);     \
      record = static_cast<RECORD*>(rec);                                                          \
      return es;                                                                                   \
    }                                                                                              \
                                                                                                   \
    explicit ITERATOR(std::vector<AcDbObjectId> ids) : AcDbSymbolTableIterator(std::move(ids)) {}  \
  }

// ---- Records -------------------------------------------------------------------------------

class TDHOST_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
  AcDbBlockTableRecord() = default;
  ~AcDbBlockTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbBlockTableRecord)

  // Adds a new entity to the database and to this block (open for write, and itself in a
  // database). The entity is left open for write. eAlreadyInDb, eNullEntityPointer,
  // eNotInDatabase (block not yet added), eNotOpenForWrite.
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;

  AcGePoint3d origin() const { return mOrigin; }
  Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
  bool isLayout() const;
  bool isAnonymous() const;
  bool hasAttributeDefinitions() const { return false; }

  void subOwnedIds(AcDbObjectIdArray& ids) const override;
  void subTranslateIds(const AcDbIdMapping& idMap) override;
  const std::vector<AcDbObjectId>& entityIds() const { return mEntities; }
  // Host-internal (file reader): a resident entity joins the block as it is.
  void attachLoaded(AcDbObjectId id) { mEntities.push_back(id); }

 protected:
  AcDbBlockTableRecord(const AcDbBlockTableRecord&) = default;
  AcDbBlockTableRecord& operator=(const AcDbBlockTableRecord&) = default;

 private:
  AcGePoint3d mOrigin;
  std::vector<AcDbObjectId> mEntities;
};

class TDHOST_API AcDbBlockTableRecordIterator {
 public:
  ~AcDbBlockTableRecordIterator();
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode openMode = AcDb::kForRead,
                              bool openErasedEntity = false) const;
  Acad::ErrorStatus seek(AcDbObjectId id);
  Acad::ErrorStatus seek(const AcDbEntity* entity);

 private:
  friend class AcDbBlockTableRecord;
  explicit AcDbBlockTableRecordIterator(std::vector<AcDbObjectId> ids) : mCursor(std::move(ids)) {}
  tdhost::IdCursor mCursor;
};

class TDHOST_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
  AcDbLayerTableRecord() = default;
  ~AcDbLayerTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbLayerTableRecord)

  bool isOff() const { return mOff; }
  void setIsOff(bool off);
  bool isFrozen() const { return mFrozen; }
  Acad::ErrorStatus setIsFrozen(bool frozen);
  bool isLocked() const { return mLocked; }
  void setIsLocked(bool locked);
  bool isPlottable() const { return mPlottable; }
  Acad::ErrorStatus setIsPlottable(bool plottable);
  AcCmColor color() const { return mColor; }
  void setColor(const AcCmColor& color);
  AcDbObjectId linetypeObjectId() const { return mLinetype; }
  void setLinetypeObjectId(AcDbObjectId id);

 protected:
  AcDbLayerTableRecord(const AcDbLayerTableRecord&) = default;
  AcDbLayerTableRecord& operator=(const AcDbLayerTableRecord&) = default;

 private:
  bool mOff = false, mFrozen = false, mLocked = false, mPlottable = true;
  AcCmColor mColor = white();
  static AcCmColor white() {
    AcCmColor c;
    c.setColorIndex(7);
    return c;
  }
  AcDbObjectId mLinetype;
};

class TDHOST_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
  AcDbTextStyleTableRecord() = default;
  ~AcDbTextStyleTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbTextStyleTableRecord)

  bool isShapeFile() const { return mShapeFile; }
  void setIsShapeFile(bool shape);
  bool isVertical() const { return mVertical; }
  void setIsVertical(bool vertical);
  double textSize() const { return mTextSize; }
  Acad::ErrorStatus setTextSize(double size);  // eInvalidInput below 0
  double xScale() const { return mXScale; }    // the width factor
  Acad::ErrorStatus setXScale(double factor);  // eInvalidInput at or below 0
  double obliquingAngle() const { return mOblique; }
  Acad::ErrorStatus setObliquingAngle(double angle);
  double priorSize() const { return mPriorSize; }
  Acad::ErrorStatus setPriorSize(double size);
  Adesk::UInt8 flagBits() const { return mFlagBits; }
  void setFlagBits(Adesk::UInt8 bits);
  Acad::ErrorStatus fileName(ACHAR*& fileName) const;  // new copy, acutDelString
  Acad::ErrorStatus fileName(const ACHAR*& fileName) const;
  Acad::ErrorStatus setFileName(const ACHAR* fileName);
  Acad::ErrorStatus bigFontFileName(ACHAR*& fileName) const;
  Acad::ErrorStatus bigFontFileName(const ACHAR*& fileName) const;
  Acad::ErrorStatus setBigFontFileName(const ACHAR* fileName);
  // TrueType font description; an empty typeface means the style uses fileName().
  Acad::ErrorStatus setFont(const ACHAR* typeface, bool bold, bool italic, int charset, int pitchAndFamily);
  // `typeface` is a new copy (acutDelString).
  Acad::ErrorStatus font(ACHAR*& typeface, bool& bold, bool& italic, int& charset, int& pitchAndFamily) const;

 protected:
  AcDbTextStyleTableRecord(const AcDbTextStyleTableRecord&) = default;
  AcDbTextStyleTableRecord& operator=(const AcDbTextStyleTableRecord&) = default;

 private:
  bool mShapeFile = false, mVertical = false;
  double mTextSize = 0.0, mXScale = 1.0, mOblique = 0.0, mPriorSize = 0.2;
  Adesk::UInt8 mFlagBits = 0;
  std::wstring mFileName, mBigFontFileName, mTypeface;
  bool mBold = false, mItalic = false;
  int mCharset = 0, mPitchAndFamily = 0;
};

class TDHOST_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
  AcDbLinetypeTableRecord() = default;
  ~AcDbLinetypeTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbLinetypeTableRecord)

  Acad::ErrorStatus comments(const ACHAR*& text) const;
  Acad::ErrorStatus setComments(const ACHAR* text);
  double patternLength() const { return mPatternLength; }
  void setPatternLength(double length);
  int numDashes() const { return static_cast<int>(mDashes.size()); }
  // Resizes the dash list (new dashes have length 0).
  void setNumDashes(int count);
  double dashLengthAt(int index) const;
  void setDashLengthAt(int index, double length);

 protected:
  AcDbLinetypeTableRecord(const AcDbLinetypeTableRecord&) = default;
  AcDbLinetypeTableRecord& operator=(const AcDbLinetypeTableRecord&) = default;

 private:
  std::wstring mComments;
  double mPatternLength = 0.0;
  std::vector<double> mDashes;
};

// Views and viewports. The 2D centre point waits for the 2D geometry types.
class TDHOST_API AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord);
  ~AcDbAbstractViewTableRecord() override;

  double height() const { return mHeight; }
  void setHeight(double height);
  double width() const { return mWidth; }
  void setWidth(double width);
  AcGePoint3d target() const { return mTarget; }
  void setTarget(const AcGePoint3d& target);
  AcGeVector3d viewDirection() const { return mDirection; }
  void setViewDirection(const AcGeVector3d& direction);
  double viewTwist() const { return mTwist; }
  void setViewTwist(double angle);
  double lensLength() const { return mLens; }
  void setLensLength(double length);
  double frontClipDistance() const { return mFront; }
  void setFrontClipDistance(double distance);
  double backClipDistance() const { return mBack; }
  void setBackClipDistance(double distance);
  bool frontClipEnabled() const { return mFrontOn; }
  void setFrontClipEnabled(bool on);
  bool backClipEnabled() const { return mBackOn; }
  void setBackClipEnabled(bool on);
  // With the front clip on: clip at the camera (true) or at frontClipDistance (false).
  bool frontClipAtEye() const { return mFrontAtEye; }
  void setFrontClipAtEye(bool atEye);
  bool perspectiveEnabled() const { return mPerspective; }
  void setPerspectiveEnabled(bool enabled);
  // The view centre in display coordinates.
  AcGePoint2d centerPoint() const { return AcGePoint2d(mCenterX, mCenterY); }
  void setCenterPoint(const AcGePoint2d& pt) { setCenter(pt.x, pt.y); }
  // Host-internal spellings kept for older callers.
  void getCenter(double& x, double& y) const { x = mCenterX; y = mCenterY; }
  void setCenter(double x, double y);

 protected:
  AcDbAbstractViewTableRecord() = default;
  AcDbAbstractViewTableRecord(const AcDbAbstractViewTableRecord&) = default;
  AcDbAbstractViewTableRecord& operator=(const AcDbAbstractViewTableRecord&) = default;

 private:
  double mCenterX = 0.0, mCenterY = 0.0, mHeight = 1.0, mWidth = 1.0;
  AcGePoint3d mTarget;
  AcGeVector3d mDirection{0, 0, 1};
  double mTwist = 0.0, mLens = 50.0, mFront = 0.0, mBack = 0.0;
  bool mFrontOn = false, mBackOn = false, mFrontAtEye = true, mPerspective = false;
};

class TDHOST_API AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);
  AcDbViewTableRecord() = default;
  ~AcDbViewTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbViewTableRecord)
  bool isPaperspaceView() const { return mPaper; }
  void setIsPaperspaceView(bool paper);

 protected:
  AcDbViewTableRecord(const AcDbViewTableRecord&) = default;
  AcDbViewTableRecord& operator=(const AcDbViewTableRecord&) = default;

 private:
  bool mPaper = false;
};

class TDHOST_API AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);
  AcDbViewportTableRecord() = default;
  ~AcDbViewportTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbViewportTableRecord)

 protected:
  AcDbViewportTableRecord(const AcDbViewportTableRecord&) = default;
  AcDbViewportTableRecord& operator=(const AcDbViewportTableRecord&) = default;
};

class TDHOST_API AcDbUCSTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);
  AcDbUCSTableRecord() = default;
  ~AcDbUCSTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbUCSTableRecord)
  AcGePoint3d origin() const { return mOrigin; }
  void setOrigin(const AcGePoint3d& origin);
  AcGeVector3d xAxis() const { return mX; }
  void setXAxis(const AcGeVector3d& axis);
  AcGeVector3d yAxis() const { return mY; }
  void setYAxis(const AcGeVector3d& axis);

 protected:
  AcDbUCSTableRecord(const AcDbUCSTableRecord&) = default;
  AcDbUCSTableRecord& operator=(const AcDbUCSTableRecord&) = default;

 private:
  AcGePoint3d mOrigin;
  AcGeVector3d mX{1, 0, 0}, mY{0, 1, 0};
};

class TDHOST_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
  AcDbRegAppTableRecord() = default;
  ~AcDbRegAppTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbRegAppTableRecord)

 protected:
  AcDbRegAppTableRecord(const AcDbRegAppTableRecord&) = default;
  AcDbRegAppTableRecord& operator=(const AcDbRegAppTableRecord&) = default;
};

class TDHOST_API AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);
  AcDbDimStyleTableRecord() = default;
  ~AcDbDimStyleTableRecord() override;
  TDHOST_DECLARE_COPYABLE(AcDbDimStyleTableRecord)
  double dimtxt() const { return mDimtxt; }
  Acad::ErrorStatus setDimtxt(double height);
  double dimscale() const { return mDimscale; }
  Acad::ErrorStatus setDimscale(double scale);

 protected:
  AcDbDimStyleTableRecord(const AcDbDimStyleTableRecord&) = default;
  AcDbDimStyleTableRecord& operator=(const AcDbDimStyleTableRecord&) = default;

 private:
  double mDimtxt = 0.18, mDimscale = 1.0;
};

// ---- Tables and their iterators ----------------------------------------------------------

TDHOST_SYMBOL_TABLE_ITERATOR(AcDbBlockTableIterator, AcDbBlockTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbLayerTableIterator, AcDbLayerTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbTextStyleTableIterator, AcDbTextStyleTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbLinetypeTableIterator, AcDbLinetypeTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbViewTableIterator, AcDbViewTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbUCSTableIterator, AcDbUCSTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbViewportTableIterator, AcDbViewportTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbRegAppTableIterator, AcDbRegAppTableRecord);
TDHOST_SYMBOL_TABLE_ITERATOR(AcDbDimStyleTableIterator, AcDbDimStyleTableRecord);

class TDHOST_API AcDbBlockTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbBlockTable, AcDbBlockTableRecord, AcDbBlockTableIterator);
};
class TDHOST_API AcDbLayerTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbLayerTable, AcDbLayerTableRecord, AcDbLayerTableIterator);
};
class TDHOST_API AcDbTextStyleTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbTextStyleTable, AcDbTextStyleTableRecord, AcDbTextStyleTableIterator);
};
class TDHOST_API AcDbLinetypeTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbLinetypeTable, AcDbLinetypeTableRecord, AcDbLinetypeTableIterator);
};
class TDHOST_API AcDbViewTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbViewTable, AcDbViewTableRecord, AcDbViewTableIterator);
};
class TDHOST_API AcDbUCSTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbUCSTable, AcDbUCSTableRecord, AcDbUCSTableIterator);
};
class TDHOST_API AcDbViewportTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbViewportTable, AcDbViewportTableRecord, AcDbViewportTableIterator);
};
class TDHOST_API AcDbRegAppTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbRegAppTable, AcDbRegAppTableRecord, AcDbRegAppTableIterator);
};
class TDHOST_API AcDbDimStyleTable : public AcDbSymbolTable {
  TDHOST_SYMBOL_TABLE_MEMBERS(AcDbDimStyleTable, AcDbDimStyleTableRecord, AcDbDimStyleTableIterator);
};

// Standard names.
#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"
