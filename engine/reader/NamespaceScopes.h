// The namespace declarations in force: each makes a prefix stand for something, and the end of its
// element brings back what was before.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Names.h"

namespace tibxml::reader {

class NamespaceScopes {
public:
    explicit NamespaceScopes(Names& names) noexcept : names_{names} {}

    // What the attribute `name`, at `at`, declares on an element that so many others are open
    // around. Throws std::bad_alloc, and ParseFailure for what Namespaces in XML does not allow.
    void declare(QualifiedName const& name, std::string_view value, char const* at,
                 std::size_t depth);

    // Ends the declarations of an element that so many others are open around.
    void end(std::size_t depth) noexcept {
        while (!bindings_.empty() && bindings_.back().depth == depth)
            endLast();
    }

private:
    struct Binding {
        Prefix* prefix;
        Uri* before;
        std::size_t depth;
    };

    void endLast() noexcept;

    Names& names_;
    std::vector<Binding> bindings_;
};

} // namespace tibxml::reader
