// AcDbFace: corners, edge visibility, transforms and box.
#include <gtest/gtest.h>

#include "arxHeaders.h"

namespace {

TEST(AcDbFaceTest, CornersAndEdges) {
  AcDbFace tri(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 1), AcGePoint3d(0, 3, 2), true, false);
  AcGePoint3d p;
  ASSERT_EQ(tri.getVertexAt(3, p), Acad::eOk);
  EXPECT_EQ(p, AcGePoint3d(0, 3, 2));  // a triangle repeats its third corner
  EXPECT_EQ(tri.getVertexAt(4, p), Acad::eInvalidIndex);
  EXPECT_EQ(tri.setVertexAt(4, p), Acad::eInvalidIndex);
  bool vis = false;
  ASSERT_EQ(tri.isEdgeVisibleAt(1, vis), Acad::eOk);
  EXPECT_FALSE(vis);
  ASSERT_EQ(tri.makeEdgeVisibleAt(1), Acad::eOk);
  ASSERT_EQ(tri.makeEdgeInvisibleAt(0), Acad::eOk);
  tri.isEdgeVisibleAt(1, vis);
  EXPECT_TRUE(vis);
  tri.isEdgeVisibleAt(0, vis);
  EXPECT_FALSE(vis);
  EXPECT_EQ(tri.isEdgeVisibleAt(9, vis), Acad::eInvalidIndex);
  ASSERT_EQ(tri.setVertexAt(3, AcGePoint3d(-1, 5, -2)), Acad::eOk);
  AcDbExtents ext;
  ASSERT_EQ(tri.getGeomExtents(ext), Acad::eOk);
  EXPECT_EQ(ext.minPoint(), AcGePoint3d(-1, 0, -2));
  EXPECT_EQ(ext.maxPoint(), AcGePoint3d(4, 5, 2));
  // Non-uniform scaling applies to plain corners: x doubled.
  AcGeMatrix3d stretch;
  stretch.setCoordSystem(AcGePoint3d(1, 1, 1), AcGeVector3d(2, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1));
  ASSERT_EQ(tri.transformBy(stretch), Acad::eOk);
  ASSERT_EQ(tri.getVertexAt(1, p), Acad::eOk);
  EXPECT_EQ(p, AcGePoint3d(9, 1, 2));
}

}  // namespace
