#include <utility>

#include <tree/Name.h>
#include <tree/NamespaceLookup.h>
#include <tree/NamespaceNodes.h>

#include "Characters.h"
#include "Functions.h"
#include "Numbers.h"
#include <tree/NameCharacters.h>

namespace tibxml::query::function {

namespace {

// The first node when it has a name, else null.
tree::Node const* firstNamed(Context const& context, Arguments const& arguments) {
    tree::Node const* node = static_cast<NodeExpression const&>(*arguments[0]).first(context);
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

} // namespace

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

} // namespace tibxml::query::function
