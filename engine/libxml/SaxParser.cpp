#include "SaxParser.h"

#include <algorithm>

#include <TibXml/platform/Utf.h>

namespace tibxml::reader {

namespace {

// Where a text may be cut at `size` or a little before, so that no character is.
std::size_t cutAt(std::string_view text, std::size_t size) noexcept {
    if (text.size() <= size) return text.size();
    while ((static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        --size;
    return size;
}

std::wstring_view widened(std::string_view text, wchar_t* room) noexcept {
    wchar_t const* const end = platform::widenUtf8(text, room);
    return {room, static_cast<std::size_t>(end - room)};
}

} // namespace

struct SaxCallbacks {
    // Steps say whether to go on.
    template <class Step>
    static void guarded(void* data, Step step) noexcept {
        SaxParser::guarded<SaxParser>(data, [&](SaxParser& parser) {
            if (!step(parser)) parser.stop();
        });
    }

    static void startDocument(void* data) {
        guarded(data, [](SaxParser& parser) {
            if (parser.context().standalone != -1) parser.noteForgotten();
            return parser.events_.startDocument();
        });
    }

    static void startElement(void* data, xmlChar const* local, xmlChar const* prefix,
                             xmlChar const* uri, int declarationCount, xmlChar const** declarations,
                             int attributeCount, int /*defaulted*/, xmlChar const** attributes) {
        SaxParser::guarded<SaxParser>(data, [&](SaxParser& parser) {
            if (!parser.isTagComplete() || parser.stopsTooDeep()) return;
            auto const* const declared = reinterpret_cast<ParsedDeclaration const*>(declarations);
            auto const* const parsed = reinterpret_cast<ParsedAttribute const*>(attributes);
            SaxName const& name = parser.names_.name(local, prefix, uri);
            parser.open_.push_back({&name, declarationCount});
            if (!parser.declare(declared, declarationCount) ||
                !parser.startElement(name, parsed, attributeCount))
                parser.stop();
        });
    }

    static void endElement(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        guarded(data, [](SaxParser& parser) { return parser.endElement(); });
    }

    static void characters(void* data, xmlChar const* text, int length) {
        guarded(data, [&](SaxParser& parser) { return parser.characters(view(text, length)); });
    }

    static void processingInstruction(void* data, xmlChar const* target, xmlChar const* content) {
        guarded(data, [&](SaxParser& parser) {
            return parser.processingInstruction(view(target), view(content));
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
        handler.cdataBlock = characters;
        handler.processingInstruction = processingInstruction;
        return handler;
    }
};

SaxParser::SaxParser(SaxEvents& events, ByteSource& source, EncodingRule rule, ReadError& error)
    : Parser{source, rule, error, SaxCallbacks::handler()},
      events_{events} {}

bool SaxParser::runWithEnds() {
    return events_.start(*this) && run() && events_.endDocument();
}

// A tag that the end of the document cuts off is announced as if it were whole, before the error.
bool SaxParser::isTagComplete() const noexcept {
    xmlChar const next = *context().input->cur;
    return next == '>' || next == '/';
}

bool SaxParser::declare(ParsedDeclaration const* first, int count) {
    return std::all_of(first, first + count, [&](ParsedDeclaration const& declaration) {
        std::wstring const& prefix = names_.text(declaration.prefix);
        prefixes_.push_back(&prefix);
        return events_.startPrefixMapping(prefix, names_.text(declaration.uri));
    });
}

bool SaxParser::startElement(SaxName const& name, ParsedAttribute const* first, int count) {
    attributes_.clear();
    std::size_t bytes = 0;
    for (ParsedAttribute const* attribute = first; attribute != first + count; ++attribute)
        bytes += valueOf(*attribute).size();
    wchar_t* room = roomFor(bytes);
    for (ParsedAttribute const* attribute = first; attribute != first + count; ++attribute) {
        std::wstring_view const value = widened(valueOf(*attribute), room);
        SaxName const& known = names_.name(attribute->local, attribute->prefix, attribute->uri);
        attributes_.push_back({&known, value});
        room += value.size();
    }
    return events_.startElement(name, attributes_);
}

bool SaxParser::endElement() {
    OpenElement const element = open_.back();
    open_.pop_back();
    if (!events_.endElement(*element.name)) return false;
    for (int i = 0; i != element.declarations; ++i) {
        std::wstring const& prefix = *prefixes_.back();
        prefixes_.pop_back();
        if (!events_.endPrefixMapping(prefix)) return false;
    }
    return true;
}

bool SaxParser::characters(std::string_view text) {
    while (!text.empty()) {
        std::size_t const size = cutAt(text, piece_.size());
        if (!events_.characters(widened(text.substr(0, size), piece_.data()))) return false;
        text.remove_prefix(size);
    }
    return true;
}

bool SaxParser::processingInstruction(std::string_view target, std::string_view data) {
    wchar_t* const room = roomFor(target.size() + data.size());
    std::wstring_view const wideTarget = widened(target, room);
    return events_.processingInstruction(wideTarget, widened(data, room + wideTarget.size()));
}

wchar_t* SaxParser::roomFor(std::size_t bytes) {
    if (room_.size() <= bytes) room_.resize(2 * bytes + 64); // never empty: texts have an address
    return room_.data();
}

} // namespace tibxml::reader
