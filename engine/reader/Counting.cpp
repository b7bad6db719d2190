#include <reader/Counting.h>

#include <algorithm>

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

    static constexpr bool dropsBlanks() noexcept { return false; }

    void blanks() noexcept {}

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

} // namespace

bool count(Counts& counts, Input const& input, ReadError& error) {
    return withWindow(input, [&](Window& window) {
        counts = {};
        error = {};
        Counter counter{counts};
        Parser<Counter> parser{window, counter};
        return run(parser, window, error);
    });
}

} // namespace tibxml::reader
