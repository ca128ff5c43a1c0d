// The ENTITIES section and the entities of blocks: kinds the host models become their classes,
// the others generic entities that keep their tags; layer, colour and visibility are AcDbEntity's.
#include <algorithm>

#include "dbents.h"
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

AcRxClass* modelledClass(std::string_view type) {
  static const std::pair<std::string_view, AcRxClass* (*)()> kinds[] = {
      {"LINE", &AcDbLine::desc}, {"ARC", &AcDbArc::desc}, {"CIRCLE", &AcDbCircle::desc},
      {"RAY", &AcDbRay::desc},
      {"POINT", &AcDbPoint::desc}, {"LWPOLYLINE", &AcDbPolyline::desc}, {"3DFACE", &AcDbFace::desc}};
  for (const auto& [name, desc] : kinds)
    if (name == type) return desc();
  return nullptr;
}

}  // namespace

std::size_t readEntity(LoadContext& ctx, const std::vector<Record>& records, std::size_t i, AcDbObjectId owner) {
  const Record& rec = records[i];
  Split split = splitRecord(ctx, rec);
  RawContent content{rec.type, {}, {}, ctx.state.text};
  std::string_view layer = "0";
  int colour = AcDb::kByLayer;
  bool invisible = false, paper = false;
  content.tags.reserve(split.tags.size());
  for (const RawTag& t : split.tags) {
    switch (t.code) {
      case 8: layer = t.value; break;
      case 62: colour = static_cast<int>(std::clamp<std::int64_t>(toInteger(t.value), -1, 257)); break;
      case 60: invisible = toInteger(t.value) != 0; break;
      case 67: paper = toInteger(t.value) != 0; break;
      default: break;
    }
    content.tags.push_back(t);
  }
  std::size_t next = i + 1;
  if (hasFollowers(rec)) {
    while (next < records.size()) {
      const Record& f = records[next];
      if (f.type != "VERTEX" && f.type != "ATTRIB" && f.type != "SEQEND") break;
      Split fs = splitRecord(ctx, f);
      // Followers keep their extended data as tags: the host has no object for them.
      content.followers.push_back({f.type, fs.handle, std::move(fs.tags)});
      if (fs.handle.isNull() == false) ctx.impl.stubFor(fs.handle, true);
      ++next;
      if (f.type == "SEQEND") break;
    }
  }
  // Kinds with a modelled class are read into it; the record stays beside it so that nothing
  // the class does not hold is lost. Records with followers stay generic.
  std::unique_ptr<AcDbEntity> entity;
  DxfState::LoadedEntity loaded;
  if (AcRxClass* cls = modelledClass(rec.type); cls != nullptr && content.followers.empty()) {
    std::unique_ptr<AcRxObject> made(cls->create());
    if (AcDbEntity::cast(made.get()) != nullptr) {
      entity.reset(static_cast<AcDbEntity*>(made.release()));
      readFields(*entity, content.tags, &ctx.db);
      loaded.fields = openedFieldsFingerprint(*entity);
      loaded.content = std::move(content);
    }
  }
  if (!entity) entity = std::make_unique<AcDbUnmodelledEntity>(std::move(content));
  entity->setLayer(layerNamed(ctx, layer));
  entity->setColorIndex(static_cast<Adesk::UInt16>(std::clamp(colour, 0, 256)));
  if (invisible) entity->setVisibility(AcDb::kInvisible);
  AcDbEntity* raw = entity.get();
  AcDbObjectId id = place(ctx, split.handle, std::move(entity));
  if (!loaded.content.type.empty()) ctx.state.loaded[id] = std::move(loaded);
  // Handles of followers that had none: assigned now so that they stay the same.
  auto* generic = AcDbUnmodelledEntity::cast(raw);
  std::vector<RawRecord> noFollowers;
  auto& followers = generic ? const_cast<RawContent&>(generic->content()).followers : noFollowers;
  for (RawRecord& f : followers) {
    if (f.handle.isNull() || ctx.impl.stubFor(f.handle, false)->object != nullptr) {
      AcDbStub* stub = ctx.impl.newStub();
      f.handle = stub->handle;
    }
  }
  if (owner.isNull() && !split.owner.isNull()) {
    AcDbStub* s = ctx.impl.stubFor(split.owner, false);
    if (s != nullptr && AcDbBlockTableRecord::cast(s->object.get()) != nullptr) owner = AcDbObjectId(s);
  }
  split.owner = AcDbHandle();
  finishObject(ctx, id, split);
  if (owner.isNull()) {
    ctx.entitiesNoOwner.emplace_back(id, paper);
  } else {
    ObjectAccess::setOwner(*raw, owner);
    AcDbBlockTableRecord::cast(peek(owner))->attachLoaded(id);
  }
  return next;
}

void readEntities(LoadContext& ctx, const std::vector<Record>& records, AcDbObjectId owner) {
  for (std::size_t i = 0; i < records.size();) i = readEntity(ctx, records, i, owner);
}

}  // namespace tdhost::dxf
