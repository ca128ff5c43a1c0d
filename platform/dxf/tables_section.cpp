// The TABLES section: symbol tables and their records. Names and the fields the host models
// become record data; the rest of each record is kept and written back in place.
#include <algorithm>
#include <cmath>

#include "dbsymtb.h"
#include "dxf/dxf_model.h"
#include "object_access.h"

namespace tdhost::dxf {

namespace {

constexpr double kPi = 3.14159265358979323846;

struct KindInfo {
  std::string_view table;   // the table's name in the file and its records' type
  std::string_view marker;  // the records' subclass marker
  TableKind kind;
};

constexpr KindInfo kKinds[] = {
    {"VPORT", "AcDbViewportTableRecord", kViewportTable},
    {"LTYPE", "AcDbLinetypeTableRecord", kLinetypeTable},
    {"LAYER", "AcDbLayerTableRecord", kLayerTable},
    {"STYLE", "AcDbTextStyleTableRecord", kTextStyleTable},
    {"VIEW", "AcDbViewTableRecord", kViewTable},
    {"UCS", "AcDbUCSTableRecord", kUCSTable},
    {"APPID", "AcDbRegAppTableRecord", kRegAppTable},
    {"DIMSTYLE", "AcDbDimStyleTableRecord", kDimStyleTable},
    {"BLOCK_RECORD", "AcDbBlockTableRecord", kBlockTable},
};

const KindInfo* infoOf(std::string_view name) {
  for (const KindInfo& k : kKinds)
    if (k.table == name) return &k;
  return nullptr;
}

std::unique_ptr<AcDbSymbolTable> newTable(TableKind kind) {
  switch (kind) {
    case kViewportTable: return std::make_unique<AcDbViewportTable>();
    case kLinetypeTable: return std::make_unique<AcDbLinetypeTable>();
    case kLayerTable: return std::make_unique<AcDbLayerTable>();
    case kTextStyleTable: return std::make_unique<AcDbTextStyleTable>();
    case kViewTable: return std::make_unique<AcDbViewTable>();
    case kUCSTable: return std::make_unique<AcDbUCSTable>();
    case kRegAppTable: return std::make_unique<AcDbRegAppTable>();
    case kDimStyleTable: return std::make_unique<AcDbDimStyleTable>();
    default: return std::make_unique<AcDbBlockTable>();
  }
}

std::unique_ptr<AcDbSymbolTableRecord> newRecord(TableKind kind) {
  switch (kind) {
    case kViewportTable: return std::make_unique<AcDbViewportTableRecord>();
    case kLinetypeTable: return std::make_unique<AcDbLinetypeTableRecord>();
    case kLayerTable: return std::make_unique<AcDbLayerTableRecord>();
    case kTextStyleTable: return std::make_unique<AcDbTextStyleTableRecord>();
    case kViewTable: return std::make_unique<AcDbViewTableRecord>();
    case kUCSTable: return std::make_unique<AcDbUCSTableRecord>();
    case kRegAppTable: return std::make_unique<AcDbRegAppTableRecord>();
    case kDimStyleTable: return std::make_unique<AcDbDimStyleTableRecord>();
    default: return std::make_unique<AcDbBlockTableRecord>();
  }
}

double real(const std::vector<RawTag>& tags, int code, double fallback) {
  for (const RawTag& t : tags)
    if (t.code == code) return toDouble(t.value);
  return fallback;
}

std::string_view text(const std::vector<RawTag>& tags, int code) {
  for (const RawTag& t : tags)
    if (t.code == code) return t.value;
  return {};
}

// Flag words: whatever a broken file holds, a value in the 16 bits DXF flags have.
int flagWord(const std::vector<RawTag>& tags, int code) {
  return static_cast<int>(std::clamp<std::int64_t>(firstInteger(tags, code, 0), 0, 65535));
}

bool has(const std::vector<RawTag>& tags, int code) {
  for (const RawTag& t : tags)
    if (t.code == code) return true;
  return false;
}

AcGePoint3d point(const std::vector<RawTag>& tags, int code) {
  return {real(tags, code, 0), real(tags, code + 10, 0), real(tags, code + 20, 0)};
}

void readFields(LoadContext& ctx, AcDbSymbolTableRecord& rec, const std::vector<RawTag>& tags, AcDbObjectId id) {
  if (auto* layer = AcDbLayerTableRecord::cast(&rec)) {
    const auto colour = static_cast<int>(std::clamp<std::int64_t>(firstInteger(tags, 62, 7), -256, 256));
    AcCmColor c;
    c.setColorIndex(static_cast<Adesk::UInt16>(std::min(std::abs(colour), 256)));
    layer->setColor(c);
    layer->setIsOff(colour < 0);
    const auto flags = flagWord(tags, 70);
    layer->setIsFrozen((flags & 1) != 0);
    layer->setIsLocked((flags & 4) != 0);
    if (has(tags, 290)) layer->setIsPlottable(real(tags, 290, 1) != 0);
    for (const RawTag& t : tags)
      if (t.code == 6) ctx.layerLinetypes.push_back({id, t.value});
  } else if (auto* ucs = AcDbUCSTableRecord::cast(&rec)) {
    ucs->setOrigin(point(tags, 10));
    ucs->setXAxis(point(tags, 11).asVector());
    ucs->setYAxis(point(tags, 12).asVector());
  } else if (auto* view = AcDbAbstractViewTableRecord::cast(&rec)) {
    const bool vport = AcDbViewportTableRecord::cast(&rec) != nullptr;
    const double height = real(tags, 40, 1.0);
    view->setHeight(height);
    view->setWidth(vport ? height * real(tags, 41, 1.0) : real(tags, 41, 1.0));
    const int centre = vport ? 12 : 10;
    view->setCenter(real(tags, centre, 0), real(tags, centre + 10, 0));
    const int dir = vport ? 16 : 11, target = vport ? 17 : 12;
    if (has(tags, dir)) view->setViewDirection(point(tags, dir).asVector());
    view->setTarget(point(tags, target));
    view->setViewTwist(real(tags, vport ? 51 : 50, 0) * kPi / 180.0);
    view->setLensLength(real(tags, 42, 50.0));
    view->setFrontClipDistance(real(tags, 43, 0));
    view->setBackClipDistance(real(tags, 44, 0));
    const auto mode = flagWord(tags, 71);
    view->setFrontClipEnabled((mode & 2) != 0);
    view->setBackClipEnabled((mode & 4) != 0);
    view->setPerspectiveEnabled((mode & 1) != 0);
    view->setFrontClipAtEye((mode & 16) == 0);
  } else if (auto* style = AcDbTextStyleTableRecord::cast(&rec)) {
    const auto flags = flagWord(tags, 70);
    style->setIsShapeFile((flags & 1) != 0);
    style->setIsVertical((flags & 4) != 0);
    style->setFlagBits(static_cast<Adesk::UInt8>(std::min(flagWord(tags, 71), 255)));
    style->setTextSize(std::max(0.0, real(tags, 40, 0)));
    if (double x = real(tags, 41, 1.0); x > 0) style->setXScale(x);
    style->setPriorSize(std::max(0.0, real(tags, 42, 0.2)));
    // The file has degrees; the record keeps radians.
    style->setObliquingAngle(real(tags, 50, 0) * kPi / 180.0);
    style->setFileName(widen(text(tags, 3)).c_str());
    style->setBigFontFileName(widen(text(tags, 4)).c_str());
  } else if (auto* linetype = AcDbLinetypeTableRecord::cast(&rec)) {
    linetype->setComments(widen(text(tags, 3)).c_str());
    linetype->setPatternLength(real(tags, 40, 0));
    std::vector<double> dashes;
    for (const RawTag& t : tags)
      if (t.code == 49) dashes.push_back(toDouble(t.value));
    linetype->setNumDashes(static_cast<int>(dashes.size()));
    for (std::size_t i = 0; i < dashes.size(); ++i) linetype->setDashLengthAt(static_cast<int>(i), dashes[i]);
  }
  if (auto* view = AcDbViewTableRecord::cast(&rec)) view->setIsPaperspaceView((flagWord(tags, 70) & 1) != 0);
}

}  // namespace

void readTables(LoadContext& ctx, const std::vector<Record>& records) {
  const KindInfo* current = nullptr;
  AcDbObjectId tableId;
  for (const Record& rec : records) {
    if (rec.type == "TABLE") {
      Split split = splitRecord(ctx, rec);
      std::string_view name;
      for (const RawTag& t : split.tags)
        if (t.code == 2) name = t.value;
      current = infoOf(name);
      if (current == nullptr) {
        tableId = place(ctx, split.handle, std::make_unique<AcDbUnmodelledObject>(RawContent{rec.type, split.tags, {}, ctx.state.text}));
        finishObject(ctx, tableId, split);
        continue;
      }
      tableId = ctx.impl.tables[current->kind];
      if (tableId.isNull()) {
        tableId = place(ctx, split.handle, newTable(current->kind));
        ctx.impl.tables[current->kind] = tableId;
      }
      ctx.state.kept[tableId] = RawContent{rec.type, std::move(split.tags), {}, ctx.state.text};
      finishObject(ctx, tableId, split);
      continue;
    }
    if (rec.type == "ENDTAB") {
      current = nullptr;
      continue;
    }
    if (current == nullptr || rec.type != current->table) {
      // A record of an unknown table, or out of place: kept as it is.
      Split split = splitRecord(ctx, rec);
      AcDbObjectId id = place(ctx, split.handle, std::make_unique<AcDbUnmodelledObject>(RawContent{rec.type, split.tags, {}, ctx.state.text}));
      finishObject(ctx, id, split);
      continue;
    }
    Split split = splitRecord(ctx, rec, current->kind == kDimStyleTable ? 105 : 5);
    std::string_view name;
    for (const RawTag& t : split.tags)
      if (t.code == 2) {
        name = t.value;
        break;
      }
    auto* table = AcDbSymbolTable::cast(peek(tableId));
    std::wstring wide = widen(name);
    if (wide.empty() || !table->lookup(wide.c_str()).isNull()) {
      // Unnamed or duplicate records cannot join the table; keep them so nothing is lost.
      AcDbObjectId id = place(ctx, split.handle, std::make_unique<AcDbUnmodelledObject>(RawContent{rec.type, split.tags, {}, ctx.state.text}));
      finishObject(ctx, id, split);
      continue;
    }
    std::unique_ptr<AcDbSymbolTableRecord> record = newRecord(current->kind);
    record->setNameLoaded(wide);
    AcDbSymbolTableRecord* raw = record.get();
    AcDbObjectId id = place(ctx, split.handle, std::move(record));
    ObjectAccess::setOwner(*raw, tableId);
    asWriter(raw, [&](AcDbSymbolTableRecord* r) { readFields(ctx, *r, split.tags, id); });
    table->attachLoaded(id, wide);
    if (current->kind == kLayerTable) ctx.layers[name] = id;
    ctx.state.kept[id] = RawContent{rec.type, std::move(split.tags), {}, ctx.state.text};
    split.owner = AcDbHandle();
    finishObject(ctx, id, split);
  }
  for (const auto& [layerId, linetype] : ctx.layerLinetypes) {
    auto* table = AcDbSymbolTable::cast(peek(ctx.impl.tables[kLinetypeTable]));
    if (table == nullptr) break;
    AcDbObjectId lt = table->lookup(widen(linetype).c_str());
    asWriter(AcDbLayerTableRecord::cast(peek(layerId)), [&](AcDbLayerTableRecord* r) { r->setLinetypeObjectId(lt); });
  }
}

AcDbObjectId layerNamed(LoadContext& ctx, std::string_view name) {
  if (auto it = ctx.layers.find(name); it != ctx.layers.end()) return it->second;
  auto& tableId = ctx.impl.tables[kLayerTable];
  if (tableId.isNull()) tableId = place(ctx, AcDbHandle(), std::make_unique<AcDbLayerTable>());
  auto* table = AcDbSymbolTable::cast(peek(tableId));
  std::wstring wide = widen(name.empty() ? std::string_view("0") : name);
  AcDbObjectId id = table->lookup(wide.c_str());
  if (id.isNull()) {
    // Files may use layers their table lacks; the drawing gets the layer so it stays valid.
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setNameLoaded(wide);
    AcDbLayerTableRecord* raw = layer.get();
    id = place(ctx, AcDbHandle(), std::move(layer));
    ObjectAccess::setOwner(*raw, tableId);
    table->attachLoaded(id, wide);
  }
  ctx.layers[name] = id;
  return id;
}

namespace {

std::string num(double v) { return formatDouble(v); }
std::string num(long long v) { return std::to_string(v); }

void pointOverride(std::vector<Override>& ov, int code, double x, double y, double z, bool threeD = true) {
  Override o;
  o.codes = {code, code + 10};
  o.tags = {{code, num(x)}, {code + 10, num(y)}};
  if (threeD) {
    o.codes.push_back(code + 20);
    o.tags.push_back({code + 20, num(z)});
  }
  ov.push_back(std::move(o));
}

// Flags: the bits the record models come from it, the others from the file (xref and
// reference bits the host does not model).
void addFlags(std::vector<Override>& ov, int code, int modelled, int mask, const std::vector<RawTag>& kept, int anchor) {
  // Nothing modelled: the file's tags stay as they are (a dimension style has a second 70).
  if (mask == 0 && has(kept, code)) return;
  const int flags = (flagWord(kept, code) & ~mask) | modelled;
  ov.push_back({{code}, {{code, num(static_cast<long long>(flags))}}, anchor, false});
}

// A linetype's pattern is rewritten only when its dashes changed: complex dashes (shapes,
// texts) the record does not model stay as the file had them.
void linetypeOverrides(std::vector<Override>& ov, const AcDbLinetypeTableRecord& lt, const std::vector<RawTag>& kept) {
  const ACHAR* comments = nullptr;
  lt.comments(comments);
  ov.push_back({{3}, {{3, narrow(comments ? comments : L"")}}, 70, false});
  ov.push_back({{72}, {{72, "65"}}, 3, false});
  ov.push_back({{73}, {{73, num(static_cast<long long>(lt.numDashes()))}}, 72, false});
  ov.push_back({{40}, {{40, num(lt.patternLength())}}, 73, false});
  std::vector<double> file;
  for (const RawTag& t : kept)
    if (t.code == 49) file.push_back(toDouble(t.value));
  bool same = file.size() == static_cast<std::size_t>(lt.numDashes());
  for (std::size_t i = 0; same && i < file.size(); ++i) same = file[i] == lt.dashLengthAt(static_cast<int>(i));
  if (same) return;
  Override dashes{{49, 74, 75, 340, 46, 50, 44, 45, 9}, {}, 40, false};
  for (int i = 0; i < lt.numDashes(); ++i) {
    dashes.tags.push_back({49, num(lt.dashLengthAt(i))});
    dashes.tags.push_back({74, "0"});
  }
  ov.push_back(std::move(dashes));
}

std::vector<Override> overridesOf(const AcDbSymbolTableRecord& rec, const std::vector<RawTag>& kept) {
  std::vector<Override> ov;
  ov.push_back({{2}, {{2, narrow(rec.nameText())}}, 0, false});
  if (auto* layer = AcDbLayerTableRecord::cast(&rec)) {
    addFlags(ov, 70, (layer->isFrozen() ? 1 : 0) | (layer->isLocked() ? 4 : 0), 1 | 4, kept, 2);
    const int colour = layer->color().colorIndex();
    ov.push_back({{62}, {{62, num(static_cast<long long>(layer->isOff() ? -colour : colour))}}, 70, false});
    std::string linetype = "Continuous";
    if (auto* lt = AcDbSymbolTableRecord::cast(peek(layer->linetypeObjectId()))) linetype = narrow(lt->nameText());
    ov.push_back({{6}, {{6, linetype}}, 62, false});
    if (!layer->isPlottable()) ov.push_back({{290}, {{290, "0"}}, 6, false});
  } else if (auto* ucs = AcDbUCSTableRecord::cast(&rec)) {
    addFlags(ov, 70, 0, 0, kept, 2);
    const AcGePoint3d o = ucs->origin();
    const AcGeVector3d x = ucs->xAxis(), y = ucs->yAxis();
    pointOverride(ov, 10, o.x, o.y, o.z);
    pointOverride(ov, 11, x.x, x.y, x.z);
    pointOverride(ov, 12, y.x, y.y, y.z);
  } else if (auto* view = AcDbAbstractViewTableRecord::cast(&rec)) {
    const bool vport = AcDbViewportTableRecord::cast(&rec) != nullptr;
    double cx = 0, cy = 0;
    view->getCenter(cx, cy);
    const auto* named = AcDbViewTableRecord::cast(&rec);
    addFlags(ov, 70, named && named->isPaperspaceView() ? 1 : 0, vport ? 0 : 1, kept, 2);
    const double twist = view->viewTwist() * 180.0 / kPi;
    const AcGeVector3d dir = view->viewDirection();
    const AcGePoint3d target = view->target();
    if (vport) {
      pointOverride(ov, 12, cx, cy, 0, false);
      pointOverride(ov, 16, dir.x, dir.y, dir.z);
      pointOverride(ov, 17, target.x, target.y, target.z);
      ov.push_back({{40}, {{40, num(view->height())}}, 0, false});
      ov.push_back({{41}, {{41, num(view->height() > 0 ? view->width() / view->height() : 1.0)}}, 40, false});
      ov.push_back({{42}, {{42, num(view->lensLength())}}, 41, false});
      ov.push_back({{43}, {{43, num(view->frontClipDistance())}}, 42, false});
      ov.push_back({{44}, {{44, num(view->backClipDistance())}}, 43, false});
      ov.push_back({{51}, {{51, num(twist)}}, 44, false});
    } else {
      ov.push_back({{40}, {{40, num(view->height())}}, 70, false});
      pointOverride(ov, 10, cx, cy, 0, false);
      ov.push_back({{41}, {{41, num(view->width())}}, 0, false});
      pointOverride(ov, 11, dir.x, dir.y, dir.z);
      pointOverride(ov, 12, target.x, target.y, target.z);
      ov.push_back({{42}, {{42, num(view->lensLength())}}, 0, false});
      ov.push_back({{43}, {{43, num(view->frontClipDistance())}}, 42, false});
      ov.push_back({{44}, {{44, num(view->backClipDistance())}}, 43, false});
      ov.push_back({{50}, {{50, num(twist)}}, 44, false});
    }
    // View mode bits: 1 perspective, 2 front clip, 4 back clip, 16 front clip not at the eye.
    const int mode = (view->perspectiveEnabled() ? 1 : 0) | (view->frontClipEnabled() ? 2 : 0) |
                     (view->backClipEnabled() ? 4 : 0) | (view->frontClipAtEye() ? 0 : 16);
    addFlags(ov, 71, mode, 1 | 2 | 4 | 16, kept, vport ? 51 : 50);
  } else if (auto* style = AcDbTextStyleTableRecord::cast(&rec)) {
    const int flags = (style->isShapeFile() ? 1 : 0) | (style->isVertical() ? 4 : 0);
    addFlags(ov, 70, flags, 1 | 4, kept, 2);
    ov.push_back({{40}, {{40, num(style->textSize())}}, 70, false});
    ov.push_back({{41}, {{41, num(style->xScale())}}, 40, false});
    ov.push_back({{50}, {{50, num(style->obliquingAngle() * 180.0 / kPi)}}, 41, false});
    ov.push_back({{71}, {{71, num(static_cast<long long>(style->flagBits()))}}, 50, false});
    ov.push_back({{42}, {{42, num(style->priorSize())}}, 71, false});
    const ACHAR* file = nullptr;
    style->fileName(file);
    ov.push_back({{3}, {{3, narrow(file ? file : L"")}}, 42, false});
    const ACHAR* bigFont = nullptr;
    style->bigFontFileName(bigFont);
    ov.push_back({{4}, {{4, narrow(bigFont ? bigFont : L"")}}, 3, false});
  } else if (auto* linetype = AcDbLinetypeTableRecord::cast(&rec)) {
    addFlags(ov, 70, 0, 0, kept, 2);
    linetypeOverrides(ov, *linetype, kept);
  } else if (AcDbBlockTableRecord::cast(&rec)) {
    // Only the name: a block's own fields live in its BLOCK entity.
  } else {
    addFlags(ov, 70, 0, 0, kept, 2);
  }
  return ov;
}

}  // namespace

void writeTables(Out& out, AcDbDatabase& db, DxfState* state) {
  TagWriter& w = out.w;
  w.string(0, "SECTION");
  w.string(2, "TABLES");
  DatabaseImpl& impl = db.impl();
  for (const KindInfo& k : kKinds) {
    auto* table = AcDbSymbolTable::cast(peek(impl.tables[k.kind]));
    if (table == nullptr) continue;
    std::vector<AcDbObjectId> live;
    for (AcDbObjectId id : table->recordIds())
      if (!id.isErased() && peek(id) != nullptr) live.push_back(id);
    const RawContent* kept = nullptr;
    if (state != nullptr)
      if (auto it = state->kept.find(AcDbObjectId(impl.tables[k.kind])); it != state->kept.end()) kept = &it->second;
    std::vector<RawTag> templ;
    if (kept == nullptr) templ = {{2, k.table}, {100, "AcDbSymbolTable"}};
    const std::vector<RawTag>& tags = kept ? kept->tags : templ;
    size_t rest = 0;
    writeStart(out, "TABLE", *table, tags, rest);
    std::vector<Override> ov{{{70}, {{70, num(static_cast<long long>(live.size()))}}, 100, false}};
    writeWithOverrides(out, tags, rest, ov);
    writeXData(out, *table);
    for (AcDbObjectId id : live) {
      auto* rec = AcDbSymbolTableRecord::cast(peek(id));
      if (rec == nullptr) continue;
      const RawContent* recKept = nullptr;
      if (state != nullptr)
        if (auto it = state->kept.find(AcDbObjectId(id)); it != state->kept.end()) recKept = &it->second;
      std::vector<RawTag> recTempl;
      if (recKept == nullptr) recTempl = {{100, "AcDbSymbolTableRecord"}, {100, k.marker}};
      const std::vector<RawTag>& recTags = recKept ? recKept->tags : recTempl;
      size_t recRest = 0;
      writeStart(out, k.table, *rec, recTags, recRest, k.kind == kDimStyleTable ? 105 : 5);
      std::vector<Override> recOv = overridesOf(*rec, recTags);
      writeWithOverrides(out, recTags, recRest, recOv);
      writeXData(out, *rec);
    }
    w.string(0, "ENDTAB");
  }
  w.string(0, "ENDSEC");
}

}  // namespace tdhost::dxf
