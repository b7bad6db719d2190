#include <TibXml/WXPath.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cwctype>
#include <string>
#include <string_view>
#include <utility>

// The part of the path object that changes text: filter clauses on the steps, and the special
// characters of XML in a string.

namespace {

constexpr std::wstring_view parentStep = L"../";
constexpr std::wstring_view ownStep = L"./";

bool isRelative(std::wstring_view clause) {
    return clause.starts_with(parentStep) || clause.starts_with(ownStep);
}

std::wstring_view withoutOwnSteps(std::wstring_view clause) {
    while (clause.starts_with(ownStep)) {
        clause.remove_prefix(ownStep.size());
    }
    return clause;
}

bool isComparison(std::wstring_view clause) {
    return clause.find(L'=') != std::wstring_view::npos;
}

bool equalButForCase(std::wstring_view left, std::wstring_view right) {
    auto const lower = [](wchar_t letter) {
        return std::towlower(static_cast<std::wint_t>(letter));
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](wchar_t a, wchar_t b) { return a == b || lower(a) == lower(b); });
}

// Removes the leading "../" and "./" while `index` follows them back. Returns false when they lead
// beyond the root.
bool followBack(std::wstring_view& clause, std::uint64_t& index) {
    for (clause = withoutOwnSteps(clause); clause.starts_with(parentStep);
         clause = withoutOwnSteps(clause)) {
        if (index == 0) {
            return false;
        }
        --index;
        clause.remove_prefix(parentStep.size());
    }
    return true;
}

// The step that a clause belongs to, and the clause without the steps that led there.
struct Target {
    bool exists;
    std::uint64_t index;
    std::wstring_view clause;
};

// Only a comparison names its step; everything else belongs to the last step, as it is.
Target targetOf(std::wstring_view clause, std::uint64_t index, std::uint64_t lastIndex) {
    if (!isComparison(clause)) {
        return {true, lastIndex, clause};
    }
    bool const exists = followBack(clause, index);
    return {exists, index, clause};
}

} // namespace

bool WXPath::GetFilterClause(std::int32_t index, CString& clause) const {
    clause.Empty();
    if (IsEmpty() || index < 0) {
        return false;
    }
    auto const& clauses = Steps().back().filterClauses;
    auto const position = static_cast<std::size_t>(index);
    if (position >= clauses.size()) {
        return false;
    }
    clause = clauses[position];
    return true;
}

bool WXPath::AddFilterClause(CString clause) {
    return AddFilterClause(static_cast<std::uint64_t>(Steps().size()) - 1, std::move(clause));
}

bool WXPath::AddFilterClause(std::uint64_t elementIndex, CString clause) {
    if (IsEmpty()) {
        return false;
    }
    Target const target = targetOf(clause, elementIndex, Steps().size() - 1);
    if (!target.exists) {
        return false;
    }
    clause = clause.Right(static_cast<int>(target.clause.size()));
    Steps()[target.index].filterClauses.push_back(std::move(clause));
    InvalidateString();
    return true;
}

void WXPath::RemoveFilterClause(CString const& clause) {
    if (IsEmpty()) {
        return;
    }
    auto& clauses = Steps().back().filterClauses;
    auto const found =
        std::find_if(clauses.begin(), clauses.end(),
                     [&clause](CString const& other) { return equalButForCase(other, clause); });
    if (found != clauses.end()) {
        clauses.erase(found);
    }
    InvalidateString();
}

// Works on a copy, so that running out of memory in the middle changes nothing.
void WXPath::Normalize() {
    WXPath normal(*this);
    for (std::uint64_t index = 0; index < normal.Steps().size(); ++index) {
        normal.NormalizeElement(index);
    }
    normal.InvalidateString();
    *this = std::move(normal);
}

// A clause about its own step is put back here and not added like the others: the loop must not
// change the list that it walks.
void WXPath::NormalizeElement(std::uint64_t elementIndex) {
    std::vector<CString> kept;
    for (CString const& clause : std::exchange(Steps()[elementIndex].filterClauses, {})) {
        Target const target = targetOf(clause, elementIndex, Steps().size() - 1);
        if (isRelative(clause) && target.exists && target.index == elementIndex) {
            kept.emplace_back(withoutOwnSteps(target.clause));
        } else if (!isRelative(clause) || !AddFilterClause(elementIndex, clause)) {
            kept.push_back(clause);
        }
    }
    Steps()[elementIndex].filterClauses = std::move(kept);
}

namespace {

constexpr auto none = std::wstring_view::npos;
constexpr std::wstring_view referenceStart = L"&#";

// A character of XML and the reference that stands for it.
struct EntityEscape {
    wchar_t const* character;
    wchar_t const* reference;
};

// All but the ampersand, which depends on what follows it.
constexpr EntityEscape otherEscapes[] = {
    {L"<", L"&lt;"}, {L">", L"&gt;"}, {L"'", L"&apos;"}, {L"\"", L"&quot;"}};

bool isDecimal(std::wstring_view digits) {
    return std::all_of(digits.begin(), digits.end(),
                       [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
}

// Whether `text` is the decimal reference "&#…;" up to, but without, its ";".
bool isReference(std::wstring_view text) {
    return text.starts_with(referenceStart) && isDecimal(text.substr(referenceStart.size()));
}

// The search for the ";" of a reference starts where the last "&" ended, and not at the reference:
// a ";" between the two spoils the reference. It starts again only after that ";" was passed, so
// that a text full of "&" takes no longer than any other.
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
    for (EntityEscape const& escape : otherEscapes) {
        escaped.Replace(escape.character, escape.reference);
    }
    text = std::move(escaped);
}

void WXPath::UnReplaceXMLEntities(CString& text) {
    CString plain = text;
    plain.Replace(L"&amp;", L"&");
    for (EntityEscape const& escape : otherEscapes) {
        plain.Replace(escape.reference, escape.character);
    }
    text = std::move(plain);
}
