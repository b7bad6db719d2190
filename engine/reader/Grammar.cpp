#include "Grammar.h"

#include <algorithm>
#include <utility>

#include <TibXml/platform/Utf.h>
#include <tree/Text.h>

#include "Messages.h"

namespace tibxml::reader {

namespace {

std::string_view view(char const* begin, char const* end) noexcept {
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

bool Grammar::startsWith(char const* p, std::string_view text) const noexcept {
    return view(p, end_).starts_with(text);
}

std::string_view Grammar::padded(std::string& text) {
    std::size_t const size = text.size();
    text.append(blockSize, '\0');
    return {text.data(), size};
}

char const* Grammar::passBrackets(char const* p) const {
    for (; p < end_ && *p == ']'; p = findTextStop(p + 1, end_)) {
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
            return stopAt(p, end_);
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
        if (stop == end) return padded(text_);
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

void Grammar::declareNamespaces() {
    for (Attribute const& attribute : tags_.attributes()) {
        if (attribute.name->declares())
            scopes_.declare(*attribute.name, attribute.value, attribute.at, depth_);
    }
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

// Before text is let go: messages name the lines of open elements.
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
