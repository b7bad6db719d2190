#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>

using tibxml::engine::interfaceOf;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::valueFrom;

WXmlNode WXmlNode::GetParentNode() const {
    return objectFrom(Slot(), &IXMLDOMNode::get_parentNode);
}

WXmlDoc WXmlNode::GetOwnerDocument() const {
    auto const owner = objectFrom(Slot(), &IXMLDOMNode::get_ownerDocument);
    // Handles hold the third interface, but what makes an owner a document is the second.
    return interfaceOf<IXMLDOMDocument3>(interfaceOf<IXMLDOMDocument2>(owner));
}

WXmlDoc WXmlNode::GetOwnerDocument() {
    return const_cast<WXmlNode const*>(this)->GetOwnerDocument();
}

bool WXmlNode::HasChildren() const noexcept {
    return GetNumChildren() != 0;
}

int WXmlNode::GetNumChildren() const noexcept {
    return quietly(0, [this] {
        auto const children = objectFrom(Slot(), &IXMLDOMNode::get_childNodes);
        return int{valueFrom(children, &IXMLDOMNodeList::get_length)};
    });
}

bool WXmlNode::IsAttributeNode() const noexcept {
    return quietly(
        false, [this] { return valueFrom(Slot(), &IXMLDOMNode::get_nodeType) == NODE_ATTRIBUTE; });
}
