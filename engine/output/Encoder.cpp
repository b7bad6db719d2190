#include "Encoder.h"

#include <algorithm>
#include <array>
#include <string>

#include <output/Encoding.h>

#include "Converter.h"
#include "Utf16Encoder.h"

namespace tibxml::output {

namespace {

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
