#include "DomCalls.h"

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

using tibxml::dom::assignList;
using tibxml::dom::selectNodes;
using tibxml::engine::createObject;
using tibxml::engine::EngineString;
using tibxml::engine::interfaceOf;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::textFrom;
using tibxml::engine::valueFrom;

namespace {

// What callers catch when a handle has no document at all.
constexpr int noDocument = 1;

/// A deep copy of a document's root that belongs to another document.
EnginePtr<IXMLDOMElement> copyOfRoot(WXmlDocPtr const& source, WXmlDocPtr const& target) {
    auto const root = objectFrom(source, &IXMLDOMDocument::get_documentElement);
    WXmlNodePtr copy;
    invoke(target, &IXMLDOMDocument3::importNode, root.GetInterfacePtr(), VARIANT_TRUE,
           copy.GetAddress());
    return interfaceOf<IXMLDOMElement>(copy);
}

using SchemasPtr = EnginePtr<IXMLDOMSchemaCollection2>;

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

CString WXmlDoc::SaveToString() const {
    return textFrom(Document(), &IXMLDOMNode::get_xml).toCString();
}

bool WXmlDoc::IsLoaded() const {
    return Document() && objectFrom(Document(), &IXMLDOMDocument::get_documentElement);
}

WXmlNode WXmlDoc::GetRootNode() const {
    if (!Document()) throw noDocument;
    auto const root = objectFrom(Document(), &IXMLDOMDocument::get_documentElement);
    return interfaceOf<IXMLDOMNode>(root);
}

WXmlNode WXmlDoc::GetRootNode() {
    return const_cast<WXmlDoc const*>(this)->GetRootNode();
}

WXmlNode WXmlDoc::CreateNode(wchar_t const* name, wchar_t const* namespaceURI) const {
    if (!Document()) throw noDocument;
    return tibxml::dom::newElement(Document(), EngineString{name}, namespaceURI);
}

void WXmlDoc::SetSelectionNamespaces(wchar_t const* namespaces) {
    if (!Document()) return;
    invoke(Document(), &IXMLDOMDocument2::setProperty, EngineString{L"SelectionNamespaces"}.get(),
           _variant_t{namespaces});
}

bool WXmlDoc::GetNodes(WXPath const& path, WXmlNodeList& nodes) const noexcept {
    return quietly(false, [&] {
        auto const found = selectNodes(Document(), path);
        if (!found) return false;
        return assignList(found, nodes);
    });
}

WXmlNodeList WXmlDoc::GetNodes(WXPath const& path) const {
    return quietly(WXmlNodeListPtr{}, [&] { return selectNodes(Document(), path); });
}

WXmlDoc WXmlDoc::Clone() const {
    WXmlDoc clone{false};
    try {
        if (!clone.CreateDocument()) return clone;
        auto const root = copyOfRoot(Document(), clone.Document());
        invoke(clone.Document(), &IXMLDOMDocument::putref_documentElement, root.GetInterfacePtr());
    } catch (...) {
        clone.ReleaseDocument();
    }
    return clone;
}

bool WXmlDoc::ApplyXSLT(WXmlDoc& stylesheet) noexcept {
    return quietly(false, [&] {
        invoke(stylesheet.Document(), &IXMLDOMDocument2::setProperty,
               EngineString{L"AllowDocumentFunction"}.get(), _variant_t{true});
        invoke(Document(), &IXMLDOMNode::transformNodeToObject,
               stylesheet.Document().GetInterfacePtr(), _variant_t{Document().GetInterfacePtr()});
        return true;
    });
}

bool WXmlDoc::Validate(wchar_t const* schemaPath) noexcept {
    return quietly(false, [&] {
        WXmlDoc schema{false};
        SchemasPtr schemas;
        if (!schema.Load(schemaPath) || createObject(CLSID_XMLSchemaCache60, schemas) != S_OK)
            return false;
        if (!addSchema(schemas, schema.Document())) return false;
        if (validate(Document(), schemas) == 0) return true;
        // Settles the flag for the whole process; the answer does not matter yet.
        static_cast<void>(tibxml::dom::isTestMode());
        return false;
    });
}
