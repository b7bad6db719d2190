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

    // What the attribute `name` declares; `at` is where it stands. Throws std::bad_alloc, and
    // ParseFailure for what Namespaces in XML does not allow.
    void declare(QualifiedName const& name, std::string_view value, char const* at);

    std::size_t size() const noexcept { return bindings_.size(); }

    // Ends the declarations after the first `size`.
    void shrink(std::size_t size) noexcept;

private:
    struct Binding {
        Prefix* prefix;
        Uri* before;
    };

    Names& names_;
    std::vector<Binding> bindings_;
};

} // namespace tibxml::reader
