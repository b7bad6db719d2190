#include "SchemaDocuments.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <tree/Editing.h>
#include <tree/Namespaces.h>
#include <tree/Navigation.h>

namespace tibxml::validation {

using tree::Node;

namespace {

constexpr std::uint32_t longestChain = 256;
constexpr std::uint32_t mostParticles = 10'000;

// What a definition is found by; simple and complex types share their names.
enum class Kind : std::uint8_t { type, group, attributeGroup, element };

struct Reference {
    Kind kind;
    Node const* element;   // that has it
    std::string_view name; // as written, with its prefix
};

struct Definition {
    std::size_t document;
    Node const* node;
    std::string_view uri;
    std::vector<std::size_t> uses{}; // definitions
    std::uint32_t particles = 0;     // of its own, then with those of what it uses
    std::uint32_t chain = 0;         // 0 until it is known
    bool isOpen = false;
};

bool isSchemaElement(Node const& node) noexcept {
    return node.is(tree::NodeKind::element) && node.name->uri == schemaNamespace;
}

struct ReferringAttribute {
    std::string_view element; // empty: any
    std::string_view attribute;
    Kind kind;
};

constexpr std::array<ReferringAttribute, 6> referring{{
    {"group", "ref", Kind::group},
    {"attributeGroup", "ref", Kind::attributeGroup},
    {"", "base", Kind::type},
    {"list", "itemType", Kind::type},
    {"union", "memberTypes", Kind::type},
    {"element", "substitutionGroup", Kind::element},
}};

// Hands over each name in a list of names.
template <class Use>
void forEachName(std::string_view list, Use use) {
    constexpr std::string_view space = " \t\r\n";
    while (true) {
        list.remove_prefix(std::min(list.find_first_not_of(space), list.size()));
        if (list.empty()) return;
        std::size_t const end = std::min(list.find_first_of(space), list.size());
        use(list.substr(0, end));
        list.remove_prefix(end);
    }
}

template <class Use>
void forEachReference(Node const& element, Use use) {
    for (ReferringAttribute const& where : referring) {
        if (!where.element.empty() && element.name->local != where.element) continue;
        Node const* const attribute = tree::findAttribute(&element, where.attribute);
        if (attribute == nullptr) continue;
        forEachName(attribute->text(), [&](std::string_view name) {
            use(Reference{where.kind, &element, name});
        });
    }
}

// The graph of all named definitions.
class Definitions {
public:
    explicit Definitions(SchemaDocuments const& documents) : documents_{documents} {
        for (std::size_t i = 0; i != documents.size(); ++i)
            collect(i, documents.document(i).documentElement());
        for (Definition& definition : definitions_)
            connect(definition);
    }

    void check() {
        for (Definition& definition : definitions_)
            if (definition.chain == 0) measure(definition);
    }

private:
    static bool isNamed(std::string_view local, Kind& kind) noexcept {
        if (local == "complexType" || local == "simpleType") return kind = Kind::type, true;
        if (local == "group") return kind = Kind::group, true;
        if (local == "attributeGroup") return kind = Kind::attributeGroup, true;
        return local == "element" && (kind = Kind::element, true);
    }

    void collect(std::size_t document, Node const* parent) {
        std::string_view const uri = targetNamespace(documents_.document(document));
        for (Node const* child = parent->firstChild(); child != nullptr; child = child->next) {
            if (!isSchemaElement(*child)) continue;
            if (child->name->local == "redefine") collect(document, child);
            Kind kind{};
            Node const* const name = tree::findAttribute(child, "name");
            if (name == nullptr || !isNamed(child->name->local, kind)) continue;
            byName_[kindIndex(kind)][name->text()].push_back(definitions_.size());
            definitions_.push_back({document, child, uri});
        }
    }

    void connect(Definition& definition) {
        for (Node const* node = definition.node; node != nullptr;
             node = tree::nextInSubtree(node, definition.node)) {
            if (!isSchemaElement(*node)) continue;
            if (node->name->local == "element" || node->name->local == "any")
                ++definition.particles;
            forEachReference(*node,
                             [&](Reference const& reference) { use(definition, reference); });
        }
    }

    // Where no definition has the namespace, all count that have the name: documents without a
    // namespace take on that of the one which includes them.
    void use(Definition& definition, Reference const& reference) {
        std::size_t const colon = reference.name.find(':');
        bool const hasPrefix = colon != std::string_view::npos;
        auto const prefix = hasPrefix ? reference.name.substr(0, colon) : std::string_view{};
        auto const local = hasPrefix ? reference.name.substr(colon + 1) : reference.name;
        auto const found = byName_[kindIndex(reference.kind)].find(local);
        if (found == byName_[kindIndex(reference.kind)].end()) return;
        std::string_view const uri =
            tree::namespaceAt(reference.element, prefix).value_or(std::string_view{});
        if (uri == schemaNamespace) return;
        bool matched = false;
        for (std::size_t const candidate : found->second) {
            if (definitions_[candidate].uri != uri) continue;
            definition.uses.push_back(candidate);
            matched = true;
        }
        if (!matched) {
            definition.uses.insert(definition.uses.end(), found->second.begin(),
                                   found->second.end());
        }
    }

    struct Visit {
        Definition* definition;
        std::size_t next;
    };

    // Depth first, without recursion. libxml2 reports circles.
    void measure(Definition& start) {
        std::vector<Visit> open{{&start, 0}};
        start.isOpen = true;
        while (!open.empty()) {
            Definition& definition = *open.back().definition;
            if (open.back().next == definition.uses.size()) {
                finish(definition);
                open.pop_back();
                continue;
            }
            Definition& used = definitions_[definition.uses[open.back().next++]];
            if (used.chain != 0 || used.isOpen) continue;
            used.isOpen = true;
            open.push_back({&used, 0});
        }
    }

    void finish(Definition& definition) const {
        std::uint32_t chain = 0;
        for (std::size_t const index : definition.uses) {
            Definition const& used = definitions_[index];
            if (used.isOpen) continue;
            chain = std::max(chain, used.chain);
            definition.particles = std::min(definition.particles + used.particles, mostParticles);
        }
        definition.chain = chain + 1;
        definition.isOpen = false;
        if (definition.chain > longestChain)
            throw errorAt(definition, "definitions refer to each other more than 256 deep");
        if (definition.particles >= mostParticles)
            throw errorAt(definition, "more than 10000 elements in one definition");
    }

    SchemaError errorAt(Definition const& definition, std::string_view reason) const {
        return documents_.errorAt(definition.document, definition.node, reason);
    }

    static std::size_t kindIndex(Kind kind) noexcept { return static_cast<std::size_t>(kind); }

    SchemaDocuments const& documents_;
    std::vector<Definition> definitions_;
    std::array<std::unordered_map<std::string_view, std::vector<std::size_t>>, 4> byName_;
};

} // namespace

void checkLimits(SchemaDocuments const& documents) {
    Definitions{documents}.check();
}

} // namespace tibxml::validation
