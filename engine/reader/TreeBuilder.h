// Builds a tree from what the parser tells.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <tree/DocumentWriter.h>
#include <tree/Text.h>

#include "Grammar.h"

namespace tibxml::reader {

// All functions throw std::bad_alloc; texts above 4 GiB throw std::length_error.
class TreeBuilder {
public:
    // The document must be empty.
    explicit TreeBuilder(tree::Document& document) noexcept
        : writer_{document},
          keepsWhiteSpace_{document.preservesWhiteSpace()} {}

    void* nameOf(QualifiedName const& name, Uri const& uri) {
        return names().intern(name.prefix(), name.local(), uri.text);
    }

    void startDocument() noexcept {}

    void declaration(std::string_view content) {
        writer_.add(tree::NodeKind::declaration, names().intern({}, "xml", {}), content);
    }

    void startElement(void* name, StartTag const& tag) {
        endText();
        writer_.openElement(static_cast<tree::Name*>(name));
        for (Attribute const& attribute : tag.attributes) {
            writer_.addAttribute(static_cast<tree::Name*>(attribute.name->attributeName),
                                 tree::PaddedText{attribute.value});
        }
        if (tag.has(NameUse::space)) noteSpace(tag);
    }

    void endElement(void* /*name*/) {
        endText();
        if (!spaceScopes_.empty() && spaceScopes_.back().depth == writer_.depth()) endSpaceScope();
        writer_.closeElement();
    }

    bool dropsBlanks() const noexcept { return text_.empty() && !keepsWhiteSpace_; }

    void blanks() noexcept { markBreak(); }

    void text(std::string_view whole) {
        if (text_.empty()) {
            addText(whole, !tree::isBlankText(whole));
        } else {
            piece(whole);
        }
    }

    void piece(std::string_view text);
    // White space written as a reference counts as text.
    void reference(std::string_view character);
    void cdata(std::string_view content);
    void comment(std::string_view content);
    void instruction(std::string_view target, std::string_view data);

private:
    struct SpaceScope {
        int depth;
        bool keptBefore;
    };

    void markBreak() noexcept {
        if (tree::Node* const last = writer_.last()) {
            last->flags |= tree::breakAfter;
        } else {
            writer_.parent()->flags |= tree::breakInside;
        }
    }

    void noteSpace(StartTag const& tag);
    void endSpaceScope() noexcept;
    void flushText();

    void endText() {
        if (!text_.empty()) flushText();
    }

    void addText(std::string_view text, bool hasContent) {
        if (hasContent || keepsWhiteSpace_) {
            writer_.add(tree::NodeKind::text, nullptr, tree::PaddedText{text});
        } else {
            markBreak();
        }
    }

    tree::NameTable& names() noexcept { return writer_.document().names(); }

    tree::DocumentWriter writer_;
    bool keepsWhiteSpace_;                // where the reading is
    std::string text_;                    // of the run of characters that is being read
    bool textHasContent_ = false;         // more than white space that lays the document out
    std::vector<SpaceScope> spaceScopes_; // of the open elements that carry xml:space
};

} // namespace tibxml::reader
