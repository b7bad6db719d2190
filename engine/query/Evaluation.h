// What an expression is evaluated in, and what takes the nodes that it finds.
//
// A name test in a query is one comparison of pointers: a document keeps one record per expanded
// name. While a query is compiled each name in it gets a number (NameResolution::add). A search
// asks once for the table of the records that the numbers stand for in the document at hand and
// hands it down in the Evaluation. So a compiled query holds no pointer into a document that it
// trusts without a check, and may outlive every document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <tree/Document.h>
#include <tree/Node.h>

namespace tibxml::query {

/// The same for the whole of one search.
struct Evaluation {
    tree::Document& document;
    tree::Name const* const* names; // by the numbers that NameResolution gave
};

/// Changes from predicate to predicate. Position and size are only set where the expression is
/// known to ask for them.
struct Context {
    Evaluation const& evaluation;
    tree::Node* node;
    std::size_t position = 1;
    std::size_t size = 1;
};

/// What the names in a query mean in the document at hand. The records of the last document stay
/// known until another document comes or this one gets new names: a name that had no record may
/// have one then.
class NameResolution {
public:
    /// Gives the number of a name, for use with the table from resolve().
    std::uint32_t add(std::string uri, std::string local);

    /// The record for each number, null for names that no node of the document has.
    tree::Name const* const* resolve(tree::Document& document) {
        if (document.serial() != serial_ || document.names().size() != namesThen_)
            refresh(document);
        return found_.data();
    }

private:
    struct ExpandedName {
        std::string uri;
        std::string local;
    };

    void refresh(tree::Document& document);

    std::vector<ExpandedName> names_;
    std::vector<tree::Name const*> found_;
    std::uint64_t serial_ = 0;
    std::size_t namesThen_ = static_cast<std::size_t>(-1);
};

/// Takes nodes one after the other. A reference to a callable; it must not outlive it. The callable
/// returns true when it has enough, and then no further node comes.
class NodeVisitor {
public:
    template <class Callable,
              class = std::enable_if_t<!std::is_same_v<std::remove_cvref_t<Callable>, NodeVisitor>>>
    NodeVisitor(Callable&& callable) noexcept
        : object_{const_cast<void*>(static_cast<void const*>(std::addressof(callable)))},
          call_{[](void* object, tree::Node* node) -> bool {
              return (*static_cast<std::remove_reference_t<Callable>*>(object))(node);
          }} {}

    bool operator()(tree::Node* node) const { return call_(object_, node); }

private:
    void* object_;
    bool (*call_)(void*, tree::Node*);
};

} // namespace tibxml::query
