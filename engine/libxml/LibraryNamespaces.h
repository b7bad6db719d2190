// The namespace declarations in force while a tree is copied to one of libxml2's.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <libxml/tree.h>

#include <tree/Node.h>

#include "LibraryDocument.h"

namespace tibxml::transform {

// Elements are opened and closed in document order. Every function throws std::bad_alloc.
class LibraryNamespaces {
public:
    // What it declares is the copies' to free, unless there are blocks that own it.
    LibraryNamespaces(xmlDoc& document, NodeBlocks* blocks) noexcept
        : document_{document},
          blocks_{blocks} {}

    // With the declarations that an element carries; they are added to its copy.
    void open(xmlNode& copy, tree::Node const* element);
    void close() noexcept;

    // The namespace of a name on the element that was opened last: null for none. What no
    // declaration covers is declared there.
    xmlNs* ofElement(xmlNode& copy, tree::Name const& name);
    xmlNs* ofAttribute(xmlNode& copy, tree::Name const& name);

private:
    xmlNs* find(std::string_view prefix) const noexcept;
    xmlNs* find(std::string_view prefix, std::string_view uri) const noexcept;
    xmlNs* declare(xmlNode& copy, std::string_view prefix, std::string_view uri);
    xmlNs* declareUnused(xmlNode& copy, std::string_view prefix, std::string_view uri);
    xmlNs* ofXml(xmlNode& copy);

    xmlDoc& document_;
    NodeBlocks* blocks_;
    std::vector<xmlNs*> visible_;     // the innermost last
    std::vector<std::size_t> levels_; // how many there were before each open element
};

} // namespace tibxml::transform
