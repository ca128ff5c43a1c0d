// The DXF writer: the sections in the order other programs expect, every object with its
// handle and owner, kept tags written back where they stood.
#include "dxf/dxf_out.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "dxf/code_page.h"
#include "dxf/dxf_filer.h"
#include "dxf/dxf_model.h"
#include "object_access.h"

namespace tdhost::dxf {

void Out::encoded(int code, std::string_view utf8) {
  if (valueKindOf(code) != ValueKind::String) {
    w.string(code, utf8);
    return;
  }
  const bool plain = std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (plain) w.string(code, utf8);
  else w.string(code, fromUtf8(utf8, opt.codePage));
}

namespace {

std::string handleOf(AcDbObjectId id) {
  AcDbStub* s = id;
  return s == nullptr ? std::string("0") : handleText(s->handle);
}

std::uint64_t handleValue(AcDbObjectId id) {
  const AcDbStub* s = id;
  return s == nullptr ? 0 : static_cast<Adesk::UInt64>(s->handle);
}

bool live(AcDbObjectId id) { return !id.isNull() && peek(id) != nullptr && !id.isErased(); }

}  // namespace

void writeStart(Out& out, std::string_view type, const AcDbObject& obj, const std::vector<RawTag>& tags,
                std::size_t& rest, int handleCode) {
  out.w.string(0, type);
  std::size_t i = 0;
  // A table's head names the table before its handle.
  if (type == "TABLE" && !tags.empty() && tags[0].code == 2) out.text(2, tags[i++].value);
  out.w.handle(handleCode, handleValue(obj.objectId()));
  while (i < tags.size() && tags[i].code == 102 && !tags[i].value.empty() && tags[i].value.front() == '{') {
    std::size_t j = i;
    while (j < tags.size() && !(j > i && tags[j].code == 102)) ++j;
    for (std::size_t k = i; k < tags.size() && k <= j; ++k) out.text(tags[k].code, tags[k].value);
    i = j + 1;
  }
  rest = std::min(i, tags.size());
  if (live(obj.extensionDictionary())) {
    out.w.string(102, "{ACAD_XDICTIONARY");
    out.w.handle(360, handleValue(obj.extensionDictionary()));
    out.w.string(102, "}");
  }
  out.w.handle(330, handleValue(obj.ownerId()));
}

void writeWithOverrides(Out& out, const std::vector<RawTag>& tags, std::size_t from, std::vector<Override>& ov) {
  std::vector<char> present(ov.size(), 0);
  for (std::size_t i = from; i < tags.size(); ++i)
    for (std::size_t k = 0; k < ov.size(); ++k)
      if (std::find(ov[k].codes.begin(), ov[k].codes.end(), tags[i].code) != ov[k].codes.end()) present[k] = 1;
  std::function<void(int)> anchored;
  auto emit = [&](Override& o) {
    o.done = true;
    for (const auto& [code, value] : o.tags) out.text(code, value);
    for (int c : o.codes) anchored(c);
  };
  anchored = [&](int code) {
    for (std::size_t k = 0; k < ov.size(); ++k)
      if (!ov[k].done && !present[k] && ov[k].anchor == code) emit(ov[k]);
  };
  for (std::size_t i = from; i < tags.size(); ++i) {
    const RawTag& t = tags[i];
    Override* hit = nullptr;
    for (Override& o : ov)
      if (std::find(o.codes.begin(), o.codes.end(), t.code) != o.codes.end()) {
        hit = &o;
        break;
      }
    if (hit != nullptr) {
      if (!hit->done) emit(*hit);
      continue;
    }
    out.text(t.code, t.value);
    anchored(t.code);
  }
  for (Override& o : ov)
    if (!o.done) emit(o);
}

void writeItems(Out& out, const RbList& items) {
  TagWriter& w = out.w;
  for (const RbItem& item : items) {
    switch (item.kind) {
      case RbKind::kString:
        narrowInto(out.scratch, item.text);
        out.text(item.code, out.scratch);
        break;
      case RbKind::kReal: w.real(item.code, item.reals[0]); break;
      case RbKind::kShort: case RbKind::kLong: case RbKind::kInt64: w.integer(item.code, item.ints[0]); break;
      case RbKind::kPoint3d: w.point(item.code, item.reals[0], item.reals[1], item.reals[2]); break;
      case RbKind::kPoint2d: w.point2d(item.code, item.reals[0], item.reals[1]); break;
      case RbKind::kBinary: {
        static constexpr char kHex[] = "0123456789ABCDEF";
        std::string hex;
        for (unsigned char b : item.bytes) {
          hex += kHex[b >> 4];
          hex += kHex[b & 15];
        }
        w.string(item.code, hex);
        break;
      }
      case RbKind::kName: {
        AcDbObjectId id;
        id.setFromOldId(item.ints[0]);
        w.string(item.code, handleOf(id));
        break;
      }
      case RbKind::kHandle: {
        Adesk::UInt64 h = 0;
        std::memcpy(&h, item.ints, 8);
        w.string(item.code, handleText(AcDbHandle(h)));
        break;
      }
      case RbKind::kNone: break;
    }
  }
}

namespace {

// Extended data still in the text it was read from, written as its items would be without
// making them: strings, numbers and points, which is nearly all there is.
bool writePendingItems(Out& out, std::string_view text) {
  thread_local std::vector<Tag> tags;
  readCheckedTags(text, tags);
  for (const Tag& t : tags) {
    const RbKind kind = rbKindOf(t.code);
    if (kind != RbKind::kString && kind != RbKind::kReal && kind != RbKind::kShort && kind != RbKind::kLong &&
        kind != RbKind::kPoint3d)
      return false;
  }
  TagWriter& w = out.w;
  thread_local std::wstring wide;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    const Tag& t = tags[i];
    switch (rbKindOf(t.code)) {
      case RbKind::kString:
        if (std::any_of(t.value.begin(), t.value.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
          widenInto(wide, t.value);  // as the items would hold it, malformed sequences included
          narrowInto(out.scratch, wide);
          out.text(t.code, out.scratch);
        } else {
          out.text(t.code, t.value);
        }
        break;
      case RbKind::kReal: w.real(t.code, toDouble(t.value)); break;
      case RbKind::kPoint3d: {
        double xyz[3] = {toDouble(t.value), 0.0, 0.0};
        for (int k = 1; k < 3 && i + 1 < tags.size() && tags[i + 1].code == t.code + 10 * k; ++k)
          xyz[k] = toDouble(tags[++i].value);
        w.point(t.code, xyz[0], xyz[1], xyz[2]);
        break;
      }
      default: w.integer(t.code, toInteger(t.value)); break;
    }
  }
  return true;
}

}  // namespace

void writeXData(Out& out, const AcDbObject& obj) {
  const XDataStore* x = ObjectAccess::xdata(obj);
  if (x == nullptr) return;
  if (const std::string_view text = x->pendingText(); !text.empty() && writePendingItems(out, text)) return;
  writeItems(out, x->items());
}

namespace {

std::string layerName(const AcDbEntity& ent) {
  auto* rec = AcDbSymbolTableRecord::cast(peek(ent.layerId()));
  return rec ? narrow(rec->nameText()) : std::string("0");
}

// The layer name as written, converted once per run of entities on the same layer.
const std::string& layerNameCached(Out& out, const AcDbEntity& ent) {
  if (out.layerCache.id != ent.layerId() || !out.layerCache.valid) {
    out.layerCache.id = ent.layerId();
    out.layerCache.name = layerName(ent);
    out.layerCache.valid = true;
  }
  return out.layerCache.name;
}

// Whether the kept tags already say what the common overrides would: the layer once, with
// its name, colour and visibility as they are. Then the tags are written as they stand.
bool commonFieldsAsKept(Out& out, const AcDbEntity& ent, const std::vector<RawTag>& tags, std::size_t from) {
  const RawTag *layer = nullptr, *colour = nullptr, *visibility = nullptr;
  for (std::size_t i = from; i < tags.size(); ++i) {
    const RawTag& t = tags[i];
    const RawTag** slot = t.code == 8 ? &layer : t.code == 62 ? &colour : t.code == 60 ? &visibility : nullptr;
    if (slot == nullptr) continue;
    if (*slot != nullptr) return false;  // repeated: the override would merge them
    *slot = &t;
  }
  if (layer == nullptr || layer->value != layerNameCached(out, ent)) return false;
  const int colourIndex = ent.colorIndex();
  if (colour == nullptr ? colourIndex != AcDb::kByLayer : colour->value != std::to_string(colourIndex)) return false;
  const bool invisible = ent.visibility() == AcDb::kInvisible;
  if (visibility == nullptr ? invisible : visibility->value != (invisible ? "1" : "0")) return false;
  return true;
}

void commonOverrides(const AcDbEntity& ent, const std::vector<RawTag>& tags, std::vector<Override>& ov) {
  ov.push_back({{8}, {{8, layerName(ent)}}, 100, false});
  auto hasCode = [&](int c) { return std::any_of(tags.begin(), tags.end(), [c](const RawTag& t) { return t.code == c; }); };
  if (ent.colorIndex() != AcDb::kByLayer || hasCode(62))
    ov.push_back({{62}, {{62, std::to_string(ent.colorIndex())}}, 8, false});
  if (ent.visibility() == AcDb::kInvisible || hasCode(60))
    ov.push_back({{60}, {{60, ent.visibility() == AcDb::kInvisible ? "1" : "0"}}, 8, false});
}

}  // namespace

namespace {

// An entity from its kept record: its tags and its followers (ATTRIB, VERTEX, SEQEND) after it.
struct KeptRecord {
  std::string_view type;
  const std::vector<RawTag>& tags;
  const std::vector<RawRecord>& followers;
};

void writeKeptEntity(Out& out, AcDbEntity& ent, const KeptRecord& c, std::vector<Override> ov) {
  std::size_t rest = 0;
  writeStart(out, c.type, ent, c.tags, rest);
  if (ov.empty() && commonFieldsAsKept(out, ent, c.tags, rest)) {
    for (std::size_t i = rest; i < c.tags.size(); ++i) out.text(c.tags[i].code, c.tags[i].value);
  } else {
    const std::size_t layerAt = ov.size();
    commonOverrides(ent, c.tags, ov);
    // The layer goes after the AcDbEntity marker; R12 entities have none.
    if (std::none_of(c.tags.begin(), c.tags.end(), [](const RawTag& t) { return t.code == 100; })) ov[layerAt].anchor = 0;
    // An embedded object (MTEXT of newer files) follows with codes of its own, left as they are.
    const auto embedded = std::find_if(c.tags.begin() + static_cast<std::ptrdiff_t>(rest), c.tags.end(),
                                       [](const RawTag& t) { return t.code == 101; });
    if (embedded == c.tags.end()) {
      writeWithOverrides(out, c.tags, rest, ov);
    } else {
      writeWithOverrides(out, std::vector<RawTag>(c.tags.begin(), embedded), rest, ov);
      for (auto t = embedded; t != c.tags.end(); ++t) out.text(t->code, t->value);
    }
  }
  writeXData(out, ent);
  const std::uint64_t owner = handleValue(ent.objectId());
  for (const RawRecord& f : c.followers) {
    out.w.string(0, f.type);
    out.w.handle(5, static_cast<Adesk::UInt64>(f.handle));
    out.w.handle(330, owner);
    for (const RawTag& t : f.tags) out.text(t.code, t.value);
  }
}

// The codes each subclass record of a modelled class holds; a changed entity replaces these
// in its kept tags and leaves the others where they stood.
const std::vector<int>& heldCodes(std::string_view subclass) {
  static const std::vector<int> none;
  static const std::vector<std::pair<std::string_view, std::vector<int>>> table{
      {"AcDbLine", {39, 10, 20, 30, 11, 21, 31, 210, 220, 230}},
      {"AcDbCircle", {39, 10, 20, 30, 40, 210, 220, 230}},
      {"AcDbArc", {50, 51}},
      {"AcDbPoint", {10, 20, 30, 39, 50, 210, 220, 230}},
      {"AcDbPolyline", {90, 70, 43, 38, 39, 10, 20, 40, 41, 42, 210, 220, 230}},
      {"AcDbFace", {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 70}},
      // Names of styles and blocks (7, 2) are held only when written: one not found stays.
      {"AcDbText", {39, 10, 20, 30, 40, 1, 50, 41, 51, 71, 72, 11, 21, 31, 210, 220, 230}},
      {"AcDbMText", {10, 20, 30, 40, 41, 71, 1, 3, 11, 21, 31, 50, 210, 220, 230}},
      {"AcDbBlockReference", {10, 20, 30, 41, 42, 43, 50, 210, 220, 230}},
      {"AcDb2dPolyline", {66, 10, 20, 30, 39, 70, 40, 41, 75, 210, 220, 230}},
      {"AcDb3dPolyline", {66, 10, 20, 30, 70, 75}},
      {"AcDb2dVertex", {10, 20, 30, 40, 41, 42, 50, 70}},
      {"AcDb3dPolylineVertex", {10, 20, 30, 70}}};
  for (const auto& [name, codes] : table)
    if (name == subclass) return codes;
  return none;
}

// Overrides from the text dxfOutFields writes: one per subclass record.
std::vector<Override> fieldOverrides(const std::string& fields) {
  std::vector<Override> ov;
  std::size_t at = 0;
  auto line = [&]() {
    const std::size_t end = fields.find('\n', at);
    std::string_view v(fields.data() + at, (end == std::string::npos ? fields.size() : end) - at);
    at = end == std::string::npos ? fields.size() : end + 1;
    return v;
  };
  while (at < fields.size()) {
    const int code = static_cast<int>(toInteger(line()));
    const std::string_view value = line();
    if (code == 100) {
      // A second record of the same name (TEXT's vertical mode) holds the same codes, but a kept
      // tag goes to the first override holding it: this one gets only what the first lacks.
      ov.push_back({heldCodes(value), {}, 100, false});
      continue;
    }
    if (ov.empty()) ov.push_back({{}, {}, 100, false});
    ov.back().tags.emplace_back(code, std::string(value));
    if (std::find(ov.back().codes.begin(), ov.back().codes.end(), code) == ov.back().codes.end())
      ov.back().codes.push_back(code);
  }
  return ov;
}

}  // namespace

namespace {

// Runs `get` with the entity open for read when it is resident, as the host does when saving;
// an entity someone holds open for write is read as it stands.
template <class F>
auto readOpened(AcDbEntity& ent, F get) {
  AcDbEntity* reader = nullptr;
  const bool opened =
      !ent.objectId().isNull() && acdbOpenAcDbEntity(reader, ent.objectId(), AcDb::kForRead) == Acad::eOk;
  auto result = get();
  if (opened) reader->close();
  return result;
}

}  // namespace

std::string openedFieldsText(AcDbEntity& ent) {
  static const SaveOptions plain;
  return readOpened(ent, [&] { return fieldsText(ent, plain); });
}

std::uint64_t openedFieldsFingerprint(AcDbEntity& ent) {
  const std::uint64_t value = readOpened(ent, [&] { return fieldsFingerprint(ent); });
  return value == DxfState::kNotTaken ? 1 : value;
}

void writeEntity(Out& out, AcDbEntity& ent, DxfState* state) {
  if (auto* generic = AcDbUnmodelledEntity::cast(&ent)) {
    const RawContent& c = generic->content();
    writeKeptEntity(out, ent, {c.type, c.tags, c.followers}, {});
    return;
  }
  if (state != nullptr)
    if (const DxfState::LoadedEntity* loaded = state->loadedOf(ent.objectId())) {
      const bool unchanged =
          loaded->fields == DxfState::kNotTaken || openedFieldsFingerprint(ent) == loaded->fields;
      writeKeptEntity(out, ent, {loaded->type, keptTags(*state, *loaded, out.keptScratch),
                                         state->partsOf(*loaded).followers},
                      unchanged ? std::vector<Override>{} : fieldOverrides(openedFieldsText(ent)));
      if (hasSeqEnd(ent)) writePolylineFollowers(out, ent, state);
      return;
    }
  writeModelledEntity(out, ent, state);
}

namespace {

void writeBlockEnd(Out& out, const RawRecord& rec, std::string_view type, AcDbObjectId btr,
                   std::vector<Override> ov, std::vector<RawTag> templ) {
  out.w.string(0, type);
  out.w.string(5, handleText(rec.handle));
  out.w.string(330, handleOf(btr));
  writeWithOverrides(out, rec.tags.empty() ? templ : rec.tags, 0, ov);
}

std::vector<AcDbObjectId> blockRecords(AcDbDatabase& db) {
  std::vector<AcDbObjectId> out;
  if (auto* table = AcDbSymbolTable::cast(peek(db.blockTableId())))
    for (AcDbObjectId id : table->recordIds())
      if (live(id)) out.push_back(id);
  return out;
}

}  // namespace

void reserveBlockHandles(AcDbDatabase& db) {
  DxfState& state = stateOf(db);
  for (AcDbObjectId id : blockRecords(db)) {
    DxfState::BlockEnds& ends = state.blocks[id];
    if (ends.begin.handle.isNull()) ends.begin.handle = db.impl().newStub()->handle;
    if (ends.end.handle.isNull()) ends.end.handle = db.impl().newStub()->handle;
    // SEQEND records of modelled polylines keep one handle from save to save.
    for (AcDbObjectId e : AcDbBlockTableRecord::cast(peek(id))->entityIds()) {
      const auto* ent = AcDbEntity::cast(peek(e));
      if (ent == nullptr || !hasSeqEnd(*ent)) continue;
      AcDbHandle& h = state.seqEnds[e];
      if (h.isNull()) h = db.impl().newStub()->handle;
    }
  }
}

void writeBlocksAndEntities(Out& out, AcDbDatabase& db, DxfState* state) {
  TagWriter& w = out.w;
  w.string(0, "SECTION");
  w.string(2, "BLOCKS");
  const AcDbObjectId model = db.impl().modelSpace, paper = db.impl().paperSpace;
  for (AcDbObjectId id : blockRecords(db)) {
    auto* btr = AcDbBlockTableRecord::cast(peek(id));
    const DxfState::BlockEnds& ends = state->blocks[id];
    const std::string name = narrow(btr->nameText());
    const AcGePoint3d o = btr->origin();
    std::vector<Override> ov{{{2}, {{2, name}}, 0, false},
                             {{10, 20, 30}, {{10, formatDouble(o.x)}, {20, formatDouble(o.y)}, {30, formatDouble(o.z)}}, 0, false},
                             {{3}, {{3, name}}, 0, false}};
    writeBlockEnd(out, ends.begin, "BLOCK", id, std::move(ov),
                  {{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockBegin"}, {2, ""}, {70, "0"}, {10, ""}, {3, ""}, {1, ""}});
    if (id != model && id != paper)
      for (AcDbObjectId e : btr->entityIds())
        if (live(e)) writeEntity(out, *AcDbEntity::cast(peek(e)), state);
    writeBlockEnd(out, ends.end, "ENDBLK", id, {}, {{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockEnd"}});
  }
  w.string(0, "ENDSEC");
  w.string(0, "SECTION");
  w.string(2, "ENTITIES");
  for (AcDbObjectId space : {model, paper}) {
    auto* btr = AcDbBlockTableRecord::cast(peek(space));
    if (btr == nullptr) continue;
    for (AcDbObjectId e : btr->entityIds())
      if (live(e)) writeEntity(out, *AcDbEntity::cast(peek(e)), state);
  }
  w.string(0, "ENDSEC");
}

namespace {

const std::vector<RawTag>& keptOr(DxfState* state, AcDbObjectId id, const std::vector<RawTag>& templ) {
  if (state != nullptr)
    if (auto it = state->kept.find(AcDbObjectId(id)); it != state->kept.end()) return it->second.tags;
  return templ;
}

void writeObject(Out& out, AcDbObject& obj, DxfState* state) {
  std::size_t rest = 0;
  if (auto* dict = AcDbDictionary::cast(&obj)) {
    static const std::vector<RawTag> templ{{100, "AcDbDictionary"}, {281, "1"}};
    const std::vector<RawTag>& tags = keptOr(state, obj.objectId(), templ);
    const bool hard = std::any_of(tags.begin(), tags.end(), [](const RawTag& t) { return t.code == 360; });
    Override entries{{3, 350, 360}, {}, 0, false};
    for (const auto& e : dict->entries()) {
      if (!live(e.id)) continue;
      entries.tags.emplace_back(3, narrow(e.name));
      entries.tags.emplace_back(hard ? 360 : 350, handleOf(e.id));
    }
    std::vector<Override> ov{std::move(entries)};
    writeStart(out, "DICTIONARY", obj, tags, rest);
    writeWithOverrides(out, tags, rest, ov);
  } else if (auto* xrecord = AcDbXrecord::cast(&obj)) {
    static const std::vector<RawTag> templ{{100, "AcDbXrecord"}, {280, "1"}};
    const std::vector<RawTag>& tags = keptOr(state, obj.objectId(), templ);
    writeStart(out, "XRECORD", obj, tags, rest);
    for (std::size_t i = rest; i < tags.size(); ++i) out.text(tags[i].code, tags[i].value);
    if (const XDataStore* data = xrecord->data()) writeItems(out, data->items());
  } else if (auto* group = AcDbGroup::cast(&obj)) {
    static const std::vector<RawTag> templ{{100, "AcDbGroup"}};
    const std::vector<RawTag>& tags = keptOr(state, obj.objectId(), templ);
    AcDbObjectIdArray members;
    group->allEntityIds(members);
    Override list{{340}, {}, 71, false};
    for (const AcDbObjectId& m : members) list.tags.emplace_back(340, handleOf(m));
    std::vector<Override> ov{{{300}, {{300, narrow(group->description())}}, 100, false},
                             {{70}, {{70, group->isAnonymous() ? "1" : "0"}}, 300, false},
                             {{71}, {{71, group->isSelectable() ? "1" : "0"}}, 70, false},
                             std::move(list)};
    writeStart(out, "GROUP", obj, tags, rest);
    writeWithOverrides(out, tags, rest, ov);
  } else if (auto* generic = AcDbUnmodelledObject::cast(&obj)) {
    const RawContent& c = generic->content();
    writeStart(out, c.type, obj, c.tags, rest);
    for (std::size_t i = rest; i < c.tags.size(); ++i) out.text(c.tags[i].code, c.tags[i].value);
  } else {
    return;
  }
  writeXData(out, obj);
}

bool belongsInObjects(const AcDbObject* obj) {
  // Entities are most of a drawing: one test rules them out.
  if (obj == nullptr || AcDbEntity::cast(obj) != nullptr) return false;
  return AcDbDictionary::cast(obj) || AcDbXrecord::cast(obj) || AcDbGroup::cast(obj) ||
         (AcDbUnmodelledObject::cast(obj) && !AcDbSymbolTableRecord::cast(obj));
}

}  // namespace

void writeObjects(Out& out, AcDbDatabase& db, DxfState* state) {
  TagWriter& w = out.w;
  w.string(0, "SECTION");
  w.string(2, "OBJECTS");
  DatabaseImpl& impl = db.impl();
  std::unordered_map<const AcDbStub*, bool> written;
  auto emit = [&](AcDbObjectId id) {
    if (!live(id) || written[id]) return;
    AcDbObject* obj = peek(id);
    if (!belongsInObjects(obj)) return;
    written[id] = true;
    writeObject(out, *obj, state);
  };
  emit(impl.namedObjects);
  if (state != nullptr)
    for (AcDbObjectId id : state->objectOrder) emit(id);
  std::vector<Adesk::UInt64> rest;
  // The cheap test first: looking up `written` would add an entry for every entity.
  for (const auto& [h, stub] : impl.stubs)
    if (stub.object && belongsInObjects(stub.object.get()) && !written[&stub]) rest.push_back(h);
  std::sort(rest.begin(), rest.end());
  for (Adesk::UInt64 h : rest) emit(AcDbObjectId(impl.stubFor(AcDbHandle(h), false)));
  w.string(0, "ENDSEC");
}

std::string saveDxfText(AcDbDatabase& db, const SaveOptions& options) {
  reserveBlockHandles(db);
  DxfState* state = &stateOf(db);
  Out out{TagWriter(), options, {}, {}};
  // About the size of the file read, when there was one.
  out.w.reserve((state->text ? state->text->size + state->text->size / 8 : 0) + (1 << 20));
  writeHeader(out, db, state);
  out.w.string(0, "SECTION");
  out.w.string(2, "CLASSES");
  for (const RawTag& t : state->classes) out.text(t.code, t.value);
  out.w.string(0, "ENDSEC");
  writeTables(out, db, state);
  writeBlocksAndEntities(out, db, state);
  writeObjects(out, db, state);
  for (const DxfState::Section& s : state->otherSections) {
    if (options.r2000 && s.name == "ACDSDATA") continue;
    out.w.string(0, "SECTION");
    out.w.string(2, s.name);
    for (const RawTag& t : s.tags) out.text(t.code, t.value);
    out.w.string(0, "ENDSEC");
  }
  out.w.string(0, "EOF");
  return out.w.take();
}

}  // namespace tdhost::dxf
