// What prefixes mean at a place in the tree.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tree/Name.h>
#include <tree/Node.h>

namespace tibxml::tree {

// The namespace that a prefix (empty: the default) stands for at an element, by the nearest
// declaration on it or an ancestor; empty where it was declared away, nothing where it is not
// declared at all. "xml" is always declared. Valid until the next edit.
std::optional<std::string_view> namespaceAt(Node const* element, std::string_view prefix) noexcept;

// The prefix that an attribute declares ("" for xmlns); only for Name::declaresNamespace.
std::string_view declaredPrefix(Node const* declaration) noexcept;

// A prefix that stands for a namespace at an element; empty when there is none.
std::string_view prefixAt(Node const* element, std::string_view uri) noexcept;

// What prefixes mean at the place that is being written.

struct Binding {
    std::string_view prefix; // empty: unprefixed elements
    std::string_view uri;    // empty: none
};

class NamespaceScope {
public:
    NamespaceScope() { bindings_.push_back({"xml", xmlNamespace}); }

    // Whether a name written as it is has its own meaning here. Unprefixed attributes are in no
    // namespace, unprefixed elements in the default one. A prefix without a namespace, as a node
    // that was never inserted can have, is left alone.
    bool suitsElement(Name const& name) noexcept {
        if (name.uri.empty()) return !hasDefault_ || !name.prefix.empty();
        return suits(name);
    }

    bool suitsAttribute(Name const& name) noexcept {
        return name.uri.empty() || (!name.prefix.empty() && suits(name));
    }

    // The meaning of a prefix; empty when it has none.
    std::string_view uriOf(std::string_view prefix) const noexcept;

    // A prefix that is not empty and means the namespace; empty when there is none.
    std::string_view prefixFor(std::string_view uri) const noexcept;

    // A prefix that means nothing here; lives as long as the scope.
    std::string_view unusedPrefix();

    // Declarations last until the scope is cut back to a size that it had before them.
    void declare(Binding binding);
    void cutBack(std::size_t size) noexcept;

    std::size_t size() const noexcept { return bindings_.size(); }

    // All that is declared, nearer declarations after those that they hide.
    std::vector<Binding> const& bindings() const noexcept { return bindings_; }

    bool declaredSince(std::size_t size, std::string_view prefix) const noexcept;

private:
    bool suits(Name const& name) noexcept {
        if (&name == suiting_) return true;
        if (uriOf(name.prefix) != name.uri) return false;
        suiting_ = &name;
        return true;
    }

    std::vector<Binding> bindings_; // the innermost last
    bool hasDefault_ = false;
    Name const* suiting_ = nullptr; // a name that was found to suit and still does
    std::vector<std::unique_ptr<std::string>> madePrefixes_; // ns1, ns2, …
};

// What prefixes mean at an element once its document is written.

struct NamespaceInScope {
    std::string prefix;   // empty: the default
    std::string_view uri; // of the tree's; never empty
};

// The namespaces that a reader of the written tree finds in scope at an element: by declarations
// that the tree holds, and by those that are added for names which need them. "xml" is one of them.
// In the order of the prefixes' bytes. Throws std::bad_alloc.
std::vector<NamespaceInScope> namespacesInScope(Node const& element);

// The names that one element and its attributes are written with, and the declarations that must be
// added for them to mean what the tree says.

struct StartTagNames {
    struct AttributePrefix {
        Node const* attribute;
        std::string_view prefix;
    };

    std::string_view elementPrefix;
    std::vector<Binding> added;
    std::vector<AttributePrefix> changed; // where the prefix is not the attribute's own, in order
};

// Enters the element's own declarations and the added ones into the scope. `wanted` are
// declarations to be added whether the element needs them or not, unless it gives those prefixes
// another meaning.
StartTagNames resolveNames(Node const& element, std::vector<Binding> const& wanted,
                           NamespaceScope& scope);

// Whether an attribute is written at all. Declarations that XML forbids, or that would put an
// element without namespace into one, are left out: names decide, declarations follow.
bool isWritten(Node const& attribute) noexcept;

// The namespaces that are declared outside the subtree and used by names in it.
std::vector<Binding> inheritedNamespaces(Node const& top);

} // namespace tibxml::tree
