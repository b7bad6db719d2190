#include "TreeBuilder.h"

namespace tibxml::reader {

void TreeBuilder::noteSpace(StartTag const& tag) {
    for (Attribute const& attribute : tag.attributes) {
        std::string_view const value = attribute.value;
        if (attribute.name->use != NameUse::space) continue;
        if (value != "preserve" && value != "default") continue;
        spaceScopes_.push_back({writer_.depth(), keepsWhiteSpace_});
        keepsWhiteSpace_ = value == "preserve" || writer_.document().preservesWhiteSpace();
    }
}

void TreeBuilder::endSpaceScope() noexcept {
    keepsWhiteSpace_ = spaceScopes_.back().keptBefore;
    spaceScopes_.pop_back();
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
    std::size_t const size = text_.size();
    text_.append(tree::Node::inlineCapacity, '\0');
    addText({text_.data(), size}, textHasContent_);
    text_.clear();
    textHasContent_ = false;
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
