// TDUtilW: utility library for land-survey and site-engineering plug-ins.
//
// The one public header: the exported records, the convex hull and SiteUtil, the class of static
// operations. Functions return 0 for success and -5001 (RTERROR) for failures they detect
// themselves unless their declaration says otherwise. Angles are radians; azimuths run clockwise
// from north (+Y) in [0, 2pi), mathematical directions counter-clockwise from east (+X).
#pragma once

#include <cstdint>
#include <vector>

#include "adsdef.h"
#include "atlstr.h"
#include "dbid.h"
#include "gepnt3d.h"

#if defined(_WIN32)
#define TDUTILW_API
#else
#define TDUTILW_API __attribute__((visibility("default")))
#endif

// ---------------------------------------------------------------------------------------------
// Records. Plain value types: text members are NUL-terminated fixed arrays inside the record, so
// copying never allocates. Comparison operators answer int 1 or 0. Member order and widths are
// part of the interface (records pass by reference between separately built modules).

// One survey point as written into, and read back from, a point entity.
class TDUTILW_API SurvPoint {
 public:
  // tag and attrib 0, texts empty; x, y, z are left uninitialised.
  SurvPoint();
  // Copies x, y, z, the texts up to their NUL, attrib and tag.
  SurvPoint(const SurvPoint& other);
  // As the copy constructor; returns nothing, so assignments cannot be chained.
  void operator=(const SurvPoint& other);

  // Sets the coordinates, texts (null copies as empty) and attrib; tag is kept. Text lengths are
  // not checked: pno holds 15 characters, code 32, handle 16.
  void set(const double pt[3], const wchar_t* pno, const wchar_t* code, int attrib, const wchar_t* handle);

  // Equal when tags match exactly, coordinates within 1e-6 each, code and pno ignoring case and
  // handle exactly. attrib takes no part, so a re-attributed point still matches itself.
  int operator==(const SurvPoint& other) const;
  // By x, then y when the x values are exactly equal; no tolerance.
  int operator<(const SurvPoint& other) const;

  int tag;
  wchar_t handle[17];
  wchar_t code[33];
  wchar_t pno[16];
  int attrib;
  double x;
  double y;
  double z;
};

// One polyline vertex; bulge belongs to the segment that starts here (tan of a quarter of the
// included angle, negative clockwise).
class TDUTILW_API TPolyVertex {
 public:
  TPolyVertex();
  TPolyVertex(const TPolyVertex& other) = default;
  TPolyVertex& operator=(const TPolyVertex& other) = default;
  // Equal when x and y are within 1e-6 and bulges within 1e-5; z is not compared.
  int operator==(const TPolyVertex& other) const;

  double x;
  double y;
  double z;
  double bulge;
};

// One hit of a section or cut line: d = station, elevation, x, y.
class TDUTILW_API DP4 {
 public:
  DP4();
  DP4(const DP4& other) = default;
  DP4& operator=(const DP4& other) = default;
  DP4& operator=(DP4&& other) = default;
  // True when the station is within 1e-4 (strictly) of s.
  int operator==(const double& s) const;
  // By station, then elevation when stations are exactly equal.
  int operator<(const DP4& other) const;

  double d[4];
  int source;
  // The hit entity's old id, narrowed to 32 bits and sign-extended back.
  std::int64_t entity;
};

// A plain 2D point; members are left as they are on construction.
class TDUTILW_API DPoint {
 public:
  double x;
  double y;
};

// Three short names compared with wildcard semantics: an empty name matches anything.
class TDUTILW_API ConnectData {
 public:
  ConnectData();
  // Copies the names up to their NUL and the flag.
  ConnectData(const ConnectData& other);
  // Copies the whole record.
  ConnectData& operator=(const ConnectData& other) = default;
  // Names compared case-sensitively where both are non-empty; flag takes no part.
  int operator==(const ConnectData& other) const;

  wchar_t name1[17];
  wchar_t name2[17];
  wchar_t name3[17];
  bool flag;
};

