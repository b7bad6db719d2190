// Between our trees and those of libxml2, without markup on the way.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

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

// Storage that is given back as a whole.
class NodeBlocks {
public:
    NodeBlocks() noexcept = default;
    NodeBlocks(NodeBlocks const&) = delete;
    NodeBlocks& operator=(NodeBlocks const&) = delete;
    ~NodeBlocks();

    // Aligned for any node. Throws std::bad_alloc.
    void* take(std::size_t size);

    // Namespaces to be freed with the blocks.
    void own(xmlNs* ns);

private:
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::vector<xmlNs*> namespaces_;
    std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

// A copy of a document, or of an element with its subtree, as XPath sees it: adjacent texts and
// CDATA sections are one text, and every name's namespace is declared. An element's line is its
// number in document order, from 1, because the tree remembers no lines. `url` is what relative
// references in it start from; it may be empty. Throws std::bad_alloc.
LibraryDocument toLibrary(tree::Node const* source, std::string const& url);

// The same for one reader that neither keeps nor frees any of its nodes: they come from a few
// blocks and go with them, which spares an allocation and a release for each.
class ReadOnlyCopy {
public:
    ReadOnlyCopy(tree::Node const* source, std::string const& url);
    ReadOnlyCopy(ReadOnlyCopy const&) = delete;
    ReadOnlyCopy& operator=(ReadOnlyCopy const&) = delete;
    ~ReadOnlyCopy();

    xmlDoc* get() const noexcept { return document_.get(); }

private:
    NodeBlocks blocks_;
    LibraryDocument document_;
};

// The element of a document with that number; null when there is none.
tree::Node const* elementNumber(tree::Document const& document, std::size_t number) noexcept;

} // namespace tibxml::transform
