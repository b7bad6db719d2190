#include "Conversion.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iconv.h>

#include <TibXml/platform/Utf.h>

namespace tibxml::reader {

// Almost all text is ASCII, and all of these run over it in blocks. The loops over a block have a
// fixed number of steps and no exit, which is what lets the compiler turn them into vector code.

namespace {

using Stop = Converted::Stop;

constexpr std::size_t blockSize = 16;
constexpr std::size_t longestCharacter = 4; // in UTF-8

// Units of an encoding as they lie in memory, in either byte order.
template <class Unit, std::endian Order>
struct Units {
    static constexpr std::size_t size = sizeof(Unit);

    static Unit at(char const* bytes) noexcept {
        Unit unit = 0;
        std::memcpy(&unit, bytes, size);
        if constexpr (Order != std::endian::native && size == 2)
            unit = static_cast<Unit>(__builtin_bswap16(unit));
        if constexpr (Order != std::endian::native && size == 4)
            unit = static_cast<Unit>(__builtin_bswap32(unit));
        return unit;
    }
};

// Writes a block's worth of characters, when all of them are ASCII.
template <class Units>
bool copiesBlock(char const* bytes, char* out) noexcept {
    std::array<decltype(Units::at(bytes)), blockSize> units;
    std::uint32_t all = 0;
    for (std::size_t i = 0; i != blockSize; ++i) {
        units[i] = Units::at(bytes + i * Units::size);
        all |= units[i];
    }
    if (all >= 0x80) return false;
    for (std::size_t i = 0; i != blockSize; ++i)
        out[i] = static_cast<char>(units[i]);
    return true;
}

// One character of an encoding; no units when the bytes end within it.
struct Character {
    char32_t code;
    unsigned units;
    bool valid;
};

constexpr bool isSurrogate(char32_t code) noexcept {
    return code - 0xD800U < 0x800U;
}

template <class Units>
Character characterAt(char const* bytes, std::size_t left) noexcept {
    char32_t const code = Units::at(bytes);
    if (!isSurrogate(code)) return {code, 1, code <= 0x10FFFF};
    if (Units::size != 2 || code >= 0xDC00) return {code, 1, false};
    if (left < 2 * Units::size) return {code, 0, true};
    char32_t const low = Units::at(bytes + Units::size);
    return {0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00), 2, low - 0xDC00U < 0x400U};
}

// Where a conversion stands between its input and its output.
struct Place {
    char const* in;
    char const* inEnd;
    char* out;
    char* outEnd;

    std::size_t left() const noexcept { return static_cast<std::size_t>(inEnd - in); }

    std::size_t room() const noexcept { return static_cast<std::size_t>(outEnd - out); }
};

// One character; false when it cannot be converted.
template <class Units>
bool convertOne(Place& place, Stop& stop) noexcept {
    if (place.left() < Units::size) return stop = Stop::needsInput, false;
    if (place.room() < longestCharacter) return stop = Stop::needsRoom, false;
    Character const character = characterAt<Units>(place.in, place.left());
    if (!character.valid) return stop = Stop::invalid, false;
    if (character.units == 0) return stop = Stop::needsInput, false;
    place.out = platform::writeUtf8(character.code, place.out);
    place.in += character.units * Units::size;
    return true;
}

// A character of one or two bytes of UTF-8, without a jump: in most alphabets the two alternate.
char* writeShort(std::uint32_t code, char* out) noexcept {
    bool const isAscii = code < 0x80;
    out[0] = static_cast<char>(isAscii ? code : 0xC0U | (code >> 6U));
    out[1] = static_cast<char>(0x80U | (code & 0x3FU));
    return out + (isAscii ? 1 : 2);
}

// A block's worth of characters as far as all is well, without looking at the ends.
template <class Units>
void convertBlock(Place& place) noexcept {
    char const* in = place.in;
    char* out = place.out;
    for (std::size_t i = 0; i != blockSize; ++i) {
        std::uint32_t const code = Units::at(in);
        if (code < 0x800) {
            out = writeShort(code, out);
            in += Units::size;
            continue;
        }
        Character const character = characterAt<Units>(in, 2 * Units::size);
        if (!character.valid) break;
        out = platform::writeUtf8(character.code, out);
        in += character.units * Units::size;
    }
    place.in = in;
    place.out = out;
}

// Where a block is not ASCII a block's worth is taken one by one before the next is tried: text
// that is not ASCII seldom changes back soon.
template <class Units>
Converted convertUnits(std::string_view bytes, char* out, std::size_t room) noexcept {
    constexpr std::size_t mostUnits = 2 * blockSize;
    Place place{bytes.data(), bytes.data() + bytes.size(), out, out + room};
    Stop stop = Stop::needsInput;
    do {
        while (place.left() >= mostUnits * Units::size &&
               place.room() >= blockSize * longestCharacter) {
            if (copiesBlock<Units>(place.in, place.out)) {
                place.in += blockSize * Units::size;
                place.out += blockSize;
            } else {
                char const* const before = place.in;
                convertBlock<Units>(place);
                if (place.in == before) break;
            }
        }
    } while (convertOne<Units>(place, stop));
    return {bytes.size() - place.left(), room - place.room(), stop};
}

template <class Units>
class UnitConversion final : public Conversion {
public:
    Converted convert(std::string_view bytes, char* out, std::size_t room) noexcept override {
        return convertUnits<Units>(bytes, out, room);
    }
};

class AsciiConversion final : public Conversion {
public:
    Converted convert(std::string_view bytes, char* out, std::size_t room) noexcept override {
        std::size_t const size = std::min(bytes.size(), room);
        std::size_t const valid = platform::asciiPrefix(bytes.substr(0, size));
        std::memcpy(out, bytes.data(), valid);
        if (valid != size) return {valid, valid, Stop::invalid};
        return {valid, valid, size == bytes.size() ? Stop::needsInput : Stop::needsRoom};
    }
};

template <class Unit, std::endian Order>
std::unique_ptr<Conversion> conversionOf() {
    return std::make_unique<UnitConversion<Units<Unit, Order>>>();
}

} // namespace

