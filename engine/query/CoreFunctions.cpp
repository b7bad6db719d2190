// The functions of XPath's core library: what each does, then the table of their names.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include <tree/Name.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>
#include <tree/Text.h>

#include "Expression.h"
#include "Functions.h"

namespace tibxml::query {

namespace {

NodeExpression const& nodesOf(Arguments const& arguments) noexcept {
    return static_cast<NodeExpression const&>(*arguments[0]);
}

// Text is well-formed UTF-8, looked at character by character.
constexpr bool startsCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t countCharacters(std::string_view text) noexcept {
    std::size_t count = 0;
    for (char byte : text)
        count += startsCharacter(byte) ? 1 : 0;
    return count;
}

// The bytes of the first character; the text is not empty.
std::string_view firstCharacter(std::string_view text) noexcept {
    std::size_t length = 1;
    while (length < text.size() && !startsCharacter(text[length]))
        ++length;
    return text.substr(0, length);
}

bool toBoolean(Context const& context, Arguments const& arguments) {
    return arguments[0]->boolean(context);
}

bool negate(Context const& context, Arguments const& arguments) {
    return !arguments[0]->boolean(context);
}

bool alwaysTrue(Context const&, Arguments const&) {
    return true;
}

bool alwaysFalse(Context const&, Arguments const&) {
    return false;
}

bool startsWith(Context const& context, Arguments const& arguments) {
    std::string storage[2];
    std::string_view const text = arguments[0]->string(context, storage[0]);
    return text.starts_with(arguments[1]->string(context, storage[1]));
}

bool contains(Context const& context, Arguments const& arguments) {
    std::string storage[2];
    std::string_view const text = arguments[0]->string(context, storage[0]);
    return text.find(arguments[1]->string(context, storage[1])) != std::string_view::npos;
}

double toNumber(Context const& context, Arguments const& arguments) {
    return arguments[0]->number(context);
}

double count(Context const& context, Arguments const& arguments) {
    std::size_t found = 0;
    nodesOf(arguments).visit(context, Order::any, [&found](tree::Node*) {
        ++found;
        return false;
    });
    return static_cast<double>(found);
}

// In document order, because the order of additions shows in the last digits.
double sum(Context const& context, Arguments const& arguments) {
    double total = 0;
    std::string storage;
    nodesOf(arguments).visit(context, Order::document, [&](tree::Node* node) {
        total += query::toNumber(tree::stringValue(node, storage));
        return false;
    });
    return total;
}

double floor(Context const& context, Arguments const& arguments) {
    return std::floor(arguments[0]->number(context));
}

double ceiling(Context const& context, Arguments const& arguments) {
    return std::ceil(arguments[0]->number(context));
}

double round(Context const& context, Arguments const& arguments) {
    return roundNumber(arguments[0]->number(context));
}

double stringLength(Context const& context, Arguments const& arguments) {
    std::string storage;
    return static_cast<double>(countCharacters(arguments[0]->string(context, storage)));
}

// The first node when it has a name, else null.
tree::Node const* firstNamed(Context const& context, Arguments const& arguments) {
    tree::Node const* node = nodesOf(arguments).first(context);
    return node != nullptr && node->name != nullptr ? node : nullptr;
}

// Where a character stands among others, counted in characters; `npos` when it does not.
std::size_t characterIndex(std::string_view characters, std::string_view wanted) noexcept {
    for (std::size_t index = 0; !characters.empty(); ++index) {
        std::string_view const character = firstCharacter(characters);
        if (character == wanted) return index;
        characters.remove_prefix(character.size());
    }
    return std::string_view::npos;
}

std::string_view characterAt(std::string_view characters, std::size_t index) noexcept {
    for (; !characters.empty(); --index) {
        std::string_view const character = firstCharacter(characters);
        if (index == 0) return character;
        characters.remove_prefix(character.size());
    }
    return {};
}

// The characters at the positions from `first` on and before `end`, counted from 1. The numbers may
// be anything, NaN too, which no position reaches.
std::string_view between(std::string_view text, double first, double end) noexcept {
    std::size_t start = text.size();
    std::size_t stop = text.size();
    double position = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!startsCharacter(text[i])) continue;
        position += 1;
        bool const wanted = position >= first && position < end;
        if (wanted && start == text.size()) start = i;
        if (!wanted && start != text.size()) {
            stop = i;
            break;
        }
    }
    return text.substr(start, stop - start);
}

std::string_view toString(Context const& context, Arguments const& arguments,
                          std::string& storage) {
    return arguments[0]->string(context, storage);
}

std::string_view concat(Context const& context, Arguments const& arguments, std::string& storage) {
    std::string result;
    for (ExpressionPtr const& argument : arguments)
        result += argument->string(context, storage);
    storage = std::move(result);
    return storage;
}

