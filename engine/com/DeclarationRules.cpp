#include "DeclarationRules.h"

#include <string>

#include <tree/NamespaceLookup.h>

#include "Failure.h"

namespace tibxml::com {

namespace {

// A prefix whose namespace was left open takes any.
bool isOpen(tree::Name const& name) noexcept {
    return !name.prefix.empty() && name.uri.empty();
}

bool contradicts(tree::Name const& name, std::string_view prefix, std::string_view uri) noexcept {
    return name.prefix == prefix && name.uri != uri && !isOpen(name);
}

bool isReserved(std::string_view prefix, std::string_view uri) noexcept {
    if (prefix == "xml") return uri != tree::xmlNamespace;
    return prefix == "xmlns" || uri == tree::xmlNamespace || uri == tree::xmlnsNamespace;
}

} // namespace

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

tree::Name* nameAt(tree::Document& document, tree::Node const* element, tree::Name* name) {
    std::string_view uri = name->uri;
    if (isOpen(*name)) {
        uri = tree::namespaceAt(element, name->prefix).value_or(std::string_view{});
        if (uri.empty())
            throw Failure{E_FAIL, "the prefix '" + std::string{name->prefix} + "' is not declared"};
    }
    return document.names().intern(name->prefix, name->local, uri);
}

} // namespace tibxml::com
