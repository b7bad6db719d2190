#include <reader/Reader.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <tree/DocumentWriter.h>
#include <tree/Lifetimes.h>
#include <tree/Text.h>

#include "Run.h"

namespace tibxml::reader {

namespace {

// Builds a tree from the events of the parser.
//
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

// Nothing of a broken tree shows, whatever way the reading ends.
bool readOrClear(tree::Document& document, Window& window, ReadError& error) {
    bool done = false;
    error = {};
    try {
        TreeBuilder builder{document};
        Parser<TreeBuilder> parser{window, builder};
        done = run(parser, window, error);
    } catch (...) {
        document.lifetimes().clear();
        throw;
    }
    if (!done) document.lifetimes().clear();
    return done;
}

} // namespace

void describe(ParseFailure const& failure, Window& window, ReadError& error) {
    Place const place = window.placeOf(failure.at);
    error.code = failure.code;
    error.reason = failure.reason;
    error.sourceLine = wellFormed(window.lineOf(failure.at));
    error.line = place.line;
    error.column = place.column;
    error.offset = window.offsetOf(failure.at);
}

bool read(tree::Document& document, Input const& input, ReadError& error) {
    return withWindow(input, [&](Window& window) { return readOrClear(document, window, error); });
}

} // namespace tibxml::reader
