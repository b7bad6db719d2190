// Strings on their way across the engine's boundary.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include <TibXml/platform/Variant.h>

namespace tibxml::com {

// A string for the caller, who frees it. Throws std::bad_alloc.
BSTR toBstr(std::string_view utf8);
BSTR toBstr(std::wstring_view text);

// The characters of a string that a caller passed; null counts as empty.
inline std::wstring_view viewOf(BSTR text) noexcept {
    if (text == nullptr) return {};
    UINT bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<char const*>(text) - sizeof(bytes), sizeof(bytes));
    return {text, bytes / sizeof(wchar_t)};
}

// Whether XML can hold every one of the characters.
bool isXmlText(std::wstring_view text) noexcept;

// The characters of a string that a caller passed, as UTF-8. Names and numbers, which are short and
// ASCII, are converted in place.
class XmlText {
public:
    // Not valid when the text holds characters that XML cannot hold: control characters,
    // surrogates, U+FFFE, U+FFFF and values beyond Unicode. Throws std::bad_alloc.
    explicit XmlText(std::wstring_view text);
    XmlText(XmlText const&) = delete;
    XmlText& operator=(XmlText const&) = delete;

    bool isValid() const noexcept { return valid_; }

    std::string_view view() const noexcept { return view_; }

    // CR LF and CR become LF, as they do when a document is read.
    void normalizeLineEnds();

private:
    bool narrowInPlace(std::wstring_view text) noexcept;

    std::array<char, 48> short_;
    std::string long_;
    std::string_view view_;
    bool valid_ = true;
};

// Throws Failure (E_INVALIDARG) for a text that is not valid.
void requireValid(XmlText const& text);

// A string in a variant of which the caller becomes the owner.
VARIANT stringVariant(std::string_view utf8);

// The string in a variant, which keeps it. Throws Failure with the code for another kind.
BSTR stringIn(VARIANT const& value, HRESULT otherwise);

// An integer or boolean in a variant. Throws Failure with the code for another kind.
LONG integerIn(VARIANT const& value, HRESULT otherwise);

} // namespace tibxml::com
