// Symbol visibility of the headless host's exported classes and functions.
#pragma once

#if defined(_WIN32)
#define TDHOST_API
#else
#define TDHOST_API __attribute__((visibility("default")))
#endif
