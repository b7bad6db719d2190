#include <TibXml/WXmlDoc.h>

#include "DomCalls.h"

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>
#include <TibXml/tibutils/Stream.h>
#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>
#include <calls/EngineCall.h>

#include <memory>
#include <utility>

using tibxml::engine::createObject;
using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;
namespace File = TibUtils::SystemIO::File;

namespace {

IUnknown* identityOf(IUnknown* document) {
    IUnknown* identity = nullptr;
    HRESULT const code = tibxml::dom::askIdentity(document, identity);
    if (FAILED(code)) _com_issue_error(code);
    return identity;
}

/// Chooses the engine's parser by an integer with all bits set, not by a truth value: callers'
/// engines are known to take just that.
void useNewParser(WXmlDocPtr const& document) {
    constexpr short allBits = -1;
    invoke(document, &IXMLDOMDocument2::setProperty, EngineString{L"NewParser"}.get(),
           _variant_t{allBits});
}

bool load(WXmlDocPtr const& document, _variant_t const& source) {
    VARIANT_BOOL isSuccessful = VARIANT_FALSE;
    invoke(document, &IXMLDOMDocument::load, source, &isSuccessful);
    if (isSuccessful != VARIANT_FALSE) return true;
    // Settles the flag for the whole process at the first failure; the answer does not matter yet.
    static_cast<void>(tibxml::dom::isTestMode());
    return false;
}

bool save(WXmlDocPtr const& document, _variant_t const& destination) {
    // Success codes other than this one mean that something is missing from what was written.
    return invoke(document, &IXMLDOMDocument::save, destination) == S_OK;
}

/// A backup in a temporary file, which goes with it.
class WTempFileImpl : public WDataBackup {
public:
    ~WTempFileImpl() override {
        quietly(false, [this] { return File::Delete(path); });
    }

    CString path;
};

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
        // A document that does not let go is kept: there is no way to report it.
        return;
    }
}

WXmlDocPtr WXmlDoc::EngineDocument() const noexcept {
    return Document();
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

bool WXmlDoc::CreateDocument() noexcept {
    ReleaseDocument();
    auto const create = [this] {
        WXmlDocPtr document;
        HRESULT const created = createObject(CLSID_DOMDocument60, document);
        slot.Keep(std::move(document));
        useNewParser(Document());
        if (preserveWhiteSpace) Document()->put_preserveWhiteSpace(VARIANT_TRUE);
        return SUCCEEDED(created);
    };
    if (quietly(false, create)) return true;
    ReleaseDocument();
    return false;
}

bool WXmlDoc::Load(wchar_t const* path) noexcept {
    return CreateDocument() && quietly(false, [&] { return load(Document(), path); });
}

bool WXmlDoc::Load(IStream* stream) noexcept {
    if (stream == nullptr) return false;
    return CreateDocument() && quietly(false, [&] { return load(Document(), stream); });
}

bool WXmlDoc::Load(TibUtils::Stream stream) noexcept {
    // The caller may keep the argument alive longer than this call.
    TibUtils::Stream const source{std::move(stream)};
    return Load(static_cast<IStream*>(source));
}

bool WXmlDoc::LoadFromString(wchar_t const* text) noexcept {
    return CreateDocument() && quietly(false, [&] {
               VARIANT_BOOL isSuccessful = VARIANT_FALSE;
               invoke(Document(), &IXMLDOMDocument::loadXML, EngineString{text}.get(),
                      &isSuccessful);
               return isSuccessful != VARIANT_FALSE;
           });
}

WXmlDoc WXmlDoc::CreateFromString(wchar_t const* text) {
    WXmlDoc document{false};
    document.LoadFromString(text);
    return document;
}

WXmlDoc WXmlDoc::CreateFromFile(wchar_t const* path) {
    WXmlDoc document{false};
    document.Load(path);
    return document;
}

WXmlDoc WXmlDoc::CreateFromStream(IStream* stream) {
    WXmlDoc document{false};
    document.Load(stream);
    return document;
}

bool WXmlDoc::Save(wchar_t const* path) const noexcept {
    return Document() && quietly(false, [&] { return save(Document(), path); });
}

bool WXmlDoc::Save(IStream* stream) const noexcept {
    return stream != nullptr && Document() &&
           quietly(false, [&] { return save(Document(), stream); });
}

WDataBackup::~WDataBackup() = default;

WDataBackup* WXmlDoc::Backup() {
    try {
        auto record = std::make_unique<WTempFileImpl>();
        record->path = TibUtils::SystemIO::Path::GetTempFileNameW(nullptr, nullptr, nullptr);
        // Whatever cannot be written shows when the record is restored.
        File::ProbeCreateFile(record->path);
        Save(record->path);
        return record.release();
    } catch (...) {
        return nullptr;
    }
}

void WXmlDoc::Restore(WDataBackup const* backup) {
    Load(static_cast<WTempFileImpl const*>(backup)->path);
}
