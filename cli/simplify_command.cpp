// tdutil simplify: thin a polyline given as a point file to a tolerance.
#include <string>
#include <vector>

#include "TDUtilW.h"
#include "commands.h"

namespace tdutil {

int runSimplify(const SimplifyOptions& options) {
  const PointFile file = readPointFile(options.input, options.format);
  if (file.rows.empty()) throw InputError(options.input + ": no points");
  const int n = static_cast<int>(file.rows.size());
  std::vector<double> coords;
  coords.reserve(file.rows.size() * 3);
  for (const PointRow& row : file.rows) coords.insert(coords.end(), {row.x, row.y, row.z});
  auto* points = reinterpret_cast<double(*)[3]>(coords.data());
  std::vector<int> keep(file.rows.size(), 0);
  SiteUtil::simplifyPolyline(options.tolerance, points, n, keep.data());

  std::string text;
  for (size_t i = 0; i < keep.size(); ++i) {
    if (!keep[i]) continue;
    text += (options.asIndices ? std::to_string(i) : formatRow(file.rows[i], file.format)) + "\n";
  }
  writeOutput(options.output, text);
  return 0;
}

}  // namespace tdutil
