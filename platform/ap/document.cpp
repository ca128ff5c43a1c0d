// AcApDocument and AcApDocumentIterator: a drawing's names, database, locks and queue.
#include "acdocman.h"

#include <filesystem>

#include "document_impl.h"
#include "dxf/code_page.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcApDocument)
TDHOST_DEFINE_MEMBERS(AcApDocumentIterator)

namespace tdhost {

std::wstring absoluteFileName(const std::wstring& name) {
  std::error_code ignored;
  const std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(dxf::narrow(name)), ignored);
  return dxf::widen(path.lexically_normal().string());
}

void DocumentImpl::setFileName(std::wstring name) {
  fileName = std::move(name);
  const std::size_t slash = fileName.find_last_of(L'/');
  title = slash == std::wstring::npos ? fileName : fileName.substr(slash + 1);
}

std::deque<QueuedCommand>& commandLine(AcApDocument& doc) { return doc.impl().commandLine; }

}  // namespace tdhost

AcApDocument::AcApDocument(std::unique_ptr<tdhost::DocumentImpl> impl) : mImpl(std::move(impl)) {}

AcApDocument::~AcApDocument() = default;

const ACHAR* AcApDocument::fileName() const { return mImpl->fileName.c_str(); }
const ACHAR* AcApDocument::docTitle() const { return mImpl->title.c_str(); }
AcDbDatabase* AcApDocument::database() const { return mImpl->database.get(); }
bool AcApDocument::isQuiescent() const { return mImpl->commandLine.empty(); }
bool AcApDocument::isReadOnly() const { return mImpl->readOnly; }

AcAp::DocLockMode AcApDocument::myLockMode() const {
  static constexpr AcAp::DocLockMode kStrongestFirst[] = {AcAp::kXWrite, AcAp::kProtectedAutoWrite, AcAp::kWrite,
                                                          AcAp::kAutoWrite, AcAp::kRead};
  for (AcAp::DocLockMode mode : kStrongestFirst)
    for (AcAp::DocLockMode held : mImpl->locks)
      if (held == mode) return mode;
  return AcAp::kNotLocked;
}

AcAp::DocLockMode AcApDocument::lockMode(bool bIncludeMyLocks) const {
  return bIncludeMyLocks ? myLockMode() : AcAp::kNotLocked;
}

AcApDocumentIterator::AcApDocumentIterator(AcApDocument* const* docs, int count)
    : mDocs(std::make_unique<AcApDocument*[]>(static_cast<std::size_t>(count))), mCount(count) {
  for (int i = 0; i < count; ++i) mDocs[static_cast<std::size_t>(i)] = docs[i];
}

AcApDocumentIterator::~AcApDocumentIterator() = default;

bool AcApDocumentIterator::done() const { return mIndex >= mCount; }

void AcApDocumentIterator::step() {
  if (mIndex < mCount) ++mIndex;
}

AcApDocument* AcApDocumentIterator::document() {
  if (done()) return nullptr;
  AcApDocument* doc = mDocs[static_cast<std::size_t>(mIndex)];
  // A document closed after the iterator was made is reported as null, never dangling.
  return tdhost::isOpenDocument(doc) ? doc : nullptr;
}
