#include "NewElement.h"

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>

using tibxml::engine::EngineString;
using tibxml::engine::interfaceOf;
using tibxml::engine::objectFrom;
using tibxml::engine::textFrom;

namespace {

// What callers catch when a handle has no document at all.
constexpr int noDocument = 1;

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
