#include "Step.h"

#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

#include "AttributeIndex.h"
#include "Axis.h"

namespace tibxml::query {

namespace {

// `//a[1]`: every descendant that the step selects as a child of its parent, in document order.
// Looking at one list of children after the other would give them in another order, so the lists
// that the walk is within are kept on a stack. On entering a list of children it finds out which of
// them are selected, so that positions are right, and then passes them as it comes to them.
class SiblingPositions {
public:
    SiblingPositions(Step const& step, Evaluation const& evaluation) noexcept
        : step_{step},
          evaluation_{evaluation} {}

    bool walk(tree::Node* context, NodeVisitor visitor) {
        enter(context);
        while (!levels_.empty()) {
            Level& level = levels_.back();
            tree::Node* const node = level.next;
            if (node == nullptr) {
                leave();
                continue;
            }
            level.next = node->next;
            if (takeSelected(level, node) && visitor(node)) return true;
            enter(node);
        }
        return false;
    }

private:
    struct Level {
        tree::Node* next;
        std::size_t first; // of the level's selected nodes in selected_
        std::size_t at;
        std::size_t end;
    };

    void enter(tree::Node* parent) {
        if (parent->firstChild() == nullptr) return;
        std::size_t const first = selected_.size();
        walkStepAlong(Axis::child, step_, evaluation_, parent, [this](tree::Node* node) {
            selected_.push_back(node);
            return false;
        });
        levels_.push_back({parent->firstChild(), first, first, selected_.size()});
    }

    void leave() {
        selected_.resize(levels_.back().first);
        levels_.pop_back();
    }

    bool takeSelected(Level& level, tree::Node* node) const noexcept {
        if (level.at == level.end || selected_[level.at] != node) return false;
        ++level.at;
        return true;
    }