std::unique_ptr<Conversion> conversionFrom(Encoding encoding) {
    switch (encoding) {
    case Encoding::utf16le: return conversionOf<std::uint16_t, std::endian::little>();
    case Encoding::utf16be: return conversionOf<std::uint16_t, std::endian::big>();
    case Encoding::utf32le: return conversionOf<std::uint32_t, std::endian::little>();
    case Encoding::utf32be: return conversionOf<std::uint32_t, std::endian::big>();
    // Each byte of Latin-1 is the number of its character.
    case Encoding::latin1: return conversionOf<std::uint8_t, std::endian::native>();
    case Encoding::ascii: return std::make_unique<AsciiConversion>();
    default: return nullptr;
    }
}

Converted convertWide(std::wstring_view text, char* out, std::size_t room) noexcept {
    using Unit = std::conditional_t<sizeof(wchar_t) == 2, std::uint16_t, std::uint32_t>;
    static_assert(sizeof(Unit) == sizeof(wchar_t));
    std::string_view const bytes{reinterpret_cast<char const*>(text.data()),
                                 text.size() * sizeof(wchar_t)};
    Converted result = convertUnits<Units<Unit, std::endian::native>>(bytes, out, room);
    result.taken /= sizeof(wchar_t);
    return result;
}

// The encodings that the system's converter knows.

namespace {

constexpr std::size_t failed = static_cast<std::size_t>(-1);

iconv_t const noConverter = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

class IconvConversion final : public Conversion {
public:
    explicit IconvConversion(iconv_t handle) noexcept : handle_{handle} {}

    ~IconvConversion() override { iconv_close(handle_); }

    Converted convert(std::string_view bytes, char* out, std::size_t room) noexcept override {
        // The interface asks for a pointer to characters that it never changes.
        char* in = const_cast<char*>(bytes.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        std::size_t left = bytes.size();
        std::size_t const before = room;
        std::size_t const result = iconv(handle_, &in, &left, &out, &room);
        return {bytes.size() - left, before - room, stopFor(result, errno, left)};
    }

    std::size_t finish(char* out, std::size_t room) noexcept override {
        std::size_t const before = room;
        iconv(handle_, nullptr, nullptr, &out, &room);
        return before - room;
    }

private:
    static Converted::Stop stopFor(std::size_t result, int reason, std::size_t left) noexcept {
        if (result != failed && left == 0) return Converted::Stop::needsInput;
        if (result == failed && reason == EINVAL) return Converted::Stop::needsInput;
        if (result == failed && reason == E2BIG) return Converted::Stop::needsRoom;
        return Converted::Stop::invalid;
    }

    iconv_t handle_;
};

} // namespace

std::unique_ptr<Conversion> conversionFrom(std::string const& name) {
    iconv_t const handle = iconv_open("UTF-8", name.c_str());
    if (handle == noConverter && errno == ENOMEM) throw std::bad_alloc{};
    if (handle == noConverter) return nullptr;
    try {
        return std::make_unique<IconvConversion>(handle);
    } catch (...) {
        iconv_close(handle);
        throw;
    }
}

} // namespace tibxml::reader
