// Reads XML without building a tree and reports what is in the document event by event, as wide
// text. As strict as reading into a tree, by the same parser.
//
// Memory is needed for the open elements, the distinct names, and one tag, CDATA section or
// processing instruction at a time, whatever the size of the document.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include <reader/Input.h>
#include <reader/ReadError.h>

namespace tibxml::reader {

// The name of an element or attribute; made once per distinct name and valid until the reading is
// over. The namespace is empty when there is none.
struct SaxName {
    std::wstring uri;
    std::wstring local;
    std::wstring qualified;
};

struct SaxAttribute {
    SaxName const* name;
    std::wstring_view value; // normalised
};

// Where in the source the reading stands: lines and columns from 1, columns in characters. After an
// error it is the place of that.
class SaxPlace {
public:
    virtual long line() const noexcept = 0;
    virtual long column() const noexcept = 0;

protected:
    ~SaxPlace() = default;
};

// Receives the events. Each function returns whether to go on; false ends the reading, and no event
// follows. An exception does the same and leaves the reading. Texts are valid during the call only,
// and never without an address, even when empty.
class SaxEvents {
public:
    // The first; the place is valid until the reading is over.
    virtual bool start(SaxPlace const& place) = 0;

    virtual bool startDocument() = 0;
    // The last, when there was no error.
    virtual bool endDocument() = 0;

    // The declarations of an element, before it in source order and after it in reverse order.
    virtual bool startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) = 0;
    virtual bool endPrefixMapping(std::wstring_view prefix) = 0;

    // Attributes in source order, without declarations.
    virtual bool startElement(SaxName const& name, std::span<SaxAttribute const> attributes) = 0;
    virtual bool endElement(SaxName const& name) = 0;

    // A piece of the text inside the root, CDATA included; never empty.
    virtual bool characters(std::wstring_view text) = 0;

    virtual bool processingInstruction(std::wstring_view target, std::wstring_view data) = 0;

protected:
    ~SaxEvents() = default;
};

/// True when the whole document was read; false with `error` filled if the input is not a
/// well-formed document, and with its code 0 if the events ended the reading. Throws
/// std::bad_alloc, and what the events throw.
bool readSax(SaxEvents& events, Input const& input, ReadError& error);

} // namespace tibxml::reader
