// Host-specific control of the document session (tests, the command interpreter, the
// command-line tool). Not part of the SDK surface.
#pragma once

#include <deque>
#include <string>

#include "../acadstrc.h"
#include "../adesk.h"
#include "../platformexport.h"

class AcApDocument;

namespace tdhost {

// A string sent with sendStringToExecute, waiting for the command interpreter.
struct QueuedCommand {
  std::wstring text;
  bool echo = true;
  bool wrapUpInactiveDoc = false;
};

// Closes every document and restarts the DrawingN numbering at 1 (between tests).
TDHOST_API void resetDocuments();

// The document's command line, oldest string first; the interpreter pops from the front.
TDHOST_API std::deque<QueuedCommand>& commandLine(AcApDocument& doc);

// Writes the document's drawing with dxfOut (atomic: a failed save leaves the old file).
// With a file name the document takes that name (Save As); without one it is saved to its
// own file: eInvalidInput for a drawing never saved, eFileAccessErr for a read-only one.
TDHOST_API Acad::ErrorStatus saveDocument(AcApDocument& doc, const ACHAR* fileName = nullptr);

}  // namespace tdhost
