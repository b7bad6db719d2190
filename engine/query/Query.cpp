#include <query/Query.h>

#include <utility>

#include <tree/NamespaceNodes.h>

#include "Evaluation.h"
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

std::uint32_t NameResolution::add(std::string uri, std::string local) {
    for (std::size_t i = names_.size(); i-- > 0 && names_.size() - i <= 16;)
        if (names_[i].local == local && names_[i].uri == uri) return static_cast<std::uint32_t>(i);
    names_.push_back({std::move(uri), std::move(local)});
    found_.push_back(nullptr);
    return static_cast<std::uint32_t>(names_.size() - 1);
}

void NameResolution::refresh(tree::Document& document) {
    for (std::size_t i = 0; i < names_.size(); ++i)
        found_[i] = document.names().findExpanded(names_[i].local, names_[i].uri);
    serial_ = document.serial();
    namesThen_ = document.names().size();
}

} // namespace tibxml::query
