// acutNewRb, acutRelRb, acutBuildList and the host string functions.
#include <cstdarg>
#include <cstring>
#include <cwchar>

#include "acutads.h"
#include "rb_list.h"

using tdhost::RbKind;

resbuf* acutNewRb(int v) {
  auto* rb = new resbuf;
  std::memset(rb, 0, sizeof(resbuf));
  rb->restype = static_cast<short>(v);
  return rb;
}

int acutRelRb(resbuf* rb) {
  while (rb != nullptr) {
    resbuf* next = rb->rbnext;
    RbKind kind = tdhost::rbKindOf(rb->restype);
    if (kind == RbKind::kString) delete[] rb->resval.rstring;
    if (kind == RbKind::kBinary) delete[] rb->resval.rbinary.buf;
    delete rb;
    rb = next;
  }
  return RTNORM;
}

ACHAR* acutNewString(const ACHAR* text) {
  if (text == nullptr) return nullptr;
  size_t n = std::wcslen(text);
  auto* copy = new ACHAR[n + 1];
  std::wmemcpy(copy, text, n + 1);
  return copy;
}

void acutDelString(ACHAR*& text) {
  delete[] text;
  text = nullptr;
}

resbuf* acutBuildList(int rtype, ...) {
  va_list args;
  va_start(args, rtype);
  resbuf* head = nullptr;
  resbuf** tail = &head;
  bool failed = false;
  for (int code = rtype; code != 0 && code != RTNONE; code = va_arg(args, int)) {
    resbuf* rb = acutNewRb(code);
    ads_u_val& v = rb->resval;
    switch (tdhost::rbKindOf(code)) {
      case RbKind::kReal: v.rreal = va_arg(args, double); break;
      case RbKind::kPoint2d: case RbKind::kPoint3d: {
        const ads_real* p = va_arg(args, const ads_real*);
        int n = tdhost::rbKindOf(code) == RbKind::kPoint2d ? 2 : 3;
        for (int i = 0; i < n && p; ++i) v.rpoint[i] = p[i];
        break;
      }
      case RbKind::kShort: v.rint = static_cast<short>(va_arg(args, int)); break;
      case RbKind::kLong: v.rlong = static_cast<Adesk::Int32>(va_arg(args, int)); break;
      case RbKind::kInt64: v.mnInt64 = va_arg(args, Adesk::Int64); break;
      case RbKind::kString: v.rstring = acutNewString(va_arg(args, const ACHAR*)); break;
      case RbKind::kName: {
        const Adesk::Int64* name = va_arg(args, const Adesk::Int64*);
        if (name) { v.rlname[0] = name[0]; v.rlname[1] = name[1]; }
        break;
      }
      case RbKind::kBinary: {
        const ads_binary* bin = va_arg(args, const ads_binary*);
        if (bin && bin->clen > 0 && bin->buf) {
          v.rbinary.clen = bin->clen;
          v.rbinary.buf = new char[static_cast<size_t>(bin->clen)];
          std::memcpy(v.rbinary.buf, bin->buf, static_cast<size_t>(bin->clen));
        }
        break;
      }
      case RbKind::kHandle: break;
      case RbKind::kNone:
        if (code != RTLB && code != RTLE && code != RTDOTE && code != RTNIL && code != RTT && code != RTVOID &&
            code != -3)
          failed = true;
        break;
    }
    *tail = rb;
    tail = &rb->rbnext;
    if (failed) break;
  }
  va_end(args);
  if (failed) {
    acutRelRb(head);
    return nullptr;
  }
  return head;
}
