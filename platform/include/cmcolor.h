// AcCmColor: an entity or layer colour, held here as an ACI index (0 ByBlock, 256 ByLayer).
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcCmColor {
 public:
  AcCmColor() = default;
  Adesk::UInt16 colorIndex() const { return mIndex; }
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index) {
    if (index > 257) return Acad::eOutOfRange;
    mIndex = index;
    return Acad::eOk;
  }
  bool isByLayer() const { return mIndex == 256; }
  bool isByBlock() const { return mIndex == 0; }
  bool operator==(const AcCmColor& o) const { return mIndex == o.mIndex; }
  bool operator!=(const AcCmColor& o) const { return mIndex != o.mIndex; }

 private:
  Adesk::UInt16 mIndex = 256;
};
