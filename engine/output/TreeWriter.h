// Writes a node and what is below it.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <tree/Namespaces.h>
#include <tree/Node.h>

#include "MarkupWriter.h"

namespace tibxml::output {

class TreeWriter {
public:
    /// With layout, line ends and tabs are written where the reader dropped white space, and blank
    /// text is protected from being dropped; without it, readers keep all white space.
    /// Throws std::bad_alloc.
    TreeWriter(MarkupWriter& out, bool layout) : out_{out}, layout_{layout} {}

    /// Writes the subtree of a node that is not a document; `wanted` are namespaces to declare on
    /// it.
    void write(tree::Node const& top, std::vector<tree::Binding> wanted);

private:
    // What an element changed for its subtree, and what its end tag must know.
    struct Frame {
        tree::Node const* element;
        std::string_view prefix;
        std::size_t scopeSize;
        bool keptBlanks; // what holds again after the element
    };

    tree::Node const* open(tree::Node const& node);
    void close(tree::Node const& element);
    void writeLeaf(tree::Node const& node);
    void writeText(tree::Node const& text);
    tree::Node const* openElement(tree::Node const& element);
    void startTag(tree::Node const& element);
    void startTagInNewFrame(tree::Node const& element);
    void writeDeclaration(tree::Binding binding);
    void writeAttributes(tree::Node const& element, tree::StartTagNames const& names);
    void noticeSpace(tree::Node const& attribute) noexcept;
    void leaveFrame(tree::Node const& element) noexcept;
    bool isPlain(tree::Node const& element) noexcept;
    void breakLine(bool marked, tree::Node const* before, tree::Node const* after,
                   std::size_t depth);

    MarkupWriter& out_;
    bool layout_;
    bool keepsBlanks_ = false; // the nearest xml:space says so
    std::size_t depth_ = 0;
    tree::NamespaceScope scope_;
    std::vector<tree::Binding> wanted_; // for the next start tag
    std::vector<Frame> frames_;
};

} // namespace tibxml::output
