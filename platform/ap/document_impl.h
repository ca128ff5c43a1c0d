// The state behind an AcApDocument: its database, names, locks and command line.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "AcApDocLockmode.h"
#include "acdocman.h"
#include "dbmain.h"
#include "tdhost/session.h"

namespace tdhost {

struct DocumentImpl {
  std::unique_ptr<AcDbDatabase> database;
  std::wstring fileName;  // absolute path, or "DrawingN.dwg" while unnamed
  std::wstring title;
  bool named = false;     // has a file of its own
  bool readOnly = false;
  std::vector<AcAp::DocLockMode> locks;  // innermost last
  std::deque<QueuedCommand> commandLine;

  void setFileName(std::wstring name);
};

// `name` made absolute against the current directory, "." and ".." segments removed.
std::wstring absoluteFileName(const std::wstring& name);

}  // namespace tdhost
