// The ENTITIES section and the entities of blocks: kinds the host models become their classes,
// the others generic entities that keep their tags; layer, colour and visibility are AcDbEntity's.
#include <algorithm>

#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "dxf/dxf_filer.h"
#include "dxf/dxf_out.h"
#include "rxclass.h"
#include "dxf/dxf_model.h"
#include "object_access.h"

namespace tdhost::dxf {

namespace {

// Records that belong to the entity before them (vertices, attributes, the closing SEQEND).
bool hasFollowers(const Record& rec) {
  if (rec.type == "POLYLINE") return true;
  if (rec.type != "INSERT") return false;
  for (const Tag* t = rec.begin; t != rec.end; ++t)
    if (t->code == 66) return toInteger(t->value) == 1;
  return false;
}

// The index after the entity at records[i] and its followers.
std::size_t followersEnd(const std::vector<Record>& records, std::size_t i) {
  std::size_t next = i + 1;
  if (!hasFollowers(records[i])) return next;
  while (next < records.size()) {
    const std::string_view type = records[next].type;
    if (type != "VERTEX" && type != "ATTRIB" && type != "SEQEND") break;
    ++next;
    if (type == "SEQEND") break;
  }
  return next;
}

AcRxClass* modelledClass(std::string_view type) {
  static const std::pair<std::string_view, AcRxClass* (*)()> kinds[] = {
      {"LINE", &AcDbLine::desc}, {"ARC", &AcDbArc::desc}, {"CIRCLE", &AcDbCircle::desc},
      {"RAY", &AcDbRay::desc},
      {"POINT", &AcDbPoint::desc}, {"LWPOLYLINE", &AcDbPolyline::desc}, {"3DFACE", &AcDbFace::desc},
      {"TEXT", &AcDbText::desc}, {"MTEXT", &AcDbMText::desc}, {"INSERT", &AcDbBlockReference::desc}};
  for (const auto& [name, desc] : kinds)
    if (name == type) return desc();
  return nullptr;
}

// Kinds whose fields name nothing else: what they write changes only when they do, so their
// fingerprint waits for their first write open. Others (a block or style renamed) must take it now.
bool fieldsSelfContained(const AcRxClass* cls) {
  return cls == AcDbLine::desc() || cls == AcDbArc::desc() || cls == AcDbCircle::desc() || cls == AcDbRay::desc() ||
         cls == AcDbPoint::desc() || cls == AcDbPolyline::desc() || cls == AcDbFace::desc();
}

bool onlyFollowers(const std::vector<Record>& records, std::size_t first, std::size_t last, std::string_view type) {
  for (std::size_t k = first; k < last; ++k)
    if (records[k].type != type && records[k].type != "SEQEND") return false;
  return true;
}

// The class a record is read into, or null to keep it generic. Old-style polylines own their
// vertices as objects; polyface and polygon meshes have no class here. Attributes of an
// insertion stay kept records written after it; a multiple insertion (MINSERT) is another class.
AcRxClass* classFor(const Record& rec, const std::vector<RawTag>& tags, const std::vector<Record>& records,
                    std::size_t first, std::size_t last) {
  if (rec.type == "POLYLINE") {
    const std::int64_t flags = firstInteger(tags, 70, 0);
    if ((flags & (16 | 64)) != 0 || !onlyFollowers(records, first, last, "VERTEX")) return nullptr;
    return (flags & 8) != 0 ? AcDb3dPolyline::desc() : AcDb2dPolyline::desc();
  }
  if (rec.type == "INSERT") {
    if (firstInteger(tags, 70, 1) > 1 || firstInteger(tags, 71, 1) > 1) return nullptr;
    if (!onlyFollowers(records, first, last, "ATTRIB")) return nullptr;
  } else if (first != last) {
    return nullptr;
  }
  return modelledClass(rec.type);
}

struct Traits {
  std::string_view layer = "0";
  int colour = AcDb::kByLayer;
  bool invisible = false;
  bool paper = false;
};

Traits traitsOf(const std::vector<RawTag>& tags) {
  Traits out;
  for (const RawTag& t : tags) {
    switch (t.code) {
      case 8: out.layer = t.value; break;
      case 62: out.colour = static_cast<int>(std::clamp<std::int64_t>(toInteger(t.value), -1, 257)); break;
      case 60: out.invisible = toInteger(t.value) != 0; break;
      case 67: out.paper = toInteger(t.value) != 0; break;
      default: break;
    }
  }
  return out;
}

void applyTraits(LoadContext& ctx, AcDbEntity& ent, const Traits& traits) {
  ent.setLayer(layerNamed(ctx, traits.layer));
  ent.setColorIndex(static_cast<Adesk::UInt16>(std::clamp(traits.colour, 0, 256)));
  if (traits.invisible) ent.setVisibility(AcDb::kInvisible);
}

// A follower's tags with its extended data after them: the host has no object to hold it.
std::vector<RawTag> withXDataTags(const Record& rec, std::vector<RawTag> tags) {
  const Tag* t = std::find_if(rec.begin, rec.end, [](const Tag& u) { return u.code == 1001; });
  for (; t != rec.end; ++t) tags.push_back({t->code, t->value});
  return tags;
}

// A handle of a record the host holds no object for: kept unless absent or taken.
AcDbHandle reserveHandle(LoadContext& ctx, AcDbHandle h) {
  AcDbStub* s = h.isNull() ? nullptr : ctx.impl.stubFor(h, true);
  if (s == nullptr || s->object != nullptr) return ctx.impl.newStub()->handle;
  return h;
}

std::vector<RawRecord> keptFollowers(LoadContext& ctx, const std::vector<Record>& records, std::size_t first,
                                     std::size_t last) {
  std::vector<RawRecord> out;
  for (std::size_t k = first; k < last; ++k) {
    Split fs = splitRecord(ctx, records[k]);
    if (!fs.handle.isNull()) ctx.impl.stubFor(fs.handle, true);
    out.push_back({records[k].type, fs.handle, withXDataTags(records[k], std::move(fs.tags))});
  }
  return out;
}

// The VERTEX records of a modelled polyline become the vertices it owns, each keeping its
// record as a loaded entity does; the SEQEND keeps its handle and tags.
void readVertices(LoadContext& ctx, const std::vector<Record>& records, std::size_t first, std::size_t last,
                  AcDbObjectId polylineId) {
  AcDbEntity* polyline = AcDbEntity::cast(peek(polylineId));
  auto* p2 = AcDb2dPolyline::cast(polyline);
  auto* p3 = AcDb3dPolyline::cast(polyline);
  if (p2 == nullptr && p3 == nullptr) return;
  for (std::size_t k = first; k < last; ++k) {
    const Record& f = records[k];
    Split fs = splitRecord(ctx, f);
    if (f.type == "SEQEND") {
      ctx.state.seqEnds[polylineId] = reserveHandle(ctx, fs.handle);
      ctx.state.seqEndTags[polylineId] = withXDataTags(f, std::move(fs.tags));
      continue;
    }
    std::unique_ptr<AcDbVertex> vertex;
    if (p3 != nullptr) vertex = std::make_unique<AcDb3dPolylineVertex>();
    else vertex = std::make_unique<AcDb2dVertex>();
    readFields(*vertex, fs.tags, &ctx.db);
    applyTraits(ctx, *vertex, traitsOf(fs.tags));
    const std::uint64_t fields = openedFieldsFingerprint(*vertex);
    AcDbVertex* raw = vertex.get();
    const AcDbObjectId id = place(ctx, fs.handle, std::move(vertex));
    keepLoaded(ctx, id, f, fs.tags, {}, fields);
    ObjectAccess::setOwner(*raw, polylineId);
    fs.owner = AcDbHandle();
    finishObject(ctx, id, fs);
    if (p2 != nullptr) p2->attachLoaded(id);
    else p3->attachLoaded(id);
  }
}

// Only these kinds name a block or text style.
bool mayNameSomething(std::string_view type) { return type == "INSERT" || type == "TEXT" || type == "MTEXT"; }

bool namesSomethingMissing(const AcDbEntity& ent) {
  if (const auto* ref = AcDbBlockReference::cast(&ent)) return ref->blockTableRecord().isNull();
  if (const auto* text = AcDbText::cast(&ent)) return text->textStyle().isNull();
  if (const auto* mtext = AcDbMText::cast(&ent)) return mtext->textStyle().isNull();
  return false;
}

}  // namespace

std::size_t readEntity(LoadContext& ctx, const std::vector<Record>& records, std::size_t i, AcDbObjectId owner) {
  const Record& rec = records[i];
  Split& split = ctx.entity;
  splitRecordInto(ctx, rec, split);
  const Traits traits = traitsOf(split.tags);
  const std::size_t first = i + 1, last = followersEnd(records, i);
  // Kinds with a modelled class are read into it; the record stays beside it so that nothing
  // the class does not hold is lost.
  AcRxClass* cls = classFor(rec, split.tags, records, first, last);
  const bool ownsVertices = cls == AcDb2dPolyline::desc() || cls == AcDb3dPolyline::desc();
  std::vector<RawRecord> followers;
  if (!ownsVertices) followers = keptFollowers(ctx, records, first, last);
  std::unique_ptr<AcDbEntity> entity;
  std::uint64_t fields = DxfState::kNotTaken;
  if (cls != nullptr) {
    std::unique_ptr<AcRxObject> made(cls->create());
    if (AcDbEntity::cast(made.get()) != nullptr) {
      entity.reset(static_cast<AcDbEntity*>(made.release()));
      readFields(*entity, split.tags, &ctx.db);
      if (!fieldsSelfContained(cls)) fields = openedFieldsFingerprint(*entity);
    }
  }
  const bool modelled = entity != nullptr;
  if (!modelled)
    entity = std::make_unique<AcDbUnmodelledEntity>(RawContent{rec.type, split.tags, std::move(followers), ctx.state.text});
  applyTraits(ctx, *entity, traits);
  AcDbEntity* raw = entity.get();
  AcDbObjectId id = place(ctx, split.handle, std::move(entity));
  // Handles of kept followers that had none or lost theirs: assigned now so that they stay.
  auto* generic = modelled ? nullptr : static_cast<AcDbUnmodelledEntity*>(raw);
  for (RawRecord& f : generic ? const_cast<RawContent&>(generic->content()).followers : followers) {
    if (f.handle.isNull() || ctx.impl.stubFor(f.handle, false)->object != nullptr) {
      AcDbStub* stub = ctx.impl.newStub();
      f.handle = stub->handle;
    }
  }
  if (modelled) {
    keepLoaded(ctx, id, rec, split.tags, std::move(followers), fields);
    if (mayNameSomething(rec.type) && namesSomethingMissing(*raw)) ctx.namedLater.push_back(id);
  }
  if (owner.isNull() && !split.owner.isNull()) {
    // Entities come in runs with one owner: the block found last is asked first.
    if (split.owner == ctx.lastOwner.handle) {
      owner = ctx.lastOwner.block;
    } else {
      AcDbStub* s = ctx.impl.stubFor(split.owner, false);
      if (s != nullptr && AcDbBlockTableRecord::cast(s->object.get()) != nullptr) {
        owner = AcDbObjectId(s);
        ctx.lastOwner = {split.owner, owner};
      }
    }
  }
  split.owner = AcDbHandle();
  finishObject(ctx, id, split);
  if (owner.isNull()) {
    ctx.entitiesNoOwner.emplace_back(id, traits.paper);
  } else {
    ObjectAccess::setOwner(*raw, owner);
    AcDbBlockTableRecord::cast(peek(owner))->attachLoaded(id);
  }
  if (ownsVertices) readVertices(ctx, records, first, last, id);
  return last;
}

void readEntities(LoadContext& ctx, const std::vector<Record>& records, AcDbObjectId owner) {
  for (std::size_t i = 0; i < records.size();) i = readEntity(ctx, records, i, owner);
}

void beforeFirstWrite(DxfState& state, AcDbStub* stub) {
  DxfState::LoadedEntity* loaded = state.loadedOf(stub);
  if (loaded == nullptr || loaded->fields != DxfState::kNotTaken) return;
  if (auto* ent = AcDbEntity::cast(stub->object.get())) loaded->fields = openedFieldsFingerprint(*ent);
}

void resolveNamedLater(LoadContext& ctx) {
  for (const AcDbObjectId& id : ctx.namedLater) {
    DxfState::LoadedEntity* loaded = ctx.state.loadedOf(id);
    auto* ent = AcDbEntity::cast(peek(id));
    if (loaded == nullptr || ent == nullptr) continue;
    readFields(*ent, keptTags(ctx.state, *loaded, ctx.scratchTags), &ctx.db);
    loaded->fields = openedFieldsFingerprint(*ent);
  }
  ctx.namedLater.clear();
}

}  // namespace tdhost::dxf
