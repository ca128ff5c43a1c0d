// Small builders and lookups for the DXF tests: drawings written as compact tag lists, records
// of saved text by handle, model-space ids.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "arxHeaders.h"

namespace dxftest {

// DXF text from "code value|code value|...": tags as a file has them, codes right-aligned.
inline std::string dxf(std::string_view tags) {
  std::string out;
  while (!tags.empty()) {
    const std::size_t bar = tags.find('|');
    const std::string_view tag = tags.substr(0, bar);
    const std::size_t space = tag.find(' ');
    char code[16];
    std::snprintf(code, sizeof code, "%3s\n", std::string(tag.substr(0, space)).c_str());
    out += code;
    out += std::string(space == std::string_view::npos ? std::string_view() : tag.substr(space + 1)) + "\n";
    tags = bar == std::string_view::npos ? std::string_view() : tags.substr(bar + 1);
  }
  return out;
}

// A file of only an ENTITIES section.
inline std::string entities(const std::string& tags) { return dxf("0 SECTION|2 ENTITIES|" + tags + "|0 ENDSEC|0 EOF"); }

inline std::wstring wide(const std::string& s) { return std::wstring(s.begin(), s.end()); }
inline std::string narrow(const ACHAR* s) { return std::string(s, s + std::char_traits<ACHAR>::length(s)); }

// The record of a saved file with the given handle: from its 0 tag up to the next one.
inline std::string recordOf(const std::string& text, const std::string& handle) {
  const std::size_t at = text.find("\n  5\n" + handle + "\n");
  if (at == std::string::npos) return {};
  const std::size_t start = text.rfind("  0\n", at);
  const std::size_t end = text.find("\n  0\n", at + 1);
  return text.substr(start, end == std::string::npos ? std::string::npos : end + 1 - start);
}

inline std::size_t occurrences(const std::string& text, const std::string& what) {
  std::size_t n = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

inline std::string handleOf(const AcDbObject* obj) {
  AcDbHandle h;
  obj->getAcDbHandle(h);
  ACHAR buf[32];
  h.getIntoAsciiBuffer(buf);
  return narrow(buf);
}

inline AcDbObjectId idOf(AcDbDatabase& db, const std::string& handle) {
  AcDbObjectId id;
  EXPECT_EQ(db.getAcDbObjectId(id, false, AcDbHandle(wide(handle).c_str())), Acad::eOk) << "no handle " << handle;
  return id;
}

inline std::vector<AcDbObjectId> modelSpaceIds(AcDbDatabase& db) {
  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(acdbOpenObject(model, db.currentSpaceId(), AcDb::kForRead), Acad::eOk);
  if (model == nullptr) return {};
  std::vector<AcDbObjectId> ids(model->entityIds().begin(), model->entityIds().end());
  model->close();
  return ids;
}

}  // namespace dxftest
