#include <TibXml/WXPath.h>

#include <string_view>
#include <utility>
#include <vector>

#include <TibXml/tibutils/DataEncoding.h>
#include <xpath/xpath_stream.h>

namespace {

// Puts the tokens of a path together to its prefix and its steps.
class StepAssembler {
public:
    // Reads `tokens` from the first to the last. Called once.
    void assemble(TinyXPath::token_list& tokens);

    CString prefix;
    std::vector<XPathElement> steps;

private:
    void addOutsideBrackets(TinyXPath::token const& token);
    void addClause(TinyXPath::token_list& tokens);
    void addToName(CString const& text);

    CString decoded(TinyXPath::token const& token) { return decoder.Decode(token.text); }

    // One decoder for all tokens: the lexer works on bytes and may cut a letter in two.
    TibUtils::DataEncoding::Utf8Decoder decoder;
};

bool closesClause(TinyXPath::token const& token) {
    return token.text == "]" && token.code != TinyXPath::code_literal;
}

// The text of a token alone decides what it means for the path's shape, so that a quoted bracket or
// slash outside brackets counts like a bare one.
void StepAssembler::assemble(TinyXPath::token_list& tokens) {
    for (auto const* token = tokens.first(); token != nullptr; token = tokens.next()) {
        if (token->text == "[") {
            addClause(tokens);
        } else {
            addOutsideBrackets(*token);
        }
    }
}

void StepAssembler::addOutsideBrackets(TinyXPath::token const& token) {
    bool const slash = token.text == "/";
    if (steps.empty() && (slash || token.text == ".")) {
        prefix += decoded(token);
    } else if (slash) {
        steps.emplace_back();
    } else {
        addToName(decoded(token));
    }
}

void StepAssembler::addToName(CString const& text) {
    if (steps.empty()) {
        steps.emplace_back();
    }
    steps.back().name += text;
}

void StepAssembler::addClause(TinyXPath::token_list& tokens) {
    CString clause;
    for (auto const* token = tokens.next(); token != nullptr; token = tokens.next()) {
        if (closesClause(*token)) {
            break;
        }
        bool const literal = token->code == TinyXPath::code_literal;
        clause += literal ? L"'" + decoded(*token) + L"'" : decoded(*token);
    }
    if (steps.empty()) {
        steps.emplace_back();
    }
    steps.back().filterClauses.push_back(clause);
}

} // namespace

// Most paths are made from a string, passed to a query and dropped, so a path is taken apart only
// when a caller asks for a step or changes one. Moves must not need memory, so they share a text
// that is not taken apart yet and do not work on it.

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
    // A path that is only a prefix keeps its slashes.
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
