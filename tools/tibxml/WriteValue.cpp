#include "WriteValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "Failure.h"
#include "InputFile.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

// The number that a whole text is, without white space and within the limits of its type: what the
// library would cut short or limit on reading is not what was meant.
template <class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

std::string_view withoutParentheses(std::string_view text) {
    bool const isEnclosed = text.size() > 1 && text.front() == '(' && text.back() == ')';
    return isEnclosed ? text.substr(1, text.size() - 2) : text;
}

// As many numbers as there must be, with commas between them.
template <std::size_t count>
std::optional<std::array<LONG, count>> numbersIn(std::string_view text) {
    std::array<LONG, count> numbers{};
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const comma = i + 1 < count ? text.find(',') : text.size();
        auto const number = numberIn<LONG>(text.substr(0, comma));
        if (comma == text.npos || !number) return std::nullopt;
        numbers[i] = *number;
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return numbers;
}

// All that a file holds.
std::vector<unsigned char> bytesOf(std::string const& name) {
    InputFile file{name};
    std::vector<unsigned char> bytes;
    std::array<unsigned char, 1 << 16> piece{};
    for (ULONG count = 1; count > 0;) {
        file.Read(piece.data(), static_cast<ULONG>(piece.size()), &count);
        bytes.insert(bytes.end(), piece.begin(), piece.begin() + count);
    }
    file.requireSuccess();
    return bytes;
}

// Writing bytes does not report whether it worked.
bool holds(WXmlValueAccessor const& value, std::vector<unsigned char> const& bytes) {
    std::vector<unsigned char> written(bytes.size());
    auto const size = static_cast<unsigned long>(bytes.size());
    if (bytes.empty()) return value.IsEmpty();
    return value.GetBinary(written.data(), size) == size && written == bytes;
}

} // namespace

bool writeString(WXmlValueAccessor& value, std::string const& text) {
    value.SetString(toWide(text));
    return true;
}

bool writeBool(WXmlValueAccessor& value, std::string const& text) {
    if (text != "true" && text != "false") return false;
    value.SetBool(text == "true");
    return true;
}

bool writeInt(WXmlValueAccessor& value, std::string const& text) {
    auto const number = numberIn<int>(text);
    if (number) value.SetInt(*number);
    return number.has_value();
}

bool writeInt64(WXmlValueAccessor& value, std::string const& text) {
    auto const number = numberIn<long long>(text);
    if (number) value.SetIntPtr(*number);
    return number.has_value();
}

bool writeDouble(WXmlValueAccessor& value, std::string const& text) {
    auto const number = numberIn<double>(text);
    if (!number || !std::isfinite(*number)) return false;
    value.SetDouble(*number);
    return true;
}

bool writePoint(WXmlValueAccessor& value, std::string const& text) {
    auto const numbers = numbersIn<2>(withoutParentheses(text));
    if (numbers) value.SetPoint({(*numbers)[0], (*numbers)[1]});
    return numbers.has_value();
}

bool writeSize(WXmlValueAccessor& value, std::string const& text) {
    auto numbers = numbersIn<2>(withoutParentheses(text));
    if (auto const both = numberIn<LONG>(text)) numbers = {*both, *both};
    if (numbers) value.SetSize({(*numbers)[0], (*numbers)[1]});
    return numbers.has_value();
}

bool writeRect(WXmlValueAccessor& value, std::string const& text) {
    auto const numbers = numbersIn<4>(text);
    if (numbers) value.SetRect({(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]});
    return numbers.has_value();
}

bool writeBinary(WXmlValueAccessor& value, std::string const& name) {
    std::vector<unsigned char> const bytes = bytesOf(name);
    unsigned char const nothing = 0; // no address would mean that there is no value
    value.SetBinary(bytes.empty() ? &nothing : bytes.data(),
                    static_cast<unsigned long>(bytes.size()));
    if (!holds(value, bytes))
        throw failure(ExitStatus::failed, "bytes can only be held by an element");
    return true;
}

} // namespace tibxml::tool
