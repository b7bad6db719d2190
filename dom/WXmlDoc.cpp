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

WXmlDoc::WXmlDoc(bool preserveWhiteSpace_)
    : cell{std::make_unique<WXmlDocPtr>()},
      preserveWhiteSpace{preserveWhiteSpace_} {}

WXmlDoc::WXmlDoc(WXmlDocPtr const& document)
    : cell{std::make_unique<WXmlDocPtr>(document)},
      preserveWhiteSpace{false} {}

WXmlDoc::WXmlDoc(WXmlDoc const& other)
    : IBackupRestorable{other},
      cell{std::make_unique<WXmlDocPtr>(other.Document())},
      preserveWhiteSpace{other.preserveWhiteSpace} {}

WXmlDoc::WXmlDoc(WXmlDoc&& other) noexcept
    : cell{std::move(other.cell)},
      preserveWhiteSpace{std::exchange(other.preserveWhiteSpace, false)} {}

WXmlDoc& WXmlDoc::operator=(WXmlDoc const& other) {
    if (this == &other) return *this;
    if (!cell) cell = std::make_unique<WXmlDocPtr>();
    *cell = other.Document();
    preserveWhiteSpace = other.preserveWhiteSpace;
    return *this;
}

WXmlDoc& WXmlDoc::operator=(WXmlDoc&& other) noexcept {
    if (this == &other) return *this;
    cell = std::move(other.cell);
    std::swap(preserveWhiteSpace, other.preserveWhiteSpace);
    return *this;
}

WXmlDoc::~WXmlDoc() = default;

void WXmlDoc::Swap(WXmlDoc& other) noexcept {
    cell.swap(other.cell);
    std::swap(preserveWhiteSpace, other.preserveWhiteSpace);
}

void WXmlDoc::ReleaseDocument() noexcept {
    if (!cell) return;
    try {
        cell->Release();
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
    static constinit WXmlDocPtr const none;
    return cell ? *cell : none;
}
