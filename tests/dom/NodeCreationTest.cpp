#include "EngineTest.h"

namespace {

std::string xmlOf(WXmlNode const& node) {
    return utf8(node.SaveToString());
}

struct Creation {
    wchar_t const* before;
    wchar_t const* path;
    char const* after;
    char const* result; // the node's markup
};

// What EnsureDescendantExists makes below the root, and what it answers.
constexpr Creation creations[] = {
    // Nothing is made when the path selects something already, whatever it says.
    {L"<r><a><b/></a></r>", L"a/b", "<r><a><b/></a></r>", "<b/>"},
    {L"<r><i k='y'/></r>", L"i[@k!='x']", "<r><i k=\"y\"/></r>", "<i k=\"y\"/>"},
    {L"<r><i/><i/></r>", L"i[2]", "<r><i/><i/></r>", "<i/>"},
    // Steps.
    {L"<r/>", L"a", "<r><a/></r>", "<a/>"},
    {L"<r/>", L"a/b", "<r><a><b/></a></r>", "<b/>"},
    {L"<r><a/></r>", L"a/b/c", "<r><a><b><c/></b></a></r>", "<c/>"},
    {L"<r><a/><a><b/></a></r>", L"a/b/c", "<r><a><b><c/></b></a><a><b/></a></r>", "<c/>"},
    // Attributes.
    {L"<r/>", L"@id", "<r id=\"\"/>", "id=\"\""},
    {L"<r/>", L"a/@id", "<r><a id=\"\"/></r>", "id=\"\""},
    // Predicates with values become attributes.
    {L"<r><item kind='y'/></r>", L"item[@kind='x']", "<r><item kind=\"y\"/><item kind=\"x\"/></r>",
     "<item kind=\"x\"/>"},
    {L"<r/>", L"item[@a='1'][@b='2']", "<r><item a=\"1\" b=\"2\"/></r>", "<item a=\"1\" b=\"2\"/>"},
    {L"<r/>", L"item[@a='1']/b", "<r><item a=\"1\"><b/></item></r>", "<b/>"},
    // A value ends at a blank, and needs apostrophes: without them all of the predicate is taken.
    {L"<r/>", L"item[@name='a b']", "<r><item name=\"a\"/></r>", "<item name=\"a\"/>"},
    {L"<r/>", L"item[@n=5]", "<r><item n=\"@n=5\"/></r>", "<item n=\"@n=5\"/>"},
    {L"<r/>", L"item[@n=\"5\"]", "<r><item n=\"@n=&quot;5&quot;\"/></r>",
     "<item n=\"@n=&quot;5&quot;\"/>"},
    // The first character of a selector is dropped, whatever it is.
    {L"<r/>", L"item[key='v']", "<r><item ey=\"v\"/></r>", "<item ey=\"v\"/>"},
    // Positions add siblings; those that are there count, the one that was just made too.
    {L"<r><item/></r>", L"item[3]", "<r><item/><item/><item/></r>", "<item/>"},
    {L"<r/>", L"item[3]", "<r><item/><item/><item/></r>", "<item/>"},
    {L"<r/>", L"item[@kind='x'][2]", "<r><item kind=\"x\"/><item/></r>", "<item/>"},
    {L"<r/>", L"item[2][@kind='x']", "<r><item/><item kind=\"x\"/></r>", "<item kind=\"x\"/>"},
    {L"<r/>", L"item[last()]", "<r><item/></r>", "<item/>"},
    // A search anywhere goes on as one, and makes a child when it finds nothing.
    {L"<r><a><b/></a></r>", L"//b", "<r><a><b/></a></r>", "<b/>"},
    {L"<r/>", L"//b", "<r><b/></r>", "<b/>"},
    {L"<r><x><a/></x></r>", L"//a/b", "<r><x><a><b/></a></x></r>", "<b/>"},
    {L"<r/>", L"a//b", "<r><a><b/></a></r>", "<b/>"},
    {L"<r><b/></r>", L"a//b", "<r><b/><a/></r>", "<b/>"},
    {L"<r><a/></r>", L"a/../b", "<r><a/><b/></r>", "<b/>"},
};

TEST(NodeCreation, EnsureDescendantExistsMakesWhatIsMissing) {
    for (Creation const& row : creations) {
        SCOPED_TRACE(utf8(row.before) + " " + utf8(row.path));
        WXmlDoc const document = loaded(row.before);
        WXmlNode root = document.GetRootNode();
        EXPECT_EQ(xmlOf(root.EnsureDescendantExists(row.path)), row.result);
        EXPECT_EQ(xmlOf(root), row.after);
    }
}

TEST(NodeCreation, EnsureDescendantExistsFindsWhatItMadeBefore) {
    WXmlDoc const document = loaded(L"<r/>");
    WXmlNode root = document.GetRootNode();
    for (wchar_t const* path : {L"a/b", L"@id", L"item[3]", L"item[@kind='x']", L"a/b/@c"}) {
        WXmlNode const made = root.EnsureDescendantExists(path);
        CString const xml = root.GetXML();
        EXPECT_TRUE(root.EnsureDescendantExists(path) == made) << utf8(path);
        EXPECT_EQ(utf8(root.GetXML()), utf8(xml)) << utf8(path);
    }
}

TEST(NodeCreation, EnsureDescendantExistsAnswersFailuresWithAnEmptyHandle) {
    for (wchar_t const* path :
         {L"", L"/x", L"a[", L"p:a", L"1a", L"a b", L"$v", L"a[@ ='x']", L"count(a)", L"a[@x='1"}) {
        WXmlDoc const document = loaded(L"<r/>");
        EXPECT_FALSE(document.GetRootNode().EnsureDescendantExists(path).IsValid()) << utf8(path);
    }
    EXPECT_FALSE(WXmlNode{}.EnsureDescendantExists(L"a").IsValid());
    WXmlNode moved = loaded(L"<r/>").GetRootNode();
    WXmlNode const taken = std::move(moved);
    EXPECT_FALSE(moved.EnsureDescendantExists(L"a").IsValid());
}

TEST(NodeCreation, WorkDoneBeforeAFailureStays) {
    WXmlDoc const document = loaded(L"<r/>");
    EXPECT_FALSE(document.GetRootNode().EnsureDescendantExists(L"a/x[@b/c='1']").IsValid());
    EXPECT_EQ(xmlOf(document.GetRootNode()), "<r><a/></r>");
}

TEST(NodeCreation, AttributesCannotBeMadeBelowOtherNodes) {
    WXmlDoc const document = loaded(L"<r a='1'>text</r>");
    EXPECT_FALSE(nodeAt(document, L"@a").EnsureDescendantExists(L"b").IsValid());
    EXPECT_FALSE(nodeAt(document, L"text()").EnsureDescendantExists(L"@b").IsValid());
    EXPECT_EQ(xmlOf(document.GetRootNode()), "<r a=\"1\">text</r>");
}

std::wstring steps(int count) {
    std::wstring path = L"a";
    for (int i = 1; i != count; ++i) {
        path += L"/a";
    }
    return path;
}

TEST(NodeCreation, APathOf100000StepsIsRefusedOrAnsweredLikeAShortOne) {
    WXmlDoc const document = loaded(L"<r/>");
    WXmlNode root = document.GetRootNode();
    std::wstring const path = steps(100'000);
    EXPECT_FALSE(root.DoesNodeExist(path.c_str()));
    EXPECT_FALSE(root.EnsureDescendantExists((L"1/" + path).c_str()).IsValid());
    EXPECT_EQ(xmlOf(root.CreateChild(path.c_str(), nullptr)), "<a/>");
    root.DeleteNodes(path.c_str());
    root.DeleteChild(path.c_str());
    EXPECT_EQ(xmlOf(root), "<r/>");
}

TEST(NodeCreation, APathIsMadeAsDeepAsADocumentMayBe) {
    WXmlDoc const document = loaded(L"<r/>");
    WXmlNode root = document.GetRootNode();
    std::wstring const path = steps(255);
    WXmlNode const made = root.EnsureDescendantExists(path.c_str());
    ASSERT_TRUE(made.IsValid());
    EXPECT_TRUE(root.GetNodeNoThrow(path.c_str()) == made);
    EXPECT_FALSE(made.HasChildren());
    EXPECT_TRUE(loaded(document.SaveToString()).GetRootNode().DoesNodeExist(path.c_str()));
}

TEST(NodeCreation, APathThatIsDeeperIsRefusedWhereTheDocumentEnds) {
    for (int const count : {256, 100'000}) {
        WXmlDoc const document = loaded(L"<r/>");
        WXmlNode root = document.GetRootNode();
        EXPECT_FALSE(root.EnsureDescendantExists(steps(count).c_str()).IsValid());
        EXPECT_TRUE(root.DoesNodeExist(steps(255).c_str())) << "what was made stays";
        EXPECT_FALSE(root.DoesNodeExist(steps(256).c_str()));
        EXPECT_TRUE(WXmlDoc::CreateFromString(document.SaveToString()).IsLoaded());
        WXmlNode deepest = root.GetNode(steps(255).c_str());
        EXPECT_EQ(codeOf([&] { deepest.CreateChild(L"a", nullptr); }), E_FAIL);
        EXPECT_FALSE(deepest.HasChildren());
    }
}

TEST(NodeCreation, AGraftThatWouldBeTooDeepChangesNothing) {
    WXmlDoc const document = loaded(L"<r><b><c/></b></r>");
    WXmlNode root = document.GetRootNode();
    WXmlNode deepest = root.EnsureDescendantExists(steps(254).c_str());
    WXmlNode b = root.GetNode(L"b");
    std::string const before = xmlOf(root);
    b.Graft(deepest, -1);
    EXPECT_EQ(xmlOf(root), before);
    WXmlNode c = root.GetNode(L"b/c");
    c.Graft(deepest, -1);
    EXPECT_TRUE(c.GetParentNode() == deepest);
}

struct Child {
    wchar_t const* name;
    wchar_t const* space;
    char const* markup;
};

constexpr Child children[] = {
    {L"item", nullptr, "<item/>"},
    {L"item", L"", "<item/>"},
    {L"item", L"urn:x", "<item xmlns=\"urn:x\"/>"},
    {L"p:item", L"urn:x", "<p:item xmlns:p=\"urn:x\"/>"},
    {L"item[@id='3'][@x=\"7\"]", nullptr, "<item id=\"3\" x=\"7\"/>"},
    {L"item[@id='a b']", nullptr, "<item id=\"a b\"/>"},
    // One character goes at each end, whatever it is.
    {L"item[@id=345]", nullptr, "<item id=\"4\"/>"},
    {L"item[@id=3]", nullptr, "<item id=\"\"/>"},
    {L"item[@id=]", nullptr, "<item id=\"\"/>"},
    // What is not an attribute with a value is passed over.
    {L"item[3]", nullptr, "<item/>"},
    {L"item[key='v']", nullptr, "<item/>"},
    {L"item[@id]", nullptr, "<item/>"},
    {L"item[last()][@a='1'][x]", nullptr, "<item a=\"1\"/>"},
    // The last step counts.
    {L"a/b", nullptr, "<b/>"},
    {L"//b", nullptr, "<b/>"},
    {L"a/b[@c='1']", nullptr, "<b c=\"1\"/>"},
};

TEST(NodeCreation, CreateChildAppendsAnElementWithAttributes) {
    for (Child const& row : children) {
        SCOPED_TRACE(utf8(row.name));
        WXmlDoc const document = loaded(L"<r>x<first/></r>");
        WXmlNode root = document.GetRootNode();
        WXmlNode const made = root.CreateChild(row.name, row.space);
        EXPECT_EQ(xmlOf(made), row.markup);
        EXPECT_TRUE(made.GetParentNode() == root);
        EXPECT_TRUE(root.GetNode(L"node()[last()]") == made);
        EXPECT_EQ(root.GetNumChildren(), 3);
    }
}

TEST(NodeCreation, CreateChildRaisesWhatTheEngineRefuses) {
    WXmlDoc const document = loaded(L"<r a='1'>text</r>");
    WXmlNode root = document.GetRootNode();
    for (wchar_t const* name : {L"", L"1a", L"a b", L"@x", L":a", L"a:", L"*", L"child::a", L"."}) {
        EXPECT_EQ(codeOf([&] { root.CreateChild(name, nullptr); }), E_FAIL) << utf8(name);
    }
    EXPECT_EQ(codeOf([&] { root.CreateChild(nullptr, nullptr); }), E_FAIL);
    EXPECT_EQ(codeOf([&] { root.CreateChild(L"p:undeclared", nullptr); }), E_FAIL);
    EXPECT_EQ(codeOf([&] { nodeAt(document, L"@a").CreateChild(L"x", nullptr); }), E_FAIL);
    EXPECT_EQ(codeOf([&] { nodeAt(document, L"text()").CreateChild(L"x", nullptr); }), E_FAIL);
    EXPECT_EQ(xmlOf(root), "<r a=\"1\">text</r>");
}

TEST(NodeCreation, CreateChildNeedsANodeWithADocument) {
    WXmlDoc const document = loaded(L"<r/>");
    WXmlNode top = nodeAt(document, L"/");
    EXPECT_EQ(codeOf([&] { top.CreateChild(L"item[@id='3'][@x=\"7\"]", nullptr); }), E_POINTER);
    EXPECT_EQ(codeOf([] { WXmlNode{}.CreateChild(L"a", nullptr); }), E_POINTER);
}

TEST(NodeCreation, AnElementStaysWhenOneOfItsAttributesFails) {
    WXmlDoc const document = loaded(L"<r/>");
    WXmlNode root = document.GetRootNode();
    EXPECT_EQ(missingTypeOf([&] { root.CreateChild(L"a[@b='1'][@c d='2']", nullptr); }), "string");
    EXPECT_EQ(xmlOf(root), "<r><a b=\"1\"/></r>");
}

TEST(NodeCreation, APrefixTakesTheNamespaceThatItHasThere) {
    WXmlDoc document = loaded(L"<r xmlns:p='urn:p'/>");
    document.SetSelectionNamespaces(L"xmlns:q='urn:p'");
    WXmlNode root = document.GetRootNode();
    root.CreateChild(L"p:a[@p:b='1']", nullptr);
    EXPECT_EQ(xmlOf(root), "<r xmlns:p=\"urn:p\"><p:a p:b=\"1\"/></r>");
    EXPECT_TRUE(root.DoesNodeExist(L"q:a[@q:b='1']"));
}

} // namespace
