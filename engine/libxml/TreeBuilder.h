// Builds a tree from the parser's events.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <tree/DocumentWriter.h>

#include "ParsedText.h"

namespace tibxml::reader {

// A start tag as the parser hands it over. Names and URIs are its dictionary's strings: equal ones
// have equal addresses while one document is read.
struct ParsedStartTag {
    unsigned char const* local;
    unsigned char const* prefix;
    unsigned char const* uri;
    ParsedDeclaration const* declarations;
    int declarationCount;
    ParsedAttribute const* attributes;
    int attributeCount;
    // The tag's text up to the end of its attributes; empty unless there are declarations to be
    // put among attributes, or there may be one that was not reported.
    std::string_view source;
};

// All functions throw std::bad_alloc; texts above 4 GiB throw std::length_error.
class TreeBuilder {
public:
    // The document must be empty.
    explicit TreeBuilder(tree::Document& document) noexcept : writer_{document} {}

    void declaration(std::string_view content);
    void startElement(ParsedStartTag const& tag);
    void endElement();
    // One piece of a text. White space from a character reference counts as text.
    void characters(std::string_view piece, bool fromReference);
    // A text that is complete; no piece of it came before.
    void text(std::string_view whole);

    // Whether a piece of a text came last.
    bool isWithinText() const noexcept { return !text_.empty(); }

    void cdata(std::string_view content);
    void comment(std::string_view content);
    void processingInstruction(std::string_view target, std::string_view data);

private:
    struct CachedName {
        unsigned char const* local;
        unsigned char const* prefix;
        unsigned char const* uri;
        tree::Name* name;
    };

    struct SpaceScope {
        int depth;
        bool preserve;
    };

    tree::Name* nameOf(unsigned char const* local, unsigned char const* prefix,
                       unsigned char const* uri);
    void addAttribute(ParsedAttribute const& parsed);
    void addDeclaration(std::string_view prefix, std::string_view uri);
    void addDeclaration(ParsedDeclaration const& declaration);
    void addInSourceOrder(ParsedStartTag const& tag);
    void noteSpace(std::string_view value);
    bool keepsWhiteSpace() const noexcept;
    void flushText();
    void addText(std::string_view text, bool hasContent);
    void markBreak() noexcept;

    tree::NameTable& names() noexcept { return writer_.document().names(); }

    tree::DocumentWriter writer_;
    std::string text_;                    // of the run of characters that is being read
    bool textHasContent_ = false;         // more than white space that lays the document out
    std::vector<SpaceScope> spaceScopes_; // of the open elements that carry xml:space
    std::array<CachedName, 256> names_{}; // by address of the local name
};

} // namespace tibxml::reader
