// One step of a path, and what it selects from one context node.
#pragma once

#include <vector>

#include "Axis.h"
#include "NodeTest.h"
#include "NodeVisitor.h"
#include "Predicates.h"

namespace tibxml::query {

struct Step {
    Axis axis = Axis::child;
    NodeTest test;
    Predicates predicates;

    // `.` without more, or what stands for it.
    bool isPlainSelf() const noexcept {
        return axis == Axis::self && test.kind == NodeTest::Kind::node && predicates.empty();
    }

    // What `//` stands for.
    bool isPlainDescent() const noexcept {
        return axis == Axis::descendantOrSelf && test.kind == NodeTest::Kind::node &&
               predicates.empty();
    }

    // At most one node from one context node.
    bool selectsOne() const noexcept {
        if (axis == Axis::descendantChild) return false; // one from each parent
        return axis == Axis::self || axis == Axis::parent || predicates.selectsOne() ||
               test.kind == NodeTest::Kind::attributeNamed ||
               test.kind == NodeTest::Kind::namespaceNamed;
    }

    // From nested context nodes the outermost selects all that the inner ones select.
    bool outermostCovers() const noexcept {
        return axis == Axis::descendantChild || (goesDown(axis) && !predicates.positional());
    }
};

// Gives the selected nodes in the direction of the axis. True when the visitor stopped.
bool walkStep(Step const& step, Evaluation const& evaluation, tree::Node* context,
              NodeVisitor visitor);

// The same with another axis in place of the step's own.
bool walkStepAlong(Axis axis, Step const& step, Evaluation const& evaluation, tree::Node* context,
                   NodeVisitor visitor);

} // namespace tibxml::query
