#include "Peer.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <reader/ReadError.h>

#include "Trace.h"

namespace tibxml::reader::test {

namespace {

std::string_view view(xmlChar const* text) noexcept {
    return text != nullptr ? reinterpret_cast<char const*>(text) : std::string_view{};
}

std::string_view view(xmlChar const* text, int length) noexcept {
    return {reinterpret_cast<char const*>(text), static_cast<std::size_t>(length)};
}

bool isAllSpace(std::string_view text) noexcept {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string qualified(xmlChar const* prefix, xmlChar const* local) {
    std::string name{view(prefix)};
    if (!name.empty()) name += ':';
    return name.append(view(local));
}

struct PeerDeclaration {
    xmlChar const* prefix;
    xmlChar const* uri;
};

struct PeerAttribute {
    xmlChar const* local;
    xmlChar const* prefix;
    xmlChar const* uri;
    xmlChar const* value;
    xmlChar const* end;

    std::string_view text() const { return view(value, static_cast<int>(end - value)); }
};

struct OpenElement {
    std::string name;
    std::vector<std::string> prefixes;
    bool keepsWhiteSpace;
};

class PeerRun {
public:
    PeerRun(std::string_view bytes, bool ignoresDeclaredEncoding)
        : context_{bytes.empty()
                       ? nullptr
                       : xmlCreateMemoryParserCtxt(bytes.data(), static_cast<int>(bytes.size())),
                   &xmlFreeParserCtxt} {
        if (!context_) return;
        int const encoding = ignoresDeclaredEncoding ? XML_PARSE_IGNORE_ENC : 0;
        xmlCtxtUseOptions(context_.get(),
                          XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOENT | encoding);
        *context_->sax = handler();
        context_->userData = this;
    }

    PeerTraces take() {
        if (!context_) return {false, "empty", {}, {}, {}};
        xmlSetStructuredErrorFunc(this, error);
        xmlParseDocument(context_.get());
        xmlSetStructuredErrorFunc(nullptr, nullptr);
        if (context_->wellFormed == 0) fail("not well-formed");
        if (endsWithinCharacter()) fail("the last character is incomplete");
        if (isOver_) return {false, reason_, {}, {}, saxSoFar()};
        sax_.line(')', "");
        return {true, {}, preserved_.lines(), dropped_.lines(), sax_.lines()};
    }

private:
    static PeerRun& of(void* data) noexcept { return *static_cast<PeerRun*>(data); }

    static void error(void* data, xmlError* error) {
        if (error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI) return;
        of(data).fail(error->message != nullptr ? error->message : "");
    }

    static void documentType(void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
        of(data).fail("document type");
        xmlStopParser(of(data).context_.get());
    }

    static xmlSAXHandler handler() noexcept {
        xmlSAXHandler handler{};
        handler.initialized = XML_SAX2_MAGIC;
        handler.internalSubset = documentType;
        handler.serror = error;
        handler.startDocument = [](void* data) { of(data).startDocument(); };
        handler.startElementNs = [](void* data, xmlChar const* local, xmlChar const* prefix,
                                    xmlChar const* uri, int declarations, xmlChar const** declared,
                                    int attributes, int, xmlChar const** values) {
            of(data).startElement(qualified(prefix, local), view(uri),
                                  {reinterpret_cast<PeerDeclaration const*>(declared),
                                   static_cast<std::size_t>(declarations)},
                                  {reinterpret_cast<PeerAttribute const*>(values),
                                   static_cast<std::size_t>(attributes)});
        };
        handler.endElementNs = [](void* data, xmlChar const*, xmlChar const*, xmlChar const*) {
            of(data).endElement();
        };
        handler.characters = [](void* data, xmlChar const* text, int length) {
            of(data).characters(view(text, length));
        };
        handler.ignorableWhitespace = handler.characters;
        handler.cdataBlock = [](void* data, xmlChar const* text, int length) {
            of(data).cdata(view(text, length));
        };
        handler.comment = [](void* data, xmlChar const* text) { of(data).node('!', view(text)); };
        handler.processingInstruction = [](void* data, xmlChar const* target, xmlChar const* text) {
            of(data).instruction(std::string{view(target)}.append(" ").append(view(text)));
        };
        return handler;
    }

    void fail(std::string_view reason) {
        if (!isOver_) reason_ = reason;
        isOver_ = true;
    }

    // Bytes that were read and never became a character.
    bool endsWithinCharacter() const noexcept {
        xmlParserInputBuffer const* const buffer = context_->input->buf;
        return buffer != nullptr && buffer->encoder != nullptr && xmlBufUse(buffer->raw) != 0;
    }

    void startDocument() {
        if (isOver_) return;
        sax_.line('(', "");
        if (context_->standalone == -1) return; // there is no declaration
        std::string text = "version=\"" + std::string{view(context_->version)} + '"';
        std::string_view const encoding = declaredEncoding();
        if (!encoding.empty()) text.append(" encoding=\"").append(encoding).append("\"");
        if (context_->standalone >= 0)
            text += context_->standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
        for (TraceWriter* const tree : {&preserved_, &dropped_})
            tree->line('?', text);
    }

    // Where the declared encoding is ignored the parser does not remember it either.
    std::string_view declaredEncoding() const noexcept {
        xmlParserInput const& input = *context_->input;
        if ((context_->options & XML_PARSE_IGNORE_ENC) == 0)
            return context_->encoding != nullptr ? view(context_->encoding) : view(input.encoding);
        std::string_view text = view(input.base, static_cast<int>(input.cur - input.base));
        std::size_t const name = text.find("encoding");
        if (name == std::string_view::npos) return {};
        std::size_t const open = text.find_first_of("'\"", name);
        return text.substr(open + 1, text.find(text[open], open + 1) - open - 1);
    }

    void startElement(std::string const& name, std::string_view uri,
                      std::span<PeerDeclaration const> declarations,
                      std::span<PeerAttribute const> attributes) {
        // A tag that the end of the document cuts off is announced as if it were whole.
        if (isOver_ || (*context_->input->cur != '>' && *context_->input->cur != '/')) return;
        if (open_.size() >= maximumDepth) return fail("too deep");
        endText();
        open_.push_back({name, {}, keepsWhiteSpace()});
        for (PeerDeclaration const& declaration : declarations) {
            std::string const prefix{view(declaration.prefix)};
            everywhere('#', prefix + "=" + std::string{view(declaration.uri)});
            open_.back().prefixes.push_back(prefix);
        }
        for (TraceWriter* const writer : {&preserved_, &dropped_, &sax_}) {
            writer->line('<', uri, name);
            for (PeerAttribute const& a : attributes)
                writer->line('@', view(a.uri), qualified(a.prefix, a.local), a.text());
        }
        for (PeerAttribute const& a : attributes)
            if (view(a.prefix) == "xml" && view(a.local) == "space") noteSpace(a.text());
    }

    void noteSpace(std::string_view value) {
        if (value == "preserve" || value == "default")
            open_.back().keepsWhiteSpace = value == "preserve";
    }

    bool keepsWhiteSpace() const noexcept { return !open_.empty() && open_.back().keepsWhiteSpace; }

    void endElement() {
        if (isOver_) return;
        endText();
        for (TraceWriter* const tree : {&preserved_, &dropped_})
            tree->line('>', "");
        sax_.line('>', open_.back().name);
        auto& prefixes = open_.back().prefixes;
        std::for_each(prefixes.rbegin(), prefixes.rend(),
                      [&](std::string const& prefix) { sax_.line('~', prefix); });
        open_.pop_back();
    }

    void characters(std::string_view piece) {
        if (isOver_) return;
        textCounts_ = textCounts_ || isReference(piece) || !isAllSpace(piece);
        text_ += piece;
        sax_.text(piece);
    }

    // A character reference arrives from outside the parser's input, right after its ';' was read.
    bool isReference(std::string_view piece) const noexcept {
        xmlParserInput const& input = *context_->input;
        auto const* const first = reinterpret_cast<xmlChar const*>(piece.data());
        return (first < input.base || first > input.end) && input.cur[-1] == ';';
    }

    void endText() {
        if (text_.empty()) return;
        preserved_.line('"', text_);
        if (textCounts_ || keepsWhiteSpace()) {
            dropped_.line('"', text_);
        } else {
            dropped_.line('|', "");
        }
        text_.clear();
        textCounts_ = false;
    }

    void cdata(std::string_view text) {
        node('[', text);
        if (!isOver_ && !text.empty()) sax_.text(text);
    }

    void node(char kind, std::string_view text) {
        if (isOver_) return;
        endText();
        for (TraceWriter* const tree : {&preserved_, &dropped_})
            tree->line(kind, text);
    }

    void instruction(std::string_view text) {
        node('?', text);
        if (!isOver_) sax_.line('?', text);
    }

    void everywhere(char kind, std::string_view text) {
        for (TraceWriter* const writer : {&preserved_, &dropped_, &sax_})
            writer->line(kind, text);
    }

    std::string saxSoFar() {
        sax_.endText();
        return sax_.lines();
    }

    std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context_;
    TraceWriter preserved_;
    TraceWriter dropped_;
    TraceWriter sax_;
    std::vector<OpenElement> open_;
    std::string text_;
    bool textCounts_ = false;
    bool isOver_ = false;
    std::string reason_;
};

} // namespace

PeerTraces askPeer(std::string_view bytes, bool ignoresDeclaredEncoding) {
    static bool const initialized = (xmlInitParser(), true);
    static_cast<void>(initialized);
    return PeerRun{bytes, ignoresDeclaredEncoding}.take();
}

} // namespace tibxml::reader::test
