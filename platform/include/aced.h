// Editor functions of the host's C++ interface: the current view.
#pragma once

#include "acadstrc.h"
#include "platformexport.h"

class AcDbViewTableRecord;
// Paper-space viewport entity; this host has no paper space, so none can exist.
class AcDbViewport;

// Makes the view of `pVwRec` the current view: the *Active viewport record of the working
// database (the current document's) takes its centre, direction, target, twist, lens length,
// clipping and view mode. The view's window is fitted to the screen (tdhost::screenSize):
// height max(h, w / aspect), width height * aspect, so all of it stays visible.
// eNullObjectPointer for a null record; eNotInPaperspace for a paper-space view (TILEMODE is
// always 1 here); eInvalidInput for a non-null pVP (it cannot name an object of this host) or
// a view of no size; eNoDatabase without a working database; eKeyNotFound when the drawing has no *Active record;
// otherwise the status of opening that record for write.
TDHOST_API Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* pVwRec, AcDbViewport* pVP);
