// The session's screen model: the size of the drawing area in pixels (SCREENSIZE), which
// sets the aspect ratio views are fitted to. Not part of the SDK surface.
#pragma once

#include "../acadstrc.h"
#include "../platformexport.h"

namespace tdhost {

struct ScreenSize {
  int width = 0;   // pixels
  int height = 0;  // pixels
};

// 1600 x 900 (a 16:9 drawing area) until set.
TDHOST_API ScreenSize screenSize();
// eInvalidInput unless both sides are positive; the size stays as it was then.
TDHOST_API Acad::ErrorStatus setScreenSize(int width, int height);

}  // namespace tdhost
