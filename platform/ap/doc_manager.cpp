// AcApDocManager: the open documents, the current and active one, locks, application
// context and the command lines; the working database follows the current document.
#include "acdocman.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "dbapserv.h"
#include "document_impl.h"
#include "dxf/code_page.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcApDocManager)

struct AcApDocManager::State {
  std::vector<std::unique_ptr<AcApDocument>> docs;  // oldest first
  AcApDocument* current = nullptr;
  AcApDocument* active = nullptr;
  mutable int appContextDepth = 0;
  bool activationEnabled = true;
  int nextDrawingNumber = 1;

  bool isOpen(const AcApDocument* doc) const {
    return std::any_of(docs.begin(), docs.end(), [doc](const auto& d) { return d.get() == doc; });
  }
  // eOk for an open document, else the status the call reports.
  Acad::ErrorStatus check(const AcApDocument* doc) const {
    if (doc == nullptr) return Acad::eInvalidInput;
    return isOpen(doc) ? Acad::eOk : Acad::eNoDocument;
  }
  void makeCurrent(AcApDocument* doc) {
    current = doc;
    acdbHostApplicationServices()->setWorkingDatabase(doc != nullptr ? doc->database() : nullptr);
  }
};

namespace {

bool isKnownLockMode(AcAp::DocLockMode mode) {
  return mode == AcAp::kAutoWrite || mode == AcAp::kWrite || mode == AcAp::kProtectedAutoWrite ||
         mode == AcAp::kRead || mode == AcAp::kXWrite;
}

bool isWriteLock(AcAp::DocLockMode mode) { return mode != AcAp::kRead; }

}  // namespace

AcApDocManager::AcApDocManager() : mState(std::make_unique<State>()) {}

AcApDocManager::~AcApDocManager() = default;

AcApDocManager* acDocManagerPtr() {
  tdhost::ensureHostInitialized();
  // Never destroyed: databases closed during static destruction would outlive the host
  // services they report to. tdhost::resetDocuments() closes the documents instead.
  static AcApDocManager* manager = new AcApDocManager;
  return manager;
}

AcApDocument* AcApDocManager::curDocument() const { return mState->current; }
AcApDocument* AcApDocManager::mdiActiveDocument() const { return mState->active; }
int AcApDocManager::documentCount() const { return static_cast<int>(mState->docs.size()); }

AcApDocument* AcApDocManager::document(const AcDbDatabase* db) const {
  if (db == nullptr) return nullptr;
  for (const auto& doc : mState->docs)
    if (doc->database() == db) return doc.get();
  return nullptr;
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* doc, AcAp::DocLockMode lockMode, bool activate) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  if (activate) {
    if (Acad::ErrorStatus es = activateDocument(doc); es != Acad::eOk) return es;
  } else {
    mState->makeCurrent(doc);
  }
  return lockMode == AcAp::kNone ? Acad::eOk : lockDocument(doc, lockMode);
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* doc, bool) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  if (!mState->activationEnabled && doc != mState->active) return Acad::eDocumentSwitchDisabled;
  mState->active = doc;
  mState->makeCurrent(doc);
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::disableDocumentActivation() {
  mState->activationEnabled = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::enableDocumentActivation() {
  mState->activationEnabled = true;
  return Acad::eOk;
}

bool AcApDocManager::isDocumentActivationEnabled() const { return mState->activationEnabled; }

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* doc, AcAp::DocLockMode mode, const ACHAR*,
                                               const ACHAR*, bool) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  if (!isKnownLockMode(mode)) return Acad::eInvalidInput;
  std::vector<AcAp::DocLockMode>& locks = doc->impl().locks;
  // An automatic lock only stands in for an absent one, and gives way to any real request.
  if (mode == AcAp::kAutoWrite && !locks.empty()) return Acad::eOk;
  if (!locks.empty() && locks.back() == AcAp::kAutoWrite) locks.pop_back();
  if (isWriteLock(mode) && std::find(locks.begin(), locks.end(), AcAp::kRead) != locks.end())
    return Acad::eLockConflict;
  locks.push_back(mode);
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* doc) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  std::vector<AcAp::DocLockMode>& locks = doc->impl().locks;
  if (locks.empty()) return Acad::eNotApplicable;
  if (locks.back() == AcAp::kProtectedAutoWrite) locks.back() = AcAp::kAutoWrite;
  else locks.pop_back();
  return Acad::eOk;
}

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() {
  std::vector<AcApDocument*> docs;
  for (const auto& doc : mState->docs) docs.push_back(doc.get());
  return new AcApDocumentIterator(docs.data(), static_cast<int>(docs.size()));
}

bool AcApDocManager::isApplicationContext() const {
  return mState->appContextDepth > 0 || mState->docs.empty();
}

void AcApDocManager::executeInApplicationContext(void (*procAddr)(void*), void* pData) const {
  if (procAddr == nullptr) return;
  ++mState->appContextDepth;
  procAddr(pData);
  --mState->appContextDepth;
}

