#pragma once

#include <TibXml/tibutils/Variant.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// JSON values as text.
namespace TibUtils::Json {

/// How deep objects and arrays may lie within each other in a text that is read.
inline constexpr std::size_t MaxDepth = 1024;

/// What is wrong with a JSON text, and where. `what()` says both.
class TIBXML_API ParseError : public std::runtime_error {
public:
    ParseError(std::string const& reason, std::size_t offset, std::size_t line, std::size_t column);
    ParseError(ParseError const&) noexcept = default;
    ParseError& operator=(ParseError const&) noexcept = default;
    ~ParseError() override;

    /// What is wrong, without the place.
    char const* GetReason() const noexcept { return what() + reasonAt_; }

    /// The character at which it was noticed: in bytes from 0, and as a line and a column from 1,
    /// which is counted in characters. Right after the text when that ends too early.
    std::size_t GetOffset() const noexcept { return offset_; }

    std::size_t GetLine() const noexcept { return line_; }

    std::size_t GetColumn() const noexcept { return column_; }

private:
    std::size_t reasonAt_;
    std::size_t offset_;
    std::size_t line_;
    std::size_t column_;
};

/// The value that a JSON text (RFC 8259, in UTF-8, a byte order mark in front allowed) spells. Of
/// members with the same name the last one's value counts, in the place of the first. All numbers
/// are `double`s: integers above 2^53 are rounded.
///
/// Throws `ParseError` for anything else than one JSON text: also for ill-formed UTF-8, half a
/// surrogate pair, a number beyond the range of `double`, and objects and arrays deeper than
/// `MaxDepth`; `std::bad_alloc` and `std::length_error` for what there is no room for.
TIBXML_API Variant Parse(std::string_view utf8);

/// The JSON text of a value, in UTF-8: without any white space, or laid out with so many blanks for
/// each level when `indentation` is above 0. Numbers have the fewest digits that read as the same
/// number; those that JSON cannot spell (infinities, NaN) become null. What is not a Unicode
/// character (a lone surrogate) becomes U+FFFD. Any depth is written. Throws `std::bad_alloc`.
TIBXML_API std::string Write(Variant const& value, int indentation = 0);

/// The text of a value as an attribute of XML wants it. A string stands in double quotes, with `&`,
/// `<`, `>`, the double quote and line ends and tabs written as references, so that reading it as
/// XML gives the string; U+FFFD stands for a character that XML does not allow. Other values are
/// what `Write` makes of them with `option` as the indentation. Throws `std::bad_alloc` and
/// `std::length_error`.
TIBXML_API CString ValueToString(Variant const& value, int option);

} // namespace TibUtils::Json
