// Start-up of the host: explicit registration of the runtime classes, run on first use.
#pragma once

namespace tdhost {

// Registers every runtime class once; cheap after the first call.
void ensureHostInitialized();
// The one registration function (called by ensureHostInitialized).
void registerHostClasses();

}  // namespace tdhost

// Defines desc() and isA() of a host class registered in registerHostClasses().
#define TDHOST_DEFINE_MEMBERS(CLASS_NAME)                 \
  AcRxClass* CLASS_NAME::gpDesc = nullptr;                \
  AcRxClass* CLASS_NAME::desc() {                         \
    tdhost::ensureHostInitialized();                      \
    return gpDesc;                                        \
  }                                                       \
  AcRxClass* CLASS_NAME::isA() const { return desc(); }
