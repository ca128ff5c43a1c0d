// Owned, copyable storage of result-buffer data (extended data, xrecord contents) and the
// conversions to and from resbuf chains.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
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

// Extended data (or an xrecord's contents): the whole chain with its 1001 application markers.
// Data read from a file may stay as the file's text until something asks for the items: most
// of a large drawing's extended data is only ever written back.
class XDataStore {
 public:
  using Parser = RbList (*)(std::string_view text);

  XDataStore() = default;
  explicit XDataStore(RbList items) : mItems(std::move(items)) {}
  // Beside the object it belongs to: from its database's arena while a drawing loads.
  static void* operator new(std::size_t size);
  static void operator delete(void* p) noexcept;
  // Items to be read from `text` by `parse` when first wanted; `keep` holds the text alive.
  XDataStore(std::shared_ptr<const void> keep, std::string_view text, Parser parse)
      : mKeep(std::move(keep)), mText(text), mParse(parse) {}

  const RbList& items() const {
    if (mParse != nullptr) parseNow();
    return mItems;
  }
  RbList& items() {
    if (mParse != nullptr) parseNow();
    return mItems;
  }
  // The text the items are still to be read from; empty once they have been.
  std::string_view pendingText() const { return mParse != nullptr ? mText : std::string_view(); }

 private:
  // Not safe against two threads reading one object at once, like the rest of the host.
  void parseNow() const;

  mutable RbList mItems;
  mutable std::shared_ptr<const void> mKeep;
  mutable std::string_view mText;
  mutable Parser mParse = nullptr;
};

// The stored size of extended data, as the host counts it against its 16 KB limit.
std::size_t xdataBytes(const RbList& items);
constexpr std::size_t kXDataLimit = 16383;

}  // namespace tdhost
