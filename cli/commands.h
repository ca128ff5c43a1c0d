// The tdutil subcommands over plain point files.
#pragma once

#include <string>

#include "point_file.h"

namespace tdutil {

struct HullOptions {
  std::string input;
  std::string output = "-";
  PointFormat format = PointFormat::Auto;
  bool asPoints = false;  // rows instead of 0-based row indices
};

struct SimplifyOptions {
  std::string input;
  std::string output = "-";
  PointFormat format = PointFormat::Auto;
  double tolerance = 0.0;
  bool asIndices = false;  // kept 0-based row indices instead of rows
};

struct BoundaryOptions {
  std::string input;
  std::string output;
  std::string layer = "BOUNDARY";
  std::string pointLayer;  // empty: points on every layer
};

// Each returns the process exit code; input problems throw InputError.
int runHull(const HullOptions& options);
int runSimplify(const SimplifyOptions& options);
int runBoundary(const BoundaryOptions& options);

}  // namespace tdutil
