// AcGeMatrix3d: inverses, frames and the standard transformations against hand results and properties.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "ge_test_support.h"
#include "geline3d.h"
#include "gemat3d.h"
#include "geplane.h"

namespace {

using getest::near3;
constexpr double kPi = std::numbers::pi;

AcGeMatrix3d randomAffine(getest::Random& rnd) {
  AcGeMatrix3d m;
  for (unsigned r = 0; r < 3; ++r)
    for (unsigned c = 0; c < 4; ++c) m(r, c) = rnd.uniform(-5, 5);
  return m;
}

// A right-handed orthonormal frame with random orientation.
void randomFrame(getest::Random& rnd, AcGeVector3d& x, AcGeVector3d& y, AcGeVector3d& z) {
  x = rnd.unitVector();
  y = x.perpVector().normal().rotateBy(rnd.uniform(0, 2 * kPi), x);
  z = x.crossProduct(y);
}

TEST(Matrix3d, InverseTimesMatrixIsIdentityOnRandomMatrices) {
  getest::Random rnd;
  int inverted = 0;
  for (int i = 0; i < 200; ++i) {
    const AcGeMatrix3d m = randomAffine(rnd);
    if (std::fabs(m.det()) < 1e-3) continue;
    const AcGeTol tight = [] { AcGeTol t; t.setEqualVector(1e-9); return t; }();
    EXPECT_TRUE((m.inverse() * m).isEqualTo(AcGeMatrix3d::kIdentity, tight));
    EXPECT_TRUE((m * m.inverse()).isEqualTo(AcGeMatrix3d::kIdentity, tight));
    EXPECT_NEAR(m.inverse().det() * m.det(), 1.0, 1e-9);
    ++inverted;
  }
  EXPECT_GT(inverted, 190);
}

TEST(Matrix3d, SingularMatrixIsReportedAndLeftUnchanged) {
  AcGeMatrix3d m;
  m(2, 0) = 1; m(2, 1) = 1; m(2, 2) = 0;  // row 2 = row 0 + row 1 in the linear part
  EXPECT_TRUE(m.isSingular());
  AcGeMatrix3d inv;
  EXPECT_FALSE(m.inverse(inv, 1e-10));
  AcGeMatrix3d copy = m;
  EXPECT_EQ(copy.invert(), m);
  EXPECT_FALSE(AcGeMatrix3d::translation(AcGeVector3d(1e7, -3e6, 250)).isSingular());
}

TEST(Matrix3d, SetToAlignCoordSysMapsOneFrameOntoAnother) {
  getest::Random rnd;
  for (int i = 0; i < 50; ++i) {
    AcGeVector3d fx, fy, fz, tx, ty, tz;
    randomFrame(rnd, fx, fy, fz);
    randomFrame(rnd, tx, ty, tz);
    const AcGePoint3d fo = rnd.point(1000), to = rnd.point(1000);
    const AcGeMatrix3d m = AcGeMatrix3d::alignCoordSys(fo, fx, fy, fz, to, tx, ty, tz);
    EXPECT_TRUE(near3(m * fo, to, 1e-9));
    EXPECT_TRUE(near3(m * (fo + fx * 2.0), to + tx * 2.0, 1e-9));
    EXPECT_TRUE(near3(m * fy, ty, 1e-12));
    EXPECT_TRUE(near3(m * fz, tz, 1e-12));
    EXPECT_TRUE(m.isUniScaledOrtho());
    EXPECT_NEAR(m.det(), 1.0, 1e-12);
  }
}

TEST(Matrix3d, CoordSystemMapsLocalToWorld) {
  AcGeMatrix3d m;
  m.setCoordSystem(AcGePoint3d(10, 20, 30), AcGeVector3d(0, 1, 0), AcGeVector3d(-1, 0, 0), AcGeVector3d(0, 0, 1));
  EXPECT_TRUE(near3(m * AcGePoint3d(1, 2, 3), AcGePoint3d(8, 21, 33), 1e-14));
  EXPECT_DOUBLE_EQ(m.entry[0][1], -1.0);  // axes are columns
}

TEST(Matrix3d, RotationScalingAndTranslationMatchHandResults) {
  struct Case { AcGeMatrix3d m; AcGePoint3d in; AcGePoint3d out; };
  const Case cases[] = {
      {AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kXAxis), {0, 1, 0}, {0, 0, 1}},
      {AcGeMatrix3d::rotation(kPi, AcGeVector3d::kYAxis, AcGePoint3d(1, 0, 0)), {2, 5, 0}, {0, 5, 0}},
      {AcGeMatrix3d::scaling(3, AcGePoint3d(1, 1, 1)), {2, 1, 0}, {4, 1, -2}},
      {AcGeMatrix3d::translation(AcGeVector3d(1, -2, 3)), {0, 0, 0}, {1, -2, 3}},
      {AcGeMatrix3d::mirroring(AcGePoint3d(1, 1, 1)), {0, 0, 0}, {2, 2, 2}},
      {AcGeMatrix3d::mirroring(AcGeLine3d(AcGePoint3d(0, 0, 1), AcGeVector3d(1, 0, 0))), {5, 1, 1}, {5, -1, 1}},
      {AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 2), AcGeVector3d(0, 0, 1))), {1, 1, 0}, {1, 1, 4}},
      {AcGeMatrix3d::projection(AcGePlane(), AcGeVector3d(1, 0, 1)), {0, 0, 2}, {-2, 0, 0}},
  };
  ASSERT_EQ(std::size(cases), 8u);
  int i = 0;
  for (const Case& c : cases) EXPECT_TRUE(near3(c.m * c.in, c.out, 1e-14)) << "case " << i++;
}

