#include <TibXml/EngineCall.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/Variant.h>

using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::valueFrom;

namespace {

void append(WXmlNodePtr const& parent, WXmlNodePtr const& child) {
    invoke(parent, &IXMLDOMNode::appendChild, child.GetInterfacePtr(), nullptr);
}

void insert(WXmlNodePtr const& parent, WXmlNodePtr const& child, WXmlNodePtr const& before) {
    invoke(parent, &IXMLDOMNode::insertBefore, child.GetInterfacePtr(),
           _variant_t{before.GetInterfacePtr()}, nullptr);
}

void setAttribute(WXmlNodePtr const& element, WXmlNodePtr const& attribute) {
    auto const attributes = objectFrom(element, &IXMLDOMNode::get_attributes);
    invoke(attributes, &IXMLDOMNamedNodeMap::setNamedItem, attribute.GetInterfacePtr(), nullptr);
}

/// Puts a node at an index among the children of a parent, last when there are not that many.
void insertAt(WXmlNodePtr const& parent, WXmlNodePtr const& child, int index) {
    auto const children = objectFrom(parent, &IXMLDOMNode::get_childNodes);
    if (valueFrom(children, &IXMLDOMNodeList::get_length) <= index) return append(parent, child);
    WXmlNodePtr before;
    invoke(children, &IXMLDOMNodeList::get_item, index, before.GetAddress());
    insert(parent, child, before);
}

/// Runs an edit that reports nothing.
template <class Edit>
void silently(Edit const& edit) noexcept {
    quietly(false, [&] {
        edit();
        return true;
    });
}

} // namespace

void WXmlNode::Prune() noexcept {
    silently([this] {
        if (IsAttributeNode()) return;
        auto const parent = objectFrom(Slot(), &IXMLDOMNode::get_parentNode);
        if (parent) invoke(parent, &IXMLDOMNode::removeChild, Slot().GetInterfacePtr(), nullptr);
    });
}

void WXmlNode::DeleteChild(WXPath const& path) {
    Validate(true);
    WXmlNodeList nodes;
    if (!GetNodes(path.GetLeaf(), nodes)) return;
    for (int i = 0; i < nodes.Count(); ++i) {
        nodes.Node(i).Prune();
    }
}

void WXmlNode::DeleteNodes(WXPath const& path) {
    WXmlNodeList nodes;
    if (!GetNodes(path, nodes)) return;
    int const count = nodes.Count();
    for (int i = 0; i < count; ++i) {
        nodes.Node(i).Prune();
    }
}

void WXmlNode::Graft(WXmlNode& parent, int index) noexcept {
    constexpr int last = -1;
    silently([&] {
        if (IsAttributeNode()) return setAttribute(parent.Slot(), Slot());
        if (index == last) return append(parent.Slot(), Slot());
        insertAt(parent.Slot(), Slot(), index);
    });
}

void WXmlNode::Graft(WXmlNode& parent, WXmlNode const& before) noexcept {
    silently([&] {
        if (!before.IsValid()) return append(parent.Slot(), Slot());
        insert(parent.Slot(), Slot(), before.Slot());
    });
}

WXmlNode WXmlNode::Clone(bool deep) const {
    if (!IsValid()) return {};
    WXmlNodePtr copy;
    invoke(Slot(), &IXMLDOMNode::cloneNode, deep ? VARIANT_TRUE : VARIANT_FALSE, copy.GetAddress());
    return copy;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a handle of its own, as the callers know it
void WXmlNode::CopyAttributeFrom(WXmlNode source, wchar_t const* name,
                                 wchar_t const* defaultValue) {
    Validate(true);
    CString const unchanged{defaultValue};
    CString const value = source.Attribute(name).Get<CString>().value_or(unchanged);
    WXmlValueAccessor attribute = Attribute(name);
    if (value == unchanged) {
        attribute.Clear();
    } else {
        attribute.SetString(value);
    }
}
