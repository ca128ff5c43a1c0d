// Conversions between resbuf chains and owned result-buffer storage.
#include "rb_list.h"

#include <cstring>
#include <cwchar>

#include "acutads.h"
#include "object_arena.h"

namespace tdhost {

RbKind rbKindOf(int t) {
  switch (t) {
    case RTREAL: case RTANG: case RTORINT: return RbKind::kReal;
    case RTPOINT: return RbKind::kPoint2d;
    case RT3DPOINT: return RbKind::kPoint3d;
    case RTSHORT: return RbKind::kShort;
    case RTLONG: return RbKind::kLong;
    case RTINT64: case RTLONG_PTR: return RbKind::kInt64;
    case RTSTR: case RTDXF0: return RbKind::kString;
    case RTENAME: case RTPICKS: return RbKind::kName;
    case RTNONE: case RTVOID: case RTLB: case RTLE: case RTDOTE: case RTNIL: case RTT: return RbKind::kNone;
    default: break;
  }
  if (t == -1 || t == -2 || t == -5 || t == -6) return RbKind::kName;
  if (t == -3) return RbKind::kNone;
  if (t == -4) return RbKind::kString;
  if (t >= 0 && t <= 9) return RbKind::kString;
  if (t >= 10 && t <= 39) return RbKind::kPoint3d;
  if (t >= 40 && t <= 59) return RbKind::kReal;
  if (t >= 60 && t <= 79) return RbKind::kShort;
  if (t >= 90 && t <= 99) return RbKind::kLong;
  if (t == 100 || t == 101 || t == 102 || t == 105) return RbKind::kString;
  if (t >= 110 && t <= 139) return RbKind::kPoint3d;
  if (t >= 140 && t <= 149) return RbKind::kReal;
  if (t >= 160 && t <= 169) return RbKind::kInt64;
  if (t >= 170 && t <= 179) return RbKind::kShort;
  if (t >= 210 && t <= 239) return RbKind::kPoint3d;
  if (t >= 270 && t <= 299) return RbKind::kShort;
  if (t >= 300 && t <= 309) return RbKind::kString;
  if (t >= 310 && t <= 319) return RbKind::kBinary;
  if (t >= 320 && t <= 329) return RbKind::kString;
  if (t >= 330 && t <= 369) return RbKind::kName;
  if (t >= 370 && t <= 389) return RbKind::kShort;
  if (t >= 390 && t <= 399) return RbKind::kName;
  if (t >= 400 && t <= 409) return RbKind::kShort;
  if (t >= 410 && t <= 419) return RbKind::kString;
  if (t >= 420 && t <= 429) return RbKind::kLong;
  if (t >= 430 && t <= 439) return RbKind::kString;
  if (t >= 440 && t <= 459) return RbKind::kLong;
  if (t >= 460 && t <= 469) return RbKind::kReal;
  if (t >= 470 && t <= 479) return RbKind::kString;
  if (t >= 480 && t <= 481) return RbKind::kName;
  if (t == 999) return RbKind::kString;
  if (t == 1004) return RbKind::kBinary;
  if (t >= 1000 && t <= 1009) return RbKind::kString;
  if (t >= 1010 && t <= 1039) return RbKind::kPoint3d;
  if (t >= 1040 && t <= 1059) return RbKind::kReal;
  if (t >= 1060 && t <= 1070) return RbKind::kShort;
  if (t == 1071) return RbKind::kLong;
  return RbKind::kNone;
}

RbItem rbItemFrom(const resbuf& rb) {
  RbItem item;
  item.code = rb.restype;
  item.kind = rbKindOf(rb.restype);
  const ads_u_val& v = rb.resval;
  switch (item.kind) {
    case RbKind::kReal: item.reals[0] = v.rreal; break;
    case RbKind::kPoint2d: item.reals[0] = v.rpoint[0]; item.reals[1] = v.rpoint[1]; break;
    case RbKind::kPoint3d: for (int i = 0; i < 3; ++i) item.reals[i] = v.rpoint[i]; break;
    case RbKind::kShort: item.ints[0] = v.rint; break;
    case RbKind::kLong: item.ints[0] = v.rlong; break;
    case RbKind::kInt64: item.ints[0] = v.mnInt64; break;
    case RbKind::kName: item.ints[0] = v.rlname[0]; item.ints[1] = v.rlname[1]; break;
    case RbKind::kString: if (v.rstring) item.text = v.rstring; break;
    case RbKind::kBinary:
      if (v.rbinary.buf && v.rbinary.clen > 0)
        item.bytes.assign(v.rbinary.buf, v.rbinary.buf + v.rbinary.clen);
      break;
    case RbKind::kHandle: std::memcpy(item.ints, v.ihandle, 8); break;
    case RbKind::kNone: break;
  }
  return item;
}

resbuf* rbFromItem(const RbItem& item) {
  resbuf* rb = acutNewRb(item.code);
  if (rb == nullptr) return nullptr;
  ads_u_val& v = rb->resval;
  switch (item.kind) {
    case RbKind::kReal: v.rreal = item.reals[0]; break;
    case RbKind::kPoint2d: case RbKind::kPoint3d: for (int i = 0; i < 3; ++i) v.rpoint[i] = item.reals[i]; break;
    case RbKind::kShort: v.rint = static_cast<short>(item.ints[0]); break;
    case RbKind::kLong: v.rlong = static_cast<Adesk::Int32>(item.ints[0]); break;
    case RbKind::kInt64: v.mnInt64 = item.ints[0]; break;
    case RbKind::kName: v.rlname[0] = item.ints[0]; v.rlname[1] = item.ints[1]; break;
    case RbKind::kString: v.rstring = acutNewString(item.text.c_str()); break;
    case RbKind::kBinary:
      v.rbinary.clen = static_cast<short>(item.bytes.size());
      v.rbinary.buf = item.bytes.empty() ? nullptr : new char[item.bytes.size()];
      if (!item.bytes.empty()) std::memcpy(v.rbinary.buf, item.bytes.data(), item.bytes.size());
      break;
    case RbKind::kHandle: std::memcpy(v.ihandle, item.ints, 8); break;
    case RbKind::kNone: break;
  }
  return rb;
}

resbuf* rbChainFrom(const RbList& items, std::size_t from, std::size_t to) {
  if (to > items.size()) to = items.size();
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (std::size_t i = from; i < to; ++i) {
    *tail = rbFromItem(items[i]);
    tail = &(*tail)->rbnext;
  }
  return head;
}

RbList rbListFrom(const resbuf* chain) {
  RbList list;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) list.push_back(rbItemFrom(*rb));
  return list;
}

void* XDataStore::operator new(std::size_t size) { return allocateObject(size); }

void XDataStore::operator delete(void* p) noexcept { freeObject(p); }

void XDataStore::parseNow() const {
  mItems = mParse(mText);
  mParse = nullptr;
  mKeep.reset();
  mText = {};
}

std::size_t xdataBytes(const RbList& items) {
  std::size_t total = 0;
  for (const RbItem& it : items) {
    total += 1;  // the group code
    switch (it.kind) {
      case RbKind::kReal: total += 8; break;
      case RbKind::kPoint2d: case RbKind::kPoint3d: total += 24; break;
      case RbKind::kShort: total += 2; break;
      case RbKind::kLong: total += 4; break;
      case RbKind::kInt64: case RbKind::kHandle: total += 8; break;
      case RbKind::kName: total += 8; break;
      case RbKind::kString: total += (it.code == 1001 ? 2 : 2 + it.text.size()); break;
      case RbKind::kBinary: total += 1 + it.bytes.size(); break;
      case RbKind::kNone: break;
    }
  }
  return total;
}

}  // namespace tdhost
