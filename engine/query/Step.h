// One step of a path, and what it selects from one context node.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <tree/Name.h>
#include <tree/NamespaceNodes.h>
#include <tree/Node.h>

#include "Axis.h"
#include "Evaluation.h"
#include "Predicates.h"

namespace tibxml::query {

/// What a step asks of a node itself.
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

/// No node of the document at hand has the name.
inline bool asksForMissingName(NodeTest const& test, Evaluation const& evaluation) noexcept {
    return asksForName(test) && evaluation.names[test.name] == nullptr;
}

/// A test with its name looked up in the document at hand.
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

struct Step {
    Axis axis = Axis::child;
    NodeTest test;
    Predicates predicates;

    /// `.` without more, or what stands for it.
    bool isPlainSelf() const noexcept {
        return axis == Axis::self && test.kind == NodeTest::Kind::node && predicates.empty();
    }

    /// What `//` stands for.
    bool isPlainDescent() const noexcept {
        return axis == Axis::descendantOrSelf && test.kind == NodeTest::Kind::node &&
               predicates.empty();
    }

    /// At most one node from one context node.
    bool selectsOne() const noexcept {
        if (axis == Axis::descendantChild) return false; // one from each parent
        return axis == Axis::self || axis == Axis::parent || predicates.selectsOne() ||
               test.kind == NodeTest::Kind::attributeNamed ||
               test.kind == NodeTest::Kind::namespaceNamed;
    }

    /// From nested context nodes the outermost selects all that the inner ones select.
    bool outermostCovers() const noexcept {
        return axis == Axis::descendantChild || (goesDown(axis) && !predicates.positional());
    }
};

/// Gives the selected nodes in the direction of the axis. True when the visitor stopped.
bool walkStep(Step const& step, Evaluation const& evaluation, tree::Node* context,
              NodeVisitor visitor);

/// The same with another axis in place of the step's own.
bool walkStepAlong(Axis axis, Step const& step, Evaluation const& evaluation, tree::Node* context,
                   NodeVisitor visitor);

} // namespace tibxml::query
