// The parser: XML 1.0 with namespaces, strict, in one pass and without recursion.
//
// It is a template over its consumer, so that building a tree or counting costs no call through a
// pointer. A consumer has these functions; texts are valid during the call only, and what it throws
// leaves the parser. After every text but those of references and names a block may be loaded.
//
//   void* nameOf(QualifiedName const&, Uri const&)     what stands for a name in a namespace
//   void startDocument()
//   void declaration(std::string_view content)
//   void startElement(void* name, StartTag const&)
//   void endElement(void* name)
//   bool dropsBlanks() const                           whether blanks() may come in place of text()
//   void blanks()                                      literal white space between two markups
//   void text(std::string_view)                        characters up to the next markup
//   void piece(std::string_view)                       characters, after which more may come
//   void reference(std::string_view)                   a character written as a reference
//   void cdata(std::string_view)
//   void comment(std::string_view)
//   void instruction(std::string_view target, std::string_view data)
#pragma once

#include <TibXml/platform/Utf.h>
#include <tree/Text.h>

#include "Declaration.h"
#include "Grammar.h"
#include "Messages.h"
#include "References.h"

namespace tibxml::reader {

template <class Consumer>
class Parser : public Grammar {
public:
    // Throws std::bad_alloc.
    Parser(Window& window, Consumer& consumer) : Grammar{window}, consumer_{consumer} {}

    // Reads the whole document. Throws ParseFailure, std::bad_alloc and what the consumer throws.
    void run();

private:
    // More text for the token at p; null when the document is at its end.
    char const* more(char const* p);
    char const* start(char const* p);
    char const* content(char const* p);
    char const* markup(char const* p);
    char const* startTag(char const* p);
    char const* endTag(char const* p);
    char const* text(char const* p);
    char const* partOfText(char const* begin, char const* p);
    char const* outside(char const* p) const;
    char const* exclamation(char const* p);
    char const* comment(char const* p);
    char const* cdata(char const* p);
    char const* instruction(char const* p);
    void resolve(QualifiedName& name, StartTag const& tag, char const* at);
    void resolveElement(QualifiedName& name, char const* at);
    void resolveAttributes(StartTag const& tag);
    void resolveAttribute(QualifiedName& name, char const* at);
    void endElement();

    static std::string_view view(char const* begin, char const* end) noexcept {
        return {begin, static_cast<std::size_t>(end - begin)};
    }

