#include "EncodingProbe.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include <output/Serializer.h>
#include <reader/Reader.h>
#include <tree/DocumentWriter.h>
#include <tree/Text.h>

namespace tibxml::com {

namespace {

constexpr std::array<std::string_view, 5> readable{"", "UTF-8", "UTF-16", "ISO-8859-1", "US-ASCII"};

// All characters that markup is made of, and some for which encodings change their state.
constexpr std::string_view sample =
    "\t\n !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
    "abcdefghijklmnopqrstuvwxyz{|}~ \xC3\xA4+\xD0\x96-\xE3\x81\x82<\xEA\xB0\x80>\xE4\xB8\xAD";

class Bytes final : public reader::ByteSource {
public:
    explicit Bytes(std::string_view bytes) noexcept : rest_{bytes} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        std::size_t const count = std::min(size, rest_.size());
        std::memcpy(buffer, rest_.data(), count);
        rest_.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    }

private:
    std::string_view rest_;
};

tree::DocumentRef newProbe(std::string_view declaration) {
    auto probe = tree::DocumentRef::adopt(tree::Document::create());
    tree::DocumentWriter writer{*probe};
    writer.add(tree::NodeKind::declaration, probe->names().intern({}, "xml", {}), declaration);
    writer.openElement(probe->names().intern({}, "probe", {}));
    writer.add(tree::NodeKind::text, nullptr, sample);
    writer.closeElement();
    return probe;
}

bool isReadBack(std::string_view declaration) {
    std::string bytes;
    output::appendFile(*newProbe(declaration), bytes);
    auto const again = tree::DocumentRef::adopt(tree::Document::create());
    Bytes source{bytes};
    reader::ReadError error;
    std::string text;
    return reader::read(*again, source, error) &&
           tree::stringValue(again->documentElement(), text) == sample;
}

} // namespace

void checkReadBack(tree::Document const& document) {
    std::string_view const encoding = output::declaredEncoding(document);
    if (std::find(readable.begin(), readable.end(), encoding) != readable.end()) return;
    if (isReadBack(document.node()->firstChild()->text())) return;
    throw output::EncodingError{"a document saved in the encoding " + std::string{encoding} +
                                " could not be read again"};
}

} // namespace tibxml::com
