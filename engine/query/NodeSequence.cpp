#include "NodeSequence.h"

#include <algorithm>
#include <cstdint>

#include <tree/DocumentOrder.h>
#include <tree/NamespaceLookup.h>
#include <tree/NamespaceNodes.h>

namespace tibxml::query {

namespace {

// The number stands beside the pointer, so that sorting need not look into the nodes.
struct Place {
    std::uint32_t order;
    tree::Node* node;

    bool operator<(Place const& other) const noexcept { return order < other.order; }

    bool operator==(Place const& other) const noexcept { return order == other.order; }
};

// Namespace nodes have no numbers: they stand after their element and before its attributes.
std::uint32_t placeOf(tree::Node const* node) noexcept {
    return tree::isNamespaceNode(node) && node->parent != nullptr ? node->parent->order
                                                                  : node->order;
}

bool comesBeforeWithNamespaces(tree::Node const* a, tree::Node const* b) noexcept {
    std::uint32_t const placeA = placeOf(a);
    std::uint32_t const placeB = placeOf(b);
    if (placeA != placeB) return placeA < placeB;
    if (a == b || !tree::isNamespaceNode(b)) return false;
    if (!tree::isNamespaceNode(a)) return true;
    int const order = tree::declaredPrefix(a).compare(tree::declaredPrefix(b));
    return order != 0 ? order < 0 : a->text() < b->text();
}

void sortWithNamespaces(std::vector<tree::Node*>& nodes) {
    std::sort(nodes.begin(), nodes.end(), comesBeforeWithNamespaces);
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

} // namespace

void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes) {
    if (nodes.size() < 2) return;
    tree::ensureOrder(document, nodes.front());
    if (document.namespaceNodes != nullptr) return sortWithNamespaces(nodes);
    std::vector<Place> places;
    places.reserve(nodes.size());
    for (tree::Node* node : nodes)
        places.push_back({node->order, node});
    if (!std::is_sorted(places.begin(), places.end())) std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    nodes.clear();
    for (Place const& place : places)
        nodes.push_back(place.node);
}

} // namespace tibxml::query
