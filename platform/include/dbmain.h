// The drawing database core: AcDbObject, the minimal AcDbEntity base, AcDbDatabase and the
// global open functions.
#pragma once

#include <cstddef>
#include <memory>

#include "acadstrc.h"
#include "acarray.h"
#include "acdb.h"
#include "adsdef.h"
#include "cmcolor.h"
#include "dbhandle.h"
#include "dbid.h"
#include "dbidar.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "rxboiler.h"

struct resbuf;
class AcDbDatabase;
class AcDbIdMapping;
class AcGeMatrix3d;
class AcGePlane;
class AcDbEntity;
class AcDbBlockTable;
class AcDbLayerTable;
class AcDbTextStyleTable;
class AcDbLinetypeTable;
class AcDbViewTable;
class AcDbUCSTable;
class AcDbViewportTable;
class AcDbRegAppTable;
class AcDbDimStyleTable;
class AcDbDictionary;
class AcDbDxfFiler;

namespace tdhost {
struct ObjectAccess;
class XDataStore;
struct DatabaseImpl;
class CurvePath;
}  // namespace tdhost

// The base of every database object. Open rules as the host keeps them: up to 256 readers
// or one writer; close() ends each open; a new object is write-enabled and belongs to its
// maker until it is added to a database, after which the database owns it.
class TDHOST_API AcDbObject : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject);
  ~AcDbObject() override;

  // The host's own heap: the objects a drawing load makes come from their database's arena.
  static void* operator new(std::size_t size);
  static void operator delete(void* p) noexcept;
  static void* operator new(std::size_t, void* where) noexcept { return where; }
  static void operator delete(void*, void*) noexcept {}

  AcDbObjectId objectId() const;
  AcDbObjectId ownerId() const { return mOwnerId; }
  virtual Acad::ErrorStatus setOwnerId(AcDbObjectId ownerId);
  void getAcDbHandle(AcDbHandle& handle) const;
  // Null for an object never added to a database.
  AcDbDatabase* database() const;

  // Ends one open (the writer or one reader). A second close, or a close of an object that
  // was never added, is reported as misuse.
  Acad::ErrorStatus close();
  // Read open with a single reader to write open: eHadMultipleReaders with more readers,
  // eWasOpenForWrite when already write-open.
  Acad::ErrorStatus upgradeOpen();
  // Write open to a single read open; eNotOpenForWrite otherwise.
  Acad::ErrorStatus downgradeOpen();

  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  bool isNotifyEnabled() const { return false; }
  bool isNewObject() const { return mStub == nullptr; }
  bool isErased() const { return mErased; }
  bool isDBRO() const { return mStub != nullptr; }

  // Marks the object erased (true) or brings it back (false). Needs a write open;
  // eWasErased / eWasNotErased when the state is already the asked one.
  Acad::ErrorStatus erase(bool erasing = true);

  // Reports misuse (and returns) when the object may not be read or written; the host's
  // modifiers refuse with eNotOpenForWrite on a read-opened object.
  void assertReadEnabled() const;
  void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

  // Extended data: the chain of `regappName` (all applications for null) as a new chain the
  // caller releases with acutRelRb, or null. Each application's group starts with a 1001.
  virtual resbuf* xData(const ACHAR* regappName = nullptr) const;
  // Replaces the groups of the applications named in `xdata`; a group with no element after
  // its 1001 removes that application's data. Applications must be registered
  // (eRegappIdNotFound); the total is limited to 16 KB (eXdataSizeExceeded).
  virtual Acad::ErrorStatus setXData(const resbuf* xdata);

  AcDbObjectId extensionDictionary() const { return mExtDictId; }
  // eAlreadyInDb when there is one already; needs a write open of a database-resident object.
  Acad::ErrorStatus createExtensionDictionary();
  // Erases an empty extension dictionary; eContainerNotEmpty when it has entries.
  Acad::ErrorStatus releaseExtensionDictionary();

  // DXF fields of this class and its bases, in the host's order: each class calls its base
  // first, then writes (or expects) its subclass marker (100) and its own group codes. The
  // common fields (handle, reactors, owner) and extended data are the filer's business.
  virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
  virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;

  // Host hooks for copying: ids this object hard-owns, cloned with it, and translation of
  // the ids it refers to after a clone.
  virtual void subOwnedIds(AcDbObjectIdArray& ids) const;
  virtual void subTranslateIds(const AcDbIdMapping& idMap);
  // Host hooks: erase(erasing) asks this first (a failure stops the erase), so an owner can
  // pass the change to what it owns; an object just added to a database adds what it holds.
  virtual Acad::ErrorStatus subErase(bool erasing);
  virtual void subAddedToDatabase();

 protected:
  AcDbObject();
  // Copies data (owner, extended data, extension dictionary), never identity or open state.
  AcDbObject(const AcDbObject& other);
  AcDbObject& operator=(const AcDbObject& other);

  // eOk when the object may be modified; otherwise reports the misuse and gives
  // eNotOpenForWrite (eWasErased for an erased object). Every modifier starts with it.
  Acad::ErrorStatus checkWrite(const char* what) const;
  // eOk when the object may be read; reports a read of a resident object that is not open.
  Acad::ErrorStatus checkRead(const char* what) const;

 private:
  friend struct tdhost::ObjectAccess;

  AcDbStub* mStub = nullptr;
  Adesk::UInt16 mReaders = 0;
  bool mWriter = false;
  bool mErased = false;
  AcDbObjectId mOwnerId;
  AcDbObjectId mExtDictId;
  std::unique_ptr<tdhost::XDataStore> mXData;
};

