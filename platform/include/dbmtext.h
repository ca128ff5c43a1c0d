// AcDbMText: paragraph text in a box of a given width, attached at one of nine points.
#pragma once

#include <string>

#include "dbmain.h"

class TDHOST_API AcDbMText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMText);
  enum AttachmentPoint {
    kTopLeft = 1, kTopCenter = 2, kTopRight = 3,
    kMiddleLeft = 4, kMiddleCenter = 5, kMiddleRight = 6,
    kBottomLeft = 7, kBottomCenter = 8, kBottomRight = 9
  };
  // The style defaults as AcDbText's does.
  AcDbMText();
  ~AcDbMText() override;
  TDHOST_DECLARE_COPYABLE(AcDbMText)

  AcGePoint3d location() const { return mLocation; }
  Acad::ErrorStatus setLocation(const AcGePoint3d& point);
  // A new copy the caller releases with acutDelString; paragraphs are separated by \P.
  ACHAR* contents() const;
  Acad::ErrorStatus setContents(const ACHAR* text);
  double textHeight() const { return mHeight; }
  Acad::ErrorStatus setTextHeight(double height);
  // The box width; 0 lets each paragraph run on one line.
  double width() const { return mWidth; }
  Acad::ErrorStatus setWidth(double width);
  AttachmentPoint attachment() const { return mAttachment; }
  Acad::ErrorStatus setAttachment(AttachmentPoint type);
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double rotation);
  AcDbObjectId textStyle() const { return mStyle; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  // The world direction of the text's x axis.
  AcGeVector3d direction() const;

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // Contents are the 3-code chunks and the 1-code rest in file order; the direction vector
  // (11) wins over the rotation (50, degrees). The style as AcDbText's.
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  // Approximate: the box width (or the longest paragraph's characters) by the paragraphs at
  // 5/3 of the height apart.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  void subAddedToDatabase() override;

 protected:
  AcDbMText(const AcDbMText&) = default;
  AcDbMText& operator=(const AcDbMText&) = default;

 private:
  std::wstring mContents;
  AcGePoint3d mLocation;
  AcGeVector3d mNormal{0, 0, 1};
  AcDbObjectId mStyle;
  double mHeight = 0.0;
  double mWidth = 0.0;
  double mRotation = 0.0;
  AttachmentPoint mAttachment = kTopLeft;
};
