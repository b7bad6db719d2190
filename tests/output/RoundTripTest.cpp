// Generated trees: what is written is read as an equal tree and written the same again.
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;
using tree::NodeKind;

namespace {

// Makes any tree that editing could make: names in and out of namespaces, with and without
// declarations, every kind of node, texts beside texts, marks anywhere.
class Generator {
public:
    Generator(std::uint32_t seed, WhiteSpace whiteSpace) : random_{seed}, builder_{whiteSpace} {}

    Builder const& run() {
        addAround();
        Node* const root = addElement(builder_.top());
        std::vector<Node*> open{root};
        std::size_t const count = 1 + below(40);
        for (std::size_t i = 0; i < count; ++i) {
            Node* const parent = open[below(open.size())];
            if (Node* const added = addChild(parent)) open.push_back(added);
        }
        addAround();
        return builder_;
    }

private:
    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>{0, limit - 1}(random_);
    }

    std::string_view pick(std::initializer_list<std::string_view> choices) {
        return *(choices.begin() + below(choices.size()));
    }

    void mark(Node* node) { node->flags = static_cast<std::uint8_t>(below(4)); }

    std::string_view anyText() {
        return pick({"", " ", "\n\t", "\r", "x", " y ", "a<b>&\"c'", "]]>", "\r\n",
                     "a longer text that does not fit into its node", "\xE2\x82\xAC", "\t"});
    }

    void addAround() {
        if (below(3) == 0) mark(builder_.data(builder_.top(), NodeKind::comment, " around "));
        if (below(3) == 0) mark(builder_.instruction(builder_.top(), "around", "x"));
    }

    Node* addElement(Node* parent) {
        bool const prefixed = below(3) == 0;
        std::string_view const name = prefixed ? pick({"p:a", "q:b"}) : pick({"a", "b", "c"});
        std::string_view const uri = prefixed ? pick({"u", "v"}) : pick({"", "", "u", "v"});
        Node* const element = builder_.element(parent, name, uri);
        addAttributes(element);
        if (builder_.document()->preservesWhiteSpace()) return element;
        mark(element);
        return element;
    }

    void addAttributes(Node* element) {
        if (below(3) == 0) builder_.attribute(element, "one", anyText());
        if (below(6) == 0) builder_.attribute(element, "p:two", anyText(), pick({"u", "v"}));
        if (below(6) == 0) builder_.attribute(element, "p:three", anyText(), pick({"u", "v"}));
        if (below(8) == 0) builder_.attribute(element, "four", anyText(), pick({"u", "v", "w"}));
        if (below(8) == 0) builder_.attribute(element, "xmlns:p", pick({"u", "v", "", "w"}));
        if (below(8) == 0) builder_.attribute(element, "xmlns", pick({"u", "v", ""}));
        if (below(8) == 0) builder_.attribute(element, "xmlns:ns1", "elsewhere");
        if (below(8) == 0) addSpace(element);
    }

    void addSpace(Node* element) {
        builder_.attribute(element, "xml:space", pick({"preserve", "default", "odd"}),
                           tree::xmlNamespace);
    }

    Node* addChild(Node* parent) {
        switch (below(8)) {
        case 0: mark(builder_.data(parent, NodeKind::comment, " c ")); return nullptr;
        case 1: mark(builder_.instruction(parent, "pi", "data")); return nullptr;
        case 2:
            mark(builder_.data(parent, NodeKind::cdata, pick({"", " ", "x<&"})));
            return nullptr;
        case 3:
        case 4: mark(builder_.text(parent, anyText())); return nullptr;
        default: return addElement(parent);
        }
    }

    std::mt19937 random_;
    Builder builder_;
};

class RoundTrip : public testing::TestWithParam<WhiteSpace> {};

TEST_P(RoundTrip, SavingAndLoadingGivesAnEqualTree) {
    for (std::uint32_t seed = 0; seed < 3'000; ++seed) {
        Generator generator{seed, GetParam()};
        Builder const& built = generator.run();
        std::string const text = xml(built.document());
        auto const again = parse(text, GetParam());
        ASSERT_EQ(outline(*again->node()), outline(*built.top())) << "seed " << seed << '\n'
                                                                  << text;
        ASSERT_EQ(xml(again), text) << "seed " << seed;
        ASSERT_EQ(file(again), text) << "seed " << seed;
    }
}

// An element by itself is a document too.
TEST_P(RoundTrip, EveryElementStandsAlone) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        Generator generator{seed, GetParam()};
        Builder const& built = generator.run();
        Node const* const top = built.document()->documentElement();
        for (Node const* node = top->firstChild(); node != nullptr; node = node->next) {
            if (!node->is(NodeKind::element)) continue;
            std::string const text = xml(built.document(), node);
            auto const again = parse(text, GetParam());
            std::string const written = xml(again, again->documentElement());
            ASSERT_EQ(written, text) << "seed " << seed;
        }
    }
}

std::string nameOf(testing::TestParamInfo<WhiteSpace> const& test) {
    return test.param == WhiteSpace::dropped ? "dropped" : "preserved";
}

INSTANTIATE_TEST_SUITE_P(WhiteSpace, RoundTrip,
                         testing::Values(WhiteSpace::dropped, WhiteSpace::preserved), nameOf);

} // namespace

} // namespace tibxml::output::test
