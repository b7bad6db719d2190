#include "ValueText.h"

#include <TibXml/platform/CLibrary.h>
#include <TibXml/platform/Variant.h>
#include <TibXml/platform/WideNumber.h>

#include <cwctype>

namespace tibxml::values {

namespace {

using engine::EngineString;
using engine::interfaceOf;
using engine::invoke;
using engine::textFrom;
using engine::valueFrom;

/// Takes the string out of a variant; what holds nothing is the null string.
EngineString takeString(_variant_t& value) {
    EngineString text;
    if (value.vt == VT_EMPTY) return text;
    if (value.vt != VT_BSTR) _com_issue_error(DISP_E_TYPEMISMATCH);
    *text.address() = value.Detach().bstrVal;
    return text;
}

/// Puts an attribute's exact value in the place of its text; without one the text stands.
void takeExactValue(WXmlNodePtr const& target, EngineString& text) {
    auto const attribute = interfaceOf<IXMLDOMAttribute>(target);
    if (!attribute) return;
    _variant_t value;
    invoke(attribute, &IXMLDOMAttribute::get_value, &value);
    if (value.vt != VT_NULL) text = takeString(value);
}

/// Reads numbers and the characters between them, one after the other.
class Scanner {
public:
    explicit Scanner(std::wstring_view text) noexcept : at_{text.data()} {}

    /// Steps over a character if it comes next.
    bool take(wchar_t character) noexcept {
        if (*at_ != character) return false;
        ++at_;
        return true;
    }

    void skipSpace() noexcept {
        while (std::iswspace(static_cast<std::wint_t>(*at_)) != 0)
            ++at_;
    }

    /// A number, with white space before it; false when there is none.
    bool takeNumber(LONG& number) noexcept {
        wchar_t const* end = nullptr;
        number = platform::parseInt32(at_, &end);
        bool const found = end != at_;
        at_ = end;
        return found;
    }

    /// A comma and a number, with white space before both.
    bool takeNext(LONG& number) noexcept {
        skipSpace();
        return take(L',') && takeNumber(number);
    }

private:
    wchar_t const* at_;
};

/// An integer counts only when it is the whole text.
template <class Integer>
TibUtils::optional<Integer> whole(std::wstring_view text, Integer number,
                                  wchar_t const* end) noexcept {
    if (text.empty() || end != text.data() + text.size()) return {};
    return number;
}

struct Pair {
    LONG first;
    LONG second;
};

/// "(first,second)", with nothing else right before either bracket; what follows does not count.
TibUtils::optional<Pair> parsePair(std::wstring_view text) noexcept {
    Scanner scanner{text};
    Pair pair{};
    bool const found = scanner.take(L'(') && scanner.takeNumber(pair.first) &&
                       scanner.takeNext(pair.second) && scanner.take(L')');
    if (!found) return {};
    return pair;
}

} // namespace

EngineString textOf(WXmlNodePtr const& target) {
    EngineString text = textFrom(target, &IXMLDOMNode::get_text);
    DOMNodeType const type = valueFrom(target, &IXMLDOMNode::get_nodeType);
    if (type == NODE_ATTRIBUTE) takeExactValue(target, text);
    return text;
}

void setTextOf(WXmlNodePtr const& target, EngineString const& text) {
    invoke(target, &IXMLDOMNode::put_text, text.get());
}

TibUtils::optional<bool> parseBool(std::wstring_view text) noexcept {
    if (text == L"true") return true;
    if (text == L"false") return false;
    return {};
}

TibUtils::optional<int> parseInt(std::wstring_view text) noexcept {
    wchar_t const* end = nullptr;
    int const number = platform::parseInt32(text.data(), &end);
    return whole(text, number, end);
}

TibUtils::optional<__int64> parseInt64(std::wstring_view text) noexcept {
    wchar_t const* end = nullptr;
    __int64 const number = platform::parseInt64(text.data(), &end);
    return whole(text, number, end);
}

TibUtils::optional<double> parseDouble(std::wstring_view text) noexcept {
    double const number = _wtof(text.data());
    // The conversion gives zero for what is not a number, too: a "0" in front shows that it is one.
    if (number == 0.0 && text.substr(0, 1) != L"0") return {};
    return number;
}

TibUtils::optional<CPoint> parsePoint(std::wstring_view text) noexcept {
    auto const pair = parsePair(text);
    if (!pair) return {};
    return CPoint{pair->first, pair->second};
}

TibUtils::optional<CSize> parseSize(std::wstring_view text) noexcept {
    if (text.substr(0, 1) == L"(") {
        auto const pair = parsePair(text);
        if (!pair) return {};
        return CSize{pair->first, pair->second};
    }
    LONG both = 0;
    if (!Scanner{text}.takeNumber(both)) return {};
    return CSize{both, both};
}

TibUtils::optional<CRect> parseRect(std::wstring_view text) noexcept {
    Scanner scanner{text};
    CRect rect;
    if (!scanner.takeNumber(rect.left)) return {};
    scanner.skipSpace();
    if (!scanner.take(L',')) return CRect{rect.left, rect.left, rect.left, rect.left};
    bool const found = scanner.takeNumber(rect.top) && scanner.takeNext(rect.right) &&
                       scanner.takeNext(rect.bottom);
    if (!found) return {};
    return rect;
}

} // namespace tibxml::values
