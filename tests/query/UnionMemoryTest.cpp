// A union takes memory for its result, however many operands it has.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "LiveBytes.h"
#include "Tree.h"

namespace tibxml::query::test {

namespace {

constexpr int elements = 3000;
constexpr int operands = 1000;

std::string listOfElements() {
    std::string text = "<r>";
    for (int i = 0; i < elements; ++i)
        text += i % 2 == 0 ? "<a/>" : "<b/>";
    return text + "</r>";
}

// The operands by turns, so many in all.
std::wstring unionOf(std::vector<std::wstring> const& some, int count) {
    std::wstring text = some.front();
    for (int i = 1; i < count; ++i)
        text += L"|" + some[static_cast<std::size_t>(i) % some.size()];
    return text;
}

struct Search {
    std::size_t found;
    std::int64_t peak;
};

Search search(Tree const& tree, std::wstring const& expression) {
    auto const query = compile(expression, {});
    std::vector<tree::Node*> nodes;
    nodes.reserve(elements);
    PeakOfBytes const peak;
    selectAll(*query, tree.document(), tree.node(), nodes);
    return {nodes.size(), peak.above()};
}

// Nodes are kept up to nine times over and sorted beside numbers, in arrays that double.
std::int64_t bytesFor(std::size_t found) {
    return 4096 + 400 * static_cast<std::int64_t>(found);
}

struct Row {
    char const* about;
    std::vector<std::wstring> operands;
    std::size_t found;
};

} // namespace

TEST(UnionMemory, dependsOnTheResultAndNotOnTheNumberOfOperands) {
    Tree const tree{listOfElements()};
    search(tree, L"//a|//b"); // numbers the nodes
    Row const rows[] = {
        {"the same", {L"/r/a"}, elements / 2},
        {"two by turns", {L"/r/a", L"/r/b"}, elements},
        {"one within the other", {L"/r/*", L"/r/a"}, elements},
        {"one at a time", {L"/r/a[7]", L"/r/b[8]", L"/r/a[9]"}, 3},
        {"none but one", {L"/r/c", L"/r/c", L"/r/b"}, elements / 2},
    };
    for (Row const& row : rows) {
        Search const many = search(tree, unionOf(row.operands, operands));
        EXPECT_EQ(many.found, row.found) << row.about;
        EXPECT_LT(many.peak, bytesFor(row.found)) << row.about;
    }
}

// Each operand of a chain gives a node that no other gives.
TEST(UnionMemory, growsWithTheResultWhereOperandsShareNothing) {
    Tree const tree{listOfElements()};
    search(tree, L"//a|//b");
    std::wstring text = L"/r/*[1]";
    for (int i = 2; i <= operands; ++i)
        text += L"|/r/*[" + std::to_wstring(i) + L"]";
    Search const many = search(tree, text);
    EXPECT_EQ(many.found, static_cast<std::size_t>(operands));
    EXPECT_LT(many.peak, bytesFor(operands));
}

} // namespace tibxml::query::test
