#include "Trace.h"

#include <algorithm>
#include <cstring>

#include <TibXml/platform/Utf.h>

#include <tree/Document.h>

namespace tibxml::reader::test {

using tree::Node;
using tree::NodeKind;

std::ptrdiff_t Bytes::read(char* buffer, std::size_t size) noexcept {
    if (done_ >= failAfter_) return -1;
    std::size_t const count = std::min({size, step_, bytes_.size() - done_, failAfter_ - done_});
    std::memcpy(buffer, bytes_.data() + done_, count);
    done_ += count;
    return static_cast<std::ptrdiff_t>(count);
}

void TraceWriter::append(std::string_view text) {
    for (char const c : text) {
        if (c == '\n') {
            lines_ += "\\n";
        } else {
            lines_ += c;
        }
    }
}

void TraceWriter::line(char kind, std::string_view text) {
    endText();
    lines_ += kind;
    append(text);
    lines_ += '\n';
}

void TraceWriter::line(char kind, std::string_view uri, std::string_view qualified,
                       std::string_view value) {
    endText();
    lines_ += kind;
    lines_ += '{';
    append(uri);
    lines_.append("}").append(qualified);
    if (kind == '@') lines_ += '=';
    append(value);
    lines_ += '\n';
}

void TraceWriter::text(std::string_view piece) {
    if (!isInText_) lines_ += '"';
    isInText_ = true;
    append(piece);
}

void TraceWriter::endText() {
    if (isInText_) lines_ += '\n';
    isInText_ = false;
}

namespace {

class TreeTracer {
public:
    std::string of(Node const* top) {
        Node const* node = top->firstChild();
        while (node != nullptr) {
            start(*node);
            if (node->firstChild() != nullptr) {
                node = node->firstChild();
                continue;
            }
            end(*node);
            while (node->next == nullptr && node->parent != top) {
                node = node->parent;
                end(*node);
            }
            node = node->next;
        }
        return writer_.lines();
    }

private:
    void start(Node const& node) {
        std::string const text{node.text()};
        switch (node.kind) {
        case NodeKind::element: startElement(node); break;
        case NodeKind::text: writer_.line('"', text); break;
        case NodeKind::cdata: writer_.line('[', text); break;
        case NodeKind::comment: writer_.line('!', text); break;
        case NodeKind::declaration: writer_.line('?', text); break;
        case NodeKind::processingInstruction:
            writer_.line('?', std::string{node.name->qualified} + " " + text);
            break;
        default: break;
        }
        if ((node.flags & tree::breakInside) != 0) writer_.line('|', "");
    }

    void end(Node const& node) {
        if (node.is(NodeKind::element)) writer_.line('>', "");
        if ((node.flags & tree::breakAfter) != 0) writer_.line('|', "");
    }

    void startElement(Node const& node) {
        for (Node const* a = node.firstAttribute(); a != nullptr; a = a->next)
            if (a->name->declaresNamespace) declaration(*a);
        writer_.line('<', node.name->uri, node.name->qualified);
        for (Node const* a = node.firstAttribute(); a != nullptr; a = a->next)
            if (!a->name->declaresNamespace)
                writer_.line('@', a->name->uri, a->name->qualified, a->text());
    }

    void declaration(Node const& attribute) {
        bool const isDefault = attribute.name->prefix.empty();
        std::string text{isDefault ? std::string_view{} : attribute.name->local};
        writer_.line('#', text.append("=").append(attribute.text()));
    }

    TraceWriter writer_;
};

template <class Read>
Trace tracedTree(WhiteSpace whiteSpace, Read readInto) {
    Trace trace;
    auto const document = tree::DocumentRef::adopt(tree::Document::create());
    document->setPreservesWhiteSpace(whiteSpace == WhiteSpace::preserved);
    trace.isAccepted = readInto(*document, trace.error);
    trace.lines = TreeTracer{}.of(document->node());
    return trace;
}

class SaxTracer final : public SaxEvents {
public:
    explicit SaxTracer(Places places) : places_{places} {}

