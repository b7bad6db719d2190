#include "TreeBuilder.h"

#include <algorithm>
#include <cstdint>

#include <tree/Editing.h>

#include "TagSource.h"

namespace tibxml::reader {

namespace {

bool isSpace(char c) noexcept {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

} // namespace

TreeBuilder::TreeBuilder(tree::Document& document)
    : document_{document},
      parent_{document.node()} {}

tree::Name* TreeBuilder::nameOf(unsigned char const* local, unsigned char const* prefix,
                                unsigned char const* uri) {
    auto const address = reinterpret_cast<std::uintptr_t>(local);
    CachedName& cached = names_[(address ^ (address >> 8)) % names_.size()];
    if (cached.local != local || cached.prefix != prefix || cached.uri != uri) {
        cached = {local, prefix, uri,
                  document_.names().intern(view(prefix), view(local), view(uri))};
    }
    return cached.name;
}

void TreeBuilder::append(tree::NodeKind kind, tree::Name* name, std::string_view content) {
    tree::Node* const node = document_.arena().newNode(kind);
    node->name = name;
    tree::setTextOnce(document_, node, content);
    tree::appendChild(document_, parent_, node);
}

void TreeBuilder::declaration(std::string_view content) {
    append(tree::NodeKind::declaration, document_.names().intern({}, "xml", {}), content);
}

void TreeBuilder::startElement(ParsedStartTag const& tag) {
    flushText();
    tree::Node* const element = tree::newElement(document_, nameOf(tag.local, tag.prefix, tag.uri));
    tree::appendChild(document_, parent_, element);
    parent_ = element;
    ++depth_;
    if (tag.declarationCount != 0 && tag.attributeCount != 0) return addInSourceOrder(element, tag);
    for (int i = 0; i != tag.declarationCount; ++i)
        addDeclaration(element, tag.declarations[i]);
    for (int i = 0; i != tag.attributeCount; ++i)
        addAttribute(element, tag.attributes[i]);
}

void TreeBuilder::addInSourceOrder(tree::Node* element, ParsedStartTag const& tag) {
    TagSource source{tag.source};
    ParsedDeclaration const* declaration = tag.declarations;
    ParsedAttribute const* attribute = tag.attributes;
    ParsedDeclaration const* const lastDeclaration = declaration + tag.declarationCount;
    ParsedAttribute const* const lastAttribute = attribute + tag.attributeCount;
    while (declaration != lastDeclaration && attribute != lastAttribute) {
        if (source.nextIsDeclaration()) {
            addDeclaration(element, *declaration++);
        } else {
            addAttribute(element, *attribute++);
        }
    }
    while (declaration != lastDeclaration)
        addDeclaration(element, *declaration++);
    while (attribute != lastAttribute)
        addAttribute(element, *attribute++);
}

void TreeBuilder::addAttribute(tree::Node* element, ParsedAttribute const& parsed) {
    tree::Node* const attribute = document_.arena().newNode(tree::NodeKind::attribute);
    attribute->name = nameOf(parsed.local, parsed.prefix, parsed.uri);
    tree::setTextOnce(document_, attribute, valueOf(parsed));
    tree::appendAttribute(document_, element, attribute);
    if (parsed.prefix != nullptr && attribute->name->qualified == "xml:space")
        noteSpace(valueOf(parsed));
}

void TreeBuilder::addDeclaration(tree::Node* element, ParsedDeclaration const& declaration) {
    std::string_view const prefix = view(declaration.prefix);
    bool const isDefault = prefix.empty();
    tree::Name* const name = document_.names().intern(
        isDefault ? std::string_view{} : std::string_view{"xmlns"},
        isDefault ? std::string_view{"xmlns"} : prefix, tree::xmlnsNamespace);
    tree::Node* const attribute = document_.arena().newNode(tree::NodeKind::attribute);
    attribute->name = name;
    tree::setTextOnce(document_, attribute, view(declaration.uri));
    tree::appendAttribute(document_, element, attribute);
}

void TreeBuilder::noteSpace(std::string_view value) {
    if (value == "preserve" || value == "default")
        spaceScopes_.push_back({depth_, value == "preserve"});
}

bool TreeBuilder::keepsWhiteSpace() const noexcept {
    return document_.preservesWhiteSpace || (!spaceScopes_.empty() && spaceScopes_.back().preserve);
}

void TreeBuilder::endElement() {
    flushText();
    if (!spaceScopes_.empty() && spaceScopes_.back().depth == depth_) spaceScopes_.pop_back();
    --depth_;
    parent_ = parent_->parent;
}

void TreeBuilder::characters(std::string_view piece, bool fromReference) {
    if (!textHasContent_)
        textHasContent_ = fromReference || !std::all_of(piece.begin(), piece.end(), isSpace);
    text_ += piece;
}

void TreeBuilder::flushText() {
    if (text_.empty()) return;
    if (textHasContent_ || keepsWhiteSpace()) {
        append(tree::NodeKind::text, nullptr, text_);
    } else {
        markBreak();
    }
    text_.clear();
    textHasContent_ = false;
}

void TreeBuilder::markBreak() noexcept {
    if (tree::Node* const last = parent_->lastChild()) {
        last->flags |= tree::breakAfter;
    } else {
        parent_->flags |= tree::breakInside;
    }
}

void TreeBuilder::cdata(std::string_view content) {
    flushText();
    append(tree::NodeKind::cdata, nullptr, content);
}

void TreeBuilder::comment(std::string_view content) {
    flushText();
    append(tree::NodeKind::comment, nullptr, content);
}

void TreeBuilder::processingInstruction(std::string_view target, std::string_view data) {
    flushText();
    append(tree::NodeKind::processingInstruction, document_.names().intern({}, target, {}), data);
}

} // namespace tibxml::reader
