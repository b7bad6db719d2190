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

constexpr Escape ampersand{L"&", L"&amp;"};
constexpr Escape otherEscapes[] = {
    {L"<", L"&lt;"}, {L">", L"&gt;"}, {L"'", L"&apos;"}, {L"\"", L"&quot;"}};

bool mayHoldReference(std::wstring_view text) {
    std::size_t const found = text.find(referenceStart);
    return found != none && text.find(L';', found) != none;
}

bool isDecimal(std::wstring_view digits) {
    return std::all_of(digits.begin(), digits.end(),
                       [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
}

// Where the decimal reference at `position` ends, behind its ";", or `none` when there is none. The
// ";" is searched from `start`, where the last "&" was done with, and not from the reference on:
// one that stands between the two spoils the reference.
std::size_t endOfReference(std::wstring_view text, std::size_t position, std::size_t start) {
    std::size_t const digits = position + referenceStart.size();
    std::size_t const end = text.find(L';', start);
    bool const reference = text.substr(position).starts_with(referenceStart) && end != none &&
                           end >= digits && isDecimal(text.substr(digits, end - digits));
    return reference ? end + 1 : none;
}

CString escapeAmpersands(std::wstring_view text) {
    std::wstring escaped;
    std::size_t start = 0;
    for (std::size_t found = text.find(L'&'); found != none; found = text.find(L'&', start)) {
        std::size_t const end = endOfReference(text, found, start);
        std::size_t const next = end == none ? found + 1 : end;
        escaped += text.substr(start, next - start);
        escaped += end == none ? L"amp;" : L"";
        start = next;
    }
    return CString(std::wstring_view(escaped += text.substr(start)));
}

} // namespace

// Both work on a copy: when memory runs out in the middle, the text is as it was.

void WXPath::ReplaceXMLEntities(CString& text) {
    CString escaped = text;
    if (mayHoldReference(text)) {
        escaped = escapeAmpersands(text);
    } else {
        escaped.Replace(ampersand.character, ampersand.reference);
    }
    for (Escape const& escape : otherEscapes) {
        escaped.Replace(escape.character, escape.reference);
    }
    text = std::move(escaped);
}

void WXPath::UnReplaceXMLEntities(CString& text) {
    CString plain = text;
    plain.Replace(ampersand.reference, ampersand.character);
    for (Escape const& escape : otherEscapes) {
        plain.Replace(escape.reference, escape.character);
    }
    text = std::move(plain);
}