namespace {

std::unique_ptr<tdhost::DocumentImpl> unnamedDocument(int number, std::unique_ptr<AcDbDatabase> db) {
  auto impl = std::make_unique<tdhost::DocumentImpl>();
  impl->database = std::move(db);
  impl->setFileName(L"Drawing" + std::to_wstring(number) + L".dwg");
  return impl;
}

}  // namespace

Acad::ErrorStatus AcApDocManager::appContextNewDocument(const ACHAR* pszTemplateName) {
  if (!isApplicationContext()) return Acad::eInvalidContext;
  auto db = std::make_unique<AcDbDatabase>(true, false);
  if (pszTemplateName != nullptr && *pszTemplateName != 0) {
    if (Acad::ErrorStatus es = db->dxfIn(pszTemplateName); es != Acad::eOk) return es;
  }
  mState->docs.push_back(
      std::unique_ptr<AcApDocument>(new AcApDocument(unnamedDocument(mState->nextDrawingNumber++, std::move(db)))));
  return activateDocument(mState->docs.back().get());
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const ACHAR* pszDrawingName) {
  if (!isApplicationContext()) return Acad::eInvalidContext;
  if (pszDrawingName == nullptr || *pszDrawingName == 0) return Acad::eInvalidInput;
  auto db = std::make_unique<AcDbDatabase>(false, false);
  if (Acad::ErrorStatus es = db->dxfIn(pszDrawingName); es != Acad::eOk) return es;
  auto impl = std::make_unique<tdhost::DocumentImpl>();
  impl->database = std::move(db);
  impl->named = true;
  impl->setFileName(tdhost::absoluteFileName(pszDrawingName));
  // A file already open in another document, or one this process may not write, opens
  // read-only, as the host does for a drawing in use.
  const bool inUse = std::any_of(mState->docs.begin(), mState->docs.end(), [&](const auto& d) {
    return d->impl().named && d->impl().fileName == impl->fileName;
  });
  impl->readOnly = inUse || ::access(tdhost::dxf::narrow(impl->fileName).c_str(), W_OK) != 0;
  mState->docs.push_back(std::unique_ptr<AcApDocument>(new AcApDocument(std::move(impl))));
  return activateDocument(mState->docs.back().get());
}

Acad::ErrorStatus AcApDocManager::newDocument() {
  ++mState->appContextDepth;
  const Acad::ErrorStatus es = appContextNewDocument(nullptr);
  --mState->appContextDepth;
  return es;
}

Acad::ErrorStatus AcApDocManager::openDocument() { return Acad::eUserBreak; }

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* doc) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  auto it = std::find_if(mState->docs.begin(), mState->docs.end(), [doc](const auto& d) { return d.get() == doc; });
  std::unique_ptr<AcApDocument> closing = std::move(*it);
  mState->docs.erase(it);
  if (mState->active == doc) mState->active = mState->docs.empty() ? nullptr : mState->docs.back().get();
  if (mState->current == doc) mState->makeCurrent(mState->active);
  closing.reset();
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* doc, const ACHAR* pszExecute, bool bActivate,
                                                      bool bWrapUpInactiveDoc, bool bEchoString) {
  if (Acad::ErrorStatus es = mState->check(doc); es != Acad::eOk) return es;
  if (pszExecute == nullptr) return Acad::eInvalidInput;
  if (bActivate) {
    if (Acad::ErrorStatus es = activateDocument(doc); es != Acad::eOk) return es;
  }
  doc->impl().commandLine.push_back({pszExecute, bEchoString, bWrapUpInactiveDoc});
  return Acad::eOk;
}

int AcApDocManager::inputPending(AcApDocument* doc) {
  if (mState->check(doc) != Acad::eOk) return 0;
  std::size_t n = 0;
  for (const tdhost::QueuedCommand& c : doc->impl().commandLine) n += c.text.size();
  return static_cast<int>(n);
}

namespace tdhost {

// Compares pointers only: `doc` may have been closed.
bool isOpenDocument(const AcApDocument* doc) { return doc != nullptr && acDocManagerPtr()->mState->isOpen(doc); }

void resetDocuments() {
  AcApDocManager* manager = acDocManagerPtr();
  while (manager->documentCount() > 0) manager->closeDocument(manager->mState->docs.back().get());
  manager->mState->current = nullptr;
  manager->mState->active = nullptr;
  manager->mState->activationEnabled = true;
  manager->mState->nextDrawingNumber = 1;
}

Acad::ErrorStatus saveDocument(AcApDocument& doc, const ACHAR* fileName) {
  DocumentImpl& impl = doc.impl();
  const bool saveAs = fileName != nullptr && *fileName != 0;
  if (!saveAs && !impl.named) return Acad::eInvalidInput;
  const std::wstring target = saveAs ? absoluteFileName(fileName) : impl.fileName;
  if (impl.readOnly && target == impl.fileName) return Acad::eFileAccessErr;
  if (Acad::ErrorStatus es = impl.database->dxfOut(target.c_str()); es != Acad::eOk) return es;
  impl.named = true;
  impl.readOnly = false;
  impl.setFileName(target);
  return Acad::eOk;
}

}  // namespace tdhost
