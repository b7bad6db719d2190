#include <tree/NamespaceLookup.h>

#include <tree/Name.h>

namespace tibxml::tree {

std::string_view declaredPrefix(Node const* declaration) noexcept {
    Name const& name = *declaration->name;
    return name.prefix.empty() ? std::string_view{} : name.local;
}

std::optional<std::string_view> namespaceAt(Node const* element, std::string_view prefix) noexcept {
    if (prefix == "xml") return xmlNamespace;
    for (Node const* e = element; e != nullptr; e = e->parent) {
        for (Node const* a = e->firstAttribute(); a != nullptr; a = a->next) {
            if (a->name->declaresNamespace && declaredPrefix(a) == prefix) return a->text();
        }
    }
    return std::nullopt;
}

std::string_view prefixAt(Node const* element, std::string_view uri) noexcept {
    for (Node const* e = element; e != nullptr; e = e->parent) {
        for (Node const* a = e->firstAttribute(); a != nullptr; a = a->next) {
            if (!a->name->declaresNamespace || a->text() != uri) continue;
            std::string_view const prefix = declaredPrefix(a);
            if (!prefix.empty() && namespaceAt(element, prefix) == uri) return prefix;
        }
    }
    return {};
}

} // namespace tibxml::tree
