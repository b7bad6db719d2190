#include <TibXml/WXPath.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

// The part of the path object which escapes and unescapes the special characters of XML.

namespace {

constexpr auto none = std::wstring_view::npos;
constexpr std::wstring_view referenceStart = L"&#";

struct Escape {
    wchar_t const* character;
    wchar_t const* reference;
};

// Besides the ampersand, which goes its own ways.
constexpr Escape otherEscapes[] = {
    {L"<", L"&lt;"}, {L">", L"&gt;"}, {L"'", L"&apos;"}, {L"\"", L"&quot;"}};

bool isDecimal(std::wstring_view digits) {
    return std::all_of(digits.begin(), digits.end(),
                       [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
}

// Whether `text` is the decimal reference "&#…;" up to, but without, its ";".
bool isReference(std::wstring_view text) {
    return text.starts_with(referenceStart) && isDecimal(text.substr(referenceStart.size()));
}

// The ";" of a reference is searched from where the last "&" was done with, and not from the
// reference on: one that stands between the two spoils the reference. It is only searched again
// when it was passed, so that a text full of "&" takes no longer than another one.
CString escapeAmpersands(std::wstring_view text) {
    std::wstring escaped;
    std::size_t start = 0;
    std::size_t end = text.find(L';');
    for (std::size_t found = text.find(L'&'); found != none; found = text.find(L'&', start)) {
        end = end < start ? text.find(L';', start) : end;
        bool const spared =
            end != none && end > found && isReference(text.substr(found, end - found));
        std::size_t const next = spared ? end + 1 : found + 1;
        escaped += text.substr(start, next - start);
        escaped += spared ? L"" : L"amp;";
        start = next;
    }
    return CString(std::wstring_view(escaped += text.substr(start)));
}

} // namespace

// Both work on a copy: when memory runs out in the middle, the text is as it was.

void WXPath::ReplaceXMLEntities(CString& text) {
    CString escaped = text.Find(L'&') < 0 ? text : escapeAmpersands(text);
    for (Escape const& escape : otherEscapes) {
        escaped.Replace(escape.character, escape.reference);
    }
    text = std::move(escaped);
}

void WXPath::UnReplaceXMLEntities(CString& text) {
    CString plain = text;
    plain.Replace(L"&amp;", L"&");
    for (Escape const& escape : otherEscapes) {
        plain.Replace(escape.reference, escape.character);
    }
    text = std::move(plain);
}
