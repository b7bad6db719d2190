#include "Fixture.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include <reader/Reader.h>
#include <tree/Navigation.h>

namespace tibxml::output::test {

using tree::DocumentRef;
using tree::Node;
using tree::NodeKind;

namespace {

DocumentRef newDocument(WhiteSpace whiteSpace) {
    DocumentRef document = DocumentRef::adopt(tree::Document::create());
    document->setPreservesWhiteSpace(whiteSpace == WhiteSpace::preserved);
    return document;
}

class Bytes final : public reader::ByteSource {
public:
    explicit Bytes(std::string_view bytes) noexcept : bytes_{bytes} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        std::size_t const count = std::min(size, bytes_.size());
        std::memcpy(buffer, bytes_.data(), count);
        bytes_.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    }

private:
    std::string_view bytes_;
};

void appendName(Node const& node, std::string& out) {
    if (node.name == nullptr) return;
    out.append(" {").append(node.name->uri).append("}").append(node.name->local);
}

void appendAttributes(Node const& element, std::string& out) {
    for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next) {
        if (a->name->declaresNamespace) continue;
        appendName(*a, out);
        out.append("='").append(a->text()).append("'");
    }
}

char const* kindName(NodeKind kind) {
    switch (kind) {
    case NodeKind::element: return "element";
    case NodeKind::attribute: return "attribute";
    case NodeKind::text: return "text";
    case NodeKind::cdata: return "cdata";
    case NodeKind::processingInstruction: return "instruction";
    case NodeKind::comment: return "comment";
    case NodeKind::document: return "document";
    case NodeKind::declaration: return "declaration";
    }
    return "?";
}

std::size_t depthOf(Node const* node) {
    std::size_t depth = 0;
    for (; node->parent != nullptr; node = node->parent)
        ++depth;
    return depth;
}

void appendLine(Node const& node, std::string& out) {
    out.append("\n").append(depthOf(&node), ' ').append(kindName(node.kind));
    appendName(node, out);
    appendAttributes(node, out);
    out.append(" ").append(node.text());
}

} // namespace

DocumentRef parse(std::string_view text, WhiteSpace whiteSpace) {
    DocumentRef document = newDocument(whiteSpace);
    reader::ReadError error;
    EXPECT_TRUE(reader::read(*document, {text, reader::EncodingRule::alwaysUtf8}, error))
        << error.reason << " in\n"
        << text;
    return document;
}

DocumentRef parseFile(std::string_view bytes, WhiteSpace whiteSpace) {
    DocumentRef document = newDocument(whiteSpace);
    reader::ReadError error;
    Bytes source{bytes};
    EXPECT_TRUE(reader::read(*document, source, error)) << error.reason;
    return document;
}

std::string xml(DocumentRef const& document) {
    return xml(document, document->node());
}

std::string xml(DocumentRef const& document, Node const* node) {
    std::string out;
    appendXml(*document, node, out);
    return out;
}

std::string file(DocumentRef const& document) {
    std::string out;
    appendFile(*document, out);
    return out;
}

std::string outline(Node const& top) {
    std::string out;
    Node const* last = nullptr;
    for (Node const* node = &top; node != nullptr; node = tree::nextInSubtree(node, &top)) {
        bool const isText = node->is(NodeKind::text);
        if (isText && node->text().empty()) continue;
        if (isText && last != nullptr && last->is(NodeKind::text) && last->parent == node->parent) {
            out.append(node->text());
        } else {
            appendLine(*node, out);
        }
        last = node;
    }
    return out;
}

Builder::Builder(WhiteSpace whiteSpace) : document_{newDocument(whiteSpace)} {}

tree::Name* Builder::name(std::string_view qualified, std::string_view uri) {
    std::size_t const colon = qualified.find(':');
    bool const prefixed = colon != std::string_view::npos;
    std::string_view const prefix = prefixed ? qualified.substr(0, colon) : std::string_view{};
    std::string_view const local = prefixed ? qualified.substr(colon + 1) : qualified;
    return document_->names().intern(prefix, local, uri);
}

Node* Builder::element(Node* parent, std::string_view qualified, std::string_view uri) {
    Node* const node = tree::newElement(*document_, name(qualified, uri));
    tree::appendChild(*document_, parent, node);
    return node;
}

Node* Builder::attribute(Node* element, std::string_view qualified, std::string_view value,
                         std::string_view uri) {
    bool const declares = qualified == "xmlns" || qualified.starts_with("xmlns:");
    tree::Name* const full = name(qualified, declares ? tree::xmlnsNamespace : uri);
    Node* const node = tree::newAttribute(*document_, full, value);
    tree::appendAttribute(*document_, element, node);
    return node;
}

Node* Builder::data(Node* parent, NodeKind kind, std::string_view text) {
    Node* const node = tree::newCharacterData(*document_, kind, text);
    tree::appendChild(*document_, parent, node);
    return node;
}

Node* Builder::text(Node* parent, std::string_view text) {
    return data(parent, NodeKind::text, text);
}

Node* Builder::instruction(Node* parent, std::string_view target, std::string_view data) {
    Node* const node = tree::newProcessingInstruction(*document_, name(target, {}), data);
    tree::appendChild(*document_, parent, node);
    return node;
}

} // namespace tibxml::output::test
