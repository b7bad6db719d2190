#include "Model.h"

#include <algorithm>

namespace model {

namespace {

bool isText(Node const& node) {
    return node.is(Kind::text) || node.is(Kind::cdata);
}

bool hasOtherElement(Node const& document, Node const& child) {
    return std::any_of(document.children.begin(), document.children.end(),
                       [&](Node const* c) { return c->is(Kind::element) && c != &child; });
}

bool canStand(Node const& parent, Node const& child) {
    if (child.is(Kind::attribute) || child.is(Kind::document) || isInside(parent, child))
        return false;
    if (parent.is(Kind::element)) return true;
    return parent.is(Kind::document) && !isText(child) &&
           !(child.is(Kind::element) && hasOtherElement(parent, child));
}

std::vector<Node*>& listWith(Node& parent, Node const& node) {
    return node.is(Kind::attribute) ? parent.attributes : parent.children;
}

void adopt(Node& node, Node* document) {
    node.document = document;
    for (Node* attribute : node.attributes)
        attribute->document = document;
    for (Node* child : node.children)
        adopt(*child, document);
}

void put(Node& parent, Node& node, std::vector<Node*>::iterator place) {
    listWith(parent, node).insert(place, &node);
    node.parent = &parent;
    adopt(node, parent.document);
}

std::wstring escaped(std::wstring const& text, bool inAttribute) {
    std::wstring result;
    for (wchar_t const c : text) {
        switch (c) {
        case L'&': result += L"&amp;"; break;
        case L'<': result += L"&lt;"; break;
        case L'>': result += L"&gt;"; break;
        case L'"': result += inAttribute ? L"&quot;" : L"\""; break;
        default: result += c;
        }
    }
    return result;
}

std::wstring xmlOfElement(Node const& element) {
    std::wstring xml = L"<" + element.name;
    for (Node const* attribute : element.attributes)
        xml += L" " + xmlOf(*attribute);
    std::wstring content;
    for (Node const* child : element.children)
        content += xmlOf(*child);
    return xml + (content.empty() ? L"/>" : L">" + content + L"</" + element.name + L">");
}

std::wstring xmlOfDocument(Node const& document) {
    std::wstring xml;
    for (Node const* child : document.children)
        xml += xmlOf(*child) + L"\n";
    return xml;
}

void collect(Node& node, std::vector<Node*>& found) {
    found.insert(found.end(), node.attributes.begin(), node.attributes.end());
    for (Node* child : node.children) {
        found.push_back(child);
        collect(*child, found);
    }
}

// The first match of a path of names in document order.
Node* select(Node& from, std::vector<std::wstring> const& names, std::size_t step) {
    if (step == names.size()) return &from;
    for (Node* child : from.children) {
        if (!child->is(Kind::element) || child->name != names[step]) continue;
        if (Node* found = select(*child, names, step + 1)) return found;
    }
    return nullptr;
}

} // namespace

Node& Nodes::newDocument() {
    Node& document = all_.emplace_back(Node{Kind::document, {}, {}, nullptr, nullptr, {}, {}});
    document.document = &document;
    return document;
}

Node& Nodes::newNode(Node& document, Kind kind, std::wstring const& name,
                     std::wstring const& text) {
    return all_.emplace_back(Node{kind, name, text, &document, nullptr, {}, {}});
}

Node& Nodes::copyOf(Node const& original, bool deep) {
    Node& copy = newNode(*original.document, original.kind, original.name, original.text);
    for (Node const* attribute : original.attributes)
        put(copy, copyOf(*attribute, false), copy.attributes.end());
    if (deep) {
        for (Node const* child : original.children)
            put(copy, copyOf(*child, true), copy.children.end());
    }
    return copy;
}

Node& Nodes::ensure(Node& element, std::vector<std::wstring> const& names) {
    if (Node* found = select(element, names, 0)) return *found;
    Node* child = select(element, {names.front()}, 0);
    if (child == nullptr) {
        child = &newNode(*element.document, Kind::element, names.front(), {});
        insert(element, *child, nullptr);
    }
    return names.size() == 1 ? *child : ensure(*child, {names.begin() + 1, names.end()});
}

void Nodes::setText(Node& node, std::wstring const& text) {
    if (!node.is(Kind::element)) {
        node.text = text;
        return;
    }
    while (!node.children.empty())
        detach(*node.children.front());
    if (!text.empty()) insert(node, newNode(*node.document, Kind::text, {}, text), nullptr);
}

void Nodes::setAttribute(Node& element, std::wstring const& name, std::wstring const& value) {
    Node* attribute = findAttribute(element, name);
    if (attribute == nullptr) {
        attribute = &newNode(*element.document, Kind::attribute, name, {});
        attach(element, *attribute);
    }
    attribute->text = value;
}

Node& rootOf(Node& node) {
    return node.parent != nullptr ? rootOf(*node.parent) : node;
}

bool isInside(Node const& node, Node const& ancestor) {
    return &node == &ancestor || (node.parent != nullptr && isInside(*node.parent, ancestor));
}

std::size_t sizeOf(Node const& subtree) {
    std::size_t size = 1 + subtree.attributes.size();
    for (Node const* child : subtree.children)
        size += sizeOf(*child);
    return size;
}

Node* findAttribute(Node const& element, std::wstring const& name) {
    for (Node* attribute : element.attributes) {
        if (attribute->name == name) return attribute;
    }
    return nullptr;
}

void detach(Node& node) {
    if (node.parent == nullptr) return;
    auto& list = listWith(*node.parent, node);
    list.erase(std::find(list.begin(), list.end(), &node));
    node.parent = nullptr;
}

void insert(Node& parent, Node& child, Node* before) {
    if (before != nullptr && (before->parent != &parent || before->is(Kind::attribute))) return;
    if (before == &child || !canStand(parent, child)) return;
    detach(child);
    put(parent, child, std::find(parent.children.begin(), parent.children.end(), before));
}

void attach(Node& element, Node& attribute) {
    if (!element.is(Kind::element) || attribute.parent == &element) return;
    detach(attribute);
    Node* const old = findAttribute(element, attribute.name);
    auto& list = element.attributes;
    put(element, attribute, std::find(list.begin(), list.end(), old));
    if (old != nullptr) detach(*old);
}

std::vector<Node*> everythingBelow(Node& root) {
    std::vector<Node*> found;
    collect(root, found);
    return found;
}

std::wstring pathTo(Node& node) {
    if (node.parent == nullptr) return L"/";
    std::wstring const above = node.parent->parent == nullptr ? L"/" : pathTo(*node.parent) + L"/";
    if (node.is(Kind::attribute)) return above + L"@" + node.name;
    auto const& siblings = node.parent->children;
    auto const index = std::find(siblings.begin(), siblings.end(), &node) - siblings.begin();
    return above + L"node()[" + std::to_wstring(index + 1) + L"]";
}

std::wstring xmlOf(Node const& node) {
    switch (node.kind) {
    case Kind::document: return xmlOfDocument(node);
    case Kind::element: return xmlOfElement(node);
    case Kind::attribute: return node.name + L"=\"" + escaped(node.text, true) + L"\"";
    case Kind::text: return escaped(node.text, false);
    case Kind::cdata: return L"<![CDATA[" + node.text + L"]]>";
    case Kind::comment: return L"<!--" + node.text + L"-->";
    }
    return {};
}

} // namespace model
