#include "DeclarationRules.h"

#include <string>

#include <tree/NamespaceLookup.h>

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

tree::Name* resolvedAt(tree::Document& document, tree::Node const* element, tree::Name* name) {
    if (!isUnresolved(*name)) return name;
    auto const uri = tree::namespaceAt(element, name->prefix);
    if (!uri.has_value() || uri->empty())
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
