// What becomes of failures that an engine reports for a node: each operation has its own way.
#include "EngineTest.h"

namespace {

class NodeFailures : public testing::Test {
protected:
    template <class Action>
    void expectRaised(char const* function, Action const& action) {
        behaviour->codes[function] = E_ACCESSDENIED;
        EXPECT_EQ(codeOf(action), E_ACCESSDENIED) << function;
        EXPECT_EQ(descriptionOf(action), std::string{"no "} + function);
        EXPECT_EQ(behaviour->asked.back(), IID_IXMLDOMNode) << function;
    }

    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::Node* engine = nullptr;
    WXmlNode node{fake::make<fake::Node, IXMLDOMNode>(behaviour, engine)};
};

TEST_F(NodeFailures, WhatPromisesAResultRaises) {
    expectRaised("nodeName", [&] { return node.GetName(); });
    expectRaised("xml", [&] { return node.GetXML(); });
    expectRaised("xml", [&] { return node.SaveToString(); });
    expectRaised("selectSingleNode", [&] { return node.GetNode(L"a"); });
    expectRaised("selectSingleNode", [&] { return node.GetNodeNoThrow(L"a"); });
    expectRaised("selectNodes", [&] { return node.GetNodes(L"a"); });
    expectRaised("selectNodes", [&] { return node.GetNodes(L"a", true); });
    expectRaised("parentNode", [&] { return node.GetParentNode(); });
    expectRaised("ownerDocument", [&] { return node.GetOwnerDocument(); });
}

TEST_F(NodeFailures, WhatAnswersQuietlyDoes) {
    for (char const* const function : {"selectSingleNode", "selectNodes", "childNodes"}) {
        behaviour->codes[function] = E_UNEXPECTED;
    }
    WXmlNode const before = loaded(L"<a/>").GetRootNode();
    WXmlNode out = before;
    WXmlNodeList nodes = loaded(L"<a/>").GetNodes(L"a");
    EXPECT_FALSE(node.DoesNodeExist(L"a"));
    EXPECT_FALSE(node.GetNode(L"a", out));
    EXPECT_TRUE(out == before);
    EXPECT_FALSE(node.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_FALSE(node.HasChildren());
    EXPECT_EQ(node.GetNumChildren(), 0);
}

TEST_F(NodeFailures, AnErrorThatLeavesNoWordsHasNone) {
    behaviour->codes["xml"] = E_FAIL;
    behaviour->refused = {{IID_ISupportErrorInfo, E_NOINTERFACE}};
    EXPECT_EQ(codeOf([&] { return node.GetXML(); }), E_FAIL);
    EXPECT_EQ(descriptionOf([&] { return node.GetXML(); }), "");
    SetErrorInfo(0, nullptr);
}

TEST_F(NodeFailures, NullTextsAreEmptyOnes) {
    engine->name = nullptr;
    engine->markup = nullptr;
    EXPECT_TRUE(node.GetName().IsEmpty());
    EXPECT_TRUE(node.GetXML().IsEmpty());
}

TEST_F(NodeFailures, AMissWithoutTheUsualCodeIsAMiss) {
    behaviour->codes["selectSingleNode"] = HRESULT{7};
    EXPECT_EQ(intOf([&] { return node.GetNode(L"a"); }), 0);
    EXPECT_FALSE(node.GetNodeNoThrow(L"a").IsValid());
}

TEST_F(NodeFailures, NoListAtAllThrowsZeroWhereAListIsPromised) {
    EXPECT_EQ(intOf([&] { return node.GetNodes(L"a"); }), 0);
    EXPECT_EQ(node.GetNodes(L"a", true).Count(), 0) << "nothing is fine with the flag";
}

TEST_F(NodeFailures, NoListAtAllIsFalseAndEmptiesTheList) {
    WXmlNodeList nodes = loaded(L"<a/>").GetNodes(L"a");
    EXPECT_FALSE(node.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 0);
}

TEST_F(NodeFailures, AListThatCannotBeCountedIsFalse) {
    auto const ofList = std::make_shared<fake::Behaviour>();
    fake::List* list = nullptr;
    engine->selectedNodes = fake::make<fake::List, IXMLDOMNodeList>(ofList, list);
    engine->children = engine->selectedNodes;
    list->nodes.resize(1);
    WXmlNodeList nodes;
    EXPECT_TRUE(node.GetNodes(L"a", nodes));
    EXPECT_TRUE(node.HasChildren());
    ofList->codes["length"] = E_FAIL;
    EXPECT_FALSE(node.GetNodes(L"a", nodes));
    EXPECT_FALSE(node.HasChildren());
    EXPECT_EQ(node.GetNumChildren(), 0);
    EXPECT_EQ(node.GetNodes(L"a", true).begin().index, 0);
}

TEST_F(NodeFailures, AnEngineThatGivesNoChildrenListMeansNone) {
    EXPECT_FALSE(node.HasChildren());
}

TEST_F(NodeFailures, AttributesThatCannotBeAskedForAreNone) {
    behaviour->codes["attributes"] = E_FAIL;
    std::vector<CString> names{L"left over"};
    EXPECT_EQ(codeOf([&] { node.GetAttributes(names); }), S_OK);
    EXPECT_TRUE(names.empty());
}

TEST_F(NodeFailures, ANodeWithoutAttributesMapIsRaised) {
    std::vector<CString> names{L"left over"};
    EXPECT_EQ(codeOf([&] { node.GetAttributes(names); }), E_POINTER);
    EXPECT_TRUE(names.empty());
}

TEST_F(NodeFailures, AttributesThatFailOneByOneArePassedOver) {
    auto const ofMap = std::make_shared<fake::Behaviour>();
    auto const ofBad = std::make_shared<fake::Behaviour>();
    fake::Map* map = nullptr;
    fake::Node* attribute = nullptr;
    engine->attributes = fake::make<fake::Map, IXMLDOMNamedNodeMap>(ofMap, map);
    auto const good = fake::make<fake::Node, IXMLDOMNode>(behaviour, attribute);
    auto const bad = fake::make<fake::Node, IXMLDOMNode>(ofBad, attribute);
    map->attributes = {good, good, WXmlNodePtr{}, bad, good};
    ofMap->codes["item 1"] = E_FAIL;
    ofBad->codes["nodeName"] = E_FAIL;
    std::vector<CString> names;
    node.GetAttributes(names);
    EXPECT_EQ(names.size(), 2U);
    ofMap->codes["length"] = E_FAIL;
    node.GetAttributes(names);
    EXPECT_TRUE(names.empty());
}

TEST_F(NodeFailures, AnOwnerThatIsNoDocumentOfTheSecondKindIsAnEmptyHandle) {
    auto const ofDocument = std::make_shared<fake::Behaviour>();
    fake::Document* document = nullptr;
    auto const owner = fake::make<fake::Document, IXMLDOMDocument3>(ofDocument, document);
    engine->owner = EnginePtr<IXMLDOMDocument>{owner.GetInterfacePtr()};
    EXPECT_TRUE(node.GetOwnerDocument() == WXmlDoc{owner});
    ofDocument->refused = {{IID_IXMLDOMDocument2, E_NOINTERFACE}};
    EXPECT_TRUE(node.GetOwnerDocument() == WXmlDoc{});
    ofDocument->refused = {{IID_IXMLDOMDocument2, E_OUTOFMEMORY}};
    EXPECT_EQ(codeOf([&] { return node.GetOwnerDocument(); }), E_OUTOFMEMORY);
}

TEST_F(NodeFailures, AccessorsAskNothing) {
    EXPECT_NO_THROW(node.Value());
    EXPECT_NO_THROW(node.Attribute(L"@a"));
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(NodeFailures, SavingAnEmptyHandleAsksNothing) {
    EXPECT_TRUE(WXmlNode{}.SaveToString().IsEmpty());
}

TEST_F(NodeFailures, OneQueryIsOneCall) {
    EXPECT_FALSE(node.DoesNodeExist(L"a[@b='c']"));
    EXPECT_FALSE(node.DoesNodeExist(L"a[@b='c']"));
    EXPECT_EQ(behaviour->calls, (std::vector<std::string>(2, "selectSingleNode")));
    EXPECT_EQ(engine->writtenText, L"a[@b='c']");
}

} // namespace