// Parameters for annotating one survey point. Only the embedded point is constructed.
class TDUTILW_API PtAnnotParm {
 public:
  PtAnnotParm() {}
  PtAnnotParm(const PtAnnotParm& other) = default;
  PtAnnotParm(PtAnnotParm&& other) = default;
  PtAnnotParm& operator=(const PtAnnotParm& other) = default;
  PtAnnotParm& operator=(PtAnnotParm&& other) = default;

  std::int32_t settings[11];
  double value8;
  wchar_t text1[33];
  wchar_t text2[33];
  double position[3];
  SurvPoint point;
  double tail8;
};

// A template keyed by a feature code. Texts and int1..int5 start empty and 0.
class TDUTILW_API CCodeTemplate {
 public:
  CCodeTemplate();
  CCodeTemplate(const CCodeTemplate& other) = default;
  CCodeTemplate(CCodeTemplate&& other) = default;
  CCodeTemplate& operator=(const CCodeTemplate& other) = default;
  CCodeTemplate& operator=(CCodeTemplate&& other) = default;

  wchar_t code[33];
  wchar_t text1[33];
  wchar_t text2[33];
  int int1;
  int int2;
  int int3;
  double values[4];
  int int4;
  int int5;
  double value1;
  double value2;
  int int6;
  wchar_t text3[33];
};

// Per-curve information for batch operations; value1 and value2 start at zero.
class TDUTILW_API BatCurvInfo {
 public:
  BatCurvInfo();
  BatCurvInfo(const BatCurvInfo& other) = default;
  BatCurvInfo(BatCurvInfo&& other) = default;
  BatCurvInfo& operator=(const BatCurvInfo& other) = default;
  BatCurvInfo& operator=(BatCurvInfo&& other) = default;

  double value1;
  double value2;
  bool flag1;
  double value3;
  bool flag2;
  double value4;
};

// ---------------------------------------------------------------------------------------------
// Convex hull by Graham's scan (R. L. Graham, 1972; the scan as in J. O'Rourke, "Computational
// Geometry in C", 2nd ed., ch. 3).

struct tPointStructure {
  int index;
  double xy[2];
  // On the ray from the pivot and nearer than another point of the same direction.
  bool omitted;
};

struct tStackCell {
  tPointStructure* point;
  tStackCell* below;
};

class TDUTILW_API ConvexHull {
 public:
  ConvexHull() = default;
  // Releases the shared point table.
  ~ConvexHull();
  ConvexHull(const ConvexHull&) = delete;
  ConvexHull& operator=(const ConvexHull&) = delete;

  // Fills hull (emptied first) with input indices of the hull vertices, counter-clockwise from
  // the lowest point (the rightmost of equally low ones); points on hull edges are left out.
  // Returns the count, or -1 for an empty input or an allocation failure. One or two points come
  // back as they are. Not reentrant: the point table is shared by all instances.
  int Hull(std::vector<SurvPoint>& pts, std::vector<int>& hull);
  int Hull(double* x, double* y, int n, std::vector<int>& hull);

  // Twice the signed area of a b c: positive when a->b->c turns left.
  static double Area2(double* a, double* b, double* c);
  // 1, -1 or 0 by the sign of Area2 (exact).
  static int AreaSign(double* a, double* b, double* c);

 private:
  int run(std::vector<int>& hull);
  bool Left(double* a, double* b, double* c);
  void FindLowest();
  tStackCell* Graham();
  tStackCell* Push(tPointStructure* p, tStackCell* top);
  tStackCell* Pop(tStackCell* top);
  void Swap(int i, int j);
  void Copy(int from, int to);

  static tPointStructure* P;
  static int PN;
};

// ---------------------------------------------------------------------------------------------

class TDUTILW_API SiteUtil {
 public:
  // Empty the vector (when not already empty), keeping its capacity.
  static void clearVector(std::vector<SurvPoint>& v);
  static void clearVector(std::vector<DP4>& v);
  static void clearVector(std::vector<TPolyVertex>& v);
  static void clearVector(std::vector<AcDbObjectId>& v);

