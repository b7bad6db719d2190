#include "TextOfTarget.h"

#include <TibXml/WXmlValueAccessor.h>

using tibxml::engine::EngineString;
using tibxml::engine::interfaceOf;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;

namespace {

WXmlNodePtr findAttribute(WXmlNodePtr const& node, EngineString const& name) {
    WXmlNodePtr found;
    auto const attributes = objectFrom(node, &IXMLDOMNode::get_attributes);
    invoke(attributes, &IXMLDOMNamedNodeMap::getNamedItem, name.get(), found.GetAddress());
    return found;
}

/// Puts a new attribute without text on an element.
WXmlNodePtr addAttribute(WXmlNodePtr const& node, EngineString const& name) {
    auto const document = objectFrom(node, &IXMLDOMNode::get_ownerDocument);
    EnginePtr<IXMLDOMAttribute> created;
    invoke(document, &IXMLDOMDocument::createAttribute, name.get(), created.GetAddress());
    auto attribute = interfaceOf<IXMLDOMNode>(created);
    auto const attributes = objectFrom(node, &IXMLDOMNode::get_attributes);
    WXmlNodePtr result;
    invoke(attributes, &IXMLDOMNamedNodeMap::setNamedItem, attribute.GetInterfacePtr(),
           result.GetAddress());
    return attribute;
}

} // namespace

WXmlNodePtr WXmlValueAccessor::GetNodeForReading() const noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{},
                   [this] { return findAttribute(node_, EngineString{attributeName_}); });
}

WXmlNodePtr WXmlValueAccessor::GetNodeForWriting() noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{}, [this] {
        EngineString const name{attributeName_};
        WXmlNodePtr const found = findAttribute(node_, name);
        return found ? found : addAttribute(node_, name);
    });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the target is handed over
CString WXmlValueAccessor::GetNodeTextValue(WXmlNodePtr node) const {
    return node ? tibxml::values::textOf(node).toCString() : CString{};
}
