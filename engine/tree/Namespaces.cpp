#include <tree/Namespaces.h>

#include <algorithm>
#include <utility>

#include <tree/Name.h>

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

std::string_view NamespaceScope::uriOf(std::string_view prefix) const noexcept {
    auto const found = std::find_if(bindings_.rbegin(), bindings_.rend(),
                                    [=](Binding const& b) { return b.prefix == prefix; });
    return found != bindings_.rend() ? found->uri : std::string_view{};
}

std::string_view NamespaceScope::prefixFor(std::string_view uri) const noexcept {
    auto const found = std::find_if(bindings_.rbegin(), bindings_.rend(), [&](Binding const& b) {
        return b.uri == uri && !b.prefix.empty() && uriOf(b.prefix) == uri;
    });
    return found != bindings_.rend() ? found->prefix : std::string_view{};
}

std::string_view NamespaceScope::unusedPrefix() {
    for (std::size_t number = 0;; ++number) {
        if (number == madePrefixes_.size()) {
            std::string made = "ns" + std::to_string(number + 1);
            madePrefixes_.push_back(std::make_unique<std::string>(std::move(made)));
        }
        if (uriOf(*madePrefixes_[number]).empty()) return *madePrefixes_[number];
    }
}

void NamespaceScope::declare(Binding binding) {
    bindings_.push_back(binding);
    if (binding.prefix.empty()) hasDefault_ = !binding.uri.empty();
    suiting_ = nullptr;
}

void NamespaceScope::cutBack(std::size_t size) noexcept {
    if (size == bindings_.size()) return;
    bindings_.erase(bindings_.begin() + static_cast<std::ptrdiff_t>(size), bindings_.end());
    hasDefault_ = !uriOf({}).empty();
    suiting_ = nullptr;
}

bool NamespaceScope::declaredSince(std::size_t size, std::string_view prefix) const noexcept {
    return std::any_of(bindings_.begin() + static_cast<std::ptrdiff_t>(size), bindings_.end(),
                       [=](Binding const& b) { return b.prefix == prefix; });
}

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