// An axis-aligned box in world coordinates. A new box is empty (min above max) until a point
// is added.
class TDHOST_API AcDbExtents {
 public:
  AcDbExtents();
  AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max);
  AcGePoint3d minPoint() const { return mMin; }
  AcGePoint3d maxPoint() const { return mMax; }
  // eInvalidExtents when min is above max on an axis.
  Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
  void addPoint(const AcGePoint3d& pt);
  void addExt(const AcDbExtents& src);
  void expandBy(const AcGeVector3d& vec);
  void transformBy(const AcGeMatrix3d& mat);

 private:
  AcGePoint3d mMin;
  AcGePoint3d mMax;
};

// Walks the objects an entity owns (the vertices of an old-style polyline). For an owner in a
// database objectId() names each one; for one never added, entity() gives the object itself.
class TDHOST_API AcDbObjectIterator : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObjectIterator);
  AcDbObjectIterator(AcDbObjectIdArray ids, AcArray<AcDbEntity*> entities);
  ~AcDbObjectIterator() override;
  bool done() const { return mPos < 0 || mPos >= mIds.length(); }
  void step(bool backwards = false, bool skipDeleted = true);
  void setPosition(AcDbEntity* pEnt);
  void setPosition(AcDbObjectId pObj);
  void start(bool atEnd = false);
  AcDbEntity* entity();
  AcDbObjectId objectId();

 private:
  void skipErased(bool backwards);
  AcDbObjectIdArray mIds;
  AcArray<AcDbEntity*> mEntities;
  int mPos = 0;
};

