#include "Expression.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include <tree/Text.h>

namespace tibxml::query {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string_view trimmed(std::string_view text) noexcept {
    while (!text.empty() && tree::isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && tree::isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::size_t countDigits(std::string_view text) noexcept {
    std::size_t count = 0;
    while (count < text.size() && tree::isDigit(text[count]))
        ++count;
    return count;
}

// Digits, digits with a point before, among or after them.
bool isUnsignedNumber(std::string_view text) noexcept {
    std::size_t const whole = countDigits(text);
    if (whole == text.size()) return whole != 0;
    if (text[whole] != '.') return false;
    std::size_t const fraction = countDigits(text.substr(whole + 1));
    return whole + 1 + fraction == text.size() && whole + fraction != 0;
}

// What from_chars calls out of range is either too large or too close to zero.
double outOfRange(std::string_view digits) noexcept {
    std::size_t const significant = digits.find_first_not_of('0');
    return significant != std::string_view::npos && digits[significant] != '.' ? infinity : 0.0;
}

double unsignedValue(std::string_view digits) noexcept {
    double value = 0;
    auto const result = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                        std::chars_format::fixed);
    return result.ec == std::errc::result_out_of_range ? outOfRange(digits) : value;
}

} // namespace

double toNumber(std::string_view text) noexcept {
    text = trimmed(text);
    bool const negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    if (!isUnsignedNumber(text)) return notANumber;
    double const value = unsignedValue(text);
    return negative ? -value : value;
}

void appendNumber(double number, std::string& out) {
    if (std::isnan(number)) {
        out += "NaN";
    } else if (std::isinf(number)) {
        out += number > 0 ? "Infinity" : "-Infinity";
    } else if (number == 0) {
        out += '0';
    } else {
        // The longest have 324 zeros and 17 digits after the point.
        std::array<char, 400> buffer;
        auto const result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                          std::chars_format::fixed);
        out.append(buffer.data(), result.ptr);
    }
}

double roundNumber(double number) noexcept {
    if (!std::isfinite(number) || number == 0) return number;
    double const below = std::floor(number);
    double const rounded = number - below >= 0.5 ? below + 1 : below;
    return rounded == 0 ? std::copysign(0.0, number) : rounded;
}

bool NumberExpression::boolean(Context const& context) const {
    double const value = number(context);
    return value < 0 || value > 0; // neither zero nor NaN
}

std::string_view NumberExpression::string(Context const& context, std::string& storage) const {
    storage.clear();
    appendNumber(number(context), storage);
    return storage;
}

bool StringExpression::boolean(Context const& context) const {
    std::string storage;
    return !string(context, storage).empty();
}

double StringExpression::number(Context const& context) const {
    std::string storage;
    return toNumber(string(context, storage));
}

tree::Node* NodeExpression::first(Context const& context) const {
    tree::Node* found = nullptr;
    visit(context, Order::document, [&found](tree::Node* node) {
        found = node;
        return true;
    });
    return found;
}

bool NodeExpression::boolean(Context const& context) const {
    return visit(context, Order::any, [](tree::Node*) { return true; });
}

double NodeExpression::number(Context const& context) const {
    std::string storage;
    return toNumber(string(context, storage));
}

std::string_view NodeExpression::string(Context const& context, std::string& storage) const {
    tree::Node const* const node = first(context);
    return node != nullptr ? tree::stringValue(node, storage) : std::string_view{};
}

} // namespace tibxml::query
