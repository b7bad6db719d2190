// What prefixes mean at the place that is being written.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <tree/Name.h>

namespace tibxml::tree {

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

} // namespace tibxml::tree
