#pragma once

#include <TibXml/WXPath.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

// What a path consists of, found out through its public operations alone.

struct Step {
    std::wstring name;
    std::vector<std::wstring> clauses;

    bool operator==(Step const&) const = default;
};

using Steps = std::vector<Step>;

inline std::wstring wide(CString const& text) {
    return std::wstring(text.view());
}

inline std::wstring stringOf(WXPath const& path) {
    return wide(path.ToString());
}

// Joins all that is known of a path to one text for comparing and printing.
inline std::string printable(std::wstring const& text) {
    std::string narrow;
    for (wchar_t const character : text) {
        bool const plain = character >= 0x20 && character < 0x7F;
        narrow += plain ? std::string(1, static_cast<char>(character))
                        : "{" + std::to_string(static_cast<std::uint32_t>(character)) + "}";
    }
    return narrow;
}

inline std::vector<std::wstring> clausesOf(WXPath const& path) {
    std::vector<std::wstring> clauses;
    CString clause;
    for (int index = 0; path.GetFilterClause(index, clause); ++index) {
        clauses.push_back(wide(clause));
    }
    return clauses;
}

inline std::wstring nameOfLeaf(WXPath const& path) {
    WXPath leaf = path.GetLeaf();
    CString clause;
    while (leaf.GetFilterClause(0, clause)) {
        leaf.RemoveFilterClause(clause);
    }
    return stringOf(leaf);
}

inline Steps stepsOf(WXPath path) {
    Steps steps;
    for (; !path.IsEmpty(); path = path.GetChildOfRoot()) {
        WXPath const root = path.GetRoot();
        steps.push_back({nameOfLeaf(root), clausesOf(root)});
    }
    return steps;
}

inline std::wstring prefixOf(WXPath path) {
    while (!path.IsEmpty()) {
        path = path.GetParentOfLeaf();
    }
    // Drops the string, so that the next one is made of the prefix.
    path.Normalize();
    return stringOf(path);
}

inline std::wstring rebuilt(WXPath path) {
    path.RemoveFilterClause(L"no clause is called so");
    if (path.IsEmpty()) {
        path.Normalize();
    }
    return stringOf(path);
}

inline std::ostream& operator<<(std::ostream& out, Step const& step) {
    out << '{' << printable(step.name);
    for (std::wstring const& clause : step.clauses) {
        out << " [" << printable(clause) << ']';
    }
    return out << '}';
}
