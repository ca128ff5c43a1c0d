// Reading and writing plain-text point files with precise error locations.
#include "point_file.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <system_error>

#include <unistd.h>

namespace tdutil {
namespace {

std::string trim(const std::string& s) {
  const size_t first = s.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  return s.substr(first, s.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> splitFields(const std::string& line) {
  std::vector<std::string> fields;
  if (line.find(',') != std::string::npos) {
    std::stringstream in(line);
    std::string field;
    while (std::getline(in, field, ',')) fields.push_back(trim(field));
    if (!line.empty() && line.back() == ',') fields.emplace_back();
    return fields;
  }
  std::stringstream in(line);
  std::string field;
  while (in >> field) fields.push_back(field);
  return fields;
}

bool parseNumber(const std::string& text, double& value) {
  if (text.empty()) return false;
  const char* begin = text.data();
  const char* end = begin + text.size();
  if (*begin == '+') ++begin;
  const auto [ptr, ec] = std::from_chars(begin, end, value);
  return ec == std::errc() && ptr == end && std::isfinite(value);
}

std::string where(const std::string& path, int line) { return path + ":" + std::to_string(line) + ": "; }

double number(const std::vector<std::string>& fields, size_t i, const char* name, const std::string& path, int line) {
  double value = 0.0;
  if (!parseNumber(fields[i], value))
    throw InputError(where(path, line) + "expected a number for " + name + " in field " + std::to_string(i + 1) +
                     ", got \"" + fields[i] + "\"");
  return value;
}

PointFormat detect(size_t fieldCount, const std::string& path, int line) {
  if (fieldCount == 4 || fieldCount == 5) return PointFormat::Pnezd;
  if (fieldCount == 2 || fieldCount == 3) return PointFormat::Xyz;
  throw InputError(where(path, line) + "cannot tell the format from " + std::to_string(fieldCount) +
                   " fields: expected P,N,E,Z,D or x,y[,z]");
}

PointRow parseRow(const std::vector<std::string>& f, PointFormat format, const std::string& path, int line) {
  PointRow row;
  row.line = line;
  if (format == PointFormat::Pnezd) {
    if (f.size() < 3 || f.size() > 5)
      throw InputError(where(path, line) + "expected P,N,E[,Z[,D]] (3 to 5 fields), got " + std::to_string(f.size()));
    row.number = f[0];
    row.y = number(f, 1, "the northing", path, line);
    row.x = number(f, 2, "the easting", path, line);
    row.hasZ = f.size() >= 4 && !f[3].empty();
    if (row.hasZ) row.z = number(f, 3, "the elevation", path, line);
    if (f.size() == 5) row.description = f[4];
    return row;
  }
  if (f.size() < 2 || f.size() > 3)
    throw InputError(where(path, line) + "expected x,y[,z] (2 or 3 fields), got " + std::to_string(f.size()));
  row.x = number(f, 0, "x", path, line);
  row.y = number(f, 1, "y", path, line);
  row.hasZ = f.size() == 3;
  if (row.hasZ) row.z = number(f, 2, "z", path, line);
  return row;
}

// A header names its columns: none of the coordinate fields is a number.
bool looksLikeHeader(const std::vector<std::string>& f, PointFormat format) {
  double ignored = 0.0;
  const size_t first = format == PointFormat::Pnezd ? 1 : 0;
  for (size_t i = first; i < f.size() && i < first + 2; ++i)
    if (parseNumber(f[i], ignored)) return false;
  return true;
}

std::string formatNumber(double value) {
  char buffer[64];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return ec == std::errc() ? std::string(buffer, ptr) : std::to_string(value);
}

}  // namespace

PointFormat parsePointFormat(const std::string& name) {
  if (name == "auto") return PointFormat::Auto;
  if (name == "pnezd") return PointFormat::Pnezd;
  if (name == "xyz") return PointFormat::Xyz;
  throw InputError("unknown point format \"" + name + "\" (expected auto, pnezd or xyz)");
}

PointFile readPointFile(const std::string& path, PointFormat format) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw InputError(path + ": cannot open: " + std::generic_category().message(errno));
  PointFile file;
  file.path = path;
  std::string raw;
  int line = 0;
  bool seenData = false;
  while (std::getline(in, raw)) {
    ++line;
    if (raw.find('\0') != std::string::npos) throw InputError(where(path, line) + "binary data, not a text point file");
    const std::string text = trim(line == 1 && raw.rfind("\xEF\xBB\xBF", 0) == 0 ? raw.substr(3) : raw);
    if (text.empty() || text[0] == '#') continue;
    const std::vector<std::string> fields = splitFields(text);
    if (format == PointFormat::Auto) format = detect(fields.size(), path, line);
    if (!seenData && looksLikeHeader(fields, format)) {
      seenData = true;
      continue;
    }
    seenData = true;
    file.rows.push_back(parseRow(fields, format, path, line));
  }
  if (in.bad()) throw InputError(path + ": read error");
  file.format = format == PointFormat::Auto ? PointFormat::Xyz : format;
  return file;
}

std::string formatRow(const PointRow& row, PointFormat format) {
  std::string text;
  if (format == PointFormat::Pnezd) {
    text.append(row.number).append(",").append(formatNumber(row.y)).append(",").append(formatNumber(row.x));
    text.append(",").append(row.hasZ ? formatNumber(row.z) : std::string()).append(",").append(row.description);
    return text;
  }
  text.append(formatNumber(row.x)).append(",").append(formatNumber(row.y));
  if (row.hasZ) text.append(",").append(formatNumber(row.z));
  return text;
}

void writeOutput(const std::string& path, const std::string& text) {
  if (path == "-") {
    std::cout << text << std::flush;
    return;
  }
  const std::string temp = path + ".tmp" + std::to_string(::getpid());
  std::FILE* out = std::fopen(temp.c_str(), "wb");
  if (!out) throw InputError(path + ": cannot write: " + std::generic_category().message(errno));
  const bool written = std::fwrite(text.data(), 1, text.size(), out) == text.size() && std::fflush(out) == 0 &&
                       ::fsync(::fileno(out)) == 0;
  const int writeErrno = errno;
  if (std::fclose(out) != 0 || !written) {
    std::remove(temp.c_str());
    throw InputError(path + ": write failed: " + std::generic_category().message(writeErrno));
  }
  if (std::rename(temp.c_str(), path.c_str()) != 0) {
    const std::string reason = std::generic_category().message(errno);
    std::remove(temp.c_str());
    throw InputError(path + ": cannot replace: " + reason);
  }
}

}  // namespace tdutil
