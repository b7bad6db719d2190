// libxml2's texts and allocations beside ours, and how it starts.
#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>

#include <libxml/parser.h>

namespace tibxml::libxml {

/// Empty for null.
inline std::string_view view(xmlChar const* text) noexcept {
    return text != nullptr ? std::string_view{reinterpret_cast<char const*>(text)}
                           : std::string_view{};
}

/// Ends with a NUL only where the text does.
inline xmlChar const* bytes(std::string_view text) noexcept {
    return reinterpret_cast<xmlChar const*>(text.data());
}

/// The length of a text as libxml2 counts it. Throws std::length_error above 2 GiB.
inline int lengthOf(std::string_view text) {
    if (text.size() >= std::size_t{std::numeric_limits<int>::max()})
        throw std::length_error{"a text is too long"};
    return static_cast<int>(text.size());
}

/// What an allocation of libxml2 gave. Throws std::bad_alloc for null.
template <class T>
T* allocated(T* pointer) {
    if (pointer == nullptr) throw std::bad_alloc{};
    return pointer;
}

/// Calls libxml2's own start and then these functions, once in the process and before any thread
/// goes on: they make tables on first use, which libxml2 and libxslt do not guard.
template <auto... start>
void initializeOnce() {
    static bool const isDone = (xmlInitParser(), (static_cast<void>(start()), ...), true);
    static_cast<void>(isDone);
}

} // namespace tibxml::libxml
