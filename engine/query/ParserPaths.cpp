#include <iterator>
#include <utility>

#include "Parser.h"
#include "Path.h"

namespace tibxml::query {

namespace {

struct AxisName {
    std::wstring_view name;
    Axis axis;
};

constexpr AxisName axisNames[] = {
    {L"ancestor", Axis::ancestor},
    {L"ancestor-or-self", Axis::ancestorOrSelf},
    {L"attribute", Axis::attribute},
    {L"child", Axis::child},
    {L"descendant", Axis::descendant},
    {L"descendant-or-self", Axis::descendantOrSelf},
    {L"following", Axis::following},
    {L"following-sibling", Axis::followingSibling},
    {L"namespace", Axis::namespaces},
    {L"parent", Axis::parent},
    {L"preceding", Axis::preceding},
    {L"preceding-sibling", Axis::precedingSibling},
    {L"self", Axis::self},
};

struct NodeTypeName {
    std::wstring_view name;
    NodeTest::Kind kind;
};

constexpr NodeTypeName nodeTypes[] = {
    {L"comment", NodeTest::Kind::comment},
    {L"node", NodeTest::Kind::node},
    {L"processing-instruction", NodeTest::Kind::processingInstruction},
    {L"text", NodeTest::Kind::text},
};

template <class Table>
auto const* findNamed(Table const& table, std::wstring_view name) noexcept {
    for (auto const& entry : table)
        if (entry.name == name) return &entry;
    return static_cast<decltype(std::begin(table))>(nullptr);
}

Step plainStep(Axis axis) {
    Step step;
    step.axis = axis;
    return step;
}

// Of the axis's own kind: attributes, namespaces, or elements on all other axes. The name of a
// namespace is its prefix, in no namespace.
NodeTest::Kind anyOf(Axis axis) noexcept {
    using Kind = NodeTest::Kind;
    if (axis == Axis::namespaces) return Kind::node;
    return axis == Axis::attribute ? Kind::attribute : Kind::element;
}

NodeTest::Kind anyInNamespace(Axis axis) noexcept {
    using Kind = NodeTest::Kind;
    if (axis == Axis::namespaces) return Kind::nothing;
    return axis == Axis::attribute ? Kind::attributeInNamespace : Kind::elementInNamespace;
}

} // namespace

bool isNodeType(Token const& token) noexcept {
    return token.kind == TokenKind::function && token.prefix.empty() &&
           findNamed(nodeTypes, token.text) != nullptr;
}

ExpressionPtr Parser::parsePath() {
    return startsPrimary() ? parseFilter() : parseLocationPath();
}

// A primary expression with the predicates and steps that follow it, if any.
ExpressionPtr Parser::parseFilter() {
    std::size_t const column = token_.column;
    ExpressionPtr start = parsePrimary();
    Predicates predicates;
    std::vector<Step> steps;
    bool const continues =
        at(TokenKind::leftBracket) || at(TokenKind::slash) || at(TokenKind::slashSlash);
    if (!continues) return start;
    if (start->type() != ValueType::nodes) {
        throw QueryError{column,
                         std::string{"a path starts at nodes, not at "} + nameOf(start->type())};
    }
    parsePredicates(predicates);
    parseTail(steps);
    return std::make_unique<Filter>(asNodes(std::move(start)), std::move(predicates),
                                    std::move(steps));
}

ExpressionPtr Parser::parseLocationPath() {
    std::vector<Step> steps;
    Origin const origin =
        at(TokenKind::slash) || at(TokenKind::slashSlash) ? Origin::root : Origin::context;
    if (skip(TokenKind::slash)) {
        if (startsStep()) parseSteps(steps);
    } else if (skip(TokenKind::slashSlash)) {
        steps.push_back(plainStep(Axis::descendantOrSelf));
        parseSteps(steps);
    } else {
        parseSteps(steps);
    }
    return std::make_unique<Path>(origin, std::move(steps));
}

bool Parser::startsStep() const noexcept {
    switch (token_.kind) {
    case TokenKind::name:
    case TokenKind::nameStar:
    case TokenKind::star:
    case TokenKind::function:
    case TokenKind::axis:
    case TokenKind::dot:
    case TokenKind::dotDot:
    case TokenKind::at: return true;
    default: return false;
    }
}

void Parser::parseSteps(std::vector<Step>& steps) {
    steps.push_back(parseStep());
    parseTail(steps);
}

// `/step`, `//step`, as many as there are.
void Parser::parseTail(std::vector<Step>& steps) {
    while (at(TokenKind::slash) || at(TokenKind::slashSlash)) {
        if (at(TokenKind::slashSlash)) steps.push_back(plainStep(Axis::descendantOrSelf));
        advance();
        steps.push_back(parseStep());
    }
}

Step Parser::parseStep() {
    if (skip(TokenKind::dot)) return plainStep(Axis::self);
    if (skip(TokenKind::dotDot)) return plainStep(Axis::parent);
    Step step;
    step.axis = parseAxis();
    step.test = parseNodeTest(step.axis);
    parsePredicates(step.predicates);
    return step;
}

Axis Parser::parseAxis() {
    if (skip(TokenKind::at)) return Axis::attribute;
    if (!at(TokenKind::axis)) return Axis::child;
    auto const* found = findNamed(axisNames, token_.text);
    if (found == nullptr) fail("unknown axis " + quoted(token_.text));
    advance();
    return found->axis;
}

void Parser::parsePredicates(Predicates& predicates) {
    while (skip(TokenKind::leftBracket)) {
        predicates.add(parseExpression());
        expect(TokenKind::rightBracket, "']'");
    }
}

NodeTest Parser::parseNodeTest(Axis axis) {
    switch (token_.kind) {
    case TokenKind::star: advance(); return {anyOf(axis), 0, {}};
    case TokenKind::name:
    case TokenKind::nameStar: return parseNameTest(axis);
    case TokenKind::function:
        if (isNodeType(token_)) return parseNodeType();
        fail("a function call is not a step");
    default: failExpecting("a step");
    }
}

NodeTest Parser::parseNodeType() {
    NodeTest test{findNamed(nodeTypes, token_.text)->kind, 0, {}};
    advance();
    expect(TokenKind::leftParenthesis, "'('");
    if (test.kind == NodeTest::Kind::processingInstruction && at(TokenKind::literal)) {
        test.kind = NodeTest::Kind::processingInstructionNamed;
        test.text = narrow(token_.text);
        advance();
    }
    expect(TokenKind::rightParenthesis, "')'");
    return test;
}

NodeTest Parser::parseNameTest(Axis axis) {
    std::string uri = uriOf(token_.prefix);
    NodeTest test;
    if (at(TokenKind::nameStar)) {
        test.kind = anyInNamespace(axis);
        test.text = std::move(uri);
    } else if (axis == Axis::namespaces) {
        test.kind = uri.empty() ? NodeTest::Kind::namespaceNamed : NodeTest::Kind::nothing;
        test.text = "xmlns:" + narrow(token_.text);
    } else {
        test.kind =
            axis == Axis::attribute ? NodeTest::Kind::attributeNamed : NodeTest::Kind::elementNamed;
        test.name = names_.add(std::move(uri), narrow(token_.text));
    }
    advance();
    return test;
}

std::string Parser::uriOf(std::wstring_view prefix) const {
    if (prefix.empty()) return {};
    std::string const* uri = namespaces_.uriOf(narrow(prefix));
    if (uri == nullptr) fail("the prefix " + quoted(prefix) + " is not declared");
    return *uri;
}

} // namespace tibxml::query
