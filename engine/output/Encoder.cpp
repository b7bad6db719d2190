#include "Encoder.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <TibXml/platform/Utf.h>

namespace tibxml::output {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

// One name="value" of an XML declaration, version="1.0" encoding="UTF-8"; from begins at the white
// space before it.
struct PseudoAttribute {
    std::size_t from;
    std::size_t to; // 0 when there is none
    std::string_view name;
    std::string_view value;
};

PseudoAttribute pseudoAttributeAt(std::string_view text, std::size_t from) noexcept {
    PseudoAttribute const none{from, 0, {}, {}};
    std::size_t const name = text.find_first_not_of(whiteSpace, from);
    std::size_t const equals = text.find('=', from);
    if (equals == std::string_view::npos) return none;
    std::size_t const nameEnd = std::min(text.find_first_of(whiteSpace, name), equals);
    std::size_t const quote = text.find_first_not_of(whiteSpace, equals + 1);
    if (quote == std::string_view::npos || (text[quote] != '"' && text[quote] != '\'')) return none;
    std::size_t const end = text.find(text[quote], quote + 1);
    if (end == std::string_view::npos) return none;
    return {from, end + 1, text.substr(name, nameEnd - name),
            text.substr(quote + 1, end - quote - 1)};
}

PseudoAttribute findEncoding(std::string_view text) noexcept {
    PseudoAttribute found = pseudoAttributeAt(text, 0);
    while (found.to != 0 && found.name != "encoding")
        found = pseudoAttributeAt(text, found.to);
    return found;
}

bool isUtf16(std::string_view encoding) noexcept {
    return encoding.size() == 6 && encoding.substr(3) == "-16" && (encoding[0] | 32) == 'u' &&
           (encoding[1] | 32) == 't' && (encoding[2] | 32) == 'f';
}

constexpr unsigned byteOrderMark = 0xFEFF;

// UTF-16 in either byte order.
class Utf16Encoder final : public Encoder {
public:
    enum class Order { littleEndian, bigEndian };

    // With a mark, the first bytes say which order it is.
    Utf16Encoder(Sink& bytes, Order order, bool mark) noexcept
        : bytes_{bytes},
          order_{order},
          markMissing_{mark} {}

    void write(std::string_view piece) override;

    void finish() override {}

private:
    void appendCharacter(char32_t character);
    void appendUnit(unsigned unit);

    Sink& bytes_;
    Order order_;
    bool markMissing_;
    std::string units_; // of one piece; kept for its storage
};

void Utf16Encoder::write(std::string_view piece) {
    units_.clear();
    if (markMissing_) appendUnit(byteOrderMark);
    markMissing_ = false;
    while (!piece.empty()) {
        auto const [character, length] = platform::firstUtf8Character(piece);
        appendCharacter(character);
        piece.remove_prefix(length);
    }
    bytes_.write(units_);
}

void Utf16Encoder::appendCharacter(char32_t character) {
    unsigned const code = character;
    if (code < 0x10000) {
        appendUnit(code);
    } else {
        appendUnit(0xD7C0 + (code >> 10));
        appendUnit(0xDC00 | (code & 0x3FF));
    }
}

void Utf16Encoder::appendUnit(unsigned unit) {
    char const low = static_cast<char>(unit & 0xFF);
    char const high = static_cast<char>(unit >> 8);
    bool const lowFirst = order_ == Order::littleEndian;
    units_ += lowFirst ? low : high;
    units_ += lowFirst ? high : low;
}

class Utf8Encoder final : public Encoder {
public:
    explicit Utf8Encoder(Sink& bytes) noexcept : bytes_{bytes} {}

    void write(std::string_view piece) override { bytes_.write(piece); }

    void finish() override {}

private:
    Sink& bytes_;
};

class ConvertingEncoder final : public Encoder {
public:
    ConvertingEncoder(std::string const& encoding, Sink& bytes)
        : bytes_{bytes},
          converter_{encoding},
          repertoire_{encoding} {}

    void write(std::string_view piece) override { converter_.convert(piece, bytes_); }

    void finish() override { converter_.finish(bytes_); }

    Repertoire* repertoire() noexcept override { return &repertoire_; }

private:
    Sink& bytes_;
    Converter converter_;
    Repertoire repertoire_;
};

std::string upperCase(std::string_view name) {
    std::string upper{name};
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return upper;
}

// Four bytes per character in the order that the parser takes for the other one.
constexpr std::array<std::string_view, 4> unreadable{"UTF-32", "UTF-32LE", "UCS-4LE", "UCS4LE"};

void checkReadable(std::string const& name) {
    if (std::find(unreadable.begin(), unreadable.end(), name) == unreadable.end()) return;
    throw EncodingError{"a document saved in the encoding " + name + " could not be read again"};
}

// Keeps the system's own suffixes, such as the one for look-alikes, out of reach of documents.
void checkName(std::string const& name) {
    auto const allowed = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
    };
    if (!std::all_of(name.begin(), name.end(), allowed))
        throw EncodingError{"a document cannot be saved in the unknown encoding " + name};
}

} // namespace

std::string withoutEncoding(std::string_view declaration) {
    std::string text{declaration};
    PseudoAttribute const encoding = findEncoding(declaration);
    if (encoding.to != 0 && !isUtf16(encoding.value))
        text.erase(encoding.from, encoding.to - encoding.from);
    return text;
}

std::string_view declaredEncoding(tree::Document const& document) noexcept {
    tree::Node const* const first = document.node()->firstChild();
    if (first == nullptr || !first->is(tree::NodeKind::declaration)) return {};
    return findEncoding(first->text()).value;
}

std::unique_ptr<Encoder> makeEncoder(std::string_view encoding, Sink& bytes) {
    std::string const name = upperCase(encoding);
    checkName(name);
    checkReadable(name);
    if (name.empty() || name == "UTF-8" || name == "UTF8")
        return std::make_unique<Utf8Encoder>(bytes);
    using enum Utf16Encoder::Order;
    if (name == "UTF-16") return std::make_unique<Utf16Encoder>(bytes, littleEndian, true);
    if (name == "UTF-16LE") return std::make_unique<Utf16Encoder>(bytes, littleEndian, false);
    if (name == "UTF-16BE") return std::make_unique<Utf16Encoder>(bytes, bigEndian, false);
    return std::make_unique<ConvertingEncoder>(name, bytes);
}

} // namespace tibxml::output