// Entities: layer, colour, linetype and visibility, plus the geometric services every
// entity kind answers (extents, transforms, stretch points, intersections).
class TDHOST_API AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity);
  ~AcDbEntity() override;

  AcDbObjectId blockId() const { return ownerId(); }

  // A new copy of the layer name; the caller releases it with acutDelString.
  ACHAR* layer() const;
  AcDbObjectId layerId() const { return mLayerId; }
  // eKeyNotFound when the layer does not exist in the entity's database (the working
  // database for an entity not yet added).
  Acad::ErrorStatus setLayer(const ACHAR* newVal, bool doSubents = true, bool allowHiddenLayer = false);
  Acad::ErrorStatus setLayer(AcDbObjectId newVal, bool doSubents = true, bool allowHiddenLayer = false);

  // The ACI index; 0 for a true colour.
  Adesk::UInt16 colorIndex() const { return mColor.colorIndex(); }
  // 0 (ByBlock) .. 256 (ByLayer); eOutOfRange above.
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, bool doSubents = true);
  AcCmColor color() const { return mColor; }
  Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);

  // A new copy of the linetype name (release with acutDelString); null when none is set.
  ACHAR* linetype() const;
  AcDbObjectId linetypeId() const { return mLinetypeId; }
  // eKeyNotFound for a linetype missing from the entity's (or working) database.
  Acad::ErrorStatus setLinetype(const ACHAR* newVal, bool doSubents = true);
  Acad::ErrorStatus setLinetype(AcDbObjectId newVal, bool doSubents = true);
  double linetypeScale() const { return mLinetypeScale; }
  // eInvalidInput for a scale not above zero.
  Acad::ErrorStatus setLinetypeScale(double newval, bool doSubents = true);

  AcDb::Visibility visibility() const { return mVisibility; }
  Acad::ErrorStatus setVisibility(AcDb::Visibility newVal, bool doSubents = true);

  // Layer (CLAYER), colour ByLayer, linetype (CELTYPE) and scale 1 of `db` (the working database
  // for null).
  void setDatabaseDefaults(AcDbDatabase* db = nullptr);

  // Applies the matrix to the geometry. Entities without geometry refuse (eNotApplicable);
  // kinds that cannot take a non-uniform scale give eCannotScaleNonUniformly.
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
  // The world box of the geometry (exact for arcs and bulges); eInvalidExtents when empty.
  virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  // The grip points a stretch moves (ends, vertices, insertion points).
  virtual Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const;
  // Moves the stretch points with the given indexes (as getStretchPoints numbers them) by offset.
  virtual Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset);

  // Points where this entity meets `pEnt`, appended to `points` (points of this entity). The
  // mode says which operands extend: a line to its infinite line, an arc to its circle, an
  // open polyline's first and last segments beyond their ends. Entities without outline
  // geometry (points, texts, block references) meet nothing.
  virtual Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                          Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const;
  // The same on the projections of both entities onto projPlane (along its normal); each found
  // point is given back on this entity.
  virtual Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane& projPlane,
                                          AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                          Adesk::GsMarker otherGsMarker = 0) const;

  // Host hook: the outline of the entity as exact line and arc pieces (null for none).
  virtual std::shared_ptr<const tdhost::CurvePath> subPath() const;

 protected:
  AcDbEntity();
  AcDbEntity(const AcDbEntity&) = default;
  AcDbEntity& operator=(const AcDbEntity&) = default;

 private:
  AcDbObjectId mLayerId;
  AcDbObjectId mLinetypeId;
  AcCmColor mColor;
  double mLinetypeScale = 1.0;
  AcDb::Visibility mVisibility = AcDb::kVisible;
};

