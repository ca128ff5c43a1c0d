// SegmentIndex: a packed R-tree over the plan boxes of a polyline's segments, answering nearest
// and box-overlap queries so long polylines avoid a scan of every segment.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "ge/bulge_segment.h"
#include "gepnt2d.h"
#include "platformexport.h"

namespace tdhost::ge {

class TDHOST_API SegmentIndex {
 public:
  // Segment i is boxes[i]; the tree is bulk-loaded (sort-tile-recursive packing).
  explicit SegmentIndex(const std::vector<Box2d>& boxes);
  ~SegmentIndex();
  SegmentIndex(SegmentIndex&&) noexcept;
  SegmentIndex& operator=(SegmentIndex&&) noexcept;
  SegmentIndex(const SegmentIndex&) = delete;
  SegmentIndex& operator=(const SegmentIndex&) = delete;

  // Boxes of the segments of `segments`, in order.
  static std::vector<Box2d> boxesOf(const std::vector<BulgeSegment>& segments);

  std::size_t size() const;

  // Indexes of the segments whose boxes meet `box` (touching counts), ascending.
  std::vector<std::size_t> intersecting(const Box2d& box) const;

  // Segments in order of increasing box distance from a point, produced lazily.
  class TDHOST_API NearestCursor {
   public:
    ~NearestCursor();
    NearestCursor(NearestCursor&&) noexcept;
    NearestCursor& operator=(NearestCursor&&) noexcept;
    // The next segment and the distance from the point to its box (0 inside); false when done.
    bool next(std::size_t& index, double& boxDistance);

   private:
    friend class SegmentIndex;
    struct State;
    explicit NearestCursor(std::unique_ptr<State> state);
    std::unique_ptr<State> mState;
  };
  NearestCursor nearest(const AcGePoint2d& p) const;

  // The segment of least exact distance to p, where exactDistance(i) gives segment i's distance
  // (never below its box distance). Stops once the next box lies beyond the best exact distance.
  // Ties go to the lower index. Returns size() for an empty index; `best` receives the distance.
  std::size_t nearestSegment(const AcGePoint2d& p, const std::function<double(std::size_t)>& exactDistance,
                             double* best = nullptr) const;

 private:
  struct Tree;
  std::unique_ptr<Tree> mTree;
};

}  // namespace tdhost::ge
