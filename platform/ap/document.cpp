// AcApDocument and AcApDocumentIterator: a drawing's names, database, locks and queue.
#include "acdocman.h"

#include <filesystem>

#include "document_impl.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcApDocument)
TDHOST_DEFINE_MEMBERS(AcApDocumentIterator)

namespace tdhost {

std::string utf8(const std::wstring& wide) {
  std::string out;
  for (wchar_t wc : wide) {
    const auto c = static_cast<char32_t>(wc);
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

std::wstring fromUtf8(const std::string& bytes) {
  std::wstring out;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    const int extra = b < 0x80 ? 0 : b < 0xE0 ? 1 : b < 0xF0 ? 2 : 3;
    char32_t c = extra == 0 ? b : extra == 1 ? (b & 0x1F) : extra == 2 ? (b & 0x0F) : (b & 0x07);
    ++i;
    for (int k = 0; k < extra && i < bytes.size(); ++k, ++i) c = (c << 6) | (static_cast<unsigned char>(bytes[i]) & 0x3F);
    out += static_cast<wchar_t>(c);
  }
  return out;
}

std::wstring absoluteFileName(const std::wstring& name) {
  std::error_code ignored;
  const std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(utf8(name)), ignored);
  return fromUtf8(path.lexically_normal().string());
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
