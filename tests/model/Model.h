// What editing does to trees, in the plainest form: the reference that the engine is compared with.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace model {

enum class Kind { document, element, attribute, text, cdata, comment };

struct Node {
    Kind kind;
    std::wstring name;      // element, attribute
    std::wstring text;      // attribute, text, CDATA section, comment
    Node* document;         // the document that it belongs to; a document belongs to itself
    Node* parent = nullptr; // of an attribute: its element
    std::vector<Node*> children;
    std::vector<Node*> attributes;

    bool is(Kind other) const { return kind == other; }
};

// All nodes there ever were: a reference stays valid whatever becomes of its node.
class Nodes {
public:
    Node& newDocument();
    Node& newNode(Node& document, Kind kind, std::wstring const& name, std::wstring const& text);

    // A detached copy in the same document.
    Node& copyOf(Node const& original, bool deep);

    // What a path of names selects from an element, made where it is missing.
    Node& ensure(Node& element, std::vector<std::wstring> const& names);

    void setText(Node& node, std::wstring const& text);

    // Gives the attribute of that name a value; one that is missing comes last.
    void setAttribute(Node& element, std::wstring const& name, std::wstring const& value);

private:
    std::deque<Node> all_;
};

Node& rootOf(Node& node);
bool isInside(Node const& node, Node const& ancestor); // itself included
std::size_t sizeOf(Node const& subtree);
Node* findAttribute(Node const& element, std::wstring const& name);

// Takes a node out of its parent, if it has one.
void detach(Node& node);

// Puts a node in front of a child of a parent, last for null. Nothing happens when it cannot stand
// there.
void insert(Node& parent, Node& child, Node* before);

// The same for an attribute, which takes the place of one with its name.
void attach(Node& element, Node& attribute);

// The nodes that "//node() | //@*" selects in a tree, and whether a node is among those.
std::vector<Node*> everythingBelow(Node& root);

// An absolute path of positions that leads to a node from any node of its tree.
std::wstring pathTo(Node& node);

std::wstring xmlOf(Node const& node);

} // namespace model