TEST(Matrix3d, MirroringsProjectionsAndPlaneFramesOnRandomPlanes) {
  getest::Random rnd;
  AcGeTol loose;
  loose.setEqualVector(1e-9);
  for (int i = 0; i < 30; ++i) {
    const AcGePlane pln(rnd.point(50), rnd.unitVector());
    const AcGeLine3d line(rnd.point(50), rnd.unitVector());
    EXPECT_TRUE((AcGeMatrix3d::mirroring(pln) * AcGeMatrix3d::mirroring(pln)).isEqualTo(AcGeMatrix3d::kIdentity, loose));
    EXPECT_TRUE((AcGeMatrix3d::mirroring(line) * AcGeMatrix3d::mirroring(line)).isEqualTo(AcGeMatrix3d::kIdentity, loose));
    EXPECT_NEAR(AcGeMatrix3d::mirroring(pln).det(), -1.0, 1e-12);
    // worldToPlane sends the plane to XY and inverts planeToWorld.
    const AcGeMatrix3d w2p = AcGeMatrix3d::worldToPlane(pln), p2w = AcGeMatrix3d::planeToWorld(pln);
    EXPECT_TRUE((w2p * p2w).isEqualTo(AcGeMatrix3d::kIdentity, loose));
    EXPECT_NEAR(p2w.det(), 1.0, 1e-12) << "a right-handed frame";
    EXPECT_NEAR((w2p * pln.evalPoint(rnd.point2d(50))).z, 0.0, 1e-9);
    EXPECT_TRUE(near3(w2p * pln.normal(), AcGeVector3d::kZAxis, 1e-12));
    EXPECT_TRUE(near3(AcGeMatrix3d::planeToWorld(pln.normal()) * AcGeVector3d::kZAxis, pln.normal(), 1e-12));
    const AcGeVector3d dir = rnd.unitVector();
    if (std::fabs(dir.dotProduct(pln.normal())) < 0.2) continue;
    const AcGeMatrix3d p = AcGeMatrix3d::projection(pln, dir);
    EXPECT_TRUE((p * p).isEqualTo(p, loose));
    const AcGePoint3d q = rnd.point(50), pq = p * q;
    EXPECT_TRUE(pln.isOn(pq, loose));
    EXPECT_NEAR((q - pq).crossProduct(dir).length(), 0.0, 1e-9);
  }
  EXPECT_EQ(AcGeMatrix3d::worldToPlane(AcGeVector3d::kZAxis), AcGeMatrix3d::kIdentity);
}

TEST(Matrix3d, ProductsTransposeScaleAndOrthoTests) {
  getest::Random rnd;
  const AcGeMatrix3d a = randomAffine(rnd), b = randomAffine(rnd);
  AcGeMatrix3d pre = a;
  EXPECT_EQ(pre.preMultBy(b), b * a);
  const AcGePoint3d p = rnd.point(10);
  EXPECT_TRUE(near3((a * b) * p, a * (b * p), 1e-10));  // A * B applies B first
  EXPECT_DOUBLE_EQ(a.transpose()(3, 1), a(1, 3));
  EXPECT_NEAR(AcGeMatrix3d::scaling(2.5).scale(), 2.5, 1e-15);
  EXPECT_NEAR(AcGeMatrix3d::scaling(-2.0).det(), -8.0, 1e-14);
  EXPECT_TRUE((AcGeMatrix3d::rotation(0.3, AcGeVector3d(1, 2, 3)) * AcGeMatrix3d::scaling(4)).isUniScaledOrtho());
  AcGeMatrix3d stretch;
  stretch(0, 0) = 2;
  EXPECT_FALSE(stretch.isUniScaledOrtho());
  EXPECT_TRUE(stretch.isScaledOrtho());
}

}  // namespace
