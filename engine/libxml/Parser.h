// One run of libxml2's parser over a source: its errors go into a ReadError, and nothing of it
// reaches the process-wide state of the library. What becomes of its events is up to the class
// derived from this.
#pragma once

#include <array>
#include <exception>
#include <memory>
#include <string_view>

#include <libxml/parser.h>

#include <reader/ByteSource.h>
#include <reader/ReadError.h>

#include "SourcePosition.h"

namespace tibxml::reader {

enum class EncodingRule { detect, alwaysUtf8 };

class Parser {
public:
    Parser(Parser const&) = delete;
    Parser& operator=(Parser const&) = delete;

    // True when the whole document was read; otherwise the error is filled, unless stop() ended it.
    // Throws std::bad_alloc and what the events have thrown.
    bool run();

    // Where the parser stands, or the place of the error.
    long line() const noexcept;
    long column() const noexcept;

protected:
    // The handler's functions get this object, as a pointer to Parser, for their data. Errors and
    // document types are taken care of here.
    Parser(ByteSource& source, EncodingRule rule, ReadError& error, xmlSAXHandler handler);
    ~Parser() = default;

    // Does what an event asks for, called from libxml2's C frames, through which no exception may
    // pass: one that is thrown is kept, ends the parse, and is thrown again by run().
    template <class Actual, class Step>
    static void guarded(void* data, Step step) noexcept {
        Parser& parser = *static_cast<Parser*>(data);
        // Some errors do not end the parse, but what comes after them may lack what was wrong.
        if (parser.isOver_) return;
        try {
            step(static_cast<Actual&>(parser));
        } catch (...) {
            parser.stopForException();
        }
    }

    // Ends the parse without an error.
    void stop() noexcept;

    // To be asked before an element starts: whether that has ended the parse as one too deep.
    bool stopsTooDeep() noexcept {
        if (context_->nameNr < maximumDepth) return false;
        stop(errorTooDeep, "elements are nested more than 256 deep");
        return true;
    }

    // To be called when there was an XML declaration.
    void noteForgotten() noexcept;

    // Whether "xmlns:xml" has come by, or the bytes are such that it cannot be told.
    bool mayDeclareXml() const noexcept { return mayDeclareXml_; }

    EncodingRule rule() const noexcept { return rule_; }

    xmlParserCtxt const& context() const noexcept { return *context_; }

private:
    friend struct ParserCallbacks; // the functions that libxml2 calls

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
    SourcePosition position() const noexcept;
    void locate();
    void noteEncoding(std::string_view start) noexcept;
    void noteDeclarationOfXml(std::string_view piece) noexcept;
    bool endsWithinCharacter() const noexcept;

    ByteSource& source_;
    ReadError& error_;
    EncodingRule rule_;
    std::unique_ptr<xmlParserCtxt, FreeContext> context_;
    std::exception_ptr exception_;
    bool isOver_ = false; // by an error, an exception or stop()
    bool hasStarted_ = false;
    bool mayDeclareXml_ = false;
    std::array<char, 8> lastBytes_{}; // of the piece before
    long behindEncoding_ = 0;         // where the name of the encoding ends, with its quote
    long forgotten_ = 0;              // bytes that the parser's own count of bytes lacks
};

} // namespace tibxml::reader
