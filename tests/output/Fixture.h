// Trees from text, texts from trees, and trees made by hand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <output/Serializer.h>
#include <tree/Document.h>
#include <tree/Editing.h>

namespace tibxml::output::test {

enum class WhiteSpace { dropped, preserved };

// The document that a text is; a failure to read it is a failure of the running test, and the
// document is then empty.
tree::DocumentRef parse(std::string_view text, WhiteSpace whiteSpace = WhiteSpace::dropped);

// The same from the bytes of a file, in the encoding that they declare.
tree::DocumentRef parseFile(std::string_view bytes, WhiteSpace whiteSpace = WhiteSpace::dropped);

std::string xml(tree::DocumentRef const& document);
std::string xml(tree::DocumentRef const& document, tree::Node const* node);
std::string file(tree::DocumentRef const& document);

// A line for every node and attribute, with its names in full. Adjacent texts count as one, empty
// ones not at all, and namespace declarations are left out: what makes two trees equal.
std::string outline(tree::Node const& top);

// Builds trees node by node.
class Builder {
public:
    explicit Builder(WhiteSpace whiteSpace = WhiteSpace::dropped);

    tree::DocumentRef const& document() const noexcept { return document_; }

    tree::Node* top() const noexcept { return document_->node(); }

    tree::Node* element(tree::Node* parent, std::string_view qualified, std::string_view uri = {});
    tree::Node* attribute(tree::Node* element, std::string_view qualified, std::string_view value,
                          std::string_view uri = {});
    tree::Node* data(tree::Node* parent, tree::NodeKind kind, std::string_view text);
    tree::Node* text(tree::Node* parent, std::string_view text);
    tree::Node* instruction(tree::Node* parent, std::string_view target, std::string_view data);

private:
    tree::Name* name(std::string_view qualified, std::string_view uri);

    tree::DocumentRef document_;
};

} // namespace tibxml::output::test
