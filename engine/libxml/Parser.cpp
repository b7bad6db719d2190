#include "Parser.h"

#include <algorithm>
#include <new>
#include <utility>

#include <libxml/parserInternals.h>

#include <tree/NameCharacters.h>

#include "LibraryErrors.h"
#include "SourcePosition.h"

namespace tibxml::reader {

namespace {

std::string_view view(xmlChar const* text) noexcept {
    return text != nullptr ? std::string_view{reinterpret_cast<char const*>(text)}
                           : std::string_view{};
}

std::string_view view(xmlChar const* text, int length) noexcept {
    return {reinterpret_cast<char const*>(text), static_cast<std::size_t>(length)};
}

// The encoding that the XML declaration at the start of `text` names; a part of it, or empty.
std::string_view declaredEncoding(std::string_view text) noexcept {
    text = text.substr(0, text.find("?>"));
    std::size_t const name = text.find("encoding");
    if (name == std::string_view::npos) return {};
    std::size_t const open = text.find_first_of("\"'", name);
    if (open == std::string_view::npos) return {};
    std::size_t const close = text.find(text[open], open + 1);
    if (close == std::string_view::npos) return {};
    return text.substr(open + 1, close - open - 1);
}

void initializeOnce() {
    static bool const initialized = (xmlInitParser(), true);
    static_cast<void>(initialized);
}

} // namespace

// What libxml2 calls from its C frames, through which no exception may pass: each is kept, ends the
// parse, and is thrown again by run().
struct ParserEvents {
    template <class Step>
    static void guarded(void* data, Step step) noexcept {
        Parser& parser = *static_cast<Parser*>(data);
        // Some errors do not end the parse, but what comes after them may lack what was wrong.
        if (parser.error_.code != 0) return;
        try {
            step(parser);
        } catch (...) {
            parser.stopForException();
        }
    }

    static int read(void* data, char* buffer, int size) {
        Parser& parser = *static_cast<Parser*>(data);
        std::ptrdiff_t const count = parser.fill(buffer, static_cast<std::size_t>(size));
        if (count >= 0) return static_cast<int>(count);
        parser.fail(errorSource, "the source could not be read");
        return -1;
    }

    static int close(void*) { return 0; }

    static void startDocument(void* data) {
        guarded(data, [](Parser& parser) { parser.readDeclaration(); });
    }

    static void documentType(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        static_cast<Parser*>(data)->stop(errorDocumentType, "DTD is prohibited");
    }

    static void startElement(void* data, xmlChar const* local, xmlChar const* prefix,
                             xmlChar const* uri, int declarationCount, xmlChar const** declarations,
                             int attributeCount, int /*defaulted*/, xmlChar const** attributes) {
        guarded(data, [&](Parser& parser) {
            if (parser.builder_.depth() == maximumDepth)
                return parser.stop(errorTooDeep, "elements are nested more than 256 deep");
            ParsedStartTag tag{local,
                               prefix,
                               uri,
                               reinterpret_cast<ParsedDeclaration const*>(declarations),
                               declarationCount,
                               reinterpret_cast<ParsedAttribute const*>(attributes),
                               attributeCount,
                               {}};
            if (declarationCount != 0 && attributeCount != 0) tag.source = parser.startTagSource();
            parser.builder_.startElement(tag);
        });
    }

    static void endElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        guarded(data, [](Parser& parser) { parser.builder_.endElement(); });
    }

    static void characters(void* data, xmlChar const* text, int length) {
        guarded(data, [&](Parser& parser) {
            std::string_view const piece = view(text, length);
            parser.builder_.characters(piece, parser.isReference(piece.data()));
        });
    }

    static void cdata(void* data, xmlChar const* text, int length) {
        guarded(data, [&](Parser& parser) { parser.builder_.cdata(view(text, length)); });
    }

    static void comment(void* data, xmlChar const* text) {
        guarded(data, [&](Parser& parser) { parser.builder_.comment(view(text)); });
    }

