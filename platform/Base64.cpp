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

// Three bytes, or what there is of them, as four characters.
void appendGroup(std::string& text, std::span<BYTE const> bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i != 3; ++i)
        bits = bits << 8 | (i < bytes.size() ? bytes[i] : 0U);
    for (std::size_t i = 0; i != 4; ++i)
        text += i <= bytes.size() ? alphabet[bits >> (18 - 6 * i) & 0x3F] : '=';
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

    bool isComplete() const noexcept { return count_ == 0; }

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
    std::string text;
    std::size_t const characters = (bytes.size() + 2) / 3 * 4;
    text.reserve(characters + characters / lineLength);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        if (i != 0 && i % bytesPerLine == 0) text += '\n';
        appendGroup(text, bytes.subspan(i, std::min<std::size_t>(3, bytes.size() - i)));
    }
    return text;
}

std::optional<std::vector<BYTE>> decodeBase64(std::string_view text) {
    Decoder decoder;
    decoder.bytes.reserve(text.size() / 4 * 3);
    for (char const c : text) {
        if (!decoder.take(meanings[static_cast<unsigned char>(c)])) return std::nullopt;
    }
    if (!decoder.isComplete()) return std::nullopt;
    return std::move(decoder.bytes);
}

} // namespace tibxml::platform
