#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

#include <cwctype>
#include <optional>
#include <random>
#include <string_view>
#include <utility>

namespace {

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

// Strings of everything that means something in a path, well-formed or not.
std::wstring anyText(Random& random, std::wstring_view signs) {
    std::wstring text;
    for (std::size_t length = below(random, 16); length > 0; --length) {
        text += signs[below(random, signs.size())];
    }
    return text;
}

constexpr std::wstring_view allSigns = L"//..[[]]''\"\"ab1=@*: \u00E9\u05D0\u6771\U0001F600";
constexpr std::wstring_view signsWithoutQuotes = L"//..[[]]ab1=@*: \u00E9\u05D0\u6771\U0001F600";

// A second way to take a path apart, by characters and without tokens.
class Model {
public:
    explicit Model(std::wstring_view text) : rest(text) {
        while (const auto piece = next()) {
            take(piece->first);
        }
    }

    std::wstring prefix;
    Steps steps;

private:
    using Piece = std::pair<std::wstring, bool>;

    // A literal or one character; a number which begins with a dot counts as its digit.
    std::optional<Piece> next() {
        if (rest.empty()) {
            return std::nullopt;
        }
        wchar_t const first = rest.front();
        if (first == L'\'' || first == L'"') {
            return literal(first);
        }
        std::size_t const length = beginsNumber() ? 2 : 1;
        Piece piece(rest.substr(0, length), false);
        rest.remove_prefix(length);
        return piece;
    }

    bool beginsNumber() const {
        return rest.size() > 1 && rest[0] == L'.' && rest[1] >= L'0' && rest[1] <= L'9';
    }

    std::optional<Piece> literal(wchar_t quote) {
        std::size_t const end = rest.find(quote, 1);
        if (end == std::wstring_view::npos) {
            rest = {};
            return std::nullopt;
        }
        Piece piece(rest.substr(1, end - 1), true);
        rest.remove_prefix(end + 1);
        return piece;
    }

    Step& last() {
        if (steps.empty()) {
            steps.emplace_back();
        }
        return steps.back();
    }

    void take(std::wstring const& text) {
        if (text == L"[") {
            takeClause();
        } else if (steps.empty() && (text == L"/" || text == L".")) {
            prefix += text;
        } else if (text == L"/") {
            steps.emplace_back();
        } else {
            last().name += text;
        }
    }

    void takeClause() {
        std::wstring clause;
        for (auto piece = next(); piece && *piece != Piece(L"]", false); piece = next()) {
            clause += piece->second ? L"'" + piece->first + L"'" : piece->first;
        }
        last().clauses.push_back(clause);
    }

