// Owned, copyable storage of result-buffer data (extended data, xrecord contents) and the
// conversions to and from resbuf chains.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "adsdef.h"
#include "dbid.h"

namespace tdhost {

// How the value of a restype is held in the resbuf union.
enum class RbKind { kNone, kReal, kPoint2d, kPoint3d, kShort, kLong, kInt64, kString, kName, kBinary, kHandle };

RbKind rbKindOf(int restype);

struct RbItem {
  short code = 0;
  RbKind kind = RbKind::kNone;
  double reals[3] = {0, 0, 0};
  Adesk::Int64 ints[2] = {0, 0};  // integers, entity names (ids as old ids), handle bits
  std::wstring text;
  std::vector<unsigned char> bytes;
};

using RbList = std::vector<RbItem>;

RbItem rbItemFrom(const resbuf& rb);
// A new element (acutRelRb releases it).
resbuf* rbFromItem(const RbItem& item);
// Items [from, to) as a new chain, null when empty.
resbuf* rbChainFrom(const RbList& items, std::size_t from = 0, std::size_t to = static_cast<std::size_t>(-1));
RbList rbListFrom(const resbuf* chain);

// Extended data: whole chain stored with its 1001 application markers.
struct XDataStore {
  RbList items;
};

// The stored size of extended data, as the host counts it against its 16 KB limit.
std::size_t xdataBytes(const RbList& items);
constexpr std::size_t kXDataLimit = 16383;

}  // namespace tdhost
