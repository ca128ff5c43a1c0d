// The file filer: what a modelled class's dxfOutFields writes goes straight into the DXF
// text of the save in progress.
#include "dxf/dxf_filer.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

#include "adsdef.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "dxf/dxf_model.h"
#include "dxf/dxf_out.h"

namespace tdhost::dxf {

namespace {

// What every writing filer answers to the reading half of the interface.
class WritingFiler : public AcDbDxfFiler {
 public:
  WritingFiler(AcDbDatabase* db, bool r2000) : mDb(db), mR2000(r2000) {}

  Acad::ErrorStatus filerStatus() const override { return mStatus; }
  AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
  void setFilerStatus(Acad::ErrorStatus s) override { mStatus = s; }
  void resetFilerStatus() override { mStatus = Acad::eOk; }
  AcDbDatabase* database() const override { return mDb; }
  Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& v, AcDb::MaintenanceReleaseVersion& r) const override {
    v = mR2000 ? AcDb::kDHL_1015 : AcDb::kDHL_1032;
    r = AcDb::kMRelease0;
    return Acad::eOk;
  }
  Acad::ErrorStatus readItem(resbuf*) override { return Acad::eNotApplicable; }
  void pushBackItem() override {}
  bool atEOF() override { return true; }
  bool atEndOfObject() override { return true; }
  bool atSubclassData(const ACHAR*) override { return false; }
  bool atExtendedData() override { return false; }

 private:
  AcDbDatabase* mDb;
  bool mR2000;
  Acad::ErrorStatus mStatus = Acad::eOk;
};

class OutFiler : public WritingFiler {
 public:
  OutFiler(Out& out, AcDbDatabase* db) : WritingFiler(db, out.opt.r2000), mOut(out) {}

  Acad::ErrorStatus writeItem(const resbuf& item) override {
    RbList one{rbItemFrom(item)};
    writeItems(mOut, one);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override {
    AcDbStub* s = id;
    mOut.w.string(code, s ? handleText(s->handle) : "0");
    return Acad::eOk;
  }
  Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* text) override {
    mOut.text(code, narrow(text ? text : L""));
    return Acad::eOk;
  }
  Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) override {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string hex;
    for (int i = 0; i < chunk.clen; ++i) {
      const auto b = static_cast<unsigned char>(chunk.buf[i]);
      hex += kHex[b >> 4];
      hex += kHex[b & 15];
    }
    mOut.w.string(code, hex);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& h) override {
    mOut.w.string(code, handleText(h));
    return Acad::eOk;
  }
  Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 v) override { return integer(code, v); }
  Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 v) override { return integer(code, v); }
  Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 v) override { return integer(code, v); }
  Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean v) override { return integer(code, v ? 1 : 0); }
  Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double v, int) override {
    mOut.w.real(code, v);
    return Acad::eOk;
  }
  Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& p, int) override {
    mOut.w.point2d(code, p.x, p.y);
    return Acad::eOk;
  }
  Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& p, int) override {
    mOut.w.point(code, p.x, p.y, p.z);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& v, int) override {
    mOut.w.point2d(code, v.x, v.y);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& v, int) override {
    mOut.w.point(code, v.x, v.y, v.z);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& s, int) override {
    mOut.w.point(code, s.sx, s.sy, s.sz);
    return Acad::eOk;
  }

 private:
  Acad::ErrorStatus integer(int code, Adesk::Int64 v) {
    mOut.w.integer(code, v);
    return Acad::eOk;
  }
  Out& mOut;
};

// Mixes the values dxfOutFields writes into one number without formatting them: two calls
// agree exactly when the text they would write agrees (up to a 2^-64 chance of collision).
// Each scalar goes in with its group code, so a point equals its three coordinates.
class FingerprintFiler : public WritingFiler {
 public:
  explicit FingerprintFiler(AcDbDatabase* db) : WritingFiler(db, false) {}
  std::uint64_t value() const { return mHash; }

