#include "Schemas.h"

#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/VariantT.h>

#include "Failure.h"
#include "LoadDocument.h"

namespace tibxml::tool {

namespace {

SchemasPtr newSchemas() {
    void* object = nullptr;
    HRESULT const result = CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                                            IID_IXMLDOMSchemaCollection2, &object);
    if (FAILED(result)) _com_issue_error(result);
    SchemasPtr schemas{static_cast<IXMLDOMSchemaCollection2*>(object), false};
    OleRun(schemas);
    return schemas;
}

CString targetNamespace(WXmlDocPtr const& schema) {
    return WXmlDoc{schema}.GetRootNode().Attribute(L"@targetNamespace").GetString(L"");
}

// A schema is no result, so a bad one is an input that does not work.
WXmlDocPtr loadSchemaDocument(std::string const& file) {
    try {
        return loadFromPath(file);
    } catch (Failure& failure) {
        failure.status = ExitStatus::failed;
        throw;
    }
}

} // namespace

SchemasPtr loadSchema(std::string const& file) {
    WXmlDocPtr const schema = loadSchemaDocument(file);
    SchemasPtr schemas = newSchemas();
    _bstr_t uri{targetNamespace(schema)};
    HRESULT const result = schemas->add(uri.GetBSTR(), _variant_t{static_cast<IUnknown*>(schema)});
    if (FAILED(result)) _com_issue_errorex(result, schemas, IID_IXMLDOMSchemaCollection);
    return schemas;
}

} // namespace tibxml::tool