    std::wstring_view rest;
};

TEST(PathProperty, StepsAreThoseOfTheModel) {
    Random random(1);
    for (int round = 0; round < 20000; ++round) {
        std::wstring const text = anyText(random, allSigns);
        Model const model(text);
        WXPath const path(text.c_str());
        ASSERT_EQ(prefixOf(path), model.prefix) << printable(text);
        // What follows a "/" at the end of a name cannot be seen through strings.
        Steps const steps = stepsOf(path);
        ASSERT_EQ(steps.size(), model.steps.size()) << printable(text);
        for (std::size_t i = 0; i < steps.size(); ++i) {
            std::wstring name = model.steps[i].name;
            name.erase(name.find_last_not_of(L'/') + 1);
            ASSERT_EQ(printable(steps[i].name), printable(name)) << printable(text);
            ASSERT_EQ(steps[i].clauses, model.steps[i].clauses) << printable(text);
        }
    }
}

// One operation that changes a path or reads it; the same `choice` is the same operation.
std::wstring operate(WXPath& path, std::size_t choice, std::wstring const& argument) {
    CString clause;
    switch (choice) {
    case 0: return path.AddFilterClause(argument.c_str()) ? L"added" : L"refused";
    case 1: path.RemoveFilterClause(argument.c_str()); return L"";
    case 2: path.Normalize(); return L"";
    case 3: path = path.GetParentOfLeaf(); return L"";
    case 4: path = path.GetChildOfRoot(); return L"";
    case 5: return path.GetFilterClause(0, clause) ? wide(clause) : L"none";
    case 6: path = WXPath(path); return L"";
    case 7: return stringOf(WXPath(std::move(path)));
    case 8: return stringOf(path.GetRoot()) + L"|" + stringOf(path.GetLeaf());
    default: return stringOf(path);
    }
}

std::wstring const clauseArguments[] = {L"1",   L"a=1",  L"../a=1", L"./a=1", L"../../a=1",
                                        L"A=1", L"../b", L"./b",    L"",      L"./../a='/'"};

TEST(PathProperty, WhenAPathIsTakenApartCannotBeSeen) {
    Random random(2);
    for (int round = 0; round < 10000; ++round) {
        std::wstring const text = anyText(random, allSigns);
        WXPath lazy(text.c_str());
        WXPath eager(text.c_str());
        for (int step = 0; step < 6; ++step) {
            ASSERT_EQ(eager.IsEmpty(), eager.GetLeaf().IsEmpty());
            std::size_t const choice = below(random, 10);
            std::wstring const argument =
                clauseArguments[below(random, std::size(clauseArguments))];
            ASSERT_EQ(operate(lazy, choice, argument), operate(eager, choice, argument))
                << printable(text) << " at " << choice << ' ' << printable(argument);
        }
        ASSERT_EQ(stringOf(lazy), stringOf(eager)) << printable(text);
        ASSERT_EQ(prefixOf(lazy), prefixOf(eager)) << printable(text);
        ASSERT_EQ(stepsOf(lazy), stepsOf(eager)) << printable(text);
    }
}

// Quotes are left out: a literal outside of brackets loses its quotes, so that what was in it is
// read anew the second time.
TEST(PathProperty, AStringPutTogetherIsPutTogetherToItself) {
    Random random(3);
    for (int round = 0; round < 20000; ++round) {
        std::wstring const text = anyText(random, signsWithoutQuotes);
        std::wstring const once = rebuilt(WXPath(text.c_str()));
        ASSERT_EQ(rebuilt(WXPath(once.c_str())), once) << printable(text);
    }
}

TEST(PathProperty, WellFormedPathsAreTakenApartAlikeTheSecondTime) {
    Random random(4);
    std::wstring const names[] = {L"a", L"child::b", L"@c",      L"*",
                                  L"",  L"..",       L"d\u00E9", L"text()"};
    std::wstring const clauses[] = {L"1", L"@x='1'", L"@x=\"]/[\"", L"a/b", L". = ''", L"last()"};
    for (int round = 0; round < 5000; ++round) {
        std::wstring text = below(random, 2) == 0 ? L"/" : L"";
        text += L"first";
        for (std::size_t step = below(random, 5); step > 0; --step) {
            text += L"/" + names[below(random, std::size(names))];
            for (std::size_t clause = below(random, 3); clause > 0; --clause) {
                text += L"[" + clauses[below(random, std::size(clauses))] + L"]";
            }
        }
        text += L"/last";
        WXPath const path(text.c_str());
        WXPath const again(rebuilt(path).c_str());
        ASSERT_EQ(prefixOf(again), prefixOf(path)) << printable(text);
        ASSERT_EQ(stepsOf(again), stepsOf(path)) << printable(text);
    }
}

TEST(PathProperty, EscapedTextComesBackUnescaped) {
    Random random(5);
    for (int round = 0; round < 5000; ++round) {
        std::wstring const text = anyText(random, L"&<>'\"ab \u00E9");
        CString changed = text.c_str();
        WXPath::ReplaceXMLEntities(changed);
        ASSERT_EQ(changed.Find(L'<'), -1);
        WXPath::UnReplaceXMLEntities(changed);
        ASSERT_EQ(wide(changed), text);
    }
}

} // namespace
