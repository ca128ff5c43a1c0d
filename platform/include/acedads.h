// Editor-level functions of the host's C interface: application names and system variables.
#pragma once

#include "adscodes.h"
#include "adsdef.h"
#include "platformexport.h"

// Registers an application name in the working database's application table. RTNORM when
// added, RTERROR when the name is invalid, already registered or there is no database.
TDHOST_API int acdbRegApp(const ACHAR* appname);

// System variables (names ignore case). acedGetVar fills `result` (restype and value; the
// chain link is left alone); a string result is a new acutNewString copy the caller
// releases (acutRelRb on the buffer, or acutDelString). RTNORM on success, RTREJ for an
// unknown name, RTERROR for a null argument or a variable of the drawing when there is no
// working database.
TDHOST_API int acedGetVar(const ACHAR* sym, struct resbuf* result);
// Sets a system variable from `val` (reals also take RTSHORT/RTLONG/RTANG, 3D points also
// RTPOINT with z = 0). RTNORM on success; RTREJ for an unknown name, a read-only variable, a
// value of the wrong type or one the variable refuses (CLAYER naming a missing or frozen
// layer, a TEXTSIZE of 0); RTERROR for a null argument or no working database.
TDHOST_API int acedSetVar(const ACHAR* sym, const struct resbuf* val);