  Acad::ErrorStatus writeItem(const resbuf& item) override {
    static const SaveOptions plain;
    Out text{TagWriter(), plain, {}, {}};
    RbList one{rbItemFrom(item)};
    writeItems(text, one);
    bytes(item.restype, text.w.text());
    return Acad::eOk;
  }
  Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override {
    const AcDbStub* s = id;
    return word(code, s ? static_cast<Adesk::UInt64>(s->handle) : 0);
  }
  Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* text) override {
    mix(static_cast<std::uint64_t>(code) | (std::uint64_t{1} << 40));
    std::uint64_t n = 0;
    for (const ACHAR* p = text ? text : L""; *p; ++p, ++n) mix(static_cast<std::uint64_t>(*p));
    mix(n);
    return Acad::eOk;
  }
  Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) override {
    bytes(code, std::string_view(chunk.buf, chunk.clen > 0 ? static_cast<std::size_t>(chunk.clen) : 0));
    return Acad::eOk;
  }
  Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& h) override {
    return word(code, static_cast<Adesk::UInt64>(h));
  }
  Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 v) override { return word(code, static_cast<std::uint64_t>(v)); }
  Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 v) override { return writeInt64(code, v); }
  Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 v) override { return writeInt64(code, v); }
  Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean v) override { return writeInt64(code, v ? 1 : 0); }
  Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double v, int) override { return real(code, v); }
  Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& p, int) override { return reals(code, p.x, p.y); }
  Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& p, int) override {
    return reals(code, p.x, p.y, p.z);
  }
  Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& v, int) override { return reals(code, v.x, v.y); }
  Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& v, int) override {
    return reals(code, v.x, v.y, v.z);
  }
  Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& s, int) override {
    return reals(code, s.sx, s.sy, s.sz);
  }

 private:
  // One rotate, xor and odd multiply per value: for a fixed state each step is one-to-one in the
  // value and for a fixed value one-to-one in the state, so two runs of the same length that
  // differ in a single value always end apart. Cheap enough to run on every entity loaded.
  void mix(std::uint64_t v) { mHash = (std::rotl(mHash, 26) ^ v) * 0x9E3779B97F4A7C15ull; }
  Acad::ErrorStatus word(int code, std::uint64_t v) {
    mix(static_cast<std::uint64_t>(static_cast<std::uint32_t>(code)));
    mix(v);
    return Acad::eOk;
  }
  // Doubles by their bits: the shortest text is one-to-one with them, except that NaNs print
  // alike but for their sign; -0.0 and 0.0 print differently and hash differently.
  Acad::ErrorStatus real(int code, double v) {
    if (std::isnan(v)) v = std::copysign(std::numeric_limits<double>::quiet_NaN(), v);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return word(code, bits);
  }
  Acad::ErrorStatus reals(int code, double x, double y) {
    real(code, x);
    return real(code + 10, y);
  }
  Acad::ErrorStatus reals(int code, double x, double y, double z) {
    reals(code, x, y);
    return real(code + 20, z);
  }
  void bytes(int code, std::string_view b) {
    mix(static_cast<std::uint64_t>(code) | (std::uint64_t{2} << 40));
    for (unsigned char c : b) mix(c);
    mix(b.size());
  }
  std::uint64_t mHash = 0;
};


// Reads over the kept tags of a loaded record; points come as one item from their x, y
// and z codes, strings as host strings the filer owns.
class InFiler : public AcDbDxfFiler {
 public:
  InFiler(const std::vector<RawTag>& tags, AcDbDatabase* db) : mTags(tags), mDb(db) {}