// The drawing database. It owns every object added to it; ids stay comparable for its life.
class TDHOST_API AcDbDatabase : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDatabase);
  // With buildDefaultDrawing the standard tables and records exist (layer "0", linetypes
  // ByBlock/ByLayer/Continuous, style and dimension style Standard, application ACAD, model
  // and paper space, viewport *Active, the named-object dictionary with ACAD_GROUP).
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase() override;
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;

  // Adds a new object: the database takes ownership, gives it a handle and leaves it open
  // for write (the caller closes it). eAlreadyInDb for a resident object.
  Acad::ErrorStatus addAcDbObject(AcDbObject* obj);
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& objId, AcDbObject* obj);

  // The id for a handle; eUnknownHandle when no object has it (with createIfNotFound an
  // empty id is made for the handle and returned instead).
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound, const AcDbHandle& objHandle,
                                    Adesk::UInt32 xRefId = 0);

  Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewTable(AcDbViewTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getUCSTable(AcDbUCSTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode = AcDb::kForRead);

  AcDbObjectId blockTableId() const;
  AcDbObjectId layerTableId() const;
  AcDbObjectId textStyleTableId() const;
  AcDbObjectId linetypeTableId() const;
  AcDbObjectId viewTableId() const;
  AcDbObjectId UCSTableId() const;
  AcDbObjectId viewportTableId() const;
  AcDbObjectId regAppTableId() const;
  AcDbObjectId dimStyleTableId() const;
  AcDbObjectId namedObjectsDictionaryId() const;
  AcDbObjectId groupDictionaryId() const;
  AcDbObjectId byLayerLinetype() const;
  AcDbObjectId byBlockLinetype() const;
  AcDbObjectId continuousLinetype() const;
  AcDbObjectId currentSpaceId() const;

  // Header variables.
  AcDbObjectId clayer() const;
  Acad::ErrorStatus setClayer(AcDbObjectId layerId);
  AcDbObjectId textstyle() const;
  Acad::ErrorStatus setTextstyle(AcDbObjectId styleId);
  AcDbObjectId celtype() const;
  Acad::ErrorStatus setCeltype(AcDbObjectId linetypeId);
  AcDbObjectId dimstyle() const;
  Acad::ErrorStatus setDimstyle(AcDbObjectId styleId);
  double textsize() const;
  Acad::ErrorStatus setTextsize(double size);
  double ltscale() const;
  Acad::ErrorStatus setLtscale(double scale);
  AcGePoint3d ucsorg() const;
  AcGeVector3d ucsxdir() const;
  AcGeVector3d ucsydir() const;
  // eInvalidInput unless the axes are perpendicular and non-zero.
  Acad::ErrorStatus setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis);
  AcGePoint3d extmin() const;
  AcGePoint3d extmax() const;
  Acad::ErrorStatus setExtmin(const AcGePoint3d& point);
  Acad::ErrorStatus setExtmax(const AcGePoint3d& point);
  AcGePoint3d insbase() const;
  Acad::ErrorStatus setInsbase(const AcGePoint3d& point);
  AcDbHandle handseed() const;
  Adesk::Int32 approxNumObjects() const;

  // Deep-clones the objects (all owned by one owner) and what they own into `owner` of this
  // database; references inside the cloned set are translated unless deferXlation.
  Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& objectIds, const AcDbObjectId& owner,
                                     AcDbIdMapping& idMap, bool deferXlation = false);

  // Replaces the drawing with an ASCII DXF file (R12..R2018). Statuses: eFileNotFound,
  // eFileAccessErr (unreadable), eBadDwgHeader (not DXF, or binary DXF), eInvalidDxfCode (a
  // malformed tag or value), eDxfPartiallyRead (truncated); on failure nothing changes and
  // tdhost::lastDxfMessage() says where and why (also written to logFilename when given).
  Acad::ErrorStatus dxfIn(const ACHAR* fileName, const ACHAR* logFilename = nullptr);
  // Writes the drawing as ASCII DXF: R2018 (UTF-8) for kDHL_CURRENT/kDHL_1032, R2000 in the
  // drawing's code page for kDHL_1015 (eInvalidDwgVersion for others). The file is written
  // beside the target and renamed over it, so a failed save (eFileAccessErr, eOutOfDisk)
  // leaves the old file as it was. `precision` is ignored: reals are written exactly.
  Acad::ErrorStatus dxfOut(const ACHAR* fileName, int precision = 16, AcDb::AcDbDwgVersion dwgVer = AcDb::kDHL_CURRENT,
                           bool saveThumbnailImage = false);

  tdhost::DatabaseImpl& impl() const { return *mImpl; }

 private:
  std::unique_ptr<tdhost::DatabaseImpl> mImpl;
};

// Opens the object behind `id`. Statuses: eNullObjectId, eUnknownHandle (no object),
// eWasErased (unless openErased), eWasOpenForWrite, eWasOpenForRead (write asked while
// read-open), eAtMaxReaders (256 readers).
TDHOST_API Acad::ErrorStatus acdbOpenObject(AcDbObject*& obj, AcDbObjectId id, AcDb::OpenMode mode,
                                           bool openErased = false);
TDHOST_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& obj, AcDbObjectId id, AcDb::OpenMode mode,
                                               bool openErased = false);
// As acdbOpenObject, and eNotAnEntity when the object is no entity.
TDHOST_API Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& ent, AcDbObjectId id, AcDb::OpenMode mode,
                                               bool openErased = false);

// Typed open: eNotThatKindOfClass (and nothing left open) when the object is no T.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& obj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
  obj = nullptr;
  AcDbObject* raw = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(raw, id, mode, openErased);
  if (es != Acad::eOk) return es;
  obj = T::cast(raw);
  if (obj == nullptr) {
    raw->close();
    return Acad::eNotThatKindOfClass;
  }
  return Acad::eOk;
}

// Entity names: an ads_name carries the id in its first element.
TDHOST_API Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId);
TDHOST_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName);

// Every database alive in the process, oldest first.
TDHOST_API const AcArray<AcDbDatabase*>& acdbActiveDatabaseArray();