    Step const& step_;
    Evaluation const& evaluation_;
    std::vector<tree::Node*> selected_;
    std::vector<Level> levels_;
};

// Not inlined, because every step would set up its frame.
[[gnu::noinline]] bool walkBySiblingPositions(Step const& step, Evaluation const& evaluation,
                                              tree::Node* context, NodeVisitor visitor) {
    return SiblingPositions{step, evaluation}.walk(context, visitor);
}

// Candidates that pass the node test go on to the visitor if the predicates hold for each by
// itself.
bool walkByConditions(Axis axis, Step const& step, Evaluation const& evaluation,
                      tree::Node* context, NodeVisitor visitor) {
    ResolvedTest const test{step.test, evaluation};
    return walkAxis(axis, evaluation.document, context, [&](tree::Node* node) {
        return test(node) && step.predicates.hold(evaluation, node) && visitor(node);
    });
}

// The same with positions, which end the walk once none can match any more.
bool walkByPosition(Axis axis, Step const& step, Evaluation const& evaluation, tree::Node* context,
                    NodeVisitor visitor) {
    ResolvedTest const test{step.test, evaluation};
    Predicates::Cursor cursor{step.predicates};
    bool stopped = false;
    walkAxis(axis, evaluation.document, context, [&](tree::Node* node) {
        if (!test(node)) return false;
        if (cursor.accepts(evaluation, node)) stopped = visitor(node);
        return stopped || cursor.exhausted();
    });
    return stopped;
}

bool giveAll(std::vector<tree::Node*> const& nodes, NodeVisitor visitor) {
    for (tree::Node* node : nodes)
        if (visitor(node)) return true;
    return false;
}

bool isIndexable(Axis axis, Step const& step) noexcept {
    return axis == Axis::child && step.test.kind == NodeTest::Kind::elementNamed &&
           step.predicates.leadingAttribute() != nullptr && !step.predicates.needsSize();
}

// Children whose first predicate is `[@k='v']`. Positions in later predicates count only those, so
// it makes no difference that the others do not come up at all.
bool walkByAttribute(Step const& step, Evaluation const& evaluation, tree::Node* context,
                     NodeVisitor visitor) {
    AttributeEquals const& first = *step.predicates.leadingAttribute();
    tree::Name const* const attribute = evaluation.names[first.name];
    if (attribute == nullptr) return false;
    SiblingRun const run{context, evaluation.names[step.test.name], attribute};
    if (step.predicates.size() == 1)
        return visitByAttribute(evaluation.document, run, first.value, visitor);
    Predicates::Cursor cursor{step.predicates};
    bool stopped = false;
    visitByAttribute(evaluation.document, run, first.value, [&](tree::Node* node) {
        if (cursor.accepts(evaluation, node)) stopped = visitor(node);
        return stopped || cursor.exhausted();
    });
    return stopped;
}

// Predicates that ask how many candidates there are: all of them first.
bool walkBySize(Axis axis, Step const& step, Evaluation const& evaluation, tree::Node* context,
                NodeVisitor visitor) {
    ResolvedTest const test{step.test, evaluation};
    std::vector<tree::Node*> candidates;
    walkAxis(axis, evaluation.document, context, [&](tree::Node* node) {
        if (test(node)) candidates.push_back(node);
        return false;
    });
    step.predicates.applyTo(candidates, evaluation);
    return giveAll(candidates, visitor);
}

tree::Node* lastMatchingChild(ResolvedTest const& test, tree::Node* parent) noexcept {
    for (tree::Node* node = parent->lastChild(); node != nullptr; node = node->previousSibling())
        if (test(node)) return node;
    return nullptr;
}

// `a[last()]`: from the end, so that a long run of siblings is not walked.
bool walkLastChild(Step const& step, Evaluation const& evaluation, tree::Node* context,
                   NodeVisitor visitor) {
    ResolvedTest const test{step.test, evaluation};
    tree::Node* const last = lastMatchingChild(test, context);
    if (last == nullptr) return false;
    std::vector<tree::Node*> candidates{last};
    step.predicates.applyTo(candidates, evaluation, 1);
    return giveAll(candidates, visitor);
}

// The form that most paths are made of, with nothing but the name in its loop.
bool walkNamedChildren(tree::Name const* name, tree::Node* context, NodeVisitor visitor) {
    return axis::siblingsFrom(context->firstChild(), [name, visitor](tree::Node* node) {
        return node->is(tree::NodeKind::element) && node->name->expanded == name && visitor(node);
    });
}

bool walkNamedAttribute(tree::Name const* name, tree::Node* context, NodeVisitor visitor) {
    tree::Node* const attribute = attributeNamed(context, name);
    return attribute != nullptr && !attribute->name->declaresNamespace && visitor(attribute);
}

// The frequent forms without predicates; walkByConditions does the rest.
bool walkWithoutPredicates(Axis axis, Step const& step, Evaluation const& evaluation,
                           tree::Node* context, NodeVisitor visitor) {
    if (asksForName(step.test)) {
        tree::Name const* const name = evaluation.names[step.test.name];
        if (axis == Axis::child) return walkNamedChildren(name, context, visitor);
        if (axis == Axis::attribute) return walkNamedAttribute(name, context, visitor);
    }
    return walkByConditions(axis, step, evaluation, context, visitor);
}

} // namespace

std::vector<tree::Node*> namespaceNodes(tree::Document& document, tree::Node* element) {
    std::vector<tree::Node*> nodes;
    if (!element->is(tree::NodeKind::element)) return nodes;
    for (tree::NamespaceInScope const& space : tree::namespacesInScope(*element))
        nodes.push_back(tree::NamespaceNodes::get(document, element, space.prefix, space.uri));
    return nodes;
}

bool walkStepAlong(Axis axis, Step const& step, Evaluation const& evaluation, tree::Node* context,
                   NodeVisitor visitor) {
    if (asksForMissingName(step.test, evaluation)) return false;
    Predicates const& predicates = step.predicates;
    if (predicates.empty()) return walkWithoutPredicates(axis, step, evaluation, context, visitor);
    if (isIndexable(axis, step)) return walkByAttribute(step, evaluation, context, visitor);
    if (predicates.startsWithLast() && axis == Axis::child)
        return walkLastChild(step, evaluation, context, visitor);
    if (predicates.needsSize()) return walkBySize(axis, step, evaluation, context, visitor);
    if (predicates.positional()) return walkByPosition(axis, step, evaluation, context, visitor);
    return walkByConditions(axis, step, evaluation, context, visitor);
}

bool walkStep(Step const& step, Evaluation const& evaluation, tree::Node* context,
              NodeVisitor visitor) {
    if (step.axis == Axis::descendantChild)
        return walkBySiblingPositions(step, evaluation, context, visitor);
    return walkStepAlong(step.axis, step, evaluation, context, visitor);
}

} // namespace tibxml::query
