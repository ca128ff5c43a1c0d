// Plain-text point files: the survey "P,N,E,Z,D" convention and plain "x,y[,z]" rows.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace tdutil {

enum class PointFormat { Auto, Pnezd, Xyz };

// One row of a point file. For P,N,E,Z,D rows x is the easting and y the northing.
struct PointRow {
  std::string number;       // P (empty for x,y,z rows)
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  std::string description;  // D
  bool hasZ = false;
  int line = 0;             // 1-based line in the file
};

struct PointFile {
  std::string path;
  PointFormat format = PointFormat::Xyz;
  std::vector<PointRow> rows;
};

// An input problem, already worded as "file:line: what was wrong".
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Parses a point file. Fields are separated by commas (x,y,z rows may also use blanks); '#'
// starts a comment line; a first line whose coordinates are not numbers is a header. Auto
// format: five fields (or four: P,N,E,Z) are P,N,E,Z,D, two or three are x,y[,z].
PointFile readPointFile(const std::string& path, PointFormat format);

PointFormat parsePointFormat(const std::string& name);

// A row in the file's own format, for writing points back out.
std::string formatRow(const PointRow& row, PointFormat format);

// Writes text to path atomically (beside the target, then renamed): a failure leaves any old
// file as it was. "-" writes to standard output.
void writeOutput(const std::string& path, const std::string& text);

}  // namespace tdutil
