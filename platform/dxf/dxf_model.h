// What a drawing read from DXF keeps beside its objects, and the helpers the section readers
// and writers share. Internal to the host.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database_impl.h"
#include "ads/rb_list.h"
#include "dxf/code_page.h"
#include "dxf/dxf_tags.h"
#include "object_access.h"
#include "tdhost/unmodelled.h"

namespace tdhost::dxf {

// The header variables, classes and unknown sections of the loaded file as tags; the tags of
// modelled objects that their classes do not hold; each block's BLOCK and ENDBLK records.
struct DxfState {
  std::shared_ptr<RawText> text;
  std::vector<RawTag> header;   // from the first 9 to the section end
  bool hasHeader = false;
  std::vector<RawTag> classes;  // every tag inside the CLASSES section
  bool hasClasses = false;
  struct Section {
    std::string_view name;
    std::vector<RawTag> tags;
  };
  std::vector<Section> otherSections;  // THUMBNAILIMAGE, ACDSDATA, ...
  std::unordered_map<const AcDbStub*, RawContent> kept;
  struct BlockEnds {
    RawRecord begin, end;
    bool loaded = false;
  };
  std::unordered_map<const AcDbStub*, BlockEnds> blocks;  // by block table record
  std::vector<AcDbObjectId> objectOrder;                 // the OBJECTS section as read
  std::unordered_map<const AcDbStub*, AcDbHandle> seqEnds;  // by old-style polyline
  std::unordered_map<const AcDbStub*, std::vector<RawTag>> seqEndTags;  // as read, by polyline
  // Entities read into modelled classes: their record as read and the fingerprint of what
  // dxfOutFields wrote then, so an unchanged entity is written back as read and a changed one
  // keeps its other codes. The record's tags are found again in the file text when wanted,
  // rather than held a second time; records whose values were re-encoded keep them.
  struct LoadedEntity {
    std::string_view type;
    std::size_t begin = 0;       // the tags after the 0 tag, in `text`, unless `parts` says otherwise
    std::uint32_t length = 0;
    std::uint32_t parts = 0;     // 1 + the index of what else the record keeps; 0 for nothing
    std::uint64_t fields = kNotTaken;
  };
  // A fingerprint not taken: the entity has not been opened for write since it loaded.
  static constexpr std::uint64_t kNotTaken = 0;
  // What few records keep besides their place in the text.
  struct LoadedParts {
    bool inText = true;
    std::vector<RawTag> tags;  // when not inText
    std::vector<RawRecord> followers;
  };
  std::vector<LoadedEntity> loaded;  // AcDbStub::dxfRecord - 1 indexes it
  std::vector<LoadedParts> loadedParts;
  const LoadedParts& partsOf(const LoadedEntity& e) const {
    static const LoadedParts none;
    return e.parts != 0 ? loadedParts[e.parts - 1] : none;
  }
  LoadedEntity* loadedOf(const AcDbStub* stub) {
    return stub != nullptr && stub->dxfRecord != 0 && stub->dxfRecord <= loaded.size() ? &loaded[stub->dxfRecord - 1]
                                                                                     : nullptr;
  }
};

DxfState& stateOf(AcDbDatabase& db);
DxfState* findState(const AcDbDatabase& db);

// One record of a section: the tag range after its 0 tag.
struct Record {
  std::string_view type;
  const Tag* begin;
  const Tag* end;
  int line;
};

// The common part of a record: handle, owner, extension dictionary, extended data split off;
// the remaining tags in order.
struct Split {
  AcDbHandle handle;
  AcDbHandle owner;
  AcDbHandle extDict;
  std::vector<RawTag> tags;
  std::unique_ptr<XDataStore> xdata;
};

// The reader's working data, shared by the section readers.
struct LoadContext {
  AcDbDatabase& db;
  DatabaseImpl& impl;
  DxfState& state;
  std::string source;
  std::string codePage;  // iconv name; empty for UTF-8 files
  std::string version;
  // Handles referred to by loaded objects, resolved once every object is placed.
  struct Pending {
    AcDbObjectId object;
    AcDbHandle owner;
    AcDbHandle extDict;
  };
  std::vector<Pending> pending;
  struct DictEntries {
    AcDbObjectId dict;
    std::vector<std::pair<std::string_view, AcDbHandle>> entries;
  };
  std::vector<DictEntries> dictionaries;
  struct GroupMembers {
    AcDbObjectId group;
    std::vector<AcDbHandle> members;
  };
  std::vector<GroupMembers> groups;
  struct LayerLinetype {
    AcDbObjectId layer;
    std::string_view linetype;
  };
  std::vector<LayerLinetype> layerLinetypes;
  // Entities whose file names no block: model space, or paper space (true).
  std::vector<std::pair<AcDbObjectId, bool>> entitiesNoOwner;
  std::unordered_map<std::string_view, AcDbObjectId> layers;  // by name as written in the file
  // Entities whose block or text style was not defined when they were read.
  std::vector<AcDbObjectId> namedLater{};
  std::vector<RawTag> scratchTags{};  // for re-reading kept records
  Split entity{};                     // the entity being read; its storage is reused
  struct OwnerSeen {
    AcDbHandle handle;
    AcDbObjectId block;
  } lastOwner{};  // the block record an entity's owner handle named last
};

Split splitRecord(LoadContext& ctx, const Record& rec, int handleCode = 5);
// The same into `into`, reusing its storage.
void splitRecordInto(LoadContext& ctx, const Record& rec, Split& into, int handleCode = 5);
// Keeps a modelled entity's record (the tags splitRecord left) for `id`.
void keepLoaded(LoadContext& ctx, AcDbObjectId id, const Record& rec, const std::vector<RawTag>& tags,
                std::vector<RawRecord> followers, std::uint64_t fields);
// The kept tags of a loaded entity: as kept, or read again from the file text into `scratch`.
const std::vector<RawTag>& keptTags(const DxfState& state, const DxfState::LoadedEntity& e,
                                    std::vector<RawTag>& scratch);

// Puts a loaded object into the database at `handle` (a new handle when null or taken).
AcDbObjectId place(LoadContext& ctx, AcDbHandle handle, std::unique_ptr<AcDbObject> obj);
// Records what must be resolved after loading and attaches the extended data.
void finishObject(LoadContext& ctx, AcDbObjectId id, Split& split);

// Runs `change` on a resident object as if it were open for write (the reader fills
// objects that are already in place).
template <class T, class F>
void asWriter(T* obj, F change) {
  ObjectAccess::setWriteOpen(*obj);
  change(obj);
  ObjectAccess::clearWriteOpen(*obj);
}

AcDbHandle parseHandle(std::string_view text);
std::string handleText(AcDbHandle h);
double toDouble(std::string_view text);
// The value of the first tag with `code`, or `fallback` when there is none.
std::int64_t firstInteger(const std::vector<RawTag>& tags, int code, std::int64_t fallback);
std::int64_t toInteger(std::string_view text);

// Section readers.
void readHeader(LoadContext& ctx, const Tag* begin, const Tag* end);
void applyHeader(LoadContext& ctx);
void readTables(LoadContext& ctx, const std::vector<Record>& records);
void readBlocks(LoadContext& ctx, const std::vector<Record>& records);
// Throw for what the section readers cannot take, before the database is touched.
void checkBlocks(const std::vector<Record>& records, const std::string& source);
// Section, table and block markers, which never stand for entities.
bool isStructureMarker(std::string_view type);
void readEntities(LoadContext& ctx, const std::vector<Record>& records, AcDbObjectId defaultOwner);
void readObjects(LoadContext& ctx, const std::vector<Record>& records);
// An entity and its followers starting at records[i]; returns the index after them.
std::size_t readEntity(LoadContext& ctx, const std::vector<Record>& records, std::size_t i, AcDbObjectId owner);
// Reads again the entities that name a block or text style defined after them (or made for
// the drawing after reading), once every table record and block exists.
void resolveNamedLater(LoadContext& ctx);

// Writing.
struct SaveOptions {
  bool r2000 = false;
  std::string codePage;  // iconv name for R2000 files; empty keeps UTF-8
};
struct Out {
  TagWriter w;
  const SaveOptions& opt;
  // The name of the layer written last: entities come in runs on one layer.
  struct LayerCache {
    AcDbObjectId id;
    std::string name;
    bool valid = false;
  } layerCache = {};
  std::string scratch;  // reused for values converted on the way out
  std::vector<RawTag> keptScratch{};  // kept tags read again from the file text
  // A string value, re-encoded for the target version.
  void text(int code, std::string_view utf8) {
    if (opt.codePage.empty()) w.string(code, utf8);
    else encoded(code, utf8);
  }
  void encoded(int code, std::string_view utf8);
};
void writeHeader(Out& out, AcDbDatabase& db, DxfState* state);
void writeTables(Out& out, AcDbDatabase& db, DxfState* state);
void writeBlocksAndEntities(Out& out, AcDbDatabase& db, DxfState* state);
void writeObjects(Out& out, AcDbDatabase& db, DxfState* state);
// The common start of an object: type, handle, reactors, extension dictionary, owner.
void writeStart(Out& out, std::string_view type, const AcDbObject& obj, const std::vector<RawTag>& tags,
                std::size_t& rest, int handleCode = 5);
// Tags as items of an xrecord or extended data, and back.
std::unique_ptr<XDataStore> itemsOf(LoadContext& ctx, const RawTag* begin, const RawTag* end);
// The items of extended data from its DXF text.
RbList itemsOfText(std::string_view text);
void writeItems(Out& out, const RbList& items);
AcDbObjectId layerNamed(LoadContext& ctx, std::string_view name);
void writeXData(Out& out, const AcDbObject& obj);
void writeEntity(Out& out, AcDbEntity& ent, DxfState* state);

// A value that replaces the kept tags of its codes where the first of them stood, or goes
// after its anchor code (or at the end) when the kept tags have none.
struct Override {
  std::vector<int> codes;
  std::vector<std::pair<int, std::string>> tags;
  int anchor = 0;
  bool done = false;
};
void writeWithOverrides(Out& out, const std::vector<RawTag>& tags, std::size_t from, std::vector<Override>& ov);

}  // namespace tdhost::dxf
