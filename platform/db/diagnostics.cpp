// The misuse sink: reports kept for inspection and echoed to stderr.
#include "tdhost/diagnostics.h"

#include <cstdio>
#include <mutex>

#include "database_impl.h"
#include "object_access.h"

namespace tdhost {
namespace {

struct Sink {
  std::mutex mutex;
  std::vector<Diagnostic> reports;
  bool echo = true;
};

Sink& sink() {
  static Sink s;
  return s;
}

}  // namespace

const char* misuseName(Misuse kind) {
  switch (kind) {
    case Misuse::kWriteNotEnabled: return "write-not-enabled";
    case Misuse::kReadNotEnabled: return "read-not-enabled";
    case Misuse::kDoubleClose: return "double-close";
    case Misuse::kCloseNotResident: return "close-not-resident";
    case Misuse::kUseAfterErase: return "use-after-erase";
    case Misuse::kObjectLeftOpen: return "object-left-open";
    case Misuse::kDeleteResident: return "delete-resident";
  }
  return "unknown";
}

void reportMisuse(Misuse kind, const std::string& message) {
  Sink& s = sink();
  std::lock_guard<std::mutex> lock(s.mutex);
  s.reports.push_back({kind, message});
  if (s.echo) std::fprintf(stderr, "tdhost misuse [%s]: %s\n", misuseName(kind), message.c_str());
}

std::vector<Diagnostic> diagnostics() {
  Sink& s = sink();
  std::lock_guard<std::mutex> lock(s.mutex);
  return s.reports;
}

std::size_t countDiagnostics(Misuse kind) {
  Sink& s = sink();
  std::lock_guard<std::mutex> lock(s.mutex);
  std::size_t n = 0;
  for (const Diagnostic& d : s.reports) n += d.kind == kind ? 1 : 0;
  return n;
}

void clearDiagnostics() {
  Sink& s = sink();
  std::lock_guard<std::mutex> lock(s.mutex);
  s.reports.clear();
}

void setDiagnosticsEcho(bool toStderr) {
  Sink& s = sink();
  std::lock_guard<std::mutex> lock(s.mutex);
  s.echo = toStderr;
}

AcDbObjectIdArray openObjects(const AcDbDatabase* db) {
  AcDbObjectIdArray ids;
  if (db == nullptr || db->impl().openCount == 0) return ids;
  for (auto& [handle, stub] : db->impl().stubs) {
    if (stub.object && ObjectAccess::isOpen(*stub.object)) ids.append(AcDbObjectId(const_cast<AcDbStub*>(&stub)));
  }
  return ids;
}

std::size_t closeOpenObjects(AcDbDatabase* db) {
  AcDbObjectIdArray ids = openObjects(db);
  for (const AcDbObjectId& id : ids) {
    AcDbObject* obj = peek(id);
    while (ObjectAccess::isOpen(*obj)) obj->close();
  }
  return static_cast<std::size_t>(ids.length());
}

}  // namespace tdhost
