// The file filers behind dxfOutFields of modelled classes. Internal to the host.
#pragma once

#include "dbfiler.h"
