// The DXF reader: splits the file into sections and records, hands them to the section
// readers, then resolves handles and adds what a drawing needs and the file lacked.
#include "dxf/dxf_in.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <type_traits>

#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "dxf/code_page.h"
#include "dxf/dxf_model.h"
#include "object_access.h"

namespace tdhost::dxf {

void DxfStateDeleter::operator()(DxfState* s) const { delete s; }

DxfState& stateOf(AcDbDatabase& db) {
  auto& slot = db.impl().dxf;
  if (!slot) slot.reset(new DxfState);
  return *slot;
}

DxfState* findState(const AcDbDatabase& db) { return db.impl().dxf.get(); }

AcDbHandle parseHandle(std::string_view text) {
  Adesk::UInt64 value = 0;
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (ec != std::errc() || ptr != text.data() + text.size()) return AcDbHandle();
  return AcDbHandle(value);
}

std::string handleText(AcDbHandle h) {
  char buffer[24];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, static_cast<Adesk::UInt64>(h), 16);
  std::string s(buffer, ptr);
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

double toDouble(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '+')) text.remove_prefix(1);
  double v = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), v);
  return v;
}

std::int64_t toInteger(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '+')) text.remove_prefix(1);
  std::int64_t v = 0;
  const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || (ptr != text.data() + text.size() && *ptr == '.')) {
    // Reals where integers belong; out-of-range values are clamped, never converted blindly.
    const double d = toDouble(text);
    if (!(d > -9.2e18 && d < 9.2e18)) return d < 0 ? INT64_MIN : (d > 0 ? INT64_MAX : 0);
    v = static_cast<std::int64_t>(d);
  }
  return v;
}

std::int64_t firstInteger(const std::vector<RawTag>& tags, int code, std::int64_t fallback) {
  for (const RawTag& t : tags)
    if (t.code == code) return toInteger(t.value);
  return fallback;
}

AcDbObjectId place(LoadContext& ctx, AcDbHandle handle, std::unique_ptr<AcDbObject> obj) {
  AcDbStub* stub = handle.isNull() ? nullptr : ctx.impl.stubFor(handle, true);
  if (stub == nullptr || stub->object != nullptr) stub = ctx.impl.newStub();
  ObjectAccess::setStub(*obj, stub);
  stub->object = std::move(obj);
  ++ctx.impl.liveObjects;
  return AcDbObjectId(stub);
}

namespace {
// The items of an xrecord or of extended data, from tags as read or as kept. Names (entity
// references) need the load's context; extended data has none.
template <class AnyTag>
RbList itemsOfTags(LoadContext* ctx, const AnyTag* begin, const AnyTag* end);

// Extended data whose values all view the file text stays as that text until it is asked for.
std::unique_ptr<XDataStore> xdataOf(LoadContext& ctx, const Tag* begin, const Tag* end) {
  const std::string_view file = ctx.state.text->file();
  const char* from = begin->value.data();
  const char* to = (end - 1)->value.data() + (end - 1)->value.size();
  if (!ctx.codePage.empty() || from <= file.data() || to > file.data() + file.size())
    return std::make_unique<XDataStore>(itemsOfTags(&ctx, begin, end));
  --from;  // the end of the group code line, then its start
  while (from != file.data() && from[-1] != '\n') --from;
  // With the last line end: an empty last value is a line nonetheless.
  const char* stop = file.data() + file.size();
  if (to != stop && *to == '\r') ++to;
  if (to != stop && *to == '\n') ++to;
  return std::make_unique<XDataStore>(ctx.state.text, std::string_view(from, static_cast<std::size_t>(to - from)),
                                      &itemsOfText);
}
}  // namespace

RbList itemsOfText(std::string_view text) {
  std::vector<Tag> tags;
  readCheckedTags(text, tags);
  return itemsOfTags<Tag>(nullptr, tags.data(), tags.data() + tags.size());
}

