#include "NodeSequence.h"

#include <algorithm>
#include <cstdint>

#include <tree/DocumentOrder.h>

namespace tibxml::query {

namespace {

// The number stands beside the pointer, so that sorting need not look into the nodes.
struct Place {
    std::uint32_t order;
    tree::Node* node;

    bool operator<(Place const& other) const noexcept { return order < other.order; }

    bool operator==(Place const& other) const noexcept { return order == other.order; }
};

} // namespace

void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes) {
    if (nodes.size() < 2) return;
    tree::ensureOrder(document, nodes.front());
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
