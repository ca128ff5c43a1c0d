// AcGeIntArray: the host's growable array of that element.
#pragma once

#include "acarray.h"