namespace {

// Splits the common part off tags [begin, end) into `s`; returns where extended data starts.
const Tag* splitCommon(const Tag* begin, const Tag* end, int handleCode, Split& s) {
  // The owner is the 330 before the first subclass marker; later 330s are the class's own.
  bool sawHandle = false, sawOwner = false;
  int depth = 0;
  // Written through a pointer into room made first: the copy is the loop's only work.
  const std::size_t kept = s.tags.size();
  s.tags.resize(kept + static_cast<std::size_t>(end - begin));
  RawTag* out = s.tags.data() + kept;
  const Tag* t = begin;
  for (; t != end; ++t) {
    if (t->code == 1001) break;
    if (!sawHandle && t->code == handleCode) {
      s.handle = parseHandle(t->value);
      sawHandle = true;
      continue;
    }
    if (t->code == 102) {
      if (!t->value.empty() && t->value.front() == '{') {
        if (t->value == "{ACAD_XDICTIONARY") {
          const Tag* u = t + 1;
          for (; u != end && u->code != 102; ++u)
            if (u->code == 360) s.extDict = parseHandle(u->value);
          t = (u == end) ? u - 1 : u;
          continue;
        }
        ++depth;
      } else if (depth > 0) {
        --depth;
      }
    } else if (t->code == 100) {
      sawOwner = true;
    } else if (!sawOwner && depth == 0 && t->code == 330) {
      s.owner = parseHandle(t->value);
      sawOwner = true;
      continue;
    }
    *out++ = {t->code, t->value};
  }
  s.tags.resize(static_cast<std::size_t>(out - s.tags.data()));
  return t;
}

}  // namespace

void splitRecordInto(LoadContext& ctx, const Record& rec, Split& s, int handleCode) {
  s.handle = s.owner = s.extDict = AcDbHandle();
  s.tags.clear();
  s.xdata.reset();
  const Tag* t = splitCommon(rec.begin, rec.end, handleCode, s);
  if (t != rec.end) s.xdata = xdataOf(ctx, t, rec.end);
}

Split splitRecord(LoadContext& ctx, const Record& rec, int handleCode) {
  Split s;
  splitRecordInto(ctx, rec, s, handleCode);
  return s;
}

void keepLoaded(LoadContext& ctx, AcDbObjectId id, const Record& rec, const std::vector<RawTag>& tags,
                std::vector<RawRecord> followers, std::uint64_t fields) {
  DxfState::LoadedEntity e;
  e.type = rec.type;
  e.fields = fields;
  DxfState::LoadedParts parts;
  parts.followers = std::move(followers);
  // Values of UTF-8 files view the file text as read, so the record's place in it is enough.
  const std::string_view file = ctx.state.text->file();
  const char* at = rec.type.data() + rec.type.size();
  const char* stop = file.data() + file.size();
  const char* last = rec.begin == rec.end ? nullptr : (rec.end - 1)->value.data() + (rec.end - 1)->value.size();
  if (ctx.codePage.empty() && rec.type.data() >= file.data() && at <= stop) {
    if (at != stop && *at == '\r') ++at;
    if (at != stop && *at == '\n') ++at;
    const std::size_t length = last == nullptr ? 0 : static_cast<std::size_t>(last - at);
    e.begin = static_cast<std::size_t>(at - file.data());
    e.length = static_cast<std::uint32_t>(length);
    parts.inText = length == e.length;
  } else {
    parts.inText = false;
  }
  if (!parts.inText) parts.tags = tags;
  if (!parts.inText || !parts.followers.empty()) {
    ctx.state.loadedParts.push_back(std::move(parts));
    e.parts = static_cast<std::uint32_t>(ctx.state.loadedParts.size());
  }
  ctx.state.loaded.push_back(e);
  static_cast<AcDbStub*>(id)->dxfRecord = static_cast<Adesk::UInt32>(ctx.state.loaded.size());
}

const std::vector<RawTag>& keptTags(const DxfState& state, const DxfState::LoadedEntity& e,
                                    std::vector<RawTag>& scratch) {
  if (const DxfState::LoadedParts& parts = state.partsOf(e); !parts.inText) return parts.tags;
  // The file was checked when it loaded: reading its tags again cannot fail.
  thread_local std::vector<Tag> tags;
  tags.clear();
  TagReader reader(state.text->file(), std::string());
  reader.seek(e.begin, 0);
  Tag tag;
  const std::size_t end = e.begin + e.length;
  while (reader.position() < end && reader.next(tag))
    if (tag.code != 999) tags.push_back(tag);
  Split s;
  s.tags = std::move(scratch);
  s.tags.clear();
  splitCommon(tags.data(), tags.data() + tags.size(), 5, s);
  scratch = std::move(s.tags);
  return scratch;
}

