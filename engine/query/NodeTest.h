// What a step asks of a node itself.
#pragma once

#include <cstdint>
#include <string>

#include <tree/Name.h>
#include <tree/NamespaceNodes.h>
#include <tree/Node.h>

#include "Evaluation.h"

namespace tibxml::query {

struct NodeTest {
    enum class Kind : std::uint8_t {
        nothing, // no node passes
        node,
        text,
        comment,
        processingInstruction,
        processingInstructionNamed, // target == text
        element,
        elementNamed,       // names[name]
        elementInNamespace, // namespace == text
        attribute,
        attributeNamed,
        attributeInNamespace,
        namespaceNamed, // text == "xmlns:" and the prefix
    };

    Kind kind = Kind::node;
    std::uint32_t name = 0;
    std::string text;
};

inline bool asksForName(NodeTest const& test) noexcept {
    return test.kind == NodeTest::Kind::elementNamed || test.kind == NodeTest::Kind::attributeNamed;
}

// No node of the document at hand has the name.
inline bool asksForMissingName(NodeTest const& test, Evaluation const& evaluation) noexcept {
    return asksForName(test) && evaluation.names[test.name] == nullptr;
}

// A test with its name looked up in the document at hand.
class ResolvedTest {
public:
    ResolvedTest(NodeTest const& test, Evaluation const& evaluation) noexcept
        : test_{test},
          name_{asksForName(test) ? evaluation.names[test.name] : nullptr} {}

    NodeTest::Kind kind() const noexcept { return test_.kind; }

    tree::Name const* name() const noexcept { return name_; }

    bool operator()(tree::Node const* node) const noexcept {
        using tree::NodeKind;
        using Kind = NodeTest::Kind;
        switch (test_.kind) {
        case Kind::nothing: return false;
        case Kind::node: return !node->is(NodeKind::declaration);
        case Kind::text: return node->isText();
        case Kind::comment: return node->is(NodeKind::comment);
        case Kind::processingInstruction: return node->is(NodeKind::processingInstruction);
        case Kind::processingInstructionNamed:
            return node->is(NodeKind::processingInstruction) && node->name->qualified == test_.text;
        case Kind::element: return node->is(NodeKind::element);
        case Kind::elementNamed:
            return node->is(NodeKind::element) && node->name->expanded == name_;
        case Kind::elementInNamespace:
            return node->is(NodeKind::element) && node->name->uri == test_.text;
        case Kind::attribute: return isAttribute(node);
        case Kind::attributeNamed: return isAttribute(node) && node->name->expanded == name_;
        case Kind::attributeInNamespace: return isAttribute(node) && node->name->uri == test_.text;
        case Kind::namespaceNamed:
            return tree::isNamespaceNode(node) && node->name->qualified == test_.text;
        }
        return false;
    }

private:
    static bool isAttribute(tree::Node const* node) noexcept {
        return node->is(tree::NodeKind::attribute) && !node->name->declaresNamespace;
    }

    NodeTest const& test_;
    tree::Name const* name_;
};

} // namespace tibxml::query