std::string_view substringBefore(Context const& context, Arguments const& arguments,
                                 std::string& storage) {
    std::string markStorage;
    std::string_view const text = arguments[0]->string(context, storage);
    std::size_t const at = text.find(arguments[1]->string(context, markStorage));
    return at != std::string_view::npos ? text.substr(0, at) : std::string_view{};
}

std::string_view substringAfter(Context const& context, Arguments const& arguments,
                                std::string& storage) {
    std::string markStorage;
    std::string_view const text = arguments[0]->string(context, storage);
    std::string_view const mark = arguments[1]->string(context, markStorage);
    std::size_t const at = text.find(mark);
    return at != std::string_view::npos ? text.substr(at + mark.size()) : std::string_view{};
}

std::string_view substring(Context const& context, Arguments const& arguments,
                           std::string& storage) {
    std::string_view const text = arguments[0]->string(context, storage);
    double const first = roundNumber(arguments[1]->number(context));
    if (arguments.size() == 2) return between(text, first, static_cast<double>(text.size()) + 1);
    return between(text, first, first + roundNumber(arguments[2]->number(context)));
}

std::string_view normalizeSpace(Context const& context, Arguments const& arguments,
                                std::string& storage) {
    std::string result;
    bool pending = false;
    for (char c : arguments[0]->string(context, storage)) {
        if (tree::isBlank(c)) {
            pending = !result.empty();
        } else {
            if (pending) result += ' ';
            pending = false;
            result += c;
        }
    }
    storage = std::move(result);
    return storage;
}

std::string_view translate(Context const& context, Arguments const& arguments,
                           std::string& storage) {
    std::string fromStorage;
    std::string toStorage;
    std::string_view text = arguments[0]->string(context, storage);
    std::string_view const from = arguments[1]->string(context, fromStorage);
    std::string_view const to = arguments[2]->string(context, toStorage);
    std::string result;
    while (!text.empty()) {
        std::string_view const character = firstCharacter(text);
        std::size_t const index = characterIndex(from, character);
        result += index == std::string_view::npos ? character : characterAt(to, index);
        text.remove_prefix(character.size());
    }
    storage = std::move(result);
    return storage;
}

std::string_view localName(Context const& context, Arguments const& arguments, std::string&) {
    tree::Node const* const node = firstNamed(context, arguments);
    if (node == nullptr) return {};
    return tree::isNamespaceNode(node) ? tree::declaredPrefix(node) : node->name->local;
}

std::string_view namespaceUri(Context const& context, Arguments const& arguments, std::string&) {
    tree::Node const* const node = firstNamed(context, arguments);
    return node != nullptr && !tree::isNamespaceNode(node) ? node->name->uri : std::string_view{};
}

std::string_view qualifiedName(Context const& context, Arguments const& arguments, std::string&) {
    tree::Node const* const node = firstNamed(context, arguments);
    if (node == nullptr) return {};
    return tree::isNamespaceNode(node) ? tree::declaredPrefix(node) : node->name->qualified;
}

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
    boolFunction("boolean", 1, toBoolean),
    boolFunction("contains", 2, contains),
    boolFunction("false", 0, alwaysFalse),
    boolFunction("not", 1, negate),
    boolFunction("starts-with", 2, startsWith),
    boolFunction("true", 0, alwaysTrue),
    numberFunction("ceiling", !nodes, ceiling),
    numberFunction("count", nodes, count),
    numberFunction("floor", !nodes, floor),
    numberFunction("round", !nodes, round),
    numberFunction("sum", nodes, sum),
    defaultedNumber("number", toNumber),
    defaultedNumber("string-length", stringLength),
    stringFunction("concat", 2, anyNumber, concat),
    stringFunction("substring", 2, 3, substring),
    stringFunction("substring-after", 2, 2, substringAfter),
    stringFunction("substring-before", 2, 2, substringBefore),
    stringFunction("translate", 3, 3, translate),
    defaultedString("local-name", nodes, localName),
    defaultedString("name", nodes, qualifiedName),
    defaultedString("namespace-uri", nodes, namespaceUri),
    defaultedString("normalize-space", !nodes, normalizeSpace),
    defaultedString("string", !nodes, toString),
    specialFunction("id", 1, Special::id),
    specialFunction("lang", 1, Special::lang),
    specialFunction("last", 0, Special::last),
    specialFunction("position", 0, Special::position),
};

} // namespace

Function const* findFunction(std::string_view name) noexcept {
    auto const* found = std::find_if(std::begin(functions), std::end(functions),
                                     [name](Function const& f) { return f.name == name; });
    return found != std::end(functions) ? found : nullptr;
}

} // namespace tibxml::query
