// The prefixes that an expression may use.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tibxml::query {

/// A set of bindings from prefix to namespace, made from declarations as they stand in a start tag:
///
///     xmlns:p='urn:one' xmlns:q="urn:two"
///
/// The prefix "xml" is always bound. A value: copies are independent.
class Namespaces {
public:
    /// Only "xml" is bound; the source text is empty.
    Namespaces() noexcept = default;

    /// Declarations separated by white space, in either kind of quotes; white space may stand
    /// around each declaration and around its "=". A default declaration (xmlns='uri') is accepted
    /// and has no effect, because an unprefixed name in an expression is a name without namespace.
    /// An empty or blank text binds nothing.
    ///
    /// Throws QueryError (Query.h) for anything else: bad names, an empty namespace for a prefix, a
    /// prefix declared twice, "xmlns" as prefix, "xml" with another namespace than its own (or its
    /// own with another prefix), the namespace of "xmlns". A caller that keeps bindings over a
    /// failed change would let expressions mean something undeclared: assign Namespaces{} then.
    static Namespaces parse(std::wstring_view declarations);

    /// The namespace of a prefix (both UTF-8); null when the prefix is not declared. Valid as long
    /// as this object.
    std::string const* uriOf(std::string_view prefix) const noexcept;

    /// The declarations as they were given: two sets with one text bind the same.
    std::wstring const& text() const noexcept { return text_; }

    /// A hash of text(), made once.
    std::size_t hash() const noexcept { return hash_; }

private:
    std::wstring text_;
    std::size_t hash_ = 0;
    std::vector<std::pair<std::string, std::string>> bindings_;
};

} // namespace tibxml::query
