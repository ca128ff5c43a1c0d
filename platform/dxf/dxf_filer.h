// The file filers behind dxfOutFields of modelled classes. Internal to the host.
#pragma once

#include "dbfiler.h"

#include <cstdint>
#include <string>
#include <vector>

#include "tdhost/unmodelled.h"

namespace tdhost::dxf {

struct SaveOptions;

// Fills a modelled object from the tags of its record through its dxfInFields.
Acad::ErrorStatus readFields(AcDbObject& obj, const std::vector<RawTag>& tags, AcDbDatabase* db);
// The text dxfOutFields writes for the object: equal before and after means unchanged.
std::string fieldsText(const AcDbObject& obj, const SaveOptions& options);
// A number that changes whenever fieldsText would (barring a 2^-64 collision), computed
// without formatting a value: what the reader keeps to tell later whether an entity changed.
std::uint64_t fieldsFingerprint(const AcDbObject& obj);

}  // namespace tdhost::dxf
