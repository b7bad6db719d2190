#include <TibXml/WXPath.h>

#include <TibXml/tibutils/DataEncoding.h>
#include <xpath/ParseToXPathElements.h>

#include "StepAssembler.h"

#include <string_view>
#include <utility>

// Most paths are made from a string, handed to a query and dropped, so nothing is taken apart
// before somebody asks for a step or changes one. All the moves must cope with that without needing
// memory: a text that is still to be taken apart is shared, not worked on.

WXPath::WXPath() noexcept = default;

WXPath::WXPath(wchar_t const* path) : WXPath(CString(path)) {}

WXPath::WXPath(CString path) noexcept
    : cachedString(std::move(path)),
      decomposition(Decomposition::pending) {}

WXPath::WXPath(CString const& prefix_, Elements::const_iterator first,
               Elements::const_iterator last)
    : prefix(prefix_),
      elements(first, last) {}

WXPath::WXPath(WXPath const& other) = default;

WXPath::WXPath(WXPath&& other) noexcept {
    *this = std::move(other);
}

WXPath& WXPath::operator=(WXPath const& other) {
    if (this != &other) {
        *this = WXPath(other);
    }
    return *this;
}

WXPath& WXPath::operator=(WXPath&& other) noexcept {
    cachedString = other.cachedString;
    prefix = other.prefix;
    decomposition = other.decomposition;
    other.InvalidateString();
    if (this != &other) {
        elements = std::move(other.elements);
        other.elements.clear();
        if (other.decomposition == Decomposition::pending) {
            other.decomposition = Decomposition::prefixIsPending;
        }
    }
    return *this;
}

WXPath::~WXPath() = default;

WXPath::operator wchar_t const*() const {
    return ToString().GetString();
}

WXPath::operator CString const&() const {
    return ToString();
}

CString const& WXPath::ToString() const {
    if (!cachedString) {
        RebuildString();
    }
    return *cachedString;
}

bool WXPath::IsEmpty() const {
    return Steps().empty();
}

WXPath WXPath::GetRoot() const {
    return IsEmpty() ? WXPath() : WXPath(Prefix(), Steps().begin(), Steps().begin() + 1);
}

WXPath WXPath::GetLeaf() const {
    return IsEmpty() ? WXPath() : WXPath(CString(), Steps().end() - 1, Steps().end());
}

WXPath WXPath::GetParentOfLeaf() const {
    return IsEmpty() ? WXPath() : WXPath(Prefix(), Steps().begin(), Steps().end() - 1);
}

WXPath WXPath::GetChildOfRoot() const {
    return IsEmpty() ? WXPath() : WXPath(CString(), Steps().begin() + 1, Steps().end());
}

void WXPath::RebuildString() const {
    CString text = Prefix();
    for (XPathElement const& step : Steps()) {
        text += step.name;
        for (CString const& clause : step.filterClauses) {
            text += L'[' + clause + L']';
        }
        text += L'/';
    }
    // A path of the prefix alone keeps its slashes.
    if (!Steps().empty()) {
        std::wstring_view const all = text;
        text = CString(all.substr(0, all.find_last_not_of(L'/') + 1));
    }
    cachedString = std::move(text);
}

void WXPath::InvalidateString() noexcept {
    if (decomposition != Decomposition::done && cachedString) {
        prefix = std::move(*cachedString);
    }
    cachedString.reset();
}

WXPath::Elements& WXPath::Steps() const {
    Decompose();
    return elements;
}

CString const& WXPath::Prefix() const {
    Decompose();
    return prefix;
}

void WXPath::Decompose() const {
    if (decomposition == Decomposition::done) {
        return;
    }
    ParseToXPathElements stream(
        TibUtils::DataEncoding::Utf8Encode(cachedString ? *cachedString : prefix));
    stream.lex();
    StepAssembler parts;
    parts.assemble(stream.tokens());
    if (decomposition == Decomposition::pending) {
        elements = std::move(parts.steps);
    }
    prefix = std::move(parts.prefix);
    decomposition = Decomposition::done;
}
