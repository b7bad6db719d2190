// Answers from an index must be those of a walk.
#include <random>

#include <gtest/gtest.h>

#include <tree/Editing.h>
#include <tree/Lifetimes.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

std::string numberedItems(int count) {
    std::string xml{"<r>"};
    for (int i = 0; i < count; ++i)
        xml += "<item id='" + std::to_string(i) + "'/><other id='" + std::to_string(i) + "'/>";
    return xml + "</r>";
}

// The first predicate of `plain` means the same as `@id='value'` but is not looked up in an index.
struct Pair {
    std::wstring indexed;
    std::wstring plain;
};

Pair forValue(std::wstring const& value, std::wstring const& more) {
    return {L"item[@id='" + value + L"']" + more,
            L"item[@id and string(@id)='" + value + L"']" + more};
}

// Often enough that the first walks note their length and the last answer comes from an index.
void expectSame(Tree const& tree, std::wstring const& value, std::wstring const& more = {}) {
    Pair const pair = forValue(value, more);
    auto const expected = tree.select(pair.plain, tree.element());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(tree.select(pair.indexed, tree.element()), expected) << narrow(pair.indexed);
        EXPECT_EQ(tree.describe(pair.indexed, tree.element()), describe(expected));
    }
}

class Editor {
public:
    Editor(Tree const& tree, std::uint32_t seed) : tree_{tree}, random_{seed} {}

    void edit() {
        auto const items = tree_.select(L"/r/item");
        tree::Node* const item = items[random_() % items.size()];
        switch (random_() % 4) {
        case 0: changeId(item); break;
        case 1: tree_.document().lifetimes().remove(item); break;
        case 2: insertBefore(item); break;
        default: removeId(item); break;
        }
    }

private:
    std::string someId() { return std::to_string(random_() % 60); }

    void changeId(tree::Node* item) {
        if (tree::Node* id = tree::findAttribute(item, std::string_view{"id"}))
            tree::setText(tree_.document(), id, someId());
    }

    void removeId(tree::Node* item) {
        if (tree::Node* id = tree::findAttribute(item, std::string_view{"id"}))
            tree_.document().lifetimes().remove(id);
    }

    void insertBefore(tree::Node* item) {
        tree::Document& document = tree_.document();
        auto* const made = tree::newElement(document, document.names().intern("", "item", ""));
        auto* const id =
            tree::newAttribute(document, document.names().intern("", "id", ""), someId());
        tree::appendAttribute(document, made, id);
        tree::insertBefore(document, tree_.element(), made, item);
    }

    Tree const& tree_;
    std::mt19937 random_;
};

} // namespace

TEST(AttributeIndex, answersLikeAWalk) {
    Tree const tree{numberedItems(500)};
    for (wchar_t const* value : {L"0", L"127", L"128", L"129", L"499", L"500", L"", L"x"})
        expectSame(tree, value);
    EXPECT_TRUE(tree.document().hasQueryMemory());
}

TEST(AttributeIndex, isNotMadeForHitsNearTheStart) {
    Tree const tree{numberedItems(500)};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(selectFirst(*compile(L"item[@id='100']", {}), tree.document(), tree.element()),
                  tree.find(L"/r/item[101]"));
    }
    EXPECT_FALSE(tree.document().hasQueryMemory());
}

TEST(AttributeIndex, isNotMadeForShortRuns) {
    Tree const tree{numberedItems(127)};
    expectSame(tree, L"126");
    expectSame(tree, L"none");
    EXPECT_FALSE(tree.document().hasQueryMemory());
}

TEST(AttributeIndex, keepsRepeatedValuesInOrder) {
    std::string xml{"<r>"};
    for (int i = 0; i < 400; ++i)
        xml += "<item id='" + std::to_string(i % 3) + "' n='" + std::to_string(i) + "'/>";
    Tree const tree{xml + "</r>"};
    for (wchar_t const* more : {L"", L"[1]", L"[2]", L"[134]", L"[135]", L"[last()]", L"[@n>200]",
                                L"[@n>200][1]", L"[position()>2][position()<4]", L"/@n", L"[0]"}) {
        for (wchar_t const* value : {L"0", L"1", L"2", L"3"})
            expectSame(tree, value, more);
    }
}

TEST(AttributeIndex, seesEveryEdit) {
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
        Tree const tree{numberedItems(300)};
        Editor editor{tree, seed};
        std::mt19937 random{seed};
        for (int i = 0; i < 60 && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            expectSame(tree, std::to_wstring(random() % 60));
            expectSame(tree, std::to_wstring(random() % 300), L"[1]");
            editor.edit();
        }
    }
}

