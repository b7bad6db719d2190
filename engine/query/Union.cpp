#include "Union.h"

#include <algorithm>
#include <utility>

#include "NodeSequence.h"

namespace tibxml::query {

namespace {

bool giveSorted(Evaluation const& evaluation, std::vector<tree::Node*> nodes, NodeVisitor visitor) {
    sortInDocumentOrder(evaluation.document, nodes);
    return std::any_of(nodes.begin(), nodes.end(), visitor);
}

} // namespace

Union::Union(std::vector<NodeExpressionPtr> operands) noexcept : operands_{std::move(operands)} {
    for (NodeExpressionPtr const& operand : operands_)
        dependLike(*operand);
}

bool Union::visit(Context const& context, Order, NodeVisitor visitor) const {
    std::vector<tree::Node*> nodes;
    for (NodeExpressionPtr const& operand : operands_) {
        operand->visit(context, Order::any, [&nodes](tree::Node* node) {
            nodes.push_back(node);
            return false;
        });
    }
    return giveSorted(context.evaluation, std::move(nodes), visitor);
}

// The first of all is the first of one operand, and each operand stops at its own.
tree::Node* Union::first(Context const& context) const {
    std::vector<tree::Node*> candidates;
    for (NodeExpressionPtr const& operand : operands_)
        if (tree::Node* node = operand->first(context)) candidates.push_back(node);
    sortInDocumentOrder(context.evaluation.document, candidates);
    return candidates.empty() ? nullptr : candidates.front();
}

bool Union::boolean(Context const& context) const {
    return std::any_of(operands_.begin(), operands_.end(),
                       [&context](NodeExpressionPtr const& o) { return o->boolean(context); });
}

} // namespace tibxml::query
