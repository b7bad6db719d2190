#include "StepAssembler.h"

#include <xpath/lexical_code.h>

namespace {

bool closesClause(TinyXPath::token const& token) {
    return token.text == "]" && token.code != TinyXPath::code_literal;
}

} // namespace

// What a token is for the path's shape is told by its text alone, so that a quoted bracket or slash
// outside of brackets counts like a bare one.
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
