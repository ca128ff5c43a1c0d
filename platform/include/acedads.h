// Editor-level functions of the host's C interface that concern the database.
#pragma once

#include "adscodes.h"
#include "adsdef.h"
#include "platformexport.h"

// Registers an application name in the working database's application table. RTNORM when
// added, RTERROR when the name is invalid, already registered or there is no database.
TDHOST_API int acdbRegApp(const ACHAR* appname);
