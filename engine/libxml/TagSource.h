// Walks over the text of a start tag to tell namespace declarations from other attributes: the
// parser reports the two in separate lists and does not say how they were mixed. The declaration of
// "xml", which says what holds anyway, it does not report at all.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tibxml::reader {

class TagSource {
public:
    // `tag` begins with '<', is well formed and ends where its attributes do.
    explicit TagSource(std::string_view tag) noexcept : rest_{tag} {
        rest_.remove_prefix(std::min(rest_.find_first_of(space), rest_.size()));
    }

    enum class Kind { attribute, declaration, declarationOfXml, none };

    // Steps over the next attribute and says what it is.
    Kind next() noexcept {
        std::string_view const name = nextName();
        if (name.empty()) return Kind::none;
        if (name == "xmlns:xml") return Kind::declarationOfXml;
        bool const declares = name == "xmlns" || name.starts_with("xmlns:");
        return declares ? Kind::declaration : Kind::attribute;
    }

private:
    static constexpr std::string_view space = " \t\r\n";

    // Empty at the end.
    std::string_view nextName() noexcept {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(space), rest_.size()));
        std::string_view const name = rest_.substr(0, rest_.find_first_of(" \t\r\n="));
        skipValue();
        return name;
    }

    void skipValue() noexcept {
        std::size_t const open = rest_.find_first_of("\"'");
        if (open == std::string_view::npos) return rest_.remove_prefix(rest_.size());
        std::size_t const close = rest_.find(rest_[open], open + 1);
        rest_.remove_prefix(close == std::string_view::npos ? rest_.size() : close + 1);
    }

    std::string_view rest_;
};

} // namespace tibxml::reader
