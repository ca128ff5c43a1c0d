// AcDbDxfFiler: the stream of DXF group codes an object reads its fields from and writes
// them to (dxfInFields / dxfOutFields). The host's file reader and writer implement it.
#pragma once

#include "acadstrc.h"
#include "acdb.h"
#include "adesk.h"
#include "adsdef.h"
#include "dbhandle.h"
#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"
#include "platformexport.h"
#include "rxobject.h"

class AcDbDatabase;

class TDHOST_API AcDbDxfFiler : public AcRxObject {
 public:
  // Precision argument meaning "as many digits as it takes to read back the same value".
  static constexpr int kDfltPrec = -1;

  ~AcDbDxfFiler() override = default;

  virtual Acad::ErrorStatus filerStatus() const = 0;
  virtual AcDb::FilerType filerType() const = 0;
  virtual void setFilerStatus(Acad::ErrorStatus status) = 0;
  virtual void resetFilerStatus() = 0;
  virtual AcDbDatabase* database() const = 0;
  virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& version, AcDb::MaintenanceReleaseVersion& release) const = 0;

  // Reading: the next item of the current object, its restype the group code and resval the
  // value typed by the code (strings as new host strings the filer owns until the next read).
  // eEndOfObject at the object's end; pushBackItem makes the last item the next one again.
  virtual Acad::ErrorStatus readItem(resbuf* item) = 0;
  virtual Acad::ErrorStatus readResBuf(resbuf* item) { return readItem(item); }
  virtual void pushBackItem() = 0;
  virtual bool atEOF() = 0;
  virtual bool atEndOfObject() = 0;
  // True, consuming the marker, when the next item is the subclass marker (100) `name`.
  virtual bool atSubclassData(const ACHAR* name) = 0;
  virtual bool atExtendedData() = 0;

  // Writing.
  virtual Acad::ErrorStatus writeItem(const resbuf& item) = 0;
  virtual Acad::ErrorStatus writeResBuf(const resbuf& item) { return writeItem(item); }
  virtual Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) = 0;
  virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* text) = 0;
  virtual Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) = 0;
  virtual Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& handle) = 0;
  virtual Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 value) = 0;
  virtual Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 value) = 0;
  virtual Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 value) = 0;
  virtual Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 value) { return writeInt16(code, value); }
  virtual Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) {
    return writeInt32(code, static_cast<Adesk::Int32>(value));
  }
  virtual Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) {
    return writeInt16(code, static_cast<Adesk::Int16>(value));
  }
  virtual Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) { return writeInt16(code, value); }
  virtual Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) = 0;
  virtual Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool value) { return writeBoolean(code, value); }
  virtual Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double value, int precision = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value, int precision = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value, int precision = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value, int precision = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value, int precision = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value, int precision = kDfltPrec) = 0;

  // Whether default values must be written (the file writer writes everything).
  virtual bool includesDefaultValues() const { return true; }
};
