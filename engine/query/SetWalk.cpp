#include "SetWalk.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <utility>

#include <tree/Document.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

namespace tibxml::query {

namespace {

// The number stands beside the pointer, so that sorting need not look into the nodes.
struct Place {
    std::uint32_t order;
    tree::Node* node;

    bool operator<(Place const& other) const noexcept { return order < other.order; }

    bool operator==(Place const& other) const noexcept { return order == other.order; }
};

// Namespace nodes have no numbers: they stand after their element and before its attributes.
std::uint32_t placeOf(tree::Node const* node) noexcept {
    return tree::isNamespaceNode(node) && node->parent != nullptr ? node->parent->order
                                                                  : node->order;
}

bool comesBeforeWithNamespaces(tree::Node const* a, tree::Node const* b) noexcept {
    std::uint32_t const placeA = placeOf(a);
    std::uint32_t const placeB = placeOf(b);
    if (placeA != placeB) return placeA < placeB;
    if (a == b || !tree::isNamespaceNode(b)) return false;
    if (!tree::isNamespaceNode(a)) return true;
    int const order = tree::declaredPrefix(a).compare(tree::declaredPrefix(b));
    return order != 0 ? order < 0 : a->text() < b->text();
}

void sortWithNamespaces(std::vector<tree::Node*>& nodes) {
    std::sort(nodes.begin(), nodes.end(), comesBeforeWithNamespaces);
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

using Nodes = std::vector<tree::Node*>;
using Seen = std::unordered_set<tree::Node const*>;

void append(Step const& step, Evaluation const& evaluation, tree::Node* context, Nodes& out) {
    walkStep(step, evaluation, context, [&out](tree::Node* node) {
        out.push_back(node);
        return false;
    });
}

Nodes outermost(NodeSequence const& contexts) {
    Nodes result;
    for (tree::Node* node : contexts.nodes) {
        if (result.empty() || !contexts.nested || !tree::isInSubtree(node, result.back()))
            result.push_back(node);
    }
    return result;
}

// What follows an inner node includes what follows the nodes around it; what follows a later node
// is less.
Nodes earliestEnd(NodeSequence const& contexts) {
    tree::Node* best = contexts.nodes.front();
    for (tree::Node* node : contexts.nodes) {
        if (!tree::isInSubtree(node, best)) break;
        best = node;
    }
    return {best};
}

// The first of each family of siblings.
template <class Iterator>
Nodes onePerParent(Iterator first, Iterator last) {
    Nodes result;
    Seen parents;
    for (; first != last; ++first)
        if (parents.insert((*first)->parent).second) result.push_back(*first);
    return result;
}

// Siblings are found from one of them; attributes have no siblings and must not stand in the way of
// the nodes that share their parent.
Nodes withoutAttributes(Nodes const& nodes) {
    Nodes result;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(result),
                 [](tree::Node* node) { return !node->is(tree::NodeKind::attribute); });
    return result;
}

// The contexts that are enough for a step without positions; its results then have no repetitions
// beyond what sorting drops.
Nodes sufficientContexts(Axis axis, NodeSequence const& contexts) {
    switch (axis) {
    case Axis::descendant:
    case Axis::descendantOrSelf:
    case Axis::descendantChild: return outermost(contexts);
    case Axis::following: return earliestEnd(contexts);
    case Axis::preceding: return {contexts.nodes.back()};
    case Axis::parent: return onePerParent(contexts.nodes.begin(), contexts.nodes.end());
    case Axis::followingSibling: {
        Nodes const nodes = withoutAttributes(contexts.nodes);
        return onePerParent(nodes.begin(), nodes.end());
    }
    case Axis::precedingSibling: {
        Nodes const nodes = withoutAttributes(contexts.nodes);
        return onePerParent(nodes.rbegin(), nodes.rend());
    }
    default: return contexts.nodes;
    }
}

// All ancestors of all context nodes, each looked at once.
Nodes ancestorsOfAll(Step const& step, Evaluation const& evaluation, Nodes const& contexts) {
    ResolvedTest const test{step.test, evaluation};
    Nodes result;
    Seen seen;
    for (tree::Node* context : contexts) {
        tree::Node* node = step.axis == Axis::ancestor ? context->parent : context;
        for (; node != nullptr && seen.insert(node).second; node = node->parent)
            if (test(node) && step.predicates.hold(evaluation, node)) result.push_back(node);
    }
    return result;
}

Nodes gather(Step const& step, Evaluation const& evaluation, Nodes const& contexts) {
    bool const climbs = step.axis == Axis::ancestor || step.axis == Axis::ancestorOrSelf;
    if (climbs && !step.predicates.positional() && contexts.size() > 1)
        return ancestorsOfAll(step, evaluation, contexts);
    Nodes result;
    for (tree::Node* context : contexts)
        append(step, evaluation, context, result);
    return result;
}

// Whether results from several contexts come in document order when the contexts do.
bool keepsOrder(Axis axis, bool nested) noexcept {
    if (axis == Axis::self || givesAttributes(axis)) return true;
    return !nested && (axis == Axis::child || goesDown(axis));
}

bool givesNested(Step const& step, NodeSequence const& contexts, bool single) noexcept {
    switch (step.axis) {
    case Axis::attribute:
    case Axis::namespaces: return false;
    case Axis::self:
    case Axis::child: return contexts.nested;
    case Axis::parent:
    case Axis::followingSibling:
    case Axis::precedingSibling: return !single;
    default: return true;
    }
}

} // namespace

void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes) {
    if (nodes.size() < 2) return;
    document.ensureOrder(nodes.front());
    if (document.hasNamespaceNodes()) return sortWithNamespaces(nodes);
    std::vector<Place> places;
    places.reserve(nodes.size());
    for (tree::Node* node : nodes)
        places.push_back({node->order, node});
    if (!std::is_sorted(places.begin(), places.end())) std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    nodes.clear();
    for (Place const& place : places)
        nodes.push_back(place.node);
}

NodeSequence walkSet(Step const& step, Evaluation const& evaluation, NodeSequence const& contexts) {
    if (contexts.nodes.empty()) return {};
    bool const fewerDo = step.outermostCovers() || !step.predicates.positional();
    Nodes const sources = fewerDo ? sufficientContexts(step.axis, contexts) : contexts.nodes;
    bool const single = sources.size() == 1;
    bool const nested = contexts.nested && !single && !(fewerDo && goesDown(step.axis));
    NodeSequence result{gather(step, evaluation, sources), givesNested(step, contexts, single)};
    if (single && isReverse(step.axis)) {
        std::reverse(result.nodes.begin(), result.nodes.end());
    } else if (!single && !keepsOrder(step.axis, nested)) {
        sortInDocumentOrder(evaluation.document, result.nodes);
    }
    return result;
}

bool walkRest(std::vector<Step> const& steps, std::size_t first, std::size_t end,
              Evaluation const& evaluation, NodeSequence nodes, NodeVisitor visitor) {
    for (std::size_t i = first; i < end; ++i)
        nodes = walkSet(steps[i], evaluation, nodes);
    for (tree::Node* node : nodes.nodes)
        if (visitor(node)) return true;
    return false;
}

} // namespace tibxml::query
