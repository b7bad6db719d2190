// The same document in libxml2's tree, and what its own evaluator selects there.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <libxml/tree.h>

#include "Tree.h"

namespace tibxml::query::test {

class Peer {
public:
    // Both trees come from one text; they are walked side by side to pair their nodes.
    Peer(std::string const& xml, Tree const& tree);
    Peer(Peer const&) = delete;
    Peer& operator=(Peer const&) = delete;
    ~Peer();

    // All nodes that have a counterpart, in document order.
    std::vector<tree::Node*> const& nodes() const noexcept { return order_; }

    // Our counterparts of the nodes selected, in document order (the peer has none for the
    // namespaces of an element: by prefix); nothing when the peer finds fault
    // with the expression.
    std::optional<std::vector<tree::Node*>> select(std::string const& expression,
                                                   tree::Node* context) const;

private:
    void pair(xmlNode* theirs, tree::Node* ours);
    void pairAttributes(xmlNode* theirs, tree::Node* ours);
    tree::Node* counterpart(xmlNode const* theirs) const;
    void sort(std::vector<tree::Node*>& nodes) const;

    xmlDoc* document_;
    tree::Document& tree_;
    std::vector<tree::Node*> order_;
    std::unordered_map<xmlNode const*, tree::Node*> ours_;
    std::unordered_map<tree::Node const*, xmlNode*> theirs_;
    std::unordered_map<tree::Node const*, std::size_t> places_; // in order_
};

} // namespace tibxml::query::test
