#pragma once

#include <TibXml/WXPath.h>
#include <TibXml/tibutils/DataEncoding.h>
#include <xpath/token_list.h>

#include <vector>

// Puts the tokens of a path together again, to its prefix and its steps.
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
