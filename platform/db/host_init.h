// Start-up of the host: explicit registration of the runtime classes, run on first use.
#pragma once

namespace tdhost {

// The one registration function (called by ensureHostInitialized).
void registerHostClasses();
// Registers every runtime class once. Every desc() and isA() passes here, so it is inline:
// after the first call a function-local static's guard costs one load, where call_once went
// through the thread library each time.
inline void ensureHostInitialized() {
  static const bool registered = (registerHostClasses(), true);
  (void)registered;
}

}  // namespace tdhost

// Defines desc() and isA() of a host class registered in registerHostClasses().
#define TDHOST_DEFINE_MEMBERS(CLASS_NAME)                 \
  AcRxClass* CLASS_NAME::gpDesc = nullptr;                \
  AcRxClass* CLASS_NAME::desc() {                         \
    tdhost::ensureHostInitialized();                      \
    return gpDesc;                                        \
  }                                                       \
  AcRxClass* CLASS_NAME::isA() const { return desc(); }
