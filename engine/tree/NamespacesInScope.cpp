#include <tree/NamespacesInScope.h>

#include <algorithm>

#include <tree/NamespaceScope.h>
#include <tree/StartTagNames.h>

namespace tibxml::tree {

namespace {

// An element without namespaces of its own changes nothing.
bool concernsNamespaces(Node const& element) noexcept {
    bool concerned = !element.name->uri.empty();
    for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next)
        concerned = concerned || !a->name->uri.empty();
    return concerned;
}

// What the start tags from the top of the tree down to the element declare.
void enterStartTags(Node const& element, NamespaceScope& scope) {
    std::vector<Node const*> path;
    for (Node const* e = &element; e != nullptr && e->is(NodeKind::element); e = e->parent)
        path.push_back(e);
    for (auto e = path.rbegin(); e != path.rend(); ++e) {
        bool const canBePlain = !concernsNamespaces(**e) && scope.suitsElement(*(*e)->name);
        if (!canBePlain) resolveNames(**e, {}, scope);
    }
}

} // namespace

std::vector<NamespaceInScope> namespacesInScope(Node const& element) {
    NamespaceScope scope;
    enterStartTags(element, scope);
    std::vector<NamespaceInScope> found;
    for (Binding const& binding : scope.bindings()) {
        auto const place = std::lower_bound(
            found.begin(), found.end(), binding.prefix,
            [](NamespaceInScope const& a, std::string_view prefix) { return a.prefix < prefix; });
        bool const isKnown = place != found.end() && place->prefix == binding.prefix;
        if (isKnown) {
            place->uri = binding.uri; // by a nearer element
        } else {
            found.insert(place, {std::string{binding.prefix}, binding.uri});
        }
    }
    std::erase_if(found, [](NamespaceInScope const& n) { return n.uri.empty(); });
    return found;
}

} // namespace tibxml::tree
