#include <TibXml/WXPath.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cwctype>
#include <string_view>
#include <utility>

// The part of the path object which reads and changes filter clauses.

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

// Takes the leading "../" and "./" off while `index` follows them back. False when they lead beyond
// the root.
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

// Where a clause goes which is given for one step.
struct Target {
    bool exists;
    std::uint64_t index;
    std::wstring_view clause;
};

// Only a comparison says what it is about; everything else is for the last step, as it is.
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

// On a copy, so that a lack of memory in the middle leaves no half of it behind.
void WXPath::Normalize() {
    WXPath normal(*this);
    for (std::uint64_t index = 0; index < normal.Steps().size(); ++index) {
        normal.NormalizeElement(index);
    }
    normal.InvalidateString();
    *this = std::move(normal);
}

// A clause about its own step is put back here and not added like the others: nothing may be added
// to the list which is being gone through.
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
