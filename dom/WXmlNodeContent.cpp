#include <TibXml/EngineCall.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlValueAccessor.h>

using tibxml::engine::EngineString;
using tibxml::engine::textFrom;

namespace {

using AttributeMap = EnginePtr<IXMLDOMNamedNodeMap>;

/// Adds the name of one attribute; an attribute that cannot be had is passed over.
void appendName(AttributeMap const& attributes, LONG index, std::vector<CString>& names) {
    WXmlNodePtr attribute;
    EngineString name;
    if (FAILED(attributes->get_item(index, attribute.GetAddress())) || !attribute) return;
    if (SUCCEEDED(attribute->get_nodeName(name.address()))) names.push_back(name.toCString());
}

} // namespace

CString WXmlNode::GetName() const {
    return textFrom(Slot(), &IXMLDOMNode::get_nodeName).toCString();
}

CString WXmlNode::GetXML() const {
    return textFrom(Slot(), &IXMLDOMNode::get_xml).toCString();
}

CString WXmlNode::SaveToString() const {
    return IsValid() ? GetXML() : CString{};
}

WXmlValueAccessor WXmlNode::Value() const {
    return {Slot(), L"."};
}

WXmlValueAccessor WXmlNode::Attribute(wchar_t const* name) const {
    return {Slot(), name};
}

void WXmlNode::GetAttributes(std::vector<CString>& names) const {
    WXmlNodePtr const& node = Slot();
    names.clear();
    AttributeMap attributes;
    if (FAILED(node->get_attributes(attributes.GetAddress()))) return;
    LONG length = 0;
    // Only elements have a map; calling the empty one is what tells the caller.
    if (FAILED(attributes->get_length(&length))) return;
    for (LONG index = 0; index < length; ++index) {
        appendName(attributes, index, names);
    }
}
