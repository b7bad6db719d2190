#include <TibXml/WXmlDoc.h>

#include "Identity.h"

#include <TibXml/platform/ComError.h>

#include <utility>

namespace {

IUnknown* identityOf(IUnknown* document) {
    IUnknown* identity = nullptr;
    HRESULT const code = tibxml::dom::askIdentity(document, identity);
    if (FAILED(code)) _com_issue_error(code);
    return identity;
}

} // namespace

static_assert(sizeof(WXmlDoc) == 3 * sizeof(void*),
              "the table of functions, one pointer and the flag");

WXmlDoc::WXmlDoc(bool preserveWhiteSpace_) : preserveWhiteSpace{preserveWhiteSpace_} {}

WXmlDoc::WXmlDoc(WXmlDocPtr const& document) : slot{document}, preserveWhiteSpace{false} {}

WXmlDoc::WXmlDoc(WXmlDoc const& other)
    : IBackupRestorable{other},
      slot{other.Document()},
      preserveWhiteSpace{other.preserveWhiteSpace} {}

WXmlDoc::WXmlDoc(WXmlDoc&& other) noexcept
    : slot{std::move(other.slot)},
      preserveWhiteSpace{std::exchange(other.preserveWhiteSpace, false)} {}

WXmlDoc& WXmlDoc::operator=(WXmlDoc const& other) {
    if (this == &other) return *this;
    slot.Keep(other.Document());
    preserveWhiteSpace = other.preserveWhiteSpace;
    return *this;
}

WXmlDoc& WXmlDoc::operator=(WXmlDoc&& other) noexcept {
    if (this == &other) return *this;
    slot = std::move(other.slot);
    std::swap(preserveWhiteSpace, other.preserveWhiteSpace);
    return *this;
}

WXmlDoc::~WXmlDoc() = default;

void WXmlDoc::Swap(WXmlDoc& other) noexcept {
    slot.Swap(other.slot);
    std::swap(preserveWhiteSpace, other.preserveWhiteSpace);
}

void WXmlDoc::ReleaseDocument() noexcept {
    try {
        slot.Release();
    } catch (...) {
        // A document that does not let go is kept: there is nobody to tell.
        return;
    }
}

bool WXmlDoc::operator==(WXmlDoc const& other) const {
    IUnknown* const left = Document();
    IUnknown* const right = other.Document();
    return left == right || identityOf(left) == identityOf(right);
}

bool WXmlDoc::operator!=(WXmlDoc const& other) const {
    return !(*this == other);
}

WXmlDocPtr const& WXmlDoc::Document() const noexcept {
    return *slot;
}
