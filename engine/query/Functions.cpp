#include "Functions.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "ContextFunctions.h"

namespace tibxml::query {

namespace {

using Special = Function::Special;

constexpr bool nodes = true;
constexpr bool defaulted = true;

constexpr Function boolFunction(std::string_view name, std::size_t count, BooleanBody body) {
    return {.name = name, .fewest = count, .most = count, .boolean = body};
}

constexpr Function numberFunction(std::string_view name, bool takesNodes, NumberBody body) {
    return {.name = name, .fewest = 1, .most = 1, .number = body, .takesNodes = takesNodes};
}

constexpr Function defaultedNumber(std::string_view name, NumberBody body) {
    return {.name = name, .fewest = 0, .most = 1, .number = body, .defaultsToNode = defaulted};
}

constexpr Function stringFunction(std::string_view name, std::size_t fewest, std::size_t most,
                                  StringBody body) {
    return {.name = name, .fewest = fewest, .most = most, .string = body};
}

constexpr Function defaultedString(std::string_view name, bool takesNodes, StringBody body) {
    return {.name = name,
            .fewest = 0,
            .most = 1,
            .string = body,
            .takesNodes = takesNodes,
            .defaultsToNode = defaulted};
}

constexpr Function specialFunction(std::string_view name, std::size_t count, Special special) {
    return {.name = name, .fewest = count, .most = count, .special = special};
}

constexpr Function functions[] = {
    boolFunction("boolean", 1, function::toBoolean),
    boolFunction("contains", 2, function::contains),
    boolFunction("false", 0, function::alwaysFalse),
    boolFunction("not", 1, function::negate),
    boolFunction("starts-with", 2, function::startsWith),
    boolFunction("true", 0, function::alwaysTrue),
    numberFunction("ceiling", !nodes, function::ceiling),
    numberFunction("count", nodes, function::count),
    numberFunction("floor", !nodes, function::floor),
    numberFunction("round", !nodes, function::round),
    numberFunction("sum", nodes, function::sum),
    defaultedNumber("number", function::toNumber),
    defaultedNumber("string-length", function::stringLength),
    stringFunction("concat", 2, anyNumber, function::concat),
    stringFunction("substring", 2, 3, function::substring),
    stringFunction("substring-after", 2, 2, function::substringAfter),
    stringFunction("substring-before", 2, 2, function::substringBefore),
    stringFunction("translate", 3, 3, function::translate),
    defaultedString("local-name", nodes, function::localName),
    defaultedString("name", nodes, function::qualifiedName),
    defaultedString("namespace-uri", nodes, function::namespaceUri),
    defaultedString("normalize-space", !nodes, function::normalizeSpace),
    defaultedString("string", !nodes, function::toString),
    specialFunction("id", 1, Special::id),
    specialFunction("lang", 1, Special::lang),
    specialFunction("last", 0, Special::last),
    specialFunction("position", 0, Special::position),
};

// A call whose value is made by a body.
template <class Base, class Body>
class Call : public Base {
protected:
    Call(Body body, Arguments arguments) noexcept : body_{body}, arguments_{std::move(arguments)} {
        for (ExpressionPtr const& argument : arguments_)
            this->dependLike(*argument);
    }

    Body body_;
    Arguments arguments_;
};

class BooleanCall final : public Call<BooleanExpression, BooleanBody> {
public:
    BooleanCall(BooleanBody body, Arguments arguments) noexcept
        : Call{body, std::move(arguments)} {}

    bool boolean(Context const& context) const override { return body_(context, arguments_); }
};

class NumberCall final : public Call<NumberExpression, NumberBody> {
public:
    NumberCall(NumberBody body, Arguments arguments) noexcept : Call{body, std::move(arguments)} {}

    double number(Context const& context) const override { return body_(context, arguments_); }
};

class StringCall final : public Call<StringExpression, StringBody> {
public:
    StringCall(StringBody body, Arguments arguments) noexcept : Call{body, std::move(arguments)} {}

    std::string_view string(Context const& context, std::string& storage) const override {
        return body_(context, arguments_, storage);
    }
};

ExpressionPtr makeSpecial(Special special, Arguments arguments, std::uint32_t xmlLang) {
    switch (special) {
    case Special::position: return std::make_unique<Position>();
    case Special::last: return std::make_unique<Last>();
    case Special::lang: return std::make_unique<Lang>(xmlLang, std::move(arguments.front()));
    default: return std::make_unique<NoNodes>();
    }
}

} // namespace

Function const* findFunction(std::string_view name) noexcept {
    auto const* found = std::find_if(std::begin(functions), std::end(functions),
                                     [name](Function const& f) { return f.name == name; });
    return found != std::end(functions) ? found : nullptr;
}

ExpressionPtr makeCall(Function const& function, Arguments arguments, std::uint32_t xmlLang) {
    if (arguments.empty() && function.defaultsToNode)
        arguments.push_back(std::make_unique<ContextNode>());
    if (function.boolean != nullptr)
        return std::make_unique<BooleanCall>(function.boolean, std::move(arguments));
    if (function.number != nullptr)
        return std::make_unique<NumberCall>(function.number, std::move(arguments));
    if (function.string != nullptr)
        return std::make_unique<StringCall>(function.string, std::move(arguments));
    return makeSpecial(function.special, std::move(arguments), xmlLang);
}

} // namespace tibxml::query
