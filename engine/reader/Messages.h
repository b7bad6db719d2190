// What the parser says about a document that it refuses: one number and one sentence for each
// thing that can be wrong.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace tibxml::reader {

// The number is added to errorNotWellFormed and never changes its meaning.
enum class Message : std::uint8_t {
    emptyDocument = 1,
    noRoot = 2,
    textBeforeRoot = 3,
    textAfterRoot = 4,
    secondRoot = 5,
    elementNotClosed = 6,
    endTagMismatch = 7,
    endTagWithoutStart = 8,
    endTagNotClosed = 9,
    unfinished = 10,
    tokenTooLong = 11,
    unknownMarkup = 12,
    cdataOutsideRoot = 13,

    nameExpected = 20,
    colonInName = 21,
    unexpectedInTag = 22,
    noSpaceBeforeAttribute = 23,
    attributeWithoutValue = 24,
    valueWithoutQuotes = 25,
    lessThanInValue = 26,
    attributeTwice = 27,
    attributesOfOneName = 28,
    characterNotInName = 29,

    undeclaredPrefix = 30,
    emptyPrefixDeclaration = 31,
    prefixXmlRebound = 32,
    prefixXmlnsDeclared = 33,
    namespaceOfXml = 34,
    namespaceOfXmlns = 35,
    elementNamedXmlns = 36,

    characterNotAllowed = 40,
    notUtf8 = 41,
    cdataEndInText = 42,
    twoHyphensInComment = 43,
    ampersandAlone = 44,
    unknownEntity = 45,
    badCharacterReference = 46,
    referenceOutsideRoot = 47,
    unfinishedReference = 48,

    declarationNotFirst = 50,
    declarationWithoutVersion = 51,
    badVersion = 52,
    badEncodingName = 53,
    badStandalone = 54,
    badDeclaration = 55,
    instructionNamedXml = 57,
    noSpaceAfterTarget = 58,

    unknownEncoding = 60,
    wrongEncoding = 61,
    longDeclaration = 62,
    invalidBytes = 63,
    cutCharacter = 64,
};

// The sentence with %1, %2 and so on replaced by what was found, the beginning of it when it is
// long. Throws std::bad_alloc.
std::string sentence(Message message, std::initializer_list<std::string_view> found);

// How the parser leaves the grammar when a document is not well-formed: thrown by the reader's
// parts, caught where the reading of a document begins.
struct ParseFailure {
    std::uint32_t code;
    std::string reason;
    char const* at; // in the window
};

[[noreturn]] void fail(Message message, char const* at,
                       std::initializer_list<std::string_view> found = {});

// Fails because of the character at p, if that is one that XML allows, and else for not being one.
[[noreturn]] void failAtCharacter(char const* p, char const* end, Message message,
                                  std::initializer_list<std::string_view> more = {});

// Null when the character at p may be whole with more text; otherwise fails because of it.
char const* stopAt(char const* p, char const* end);

// The character at p for a message: 'x', U+0001, byte 0xFF, or the end of the document.
std::string shown(char const* p, char const* end);

} // namespace tibxml::reader
