// What becomes of failures that an engine reports: each operation has its own way.
#include "EngineTest.h"

#include <TibXml/platform/Stream.h>

namespace {

class DocumentFailures : public testing::Test {
protected:
    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    WXmlDoc document{fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine)};
};

TEST_F(DocumentFailures, TheTextIsRaised) {
    behaviour->codes["xml"] = E_ACCESSDENIED;
    EXPECT_EQ(codeOf([&] { return document.SaveToString(); }), E_ACCESSDENIED);
    EXPECT_EQ(descriptionOf([&] { return document.SaveToString(); }), "no xml");
    EXPECT_EQ(behaviour->asked.back(), IID_IXMLDOMNode);
}

TEST_F(DocumentFailures, ANullTextIsAnEmptyOne) {
    engine->markup = nullptr;
    EXPECT_TRUE(document.SaveToString().IsEmpty());
}

TEST_F(DocumentFailures, WhetherItIsLoadedIsRaised) {
    behaviour->codes["documentElement"] = E_UNEXPECTED;
    EXPECT_EQ(codeOf([&] { return document.IsLoaded(); }), E_UNEXPECTED);
    EXPECT_EQ(descriptionOf([&] { return document.IsLoaded(); }), "no documentElement");
    EXPECT_EQ(behaviour->asked.back(), IID_IXMLDOMDocument);
}

TEST_F(DocumentFailures, TheRootIsRaised) {
    behaviour->codes["documentElement"] = E_UNEXPECTED;
    EXPECT_EQ(codeOf([&] { return document.GetRootNode(); }), E_UNEXPECTED);
    EXPECT_EQ(descriptionOf([&] { return document.GetRootNode(); }), "no documentElement");
}

TEST_F(DocumentFailures, ARootThatIsNoNodeIsAnEmptyNode) {
    auto const ofElement = std::make_shared<fake::Behaviour>();
    fake::Element* element = nullptr;
    engine->root = fake::make<fake::Element, IXMLDOMElement>(ofElement, element);
    EXPECT_TRUE(document.GetRootNode().IsValid());
    ofElement->refused = {{IID_IXMLDOMNode, E_NOINTERFACE}};
    EXPECT_FALSE(document.GetRootNode().IsValid());
    ofElement->refused = {{IID_IXMLDOMNode, E_ACCESSDENIED}};
    EXPECT_EQ(codeOf([&] { return document.GetRootNode(); }), E_ACCESSDENIED);
}

TEST_F(DocumentFailures, ANewNodeIsRaised) {
    behaviour->codes["createNode"] = E_FAIL;
    EXPECT_EQ(descriptionOf([&] { return document.CreateNode(L"a", nullptr); }), "no createNode");
    EXPECT_EQ(behaviour->asked.back(), IID_IXMLDOMDocument);
}

TEST_F(DocumentFailures, ANewNodeIsAskedForAsAnElementWithoutNullNamespace) {
    EXPECT_FALSE(document.CreateNode(L"a", nullptr).IsValid());
    EXPECT_EQ(engine->createdType.vt, VT_INT);
    EXPECT_EQ(engine->createdType.intVal, 1);
    EXPECT_EQ(engine->createdName, L"a");
    EXPECT_EQ(engine->createdNamespace, L"");
    document.CreateNode(nullptr, L"urn:x");
    EXPECT_EQ(engine->createdName, L"(null)") << "the name is passed as given";
    EXPECT_EQ(engine->createdNamespace, L"urn:x");
}

TEST_F(DocumentFailures, SavingIsFalse) {
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    for (HRESULT const code : {E_FAIL, E_OUTOFMEMORY, S_FALSE, HRESULT{2}}) {
        behaviour->codes["save"] = code;
        EXPECT_FALSE(document.Save(L"x")) << code;
        EXPECT_FALSE(document.Save(stream)) << code;
    }
    behaviour->codes["save"] = S_OK;
    EXPECT_TRUE(document.Save(L"x"));
    EXPECT_EQ(engine->value.vt, VT_BSTR);
    EXPECT_TRUE(document.Save(stream));
    EXPECT_EQ(engine->value.vt, VT_UNKNOWN);
}

TEST_F(DocumentFailures, NullStreamsAreNotEvenOffered) {
    EXPECT_FALSE(document.Save(static_cast<IStream*>(nullptr)));
    EXPECT_TRUE(behaviour->calls.empty());
    EXPECT_FALSE(document.Load(static_cast<IStream*>(nullptr)));
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(DocumentFailures, PrefixesAreRaised) {
    behaviour->codes["setProperty"] = E_INVALIDARG;
    EXPECT_EQ(codeOf([&] { document.SetSelectionNamespaces(L""); }), E_INVALIDARG);
    EXPECT_EQ(descriptionOf([&] { document.SetSelectionNamespaces(L"x"); }), "no setProperty");
    EXPECT_EQ(behaviour->property, L"SelectionNamespaces");
    EXPECT_EQ(behaviour->propertyKind, VT_BSTR);
}

TEST_F(DocumentFailures, AQueryIsFalseAndLeavesTheListAlone) {
    WXmlNodeList nodes = loaded(L"<a/>").GetNodes(L"a");
    behaviour->codes["selectNodes"] = E_FAIL;
    EXPECT_FALSE(document.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_EQ(document.GetNodes(L"a").Count(), 0);
}

TEST_F(DocumentFailures, NoListIsFalseAndLeavesTheListAlone) {
    WXmlNodeList nodes = loaded(L"<a/>").GetNodes(L"a");
    EXPECT_FALSE(document.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_EQ(document.GetNodes(L"a").Count(), 0);
    EXPECT_EQ(engine->writtenText, L"a");
}

TEST_F(DocumentFailures, AListThatCannotBeCountedIsFalseButAssigned) {
    auto const ofList = std::make_shared<fake::Behaviour>();
    fake::List* list = nullptr;
    engine->selectedNodes = fake::make<fake::List, IXMLDOMNodeList>(ofList, list);
    list->nodes.resize(1);
    WXmlNodeList nodes;
    EXPECT_TRUE(document.GetNodes(L"a", nodes));
    ofList->codes["length"] = E_FAIL;
    WXmlNodeList other = loaded(L"<a/>").GetNodes(L"a");
    EXPECT_FALSE(document.GetNodes(L"a", other));
    EXPECT_EQ(codeOf([&] { return other.Count(); }), E_FAIL);
}

} // namespace
