// The BLOCKS section: each BLOCK ... ENDBLK joins its block table record (made here for
// files without a BLOCK_RECORD table); the BLOCK and ENDBLK records are kept for writing.
#include "dbsymtb.h"
#include "dxf/dxf_model.h"
#include "object_access.h"

namespace tdhost::dxf {

namespace {

AcDbObjectId blockRecordFor(LoadContext& ctx, std::string_view name) {
  auto& tableId = ctx.impl.tables[kBlockTable];
  if (tableId.isNull()) tableId = place(ctx, AcDbHandle(), std::make_unique<AcDbBlockTable>());
  auto* table = AcDbSymbolTable::cast(peek(tableId));
  std::wstring wide = widen(name);
  // R12 names of the two layouts.
  if (wide == L"$MODEL_SPACE") wide = ACDB_MODEL_SPACE;
  if (wide == L"$PAPER_SPACE") wide = ACDB_PAPER_SPACE;
  AcDbObjectId id = table->lookup(wide.c_str());
  if (!id.isNull()) return id;
  auto record = std::make_unique<AcDbBlockTableRecord>();
  record->setNameLoaded(wide);
  AcDbSymbolTableRecord* raw = record.get();
  id = place(ctx, AcDbHandle(), std::move(record));
  ObjectAccess::setOwner(*raw, tableId);
  table->attachLoaded(id, wide);
  return id;
}

// Keeps a handle of a record the host holds no object for; a new one when taken or absent.
AcDbHandle reserve(LoadContext& ctx, AcDbHandle h) {
  AcDbStub* s = h.isNull() ? nullptr : ctx.impl.stubFor(h, false);
  if (h.isNull() || (s != nullptr && s->object != nullptr)) return ctx.impl.newStub()->handle;
  ctx.impl.stubFor(h, true);
  return h;
}

}  // namespace

bool isStructureMarker(std::string_view type) {
  return type == "SECTION" || type == "ENDSEC" || type == "TABLE" || type == "ENDTAB" || type == "EOF" ||
         type == "BLOCK" || type == "ENDBLK";
}

namespace {

[[noreturn]] void outOfPlace(const Record& rec, const std::string& source) {
  throw DxfError(source, rec.line, 0, "0/" + std::string(rec.type) + " is out of place in the BLOCKS section");
}

}  // namespace

void checkBlocks(const std::vector<Record>& records, const std::string& source) {
  if (!records.empty() && records.front().type != "BLOCK")
    throw DxfError(source, records.front().line, 0,
                   "expected 0/BLOCK in the BLOCKS section, found " + std::string(records.front().type));
  bool open = false;
  for (const Record& rec : records) {
    if (rec.type == "BLOCK") {
      // The name is the first 2 before any extended data, as the reader takes it.
      const Tag* t = rec.begin;
      while (t != rec.end && t->code != 2 && t->code != 1001) ++t;
      if (t == rec.end || t->code != 2 || t->value.empty())
        throw DxfError(source, rec.line, 2, "a BLOCK without its name (group code 2)");
      open = true;
    } else if (rec.type == "ENDBLK") {
      if (!open) outOfPlace(rec, source);
      open = false;
    } else if (isStructureMarker(rec.type)) {
      outOfPlace(rec, source);
    }
  }
}

void readBlocks(LoadContext& ctx, const std::vector<Record>& records) {
  for (std::size_t i = 0; i < records.size();) {
    const Record& rec = records[i];
    if (rec.type != "BLOCK") {
      // A stray entity between blocks: kept in model space rather than lost.
      i = readEntity(ctx, records, i, AcDbObjectId());
      continue;
    }
    Split split = splitRecord(ctx, rec);
    std::string_view name;
    for (const RawTag& t : split.tags)
      if (t.code == 2) {
        name = t.value;
        break;
      }
    AcDbObjectId btr = blockRecordFor(ctx, name);
    auto* record = AcDbBlockTableRecord::cast(peek(btr));
    double x = 0, y = 0, z = 0;
    for (const RawTag& t : split.tags) {
      if (t.code == 10) x = toDouble(t.value);
      if (t.code == 20) y = toDouble(t.value);
      if (t.code == 30) z = toDouble(t.value);
    }
    asWriter(record, [&](AcDbBlockTableRecord* r) { r->setOrigin(AcGePoint3d(x, y, z)); });
    DxfState::BlockEnds& ends = ctx.state.blocks[btr];
    ends.loaded = true;
    split.handle = reserve(ctx, split.handle);
    ends.begin = {rec.type, split.handle, std::move(split.tags)};
    ++i;
    while (i < records.size() && records[i].type != "ENDBLK" && records[i].type != "BLOCK")
      i = readEntity(ctx, records, i, btr);
    if (i < records.size() && records[i].type == "ENDBLK") {
      Split end = splitRecord(ctx, records[i]);
      end.handle = reserve(ctx, end.handle);
      ends.end = {records[i].type, end.handle, std::move(end.tags)};
      ++i;
    }
  }
}

}  // namespace tdhost::dxf
