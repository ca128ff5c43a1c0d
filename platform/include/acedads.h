// Editor-level functions of the host's C interface: application names, system variables and
// coordinate conversion.
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

// Converts `pt` between coordinate systems, each given by a resbuf: RTSHORT 0 (WCS), 1 (UCS
// of the working database), 2 (DCS of the current view: origin at the target, z along the
// view direction, turned by the view twist); RTENAME (the entity's ECS by the arbitrary-axis
// rule; entities with world coordinates such as lines, points, 3D polylines and faces have
// the WCS); RT3DPOINT (the ECS of that extrusion vector). With disp != 0 the point is a
// displacement (no translation). RTNORM on success; RTERROR for a null or unknown system,
// an entity name of no live entity, code 3 (paper-space DCS: this host has no paper space)
// or a code that needs a working database when there is none. `result` may alias `pt`.
TDHOST_API int acedTrans(const ads_point pt, const struct resbuf* from, const struct resbuf* to, int disp,
                         ads_point result);
