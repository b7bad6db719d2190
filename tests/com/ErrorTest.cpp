#include "Objects.h"

namespace tibxml::com::test {

class Errors : public testing::Test {
protected:
    Errors() { SetErrorInfo(0, nullptr); }

    Document document = documentOf(L"<a b='1'/>");
    Node a = nodeAt(document, L"a");
};

TEST_F(Errors, LeaveWordsAndTheirInterface) {
    EXPECT_EQ(a->selectNodes(_bstr_t{L"a[["}, List{}.out()), E_FAIL);
    Ptr<IErrorInfo> info;
    ASSERT_EQ(GetErrorInfo(0, info.out()), S_OK);
    GUID guid{};
    EXPECT_EQ(info->GetGUID(&guid), S_OK);
    EXPECT_TRUE(guid == IID_IXMLDOMNode);
    _bstr_t source;
    EXPECT_EQ(info->GetSource(source.GetAddress()), S_OK);
    EXPECT_EQ(utf8(source), "TibXml");
    _bstr_t text;
    EXPECT_EQ(info->GetDescription(text.GetAddress()), S_OK);
    EXPECT_NE(utf8(text), "");
    EXPECT_EQ(GetErrorInfo(0, info.out()), S_FALSE) << "taken once";
}

TEST_F(Errors, NameTheUndeclaredPrefix) {
    EXPECT_EQ(a->selectSingleNode(_bstr_t{L"undeclared:x"}, Node{}.out()), E_FAIL);
    EXPECT_NE(takeErrorText().find("undeclared"), std::string::npos);
}

TEST_F(Errors, AreSupportedByEveryObject) {
    auto const supports = [](IUnknown* object, REFIID iid) {
        auto const support = as<ISupportErrorInfo>(object);
        return support.get() != nullptr ? support->InterfaceSupportsErrorInfo(iid) : E_NOINTERFACE;
    };
    EXPECT_EQ(supports(document, IID_IXMLDOMDocument3), S_OK);
    EXPECT_EQ(supports(a, IID_IXMLDOMNode), S_OK);
    EXPECT_EQ(supports(nodeAt(a, L"@b"), IID_IXMLDOMAttribute), S_OK);
    EXPECT_EQ(supports(attributesOf(a), IID_IXMLDOMNamedNodeMap), S_OK);
    EXPECT_EQ(supports(nodesAt(a, L"."), IID_IXMLDOMNodeList), S_OK);
    List children;
    a->get_childNodes(children.out());
    EXPECT_EQ(supports(children, IID_IXMLDOMNodeList), S_OK);
}

TEST_F(Errors, AreNotLeftByMisses) {
    EXPECT_EQ(a->selectSingleNode(_bstr_t{L"none"}, Node{}.out()), S_FALSE);
    EXPECT_FALSE(loadText(document, L"<a>"));
    EXPECT_EQ(takeErrorText(), "");
}

TEST_F(Errors, OfUnknownInterfacesAndClasses) {
    void* object = document;
    EXPECT_EQ(a->QueryInterface(IID_IErrorInfo, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    object = document;
    EXPECT_EQ(a->QueryInterface(IID_IXMLDOMAttribute, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    object = document;
    EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_ALL, IID_IErrorInfo, &object),
              E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(CoCreateInstance(IID_IErrorInfo, nullptr, CLSCTX_ALL, IID_IUnknown, &object),
              REGDB_E_CLASSNOTREG);
}

TEST_F(Errors, OfInterfacesAreNoneForWhatAnObjectIs) {
    EXPECT_NE(as<IXMLDOMElement>(a.get()).get(), nullptr);
    EXPECT_NE(as<IXMLDOMAttribute>(nodeAt(a, L"@b").get()).get(), nullptr);
    EXPECT_NE(as<IXMLDOMDocument2>(document.get()).get(), nullptr);
    EXPECT_NE(as<IXMLDOMDocument>(document.get()).get(), nullptr);
    EXPECT_NE(as<IXMLDOMNode>(document.get()).get(), nullptr);
    EXPECT_EQ(as<IXMLDOMElement>(document.get()).get(), nullptr);
}

} // namespace tibxml::com::test
