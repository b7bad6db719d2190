#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

#include <string>
#include <string_view>

namespace TibUtils::Json {
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
