#include "Growth.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "../Documents.h"
#include "../ProcessorTime.h"
#include "../Settings.h"
#include "Edit.h"

namespace bench {

namespace {

constexpr std::array<std::size_t, 4> sizes{1'000, 10'000, 100'000, 1'000'000};

std::string settingsOf(std::size_t nodes) {
    return settings(nodes * 100 / 728); // what an item comes to on average
}

// A document with handles on what is edited, so that nothing is searched.
struct Edited {
    explicit Edited(std::size_t nodes)
        : document{tibxmlDocument(settingsOf(nodes))},
          root{document.GetRootNode()},
          first{root.GetNode(L"*[1]")} {
        WXmlNodeList const items = root.GetNodes(L"*");
        item = items.Node(items.Count() / 2);
        value = item.GetNode(L"value");
    }

    WXmlDoc document;
    WXmlNode root;
    WXmlNode first;
    WXmlNode item; // in the middle
    WXmlNode value;
};

using Edit = void (*)(Edited&, int);

void makeChild(WXmlNode& parent, int number) {
    WXmlNode child = parent.CreateChild(childName, nullptr);
    child.Attribute(L"@id").SetInt(number);
    child.Attribute(L"@value").SetInt(number * 7);
    child.Prune();
}

void makeAndRemoveLast(Edited& edited, int number) {
    makeChild(edited.root, number);
}

void makeAndRemoveInside(Edited& edited, int number) {
    makeChild(edited.item, number);
}

void setText(Edited& edited, int number) {
    edited.value.Value().SetInt(number);
}

void setAttribute(Edited& edited, int number) {
    edited.item.Attribute(L"@number").SetInt(number);
}

void moveToTheFront(Edited& edited, int /*number*/) {
    edited.value.Graft(edited.root, edited.first);
    edited.value.Graft(edited.item, -1);
}

void cloneGraftAndPrune(Edited& edited, int /*number*/) {
    WXmlNode copy = edited.item.Clone(true);
    copy.Graft(edited.root, -1);
    copy.Prune();
}

struct Kind {
    char const* name;
    Edit edit;
};

constexpr std::array<Kind, 6> kinds{{
    {"make and remove a child of the root", makeAndRemoveLast},
    {"make and remove a child amid the document", makeAndRemoveInside},
    {"set a text", setText},
    {"set an attribute", setAttribute},
    {"move a node to the front and back", moveToTheFront},
    {"clone an item, graft the copy, prune it", cloneGraftAndPrune},
}};

double secondsOf(Edit edit, Edited& edited) {
    constexpr int runs = 2'000;
    double const start = processorSeconds();
    for (int i = 0; i < runs; ++i)
        edit(edited, i);
    return (processorSeconds() - start) / runs;
}

// Size by size, round after round: what else the machine does hits all of them alike.
std::array<double, sizes.size()> bestSeconds(Edit edit, std::vector<Edited>& documents) {
    std::array<double, sizes.size()> best{};
    best.fill(1e9);
    for (int round = 0; round < 30; ++round) {
        for (std::size_t i = 0; i < sizes.size(); ++i)
            best[i] = std::min(best[i], secondsOf(edit, documents[i]));
    }
    return best;
}

void printKind(Kind const& kind, std::vector<Edited>& documents) {
    std::array<double, sizes.size()> const seconds = bestSeconds(kind.edit, documents);
    std::printf("%-50s", kind.name);
    for (double const time : seconds)
        std::printf(" %8.0f ns %5.2f", time * 1e9, time / seconds.front());
    std::printf("\n");
    (void)std::fflush(stdout);
}

} // namespace

void printEditsBySize() {
    std::printf("\n%-50s", editsBySize.data());
    for (std::size_t const size : sizes)
        std::printf(" %11zu ratio", size);
    std::printf("\n");
    std::vector<Edited> documents;
    documents.reserve(sizes.size());
    for (std::size_t const size : sizes)
        documents.emplace_back(size);
    for (Kind const& kind : kinds)
        printKind(kind, documents);
}

} // namespace bench
