#include "Messages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <vector>

#include <TibXml/platform/Utf.h>
#include <reader/CharacterScan.h>
#include <reader/ReadError.h>

namespace tibxml::reader {

namespace {

constexpr std::size_t longestShown = 100;

struct Row {
    Message message;
    std::string_view text;
};

constexpr Row rows[] = {
    {Message::emptyDocument, "the document is empty"},
    {Message::noRoot, "the document ends without a root element"},
    {Message::textBeforeRoot, "there is text before the root element"},
    {Message::textAfterRoot, "there is text after the root element"},
    {Message::secondRoot, "<%1> is a second root element"},
    {Message::elementNotClosed, "the document ends before the end tag of <%1> at line %2"},
    {Message::endTagMismatch, "the end tag </%1> does not match the start tag <%2> at line %3"},
    {Message::endTagWithoutStart, "the end tag </%1> has no start tag"},
    {Message::endTagNotClosed, "%1 stands in the end tag </%2>, where '>' is expected"},
    {Message::unfinished, "the document ends within %1 that begins at line %2"},
    {Message::tokenTooLong, "%1 is longer than 1 GiB"},
    {Message::unknownMarkup, "'<!' begins neither a comment nor a CDATA section"},
    {Message::cdataOutsideRoot, "a CDATA section stands outside the root element"},

    {Message::nameExpected, "%1 stands where a name is expected"},
    {Message::colonInName, "the name %1 has a colon where none is allowed"},
    {Message::unexpectedInTag, "%1 stands in the tag <%2>, where an attribute or '>' is expected"},
    {Message::noSpaceBeforeAttribute, "white space is missing before an attribute of <%1>"},
    {Message::attributeWithoutValue, "%1 stands after the attribute %2, where '=' is expected"},
    {Message::valueWithoutQuotes, "the value of the attribute %1 does not begin with a quote"},
    {Message::lessThanInValue, "the value of the attribute %1 contains '<'"},
    {Message::attributeTwice, "the attribute %1 stands twice in the tag <%2>"},
    {Message::attributesOfOneName,
     "the attributes %1 and %2 have the same local name and namespace"},
    {Message::characterNotInName, "%1 is not allowed in a name"},

    {Message::undeclaredPrefix, "the prefix of %1 is not declared"},
    {Message::emptyPrefixDeclaration, "the declaration %1 is empty: a prefix needs a namespace"},
    {Message::prefixXmlRebound, "the prefix xml cannot stand for another namespace than its own"},
    {Message::prefixXmlnsDeclared, "the prefix xmlns cannot be declared"},
    {Message::namespaceOfXml, "the declaration %1 uses the namespace of the prefix xml"},
    {Message::namespaceOfXmlns, "the declaration %1 uses the namespace of the prefix xmlns"},
    {Message::elementNamedXmlns, "the element <%1> has the prefix xmlns, which is for"
                                 " declarations"},

    {Message::characterNotAllowed, "the character %1 is not allowed in XML"},
    {Message::notUtf8, "the byte %1 is not UTF-8 here"},
    {Message::cdataEndInText, "']]>' is not allowed in text"},
    {Message::twoHyphensInComment, "'--' is not allowed within a comment"},
    {Message::ampersandAlone, "'&' does not begin a reference; as a character it is written"
                              " &amp;"},
    {Message::unknownEntity, "the entity &%1; is not defined"},
    {Message::badCharacterReference, "the reference %1 means no character that XML allows"},
    {Message::referenceOutsideRoot, "a reference stands outside the root element"},
    {Message::unfinishedReference, "%1 stands in the reference %2, where ';' is expected"},

    {Message::declarationNotFirst, "the XML declaration is not at the very start"},
    {Message::declarationWithoutVersion, "the XML declaration does not begin with a version"},
    {Message::badVersion, "the XML version %1 is not known"},
    {Message::badEncodingName, "%1 is not the name of an encoding"},
    {Message::badStandalone, "standalone is neither yes nor no but %1"},
    {Message::badDeclaration, "%1 stands in the XML declaration, where %2 is expected"},
    {Message::instructionNamedXml, "a processing instruction cannot be named %1"},
    {Message::noSpaceAfterTarget, "%1 stands after the name of the processing instruction %2"},

    {Message::unknownEncoding, "the encoding %1 is not known"},
    {Message::wrongEncoding, "the XML declaration names the encoding %1 but is written in %2"},
    {Message::longDeclaration, "the XML declaration does not end within 64 KiB"},
    {Message::invalidBytes, "%1 at offset %2 is not a character in %3"},
    {Message::cutCharacter, "the document ends within a character in %1"},
};

std::string_view shortened(std::string_view text) noexcept {
    if (text.size() <= longestShown) return text;
    std::size_t size = longestShown;
    while (size != 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        --size;
    return text.substr(0, size);
}

// What was found may be longer than a message should be, have line ends, and be no text at all.
std::string forMessage(std::string_view found) {
    std::string text = wellFormed(shortened(found));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    return text;
}

std::string_view textOf(Message message) noexcept {
    auto const* const row = std::find_if(std::begin(rows), std::end(rows),
                                         [=](Row const& r) { return r.message == message; });
    return row != std::end(rows) ? row->text : std::string_view{};
}

} // namespace

std::string sentence(Message message, std::initializer_list<std::string_view> found) {
    std::string result;
    std::string_view text = textOf(message);
    for (std::size_t mark = text.find('%'); mark != std::string_view::npos; mark = text.find('%')) {
        auto const number = static_cast<std::size_t>(text[mark + 1] - '1');
        result.append(text.substr(0, mark)).append(forMessage(found.begin()[number]));
        text.remove_prefix(mark + 2);
    }
    return result.append(text);
}

namespace {

std::string asNumber(char const* format, unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

platform::Utf8Character characterAt(char const* p, char const* end) noexcept {
    return platform::firstUtf8Character({p, static_cast<std::size_t>(end - p)});
}

bool isAllowed(char32_t code) noexcept {
    return code >= 0x20 ? code != 0xFFFE && code != 0xFFFF
                        : code == '\t' || code == '\n' || code == '\r';
}

} // namespace

void fail(Message message, char const* at, std::initializer_list<std::string_view> found) {
    throw ParseFailure{errorNotWellFormed + static_cast<std::uint32_t>(message),
                       sentence(message, found), at};
}

void failAtCharacter(char const* p, char const* end, Message message,
                     std::initializer_list<std::string_view> more) {
    std::string const character = shown(p, end);
    auto const [code, length] = characterAt(p, end);
    if (p != end && length == 0) fail(Message::notUtf8, p, {character});
    if (p != end && !isAllowed(code)) fail(Message::characterNotAllowed, p, {character});
    std::array<std::string_view, 3> found{character};
    std::size_t count = 1;
    for (std::string_view const text : more)
        found[count++] = text;
    fail(message, p, {found[0], found[1], found[2]});
}

char const* stopAt(char const* p, char const* end) {
    if (p >= end) return nullptr;
    if (isBeyondAscii(*p) && end - p < 4) return nullptr;
    failAtCharacter(p, end, Message::characterNotAllowed);
}

std::string shown(char const* p, char const* end) {
    if (p >= end) return "the end";
    auto const [code, length] = characterAt(p, end);
    if (length == 0) return asNumber("0x%02X", byteAt(p));
    if (code < 0x20 || code == 0x7F || !isAllowed(code)) return asNumber("U+%04X", code);
    return "'" + std::string{p, length} + "'";
}

} // namespace tibxml::reader
