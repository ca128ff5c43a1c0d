// AcCmColor: an entity or layer colour: ByLayer, ByBlock, an ACI index or a true (RGB) colour.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcCmEntityColor {
 public:
  enum ColorMethod {
    kByLayer = 0xC0,
    kByBlock = 0xC1,
    kByColor = 0xC2,
    kByACI = 0xC3,
    kByPen = 0xC4,
    kForeground = 0xC5,
    kByDgnIndex = 0xC7,
    kNone = 0xC8
  };
};

class AcCmColor {
 public:
  AcCmColor() = default;

  AcCmEntityColor::ColorMethod colorMethod() const { return mMethod; }
  // For a true colour, the index is 0 and the RGB components hold the colour.
  Adesk::UInt16 colorIndex() const { return mIndex; }
  // 0 is ByBlock, 256 ByLayer, 257 none; eOutOfRange above.
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index) {
    if (index > 257) return Acad::eOutOfRange;
    mIndex = index;
    mMethod = index == 256   ? AcCmEntityColor::kByLayer
              : index == 0   ? AcCmEntityColor::kByBlock
              : index == 257 ? AcCmEntityColor::kNone
                             : AcCmEntityColor::kByACI;
    mRed = mGreen = mBlue = 0;
    return Acad::eOk;
  }
  Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    mMethod = AcCmEntityColor::kByColor;
    mIndex = 0;
    mRed = red;
    mGreen = green;
    mBlue = blue;
    return Acad::eOk;
  }
  Acad::ErrorStatus setByLayer() { return setColorIndex(256); }
  Acad::ErrorStatus setByBlock() { return setColorIndex(0); }
  Adesk::UInt8 red() const { return mRed; }
  Adesk::UInt8 green() const { return mGreen; }
  Adesk::UInt8 blue() const { return mBlue; }
  bool isByLayer() const { return mMethod == AcCmEntityColor::kByLayer; }
  bool isByBlock() const { return mMethod == AcCmEntityColor::kByBlock; }
  bool isByColor() const { return mMethod == AcCmEntityColor::kByColor; }
  bool isByACI() const { return mMethod == AcCmEntityColor::kByACI; }
  bool isNone() const { return mMethod == AcCmEntityColor::kNone; }
  bool operator==(const AcCmColor& o) const {
    return mMethod == o.mMethod && mIndex == o.mIndex && mRed == o.mRed && mGreen == o.mGreen && mBlue == o.mBlue;
  }
  bool operator!=(const AcCmColor& o) const { return !(*this == o); }

 private:
  AcCmEntityColor::ColorMethod mMethod = AcCmEntityColor::kByLayer;
  Adesk::UInt16 mIndex = 256;
  Adesk::UInt8 mRed = 0, mGreen = 0, mBlue = 0;
};
