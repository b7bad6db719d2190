#include "SelectNodes.h"

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/platform/Variant.h>

using tibxml::dom::assignList;
using tibxml::dom::selectNodes;
using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;

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
