// The system-variable registry behind acedGetVar and acedSetVar: each variable is a name, a
// result type, a getter and, unless read-only, a setter. Each group of variables registers
// from its own file; systemVariables() runs the groups' registration functions once.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <variant>

#include "adscodes.h"
#include "gepnt3d.h"

class AcDbDatabase;

namespace tdhost {

// A value as acedGetVar hands it out: RTSHORT, RTREAL, RTPOINT/RT3DPOINT (2D points leave z
// at 0) or RTSTR.
using SysVarValue = std::variant<short, double, AcGePoint3d, std::wstring>;

struct SysVar {
  short type = RTNONE;  // RTSHORT, RTREAL, RTPOINT, RT3DPOINT or RTSTR
  // True for variables of the drawing: they need a working database, passed as `db`.
  bool perDrawing = true;
  // RTNORM with `value` set, or the status acedGetVar returns.
  int (*get)(AcDbDatabase* db, SysVarValue& value) = nullptr;
  // Null for a read-only variable. `value` already has the variable's type. RTNORM or RTREJ.
  int (*set)(AcDbDatabase* db, const SysVarValue& value) = nullptr;
};

class SysVarRegistry {
 public:
  // Registers `name` (any case); a later registration of the same name replaces it.
  void add(std::wstring_view name, const SysVar& var);
  // The variable of that name in any case, or null.
  const SysVar* find(std::wstring_view name) const;

 private:
  std::map<std::wstring, SysVar, std::less<>> mVars;  // upper-case names
};

// The variables of the host, registered on first use.
const SysVarRegistry& systemVariables();

// The registration functions of the groups, called once by systemVariables().
void registerHeaderVariables(SysVarRegistry& registry);
void registerViewVariables(SysVarRegistry& registry);

}  // namespace tdhost
