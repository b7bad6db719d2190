#include "ExpressionGenerator.h"

namespace tibxml::query::test {

namespace {

constexpr int deepest = 3;

} // namespace

std::string ExpressionGenerator::nodes(bool fromAttribute, int depth) {
    int const choice = pick(20);
    if (choice == 0 && depth < deepest)
        return nodes(fromAttribute, depth + 1) + " | " + nodes(fromAttribute, depth + 1);
    if (choice <= 3 && depth < deepest) return filter(fromAttribute, depth);
    return path(fromAttribute, depth);
}

std::string ExpressionGenerator::namespaces(bool fromAttribute) {
    constexpr char const* back[] = {"/..",
                                    "/parent::*",
                                    "/parent::a",
                                    "/ancestor::*",
                                    "/ancestor::node()",
                                    "/../@*",
                                    "/../*",
                                    "/.",
                                    "/ancestor::*[1]",
                                    "/../namespace::p",
                                    "/@*",
                                    "/*",
                                    "/following-sibling::*"};
    constexpr char const* filters[] = {"[namespace::p]",
                                       "[namespace::*='urn:q']",
                                       "[count(namespace::*)>3]",
                                       "[count(namespace::*)=count(*)]",
                                       "[namespace::longer/..]",
                                       "[string(namespace::p)='urn:q']",
                                       "[not(namespace::s)]",
                                       "[namespace::q=../namespace::q]",
                                       "[namespace::*[name()=''][.!='urn:p']]"};
    switch (pick(6)) {
    case 0: return nodes(fromAttribute, 1) + '/' + namespaceStep();
    case 1: return "//" + namespaceStep() + oneOf(back);
    case 2: return "//*" + oneOf(filters) + '/' + namespaceStep();
    case 3: return "//*" + oneOf(filters);
    case 4: return nodes(fromAttribute, 1) + " | //" + namespaceStep();
    default: return "//*/" + namespaceStep() + (chance(50) ? oneOf(back) : "");
    }
}

// The peer finds all namespaces by `p:*`.
std::string ExpressionGenerator::namespaceStep() {
    constexpr char const* tests[] = {"*", "node()", "p", "q", "xml", "longer", "zz", "text()"};
    constexpr char const* filters[] = {"[.='urn:p']",
                                       "[name()='p']",
                                       "[local-name()='q']",
                                       "[namespace-uri()='']",
                                       "[string-length()>6]",
                                       "[starts-with(name(), 'l')]",
                                       "[..]",
                                       "[../@id]",
                                       "[parent::a]",
                                       "[ancestor::p:a]",
                                       "[.!=../namespace::p]",
                                       "[not(../*)]",
                                       "[@*]"};
    std::string const step = "namespace::" + oneOf(tests);
    return chance(40) ? step + oneOf(filters) : step;
}

std::string ExpressionGenerator::path(bool fromAttribute, int depth) {
    bool atAttribute = fromAttribute;
    std::string result;
    int const start = pick(8);
    if (start == 0 && chance(10)) return "/";
    if (start <= 3) {
        result = start == 0 ? "/" : "//";
        atAttribute = false;
    }
    for (int steps = 1 + pick(3); steps > 0; --steps) {
        result += step(atAttribute, depth);
        if (steps > 1) result += separator(atAttribute);
    }
    return result;
}

std::string ExpressionGenerator::filter(bool fromAttribute, int depth) {
    std::string result = '(' + nodes(fromAttribute, depth + 1) + ')';
    bool atAttribute = true; // the nodes may be anything
    if (chance(70)) result += '[' + predicate(true, depth + 1) + ']';
    if (chance(40)) result += '/' + step(atAttribute, depth);
    return result;
}

std::string ExpressionGenerator::separator(bool atAttribute) {
    return !atAttribute && chance(25) ? "//" : "/";
}

std::string ExpressionGenerator::step(bool& atAttribute, int depth) {
    if (chance(6)) return ".";
    if (chance(6)) {
        atAttribute = false;
        return "..";
    }
    bool attributes = false;
    std::string result = axis(atAttribute, attributes);
    result += nodeTest(attributes);
    return result + predicates(atAttribute, depth);
}

std::string ExpressionGenerator::axis(bool& atAttribute, bool& attributes) {
    constexpr char const* staying[] = {"self::", "ancestor-or-self::"};
    constexpr char const* leaving[] = {"child::",    "descendant::",        "parent::",
                                       "ancestor::", "following-sibling::", "preceding-sibling::"};
    constexpr char const* elsewhere[] = {"following::", "preceding::", "descendant-or-self::"};
    int const choice = pick(20);
    if (choice < 4) {
        attributes = true;
        atAttribute = true;
        return chance(80) ? "@" : "attribute::";
    }
    if (choice < 7) return oneOf(staying);
    bool const mayGoElsewhere = !atAttribute;
    atAttribute = false;
    if (choice < 10 && mayGoElsewhere) return oneOf(elsewhere);
    return choice < 14 ? oneOf(leaving) : "";
}

std::string ExpressionGenerator::nodeTest(bool attributes) {
    constexpr char const* attributeTests[] = {"id", "n", "k", "p:k", "*", "node()", "p:*", "zz"};
    constexpr char const* tests[] = {"a",      "b",    "c",         "d",
                                     "e",      "root", "p:a",       "q:*",
                                     "*",      "*",    "node()",    "text()",
                                     "node()", "zz",   "comment()", "processing-instruction()",
                                     "a",      "b",    "p:*",       "processing-instruction('t')"};
    if (chance(35)) return chance(50) ? "*" : "node()"; // names alone seldom find anything
    return attributes ? oneOf(attributeTests) : oneOf(tests);
}

std::string ExpressionGenerator::predicates(bool fromAttribute, int depth) {
    std::string result;
    while (depth < deepest && chance(22))
        result += '[' + predicate(fromAttribute, depth + 1) + ']';
    return result;
}

std::string ExpressionGenerator::predicate(bool fromAttribute, int depth) {
    switch (pick(8)) {
    case 0: return std::to_string(1 + pick(3));
    case 1: return "last()";
    case 2: return number(fromAttribute, depth + 1);
    case 3:
        return "position()" + oneOf({"=", "!=", "<", "<=", ">", ">="}) +
               wholeNumber(fromAttribute, depth + 1);
    case 4: return "@" + oneOf({"id", "n", "k"}) + "='" + oneOf({"x", "1", "2", "10"}) + '\'';
    default: return boolean(fromAttribute, depth + 1);
    }
}

std::string ExpressionGenerator::boolean(bool fromAttribute, int depth) {
    if (depth >= deepest) return nodeTest(false);
    switch (pick(10)) {
    case 0: return boolean(fromAttribute, depth + 1) + " and " + boolean(fromAttribute, depth + 1);
    case 1: return boolean(fromAttribute, depth + 1) + " or " + boolean(fromAttribute, depth + 1);
    case 2: return "not(" + boolean(fromAttribute, depth + 1) + ')';
    case 3:
    case 4: return nodes(fromAttribute, depth + 1);
    case 5: return call(fromAttribute, depth);
    default: return comparison(fromAttribute, depth);
    }
}

std::string ExpressionGenerator::call(bool fromAttribute, int depth) {
    switch (pick(6)) {
    case 0: return "lang('" + oneOf({"en", "de", "EN-gb", "fr"}) + "')";
    case 1: return "true()";
    case 2: return "boolean(" + string(fromAttribute, depth + 1) + ')';
    case 3: return "id('x')";
    case 4:
        return "starts-with(" + string(fromAttribute, depth + 1) + ", " +
               string(fromAttribute, depth + 1) + ')';
    default:
        return "contains(" + string(fromAttribute, depth + 1) + ", " +
               string(fromAttribute, depth + 1) + ')';
    }
}

std::string ExpressionGenerator::comparison(bool fromAttribute, int depth) {
    auto const operand = [&] {
        switch (pick(7)) {
        case 0: return number(fromAttribute, depth + 1);
        case 1: return string(fromAttribute, depth + 1);
        case 2: return std::string{chance(50) ? "true()" : "false()"};
        default: return nodes(fromAttribute, depth + 1);
        }
    };
    std::string const left = operand();
    return '(' + left + ')' + oneOf({" = ", " != ", " < ", " <= ", " > ", " >= "}) + '(' +
           operand() + ')';
}

std::string ExpressionGenerator::number(bool fromAttribute, int depth) {
    if (depth >= deepest) return wholeNumber(fromAttribute, depth);
    switch (pick(9)) {
    case 0:
        return number(fromAttribute, depth + 1) + oneOf({" + ", " - ", " * ", " div ", " mod "}) +
               number(fromAttribute, depth + 1);
    case 1: return "-(" + number(fromAttribute, depth + 1) + ')';
    case 2: return "round(" + number(fromAttribute, depth + 1) + " div 2)";
    case 3: return "floor(" + number(fromAttribute, depth + 1) + " div 2)";
    case 4: return "ceiling(" + number(fromAttribute, depth + 1) + " div 2)";
    case 5: return "sum(" + nodes(fromAttribute, depth + 1) + ')';
    case 6: return "number(" + string(fromAttribute, depth + 1) + ')';
    case 7: return "2.5";
    default: return wholeNumber(fromAttribute, depth);
    }
}

std::string ExpressionGenerator::wholeNumber(bool fromAttribute, int depth) {
    switch (depth < deepest ? pick(6) : 0) {
    case 1: return "count(" + nodes(fromAttribute, depth + 1) + ')';
    case 2: return "string-length(" + string(fromAttribute, depth + 1) + ')';
    case 3: return "position()";
    case 4: return "last()";
    default: return std::to_string(pick(5));
    }
}

std::string ExpressionGenerator::string(bool fromAttribute, int depth) {
    constexpr char const* literals[] = {"'x'", "'y'", "''", "'xy z'", "\"2\"", "' '"};
    if (depth >= deepest) return oneOf(literals);
    auto const text = [&] { return string(fromAttribute, depth + 1); };
    std::string const of = chance(30) ? std::string{} : nodes(fromAttribute, depth + 1);
    switch (pick(14)) {
    case 0: return "string(" + of + ')';
    case 1: return "name(" + of + ')';
    case 2: return "local-name(" + of + ')';
    case 3: return "namespace-uri(" + of + ')';
    case 4:
        return "concat(" + text() + ", " + text() + ", " + wholeNumber(fromAttribute, depth) + ')';
    case 5: return "substring-before(" + text() + ", " + text() + ')';
    case 6: return "substring-after(" + text() + ", " + text() + ')';
    case 7: return "substring(" + text() + ", " + wholeNumber(fromAttribute, depth + 1) + ')';
    case 8: return "substring(" + text() + ", 1.5, " + number(fromAttribute, depth + 1) + ')';
    case 9: return "normalize-space(" + text() + ')';
    case 10: return "translate(" + text() + ", 'xy', 'Z')";
    case 11: return "string(" + wholeNumber(fromAttribute, depth + 1) + ')';
    default: return oneOf(literals);
    }
}

} // namespace tibxml::query::test
