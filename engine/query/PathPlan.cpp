#include "PathPlan.h"

#include <utility>

namespace tibxml::query {

namespace {

// Longer paths go on set by set, because each step walked depth first takes a part of the stack.
constexpr std::size_t longestDepthFirst = 16;

// What is known about the nodes after the steps so far.
enum class Stream : std::uint8_t {
    single,
    flat,      // in order, none within another
    nested,    // in order, some may lie within others
    unordered, // each once, in whatever order
};

class Planner {
public:
    Planner(std::vector<Step> const& steps, Order order) noexcept : steps_{steps}, order_{order} {}

    PathPlan run() {
        for (Step const& step : steps_) {
            if (plan_.depthFirst() == longestDepthFirst || !add(step)) break;
            plan_.handovers.push_back(Handover::plain);
        }
        plan_.spread = stream_ == Stream::single              ? Spread::single
                       : stream_ == Stream::flat && !grouped_ ? Spread::flat
                                                              : Spread::nested;
        return std::move(plan_);
    }

private:
    // False when the step cannot be walked depth first.
    bool add(Step const& step) {
        switch (stream_) {
        case Stream::single: return addToSingle(step);
        case Stream::flat: return addToFlat(step);
        case Stream::nested: return addToNested(step);
        case Stream::unordered: return addToUnordered(step);
        }
        return false;
    }

    bool become(Stream stream) noexcept {
        stream_ = stream;
        return true;
    }

    bool addToSingle(Step const& step) {
        if (isReverse(step.axis) && order_ == Order::document && !step.selectsOne()) return false;
        if (step.selectsOne()) return true;
        if (isReverse(step.axis)) return become(Stream::unordered);
        if (goesDown(step.axis) || step.axis == Axis::following) return become(Stream::nested);
        return become(Stream::flat);
    }

    bool addToFlat(Step const& step) {
        if (goesDown(step.axis)) return become(Stream::nested);
        return step.axis == Axis::self || step.axis == Axis::child || givesAttributes(step.axis);
    }

    bool addToNested(Step const& step) {
        if (step.axis == Axis::self) return true;
        if (givesAttributes(step.axis)) return become(Stream::flat);
        if (step.outermostCovers()) return handOver(Handover::outermost, Stream::nested);
        if (step.axis != Axis::child) return false;
        return order_ == Order::any ? become(Stream::unordered)
                                    : handOver(Handover::grouped, Stream::flat);
    }

    bool addToUnordered(Step const& step) noexcept {
        return step.axis == Axis::self || step.axis == Axis::child || givesAttributes(step.axis);
    }

    // The step before must be able to tell which of its nodes lie within one another: it goes down
    // and looks at each node by itself.
    bool handOver(Handover handover, Stream stream) {
        Step const& before = steps_[plan_.depthFirst() - 1];
        bool const able = before.axis == Axis::descendant || before.axis == Axis::descendantOrSelf;
        if (!able || before.predicates.positional()) return false;
        plan_.handovers.back() = handover;
        grouped_ = grouped_ || handover == Handover::grouped;
        return become(stream);
    }

    std::vector<Step> const& steps_;
    Order order_;
    Stream stream_ = Stream::single;
    bool grouped_ = false;
    PathPlan plan_;
};

// `//` and a step that goes down from there make one step down.
bool canMerge(Step const& step) noexcept {
    return step.axis == Axis::child || (goesDown(step.axis) && step.outermostCovers());
}

Axis mergedAxis(Step const& step) noexcept {
    if (step.axis != Axis::child) return step.axis;
    return step.predicates.positional() ? Axis::descendantChild : Axis::descendant;
}

} // namespace

PathPlan planSteps(std::vector<Step> const& steps, Order order) {
    return Planner{steps, order}.run();
}

std::vector<Step> simplified(std::vector<Step> steps) {
    std::vector<Step> result;
    for (Step& step : steps) {
        if (step.isPlainSelf()) continue;
        if (!result.empty() && result.back().isPlainDescent() && canMerge(step)) {
            step.axis = mergedAxis(step);
            result.pop_back();
        }
        result.push_back(std::move(step));
    }
    return result;
}

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

// The node, or the next one after it within the context's subtree, that the step selects.
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
