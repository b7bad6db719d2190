// Documents and their schemas.
#include "DocumentObject.h"

#include <vector>

#include <reader/LocalFile.h>
#include <validation/Schema.h>

#include "ParseErrorObject.h"
#include "SchemaCache.h"
#include "Sources.h"

namespace tibxml::com {

namespace {

constexpr std::uint32_t errorNoRoot = 0xC00CE223;
constexpr std::uint32_t errorNoSchema = 0xC00CE224;

reader::ReadError errorOf(std::uint32_t code, std::string reason, long line = 0) {
    reader::ReadError error;
    error.code = code;
    error.reason = std::move(reason);
    error.line = line;
    return error;
}

std::vector<reader::ReadError> errorsOf(std::vector<validation::Mismatch> mismatches) {
    std::vector<reader::ReadError> errors;
    errors.reserve(mismatches.size());
    for (validation::Mismatch& mismatch : mismatches)
        errors.push_back(errorOf(mismatch.code, std::move(mismatch.reason), mismatch.line));
    return errors;
}

bool isEmpty(VARIANT const& value) noexcept {
    bool const isObject = value.vt == VT_UNKNOWN || value.vt == VT_DISPATCH;
    return value.vt == VT_EMPTY || value.vt == VT_NULL || (isObject && value.punkVal == nullptr);
}

} // namespace

HRESULT DocumentObject::get_schemas(VARIANT* schemas) noexcept {
    if (schemas == nullptr) return E_POINTER;
    *schemas = {};
    if (!schemas_) return S_FALSE;
    schemas->vt = VT_UNKNOWN;
    schemas->punkVal =
        static_cast<IXMLDOMSchemaCollection2*>(ComPtr<SchemaCache>{schemas_}.detach());
    return S_OK;
}

HRESULT DocumentObject::putref_schemas(VARIANT schemas) noexcept {
    return guarded(IID_IXMLDOMDocument2, [&] {
        schemas_ =
            isEmpty(schemas) ? ComPtr<SchemaCache>{} : SchemaCache::behind(objectIn(schemas));
        return S_OK;
    });
}

HRESULT DocumentObject::validate(IXMLDOMParseError** error) noexcept {
    HRESULT const result = reply(IID_IXMLDOMDocument2, error,
                                 [&] { return newParseError(validationErrors(), origin_.path); });
    if (FAILED(result)) return result;
    LONG code = 0;
    (*error)->get_errorCode(&code);
    return code == 0 ? S_OK : S_FALSE;
}

std::vector<reader::ReadError> DocumentObject::validationErrors() {
    tree::Node const* const root = storage().documentElement();
    if (root == nullptr) return {errorOf(errorNoRoot, "the document has no root element")};
    std::string_view const uri = root->name->uri;
    auto const schema = schemas_ ? schemas_->schemaFor(uri) : nullptr;
    if (!schema) {
        return {errorOf(errorNoSchema,
                        "there is no schema for the namespace '" + std::string{uri} + "'")};
    }
    auto mismatches = validation::validate(*schema, storage());
    if (!mismatches.empty()) findLines(mismatches);
    return errorsOf(std::move(mismatches));
}

// In the file as long as it is known to hold this very content, as far as that can be known.
void DocumentObject::findLines(std::span<validation::Mismatch> mismatches) {
    std::string const path = isAsLoaded() ? reader::canonicalPath(origin_.path) : std::string{};
    reader::LocalFile file = reader::LocalFile::at(path); // not open if the path is empty
    if (file.isOpen()) return validation::findLines(mismatches, file);
    validation::findLines(mismatches, storage());
}

} // namespace tibxml::com
