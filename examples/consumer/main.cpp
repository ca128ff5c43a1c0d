// Calls every host-free operation of the installed library once and checks the answers.
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "TDUtilW.h"

namespace {

int failures = 0;

void check(bool ok, const char* what) {
  if (!ok) {
    std::printf("FAILED: %s\n", what);
    ++failures;
  }
}

void records() {
  const double pt[3] = {1.0, 2.0, 3.0};
  SurvPoint a;
  a.set(pt, L"101", L"TREE", 0, L"2A");
  SurvPoint b(a);
  b.attrib = 8;
  check(a == b, "SurvPoint equality ignores attrib");
  SurvPoint c;
  c = a;
  check(!(a < c) && !(c < a), "SurvPoint order");

  TPolyVertex v, w(v);
  w = v;
  check(v == w, "TPolyVertex equality");

  DP4 hit, other;
  hit.d[0] = 10.0;
  other = hit;
  other.d[1] = 1.0;
  check(hit == 10.00009 && hit < other, "DP4 station match and order");

  DPoint p{1.0, 2.0}, q = p;
  check(q.x == 1.0 && q.y == 2.0, "DPoint copy");

  ConnectData cd1, cd2(cd1);
  cd2 = cd1;
  check(cd1 == cd2, "ConnectData wildcard equality");

  PtAnnotParm annot;
  annot.point = a;
  PtAnnotParm annotCopy(annot);
  check(annotCopy.point == a, "PtAnnotParm copies its point");

  CCodeTemplate tmpl, tmplCopy(tmpl);
  check(tmplCopy.int1 == 0 && tmplCopy.code[0] == 0, "CCodeTemplate construction");
  BatCurvInfo info, infoCopy(info);
  check(infoCopy.value1 == 0.0 && infoCopy.value2 == 0.0, "BatCurvInfo construction");

  std::vector<SurvPoint> points(3);
  std::vector<DP4> hits(3);
  std::vector<TPolyVertex> vertices(3);
  std::vector<AcDbObjectId> ids(3);
  SiteUtil::clearVector(points);
  SiteUtil::clearVector(hits);
  SiteUtil::clearVector(vertices);
  SiteUtil::clearVector(ids);
  check(points.empty() && hits.empty() && vertices.empty() && ids.empty() && ids.capacity() >= 3, "clearVector");
}

void hull() {
  double xs[] = {0, 1, 1, 0, 0.5};
  double ys[] = {0, 0, 1, 1, 0.5};
  std::vector<int> indices;
  ConvexHull maker;
  check(maker.Hull(xs, ys, 5, indices) == 4 && indices == std::vector<int>({1, 2, 3, 0}), "Hull of arrays");
  std::vector<SurvPoint> points(4);
  for (int i = 0; i < 4; ++i) {
    const double pt[3] = {xs[i], ys[i], 0.0};
    points[static_cast<size_t>(i)].set(pt, nullptr, nullptr, 0, nullptr);
  }
  check(maker.Hull(points, indices) == 4, "Hull of survey points");
  double a[2] = {0, 0}, b[2] = {1, 0}, c[2] = {0, 1};
  check(ConvexHull::Area2(a, b, c) == 1.0 && ConvexHull::AreaSign(a, c, b) == -1, "Area2 and AreaSign");
}

void planeMath() {
  const double pi = 3.141592653589793;
  check(SiteUtil::dist2(0, 0, 3, 4) == 5.0 && SiteUtil::dist3(0, 0, 0, 2, 3, 6) == 7.0, "distances");
  check(SiteUtil::triArea(0, 0, 1, 0, 0, 1) == 1.0 && SiteUtil::CCW(0, 0, 1, 0, 0, 1) == 1, "triArea and CCW");
  check(std::fabs(SiteUtil::getAZM(0, 0, 1, 1) - pi / 4) < 1e-15, "getAZM");
  check(SiteUtil::AZMToMD(0.0) == pi / 2, "AZMToMD");
  check(std::fabs(SiteUtil::Angle3D(1, 0, 0, 0, 0, 0, 0, 1, 0) - pi / 2) < 1e-15, "Angle3D");
  check(SiteUtil::round(2.5, 0) == 3.0 && SiteUtil::round(-2.5, 0) == -3.0, "round");
  CString text;
  SiteUtil::nFormat(text, 3.14159, 2);
  wchar_t buffer[32] = L"";
  SiteUtil::nFormat(buffer, -0.004, 2);
  check(std::wcscmp(text, L"3.14") == 0 && std::wcscmp(buffer, L"-0.00") == 0, "nFormat");
  double pt[3];
  SiteUtil::setAdsPoint(pt, 1, 2, 3);
  check(pt[0] == 1 && pt[1] == 2 && pt[2] == 3, "setAdsPoint");
}

void simplification() {
  double pts[4][3] = {{0, 0, 0}, {1, 0.001, 0}, {2, 0, 0}, {3, 5, 0}};
  double out[4][3];
  int keep[4] = {0, 0, 0, 0};
  check(SiteUtil::simplifyPolyline(0.01, pts, 4, out) == 3, "simplifyPolyline to points");
  check(SiteUtil::simplifyPolyline(0.01, pts, 4, keep) == 3 && keep[1] == 0, "simplifyPolyline to markers");
}

void spatial() {
  AcGePoint3d hit;
  int onSegment = -1, inTriangle = -1;
  const bool met = SiteUtil::LinePlaneIntersect(AcGePoint3d(0.2, 0.2, 5), AcGePoint3d(0.2, 0.2, -5), AcGePoint3d(0, 0, 1),
                                                AcGePoint3d(1, 0, 1), AcGePoint3d(0, 1, 1), hit, onSegment, inTriangle, 1e-9);
  check(met && onSegment == 1 && inTriangle == 1 && std::fabs(hit.z - 1.0) < 1e-12, "LinePlaneIntersect");
  double fx, fy, fz, dist, along;
  SiteUtil::PtToLine(0, 0, 0, 10, 0, 0, 3, 4, 0, fx, fy, fz, dist, along);
  check(std::fabs(fx - 3) < 1e-12 && std::fabs(dist - 4) < 1e-12 && std::fabs(along - 3) < 1e-12, "PtToLine");
  double va[3] = {0, 0, 0}, vb[3] = {2, 0, 0}, vc[3] = {0, 2, 0};
  double ua[3] = {0.5, 0.5, -1}, ub[3] = {0.5, 0.5, 1}, uc[3] = {1.5, 0.5, 0};
  int coplanar = -1;
  double s1[3], s2[3];
  check(SiteUtil::TriTriItersect3d(va, vb, vc, ua, ub, uc, &coplanar, s1, s2) == 1 && coplanar == 0, "TriTriItersect3d");
}

}  // namespace

int main() {
  records();
  hull();
  planeMath();
  simplification();
  spatial();
  std::printf("%s\n", failures == 0 ? "consumer: all library calls answered as expected" : "consumer: failures");
  return failures == 0 ? 0 : 1;
}