    Consumer& consumer_;
};

template <class Consumer>
void Parser<Consumer>::run() {
    window_.open();
    end_ = window_.end();
    here_ = window_.begin();
    char const* p = here_;
    for (char const* next = start(p); next == nullptr; next = start(p)) {
        p = more(p);
        if (p == nullptr) failAtEnd(here_);
    }
    p = here_;
    while (p != nullptr) {
        here_ = p = content(p);
        p = more(p);
    }
    if (depth_ != 0 || !hasRoot_ || here_ != end_) failAtEnd(here_);
}

template <class Consumer>
char const* Parser<Consumer>::more(char const* p) {
    if (window_.letsGo()) noteLines();
    auto const length = end_ - p;
    here_ = window_.refill(p);
    end_ = window_.end();
    return end_ - here_ != length ? here_ : nullptr;
}

// The declaration, if there is one.
template <class Consumer>
char const* Parser<Consumer>::start(char const* p) {
    constexpr std::string_view sign = "<?xml";
    if (sign.starts_with(view(p, end_).substr(0, sign.size())) && end_ - p < 6) {
        return nullptr;
    }
    if (isDeclaration(p)) {
        p = readDeclaration(p, end_, text_);
        if (p == nullptr) return nullptr;
        here_ = p;
        consumer_.declaration(text_);
    }
    consumer_.startDocument();
    return here_;
}

// As many tokens as are there as a whole.
template <class Consumer>
char const* Parser<Consumer>::content(char const* p) {
    while (p < end_) {
        char const* const next = *p == '<' ? markup(p) : depth_ != 0 ? text(p) : outside(p);
        if (next == nullptr) return p;
        p = next;
    }
    return p;
}

template <class Consumer>
[[gnu::always_inline]] inline char const* Parser<Consumer>::markup(char const* p) {
    if (end_ - p < 2) return nullptr;
    switch (p[1]) {
    case '/': return endTag(p);
    case '!': return exclamation(p);
    case '?': return instruction(p);
    default: return startTag(p);
    }
}

template <class Consumer>
[[gnu::always_inline]] inline char const* Parser<Consumer>::startTag(char const* p) {
    char const* const close = tags_.read(p, end_);
    if (close == nullptr) return nullptr;
    QualifiedName& name = tags_.name();
    StartTag const tag = tags_.tag();
    if (depth_ == 0 && hasRoot_) fail(Message::secondRoot, p, {name.text});
    if (depth_ == maximumDepth)
        throw ParseFailure{errorTooDeep, "elements are nested more than 256 deep", p};
    resolve(name, tag, p + 1);
    open_[depth_++] = {&name, name.elementName, window_.offsetOf(p), 0};
    hasRoot_ = true;
    here_ = close;
    consumer_.startElement(name.elementName, tag);
    here_ = close + 1;
    if (*close == '>') return here_;
    ++here_;
    endElement();
    return here_;
}

// What the names of a tag mean, once all its declarations are known.
template <class Consumer>
void Parser<Consumer>::resolve(QualifiedName& name, StartTag const& tag, char const* at) {
    if (tag.has(NameUse::declaresDefault) || tag.has(NameUse::declaresPrefix)) declareNamespaces();
    if (name.elementUri != name.elementPrefix->uri) resolveElement(name, at);
    if (!tag.hasOnly(NameUse::plain)) resolveAttributes(tag);
}

template <class Consumer>
void Parser<Consumer>::resolveElement(QualifiedName& name, char const* at) {
    Uri const* const uri = name.elementPrefix->uri;
    if (uri == nullptr) fail(Message::undeclaredPrefix, at, {name.text});
    if (name.use == NameUse::declaresPrefix) fail(Message::elementNamedXmlns, at, {name.text});
    name.elementName = consumer_.nameOf(name, *uri);
    name.elementUri = uri;
}

template <class Consumer>
void Parser<Consumer>::resolveAttributes(StartTag const& tag) {
    for (Attribute const& attribute : tag.attributes) {
        QualifiedName& name = *attribute.name;
        if (name.attributeUri != name.attributePrefix->uri) resolveAttribute(name, attribute.at);
        if (name.use == NameUse::fresh) name.use = NameUse::plain;
    }
    if (tag.has(NameUse::prefixed) || tag.has(NameUse::space)) tags_.checkExpandedNames();
}

template <class Consumer>
void Parser<Consumer>::resolveAttribute(QualifiedName& name, char const* at) {
    Uri const* const uri = name.attributePrefix->uri;
    if (uri == nullptr) fail(Message::undeclaredPrefix, at, {name.text});
    name.attributeName = consumer_.nameOf(name, *uri);
    name.attributeUri = uri;
}

template <class Consumer>
[[gnu::always_inline]] inline char const* Parser<Consumer>::endTag(char const* p) {
    char const* close = nullptr;
    if (depth_ != 0) {
        QualifiedName const& name = *open_[depth_ - 1].name;
        auto const length = static_cast<std::ptrdiff_t>(name.text.size());
        if (end_ - p > length + 2 && p[length + 2] == '>' && Names::isAt(name, p + 2))
            close = p + length + 2;
    }
    if (close == nullptr) close = checkEndTag(p);
    if (close == nullptr) return nullptr;
    here_ = close + 1;
    endElement();
    return here_;
}

template <class Consumer>
[[gnu::always_inline]] inline void Parser<Consumer>::endElement() {
    OpenElement const& element = open_[--depth_];
    scopes_.end(depth_);
    consumer_.endElement(element.resolved);
}

template <class Consumer>
[[gnu::always_inline]] inline char const* Parser<Consumer>::text(char const* p) {
    if (tree::isBlank(*p) && consumer_.dropsBlanks()) {
        char const* const blankEnd = findBlankEnd(p, end_);
        if (blankEnd != end_ && *blankEnd == '<') {
            here_ = blankEnd;
            consumer_.blanks();
            return blankEnd;
        }
    }
    char const* const stop = findTextEnd(p);
    if (stop == end_ || *stop != '<') return partOfText(p, stop);
    here_ = stop;
    consumer_.text(view(p, stop));
    return stop;
}

// Text that has more to it, up to `stop` or what is there.
template <class Consumer>
char const* Parser<Consumer>::partOfText(char const* begin, char const* stop) {
    if (stop != end_ && *stop == '\r') {
        stop = readReturns(begin, stop);
        if (text_.empty()) return nullptr;
        std::string_view const text = padded(text_);
        here_ = stop;
        if (stop != end_ && *stop == '<') {
            consumer_.text(text);
        } else {
            consumer_.piece(text);
        }
        return stop;
    }
    if (stop != begin) {
        here_ = stop;
        consumer_.piece(view(begin, stop));
        return stop;
    }
    if (stop == end_ || *stop == ']') return nullptr;
    if (*stop != '&') return stopAt(stop, end_);
    char32_t character = 0;
    char const* const next = readReference(stop, end_, character);
    if (next == nullptr) return nullptr;
    char bytes[4];
    here_ = next;
    consumer_.reference(view(bytes, platform::writeUtf8(character, bytes)));
    return next;
}

template <class Consumer>
char const* Parser<Consumer>::outside(char const* p) const {
    p = skipBlanks(p);
    if (p == end_ || *p == '<') return p;
    if (mayBeCut(p, end_)) return nullptr;
    failOutside(p);
}

template <class Consumer>
char const* Parser<Consumer>::exclamation(char const* p) {
    if (startsWith(p, "<!--")) return comment(p);
    if (depth_ != 0 && startsWith(p, "<![CDATA[")) return cdata(p);
    return unknownMarkup(p);
}

template <class Consumer>
char const* Parser<Consumer>::comment(char const* p) {
    char const* const stop = findTerminator(p + 4, "--", 3);
    if (stop == nullptr) return nullptr;
    if (stop[2] != '>') fail(Message::twoHyphensInComment, stop);
    here_ = stop + 3;
    consumer_.comment(sectionText(p + 4, stop));
    return here_;
}

template <class Consumer>
char const* Parser<Consumer>::cdata(char const* p) {
    char const* const begin = p + 9;
    char const* const stop = findTerminator(begin, "]]>", 3);
    if (stop == nullptr) return nullptr;
    here_ = stop + 3;
    consumer_.cdata(sectionText(begin, stop));
    return here_;
}

template <class Consumer>
char const* Parser<Consumer>::instruction(char const* p) {
    char const* const targetEnd = findNameEnd(p + 2, end_);
    if (targetEnd == end_) return nullptr;
    std::string_view const target = view(p + 2, targetEnd);
    checkTarget(target);
    char const* const data = skipBlanks(targetEnd);
    char const* const stop = findTerminator(data, "?>", 2);
    if (stop == nullptr) return nullptr;
    if (data == targetEnd && stop != data)
        failAtCharacter(data, end_, Message::noSpaceAfterTarget, {target});
    here_ = stop + 2;
    consumer_.instruction(target, sectionText(data, stop));
    return here_;
}

} // namespace tibxml::reader
