#include <tree/Namespaces.h>

#include <algorithm>
#include <cstddef>

#include <tree/Name.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

Binding declarationIn(Node const& attribute) noexcept {
    return {declaredPrefix(&attribute), attribute.text()};
}

bool isReserved(std::string_view prefix) noexcept {
    return prefix == "xml" || prefix == "xmlns";
}

// Collects what one start tag needs. Its element's own declarations come first, because what they
// say cannot be said differently on the same element.
class Resolver {
public:
    Resolver(Node const& element, NamespaceScope& scope)
        : element_{element},
          scope_{scope},
          outside_{scope.size()} {}

    StartTagNames resolve(std::vector<Binding> const& wanted) {
        enterOwnDeclarations();
        names_.elementPrefix = prefixForElement();
        for (Binding const& binding : wanted)
            if (isFree(binding.prefix) && !isOtherwiseOnAttributes(binding)) add(binding);
        for (Node const* a = element_.firstAttribute(); a != nullptr; a = a->next)
            if (!a->name->declaresNamespace) resolveAttribute(*a);
        return std::move(names_);
    }

private:
    void enterOwnDeclarations() {
        for (Node const* a = element_.firstAttribute(); a != nullptr; a = a->next)
            if (a->name->declaresNamespace && isWritten(*a)) scope_.declare(declarationIn(*a));
    }

    std::string_view prefixForElement() {
        Name const& name = *element_.name;
        if (scope_.suitsElement(name)) return keep(name.prefix);
        if (isFree(name.prefix) && name.uri != xmlNamespace) return add({name.prefix, name.uri});
        return otherPrefix(name.uri);
    }

    void resolveAttribute(Node const& attribute) {
        Name const& name = *attribute.name;
        if (scope_.suitsAttribute(name)) {
            keep(name.prefix);
        } else if (!name.prefix.empty() && isFree(name.prefix) && name.uri != xmlNamespace) {
            add({name.prefix, name.uri});
        } else {
            names_.changed.push_back({&attribute, otherPrefix(name.uri)});
        }
    }

    std::string_view otherPrefix(std::string_view uri) {
        std::string_view const known = scope_.prefixFor(uri);
        return known.empty() ? add({scope_.unusedPrefix(), uri}) : keep(known);
    }

    std::string_view add(Binding binding) {
        scope_.declare(binding);
        names_.added.push_back(binding);
        return binding.prefix;
    }

    // Another name relies on what the prefix means now.
    std::string_view keep(std::string_view prefix) {
        if (kept_.empty() || kept_.back() != prefix) kept_.push_back(prefix);
        return prefix;
    }

    bool isFree(std::string_view prefix) const noexcept {
        return !isReserved(prefix) && !scope_.declaredSince(outside_, prefix) &&
               std::find(kept_.begin(), kept_.end(), prefix) == kept_.end();
    }

    bool isOtherwiseOnAttributes(Binding binding) const noexcept {
        Node const* a = element_.firstAttribute();
        while (a != nullptr && (a->name->prefix != binding.prefix || a->name->uri == binding.uri))
            a = a->next;
        return a != nullptr;
    }

    Node const& element_;
    NamespaceScope& scope_;
    std::size_t outside_;
    std::vector<std::string_view> kept_;
    StartTagNames names_;
};

// What the ancestors declare, the nearest first, without what nearer ones say differently.
std::vector<Binding> declaredAbove(Node const& top) {
    std::vector<Binding> found;
    auto const enter = [&found](Binding binding) {
        bool const hidden = std::any_of(found.begin(), found.end(), [&](Binding const& nearer) {
            return nearer.prefix == binding.prefix;
        });
        if (!hidden) found.push_back(binding);
    };
    for (Node const* node = top.parent; node != nullptr; node = node->parent) {
        for (Node const* a = node->firstAttribute(); a != nullptr; a = a->next)
            if (a->name->declaresNamespace && isWritten(*a)) enter(declarationIn(*a));
    }
    return found;
}

// Sorts out which bindings the names of a subtree use.
class Usage {
public:
    explicit Usage(std::vector<Binding> bindings)
        : bindings_{std::move(bindings)},
          used_(bindings_.size(), false) {}

    void add(Name const& name) {
        if (name.uri.empty() || &name == last_) return;
        last_ = &name;
        for (std::size_t i = 0; i < bindings_.size(); ++i) {
            if (bindings_[i].prefix == name.prefix && bindings_[i].uri == name.uri) used_[i] = true;
        }
    }

    std::vector<Binding> used() const {
        std::vector<Binding> result;
        for (std::size_t i = 0; i < bindings_.size(); ++i)
            if (used_[i]) result.push_back(bindings_[i]);
        return result;
    }

private:
    std::vector<Binding> bindings_;
    std::vector<bool> used_;
    Name const* last_ = nullptr;
};

} // namespace

StartTagNames resolveNames(Node const& element, std::vector<Binding> const& wanted,
                           NamespaceScope& scope) {
    return Resolver{element, scope}.resolve(wanted);
}

bool isWritten(Node const& attribute) noexcept {
    if (!attribute.name->declaresNamespace) return true;
    auto const [prefix, uri] = declarationIn(attribute);
    if (uri == xmlnsNamespace) return false;
    if ((uri == xmlNamespace) != (prefix == "xml")) return false;
    if (!prefix.empty()) return !uri.empty() && prefix != "xmlns";
    Node const* const element = attribute.parent;
    Name const& owner = *element->name;
    return uri.empty() || !owner.uri.empty() || !owner.prefix.empty();
}

std::vector<Binding> inheritedNamespaces(Node const& top) {
    std::vector<Binding> above = declaredAbove(top);
    if (above.empty()) return {};
    Usage usage{std::move(above)};
    for (Node const* node = &top; node != nullptr; node = nextInSubtree(node, &top)) {
        if (node->is(NodeKind::element)) usage.add(*node->name);
        for (Node const* a = node->firstAttribute(); a != nullptr; a = a->next)
            usage.add(*a->name);
    }
    return usage.used();
}

} // namespace tibxml::tree
