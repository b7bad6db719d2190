#include "TestMode.h"

#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::valueFrom;

namespace {

using SchemasPtr = EnginePtr<IXMLDOMSchemaCollection2>;

/// Makes an empty collection of schemas; `schemas` stays empty when that fails.
HRESULT createSchemas(SchemasPtr& schemas) {
    EnginePtr<IUnknown> object;
    void* made = nullptr;
    HRESULT code =
        CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL, IID_IUnknown, &made);
    if (FAILED(code)) return code;
    object.Attach(static_cast<IUnknown*>(made));
    code = OleRun(object);
    if (FAILED(code)) return code;
    void* found = nullptr;
    code = object->QueryInterface(IID_IXMLDOMSchemaCollection2, &found);
    if (SUCCEEDED(code)) schemas.Attach(static_cast<IXMLDOMSchemaCollection2*>(found));
    return code;
}

/// Only schemas without a target namespace are for the empty one. Success codes other than `S_OK`
/// mean that the schema cannot be used as it is.
bool addSchema(SchemasPtr const& schemas, IUnknown* schema) {
    invoke(schemas, &IXMLDOMSchemaCollection2::put_validateOnLoad, VARIANT_FALSE);
    return invoke(schemas, &IXMLDOMSchemaCollection::add, EngineString{L""}.get(),
                  _variant_t{schema}) == S_OK;
}

LONG validate(WXmlDocPtr const& document, SchemasPtr const& schemas) {
    invoke(document, &IXMLDOMDocument2::putref_schemas,
           _variant_t{static_cast<IUnknown*>(schemas)});
    auto const error = objectFrom(document, &IXMLDOMDocument2::validate);
    return valueFrom(error, &IXMLDOMParseError::get_errorCode);
}

} // namespace

bool WXmlDoc::Validate(wchar_t const* schemaPath) noexcept {
    return quietly(false, [&] {
        WXmlDoc schema{false};
        SchemasPtr schemas;
        if (!schema.Load(schemaPath) || createSchemas(schemas) != S_OK) return false;
        if (!addSchema(schemas, schema.Document())) return false;
        if (validate(Document(), schemas) == 0) return true;
        // Settles the flag for the whole process; the answer does not matter yet.
        static_cast<void>(tibxml::dom::isTestMode());
        return false;
    });
}
