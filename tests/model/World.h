// Documents, nodes and lists of the library, each beside what the model says about it.
#pragma once

#include "Model.h"

#include <TibXml/TibXml.h>

#include <random>
#include <string>
#include <vector>

namespace model {

// One random sequence of edits. What differs from the model is a failure of the running test.
class World {
public:
    explicit World(unsigned seed);

    // One edit or look-up, and a look at some of the nodes.
    void step();

    // Compares everything there is.
    void checkAll();

    // Saves and loads every document, then drops everything in some order.
    void finish();

private:
    struct Document {
        WXmlDoc handle;
        Node* node;
    };

    struct Held {
        WXmlNode handle;
        Node* node;
    };

    struct List {
        WXmlNodeList handle;
        std::vector<Node*> nodes;
    };

    struct Action {
        unsigned weight;
        void (World::*run)();
    };

    static Action const actions[];

    void createDocument();
    void createNode();
    void createChild();
    void ensureDescendant();
    void graftAtIndex();
    void graftBefore();
    void prune();
    void deleteNodes();
    void clone();
    void setText();
    void setAttribute();
    void deleteAttribute();
    void lookUp();
    void query();
    void takeFromList();
    void dropNode();
    void dropList();
    void dropDocument();

    Node& randomContent(Node& document, int depth);
    void fill(Node& element, int depth);
    void hold(WXmlNode const& handle, Node& node);
    bool isTooLarge(Node& parent, Node& child);
    void check(Held const& held);
    void checkOwner(Held const& held);
    void checkParent(Held const& held);
    void checkIdentities();
    void checkDocument(Document const& document);
    void checkItem(List const& list, std::size_t index);
    void checkSaving(Document const& document);
    void dropAnything();

    std::size_t random(std::size_t below) { return generator_() % below; }

    template <class Element>
    Element& any(std::vector<Element>& elements) {
        return elements[random(elements.size())];
    }

    template <class Element>
    void drop(std::vector<Element>& elements) {
        elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(random(elements.size())));
    }

    Held& anyHeld();
    void startAgain();
    wchar_t const* anyName();
    wchar_t const* anyText();

    std::mt19937 generator_;
    Nodes nodes_;
    std::vector<Document> documents_;
    std::vector<Held> held_;
    std::vector<List> lists_;
};

} // namespace model
