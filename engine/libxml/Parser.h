// One run of libxml2's parser over a source: its events go to a TreeBuilder, its errors into a
// ReadError, and nothing of it reaches the process-wide state of the library.
#pragma once

#include <exception>
#include <memory>

#include <libxml/parser.h>

#include <reader/Reader.h>

#include "TreeBuilder.h"

namespace tibxml::reader {

enum class EncodingRule { detect, alwaysUtf8 };

class Parser {
public:
    Parser(tree::Document& document, ByteSource& source, EncodingRule rule, ReadError& error);
    Parser(Parser const&) = delete;
    Parser& operator=(Parser const&) = delete;
    ~Parser() = default;

    // True when the whole document was read; otherwise the error is filled. Throws std::bad_alloc
    // and what the builder throws.
    bool run();

private:
    friend struct ParserEvents; // the functions that the parser calls

    struct FreeContext {
        void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
    };

    // As many bytes as there are up to `size`, however few the source gives at a time: the encoding
    // is recognised by the first piece that the parser gets.
    std::ptrdiff_t fill(char* buffer, std::size_t size) noexcept;

    // The first error counts; everything after it may only be its consequence.
    void fail(std::uint32_t code, std::string_view reason) noexcept;
    void stop(std::uint32_t code, std::string_view reason) noexcept;
    void stopForException() noexcept;
    void locate();
    void readDeclaration();
    void noteEncoding(std::string_view start) noexcept;
    void noteForgotten() noexcept;
    bool endsWithinCharacter() const noexcept;
    std::string_view encodingName() const noexcept;
    std::string_view startTagSource() const noexcept;
    bool isReference(char const* text) const noexcept;

    ByteSource& source_;
    ReadError& error_;
    EncodingRule rule_;
    TreeBuilder builder_;
    std::unique_ptr<xmlParserCtxt, FreeContext> context_;
    std::exception_ptr exception_;
    bool hasStarted_ = false;
    long behindEncoding_ = 0; // where the name of the encoding ends, with its quote
    long forgotten_ = 0;      // bytes that the parser's own count of bytes lacks
};

} // namespace tibxml::reader
