#include "DomCalls.h"

#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <string>
#include <string_view>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::engine::valueFrom;

namespace {

constexpr std::size_t none = std::wstring_view::npos;

bool isNameCharacter(wchar_t c) noexcept {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') ||
           c == L'_' || c == L'-' || c == L'.';
}

/// A name that is one step by itself, whatever rules a step is taken apart by.
bool isPlainName(std::wstring_view name) noexcept {
    return !name.empty() && name.front() != L'.' &&
           std::all_of(name.begin(), name.end(), isNameCharacter);
}

void setAttribute(WXmlNode const& element, std::wstring_view selector, std::wstring_view value) {
    element.Attribute(CString{selector}).SetString(CString{value});
}

/// The attributes that the clauses of a step stand for: `@name='value'`. The value is what lies
/// between the first and the last character after the "=", whatever these are.
void setAttributesFromClauses(WXmlNode const& element, WXPath const& step) {
    CString clause;
    for (int i = 0; step.GetFilterClause(i, clause); ++i) {
        std::wstring_view const text = clause.view();
        std::size_t const equals = text.find(L'=');
        if (!text.starts_with(L'@') || equals == none) continue;
        std::wstring_view value = text.substr(equals + 1);
        value = value.size() < 2 ? std::wstring_view{} : value.substr(1, value.size() - 2);
        setAttribute(element, text.substr(0, equals), value);
    }
}

WXPath withoutClauses(WXPath step) {
    CString clause;
    while (step.GetFilterClause(0, clause)) {
        step.RemoveFilterClause(clause);
    }
    return step;
}

/// The value in a predicate `@name='value'`: from after the first apostrophe (the whole predicate
/// when there is none) to the first blank or apostrophe.
std::wstring_view valueInPredicate(std::wstring_view predicate) noexcept {
    std::size_t const quote = predicate.find(L'\'');
    std::wstring_view const value = quote == none ? predicate : predicate.substr(quote + 1);
    return value.substr(0, value.find_first_of(L" '"));
}

/// The number at the start of a predicate, 0 when there is none.
int positionInPredicate(std::wstring_view predicate) {
    return predicate.empty() || !std::iswdigit(static_cast<std::wint_t>(predicate.front()))
               ? 0
               : static_cast<int>(std::min(
                     std::wcstol(std::wstring{predicate}.c_str(), nullptr, 10), 2147483647L));
}

/// Where a path is cut into its first steps and the rest: at the first "/", a "//" at the start
/// left alone. A "/" within a predicate counts too.
std::size_t splitPoint(std::wstring_view path) noexcept {
    return path.find(L'/', path.starts_with(L"//") ? 2 : 0);
}

/// Whether the first step of a path is a child by its plain name: such a path selects nothing from
/// a node without children.
bool beginsWithChild(std::wstring_view path) noexcept {
    return isPlainName(path.substr(0, path.find(L'/')));
}

WXPath pathFrom(std::wstring_view text) {
    return WXPath{CString{text}};
}

void append(WXmlNodePtr const& parent, WXmlNodePtr const& child) {
    invoke(parent, &IXMLDOMNode::appendChild, child.GetInterfacePtr(), nullptr);
}

WXmlNodePtr appendElement(WXmlNodePtr const& parent, EngineString const& name,
                          wchar_t const* namespaceURI) {
    auto const document = objectFrom(parent, &IXMLDOMNode::get_ownerDocument);
    WXmlNodePtr element = tibxml::dom::newElement(document, name, namespaceURI);
    append(parent, element);
    return element;
}

void insert(WXmlNodePtr const& parent, WXmlNodePtr const& child, WXmlNodePtr const& before) {
    invoke(parent, &IXMLDOMNode::insertBefore, child.GetInterfacePtr(),
           _variant_t{before.GetInterfacePtr()}, nullptr);
}

void putAttribute(WXmlNodePtr const& element, WXmlNodePtr const& attribute) {
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

WXmlNode WXmlNode::CreateChild(wchar_t const* name, wchar_t const* namespaceURI) {
    Validate(true);
    std::wstring_view const text = name != nullptr ? std::wstring_view{name} : std::wstring_view{};
    if (isPlainName(text)) return appendElement(Slot(), EngineString{text}, namespaceURI);
    WXPath const step = WXPath{name}.GetLeaf();
    WXmlNode element =
        appendElement(Slot(), EngineString{withoutClauses(step).ToString()}, namespaceURI);
    setAttributesFromClauses(element, step);
    return element;
}

WXmlNode WXmlNode::EnsureDescendantExists(WXPath const& path) noexcept {
    Validate(true);
    return quietly(WXmlNode{}, [&] { return EnsureSteps(path.ToString().view()); });
}

// Each turn makes the steps up to the next "/" exist and goes on from there: a loop, because a path
// may be longer than the stack is deep.
WXmlNode WXmlNode::EnsureSteps(std::wstring_view path) {
    WXmlNode node = *this;
    bool isNew = false; // made just now, so without children
    while (true) {
        if (!isNew || !beginsWithChild(path)) {
            if (WXmlNode found = node.GetNodeNoThrow(pathFrom(path)); found.IsValid()) return found;
        }
        std::size_t const split = splitPoint(path);
        if (split == none) return node.CreateStep(path);
        WXPath const head = pathFrom(path.substr(0, split));
        WXmlNode const existing = isNew && beginsWithChild(head.ToString().view())
                                      ? WXmlNode{}
                                      : node.GetNodeNoThrow(head);
        isNew = !existing.IsValid();
        node = isNew ? node.CreateStep(path.substr(0, split)) : existing;
        bool const searchesBelow = path.substr(split, 2) == L"//";
        path = path.substr(searchesBelow ? split : split + 1);
    }
}

// One step that selects nothing yet.
WXmlNode WXmlNode::CreateStep(std::wstring_view step) {
    CString const text{step};
    std::size_t const bracket = step.find(L'[');
    if (bracket != none) return CreateFromPredicates(step, bracket);
    if (!step.starts_with(L'@')) return CreateChild(text, nullptr);
    Attribute(text).SetString(L"");
    return GetNode(WXPath{text});
}

// The predicates apply in their order: attributes go on the node made last, a position adds nodes
// until there are so many.
WXmlNode WXmlNode::CreateFromPredicates(std::wstring_view step, std::size_t bracket) {
    CString const name{step.substr(0, bracket)};
    WXmlNode node = CreateChild(name, nullptr);
    while (bracket != none) {
        std::size_t const end = std::min(step.find(L']', bracket + 1), step.size());
        std::wstring_view const predicate = step.substr(bracket + 1, end - bracket - 1);
        std::size_t const equals = predicate.find(L'=');
        if (equals != none) {
            setAttribute(node, predicate.substr(0, equals), valueInPredicate(predicate));
        } else {
            WXmlNodeList present;
            int missing = positionInPredicate(predicate);
            if (GetNodes(WXPath{name}, present)) missing -= present.Count();
            for (; missing > 0; --missing) {
                node = CreateChild(name, nullptr);
            }
        }
        bracket = step.find(L'[', end);
    }
    return node;
}

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
        if (IsAttributeNode()) return putAttribute(parent.Slot(), Slot());
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
