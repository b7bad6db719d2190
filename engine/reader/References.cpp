#include "References.h"

#include <tree/Text.h>

#include "Messages.h"
#include <reader/CharacterScan.h>

namespace tibxml::reader {

namespace {

constexpr char32_t beyondUnicode = 0x110000;

struct Entity {
    std::string_view name;
    char32_t character;
};

constexpr Entity entities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''},
};

bool isCharacter(char32_t c) noexcept {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return c < 0xD800 || (c >= 0xE000 && c < 0xFFFE) || (c >= 0x10000 && c < beyondUnicode);
}

std::string_view view(char const* begin, char const* end) noexcept {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// The value of a digit, or 16.
unsigned digitValue(char c, unsigned base) noexcept {
    if (tree::isDigit(c)) return static_cast<unsigned>(c - '0');
    char const letter = static_cast<char>(c | 0x20);
    return base == 16 && letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10
                                                        : 16;
}

char const* readNumber(char const* p, char const* end, char32_t& character) {
    char const* digits = p + 2;
    if (digits == end) return nullptr;
    unsigned const base = *digits == 'x' ? 16 : 10;
    if (base == 16) ++digits;
    char const* next = digits;
    character = 0;
    for (; next < end && digitValue(*next, base) != 16; ++next) {
        if (character < beyondUnicode) character = character * base + digitValue(*next, base);
    }
    if (next == end || mayBeCut(next, end)) return nullptr;
    if (*next != ';' || next == digits)
        failAtCharacter(next, end, Message::unfinishedReference, {view(p, next)});
    if (!isCharacter(character))
        fail(Message::badCharacterReference, next + 1, {view(p, next + 1)});
    return next + 1;
}

} // namespace

char const* readAnyReference(char const* p, char const* end, char32_t& character) {
    if (end - p < 2) return nullptr;
    if (p[1] == '#') return readNumber(p, end, character);
    char const* const nameEnd = findNameEnd(p + 1, end);
    if (nameEnd == end || mayBeCut(nameEnd, end)) return nullptr;
    if (nameEnd == p + 1) fail(Message::ampersandAlone, p);
    if (*nameEnd != ';')
        failAtCharacter(nameEnd, end, Message::unfinishedReference, {view(p, nameEnd)});
    std::string_view const name = view(p + 1, nameEnd);
    for (Entity const& entity : entities) {
        if (entity.name != name) continue;
        character = entity.character;
        return nameEnd + 1;
    }
    fail(Message::unknownEntity, nameEnd + 1, {name});
}

} // namespace tibxml::reader
