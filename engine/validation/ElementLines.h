// Finds out on which lines of a text its elements stand.
//
// The tree keeps no line numbers, because they would cost every document memory for the rare one
// that is not valid. Elements are named by their number in document order, and the text is read
// again when a line is wanted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include <libxml/parser.h>

#include <reader/Reader.h>
#include <tree/Document.h>

namespace tibxml::validation {

class ElementLines {
public:
    // The numbers of the elements in question, from 1, and the file to look at, or a tree for the
    // text that output::writeXml gives. Both throw std::bad_alloc.
    ElementLines(std::vector<std::uint64_t> elements, reader::ByteSource& file);
    ElementLines(std::vector<std::uint64_t> elements, tree::Document const& document);
    ElementLines(ElementLines const&) = delete;
    ElementLines& operator=(ElementLines const&) = delete;
    ~ElementLines() = default;

    // The line on which the start tag of one of the elements ends, from 1; 0 when the text has
    // no such element.
    long lineOf(std::uint64_t element) const noexcept;

private:
    friend class LineSink;

    struct FreeContext {
        void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
    };

    static void startElement(void* data, xmlChar const* local, xmlChar const* prefix,
                             xmlChar const* uri, int declarationCount, xmlChar const** declarations,
                             int attributeCount, int defaulted, xmlChar const** attributes);
    void begin(int options);
    void parse(std::string_view piece);

    bool isDone() const noexcept { return lines_.size() == elements_.size(); }

    static void ignoreError(void* data, xmlError* error);
    void noteElement() noexcept;

    std::vector<std::uint64_t> elements_; // ascending, each once
    std::vector<long> lines_;             // of as many of them as were passed
    std::uint64_t passed_ = 0;
    std::unique_ptr<xmlParserCtxt, FreeContext> context_;
};

} // namespace tibxml::validation
