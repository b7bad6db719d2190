#include "Objects.h"

#include <TibXml/platform/Variant.h>

namespace tibxml::com::test {

class Properties : public testing::Test {
protected:
    HRESULT set(wchar_t const* name, VARIANT value) {
        return document->setProperty(_bstr_t{name}, value);
    }

    HRESULT setNamespaces(wchar_t const* text) {
        return set(L"SelectionNamespaces", variantOf(_bstr_t{text}));
    }

    HRESULT select(wchar_t const* expression) {
        return document->selectSingleNode(_bstr_t{expression}, Node{}.out());
    }

    Document document = documentOf(L"<a xmlns='urn:d' xmlns:p='urn:p' p:b='1'><p:c/></a>");
};

TEST_F(Properties, AreTheseFour) {
    struct Row {
        wchar_t const* name;
        VARTYPE kind;
    };

    Row const rows[] = {{L"SelectionNamespaces", VT_BSTR},
                        {L"SelectionLanguage", VT_BSTR},
                        {L"NewParser", VT_BOOL},
                        {L"AllowDocumentFunction", VT_BOOL}};
    for (Row const& row : rows) {
        VARIANT value{};
        EXPECT_EQ(document->getProperty(_bstr_t{row.name}, &value), S_OK);
        EXPECT_EQ(value.vt, row.kind);
        EXPECT_EQ(document->setProperty(_bstr_t{row.name}, value), S_OK);
        VariantClear(&value);
    }
    for (wchar_t const* const name : {L"", L"newparser", L"Other", L"NewParser "}) {
        VARIANT value{};
        EXPECT_EQ(document->getProperty(_bstr_t{name}, &value), E_FAIL);
        EXPECT_EQ(set(name, variantOf(LONG{1})), E_FAIL);
        EXPECT_NE(takeErrorText(), "");
    }
    EXPECT_EQ(document->setProperty(nullptr, variantOf(LONG{1})), E_FAIL);
}

TEST_F(Properties, ThatAreSwitchesTakeIntegersToo) {
    for (wchar_t const* const name : {L"NewParser", L"AllowDocumentFunction"}) {
        VARIANT truth{};
        truth.vt = VT_BOOL;
        truth.boolVal = VARIANT_TRUE;
        VARIANT const rows[] = {truth, variantOf(LONG{1}), variantOf(LONG{-5})};
        for (VARIANT const& value : rows) {
            EXPECT_EQ(set(name, variantOf(LONG{0})), S_OK);
            EXPECT_EQ(set(name, value), S_OK);
            VARIANT got{};
            EXPECT_EQ(document->getProperty(_bstr_t{name}, &got), S_OK);
            EXPECT_EQ(got.boolVal, VARIANT_TRUE);
        }
        EXPECT_EQ(set(name, variantOf(_bstr_t{L"true"})), E_FAIL);
        EXPECT_EQ(set(name, VARIANT{}), E_FAIL);
    }
}

TEST_F(Properties, KnowOneLanguage) {
    EXPECT_EQ(set(L"SelectionLanguage", variantOf(_bstr_t{L"XPath"})), S_OK);
    EXPECT_EQ(set(L"SelectionLanguage", variantOf(_bstr_t{L"XSLPattern"})), E_FAIL);
    EXPECT_EQ(set(L"SelectionLanguage", variantOf(LONG{1})), E_FAIL);
}

TEST_F(Properties, GiveQueriesTheirPrefixes) {
    EXPECT_EQ(select(L"//p:c"), E_FAIL) << "the document's prefixes do not count";
    EXPECT_EQ(setNamespaces(L"xmlns:q='urn:p'\n xmlns:d=\"urn:d\" xmlns='urn:d'"), S_OK);
    EXPECT_EQ(select(L"//q:c"), S_OK);
    EXPECT_EQ(select(L"d:a/@q:b"), S_OK);
    EXPECT_EQ(select(L"a"), S_FALSE) << "an unprefixed name is in no namespace";
    EXPECT_EQ(select(L"//p:c"), E_FAIL);
    VARIANT value{};
    EXPECT_EQ(document->getProperty(_bstr_t{L"SelectionNamespaces"}, &value), S_OK);
    EXPECT_EQ(utf8(std::wstring_view{value.bstrVal}),
              "xmlns:q='urn:p'\n xmlns:d=\"urn:d\" xmlns='urn:d'");
    VariantClear(&value);
    EXPECT_EQ(setNamespaces(L""), S_OK);
    EXPECT_EQ(select(L"//q:c"), E_FAIL);
}

TEST_F(Properties, OfBadNamespacesLeaveNone) {
    wchar_t const* const rows[] = {
        L"x",         L"xmlns:q=urn", L"xmlns:q='a' xmlns:q='b'", L"xmlns:q=''",
        L"q='urn:p'", L"xmlns:1='u'", L"xmlns:q='urn:p'x"};
    for (wchar_t const* const text : rows) {
        EXPECT_EQ(setNamespaces(L"xmlns:q='urn:p'"), S_OK);
        EXPECT_EQ(setNamespaces(text), E_FAIL) << utf8(std::wstring_view{text});
        EXPECT_EQ(select(L"//q:c"), E_FAIL);
    }
    EXPECT_EQ(setNamespaces(L"xmlns:q='urn:p'"), S_OK);
    EXPECT_EQ(set(L"SelectionNamespaces", variantOf(LONG{1})), E_FAIL);
    EXPECT_EQ(select(L"//q:c"), E_FAIL);
}

TEST_F(Properties, OutlastReload) {
    EXPECT_EQ(setNamespaces(L"xmlns:q='urn:p'"), S_OK);
    EXPECT_TRUE(loadText(document, L"<x:c xmlns:x='urn:p'/>"));
    EXPECT_EQ(select(L"q:c"), S_OK);
}

} // namespace tibxml::com::test
