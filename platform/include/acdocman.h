// Documents and the document manager: each open drawing is an AcApDocument owning its
// database; acDocManager creates, opens, switches, locks and closes them.
#pragma once

#include <memory>

#include "AcApDocLockmode.h"
#include "acadstrc.h"
#include "adesk.h"
#include "platformexport.h"
#include "rxboiler.h"

class AcDbDatabase;
class AcApDocManager;
class AcApDocument;

namespace tdhost {
struct DocumentImpl;
TDHOST_API void resetDocuments();
bool isOpenDocument(const AcApDocument* doc);
}  // namespace tdhost

// The document manager, made on first use.
TDHOST_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()

// One open drawing. The host has a single execution context, so "my" locks are all the
// locks there are; other contexts never hold any.
class TDHOST_API AcApDocument : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocument);
  ~AcApDocument() override;
  AcApDocument(const AcApDocument&) = delete;
  AcApDocument& operator=(const AcApDocument&) = delete;

  // Absolute path of the drawing file, or "DrawingN.dwg" for a drawing never saved.
  const ACHAR* fileName() const;
  // The file name without its folder ("DrawingN.dwg" for an unnamed drawing).
  const ACHAR* docTitle() const;
  // The document's database; it lives exactly as long as the document.
  AcDbDatabase* database() const;
  // Strongest lock held (kXWrite, kProtectedAutoWrite, kWrite, kAutoWrite, kRead in that
  // order), or kNotLocked.
  AcAp::DocLockMode myLockMode() const;
  // Locks of other execution contexts (none in this host); with bIncludeMyLocks, myLockMode().
  AcAp::DocLockMode lockMode(bool bIncludeMyLocks = false) const;
  // No command string waits on the document's command line.
  bool isQuiescent() const;
  // Opened from a file this process may not write, or from a file another document holds.
  bool isReadOnly() const;

  tdhost::DocumentImpl& impl() const { return *mImpl; }

 private:
  friend class AcApDocManager;
  explicit AcApDocument(std::unique_ptr<tdhost::DocumentImpl> impl);
  std::unique_ptr<tdhost::DocumentImpl> mImpl;
};

// Walks the documents open when it was made (oldest first); the caller deletes it.
class TDHOST_API AcApDocumentIterator : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocumentIterator);
  ~AcApDocumentIterator() override;
  bool done() const;
  void step();
  // The document at the iterator, or null when done (or closed since the iterator was made).
  AcApDocument* document();

 private:
  friend class AcApDocManager;
  AcApDocumentIterator(AcApDocument* const* docs, int count);
  std::unique_ptr<AcApDocument*[]> mDocs;
  int mCount = 0;
  int mIndex = 0;
};

// The one document manager of the process (acDocManager). Statuses shared by its calls:
// eInvalidInput for a null document, eNoDocument for a document that is not open.
class TDHOST_API AcApDocManager : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocManager);
  ~AcApDocManager() override;
  AcApDocManager(const AcApDocManager&) = delete;
  AcApDocManager& operator=(const AcApDocManager&) = delete;

  // The document commands work on; the working database is always its database.
  AcApDocument* curDocument() const;
  // The document the user sees; setCurDocument without activate leaves it unchanged.
  AcApDocument* mdiActiveDocument() const;
  // The document owning `db`, or null.
  AcApDocument* document(const AcDbDatabase* db) const;
  int documentCount() const;

  // Makes `doc` current (and the working database its database); with a lock mode other
  // than kNone also locks it, with activate also activates it.
  Acad::ErrorStatus setCurDocument(AcApDocument* doc, AcAp::DocLockMode lockMode = AcAp::kNone,
                                   bool activate = false);
  // Makes `doc` active and current; eDocumentSwitchDisabled while activation is disabled
  // (activating the active document is always allowed).
  Acad::ErrorStatus activateDocument(AcApDocument* doc, bool bPassScript = false);
  Acad::ErrorStatus disableDocumentActivation();
  Acad::ErrorStatus enableDocumentActivation();
  bool isDocumentActivationEnabled() const;

  // Counted locks, released one per unlockDocument. kAutoWrite is a no-op on a locked
  // document and is dropped by the next lock request; unlocking kProtectedAutoWrite leaves
  // kAutoWrite. While a kRead lock (a promise that nothing changes) is held, write locks
  // fail with eLockConflict. eInvalidInput for kNone, kNotLocked or an unknown mode;
  // unlockDocument of an unlocked document is eNotApplicable.
  Acad::ErrorStatus lockDocument(AcApDocument* doc, AcAp::DocLockMode mode = AcAp::kWrite,
                                 const ACHAR* pGlobalCmdName = nullptr, const ACHAR* pLocalCmdName = nullptr,
                                 bool prompt = true);
  Acad::ErrorStatus unlockDocument(AcApDocument* doc);

  AcApDocumentIterator* newAcApDocumentIterator();

  // Application context: inside executeInApplicationContext, or while no document is open.
  bool isApplicationContext() const;
  void executeInApplicationContext(void (*procAddr)(void*), void* pData) const;

  // A new drawing (the default drawing for a null or empty template, otherwise the template
  // DXF read with dxfIn), named DrawingN.dwg, made active and current. Only in application
  // context (eInvalidContext otherwise); a template that cannot be read returns dxfIn's
  // status and opens nothing.
  Acad::ErrorStatus appContextNewDocument(const ACHAR* pszTemplateName);
  // Opens a DXF drawing file and makes it active and current. Only in application context;
  // a missing or unreadable file returns dxfIn's status and opens nothing.
  Acad::ErrorStatus appContextOpenDocument(const ACHAR* pszDrawingName);
  // The NEW command: a default drawing, made active and current, from any context.
  Acad::ErrorStatus newDocument();
  // The OPEN command would ask for a file in a dialog; headless, the dialog is cancelled
  // (eUserBreak).
  Acad::ErrorStatus openDocument();
  // Discards the document and its database (unsaved changes are lost). Another open
  // document, the active one if it survives, becomes current.
  Acad::ErrorStatus closeDocument(AcApDocument* doc);

  // Queues the string on the document's command line (tdhost::commandLine reads the
  // queue); with bActivate the document is activated first.
  Acad::ErrorStatus sendStringToExecute(AcApDocument* doc, const ACHAR* pszExecute, bool bActivate = true,
                                        bool bWrapUpInactiveDoc = false, bool bEchoString = true);
  // Characters waiting on the document's command line (0 for a document not open).
  int inputPending(AcApDocument* doc);

 private:
  friend AcApDocManager* acDocManagerPtr();
  friend void tdhost::resetDocuments();
  friend bool tdhost::isOpenDocument(const AcApDocument* doc);
  AcApDocManager();
  struct State;
  std::unique_ptr<State> mState;
};