std::unique_ptr<XDataStore> itemsOf(LoadContext& ctx, const RawTag* t, const RawTag* end) {
  return std::make_unique<XDataStore>(itemsOfTags(&ctx, t, end));
}

namespace {

template <class AnyTag>
RbList itemsOfTags(LoadContext* ctx, const AnyTag* t, const AnyTag* end) {
  RbList items;
  items.reserve(static_cast<size_t>(end - t));
  for (; t != end; ++t) {
    RbItem item;
    item.code = static_cast<short>(t->code);
    item.kind = rbKindOf(t->code);
    switch (item.kind) {
      case RbKind::kPoint3d:
      case RbKind::kPoint2d:
        item.kind = RbKind::kPoint3d;
        item.reals[0] = toDouble(t->value);
        for (int k = 1; k < 3 && t + 1 != end && t[1].code == item.code + 10 * k; ++k) {
          ++t;
          item.reals[k] = toDouble(t->value);
        }
        break;
      case RbKind::kReal: item.reals[0] = toDouble(t->value); break;
      case RbKind::kShort: case RbKind::kLong: case RbKind::kInt64: item.ints[0] = toInteger(t->value); break;
      case RbKind::kBinary:
        for (size_t k = 0; k + 1 < t->value.size(); k += 2) {
          unsigned v = 0;
          std::from_chars(t->value.data() + k, t->value.data() + k + 2, v, 16);
          item.bytes.push_back(static_cast<unsigned char>(v));
        }
        break;
      case RbKind::kName:
        if (ctx != nullptr) item.ints[0] = AcDbObjectId(ctx->impl.stubFor(parseHandle(t->value), true)).asOldId();
        break;
      default: item.text = widen(t->value); break;
    }
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace


void finishObject(LoadContext& ctx, AcDbObjectId id, Split& split) {
  if (split.xdata) {
    ObjectAccess::setXDataStore(*peek(id), std::move(split.xdata));
  }
  if (!split.owner.isNull() || !split.extDict.isNull()) ctx.pending.push_back({id, split.owner, split.extDict});
}

namespace {

// Converts the values that need it to UTF-8; views of converted values point into the arena.
void convertText(Tag* begin, Tag* end, const std::string& codePage, RawText& arena) {
  if (codePage.empty()) return;  // UTF-8 files are used as they stand
  std::unique_ptr<CodePageDecoder> decoder;
  for (Tag* p = begin; p != end; ++p) {
    Tag& t = *p;
    if (valueKindOf(t.code) != ValueKind::String) continue;
    bool high = false, escape = false;
    for (char c : t.value) {
      if (static_cast<unsigned char>(c) >= 0x80) high = true;
      else if (c == '\\') escape = true;
    }
    if (!high && !(escape && t.value.find("\\U+") != std::string_view::npos)) continue;
    if (!decoder) decoder = std::make_unique<CodePageDecoder>(codePage);
    arena.converted.push_back(std::make_unique<std::string>(decoder->toUtf8(t.value)));
    t.value = *arena.converted.back();
  }
}

std::string_view headerValue(const std::vector<Tag>& tags, std::string_view name) {
  for (size_t i = 0; i + 1 < tags.size(); ++i) {
    if (tags[i].code == 0 && tags[i].value == "ENDSEC") break;
    if (tags[i].code == 9 && tags[i].value == name) return tags[i + 1].value;
  }
  return {};
}

void recordsInto(std::vector<Record>& out, const Tag* begin, const Tag* end, const std::string& source) {
  out.clear();
  if (begin != end && begin->code != 0)
    throw DxfError(source, begin->line, begin->code, "expected group code 0 to start an entity or object");
  for (const Tag* t = begin; t != end;) {
    const Tag* u = t + 1;
    while (u != end && u->code != 0) ++u;
    out.push_back({t->value, t + 1, u, t->line});
    t = u;
  }
}

std::vector<Record> recordsOf(const Tag* begin, const Tag* end, const std::string& source) {
  std::vector<Record> out;
  recordsInto(out, begin, end, source);
  return out;
}

// An ENTITIES section, usually nearly all of a file: the first pass checks its tags and
// counts them; they are read again in chunks when the database is filled, so that a whole
// file's tags are never held at once.
struct DeferredSection {
  std::size_t position = 0;  // of its first tag
  int line = 0;              // before its first tag
  std::size_t tags = 0;      // without comments
  std::size_t records = 0;
  int firstCode = 0, firstLine = 0;
};

bool isFollower(std::string_view type) { return type == "VERTEX" || type == "ATTRIB" || type == "SEQEND"; }

void readDeferredEntities(LoadContext& ctx, RawText& raw, const DeferredSection& d) {
  // Small enough to stay in cache between reading the tags and taking them apart.
  constexpr std::size_t kChunkTags = 4096;
  // Filled by index: the tags are copied one by one and a growth check is all they need.
  std::vector<Tag> chunk(kChunkTags + 256);
  std::size_t used = 0;
  std::vector<Record> records;
  auto flush = [&] {
    convertText(chunk.data(), chunk.data() + used, ctx.codePage, raw);
    recordsInto(records, chunk.data(), chunk.data() + used, ctx.source);
    readEntities(ctx, records, AcDbObjectId());
    used = 0;
  };
  TagReader reader(raw.file(), ctx.source);
  reader.seek(d.position, d.line);
  // Each tag is read straight into its slot: copying it from a local just written field by
  // field stalls the processor on every tag.
  for (std::size_t n = 0; n < d.tags;) {
    if (used == chunk.size()) chunk.resize(2 * used);
    Tag& tag = chunk[used];
    if (!reader.next(tag)) break;
    if (tag.code == 999) continue;
    ++n;
    // Chunks end before a record that starts an entity, never between one and its followers.
    if (tag.code == 0 && used >= kChunkTags && !isFollower(tag.value)) {
      const Tag first = tag;
      flush();
      chunk[0] = first;
    }
    ++used;
  }
  if (used != 0) flush();
}

// Empties the database so the file's objects can take their handles.
void clearDatabase(DatabaseImpl& d) {
  d.undo->setRecording(false);
  d.destroying = true;
  for (auto& [h, stub] : d.stubs) stub.object.reset();
  d.destroying = false;
  decltype(d.stubs)().swap(d.stubs);  // its buckets too, which may be in the arena
  d.arena.release();
  d.handseed = 1;
  d.liveObjects = 0;
  for (auto& t : d.tables) t.setNull();
  d.namedObjects.setNull();
  d.groupDictionary.setNull();
  d.modelSpace.setNull();
  d.paperSpace.setNull();
  d.byLayer.setNull();
  d.byBlock.setNull();
  d.continuous.setNull();
  d.header = HeaderVars();
  d.dxf.reset();
}

template <class T>
AcDbObjectId ensureTable(LoadContext& ctx, TableKind kind) {
  if (!ctx.impl.tables[kind].isNull()) return ctx.impl.tables[kind];
  ctx.impl.tables[kind] = place(ctx, AcDbHandle(), std::make_unique<T>());
  return ctx.impl.tables[kind];
}

template <class R>
AcDbObjectId ensureRecord(LoadContext& ctx, TableKind kind, const ACHAR* name) {
  auto* table = AcDbSymbolTable::cast(peek(ctx.impl.tables[kind]));
  AcDbObjectId id = table->lookup(name);
  if (!id.isNull()) return id;
  auto rec = std::make_unique<R>();
  rec->setNameLoaded(name);
  if constexpr (std::is_same_v<R, AcDbLayerTableRecord>) {
    AcCmColor white;
    white.setColorIndex(7);
    rec->setColor(white);
    rec->setLinetypeObjectId(ctx.impl.continuous);
  }
  if constexpr (std::is_same_v<R, AcDbLinetypeTableRecord>) {
    if (std::wstring(name) == L"Continuous") rec->setComments(L"Solid line");
  }
  id = place(ctx, AcDbHandle(), std::move(rec));
  ObjectAccess::setOwner(*peek(id), ctx.impl.tables[kind]);
  table->attachLoaded(id, name);
  return id;
}

void resolve(LoadContext& ctx) {
  for (const auto& p : ctx.pending) {
    AcDbObject* obj = peek(p.object);
    if (!p.owner.isNull()) {
      AcDbStub* s = ctx.impl.stubFor(p.owner, false);
      if (s) ObjectAccess::setOwner(*obj, AcDbObjectId(s));
    }
    if (!p.extDict.isNull()) {
      AcDbStub* s = ctx.impl.stubFor(p.extDict, false);
      if (s && s->object) ObjectAccess::setExtDict(*obj, AcDbObjectId(s));
    }
  }
  for (const auto& d : ctx.dictionaries) {
    auto* dict = AcDbDictionary::cast(peek(d.dict));
    for (const auto& [name, handle] : d.entries) {
      AcDbStub* s = ctx.impl.stubFor(handle, false);
      if (s == nullptr || s->object == nullptr) continue;
      dict->attachLoaded(widen(name), AcDbObjectId(s));
      if (auto* group = AcDbGroup::cast(s->object.get())) group->setNameFromDictionary(widen(name));
    }
  }
  for (const auto& g : ctx.groups) {
    auto* group = AcDbGroup::cast(peek(g.group));
    std::vector<AcDbObjectId> members;
    for (AcDbHandle h : g.members) {
      AcDbStub* s = ctx.impl.stubFor(h, false);
      if (s && s->object) members.push_back(AcDbObjectId(s));
    }
    group->attachLoaded(std::move(members));
  }
}

void addMissingParts(LoadContext& ctx) {
  ensureTable<AcDbViewportTable>(ctx, kViewportTable);
  ensureTable<AcDbLinetypeTable>(ctx, kLinetypeTable);
  ensureTable<AcDbLayerTable>(ctx, kLayerTable);
  ensureTable<AcDbTextStyleTable>(ctx, kTextStyleTable);
  ensureTable<AcDbViewTable>(ctx, kViewTable);
  ensureTable<AcDbUCSTable>(ctx, kUCSTable);
  ensureTable<AcDbRegAppTable>(ctx, kRegAppTable);
  ensureTable<AcDbDimStyleTable>(ctx, kDimStyleTable);
  ensureTable<AcDbBlockTable>(ctx, kBlockTable);
  ctx.impl.byBlock = ensureRecord<AcDbLinetypeTableRecord>(ctx, kLinetypeTable, L"ByBlock");
  ctx.impl.byLayer = ensureRecord<AcDbLinetypeTableRecord>(ctx, kLinetypeTable, L"ByLayer");
  ctx.impl.continuous = ensureRecord<AcDbLinetypeTableRecord>(ctx, kLinetypeTable, L"Continuous");
  ensureRecord<AcDbLayerTableRecord>(ctx, kLayerTable, L"0");
  // The current view: a drawing without one opens with the default view.
  ensureRecord<AcDbViewportTableRecord>(ctx, kViewportTable, L"*Active");
  ensureRecord<AcDbTextStyleTableRecord>(ctx, kTextStyleTable, L"Standard");
  ensureRecord<AcDbRegAppTableRecord>(ctx, kRegAppTable, L"ACAD");
  ensureRecord<AcDbDimStyleTableRecord>(ctx, kDimStyleTable, L"Standard");
  ctx.impl.modelSpace = ensureRecord<AcDbBlockTableRecord>(ctx, kBlockTable, ACDB_MODEL_SPACE);
  ctx.impl.paperSpace = ensureRecord<AcDbBlockTableRecord>(ctx, kBlockTable, ACDB_PAPER_SPACE);
  if (ctx.impl.namedObjects.isNull()) ctx.impl.namedObjects = place(ctx, AcDbHandle(), std::make_unique<AcDbDictionary>());
  auto* nod = AcDbDictionary::cast(peek(ctx.impl.namedObjects));
  AcDbObjectId groups;
  for (const auto& e : nod->entries())
    if (e.name == L"ACAD_GROUP") groups = e.id;
  if (groups.isNull()) {
    groups = place(ctx, AcDbHandle(), std::make_unique<AcDbDictionary>());
    ObjectAccess::setOwner(*peek(groups), ctx.impl.namedObjects);
    nod->attachLoaded(L"ACAD_GROUP", groups);
  }
  ctx.impl.groupDictionary = groups;
  for (const auto& [entity, paper] : ctx.entitiesNoOwner) {
    AcDbObjectId space = paper ? ctx.impl.paperSpace : ctx.impl.modelSpace;
    ObjectAccess::setOwner(*peek(entity), space);
    AcDbBlockTableRecord::cast(peek(space))->attachLoaded(entity);
  }
}

}  // namespace

void loadDxfText(AcDbDatabase& db, std::string_view text, const std::string& source) {
  auto raw = std::make_shared<RawText>();
  raw->bytes = std::make_unique_for_overwrite<char[]>(text.size());
  raw->size = text.size();
  if (!text.empty()) std::memcpy(raw->bytes.get(), text.data(), text.size());
  loadDxfText(db, std::move(raw), source);
}

void loadDxfText(AcDbDatabase& db, std::shared_ptr<RawText> raw, const std::string& source) {
  std::vector<Tag> tags;
  std::vector<DeferredSection> deferred;
  std::size_t records = 0;
  // Handles from the file win; objects without one get handles above the file's largest.
  Adesk::UInt64 maxHandle = 0;
  {
    TagReader reader(raw->file(), source);
    Tag tag, last;
    int previousCode = 0;
    bool inEntities = false;
    for (;;) {
      const std::size_t position = reader.position();
      const int line = reader.line();
      if (!reader.next(tag)) break;
      if (tag.code == 999) continue;  // comments are not kept
      records += tag.code == 0;
      if ((tag.code == 5 || tag.code == 105) && previousCode != 9)
        maxHandle = std::max(maxHandle, static_cast<Adesk::UInt64>(parseHandle(tag.value)));
      previousCode = tag.code;
      if (inEntities) {
        if (!(tag.code == 0 && (tag.value == "ENDSEC" || tag.value == "SECTION" || tag.value == "EOF"))) {
          if (tag.code == 0 && isStructureMarker(tag.value))
            throw DxfError(source, tag.line, 0, "0/" + std::string(tag.value) + " is out of place in the ENTITIES section");
          DeferredSection& d = deferred.back();
          if (d.tags++ == 0) d = {position, line, 1, 0, tag.code, tag.line};
          d.records += tag.code == 0;
          // Field by field: a whole copy of the tag just written stalls on every tag.
          last.code = tag.code;
          last.line = tag.line;
          last.value = tag.value;
          continue;
        }
        inEntities = false;
      }
      tags.push_back(tag);
      if (tag.code == 2 && tag.value == "ENTITIES" && tags.size() >= 2 && tags[tags.size() - 2].code == 0 &&
          tags[tags.size() - 2].value == "SECTION") {
        inEntities = true;
        deferred.emplace_back();
      }
    }
    // A truncated file: its last tag, so that the error names the line where it stops.
    if (inEntities && deferred.back().tags > 0) tags.push_back(last);
  }
  if (tags.empty()) throw DxfError(source, 1, -1, "the file is empty; expected 0/SECTION");
  if (tags.front().code != 0 || tags.front().value != "SECTION")
    throw DxfError(source, tags.front().line, tags.front().code, "not a DXF file: expected 0/SECTION");
  // Find the sections first so that a malformed file changes nothing.
  struct Sec {
    std::string_view name;
    const Tag* begin;
    const Tag* end;
  };
  std::vector<Sec> sections;
  const Tag* t = tags.data();
  const Tag* end = t + tags.size();
  while (t != end) {
    if (t->code == 0 && t->value == "EOF") break;
    if (t->code != 0 || t->value != "SECTION")
      throw DxfError(source, t->line, t->code, "expected 0/SECTION or 0/EOF, found \"" + std::string(t->value) + "\"");
    ++t;
    if (t == end || t->code != 2)
      throw DxfError(source, t == end ? (t - 1)->line : t->line, t == end ? -1 : t->code,
                     "expected group code 2 with the section name");
    Sec sec{t->value, t + 1, nullptr};
    const Tag* u = t + 1;
    while (u != end && !(u->code == 0 && (u->value == "ENDSEC" || u->value == "SECTION" || u->value == "EOF"))) ++u;
    if (u == end || u->value != "ENDSEC")
      throw DxfError(source, u == end ? (end - 1)->line : u->line, 0,
                     "section " + std::string(sec.name) + " is not closed by 0/ENDSEC (file truncated?)");
    sec.end = u;
    sections.push_back(sec);
    t = u + 1;
  }
  std::string version(headerValue(tags, "$ACADVER"));
  std::string codePage;
  if (!version.empty() && version < "AC1021") {
    codePage = iconvNameOf(headerValue(tags, "$DWGCODEPAGE"));
    if (codePage.empty()) codePage = "CP1252";
  }
  convertText(tags.data(), tags.data() + tags.size(), codePage, *raw);

  std::vector<std::pair<std::string_view, std::vector<Record>>> parsed;
  std::size_t entitySection = 0;
  for (const Sec& s : sections) {
    if (s.name == "ENTITIES") {
      const DeferredSection& d = deferred.at(entitySection++);
      if (d.tags > 0 && d.firstCode != 0)
        throw DxfError(source, d.firstLine, d.firstCode, "expected group code 0 to start an entity or object");
    }
    if (s.name == "HEADER" || s.name == "CLASSES" || s.name == "TABLES" || s.name == "BLOCKS" ||
        s.name == "ENTITIES" || s.name == "OBJECTS") {
      if (s.name != "HEADER") parsed.emplace_back(s.name, recordsOf(s.begin, s.end, source));
      else parsed.emplace_back(s.name, std::vector<Record>{});
    } else {
      parsed.emplace_back(s.name, std::vector<Record>{});
    }
  }

  for (const auto& [name, records] : parsed)
    if (name == "BLOCKS") checkBlocks(records, source);

  DatabaseImpl& impl = db.impl();
  clearDatabase(impl);
  const ArenaScope fromArena(impl.arena);
  impl.stubs.reserve(records + 64);
  DxfState& state = stateOf(db);
  state.text = raw;
  std::size_t entityRecords = 0;
  for (const DeferredSection& d : deferred) entityRecords += d.records;
  state.loaded.reserve(entityRecords);
  LoadContext ctx{db, impl, state, source, codePage, version, {}, {}, {}, {}, {}, {}};
  if (AcDbHandle seed = parseHandle(headerValue(tags, "$HANDSEED")); !seed.isNull())
    maxHandle = std::max(maxHandle, static_cast<Adesk::UInt64>(seed) - 1);
  impl.handseed = maxHandle + 1;

  entitySection = 0;
  for (size_t i = 0; i < sections.size(); ++i) {
    const Sec& s = sections[i];
    const auto& records = parsed[i].second;
    if (s.name == "HEADER") {
      readHeader(ctx, s.begin, s.end);
    } else if (s.name == "CLASSES") {
      state.hasClasses = true;
      for (const Tag* u = s.begin; u != s.end; ++u) state.classes.push_back({u->code, u->value});
    } else if (s.name == "TABLES") {
      readTables(ctx, records);
    } else if (s.name == "BLOCKS") {
      readBlocks(ctx, records);
    } else if (s.name == "ENTITIES") {
      readDeferredEntities(ctx, *raw, deferred.at(entitySection++));
    } else if (s.name == "OBJECTS") {
      readObjects(ctx, records);
    } else {
      DxfState::Section kept{s.name, {}};
      for (const Tag* u = s.begin; u != s.end; ++u) kept.tags.push_back({u->code, u->value});
      state.otherSections.push_back(std::move(kept));
    }
  }
  resolve(ctx);
  addMissingParts(ctx);
  resolveNamedLater(ctx);
  applyHeader(ctx);
  impl.undo->setRecording(true);
}

}  // namespace tdhost::dxf
