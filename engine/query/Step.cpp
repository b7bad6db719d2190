#include "Step.h"

#include "AttributeIndex.h"
#include "SiblingPositions.h"

namespace tibxml::query {

namespace {

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