TEST(AttributeIndex, tellsParentsNamesAndAttributesApart) {
    std::string xml{"<r>"};
    for (int parent = 0; parent < 3; ++parent) {
        xml += "<g>";
        for (int i = 0; i < 200; ++i) {
            std::string const a = std::to_string(i);
            std::string const b = std::to_string(199 - i);
            xml.append("<x a='").append(a).append("' b='").append(b).append("'/>");
            xml.append("<y a='").append(b).append("'/>");
        }
        xml += "</g>";
    }
    Tree const tree{xml + "</r>"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(tree.select(L"/r/g/x[@a='150']"), tree.select(L"/r/g/x[151]"));
        EXPECT_EQ(tree.select(L"/r/g/x[@b='150']"), tree.select(L"/r/g/x[50]"));
        EXPECT_EQ(tree.select(L"/r/g/y[@a='20']"), tree.select(L"/r/g/y[180]"));
        EXPECT_EQ(tree.select(L"/r/g[2]/x[@a='150']"), tree.select(L"/r/g[2]/x[151]"));
    }
}

// Groups of elements, and one element with attributes b0, b1 and so on.
std::string groups(int count, int names) {
    std::string xml{"<r>"};
    for (int group = 0; group < count; ++group) {
        xml += "<g>";
        for (int i = 0; i < 140; ++i)
            xml += "<x a='" + std::to_string(i % 70) + "'/>";
        xml += "</g>";
    }
    xml += "<named";
    for (int i = 0; i < names; ++i)
        xml += " b" + std::to_string(i) + "='1'";
    return xml + "/></r>";
}

// Every group has a run for every name, also when none of its members has such an attribute.
std::wstring countInAll(int names) {
    std::wstring counted;
    for (int i = 0; i < names; ++i)
        counted += (i == 0 ? L"/r/g/x[@b" : L" | /r/g/x[@b") + std::to_wstring(i) + L"='1']";
    return L"count(" + counted + L")";
}

// More runs than there is room for: while an index is read, it is forgotten.
TEST(AttributeIndex, canBeForgottenWhileItIsRead) {
    constexpr int names = 170; // times 100 groups
    Tree const tree{groups(100, names)};
    auto const expected = tree.select(L"/r/g[position()<3]/x[string(@a)='69']");
    EXPECT_EQ(expected.size(), 4U);
    for (int i = 0; i < 3; ++i) {
        std::wstring const query = L"/r/g[position()<3]/x[@a='69'][" + countInAll(names) + L" = 0]";
        EXPECT_EQ(tree.select(query), expected);
    }
}

TEST(AttributeIndex, answersForManyRunsInTurn) {
    Tree const tree{groups(300, 0)};
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(tree.select(L"/r/g/x[@a='none']").size(), 0U);
        EXPECT_EQ(tree.select(L"/r/g/x[@a='69']"), tree.select(L"/r/g/x[70] | /r/g/x[140]"));
    }
}

TEST(AttributeIndex, holdsLongAndEmptyValues) {
    std::string const common(40, 'v');
    std::string xml{"<r>"};
    for (int i = 0; i < 300; ++i)
        xml += "<item id='" + (i % 100 == 0 ? "" : common + std::to_string(i)) + "'/><item/>";
    Tree const tree{xml + "</r>"};
    expectSame(tree, L"");
    expectSame(tree, std::wstring(40, L'v') + L"299");
    expectSame(tree, std::wstring(40, L'v'));
}

// A freed element's place in memory goes to the next one that is made.
TEST(AttributeIndex, knowsNoNewElementInThePlaceOfAnOldOne) {
    Tree const tree{"<top>" + numberedItems(200) + "</top>"};
    tree::Document& document = tree.document();
    tree::Node* const old = tree.find(L"/top/r");
    tree::unlink(document, old);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(tree.describe(L"item[@id='150']", old), "item#150");
    tree::Name* const name = old->name;
    tree::destroy(document, old);
    tree::Node* const made = tree::newElement(document, name);
    ASSERT_EQ(made, old);
    EXPECT_EQ(tree.describe(L"item[@id='150']", made), "");
    tree::destroy(document, made);
}

TEST(AttributeIndex, outlivesNothing) {
    auto const query = compile(L"item[@id='299']", {});
    for (int i = 0; i < 3; ++i) {
        Tree const tree{numberedItems(300)};
        for (int walk = 0; walk < 3; ++walk) {
            EXPECT_EQ(selectFirst(*query, tree.document(), tree.element()),
                      tree.find(L"/r/item[last()]"));
        }
    }
}

} // namespace tibxml::query::test
