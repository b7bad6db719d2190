#include "TreeParser.h"

#include <string>

#include "DeclaredEncoding.h"

namespace tibxml::reader {

struct TreeEvents {
    template <class Step>
    static void guarded(void* data, Step step) noexcept {
        TreeParser::guarded<TreeParser>(data, step);
    }

    static void startDocument(void* data) {
        guarded(data, [](TreeParser& parser) { parser.readDeclaration(); });
    }

    static void startElement(void* data, xmlChar const* local, xmlChar const* prefix,
                             xmlChar const* uri, int declarationCount, xmlChar const** declarations,
                             int attributeCount, int /*defaulted*/, xmlChar const** attributes) {
        guarded(data, [&](TreeParser& parser) {
            if (parser.stopsTooDeep()) return;
            ParsedStartTag tag{local,
                               prefix,
                               uri,
                               reinterpret_cast<ParsedDeclaration const*>(declarations),
                               declarationCount,
                               reinterpret_cast<ParsedAttribute const*>(attributes),
                               attributeCount,
                               {}};
            bool const areMixed = declarationCount != 0 && attributeCount != 0;
            if (areMixed || parser.mayDeclareXml()) tag.source = parser.startTagSource();
            parser.builder_.startElement(tag);
        });
    }

    static void endElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        guarded(data, [](TreeParser& parser) { parser.builder_.endElement(); });
    }

    static void characters(void* data, xmlChar const* text, int length) {
        guarded(data, [&](TreeParser& parser) {
            std::string_view const piece = view(text, length);
            if (!parser.builder_.isWithinText() && parser.isAllToNextTag(piece)) {
                parser.builder_.text(piece);
            } else {
                parser.builder_.characters(piece, parser.isReference(piece.data()));
            }
        });
    }

    static void cdata(void* data, xmlChar const* text, int length) {
        guarded(data, [&](TreeParser& parser) { parser.builder_.cdata(view(text, length)); });
    }

    static void comment(void* data, xmlChar const* text) {
        guarded(data, [&](TreeParser& parser) { parser.builder_.comment(view(text)); });
    }

    static void processingInstruction(void* data, xmlChar const* target, xmlChar const* content) {
        guarded(data, [&](TreeParser& parser) {
            parser.builder_.processingInstruction(view(target), view(content));
        });
    }

    static xmlSAXHandler handler() noexcept {
        xmlSAXHandler handler{};
        handler.startDocument = startDocument;
        handler.startElementNs = startElement;
        handler.endElementNs = endElement;
        handler.characters = characters;
        // The same function for both keeps the parser from guessing which white space matters.
        handler.ignorableWhitespace = characters;
        handler.cdataBlock = cdata;
        handler.comment = comment;
        handler.processingInstruction = processingInstruction;
        return handler;
    }
};

TreeParser::TreeParser(tree::Document& document, ByteSource& source, EncodingRule rule,
                       ReadError& error)
    : Parser{source, rule, error, TreeEvents::handler()},
      builder_{document} {}

void TreeParser::readDeclaration() {
    if (context().standalone == -1) return; // there is none
    noteForgotten();
    std::string content = "version=\"";
    content.append(view(context().version)).append("\"");
    std::string_view const encoding = encodingName();
    if (!encoding.empty()) content.append(" encoding=\"").append(encoding).append("\"");
    if (context().standalone >= 0)
        content += context().standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
    builder_.declaration(content);
}

std::string_view TreeParser::encodingName() const noexcept {
    xmlParserInput const& input = *context().input;
    if (rule() == EncodingRule::alwaysUtf8)
        return declaredEncoding(view(input.base, static_cast<int>(input.cur - input.base)));
    return context().encoding != nullptr ? view(context().encoding) : view(input.encoding);
}

std::string_view TreeParser::startTagSource() const noexcept {
    auto const* const end = reinterpret_cast<char const*>(context().input->cur);
    auto const* begin = end;
    do {
        --begin;
    } while (*begin != '<'); // which no attribute value may contain
    return {begin, static_cast<std::size_t>(end - begin)};
}

// Such a piece, as most texts are, is still in the parser's input, in front of the '<'.
bool TreeParser::isAllToNextTag(std::string_view piece) const noexcept {
    xmlParserInput const& input = *context().input;
    auto const* const begin = reinterpret_cast<xmlChar const*>(piece.data());
    auto const* const end = begin + piece.size();
    return begin >= input.base && end < input.end && *end == '<';
}

// A character reference arrives as a piece of its own, right after its ';' was read, from outside
// the parser's input.
bool TreeParser::isReference(char const* text) const noexcept {
    xmlParserInput const& input = *context().input;
    auto const* const byte = reinterpret_cast<xmlChar const*>(text);
    return (byte < input.base || byte > input.end) && input.cur > input.base &&
           input.cur[-1] == ';';
}

} // namespace tibxml::reader