    bool start(SaxPlace const& place) override {
        place_ = &place;
        return true;
    }

    bool startDocument() override { return line('(', L""); }

    bool endDocument() override { return line(')', L""); }

    bool startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) override {
        return line('#', std::wstring{prefix}.append(L"=").append(uri));
    }

    bool endPrefixMapping(std::wstring_view prefix) override { return line('~', prefix); }

    bool startElement(SaxName const& name, std::span<SaxAttribute const> attributes) override {
        writer_.line('<', narrow(name.uri), narrow(name.qualified));
        for (SaxAttribute const& a : attributes)
            writer_.line('@', narrow(a.name->uri), narrow(a.name->qualified), narrow(a.value));
        if (places_ == Places::told)
            writer_.line('@',
                         std::to_string(place_->line()) + ":" + std::to_string(place_->column()));
        return true;
    }

    bool endElement(SaxName const& name) override { return line('>', name.qualified); }

    bool characters(std::wstring_view text) override {
        writer_.text(narrow(text));
        return true;
    }

    bool processingInstruction(std::wstring_view target, std::wstring_view data) override {
        return line('?', std::wstring{target}.append(L" ").append(data));
    }

    std::string lines() {
        writer_.endText();
        return writer_.lines();
    }

private:
    static std::string narrow(std::wstring_view text) {
        std::string out;
        platform::appendUtf8(out, text);
        return out;
    }

    bool line(char kind, std::wstring_view text) {
        writer_.line(kind, narrow(text));
        return true;
    }

    Places places_;
    SaxPlace const* place_ = nullptr;
    TraceWriter writer_;
};

template <class Read>
Trace tracedSax(Places places, Read readTo) {
    Trace trace;
    SaxTracer tracer{places};
    trace.isAccepted = readTo(tracer, trace.error);
    trace.lines = tracer.lines();
    return trace;
}

Input inSteps(Bytes& source, std::size_t windowSize) {
    Input input{source};
    input.windowSize = windowSize;
    return input;
}

} // namespace

std::string_view upToTheError(std::string_view lines) noexcept {
    if (lines.empty()) return lines;
    std::size_t const last = lines.rfind('\n', lines.size() - 2) + 1;
    if (lines[last] == '"') lines.remove_suffix(lines.size() - last);
    return lines == "(\n" ? std::string_view{} : lines;
}

Trace traceTree(Bytes source, WhiteSpace whiteSpace) {
    return tracedTree(whiteSpace, [&](tree::Document& document, ReadError& error) {
        return read(document, source, error);
    });
}

Trace traceTreeOfText(std::string_view utf8, WhiteSpace whiteSpace) {
    return tracedTree(whiteSpace, [&](tree::Document& document, ReadError& error) {
        return read(document, {utf8, EncodingRule::alwaysUtf8}, error);
    });
}

Trace traceSax(Bytes source, Places places) {
    return tracedSax(places, [&](SaxEvents& events, ReadError& error) {
        return readSax(events, source, error);
    });
}

Trace traceSaxOfText(std::string_view utf8, Places places) {
    return tracedSax(places, [&](SaxEvents& events, ReadError& error) {
        return readSax(events, {utf8, EncodingRule::alwaysUtf8}, error);
    });
}

Trace traceTreeInSteps(Bytes source, std::size_t windowSize, WhiteSpace whiteSpace) {
    return tracedTree(whiteSpace, [&](tree::Document& document, ReadError& error) {
        return read(document, inSteps(source, windowSize), error);
    });
}

Trace traceSaxInSteps(Bytes source, std::size_t windowSize, Places places) {
    return tracedSax(places, [&](SaxEvents& events, ReadError& error) {
        return readSax(events, inSteps(source, windowSize), error);
    });
}

} // namespace tibxml::reader::test
