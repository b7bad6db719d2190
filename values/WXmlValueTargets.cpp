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

/// A text in a variant that does not own it.
VARIANT borrowed(EngineString const& text) noexcept {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text.get();
    return value;
}

/// Gives an element's attribute a text in one call, which most writes are. False when that did not
/// work out for whatever reason: going step by step tells which.
bool setAttribute(WXmlNodePtr const& node, EngineString const& name, EngineString const& text) {
    return quietly(false, [&] {
        auto const element = interfaceOf<IXMLDOMElement>(node);
        return element && element->setAttribute(name.get(), borrowed(text)) == S_OK;
    });
}

} // namespace

WXmlNodePtr WXmlValueAccessor::GetNodeForReading() const noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{}, [this] { return findAttribute(node_, attributeName_); });
}

WXmlNodePtr WXmlValueAccessor::GetNodeForWriting() noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{}, [this] {
        WXmlNodePtr const found = findAttribute(node_, attributeName_);
        return found ? found : addAttribute(node_, attributeName_);
    });
}

void WXmlValueAccessor::Write(EngineString const& text, wchar_t const* typeName) {
    if (target_ == Target::attribute && setAttribute(node_, attributeName_, text)) return;
    WXmlNodePtr const target = GetNodeForWriting();
    if (!target) throw WXmlValueTypeNotFoundException{typeName};
    tibxml::values::setTextOf(target, text);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the target is handed over
CString WXmlValueAccessor::GetNodeTextValue(WXmlNodePtr node) const {
    return node ? tibxml::values::textOf(node).toCString() : CString{};
}
