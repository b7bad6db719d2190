#include "Parser.h"

#include <algorithm>
#include <new>
#include <utility>

#include <libxml/parserInternals.h>

#include <tree/NameCharacters.h>

#include "DeclaredEncoding.h"
#include "LibraryErrors.h"

namespace tibxml::reader {

namespace {

void initializeOnce() {
    static bool const initialized = (xmlInitParser(), true);
    static_cast<void>(initialized);
}

} // namespace

// What libxml2 calls from its C frames whatever a parser does with the content.
struct ParserCallbacks {
    static int read(void* data, char* buffer, int size) {
        Parser& parser = *static_cast<Parser*>(data);
        std::ptrdiff_t const count = parser.fill(buffer, static_cast<std::size_t>(size));
        if (count >= 0) return static_cast<int>(count);
        parser.fail(errorSource, "the source could not be read");
        return -1;
    }

    static int close(void*) { return 0; }

    static void documentType(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        static_cast<Parser*>(data)->stop(errorDocumentType, "DTD is prohibited");
    }

    static void error(void* data, xmlError* error) {
        // Any text may name a namespace; that it is no URI is nobody's business.
        if (error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI) return;
        Parser& parser = *static_cast<Parser*>(data);
        if (error->code == XML_ERR_NO_MEMORY)
            parser.exception_ = std::make_exception_ptr(std::bad_alloc{});
        parser.fail(errorNotWellFormed + static_cast<std::uint32_t>(error->code),
                    error->message != nullptr ? error->message : "");
    }
};

Parser::Parser(ByteSource& source, EncodingRule rule, ReadError& error, xmlSAXHandler handler)
    : source_{source},
      error_{error},
      rule_{rule} {
    initializeOnce();
    handler.initialized = XML_SAX2_MAGIC;
    handler.internalSubset = ParserCallbacks::documentType;
    handler.serror = ParserCallbacks::error;
    ThreadErrors const errors{ParserCallbacks::error, this};
    context_.reset(xmlCreateIOParserCtxt(&handler, this, ParserCallbacks::read,
                                         ParserCallbacks::close, this, XML_CHAR_ENCODING_NONE));
    if (!context_) throw std::bad_alloc{};
    int const encoding = rule == EncodingRule::alwaysUtf8 ? XML_PARSE_IGNORE_ENC : 0;
    // Without document types "no entities" means the predefined ones: without it they would arrive
    // in attribute values as character references.
    xmlCtxtUseOptions(context_.get(),
                      XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOENT | encoding);
}

bool Parser::run() {
    {
        ThreadErrors const errors{ParserCallbacks::error, this};
        xmlParseDocument(context_.get());
    }
    if (exception_) std::rethrow_exception(exception_);
    if (isOver_) return false;
    if (context_->wellFormed == 0) fail(errorNotWellFormed, "the document is not well formed");
    if (endsWithinCharacter()) fail(errorNotWellFormed, "the last character is incomplete");
    return !isOver_;
}

// Bytes that were read and never became a character.
bool Parser::endsWithinCharacter() const noexcept {
    xmlParserInputBuffer const* const buffer = context_->input->buf;
    return buffer != nullptr && buffer->encoder != nullptr && xmlBufUse(buffer->raw) != 0;
}

std::ptrdiff_t Parser::fill(char* buffer, std::size_t size) noexcept {
    std::size_t done = 0;
    while (done != size) {
        std::ptrdiff_t const count = source_.read(buffer + done, size - done);
        if (count < 0) return count;
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    if (!std::exchange(hasStarted_, true)) noteEncoding({buffer, done});
    if (!mayDeclareXml_) noteDeclarationOfXml({buffer, done});
    return static_cast<std::ptrdiff_t>(done);
}

void Parser::fail(std::uint32_t code, std::string_view reason) noexcept {
    if (isOver_) return;
    isOver_ = true;
    error_.code = code;
    try {
        error_.reason = inOneLine(reason);
        locate();
    } catch (...) {
        exception_ = std::current_exception();
    }
}

void Parser::stop(std::uint32_t code, std::string_view reason) noexcept {
    fail(code, reason);
    stop();
}

void Parser::stop() noexcept {
    isOver_ = true;
    xmlStopParser(context_.get());
}

void Parser::stopForException() noexcept {
    exception_ = std::current_exception();
    stop();
}

// The parser's own pointers are out of date while its buffer grows, which is when bytes that do not
// convert are reported: only their distance counts then. A parse that was stopped has no buffer.
SourcePosition Parser::position() const noexcept {
    xmlParserInput const& input = *context_->input;
    if (input.buf == nullptr) return positionOf({}, 0);
    xmlBuf* const buffer = input.buf->buffer;
    return positionOf({reinterpret_cast<char const*>(xmlBufContent(buffer)), xmlBufUse(buffer)},
                      static_cast<std::size_t>(input.cur - input.base));
}

long Parser::line() const noexcept {
    return isOver_ ? error_.line : context_->input->line;
}

long Parser::column() const noexcept {
    if (isOver_) return error_.column;
    SourcePosition const here = position();
    return here.lineIsWhole ? here.column : context_->input->col;
}

void Parser::locate() {
    if (!context_ || context_->input == nullptr) return; // the very first read already failed
    xmlParserInput const& input = *context_->input;
    SourcePosition const here = position();
    error_.sourceLine = wellFormed(here.line);
    error_.line = input.line;
    error_.column = here.lineIsWhole ? here.column : input.col;
    error_.offset = forgotten_ + static_cast<long>(input.consumed) + (input.cur - input.base);
}

// When the declaration names an encoding the parser may start over behind that name and forget that
// it has read something before.
void Parser::noteEncoding(std::string_view start) noexcept {
    std::string_view const encoding = declaredEncoding(start);
    if (!encoding.empty()) behindEncoding_ = encoding.end() - start.begin() + 1;
}

// The parser keeps this declaration to itself, and looking for it in every tag would take time. So
// it is looked for in the bytes, which are ASCII there in all encodings that are usual but those
// with wider characters.
void Parser::noteDeclarationOfXml(std::string_view piece) noexcept {
    static constexpr std::string_view declaration = "xmlns:xml";
    static_assert(std::tuple_size_v<decltype(lastBytes_)> == declaration.size() - 1);
    std::array<char, 2 * (declaration.size() - 1)> seam{};
    std::size_t const before = lastBytes_.size();
    std::size_t const after = std::min(before, piece.size());
    std::copy_n(lastBytes_.begin(), before, seam.begin());
    std::copy_n(piece.begin(), after, seam.begin() + before);
    mayDeclareXml_ = piece.find(declaration) != piece.npos || piece.find('\0') != piece.npos ||
                     std::string_view{seam.data(), before + after}.find(declaration) != piece.npos;
    char const* const last = piece.size() < before ? seam.data() + after : piece.end() - before;
    std::copy_n(last, before, lastBytes_.begin());
}

void Parser::noteForgotten() noexcept {
    xmlChar const first = *context_->input->base;
    if (first == '?' || tree::isBlank(first)) forgotten_ = behindEncoding_;
}

} // namespace tibxml::reader
