// Writing a database as ASCII DXF text. Internal to the host; the SDK entry point is
// AcDbDatabase::dxfOut.
#pragma once

#include <cstdint>
#include <string>

class AcDbDatabase;
class AcDbEntity;

namespace tdhost::dxf {

struct SaveOptions;
struct Out;
struct DxfState;

// The whole drawing as DXF text (R2018 UTF-8, or R2000 in options.codePage). Handles of
// BLOCK/ENDBLK records are given on the first save, so later saves of an unchanged drawing
// are byte-identical.
std::string saveDxfText(AcDbDatabase& db, const SaveOptions& options);

// An entity of a modelled class: common fields, then its dxfOutFields through a filer.
void writeModelledEntity(Out& out, AcDbEntity& ent, DxfState* state);
// What the entity's dxfOutFields writes (UTF-8), read through a read open when resident.
std::string openedFieldsText(AcDbEntity& ent);
// fieldsFingerprint of the same, read the same way.
std::uint64_t openedFieldsFingerprint(AcDbEntity& ent);
// Whether the entity is followed by owned records and a SEQEND (old-style polylines).
bool hasSeqEnd(const AcDbEntity& ent);
// Those records: each live owned vertex, then the SEQEND (as read when it was).
void writePolylineFollowers(Out& out, AcDbEntity& ent, DxfState* state);

}  // namespace tdhost::dxf
