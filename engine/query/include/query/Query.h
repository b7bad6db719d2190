// Finding nodes by XPath 1.0 expressions.
//
// The language is XPath 1.0 with node-set results, with these properties of its surroundings:
//
// - `/` is the top of the tree that holds the context node: the document node, or the root of a
//   detached subtree. In a detached element `/` selects that element itself and `/a` its children
//   named a; in a detached attribute or text node it selects that node.
// - An unprefixed name has no namespace. Prefixes come from Namespaces only.
// - Text and CDATA are separate text nodes. The XML declaration is not a node.
// - Namespace declarations are not attributes. The namespace axis has one node for each prefix in
//   scope, by the declarations that the written document will have.
// - There are no variables, no functions but the core library, and `id()` finds nothing, since
//   without a document type no attribute is an ID.
//
// Threads: a Query remembers what the names in it mean in the document it was used on last, so one
// Query belongs to one thread at a time, like a document. QueryCache gives each thread its own.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <query/Namespaces.h>
#include <tree/Document.h>

namespace tibxml::query {

class NodeExpression;
class NameResolution;

/// What is wrong with an expression or with a text of namespace declarations, and where.
/// what() names the column and the fault, in UTF-8: "column 7: expected ']'".
class QueryError : public std::runtime_error {
public:
    /// Columns count the wide characters of the text from 1; an unexpected end is one after the
    /// last character.
    QueryError(std::size_t column, std::string const& fault)
        : std::runtime_error{"column " + std::to_string(column) + ": " + fault},
          column_{column} {}

    std::size_t column() const noexcept { return column_; }

private:
    std::size_t column_;
};

/// A compiled expression. It refers to no document beyond names that are checked to be of the
/// document at hand, so it may outlive every document it was used on.
class Query {
public:
    Query(std::unique_ptr<NodeExpression const> root,
          std::unique_ptr<NameResolution> names) noexcept;
    Query(Query const&) = delete;
    Query& operator=(Query const&) = delete;
    ~Query();

    NodeExpression const& root() const noexcept { return *root_; }

    NameResolution& names() const noexcept { return *names_; }

private:
    std::unique_ptr<NodeExpression const> root_;
    std::unique_ptr<NameResolution> names_;
};

/// Throws QueryError for an expression that does not parse, uses an undeclared prefix, an unknown
/// function or axis, a variable or a wrong number or kind of arguments, is nested deeper than 256
/// levels, or gives anything but nodes; and std::bad_alloc.
std::shared_ptr<Query const> compile(std::wstring_view expression, Namespaces const& namespaces);

/// The first node in document order that the expression selects from the context node, or null. The
/// search stops there. The context is a node of the document. A node of the namespace axis goes
/// with the next search unless it gets a handle. Throws std::bad_alloc only.
tree::Node* selectFirst(Query const& query, tree::Document& document, tree::Node* context);

/// Appends all selected nodes to `out`, in document order and each once. Throws std::bad_alloc
/// only, and then `out` may have got some of them. Pin the document to keep nodes of the namespace
/// axis.
void selectAll(Query const& query, tree::Document& document, tree::Node* context,
               std::vector<tree::Node*>& out);

} // namespace tibxml::query