  // --- Plane and survey math --------------------------------------------------------------

  // Plan distance.
  static double dist2(double x1, double y1, double x2, double y2);
  // Space distance.
  static double dist3(double x1, double y1, double z1, double x2, double y2, double z2);
  // Twice the signed area of the triangle (not halved): positive counter-clockwise.
  static double triArea(double x1, double y1, double x2, double y2, double x3, double y3);
  // 1 counter-clockwise, -1 clockwise, 0 collinear; exact sign of triArea.
  static int CCW(double x1, double y1, double x2, double y2, double x3, double y3);
  // Azimuth of point 1 -> point 2, clockwise from north in [0, 2pi); equal points give 0.
  static double getAZM(double x1, double y1, double x2, double y2);
  // Mathematical direction of an azimuth: pi/2 - azm folded into range by at most one turn
  // each way, so azimuths far outside [0, 2pi] give directions outside [0, 2pi].
  static double AZMToMD(double azm);
  // Angle ABC at B in [0, pi]; 0 when A or C coincides with B.
  static double Angle3D(double ax, double ay, double az, double bx, double by, double bz, double cx, double cy,
                        double cz);
  // Halves away from zero; negative decimals round to tens, hundreds, ...
  static double round(double value, int decimals);
  // Fixed-decimal text with exactly `decimals` digits after the point (0 drops the point).
  // Needs decimals <= 5: larger values throw the string class's CAtlException(E_INVALIDARG).
  // The CString overload ends the text with a NUL and leaves its stored length unchanged; the
  // buffer overload needs a valid text on entry and room for the result.
  static void nFormat(CString& text, double value, int decimals);
  static void nFormat(wchar_t* text, double value, int decimals);
  static void setAdsPoint(double pt[3], double x, double y, double z);

  // --- Point-array simplification ---------------------------------------------------------
  // Vertex reduction (drop points nearer than tol to the last kept one; the last point is always
  // kept) followed by Douglas-Peucker (D. Douglas, T. Peucker, 1973) with 3D distances. A
  // point exactly tol from a kept point or segment is kept by the first stage and dropped by the
  // second. n < 1 returns 0 and touches nothing.

  // Writes the kept points in input order to out (room for n); returns their count.
  static int simplifyPolyline(double tol, double (*pts)[3], int n, double (*out)[3]);
  // Sets keep[i] = 1 for every kept position (never writes zeros); returns the count.
  static int simplifyPolyline(double tol, double (*pts)[3], int n, int* keep);

  // --- Spatial intersection tests ---------------------------------------------------------

  // Line p0->p1 against the plane of triangle a b c. False (outputs untouched) when the line is
  // within tol of parallel. onSegment: the hit parameter lies in [-tol, 1 + tol]. inTriangle: the
  // hit lies inside or on the triangle in plan (a triangle degenerate in plan counts as
  // clockwise).
  static bool LinePlaneIntersect(AcGePoint3d p0, AcGePoint3d p1, AcGePoint3d a, AcGePoint3d b, AcGePoint3d c,
                                 AcGePoint3d& hit, int& onSegment, int& inTriangle, double tol);
  // Foot F of P on the unbounded line A->B; along is F's signed distance from A (negative behind
  // A), dist = |P - F|. A zero-length line is outside the contract. Always returns 0.
  static int PtToLine(double ax, double ay, double az, double bx, double by, double bz, double px, double py,
                      double pz, double& fx, double& fy, double& fz, double& dist, double& along);
  // Triangle V against triangle U: 1 when they intersect, else 0 (T. Moller, "A Fast Triangle-
  // Triangle Intersection Test", 1997, with the segment; distances below 1e-6 count as 0).
  // For non-coplanar triangles isect1/isect2 receive the intersection segment's ends.
  static int TriTriItersect3d(double* va, double* vb, double* vc, double* ua, double* ub, double* uc,
                              int* coplanar, double* isect1, double* isect2);
};
