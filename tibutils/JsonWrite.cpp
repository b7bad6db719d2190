#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace TibUtils::Json {

namespace {

/// One object or array whose values are being written: one of the two is not null.
struct Open {
    Object const* object;
    Array const* array;
    std::size_t next;

    std::size_t size() const noexcept {
        return object != nullptr ? object->GetSize() : array->GetSize();
    }

    Variant const& value() const {
        return object != nullptr ? object->GetValue(next) : array->GetValue(next);
    }

    char closing() const noexcept { return object != nullptr ? '}' : ']'; }
};

void appendControl(std::string& text, unsigned char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::string_view controls = "\b\t\n\f\r";
    constexpr std::string_view letters = "btnfr";
    std::size_t const known = controls.find(static_cast<char>(byte));
    if (known != std::string_view::npos) {
        text.append(1, '\\') += letters[known];
    } else {
        text.append("\\u00").append(1, digits[byte >> 4]) += digits[byte & 15];
    }
}

void appendString(std::string& text, CString const& string) {
    text += '"';
    for (char const byte : DataEncoding::Utf8Encode(string.view())) {
        auto const code = static_cast<unsigned char>(byte);
        if (code < 0x20) {
            appendControl(text, code);
        } else {
            if (byte == '"' || byte == '\\') text += '\\';
            text += byte;
        }
    }
    text += '"';
}

// The shortest form of 100000 would be 1e+05, so integers are written as such.
bool isPlainInteger(double number) noexcept {
    constexpr double greatest = 9007199254740992; // 2^53
    return std::abs(number) <= greatest && std::trunc(number) == number &&
           (number != 0 || !std::signbit(number));
}

void appendNumber(std::string& text, double number) {
    std::array<char, 32> digits{};
    char* const end = digits.data() + digits.size();
    char const* const last =
        isPlainInteger(number)
            ? std::to_chars(digits.data(), end, static_cast<long long>(number)).ptr
            : std::to_chars(digits.data(), end, number).ptr;
    text.append(digits.data(), static_cast<std::size_t>(last - digits.data()));
}

/// Writes with a stack of its own, so that depth costs memory and nothing else.
class Writer {
public:
    explicit Writer(int indentation) noexcept
        : indentation_{indentation > 0 ? static_cast<std::size_t>(indentation) : 0} {}

    std::string write(Variant const& value) {
        begin(value);
        while (!open_.empty()) {
            if (open_.back().next == open_.back().size()) {
                close();
            } else {
                writeNext();
            }
        }
        return std::move(text_);
    }

private:
    void begin(Variant const& value) {
        if (auto const* const object = value.TryGet<Object>()) {
            open('{', {object, nullptr, 0});
        } else if (auto const* const array = value.TryGet<Array>()) {
            open('[', {nullptr, array, 0});
        } else {
            writePlain(value);
        }
    }

    void writePlain(Variant const& value) {
        if (auto const* const string = value.TryGet<CString>()) {
            appendString(text_, *string);
        } else if (auto const* const boolean = value.TryGet<bool>()) {
            text_ += *boolean ? "true" : "false";
        } else if (auto const* const number = value.TryGet<double>();
                   number != nullptr && std::isfinite(*number)) {
            appendNumber(text_, *number);
        } else {
            text_ += "null";
        }
    }

    void open(char bracket, Open container) {
        text_ += bracket;
        open_.push_back(container);
    }

    void writeNext() {
        Open& container = open_.back();
        if (container.next != 0) text_ += ',';
        breakLine(open_.size());
        if (container.object != nullptr) writeName(container.object->GetValueName(container.next));
        Variant const& value = container.value();
        ++container.next;
        begin(value);
    }

    void writeName(CString const& name) {
        appendString(text_, name);
        text_ += indentation_ == 0 ? ":" : ": ";
    }

    void close() {
        Open const container = open_.back();
        open_.pop_back();
        if (container.size() != 0) breakLine(open_.size());
        text_ += container.closing();
    }

    void breakLine(std::size_t depth) {
        if (indentation_ != 0) text_.append(1, '\n').append(depth * indentation_, ' ');
    }

    std::size_t indentation_;
    std::string text_;
    std::vector<Open> open_;
};

} // namespace

std::string Write(Variant const& value, int indentation) {
    return Writer{indentation}.write(value);
}

namespace {

// What a reader of XML would not give back as it stands; null for all else.
wchar_t const* referenceFor(wchar_t character) noexcept {
    switch (character) {
    case L'&': return L"&amp;";
    case L'<': return L"&lt;";
    case L'>': return L"&gt;";
    case L'"': return L"&quot;";
    case L'\t': return L"&#9;";
    case L'\n': return L"&#10;";
    case L'\r': return L"&#13;";
    default: return nullptr;
    }
}

// Halves of surrogate pairs count as allowed where a wide character is only half of one.
bool isAllowedInXml(wchar_t character) noexcept {
    auto const code = static_cast<char32_t>(character);
    bool const isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= 0x20 && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF &&
           (!isSurrogate || sizeof(wchar_t) == 2);
}

CString quoted(std::wstring_view string) {
    constexpr wchar_t replacement = 0xFFFD;
    std::wstring text = L"\"";
    for (wchar_t const character : string) {
        if (wchar_t const* const reference = referenceFor(character)) {
            text += reference;
        } else {
            text += isAllowedInXml(character) ? character : replacement;
        }
    }
    return CString{std::wstring_view{text += L'"'}};
}

} // namespace

CString ValueToString(Variant const& value, int option) {
    if (auto const* const string = value.TryGet<CString>()) return quoted(string->view());
    return DataEncoding::Utf8Decode(Write(value, option));
}

} // namespace TibUtils::Json
