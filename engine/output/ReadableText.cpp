#include <output/ReadableText.h>

#include <tree/Name.h>

#include "Layout.h"

namespace tibxml::output {

using tree::Node;

namespace {

// Whether xml:space, on the element or the nearest ancestor that says something, keeps blanks.
bool keepsBlanks(Node const* element) noexcept {
    for (; element != nullptr; element = element->parent) {
        for (Node const* a = element->firstAttribute(); a != nullptr; a = a->next) {
            if (!isSpaceAttribute(*a)) continue;
            if (a->text() == "preserve") return true;
            if (a->text() == "default") return false;
        }
    }
    return false;
}

class Joiner {
public:
    Joiner(tree::Document const& document, std::string& storage) noexcept
        : storage_{storage},
          layout_{!document.preservesWhiteSpace()},
          spaceIsKnown_{document.names().findExpanded("space", tree::xmlNamespace) != nullptr} {}

    std::string_view join(Node const& top) {
        Node const* node = &top;
        while (true) {
            enter(*node);
            Node const* next = node->firstChild();
            while (next == nullptr) {
                if (node == &top) return isJoined_ ? std::string_view{storage_} : single_;
                leave(*node);
                next = node->next;
                if (next == nullptr) node = node->parent;
            }
            node = next;
        }
    }

private:
    void enter(Node const& node) {
        if (node.isText()) {
            add(node.text());
        } else if ((node.flags & tree::breakInside) != 0) {
            note(&node, nullptr, firstWritten(node));
        }
    }

    void leave(Node const& node) noexcept {
        if ((node.flags & tree::breakAfter) != 0) note(node.parent, &node, writtenFrom(node.next));
    }

    // A mark that is not written when the document is saved does not count here either.
    void note(Node const* parent, Node const* before, Node const* after) noexcept {
        if (isApart_ || single_.empty() || !layout_) return;
        if (!allowsBreak(before) || !allowsBreak(after)) return;
        isApart_ = !spaceIsKnown_ || !keepsBlanks(parent);
    }

    void add(std::string_view piece) {
        if (piece.empty()) return;
        if (single_.empty()) {
            single_ = piece;
            return;
        }
        if (!isJoined_) storage_ = single_;
        isJoined_ = true;
        if (isApart_) storage_ += ' ';
        isApart_ = false;
        storage_ += piece;
    }

    std::string& storage_;
    bool layout_;
    bool spaceIsKnown_;
    std::string_view single_; // the first piece
    bool isJoined_ = false;   // there are more, and all are in the storage
    bool isApart_ = false;    // the next piece is not in one line with what came before
};

} // namespace

std::string_view readableText(tree::Document const& document, Node const* node,
                              std::string& storage) {
    Node const* const first = node->firstChild();
    if (first == nullptr) return node->text();
    if (first->next == nullptr && first->isText()) return first->text();
    return Joiner{document, storage}.join(*node);
}

} // namespace tibxml::output
