#include "TreeBuilder.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "TagSource.h"

namespace tibxml::reader {

namespace {

bool isSpace(char c) noexcept {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

bool isAllSpace(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), isSpace);
}

} // namespace

tree::Name* TreeBuilder::nameOf(unsigned char const* local, unsigned char const* prefix,
                                unsigned char const* uri) {
    auto const address = reinterpret_cast<std::uintptr_t>(local);
    CachedName& cached = names_[(address ^ (address >> 8)) % names_.size()];
    if (cached.local != local || cached.prefix != prefix || cached.uri != uri) {
        cached = {local, prefix, uri, names().intern(view(prefix), view(local), view(uri))};
    }
    return cached.name;
}

void TreeBuilder::declaration(std::string_view content) {
    writer_.add(tree::NodeKind::declaration, names().intern({}, "xml", {}), content);
}

void TreeBuilder::startElement(ParsedStartTag const& tag) {
    flushText();
    writer_.openElement(nameOf(tag.local, tag.prefix, tag.uri));
    if (!tag.source.empty()) return addInSourceOrder(tag);
    for (int i = 0; i != tag.declarationCount; ++i)
        addDeclaration(tag.declarations[i]);
    for (int i = 0; i != tag.attributeCount; ++i)
        addAttribute(tag.attributes[i]);
}

void TreeBuilder::addInSourceOrder(ParsedStartTag const& tag) {
    TagSource source{tag.source};
    ParsedDeclaration const* declaration = tag.declarations;
    ParsedAttribute const* attribute = tag.attributes;
    ParsedDeclaration const* const lastDeclaration = declaration + tag.declarationCount;
    ParsedAttribute const* const lastAttribute = attribute + tag.attributeCount;
    bool hasXml = false;
    using Kind = TagSource::Kind;
    for (Kind kind = source.next(); kind != Kind::none; kind = source.next()) {
        if (kind == Kind::attribute && attribute != lastAttribute) {
            addAttribute(*attribute++);
        } else if (kind == Kind::declaration && declaration != lastDeclaration) {
            addDeclaration(*declaration++);
        } else if (kind == Kind::declarationOfXml && !std::exchange(hasXml, true)) {
            addDeclaration("xml", tree::xmlNamespace);
        }
    }
}

void TreeBuilder::addAttribute(ParsedAttribute const& parsed) {
    tree::Name* const name = nameOf(parsed.local, parsed.prefix, parsed.uri);
    writer_.addAttribute(name, valueOf(parsed));
    if (parsed.prefix != nullptr && name->qualified == "xml:space") noteSpace(valueOf(parsed));
}

void TreeBuilder::addDeclaration(ParsedDeclaration const& declaration) {
    addDeclaration(view(declaration.prefix), view(declaration.uri));
}

void TreeBuilder::addDeclaration(std::string_view prefix, std::string_view uri) {
    bool const isDefault = prefix.empty();
    tree::Name* const name =
        names().intern(isDefault ? std::string_view{} : std::string_view{"xmlns"},
                       isDefault ? std::string_view{"xmlns"} : prefix, tree::xmlnsNamespace);
    writer_.addAttribute(name, uri);
}

void TreeBuilder::noteSpace(std::string_view value) {
    if (value == "preserve" || value == "default")
        spaceScopes_.push_back({writer_.depth(), value == "preserve"});
}

bool TreeBuilder::keepsWhiteSpace() const noexcept {
    return writer_.document().preservesWhiteSpace ||
           (!spaceScopes_.empty() && spaceScopes_.back().preserve);
}

void TreeBuilder::endElement() {
    flushText();
    if (!spaceScopes_.empty() && spaceScopes_.back().depth == writer_.depth())
        spaceScopes_.pop_back();
    writer_.closeElement();
}

void TreeBuilder::characters(std::string_view piece, bool fromReference) {
    if (!textHasContent_) textHasContent_ = fromReference || !isAllSpace(piece);
    text_ += piece;
}

void TreeBuilder::text(std::string_view whole) {
    addText(whole, !isAllSpace(whole));
}

void TreeBuilder::flushText() {
    if (text_.empty()) return;
    addText(text_, textHasContent_);
    text_.clear();
    textHasContent_ = false;
}

void TreeBuilder::addText(std::string_view text, bool hasContent) {
    if (hasContent || keepsWhiteSpace()) {
        writer_.add(tree::NodeKind::text, nullptr, text);
    } else {
        markBreak();
    }
}

void TreeBuilder::markBreak() noexcept {
    if (tree::Node* const last = writer_.last()) {
        last->flags |= tree::breakAfter;
    } else {
        writer_.parent()->flags |= tree::breakInside;
    }
}

void TreeBuilder::cdata(std::string_view content) {
    flushText();
    writer_.add(tree::NodeKind::cdata, nullptr, content);
}

void TreeBuilder::comment(std::string_view content) {
    flushText();
    writer_.add(tree::NodeKind::comment, nullptr, content);
}

void TreeBuilder::processingInstruction(std::string_view target, std::string_view data) {
    flushText();
    writer_.add(tree::NodeKind::processingInstruction, names().intern({}, target, {}), data);
}

} // namespace tibxml::reader