    static void processingInstruction(void* data, xmlChar const* target, xmlChar const* content) {
        guarded(data, [&](Parser& parser) {
            parser.builder_.processingInstruction(view(target), view(content));
        });
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

    static xmlSAXHandler handler() noexcept {
        xmlSAXHandler handler{};
        handler.initialized = XML_SAX2_MAGIC;
        handler.internalSubset = documentType;
        handler.startDocument = startDocument;
        handler.startElementNs = startElement;
        handler.endElementNs = endElement;
        handler.characters = characters;
        // The same function for both keeps the parser from guessing which white space matters.
        handler.ignorableWhitespace = characters;
        handler.cdataBlock = cdata;
        handler.comment = comment;
        handler.processingInstruction = processingInstruction;
        handler.serror = error;
        return handler;
    }
};

static_assert(sizeof(ParsedAttribute) == 5 * sizeof(xmlChar const*));
static_assert(sizeof(ParsedDeclaration) == 2 * sizeof(xmlChar const*));

Parser::Parser(tree::Document& document, ByteSource& source, EncodingRule rule, ReadError& error)
    : source_{source},
      error_{error},
      rule_{rule},
      builder_{document} {
    initializeOnce();
    xmlSAXHandler handler = ParserEvents::handler();
    context_.reset(xmlCreateIOParserCtxt(&handler, this, ParserEvents::read, ParserEvents::close,
                                         this, XML_CHAR_ENCODING_NONE));
    if (!context_) throw std::bad_alloc{};
    int const encoding = rule == EncodingRule::alwaysUtf8 ? XML_PARSE_IGNORE_ENC : 0;
    // Without document types "no entities" means the predefined ones: without it they would arrive
    // in attribute values as character references.
    xmlCtxtUseOptions(context_.get(),
                      XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOENT | encoding);
}

bool Parser::run() {
    {
        ThreadErrors const errors{ParserEvents::error, this};
        xmlParseDocument(context_.get());
    }
    if (exception_) std::rethrow_exception(exception_);
    if (context_->wellFormed == 0) fail(errorNotWellFormed, "the document is not well formed");
    if (endsWithinCharacter()) fail(errorNotWellFormed, "the last character is incomplete");
    return error_.code == 0;
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
    return static_cast<std::ptrdiff_t>(done);
}

void Parser::fail(std::uint32_t code, std::string_view reason) noexcept {
    if (error_.code != 0) return;
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
    xmlStopParser(context_.get());
}

void Parser::stopForException() noexcept {
    exception_ = std::current_exception();
    xmlStopParser(context_.get());
}

void Parser::locate() {
    if (!context_ || context_->input == nullptr) return; // the very first read already failed
    xmlParserInput const& input = *context_->input;
    SourcePosition const position = positionOf({reinterpret_cast<char const*>(input.base),
                                                static_cast<std::size_t>(input.end - input.base)},
                                               static_cast<std::size_t>(input.cur - input.base));
    error_.sourceLine = wellFormed(position.line);
    error_.line = input.line;
    error_.column = position.lineIsWhole ? position.column : input.col;
    error_.offset = forgotten_ + static_cast<long>(input.consumed) + (input.cur - input.base);
}

void Parser::readDeclaration() {
    if (context_->standalone == -1) return; // there is none
    noteForgotten();
    std::string content = "version=\"";
    content.append(view(context_->version)).append("\"");
    std::string_view const encoding = encodingName();
    if (!encoding.empty()) content.append(" encoding=\"").append(encoding).append("\"");
    if (context_->standalone >= 0)
        content += context_->standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
    builder_.declaration(content);
}

// When the declaration names an encoding the parser may start over behind that name and forget that
// it has read something before.
void Parser::noteEncoding(std::string_view start) noexcept {
    std::string_view const encoding = declaredEncoding(start);
    if (!encoding.empty()) behindEncoding_ = encoding.end() - start.begin() + 1;
}

void Parser::noteForgotten() noexcept {
    xmlChar const first = *context_->input->base;
    if (first == '?' || tree::isBlank(first)) forgotten_ = behindEncoding_;
}

std::string_view Parser::encodingName() const noexcept {
    xmlParserInput const& input = *context_->input;
    if (rule_ == EncodingRule::alwaysUtf8)
        return declaredEncoding(view(input.base, static_cast<int>(input.cur - input.base)));
    return context_->encoding != nullptr ? view(context_->encoding) : view(input.encoding);
}

std::string_view Parser::startTagSource() const noexcept {
    auto const* const end = reinterpret_cast<char const*>(context_->input->cur);
    auto const* begin = end;
    do {
        --begin;
    } while (*begin != '<'); // which no attribute value may contain
    return {begin, static_cast<std::size_t>(end - begin)};
}

// A character reference arrives as a piece of its own, right after its ';' was read, from outside
// the parser's input.
bool Parser::isReference(char const* text) const noexcept {
    xmlParserInput const& input = *context_->input;
    auto const* const byte = reinterpret_cast<xmlChar const*>(text);
    return (byte < input.base || byte > input.end) && input.cur > input.base &&
           input.cur[-1] == ';';
}

} // namespace tibxml::reader
