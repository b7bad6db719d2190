// Documents from text, and nodes in a form that assertions can compare.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <query/Query.h>
#include <tree/Document.h>

namespace tibxml::query::test {

// A document that lives as long as this. White space is kept as it stands. A text that cannot be
// read throws, which fails the test.
class Tree {
public:
    explicit Tree(std::string_view xml);
    Tree(Tree const&) = delete;
    Tree& operator=(Tree const&) = delete;

    tree::Document& document() const noexcept { return *document_; }

    tree::Node* node() const noexcept { return document_->node(); }

    tree::Node* element() const noexcept { return document_->documentElement(); }

    // The only node that an expression selects from the document; throws when it is not one.
    tree::Node* find(std::wstring_view expression) const;

    // All nodes that an expression selects, from the document when no context is given.
    std::vector<tree::Node*> select(std::wstring_view expression, tree::Node* context = nullptr,
                                    Namespaces const& namespaces = {}) const;

    // The same, described. selectFirst must agree; a description of the disagreement if not.
    std::string describe(std::wstring_view expression, tree::Node* context = nullptr,
                         Namespaces const& namespaces = {}) const;

private:
    tree::DocumentRef document_;
};

// name, name#id for an element with an id; @name=value; prefix=uri for a namespace; 'text';
// [cdata]; <!--comment-->; <?target data?>; / for the document.
std::string describe(tree::Node const* node);

// Separated by blanks.
std::string describe(std::vector<tree::Node*> const& nodes);

// For messages: the text must be ASCII.
std::string narrow(std::wstring_view text);

} // namespace tibxml::query::test
