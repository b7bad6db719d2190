#include "Grammar.h"

#include <algorithm>
#include <map>
#include <utility>

#include <TibXml/platform/Utf.h>
#include <tree/Text.h>

#include "Failure.h"
#include "References.h"

namespace tibxml::reader {

namespace {

std::string_view view(char const* begin, char const* end) noexcept {
    return {begin, static_cast<std::size_t>(end - begin)};
}

void appendCharacter(std::string& text, char32_t character) {
    char bytes[4];
    text.append(bytes, platform::writeUtf8(character, bytes));
}

} // namespace

char const* Grammar::skipBlanks(char const* p) const noexcept {
    while (p < end_ && tree::isBlank(*p))
        ++p;
    return p;
}

bool Grammar::startsWith(char const* p, std::string_view text) const noexcept {
    return view(p, end_).starts_with(text);
}

char const* Grammar::stopAt(char const* p) const {
    if (p >= end_) return nullptr;
    if (isBeyondAscii(*p) && end_ - p < 4) return nullptr;
    failAtCharacter(p, end_, Message::characterNotAllowed);
}

char const* Grammar::findTextEnd(char const* p) const {
    for (p = findTextStop(p, end_); p < end_ && *p == ']'; p = findTextStop(p + 1, end_)) {
        if (end_ - p < 3 && view(p, end_).find_first_not_of(']') == std::string_view::npos)
            return p;
        if (startsWith(p, "]]>")) fail(Message::cdataEndInText, p);
    }
    return p;
}

char const* Grammar::findTerminator(char const* p, std::string_view terminator,
                                    std::ptrdiff_t length) {
    hasReturns_ = false;
    while (true) {
        p = findStop(p, end_, terminator.front());
        if (p < end_ && *p == '\r') {
            hasReturns_ = true;
        } else if (p == end_ || *p != terminator.front()) {
            return stopAt(p);
        } else if (end_ - p < length) {
            return nullptr;
        } else if (startsWith(p, terminator)) {
            return p;
        }
        ++p;
    }
}

std::string_view Grammar::sectionText(char const* begin, char const* end) {
    if (!hasReturns_) return view(begin, end);
    text_.clear();
    while (true) {
        char const* const stop = std::find(begin, end, '\r');
        text_.append(begin, stop);
        if (stop == end) return text_;
        text_ += '\n';
        begin = stop + 1;
        if (begin != end && *begin == '\n') ++begin;
    }
}

char const* Grammar::readReturns(char const* begin, char const* p) {
    text_.clear();
    while (true) {
        text_.append(begin, p);
        // The last CR of a window may be half of a line end.
        if (p >= end_ || *p != '\r' || p + 1 == end_) return p;
        text_ += '\n';
        begin = p + (p[1] == '\n' ? 2 : 1);
        p = findTextEnd(begin);
    }
}

char const* Grammar::readTag(char const* p, QualifiedName*& name, unsigned& uses) {
    char const* const nameEnd = findNameEnd(p + 1, end_);
    if (nameEnd == end_) return nullptr;
    if (nameEnd == p + 1) failAtCharacter(nameEnd, end_, Message::nameExpected);
    name = &names_.find(p + 1, static_cast<std::size_t>(nameEnd - p - 1));
    attributes_.clear();
    if (!normalised_.empty()) {
        normalised_.clear();
        values_.clear();
    }
    ++tag_;
    p = nameEnd;
    while (*p != '>' && *p != '/') {
        p = readAttribute(p, *name, uses);
        if (p == nullptr || p == end_) return nullptr;
    }
    if (*p == '>') return p;
    if (p + 1 == end_) return nullptr;
    if (p[1] != '>') failInTag(p, *name);
    return p;
}

// From behind the part before; only white space may be left.
char const* Grammar::readAttribute(char const* p, QualifiedName const& element, unsigned& uses) {
    char const* const begin = skipBlanks(p);
    if (begin == end_ || *begin == '>' || *begin == '/') return begin;
    char const* nameEnd = findNameEnd(begin, end_);
    if (nameEnd == end_) return nullptr;
    if (nameEnd == begin) failInTag(begin, element);
    if (begin == p) fail(Message::noSpaceBeforeAttribute, p, {element.text});
    QualifiedName& name = names_.find(begin, static_cast<std::size_t>(nameEnd - begin));
    if (name.lastTag == tag_) fail(Message::attributeTwice, begin, {name.text, element.text});
    char const* const value = findValue(nameEnd, name);
    if (value == nullptr) return nullptr;
    attributes_.push_back({&name, {}, begin});
    name.lastTag = tag_;
    uses |= 1U << static_cast<unsigned>(name.use);
    return readValue(value, name, attributes_.back().value);
}

// The quote in front of the value.
char const* Grammar::findValue(char const* p, QualifiedName const& attribute) const {
    if (*p != '=') {
        p = skipBlanks(p);
        if (p == end_) return nullptr;
        if (*p != '=') failAtCharacter(p, end_, Message::attributeWithoutValue, {attribute.text});
    }
    p = skipBlanks(p + 1);
    if (p == end_) return nullptr;
    if (*p != '"' && *p != '\'') fail(Message::valueWithoutQuotes, p, {attribute.text});
    return p;
}

char const* Grammar::readValue(char const* p, QualifiedName const& attribute,
                               std::string_view& value) {
    char const quote = *p++;
    char const* const stop = findValueStop(p, end_, quote);
    if (stop == end_) return nullptr;
    if (*stop != quote) return normalise(p, stop, quote, attribute);
    value = view(p, stop);
    return stop + 1;
}

char const* Grammar::normalise(char const* begin, char const* p, char quote,
                               QualifiedName const& attribute) {
    std::size_t const start = values_.size();
    while (p < end_ && *p != quote) {
        values_.append(begin, p);
        char32_t character = ' ';
        char const* next = p + 1;
        if (*p == '&') {
            next = readReference(p, end_, character);
        } else if (*p == '\r') {
            if (next == end_) return nullptr;
            if (*next == '\n') ++next;
        } else if (*p == '<') {
            fail(Message::lessThanInValue, p, {attribute.text});
        } else if (*p != '\t' && *p != '\n') {
            next = stopAt(p);
        }
        if (next == nullptr) return nullptr;
        appendCharacter(values_, character);
        begin = next;
        p = findValueStop(begin, end_, quote);
    }
    if (p >= end_) return nullptr;
    values_.append(begin, p);
    normalised_.push_back({attributes_.size() - 1, start, values_.size() - start});
    return p + 1;
}

// The buffer has grown while values were added; now it stays.
void Grammar::placeValues() noexcept {
    for (Normalised const& part : normalised_)
        attributes_[part.attribute].value = {values_.data() + part.begin, part.size};
}

void Grammar::declareNamespaces() {
    for (Attribute const& attribute : attributes_) {
        if (attribute.name->declares())
            scopes_.declare(*attribute.name, attribute.value, attribute.at);
    }
}

// Two attributes of one namespace and local name have different prefixes, since no name was there
// twice. So nothing is to be looked for as long as each namespace is used by one prefix only.
void Grammar::checkExpandedNames() {
    bool areSuspect = false;
    for (Attribute const& attribute : attributes_) {
        Prefix const& prefix = *attribute.name->attributePrefix;
        if (attribute.name->prefixLength == 0) continue;
        areSuspect |= prefix.uri->lastTag == tag_ && prefix.uri->lastPrefix != &prefix;
        prefix.uri->lastTag = tag_;
        prefix.uri->lastPrefix = &prefix;
    }
    if (!areSuspect) return;
    std::map<std::pair<Uri const*, std::string_view>, Attribute const*> found;
    for (Attribute const& attribute : attributes_) {
        QualifiedName const& name = *attribute.name;
        if (name.prefixLength == 0) continue;
        auto const [before, isNew] =
            found.try_emplace({name.attributePrefix->uri, name.local()}, &attribute);
        if (!isNew) {
            fail(Message::attributesOfOneName, attribute.at,
                 {before->second->name->text, name.text});
        }
    }
}

void Grammar::failInTag(char const* p, QualifiedName const& element) const {
    failAtCharacter(p, end_, Message::unexpectedInTag, {element.text});
}

void Grammar::failOutside(char const* p) const {
    if (*p == '&') fail(Message::referenceOutsideRoot, p);
    failAtCharacter(p, end_, hasRoot_ ? Message::textAfterRoot : Message::textBeforeRoot);
}

// An end tag that is not plainly the one of the open element: null when it is not all there, or
// the place of its '>' when it is right after all.
char const* Grammar::checkEndTag(char const* p) {
    char const* const nameEnd = findNameEnd(p + 2, end_);
    if (nameEnd == end_) return nullptr;
    if (nameEnd == p + 2) failAtCharacter(nameEnd, end_, Message::nameExpected);
    std::string_view const name = view(p + 2, nameEnd);
    char const* const close = skipBlanks(nameEnd);
    if (close == end_) return nullptr;
    if (*close != '>') failAtCharacter(close, end_, Message::endTagNotClosed, {name});
    if (depth_ == 0) fail(Message::endTagWithoutStart, close + 1, {name});
    OpenElement& open = open_[depth_ - 1];
    if (name == open.name->text) return close;
    fail(Message::endTagMismatch, close + 1, {name, open.name->text, std::to_string(lineOf(open))});
}

char const* Grammar::unknownMarkup(char const* p) const {
    if (end_ - p < 9) return nullptr;
    if (startsWith(p, "<!DOCTYPE") && depth_ == 0 && !hasRoot_)
        throw ParseFailure{errorDocumentType, "DTD is prohibited", p};
    fail(startsWith(p, "<![CDATA[") ? Message::cdataOutsideRoot : Message::unknownMarkup, p);
}

void Grammar::checkTarget(std::string_view target) const {
    char const* const end = target.data() + target.size();
    char const* const fault = findNameFault(target.data(), end);
    if (target.empty()) failAtCharacter(end, end_, Message::nameExpected);
    if (fault != end && *fault == ':') fail(Message::colonInName, fault, {target});
    if (fault != end) failAtCharacter(fault, end, Message::characterNotInName);
    if (target == "xml") fail(Message::declarationNotFirst, target.data() - 2);
    auto const isOneOf = [](char c, char small) { return (c | 0x20) == small; };
    if (target.size() == 3 && isOneOf(target[0], 'x') && isOneOf(target[1], 'm') &&
        isOneOf(target[2], 'l'))
        fail(Message::instructionNamedXml, target.data(), {target});
}

// Before text is let go: the lines of open elements are told in messages.
void Grammar::noteLines() {
    for (std::size_t i = depth_; i != 0 && open_[i - 1].line == 0; --i)
        open_[i - 1].line = -1;
    for (std::size_t i = 0; i != depth_; ++i) {
        if (open_[i].line == -1) open_[i].line = window_.placeAt(open_[i].offset).line;
    }
}

long Grammar::lineOf(OpenElement& element) {
    if (element.line == 0) element.line = window_.placeAt(element.offset).line;
    return element.line;
}

namespace {

std::string_view kindOf(std::string_view token) noexcept {
    if (token.starts_with("<!--")) return "a comment";
    if (token.starts_with("<![CDATA[")) return "a CDATA section";
    if (token.starts_with("<?xml ")) return "an XML declaration";
    if (token.starts_with("<?")) return "a processing instruction";
    if (token.starts_with("<!")) return "markup";
    if (token.starts_with("</")) return "an end tag";
    return token.starts_with('&') ? "a reference" : "a tag";
}

// Whether more text could make this a token: "<!" begins comments and CDATA sections only.
bool mayBegin(std::string_view token) noexcept {
    auto const fits = [&](std::string_view whole) {
        return token.starts_with(whole) || whole.starts_with(token);
    };
    return !token.starts_with("<!") || fits("<!--") || fits("<![CDATA[");
}

} // namespace

void Grammar::failAtEnd(char const* p) {
    if (p != end_ && isBeyondAscii(*p)) failAtCharacter(p, end_, Message::notUtf8);
    if (p != end_ && !mayBegin(view(p, end_))) fail(Message::unknownMarkup, p);
    if (p != end_ && (*p == '<' || *p == '&')) {
        fail(Message::unfinished, end_,
             {kindOf(view(p, end_)), std::to_string(window_.placeOf(p).line)});
    }
    if (depth_ != 0) {
        OpenElement& open = open_[depth_ - 1];
        fail(Message::elementNotClosed, end_, {open.name->text, std::to_string(lineOf(open))});
    }
    fail(window_.isEmpty() ? Message::emptyDocument : Message::noRoot, end_);
}

} // namespace tibxml::reader
