#include <TibXml/WXmlNode.h>

#include "DomCalls.h"

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>
#include <calls/EngineCall.h>

#include <utility>

using tibxml::dom::assignList;
using tibxml::dom::selectNodes;
using tibxml::engine::EngineString;
using tibxml::engine::interfaceOf;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::textFrom;
using tibxml::engine::valueFrom;

namespace {

/// Null for what has no identity: no node, or one that does not give it.
IUnknown* identityOf(IUnknown* node) noexcept {
    return tibxml::engine::quietly(static_cast<IUnknown*>(nullptr), [node] {
        IUnknown* identity = nullptr;
        tibxml::dom::askIdentity(node, identity);
        return identity;
    });
}

using AttributeMap = EnginePtr<IXMLDOMNamedNodeMap>;

/// Adds the name of one attribute; an attribute that cannot be had is passed over.
void appendName(AttributeMap const& attributes, LONG index, std::vector<CString>& names) {
    WXmlNodePtr attribute;
    EngineString name;
    if (FAILED(attributes->get_item(index, attribute.GetAddress())) || !attribute) return;
    if (SUCCEEDED(attribute->get_nodeName(name.address()))) names.push_back(name.toCString());
}

// What callers catch when a path selects nothing.
constexpr int nothingFound = 0;

} // namespace

static_assert(sizeof(WXmlNode) == sizeof(void*));

WXmlNode::WXmlNode() = default;

WXmlNode::WXmlNode(WXmlNodePtr const& node) : slot{node} {}

WXmlNode::WXmlNode(WXmlNode const& other) : slot{*other.slot} {}

WXmlNode::WXmlNode(WXmlNode&& other) noexcept = default;

WXmlNode& WXmlNode::operator=(WXmlNode const& other) {
    Validate(true);
    slot.Keep(other.Slot());
    return *this;
}

WXmlNode& WXmlNode::operator=(WXmlNode&& other) noexcept = default;

WXmlNode::~WXmlNode() = default;

void WXmlNode::Swap(WXmlNode& other) noexcept {
    slot.Swap(other.slot);
}

bool WXmlNode::operator==(WXmlNode const& other) const noexcept {
    if (!slot || !other.slot) return static_cast<bool>(slot) == static_cast<bool>(other.slot);
    IUnknown* const left = *slot;
    IUnknown* const right = *other.slot;
    return left == right || identityOf(left) == identityOf(right);
}

bool WXmlNode::operator!=(WXmlNode const& other) const noexcept {
    return !(*this == other);
}

bool WXmlNode::IsValid() const noexcept {
    return tibxml::engine::quietly(false, [this] { return static_cast<bool>(Slot()); });
}

/// Gives a handle that was moved from a place again; whether it had one already.
bool WXmlNode::Validate(bool /*flag*/) const {
    if (slot) return true;
    slot = EngineSlot<WXmlNodePtr>{};
    return false;
}

WXmlNodePtr const& WXmlNode::Slot() const {
    Validate(true);
    return *slot;
}

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
    // Only elements have a map; calling the empty one reports that.
    if (FAILED(attributes->get_length(&length))) return;
    for (LONG index = 0; index < length; ++index) {
        appendName(attributes, index, names);
    }
}

WXmlNodePtr WXmlNode::Select(WXPath const& path) const {
    WXmlNodePtr const& node = Slot();
    WXmlNodePtr found;
    EngineString const expression{path.ToString()};
    invoke(node, &IXMLDOMNode::selectSingleNode, expression.get(), found.GetAddress());
    return found;
}

bool WXmlNode::DoesNodeExist(WXPath const& path) const noexcept {
    return quietly(false, [&] { return static_cast<bool>(Select(path)); });
}

bool WXmlNode::GetNode(WXPath const& path, WXmlNode& node) const noexcept {
    return quietly(false, [&] {
        WXmlNodePtr found = Select(path);
        if (!found) return false;
        node.slot.Keep(std::move(found));
        return true;
    });
}

WXmlNode WXmlNode::GetNode(WXPath const& path) const {
    WXmlNodePtr const found = Select(path);
    if (!found) throw nothingFound;
    return found;
}

WXmlNode WXmlNode::GetNodeNoThrow(WXPath const& path) const {
    return Select(path);
}

bool WXmlNode::GetNodes(WXPath const& path, WXmlNodeList& nodes) const noexcept {
    return quietly(false, [&] { return assignList(selectNodes(Slot(), path), nodes); });
}

WXmlNodeList WXmlNode::GetNodes(WXPath const& path) const {
    WXmlNodeListPtr const found = selectNodes(Slot(), path);
    if (!found) throw nothingFound;
    return found;
}

WXmlNodeList WXmlNode::GetNodes(WXPath const& path, bool /*flag*/) const {
    return selectNodes(*slot, path);
}

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
