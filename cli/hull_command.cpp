// tdutil hull: the convex hull of a point file, as row indices or rows.
#include <string>
#include <vector>

#include "TDUtilW.h"
#include "commands.h"

namespace tdutil {
namespace {

// Survey rows go through the survey point overload, plain rows through the coordinate arrays.
int computeHull(const PointFile& file, std::vector<int>& hull) {
  ConvexHull hullMaker;
  if (file.format == PointFormat::Pnezd) {
    std::vector<SurvPoint> points(file.rows.size());
    for (size_t i = 0; i < file.rows.size(); ++i) {
      const PointRow& row = file.rows[i];
      const double xyz[3] = {row.x, row.y, row.z};
      points[i].set(xyz, nullptr, nullptr, 0, nullptr);
    }
    return hullMaker.Hull(points, hull);
  }
  std::vector<double> xs, ys;
  for (const PointRow& row : file.rows) {
    xs.push_back(row.x);
    ys.push_back(row.y);
  }
  return hullMaker.Hull(xs.data(), ys.data(), static_cast<int>(xs.size()), hull);
}

}  // namespace

int runHull(const HullOptions& options) {
  const PointFile file = readPointFile(options.input, options.format);
  if (file.rows.empty()) throw InputError(options.input + ": no points");
  std::vector<int> hull;
  if (computeHull(file, hull) < 0) throw InputError(options.input + ": the hull could not be computed");
  std::string text;
  for (int index : hull)
    text += (options.asPoints ? formatRow(file.rows[static_cast<size_t>(index)], file.format) : std::to_string(index)) +
            "\n";
  writeOutput(options.output, text);
  return 0;
}

}  // namespace tdutil
