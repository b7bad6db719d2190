// Between our trees and those of libxml2, without markup on the way.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <libxml/tree.h>

#include <tree/Document.h>

namespace tibxml::transform {

struct FreeLibraryDocument {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

using LibraryDocument = std::unique_ptr<xmlDoc, FreeLibraryDocument>;

inline std::string_view view(xmlChar const* text) noexcept {
    return text != nullptr ? std::string_view{reinterpret_cast<char const*>(text)}
                           : std::string_view{};
}

// What an allocation of libxml2 gave. Throws std::bad_alloc for null.
template <class T>
T* allocated(T* pointer) {
    if (pointer == nullptr) throw std::bad_alloc{};
    return pointer;
}

// A copy of a document, or of an element with its subtree, as XPath sees it: adjacent texts and
// CDATA sections are one text, and every name's namespace is declared. An element's line is its
// number in document order, from 1, because the tree remembers no lines. Throws std::bad_alloc.
LibraryDocument toLibrary(tree::Node const* source, std::string const& url);

// The element of a document with that number; null when there is none.
tree::Node const* elementNumber(tree::Document const& document, std::size_t number) noexcept;

} // namespace tibxml::transform
