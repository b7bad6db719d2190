#include "TreeBuilder.h"

namespace tibxml::reader {

void TreeBuilder::noteSpace(StartTag const& tag) {
    for (Attribute const& attribute : tag.attributes) {
        std::string_view const value = attribute.value;
        if (attribute.name->use == NameUse::space && (value == "preserve" || value == "default"))
            spaceScopes_.push_back({writer_.depth(), value == "preserve"});
    }
}

bool TreeBuilder::keepsWhiteSpace() const noexcept {
    return writer_.document().preservesWhiteSpace() ||
           (!spaceScopes_.empty() && spaceScopes_.back().preserve);
}

void TreeBuilder::piece(std::string_view text) {
    if (!textHasContent_) textHasContent_ = !tree::isBlankText(text);
    text_ += text;
}

void TreeBuilder::reference(std::string_view character) {
    textHasContent_ = true;
    text_ += character;
}

void TreeBuilder::flushText() {
    addText(text_, textHasContent_);
    text_.clear();
    textHasContent_ = false;
}

void TreeBuilder::markBreak() noexcept {
    if (tree::Node* const last = writer_.last()) {
        last->flags |= tree::breakAfter;
    } else {
        writer_.parent()->flags |= tree::breakInside;
    }
}

void TreeBuilder::cdata(std::string_view content) {
    endText();
    writer_.add(tree::NodeKind::cdata, nullptr, content);
}

void TreeBuilder::comment(std::string_view content) {
    endText();
    writer_.add(tree::NodeKind::comment, nullptr, content);
}

void TreeBuilder::instruction(std::string_view target, std::string_view data) {
    endText();
    writer_.add(tree::NodeKind::processingInstruction, names().intern({}, target, {}), data);
}

} // namespace tibxml::reader
