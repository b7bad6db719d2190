// Between our trees and those of libxml2, without markup on the way.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <libxml/tree.h>

#include <tree/Document.h>
#include <tree/Node.h>

namespace tibxml::transform {

struct FreeLibxmlDocument {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

using LibxmlDocument = std::unique_ptr<xmlDoc, FreeLibxmlDocument>;

/// Storage that is given back as a whole.
class NodeBlocks {
public:
    NodeBlocks() noexcept = default;
    NodeBlocks(NodeBlocks const&) = delete;
    NodeBlocks& operator=(NodeBlocks const&) = delete;
    ~NodeBlocks();

    /// Aligned for any node. Throws std::bad_alloc.
    void* take(std::size_t size);

    /// Namespaces to be freed with the blocks.
    void own(xmlNs* ns);

private:
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::vector<xmlNs*> namespaces_;
    std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

/// The namespace declarations in force while a tree is copied to one of libxml2's.
/// Elements are opened and closed in document order. Every function throws std::bad_alloc.
class LibxmlNamespaces {
public:
    /// What it declares is the copies' to free, unless there are blocks that own it.
    LibxmlNamespaces(xmlDoc& document, NodeBlocks* blocks) noexcept
        : document_{document},
          blocks_{blocks} {}

    /// With the declarations that an element carries; they are added to its copy.
    void open(xmlNode& copy, tree::Node const* element);
    void close() noexcept;

    /// The namespace of a name on the element that was opened last: null for none. What no
    /// declaration covers is declared there.
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

/// A copy of a document, or of an element with its subtree, as XPath sees it: adjacent texts and
/// CDATA sections are one text, and every name's namespace is declared. An element's line is its
/// number in document order, from 1, because the tree remembers no lines. `url` is what relative
/// references in it start from; it may be empty. Throws std::bad_alloc.
LibxmlDocument toLibxml(tree::Node const* source, std::string const& url);

/// The same for one reader that neither keeps nor frees any of its nodes: they come from a few
/// blocks and go with them, which spares an allocation and a release for each.
class ReadOnlyCopy {
public:
    ReadOnlyCopy(tree::Node const* source, std::string const& url);
    ReadOnlyCopy(ReadOnlyCopy const&) = delete;
    ReadOnlyCopy& operator=(ReadOnlyCopy const&) = delete;
    ~ReadOnlyCopy();

    xmlDoc* get() const noexcept { return document_.get(); }

private:
    NodeBlocks blocks_;
    LibxmlDocument document_;
};

/// The element of a document with that number; null when there is none.
tree::Node const* elementNumber(tree::Document const& document, std::size_t number) noexcept;

/// What xsl:output has to say about a tree.
struct ResultForm {
    bool hasDeclaration = false;
    std::string_view encoding; // empty when none is asked for or libxml2 does not know it
    int standalone = -1;       // 1 yes, 0 no
    bool isIndented = false;
};

/// A new document with libxml2's nodes. Throws TransformError for what is not a document: more than
/// one element or text at the top, deeper than what can be loaded again.
tree::DocumentRef fromLibxml(xmlDoc const& result, ResultForm const& form);

} // namespace tibxml::transform
