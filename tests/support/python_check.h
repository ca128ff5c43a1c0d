// Runs Debian's python3 (the one with python3-ezdxf) on a script and returns what it printed.
// The pyenv interpreter that may come first on PATH has no ezdxf, hence the fixed path.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace python_check {

inline constexpr const char* kPython = "/usr/bin/python3";

// Output (stdout and stderr) of a shell command.
inline std::string run(const std::string& command) {
  std::string output;
  FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return "popen failed";
  char buffer[4096];
  std::size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
  ::pclose(pipe);
  return output;
}

inline bool ezdxfMissing() {
  return !std::filesystem::exists(kPython) || run(std::string(kPython) + " -c 'import ezdxf'").find("Error") != std::string::npos;
}

inline std::string runScript(const std::string& scriptFile, const std::string& argument) {
  return run(std::string(kPython) + " " + scriptFile + " '" + argument + "'");
}

}  // namespace python_check
