// AcDb: enumerations of the host's drawing database.
#pragma once

#include "adesk.h"

struct AcDb {
  enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

  enum Visibility { kVisible = 0, kInvisible = 1 };

  // Which operands of an intersection are extended: none, this entity, the argument, both.
  enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };

  enum TextHorzMode { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
  enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

  enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
  enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
  enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
  enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };

  enum DuplicateRecordCloning {
    kDrcNotApplicable = 0,
    kDrcIgnore = 1,
    kDrcReplace = 2,
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4,
    kDrcUnmangleName = 5
  };

  enum DeepCloneType {
    kDcCopy = 0,
    kDcExplode = 1,
    kDcBlock = 2,
    kDcXrefBind = 3,
    kDcSymTableMerge = 4,
    kDcInsert = 6,
    kDcWblock = 7,
    kDcObjects = 8,
    kDcXrefInsert = 9,
    kDcInsertCopy = 10,
    kDcWblkObjects = 11
  };

  enum DxfCode {
    kDxfInvalid = -9999,
    kDxfXDictionary = -6,
    kDxfPReactors = -5,
    kDxfOperator = -4,
    kDxfXDataStart = -3,
    kDxfHeaderId = -2,
    kDxfEnd = -1,
    kDxfStart = 0,
    kDxfText = 1,
    kDxfXRefPath = 1,
    kDxfShapeName = 2,
    kDxfSymbolTableName = 2,
    kDxfLinetypeName = 6,
    kDxfTextStyleName = 7,
    kDxfLayerName = 8,
    kDxfXCoord = 10,
    kDxfReal = 40,
    kDxfInt16 = 70,
    kDxfInt32 = 90,
    kDxfSubclass = 100,
    kDxfControlString = 102,
    kDxfHandle = 5,
    kDxfSoftPointerId = 330,
    kDxfHardPointerId = 340,
    kDxfSoftOwnershipId = 350,
    kDxfHardOwnershipId = 360,
    kDxfXdAsciiString = 1000,
    kDxfRegAppName = 1001,
    kDxfXdControlString = 1002,
    kDxfXdLayerName = 1003,
    kDxfXdBinaryChunk = 1004,
    kDxfXdHandle = 1005,
    kDxfXdXCoord = 1010,
    kDxfXdWorldXCoord = 1011,
    kDxfXdWorldXDisp = 1012,
    kDxfXdWorldXDir = 1013,
    kDxfXdReal = 1040,
    kDxfXdDist = 1041,
    kDxfXdScale = 1042,
    kDxfXdInteger16 = 1070,
    kDxfXdInteger32 = 1071
  };

  enum FilerType {
    kFileFiler = 0,
    kCopyFiler = 1,
    kUndoFiler = 2,
    kBagFiler = 3,
    kIdXlateFiler = 4,
    kPageFiler = 5,
    kDeepCloneFiler = 6,
    kIdFiler = 7,
    kPurgeFiler = 8,
    kWblockCloneFiler = 9
  };

  enum AcDbDwgVersion {
    kDHL_MC0_0 = 0,
    kDHL_1009 = 16,  // R12
    kDHL_1012 = 19,  // R13
    kDHL_1014 = 21,  // R14
    kDHL_1015 = 23,  // R2000
    kDHL_1800 = 25,  // R2004
    kDHL_1021 = 27,  // R2007
    kDHL_1024 = 29,  // R2010
    kDHL_1027 = 31,  // R2013
    kDHL_1032 = 33,  // R2018
    kDHL_Newest = kDHL_1032,
    kDHL_CURRENT = kDHL_Newest,
    kDHL_Unknown = 254,
    kDHL_Max = 255
  };

  enum MaintenanceReleaseVersion { kMRelease0 = 0 };

  // Colour indexes with a meaning of their own.
  static constexpr Adesk::UInt16 kByBlock = 0;
  static constexpr Adesk::UInt16 kByLayer = 256;
};
