// Parses a document into wide events.
#pragma once

#include <array>
#include <vector>

#include <reader/SaxReader.h>

#include "ParsedText.h"
#include "Parser.h"
#include "SaxNames.h"

namespace tibxml::reader {

class SaxParser final : public Parser, private SaxPlace {
public:
    SaxParser(SaxEvents& events, ByteSource& source, EncodingRule rule, ReadError& error);

    // As Parser::run(), with the first and the last event, which are the parser's own business.
    bool runWithEnds();

private:
    friend struct SaxCallbacks; // the functions that libxml2 calls

    struct OpenElement {
        SaxName const* name;
        int declarations;
    };

    long line() const noexcept override { return Parser::line(); }

    long column() const noexcept override { return Parser::column(); }

    bool isTagComplete() const noexcept;
    bool declare(ParsedDeclaration const* first, int count);
    bool startElement(SaxName const& name, ParsedAttribute const* first, int count);
    bool endElement();
    bool characters(std::string_view text);
    bool processingInstruction(std::string_view target, std::string_view data);

    // As much room for wide characters as a text with so many bytes can take; what was there before
    // is lost.
    wchar_t* roomFor(std::size_t bytes);

    SaxEvents& events_;
    SaxNames names_;
    std::vector<OpenElement> open_;
    std::vector<std::wstring const*> prefixes_; // of the declarations in force
    std::vector<SaxAttribute> attributes_;      // of one tag at a time
    std::vector<wchar_t> room_;                 // for the texts of one event
    std::array<wchar_t, 4096> piece_;           // of a text
};

} // namespace tibxml::reader
