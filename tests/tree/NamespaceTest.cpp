#include "Trees.h"

#include <tree/Namespaces.h>

namespace tibxml::tree::test {

class Namespaces : public Tree {
protected:
    Namespaces() {
        declaration(outer, "", "urn:default");
        declaration(outer, "p", "urn:one");
        declaration(outer, "q", "urn:two");
        declaration(inner, "p", "urn:three");
        declaration(inner, "", "");
        attribute(inner, name("p"), "no declaration");
    }

    Node* outer = element(top(), "outer");
    Node* inner = element(element(outer, "middle"), "inner");
};

TEST_F(Namespaces, AreThoseOfTheNearestDeclaration) {
    EXPECT_EQ(namespaceAt(outer, "p"), "urn:one");
    EXPECT_EQ(namespaceAt(outer, ""), "urn:default");
    EXPECT_EQ(namespaceAt(inner->parent, "p"), "urn:one");
    EXPECT_EQ(namespaceAt(inner, "p"), "urn:three");
    EXPECT_EQ(namespaceAt(inner, "q"), "urn:two");
    EXPECT_EQ(namespaceAt(inner, ""), "");
    EXPECT_FALSE(namespaceAt(inner, "r").has_value());
    EXPECT_FALSE(namespaceAt(top(), "p").has_value());
}

TEST_F(Namespaces, KnowXmlEverywhere) {
    EXPECT_EQ(namespaceAt(inner, "xml"), xmlNamespace);
    EXPECT_EQ(namespaceAt(nullptr, "xml"), xmlNamespace);
}

TEST_F(Namespaces, HaveAPrefixUnlessItMeansSomethingElseHere) {
    EXPECT_EQ(prefixAt(outer, "urn:one"), "p");
    EXPECT_EQ(prefixAt(inner, "urn:two"), "q");
    EXPECT_EQ(prefixAt(inner, "urn:three"), "p");
    EXPECT_EQ(prefixAt(inner, "urn:one"), "");
    EXPECT_EQ(prefixAt(inner, "urn:default"), "");
    EXPECT_EQ(prefixAt(inner, "urn:none"), "");
}

TEST_F(Namespaces, DeclareAPrefix) {
    EXPECT_EQ(declaredPrefix(outer->firstAttribute()), "");
    EXPECT_EQ(declaredPrefix(outer->firstAttribute()->next), "p");
}

TEST_F(Namespaces, EndAtTheTopOfADetachedTree) {
    Node* const middle = inner->parent;
    unlink(document(), middle);
    EXPECT_FALSE(namespaceAt(inner, "q").has_value());
    EXPECT_EQ(namespaceAt(inner, "p"), "urn:three");
}

} // namespace tibxml::tree::test
