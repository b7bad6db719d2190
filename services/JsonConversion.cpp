#include <TibXml/JsonConversion.h>

#include <TibXml/WXPath.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/tibutils/Json.h>
#include <calls/EngineCall.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

using TibUtils::Variant;
using TibUtils::Json::Array;
using TibUtils::Json::Object;
using tibxml::engine::EngineString;
using tibxml::engine::NodeAccess;

// For look-ups as those of the handle, except that they do not take running out of memory for there
// being nothing.
struct tibxml::engine::NodeAccess {
    static WXmlNodePtr const& pointerOf(WXmlNode const& node) { return node.Slot(); }
};

namespace {

/// The value of a member if it is there and of this kind, else null.
template <class Kind>
Kind const* member(Object const& object, wchar_t const* name) {
    return object.HasValue(name) ? object.GetValue(name).TryGet<Kind>() : nullptr;
}

CString const* tagOf(Variant const& value) {
    auto const* const object = value.TryGet<Object>();
    return object == nullptr ? nullptr : member<CString>(*object, L"tag");
}

void appendAttributes(std::wstring& xml, Object const& attributes) {
    for (std::size_t i = 0; i < attributes.GetSize(); ++i) {
        Variant const& value = attributes.GetValue(i);
        if (!value.Is<CString>()) continue;
        xml.append(1, L' ').append(attributes.GetValueName(i).view()).append(1, L'=');
        xml += TibUtils::Json::ValueToString(value, 0).view();
    }
}

/// An element whose end tag is still to be written. The stack of them is this one and not the
/// program's, which deep values would exhaust.
struct OpenElement {
    CString const* tag;
    Array const* children; ///< null for none
    std::size_t next;

    bool hasNext() const noexcept { return children != nullptr && next < children->GetSize(); }
};

OpenElement begin(std::wstring& xml, Variant const& value, CString const& tag) {
    auto const& object = value.Get<Object>();
    xml.append(1, L'<').append(tag.view());
    if (auto const* const attributes = member<Object>(object, L"attributes"))
        appendAttributes(xml, *attributes);
    xml += L'>';
    return {&tag, member<Array>(object, L"children"), 0};
}

void append(std::wstring& xml, Variant const& value, CString const& tag) {
    std::vector<OpenElement> open{begin(xml, value, tag)};
    while (!open.empty()) {
        OpenElement& element = open.back();
        if (element.hasNext()) {
            Variant const& child = element.children->GetValue(element.next++);
            if (CString const* const childTag = tagOf(child))
                open.push_back(begin(xml, child, *childTag));
        } else {
            xml.append(L"</").append(element.tag->view()).append(1, L'>');
            open.pop_back();
        }
    }
}

bool requireMemory(HRESULT code) {
    if (code == E_OUTOFMEMORY) _com_issue_error(code);
    return SUCCEEDED(code);
}

bool hasChildren(WXmlNode const& node) {
    EnginePtr<IXMLDOMNodeList> children;
    LONG length = 0;
    return requireMemory(NodeAccess::pointerOf(node)->get_childNodes(children.GetAddress())) &&
           children && requireMemory(children->get_length(&length)) && length != 0;
}

void addName(EnginePtr<IXMLDOMNamedNodeMap> const& attributes, LONG index,
             std::vector<CString>& names) {
    WXmlNodePtr attribute;
    EngineString name;
    if (!requireMemory(attributes->get_item(index, attribute.GetAddress())) || !attribute) return;
    if (requireMemory(attribute->get_nodeName(name.address()))) names.push_back(name.toCString());
}

std::vector<CString> namesOfAttributes(WXmlNode const& node) {
    std::vector<CString> names;
    EnginePtr<IXMLDOMNamedNodeMap> attributes;
    LONG length = 0;
    if (!requireMemory(NodeAccess::pointerOf(node)->get_attributes(attributes.GetAddress())))
        return names;
    // Only elements have a map; calling the empty one reports that.
    if (!requireMemory(attributes->get_length(&length))) return names;
    for (LONG index = 0; index < length; ++index)
        addName(attributes, index, names);
    return names;
}

Object attributesOf(WXmlNode const& node, std::vector<CString> const& names) {
    Object attributes;
    for (CString const& name : names)
        attributes.AddValue(name, node.Attribute(L"@" + name).GetString_throws());
    return attributes;
}

/// Adds all but the children.
void describe(WXmlNode const& node, Object& object) {
    object.AddValue(L"tag", node.GetName());
    std::vector<CString> const names = namesOfAttributes(node);
    if (!names.empty()) object.AddValue(L"attributes", attributesOf(node, names));
}

/// Describes a whole tree with a stack of its own, so that depth costs memory and nothing else.
class Conversion {
public:
    void run(WXmlNode const& node, Object& result) {
        describe(node, result);
        if (!hasChildren(node)) return;
        openChildrenOf(node, {});
        while (open_.size() > 1 || open_.back().next < open_.back().count)
            step();
        result.AddValue(L"children", std::move(open_.back().children));
    }

private:
    /// An element whose children are being described. The outermost one's object is the result,
    /// which is kept elsewhere.
    struct Open {
        Object object;
        Array children;
        WXmlNodeList nodes;
        int count;
        int next;
    };

    void openChildrenOf(WXmlNode const& node, Object object) {
        WXmlNodeList nodes = node.GetNodes(childElements_);
        int const count = nodes.Count();
        open_.push_back({std::move(object), {}, std::move(nodes), count, 0});
    }

    void step() {
        Open& parent = open_.back();
        if (parent.next < parent.count) {
            describeChild(parent.nodes.Node(parent.next++));
        } else {
            parent.object.AddValue(L"children", std::move(parent.children));
            Object finished = std::move(parent.object);
            open_.pop_back();
            open_.back().children.AddValue(std::move(finished));
        }
    }

    void describeChild(WXmlNode const& node) {
        Object object;
        describe(node, object);
        if (hasChildren(node)) {
            openChildrenOf(node, std::move(object));
        } else {
            open_.back().children.AddValue(std::move(object));
        }
    }

    WXPath const childElements_{L"child::*"};
    std::vector<Open> open_;
};

} // namespace

bool JsonConvertToXml(Variant const& value, CString& xml) {
    CString const* const tag = tagOf(value);
    if (tag == nullptr) return false;
    std::wstring text;
    append(text, value, *tag);
    xml.Append(text);
    return true;
}

bool JsonConvertFromXml(WXmlNode const& node, Variant& value) {
    value = Object{};
    Conversion{}.run(node, value.Get<Object>());
    return true;
}
