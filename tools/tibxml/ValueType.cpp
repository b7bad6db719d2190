#include "ValueType.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <vector>

#include <TibXml/platform/ComError.h>

#include "Failure.h"
#include "Text.h"
#include "WriteValue.h"

namespace tibxml::tool {

namespace {

std::string printed(bool value) {
    return value ? "true" : "false";
}

std::string printed(int value) {
    return std::to_string(value);
}

std::string printed(long long value) {
    return std::to_string(value);
}

// As few digits as it takes to read the same number again.
std::string printed(double value) {
    char digits[32];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr};
}

std::string printed(CString const& value) {
    return toUtf8(value);
}

std::string joined(std::initializer_list<LONG> numbers) {
    std::string text;
    for (LONG const number : numbers) {
        if (!text.empty()) text += ',';
        text += std::to_string(number);
    }
    return text;
}

std::string printed(CPoint const& value) {
    return joined({value.x, value.y});
}

std::string printed(CSize const& value) {
    return joined({value.cx, value.cy});
}

std::string printed(CRect const& value) {
    return joined({value.left, value.top, value.right, value.bottom});
}

template <class T>
std::optional<std::string> read(WXmlValueAccessor const& accessor) {
    auto const value = accessor.Get<T>();
    if (!value) return std::nullopt;
    return printed(*value);
}

std::string bytesOf(WXmlValueAccessor const& accessor, unsigned long size) {
    std::vector<unsigned char> bytes(size);
    accessor.GetBinary(bytes.data(), size);
    return {bytes.begin(), bytes.end()};
}

// No bytes are a value, too, but a text that is not marked as bytes gives none.
std::optional<std::string> readBinary(WXmlValueAccessor const& accessor) {
    try {
        unsigned long const size = accessor.GetBinary(nullptr, 0);
        if (size == 0 && !accessor.IsEmpty()) return std::nullopt;
        return bytesOf(accessor, size);
    } catch (WXmlValueTypeNotFoundException const&) {
        return std::nullopt;
    } catch (_com_error const& error) {
        if (error.Error() == E_OUTOFMEMORY) throw;
        return std::nullopt;
    }
}

constexpr ValueType types[] = {
    {"string", "a string", read<CString>, writeString},
    {"bool", "true or false", read<bool>, writeBool},
    {"int", "an integer", read<int>, writeInt},
    {"int64", "an integer", read<long long>, writeInt64},
    {"double", "a number", read<double>, writeDouble},
    {"point", "a point", read<CPoint>, writePoint},
    {"size", "a size", read<CSize>, writeSize},
    {"rect", "a rectangle", read<CRect>, writeRect},
    {"binary", "marked as bytes in base64", readBinary, writeBinary, true},
};

} // namespace

std::span<ValueType const> valueTypes() noexcept {
    return types;
}

ValueType const& valueType(std::string const& name) noexcept {
    return *std::find_if(std::begin(types), std::end(types) - 1,
                         [&](ValueType const& type) { return type.name == name; });
}

void writeAs(ValueType const& type, WXmlValueAccessor& value, std::string const& text,
             std::string const& place) {
    try {
        if (type.write(value, text)) return;
    } catch (WXmlValueTypeNotFoundException const&) {
        throw failure(ExitStatus::failed, "there can be no value at " + place);
    }
    throw failure(ExitStatus::failed, "'" + text + "' is not " + type.description);
}

Failure absentValue(std::string const& file, std::string const& place,
                    WXmlValueAccessor const& value, ValueType const& type) {
    if (!value.Exists()) return failure(ExitStatus::notFound, file + ": nothing at " + place);
    return failure(ExitStatus::notFound, file + ": " + place + " is not " + type.description +
                                             ": '" + excerpt(value.GetString(L"")) + "'");
}

} // namespace tibxml::tool