  Acad::ErrorStatus filerStatus() const override { return mStatus; }
  AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
  void setFilerStatus(Acad::ErrorStatus s) override { mStatus = s; }
  void resetFilerStatus() override { mStatus = Acad::eOk; }
  AcDbDatabase* database() const override { return mDb; }
  Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& v, AcDb::MaintenanceReleaseVersion& r) const override {
    v = AcDb::kDHL_1032;
    r = AcDb::kMRelease0;
    return Acad::eOk;
  }
  Acad::ErrorStatus readItem(resbuf* item) override {
    if (item == nullptr) return Acad::eNullObjectPointer;
    if (mPos >= mTags.size()) return Acad::eEndOfObject;
    mLast = mPos;
    const RawTag& t = mTags[mPos++];
    *item = resbuf{};
    item->restype = static_cast<short>(t.code);
    if (isPointCode(t.code)) {
      item->resval.rpoint[0] = toDouble(t.value);
      for (int k = 1; k < 3 && mPos < mTags.size() && mTags[mPos].code == t.code + 10 * k; ++k)
        item->resval.rpoint[k] = toDouble(mTags[mPos++].value);
      return Acad::eOk;
    }
    switch (valueKindOf(t.code)) {
      case ValueKind::Double: item->resval.rreal = toDouble(t.value); break;
      case ValueKind::Int16: case ValueKind::Bool:
        item->resval.rint = static_cast<short>(toInteger(t.value));
        break;
      case ValueKind::Int32: item->resval.rlong = static_cast<Adesk::Int32>(toInteger(t.value)); break;
      case ValueKind::Int64: item->resval.mnInt64 = toInteger(t.value); break;
      default:
        widenInto(mString, t.value);
        item->resval.rstring = mString.data();
        break;
    }
    return Acad::eOk;
  }
  void pushBackItem() override { mPos = mLast; }
  bool atEOF() override { return mPos >= mTags.size(); }
  bool atEndOfObject() override { return mPos >= mTags.size(); }
  bool atSubclassData(const ACHAR* name) override {
    if (mPos < mTags.size() && mTags[mPos].code == 100 && name != nullptr && sameName(mTags[mPos].value, name)) {
      mLast = mPos++;
      return true;
    }
    return false;
  }
  bool atExtendedData() override { return mPos < mTags.size() && mTags[mPos].code >= 1000; }

  Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeObjectId(AcDb::DxfCode, const AcDbObjectId&) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeString(AcDb::DxfCode, const ACHAR*) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeBChunk(AcDb::DxfCode, const ads_binary&) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode, const AcDbHandle&) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeInt64(AcDb::DxfCode, Adesk::Int64) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeInt32(AcDb::DxfCode, Adesk::Int32) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeInt16(AcDb::DxfCode, Adesk::Int16) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeBoolean(AcDb::DxfCode, Adesk::Boolean) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeDouble(AcDb::DxfCode, double, int) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writePoint2d(AcDb::DxfCode, const AcGePoint2d&, int) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writePoint3d(AcDb::DxfCode, const AcGePoint3d&, int) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeVector2d(AcDb::DxfCode, const AcGeVector2d&, int) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeVector3d(AcDb::DxfCode, const AcGeVector3d&, int) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus writeScale3d(AcDb::DxfCode, const AcGeScale3d&, int) override { return Acad::eNotApplicable; }

 private:
  // Subclass markers are ASCII: compared as they stand, without widening.
  static bool sameName(std::string_view value, const ACHAR* name) {
    for (char c : value) {
      if (static_cast<unsigned char>(c) >= 0x80) return widen(value) == name;
      if (*name == 0 || static_cast<ACHAR>(c) != *name) return false;
      ++name;
    }
    return *name == 0;
  }
  static bool isPointCode(int code) {
    return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 || (code >= 1010 && code <= 1013);
  }
  const std::vector<RawTag>& mTags;
  AcDbDatabase* mDb;
  std::size_t mPos = 0, mLast = 0;
  std::wstring mString;
  Acad::ErrorStatus mStatus = Acad::eOk;
};

}  // namespace

Acad::ErrorStatus readFields(AcDbObject& obj, const std::vector<RawTag>& tags, AcDbDatabase* db) {
  InFiler filer(tags, db);
  return obj.dxfInFields(&filer);
}

