// tdutil: the command-line front end of the TDUtilW library.
#include <iostream>

#include <CLI/CLI.hpp>

#include "commands.h"

namespace {

constexpr int kInputErrorExit = 1;
constexpr int kUsageExit = 2;

void addFormatOption(CLI::App& command, tdutil::PointFormat& format) {
  command
      .add_option_function<std::string>(
          "-f,--format", [&format](const std::string& name) { format = tdutil::parsePointFormat(name); },
          "Input format: auto, pnezd (P,N,E,Z,D survey points) or xyz (x,y[,z])")
      ->check(CLI::IsMember({"auto", "pnezd", "xyz"}))
      ->default_str("auto");
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"tdutil: survey geometry on plain point files and drawings"};
  app.require_subcommand(1);
  app.set_version_flag("--version", "tdutil 0.1.0");

  tdutil::HullOptions hull;
  CLI::App* hullCommand = app.add_subcommand("hull", "Convex hull of a point file, counter-clockwise from the lowest point");
  hullCommand->add_option("input", hull.input, "Point file")->required()->check(CLI::ExistingFile);
  hullCommand->add_option("-o,--output", hull.output, "Output file ('-' for standard output)")->default_str("-");
  hullCommand->add_flag("-p,--points", hull.asPoints, "Write the hull rows instead of 0-based row indices");
  addFormatOption(*hullCommand, hull.format);

  tdutil::SimplifyOptions simplify;
  CLI::App* simplifyCommand =
      app.add_subcommand("simplify", "Thin a polyline point file: vertex reduction, then Douglas-Peucker");
  simplifyCommand->add_option("input", simplify.input, "Point file, one vertex per row")->required()->check(CLI::ExistingFile);
  simplifyCommand->add_option("-t,--tolerance", simplify.tolerance, "Largest distance of a dropped vertex (drawing units)")
      ->required()
      ->check(CLI::NonNegativeNumber);
  simplifyCommand->add_option("-o,--output", simplify.output, "Output file ('-' for standard output)")->default_str("-");
  simplifyCommand->add_flag("-i,--indices", simplify.asIndices, "Write kept 0-based row indices instead of rows");
  addFormatOption(*simplifyCommand, simplify.format);

  tdutil::BoundaryOptions boundary;
  CLI::App* boundaryCommand = app.add_subcommand(
      "boundary", "Draw the convex boundary of a DXF drawing's survey points (POINT entities) into the drawing");
  boundaryCommand->add_option("input", boundary.input, "DXF drawing")->required()->check(CLI::ExistingFile);
  boundaryCommand->add_option("-o,--output", boundary.output, "DXF file to write")->required();
  boundaryCommand->add_option("-l,--layer", boundary.layer, "Layer of the boundary (made when missing)")
      ->default_str("BOUNDARY");
  boundaryCommand->add_option("--point-layer", boundary.pointLayer, "Use only the points on this layer");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int code = app.exit(e);
    return code == 0 ? 0 : kUsageExit;
  }

  try {
    if (*hullCommand) return tdutil::runHull(hull);
    if (*simplifyCommand) return tdutil::runSimplify(simplify);
    if (*boundaryCommand) return tdutil::runBoundary(boundary);
  } catch (const tdutil::InputError& e) {
    std::cerr << "tdutil: " << e.what() << "\n";
    return kInputErrorExit;
  } catch (const std::exception& e) {
    std::cerr << "tdutil: " << e.what() << "\n";
    return kInputErrorExit;
  }
  return kUsageExit;
}
