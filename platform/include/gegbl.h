// Global enumerations of the geometry library (entity kinds, error conditions) and its context.
#pragma once

#include "adesk.h"
#include "getol.h"
#include "platformexport.h"

struct TDHOST_API AcGe {
  enum { eGood, eBad };
  // Kinds of geometric entities; the numeric values are the SDK's.
  enum EntityId {
    kEntity2d, kEntity3d, kPointEnt2d, kPointEnt3d, kPosition2d, kPosition3d, kPointOnCurve2d,
    kPointOnCurve3d, kPointOnSurface, kBoundedPlane, kCircArc2d, kCircArc3d, kConic2d, kConic3d,
    kCurve2d, kCurve3d, kEllipArc2d, kEllipArc3d, kLine2d, kLine3d, kLinearEnt2d, kLinearEnt3d,
    kLineSeg2d, kLineSeg3d, kPlanarEnt, kPlane, kRay2d, kRay3d, kSurface, kSphere, kCylinder,
    kTorus, kCone, kSplineEnt2d, kPolyline2d, kAugPolyline2d, kNurbCurve2d, kDSpline2d,
    kCubicSplineCurve2d, kSplineEnt3d, kPolyline3d, kAugPolyline3d, kNurbCurve3d, kDSpline3d,
    kCubicSplineCurve3d, kTrimmedCrv2d, kCompositeCrv2d, kCompositeCrv3d, kExternalSurface,
    kNurbSurface, kTrimmedSurface, kOffsetSurface, kEnvelope2d, kCurveBoundedSurface,
    kExternalCurve3d, kExternalCurve2d, kSurfaceCurve2dTo3d, kSurfaceCurve3dTo2d,
    kExternalBoundedSurface, kCurveCurveInt2d, kCurveCurveInt3d, kBoundBlock2d, kBoundBlock3d,
    kOffsetCurve2d, kOffsetCurve3d, kPolynomCurve3d, kBezierCurve3d, kObject, kFitData3d, kHatch,
    kTrimmedCurve2d, kTrimmedCurve3d, kCurveSampleData, kEllipCone, kEllipCylinder,
    kIntervalBoundBlock, kClipBoundary2d, kExternalObject, kCurveSurfaceInt, kSurfaceSurfaceInt,
    kHelix
  };
  enum PointContainment { kInside, kOutside, kOnBoundary };
  enum OffsetCrvExtType { kFillet, kChamfer, kExtend };
  enum ErrorCondition {
    kOk, k0This, k0Arg1, k0Arg2, kPerpendicularArg1Arg2, kEqualArg1Arg2, kEqualArg1Arg3,
    kEqualArg2Arg3, kLinearlyDependentArg1Arg2Arg3, kArg1TooBig, kArg1OnThis, kArg1InsideThis
  };
};
