// How a document of the engine is made: with a class of the test's own under the identifier.
#include "EngineTest.h"

#include <TibXml/platform/ComRuntime.h>
#include <calls/EngineCall.h>

#include <array>

namespace {

/// What the next documents do, and what the last one noted.
struct Factory {
    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    HRESULT code = S_OK;
    IID askedFor{};
    int made = 0;
    WXmlNodePtr imported;
    fake::Document* last = nullptr;
};

Factory* factory = nullptr;

HRESULT create(REFIID iid, void** object) noexcept {
    factory->askedFor = iid;
    if (FAILED(factory->code)) return factory->code;
    ++factory->made;
    return tibxml::engine::quietly(E_OUTOFMEMORY, [&] {
        fake::Document* made = nullptr;
        auto const document =
            fake::make<fake::Document, IXMLDOMDocument3>(factory->behaviour, made);
        made->imported = factory->imported;
        factory->last = made;
        return document->QueryInterface(iid, object);
    });
}

} // namespace

namespace tibxml::platform {

std::span<ComClass const> comClasses() noexcept {
    static constexpr std::array<ComClass, 1> classes{{{CLSID_DOMDocument60, create}}};
    return classes;
}

} // namespace tibxml::platform

namespace {

class DocumentCreation : public testing::Test {
protected:
    DocumentCreation() { factory = &made; }

    ~DocumentCreation() override { factory = nullptr; }

    fake::Behaviour& behaviour() { return *made.behaviour; }

    Factory made;
};

using Calls = std::vector<std::string>;

TEST_F(DocumentCreation, NothingIsMadeBeforeTheFirstLoad) {
    WXmlDoc const document{true};
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_EQ(made.made, 0);
}

TEST_F(DocumentCreation, TheParserIsChosenAndThenTheTextIsLoaded) {
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(L"x"));
    EXPECT_EQ(made.askedFor, IID_IUnknown);
    EXPECT_EQ(behaviour().calls, (Calls{"setProperty", "loadXML"}));
    EXPECT_EQ(behaviour().property, L"NewParser");
    EXPECT_EQ(behaviour().propertyKind, VT_I2) << "an integer, not a truth value";
    EXPECT_EQ(behaviour().propertyNumber, -1);
}

TEST_F(DocumentCreation, WhiteSpaceIsAskedForBeforeLoading) {
    WXmlDoc document{true};
    EXPECT_TRUE(document.Load(L"x"));
    EXPECT_EQ(behaviour().calls, (Calls{"setProperty", "put preserveWhiteSpace true", "load"}));
}

TEST_F(DocumentCreation, WhetherWhiteSpaceCanBeKeptDoesNotMatter) {
    behaviour().codes["put preserveWhiteSpace true"] = E_FAIL;
    WXmlDoc document{true};
    EXPECT_TRUE(document.LoadFromString(L"x"));
}

TEST_F(DocumentCreation, EveryLoadMakesADocument) {
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(L"x"));
    WXmlDoc const copy = document;
    EXPECT_TRUE(document.LoadFromString(L"x"));
    EXPECT_EQ(made.made, 2);
    EXPECT_TRUE(copy != document);
}

TEST_F(DocumentCreation, WithoutAClassEveryLoadIsFalseAndTheHandleEmpty) {
    made.code = E_ACCESSDENIED;
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L"x"));
    EXPECT_FALSE(document.Load(L"x"));
    EXPECT_EQ(intOf([&] { return document.GetRootNode(); }), 1);
}

TEST_F(DocumentCreation, AnObjectThatIsNoDocumentIsFalse) {
    behaviour().refused = {{IID_IXMLDOMDocument3, E_NOINTERFACE}};
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L"x"));
    EXPECT_EQ(made.made, 1);
    EXPECT_TRUE(behaviour().calls.empty());
    EXPECT_EQ(intOf([&] { return document.GetRootNode(); }), 1);
}

TEST_F(DocumentCreation, ADocumentThatRefusesTheParserIsGivenUp) {
    behaviour().codes["setProperty"] = E_FAIL;
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L"x"));
    EXPECT_EQ(behaviour().calls, Calls{"setProperty"}) << "nothing is loaded";
    EXPECT_EQ(intOf([&] { return document.GetRootNode(); }), 1);
}

TEST_F(DocumentCreation, TheOldDocumentGoesBeforeTheNewOneIsMade) {
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(L"x"));
    made.code = E_FAIL;
    EXPECT_FALSE(document.LoadFromString(L"x"));
    EXPECT_TRUE(document == WXmlDoc{});
    EXPECT_EQ(fake::objects, 0U);
}

TEST_F(DocumentCreation, AFailingLoadIsFalse) {
    for (char const* const function : {"load", "loadXML"}) {
        behaviour().codes[function] = E_OUTOFMEMORY;
    }
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L"x"));
    EXPECT_FALSE(document.Load(L"x"));
    EXPECT_TRUE(document != WXmlDoc{}) << "there is a document, only without content";
}

TEST_F(DocumentCreation, ABackupOfAnEmptyHandleMakesNoDocument) {
    WXmlDoc document;
    delete document.Backup();
    EXPECT_EQ(made.made, 0);
}

// Copying a whole document: the source and the copy of its root are the test's own as well.
class CloneCreation : public DocumentCreation {
protected:
    CloneCreation() {
        fake::Document* engine = nullptr;
        source_ = WXmlDoc{fake::make<fake::Document, IXMLDOMDocument3>(ofSource_, engine)};
        fake::Element* element = nullptr;
        engine->root = fake::make<fake::Element, IXMLDOMElement>(ofSource_, element);
        auto const copy = fake::make<fake::Element, IXMLDOMElement>(ofCopy_, element);
        copied_ = copy.GetInterfacePtr();
        made.imported = WXmlNodePtr{copied_};
    }

    std::shared_ptr<fake::Behaviour> ofSource_ = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> ofCopy_ = std::make_shared<fake::Behaviour>();
    WXmlDoc source_;
    IXMLDOMElement* copied_ = nullptr;
};

TEST_F(CloneCreation, TheCallsInOrder) {
    WXmlDoc const clone = source_.Clone();
    EXPECT_EQ(ofSource_->calls, Calls{"documentElement"});
    EXPECT_EQ(behaviour().calls, (Calls{"setProperty", "importNode", "putref documentElement"}));
    EXPECT_EQ(made.last->value.vt, VT_BOOL);
    EXPECT_EQ(made.last->value.boolVal, VARIANT_TRUE) << "with all that is in it";
    EXPECT_EQ(made.last->root.GetInterfacePtr(), copied_);
}

TEST_F(CloneCreation, EveryFailingCallGivesAHandleWithoutDocument) {
    for (char const* const function : {"setProperty", "importNode", "putref documentElement"}) {
        behaviour().codes = {{function, E_FAIL}};
        EXPECT_TRUE(source_.Clone() == WXmlDoc{}) << function;
        EXPECT_TRUE(behaviour().called(function));
    }
    behaviour().codes.clear();
    made.code = E_FAIL;
    EXPECT_TRUE(source_.Clone() == WXmlDoc{}) << "no document can be made";
}

TEST_F(CloneCreation, ACopyThatRefusesToBeAnElementGivesAHandleWithoutDocument) {
    ofCopy_->refused.emplace_back(IID_IXMLDOMElement, E_FAIL);
    EXPECT_TRUE(source_.Clone() == WXmlDoc{});
    EXPECT_FALSE(behaviour().called("putref documentElement"));
}

} // namespace
