#include "TextOfTarget.h"

#include <TibXml/platform/Variant.h>

namespace tibxml::values {

namespace {

using engine::EngineString;
using engine::interfaceOf;
using engine::invoke;
using engine::textFrom;
using engine::valueFrom;

/// Takes the string out of a variant; what holds nothing is the null string.
EngineString takeString(_variant_t& value) {
    EngineString text;
    if (value.vt == VT_EMPTY) return text;
    if (value.vt != VT_BSTR) _com_issue_error(DISP_E_TYPEMISMATCH);
    *text.address() = value.Detach().bstrVal;
    return text;
}

/// Puts an attribute's exact value in the place of its text; without one the text stands.
void takeExactValue(WXmlNodePtr const& target, EngineString& text) {
    auto const attribute = interfaceOf<IXMLDOMAttribute>(target);
    if (!attribute) return;
    _variant_t value;
    invoke(attribute, &IXMLDOMAttribute::get_value, &value);
    if (value.vt != VT_NULL) text = takeString(value);
}

} // namespace

EngineString textOf(WXmlNodePtr const& target) {
    EngineString text = textFrom(target, &IXMLDOMNode::get_text);
    DOMNodeType const type = valueFrom(target, &IXMLDOMNode::get_nodeType);
    if (type == NODE_ATTRIBUTE) takeExactValue(target, text);
    return text;
}

void setTextOf(WXmlNodePtr const& target, EngineString const& text) {
    invoke(target, &IXMLDOMNode::put_text, text.get());
}

} // namespace tibxml::values
