#include <query/Query.h>

#include <utility>

#include <tree/NamespaceNodes.h>

#include "NameResolution.h"
#include "Parser.h"

namespace tibxml::query {

Query::Query(std::unique_ptr<NodeExpression const> root,
             std::unique_ptr<NameResolution> names) noexcept
    : root_{std::move(root)},
      names_{std::move(names)} {}

Query::~Query() = default;

std::shared_ptr<Query const> compile(std::wstring_view expression, Namespaces const& namespaces) {
    auto names = std::make_unique<NameResolution>();
    NodeExpressionPtr root = Parser{expression, namespaces, *names}.parse();
    return std::make_shared<Query const>(std::move(root), std::move(names));
}

tree::Node* selectFirst(Query const& query, tree::Document& document, tree::Node* context) {
    Evaluation const evaluation{document, query.names().resolve(document)};
    tree::Node* const found = query.root().first({evaluation, context});
    tree::NamespaceNodes::sweep(document, found);
    return found;
}

void selectAll(Query const& query, tree::Document& document, tree::Node* context,
               std::vector<tree::Node*>& out) {
    Evaluation const evaluation{document, query.names().resolve(document)};
    query.root().visit({evaluation, context}, Order::document, [&out](tree::Node* node) {
        out.push_back(node);
        return false;
    });
}

} // namespace tibxml::query
