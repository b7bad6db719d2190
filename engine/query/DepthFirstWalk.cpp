#include "DepthFirstWalk.h"

#include <utility>

#include "SetWalk.h"

namespace tibxml::query {

bool DepthFirstWalk::from(std::size_t step, tree::Node* node) const {
    if (step == plan_.depthFirst()) return visitor_(node);
    switch (plan_.handovers[step]) {
    case Handover::outermost: return outermost(step, node);
    case Handover::grouped: return grouped(step, node);
    case Handover::plain: break;
    }
    return walkStep(steps_[step], evaluation_, node,
                    [this, step](tree::Node* found) { return from(step + 1, found); });
}

// Where a step down starts: at the context node or below.
tree::Node* DepthFirstWalk::firstDown(Step const& step, tree::Node* context) const {
    tree::Node* const first = step.axis == Axis::descendantOrSelf ? context : context->firstChild();
    return first != nullptr ? accepted(step, first, context) : nullptr;
}

// The node, or the next one behind it within the context's subtree, that the step selects.
tree::Node* DepthFirstWalk::accepted(Step const& step, tree::Node* node,
                                     tree::Node* context) const {
    ResolvedTest const test{step.test, evaluation_};
    while (node != nullptr && !(test(node) && step.predicates.hold(evaluation_, node)))
        node = tree::nextInSubtree(node, context);
    return node;
}

bool DepthFirstWalk::outermost(std::size_t step, tree::Node* context) const {
    Step const& down = steps_[step];
    tree::Node* node = firstDown(down, context);
    while (node != nullptr) {
        if (from(step + 1, node)) return true;
        node = tree::nextAfterSubtree(node, context);
        if (node != nullptr) node = accepted(down, node, context);
    }
    return false;
}

// A group is a selected node with all selected nodes within it. Groups do not overlap, so their
// results are in order; within most groups there is nothing to order either.
bool DepthFirstWalk::grouped(std::size_t step, tree::Node* context) const {
    Step const& down = steps_[step];
    tree::Node* node = firstDown(down, context);
    while (node != nullptr) {
        NodeSequence members = groupOf(down, node);
        bool const stopped = members.nodes.empty()
                                 ? from(step + 1, node)
                                 : walkRest(steps_, step + 1, plan_.depthFirst(), evaluation_,
                                            std::move(members), visitor_);
        if (stopped) return true;
        node = tree::nextAfterSubtree(node, context);
        if (node != nullptr) node = accepted(down, node, context);
    }
    return false;
}

// Empty when the head is alone.
NodeSequence DepthFirstWalk::groupOf(Step const& step, tree::Node* head) const {
    NodeSequence members;
    tree::Node* node = tree::nextInSubtree(head, head);
    if (node != nullptr) node = accepted(step, node, head);
    if (node == nullptr) return members;
    members.nested = true;
    members.nodes.push_back(head);
    while (node != nullptr) {
        members.nodes.push_back(node);
        node = tree::nextInSubtree(node, head);
        if (node != nullptr) node = accepted(step, node, head);
    }
    return members;
}

} // namespace tibxml::query
