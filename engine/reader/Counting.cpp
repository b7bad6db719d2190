#include <reader/Counting.h>

#include <algorithm>

#include <reader/Decoder.h>

#include "Run.h"

namespace tibxml::reader {

namespace {

// As the parser asks a consumer to be.
class Counter {
public:
    explicit Counter(Counts& counts) noexcept : counts_{counts} {}

    void* nameOf(QualifiedName const& /*name*/, Uri const& /*uri*/) noexcept { return nullptr; }

    void startDocument() noexcept {}

    void declaration(std::string_view /*content*/) noexcept {}

    void startElement(void* /*name*/, StartTag const& tag) noexcept {
        ++counts_.elements;
        counts_.attributes += tag.attributes.size() - declarationsIn(tag);
        counts_.depth = std::max(counts_.depth, ++depth_);
    }

    void endElement(void* /*name*/) noexcept { --depth_; }

    void text(std::string_view text) noexcept { counts_.textBytes += text.size(); }

    void piece(std::string_view text) noexcept { counts_.textBytes += text.size(); }

    void reference(std::string_view character) noexcept { counts_.textBytes += character.size(); }

    void cdata(std::string_view content) noexcept { counts_.textBytes += content.size(); }

    void comment(std::string_view /*content*/) noexcept {}

    void instruction(std::string_view /*target*/, std::string_view /*data*/) noexcept {}

private:
    static std::size_t declarationsIn(StartTag const& tag) noexcept {
        if (!tag.has(NameUse::declaresDefault) && !tag.has(NameUse::declaresPrefix)) return 0;
        auto const declares = [](Attribute const& each) { return each.name->declares(); };
        return static_cast<std::size_t>(std::ranges::count_if(tag.attributes, declares));
    }

    Counts& counts_;
    std::uint32_t depth_ = 0;
};

bool countText(Counts& counts, Utf8Source& text, ReadError& error) {
    counts = {};
    error = {};
    Window window{text};
    Counter counter{counts};
    Parser<Counter> parser{window, counter};
    return run(parser, window, error);
}

} // namespace

bool count(Counts& counts, ByteSource& source, ReadError& error) {
    Decoder decoder{source, EncodingRule::detect};
    return countText(counts, decoder, error);
}

bool countWide(Counts& counts, std::wstring_view text, ReadError& error) {
    WideSource source{text};
    return countText(counts, source, error);
}

} // namespace tibxml::reader
