#include "Encoder.h"

#include <algorithm>
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
    std::string name = upperCase(encoding);
    checkName(name);
    if (name.empty() || name == "UTF-8" || name == "UTF8")
        return std::make_unique<Utf8Encoder>(bytes);
    using enum Utf16Encoder::Order;
    if (name == "UTF-16") return std::make_unique<Utf16Encoder>(bytes, littleEndian, true);
    if (name == "UTF-16LE") return std::make_unique<Utf16Encoder>(bytes, littleEndian, false);
    if (name == "UTF-16BE") return std::make_unique<Utf16Encoder>(bytes, bigEndian, false);
    // The system would put a byte order mark in front, which readers take for that of UTF-16.
    if (name == "UTF-32") name = "UTF-32LE";
    return std::make_unique<ConvertingEncoder>(name, bytes);
}

} // namespace tibxml::output
