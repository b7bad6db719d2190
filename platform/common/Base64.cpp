#include <TibXml/platform/Base64.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace tibxml::platform {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t lineLength = 72;
constexpr std::size_t bytesPerLine = lineLength / 4 * 3;

// What a character means to the decoder: its six bits, or one of these.
constexpr std::uint8_t padding = 64;
constexpr std::uint8_t blank = 65;
constexpr std::uint8_t foreign = 66;

constexpr std::array<std::uint8_t, 256> meanings = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(foreign);
    for (std::size_t i = 0; i != alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    for (char const c : {' ', '\t', '\n', '\r'})
        table[static_cast<unsigned char>(c)] = blank;
    table[static_cast<unsigned char>('=')] = padding;
    return table;
}();

char* writeGroup(char* out, std::uint32_t bits) noexcept {
    for (unsigned shift = 24; shift != 0;) {
        shift -= 6;
        *out++ = alphabet[bits >> shift & 0x3F];
    }
    return out;
}

// Whole groups of three bytes.
char* writeGroups(char* out, std::span<BYTE const> bytes) noexcept {
    for (std::size_t i = 0; i != bytes.size(); i += 3) {
        std::uint32_t const first = bytes[i];
        std::uint32_t const second = bytes[i + 1];
        out = writeGroup(out, first << 16 | second << 8 | bytes[i + 2]);
    }
    return out;
}

// One or two bytes at the end.
char* writePadded(char* out, std::span<BYTE const> bytes) noexcept {
    std::uint32_t const second = bytes.size() == 2 ? bytes[1] : 0;
    char* const end = writeGroup(out, std::uint32_t{bytes[0]} << 16 | second << 8);
    std::fill(out + bytes.size() + 1, end, '=');
    return end;
}

// Decodes groups of four plain characters from the front of a text as long as they come, which is
// nearly all of it; returns how many characters that were.
std::size_t decodePlainGroups(std::string_view text, std::vector<BYTE>& bytes) {
    std::array<BYTE, 192> block; // whole groups
    std::size_t at = 0;
    std::size_t filled = 0;
    while (text.size() - at >= 4) {
        std::uint32_t bits = 0;
        std::uint32_t all = 0;
        for (std::size_t i = 0; i != 4; ++i) {
            std::uint32_t const meaning = meanings[static_cast<unsigned char>(text[at + i])];
            bits = bits << 6 | meaning;
            all |= meaning;
        }
        if (all >= padding) break;
        block[filled] = static_cast<BYTE>(bits >> 16);
        block[filled + 1] = static_cast<BYTE>(bits >> 8 & 0xFF);
        block[filled + 2] = static_cast<BYTE>(bits & 0xFF);
        filled += 3;
        at += 4;
        if (filled < block.size()) continue;
        bytes.insert(bytes.end(), block.begin(), block.end());
        filled = 0;
    }
    bytes.insert(bytes.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(filled));
    return at;
}

// Four characters at a time; `done` says that no character may follow.
class Decoder {
public:
    bool take(std::uint8_t meaning) {
        if (meaning == blank) return true;
        if (meaning == foreign || done_) return false;
        if (meaning == padding) return takePadding();
        if (padding_ != 0) return false;
        bits_ = bits_ << 6 | meaning;
        return ++count_ == 4 ? finishGroup() : true;
    }

    // Between groups, with more of them to come or not.
    bool isComplete() const noexcept { return count_ == 0; }

    bool wantsGroup() const noexcept { return count_ == 0 && !done_; }

    std::vector<BYTE> bytes;

private:
    bool takePadding() {
        if (count_ < 2) return false;
        ++padding_;
        bits_ <<= 6;
        return ++count_ == 4 ? finishGroup() : true;
    }

    bool finishGroup() {
        std::uint32_t const unused = padding_ == 0 ? 0 : (1U << (8 * padding_)) - 1;
        if ((bits_ & unused) != 0) return false;
        for (unsigned i = 0; i != 3 - padding_; ++i)
            bytes.push_back(static_cast<BYTE>(bits_ >> (16 - 8 * i)));
        done_ = padding_ != 0;
        count_ = 0;
        padding_ = 0;
        bits_ = 0;
        return true;
    }

    std::uint32_t bits_ = 0;
    unsigned count_ = 0;
    unsigned padding_ = 0;
    bool done_ = false;
};

} // namespace

std::string encodeBase64(std::span<BYTE const> bytes) {
    std::size_t const characters = (bytes.size() + 2) / 3 * 4;
    std::size_t const breaks = characters == 0 ? 0 : (characters - 1) / lineLength;
    std::string text(characters + breaks, '\n');
    char* out = text.data();
    while (bytes.size() > bytesPerLine) {
        out = writeGroups(out, bytes.first(bytesPerLine)) + 1;
        bytes = bytes.subspan(bytesPerLine);
    }
    std::size_t const rest = bytes.size() % 3;
    out = writeGroups(out, bytes.first(bytes.size() - rest));
    if (rest != 0) writePadded(out, bytes.last(rest));
    return text;
}

std::optional<std::vector<BYTE>> decodeBase64(std::string_view text) {
    Decoder decoder;
    decoder.bytes.reserve(text.size() / 4 * 3);
    while (!text.empty()) {
        if (decoder.wantsGroup()) text.remove_prefix(decodePlainGroups(text, decoder.bytes));
        if (text.empty()) break;
        if (!decoder.take(meanings[static_cast<unsigned char>(text.front())])) return std::nullopt;
        text.remove_prefix(1);
    }
    if (!decoder.isComplete()) return std::nullopt;
    return std::move(decoder.bytes);
}

} // namespace tibxml::platform