std::uint64_t fieldsFingerprint(const AcDbObject& obj) {
  FingerprintFiler filer(obj.database());
  obj.dxfOutFields(&filer);
  return filer.value();
}

std::string fieldsText(const AcDbObject& obj, const SaveOptions& options) {
  Out out{TagWriter(), options, {}, {}};
  OutFiler filer(out, obj.database());
  obj.dxfOutFields(&filer);
  return out.w.take();
}

namespace {

// The owned vertices of an old-style polyline, in order, skipping erased ones.
std::vector<AcDbEntity*> ownedVertices(const AcDbEntity& ent) {
  std::unique_ptr<AcDbObjectIterator> it;
  if (const auto* p2 = AcDb2dPolyline::cast(&ent)) it.reset(p2->vertexIterator());
  else if (const auto* p3 = AcDb3dPolyline::cast(&ent)) it.reset(p3->vertexIterator());
  std::vector<AcDbEntity*> out;
  if (!it) return out;
  for (it->start(); !it->done(); it->step()) {
    AcDbEntity* v = it->entity();
    if (v == nullptr) v = AcDbEntity::cast(peek(it->objectId()));
    if (v != nullptr && !v->isErased()) out.push_back(v);
  }
  return out;
}

std::string layerOf(const AcDbEntity& ent) {
  auto* layer = AcDbSymbolTableRecord::cast(peek(ent.layerId()));
  return layer ? narrow(layer->nameText()) : "0";
}

}  // namespace

bool hasSeqEnd(const AcDbEntity& ent) { return AcDb2dPolyline::cast(&ent) || AcDb3dPolyline::cast(&ent); }

void writeModelledEntity(Out& out, AcDbEntity& ent, DxfState* state) {
  const ACHAR* dxfName = ent.isA()->dxfName();
  // A class without a DXF name has no file form; other programs could not read it.
  if (dxfName == nullptr || *dxfName == 0) return;
  std::vector<RawTag> none;
  std::size_t rest = 0;
  writeStart(out, narrow(dxfName), ent, none, rest);
  out.w.string(100, "AcDbEntity");
  out.text(8, layerOf(ent));
  if (ent.colorIndex() != AcDb::kByLayer) out.w.integer(62, ent.colorIndex());
  if (ent.visibility() == AcDb::kInvisible) out.w.integer(60, 1);
  // The fields are read through the object's own getters, which want a read open, as when
  // the host saves; an object someone holds open for write is written as it stands.
  AcDbEntity* reader = nullptr;
  const bool opened = !ent.objectId().isNull() &&
                      acdbOpenAcDbEntity(reader, ent.objectId(), AcDb::kForRead) == Acad::eOk;
  OutFiler filer(out, ent.database());
  ent.dxfOutFields(&filer);
  if (opened) reader->close();
  writeXData(out, ent);
  if (hasSeqEnd(ent)) writePolylineFollowers(out, ent, state);
}

void writePolylineFollowers(Out& out, AcDbEntity& ent, DxfState* state) {
  // Each owned vertex as its own record, closed by a SEQEND.
  for (AcDbEntity* v : ownedVertices(ent)) writeEntity(out, *v, state);
  AcDbHandle seqEnd;
  const std::vector<RawTag>* kept = nullptr;
  if (state != nullptr) {
    if (auto it = state->seqEnds.find(ent.objectId()); it != state->seqEnds.end()) seqEnd = it->second;
    if (auto it = state->seqEndTags.find(ent.objectId()); it != state->seqEndTags.end()) kept = &it->second;
  }
  out.w.string(0, "SEQEND");
  out.w.string(5, handleText(seqEnd));
  AcDbStub* self = ent.objectId();
  out.w.string(330, self ? handleText(self->handle) : "0");
  if (kept != nullptr) {
    for (const RawTag& t : *kept) out.text(t.code, t.value);
    return;
  }
  out.w.string(100, "AcDbEntity");
  out.text(8, layerOf(ent));
}

}  // namespace tdhost::dxf
