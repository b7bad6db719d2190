#include "DeclarationRules.h"

#include <string>
#include <utility>

#include <tree/Editing.h>
#include <tree/Namespaces.h>

#include "Failure.h"

namespace tibxml::com {

namespace {

bool contradicts(tree::Name const& name, std::string_view prefix, std::string_view uri) noexcept {
    return name.prefix == prefix && name.uri != uri && !isUnresolved(name);
}

bool isReserved(std::string_view prefix, std::string_view uri) noexcept {
    if (prefix == "xml") return uri != tree::xmlNamespace;
    return prefix == "xmlns" || uri == tree::xmlNamespace || uri == tree::xmlnsNamespace;
}

// What a name or a declaration says of prefixes: nothing for an unresolved name and for those
// without a prefix.
struct Binding {
    std::string_view prefix;
    std::string_view uri;
};

Binding bindingOf(tree::Node const& node) noexcept {
    if (node.name == nullptr || node.name->uri.empty()) return {};
    if (node.name->declaresNamespace) return {tree::declaredPrefix(&node), node.text()};
    return {node.name->prefix, node.name->uri};
}

// Calls `use` with what an element says of prefixes, until it returns true.
template <class Use>
bool anyBinding(tree::Node const& element, tree::Node const* except, Use use) {
    if (use(bindingOf(element))) return true;
    for (tree::Node const* a = element.firstAttribute(); a != nullptr; a = a->next)
        if (a != except && use(bindingOf(*a))) return true;
    return false;
}

// A prefix that stands for a namespace at an element; empty when there is none.
std::string_view knownPrefix(tree::Node const* element, std::string_view uri,
                             tree::Node const* except) {
    std::string_view known;
    for (tree::Node const* e = element; e != nullptr && known.empty(); e = e->parent) {
        anyBinding(*e, except, [&](Binding const& binding) {
            if (binding.uri != uri || binding.prefix.empty()) return false;
            if (meaningAt(element, binding.prefix, except) == uri) known = binding.prefix;
            return !known.empty();
        });
    }
    return known;
}

std::string otherPrefix(tree::Node const* element, std::string_view uri, tree::Node const* except) {
    std::string prefix{knownPrefix(element, uri, except)};
    for (int number = 1; prefix.empty(); ++number) {
        std::string made = "ns" + std::to_string(number);
        if (!meaningAt(element, made, except)) prefix = std::move(made);
    }
    return prefix;
}

} // namespace

bool isUnresolved(tree::Name const& name) noexcept {
    return !name.prefix.empty() && name.uri.empty();
}

void checkDeclaration(tree::Node const* element, tree::Node const* declaration,
                      std::string_view value) {
    std::string_view const prefix = tree::declaredPrefix(declaration);
    if (isReserved(prefix, value) || (value.empty() && !prefix.empty()))
        throw Failure{E_FAIL, "no such namespace can be declared"};
    bool clash = contradicts(*element->name, prefix, value);
    if (!prefix.empty()) {
        for (tree::Node const* a = element->firstAttribute(); a != nullptr; a = a->next)
            clash = clash || contradicts(*a->name, prefix, value);
    }
    if (clash) throw Failure{E_FAIL, "the element's own names need another namespace"};
}

std::optional<std::string_view> meaningOn(tree::Node const* element, std::string_view prefix,
                                          tree::Node const* except) noexcept {
    std::optional<std::string_view> meaning;
    anyBinding(*element, except, [&](Binding const& binding) {
        if (binding.prefix == prefix) meaning = binding.uri;
        return meaning.has_value();
    });
    return meaning;
}

std::optional<std::string_view> meaningAt(tree::Node const* element, std::string_view prefix,
                                          tree::Node const* except) noexcept {
    if (prefix == "xml") return tree::xmlNamespace;
    std::optional<std::string_view> meaning;
    for (; element != nullptr && !meaning; element = element->parent)
        meaning = meaningOn(element, prefix, except);
    return meaning;
}

tree::Name* fittingName(tree::Document& document, tree::Node const* element, tree::Name* name,
                        tree::Node const* old) {
    if (name->uri.empty() || name->declaresNamespace || name->prefix == "xml") return name;
    if (!name->prefix.empty() &&
        meaningOn(element, name->prefix, old).value_or(name->uri) == name->uri)
        return name;
    tree::Node const* const same = tree::findAttribute(element, name->expanded);
    if (same != nullptr) return same->name;
    return document.names().intern(otherPrefix(element, name->uri, old), name->local, name->uri);
}

tree::Name* resolvedAt(tree::Document& document, tree::Node const* element, tree::Name* name) {
    if (!isUnresolved(*name)) return name;
    auto const uri = meaningAt(element, name->prefix);
    if (!uri)
        throw Failure{E_FAIL, "the prefix '" + std::string{name->prefix} + "' is not declared"};
    return document.names().intern(name->prefix, name->local, *uri);
}

tree::Name* nameAt(tree::Document& document, tree::Node const* element, NodeHandle const& node) {
    tree::Name* const name = node.node()->name;
    bool const isForeign = &document != &node.storage();
    return resolvedAt(document, element,
                      isForeign ? document.names().intern(name->prefix, name->local, name->uri)
                                : name);
}

} // namespace tibxml::com
