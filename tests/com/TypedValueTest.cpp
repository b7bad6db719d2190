#include "Objects.h"

#include <algorithm>
#include <vector>

#include <TibXml/platform/Variant.h>

namespace tibxml::com::test {

using Bytes = std::vector<BYTE>;

// A variant that owns what it holds.
class Value {
public:
    Value() { VariantInit(&variant_); }

    explicit Value(Bytes const& bytes) : Value{} {
        variant_.vt = VT_ARRAY | VT_UI1;
        variant_.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
        void* data = nullptr;
        SafeArrayAccessData(variant_.parray, &data);
        std::copy(bytes.begin(), bytes.end(), static_cast<BYTE*>(data));
        SafeArrayUnaccessData(variant_.parray);
    }

    Value(Value const&) = delete;
    Value& operator=(Value const&) = delete;

    ~Value() { VariantClear(&variant_); }

    VARIANT* out() { return &variant_; }

    VARIANT const& get() const { return variant_; }

    Bytes bytes() const {
        EXPECT_EQ(variant_.vt, VT_ARRAY | VT_UI1);
        LONG lowest = -1;
        EXPECT_EQ(SafeArrayGetLBound(variant_.parray, 1, &lowest), S_OK);
        EXPECT_EQ(lowest, 0);
        auto const* data = static_cast<BYTE const*>(variant_.parray->pvData);
        return {data, data + variant_.parray->rgsabound[0].cElements};
    }

    std::string text() const {
        EXPECT_EQ(variant_.vt, VT_BSTR);
        return utf8(std::wstring_view{variant_.bstrVal, SysStringLen(variant_.bstrVal)});
    }

private:
    VARIANT variant_;
};

class TypedValues : public testing::Test {
protected:
    HRESULT annotate(wchar_t const* path, wchar_t const* type = L"bin.base64") {
        return nodeAt(document, path)->put_dataType(_bstr_t{type});
    }

    HRESULT put(wchar_t const* path, VARIANT const& value) {
        return nodeAt(document, path)->put_nodeTypedValue(value);
    }

    void load(wchar_t const* xml) { ASSERT_TRUE(loadText(document, xml)); }

    Document document = documentOf(L"<a b='1'>t<!--c--></a>");
    Bytes const few{0, 1, 0xFE, 0xFF};
};

TEST_F(TypedValues, AreAnnotatedByAnAttribute) {
    EXPECT_EQ(annotate(L"a", L"BIN.Base64"), S_OK);
    char const* const annotated = "<a b=\"1\" xmlns:dt=\"urn:schemas-microsoft-com:datatypes\" "
                                  "dt:dt=\"bin.base64\">t<!--c--></a>\n";
    EXPECT_EQ(xmlOf(document), annotated);
    EXPECT_EQ(annotate(L"a"), S_OK);
    EXPECT_EQ(xmlOf(document), annotated);
    Value type;
    EXPECT_EQ(nodeAt(document, L"a")->get_dataType(type.out()), S_OK);
    EXPECT_EQ(type.text(), "bin.base64");
}

TEST_F(TypedValues, UseAPrefixThatIsThere) {
    load(L"<r xmlns:t='urn:schemas-microsoft-com:datatypes'><a/></r>");
    EXPECT_EQ(annotate(L"//a"), S_OK);
    EXPECT_EQ(xmlOf(document), "<r xmlns:t=\"urn:schemas-microsoft-com:datatypes\">"
                               "<a t:dt=\"bin.base64\"/></r>\n");
}

TEST_F(TypedValues, UseAnotherPrefixWhereTheirsIsTaken) {
    load(L"<r xmlns:dt='urn:x' xmlns:dt1='urn:y'><a/></r>");
    EXPECT_EQ(annotate(L"//a"), S_OK);
    EXPECT_EQ(xmlOf(nodeAt(document, L"//a")),
              "<a xmlns:dt2=\"urn:schemas-microsoft-com:datatypes\" dt2:dt=\"bin.base64\"/>");
}

TEST_F(TypedValues, LeaveThePrefixesOfCreatedNodesAlone) {
    Node node;
    ASSERT_EQ(document->createNode(variantOf(LONG{NODE_ELEMENT}), _bstr_t{L"dt:a"},
                                   _bstr_t{L"urn:x"}, node.out()),
              S_OK);
    EXPECT_EQ(node->put_dataType(_bstr_t{L"bin.base64"}), S_OK);
    std::string const xml = xmlOf(node);
    EXPECT_NE(xml.find("xmlns:dt=\"urn:x\""), std::string::npos) << xml;
    EXPECT_NE(xml.find("dt1:dt=\"bin.base64\""), std::string::npos) << xml;
}

TEST_F(TypedValues, AreForElementsOnly) {
    for (wchar_t const* const path : {L"/", L"a/@b", L"a/text()", L"a/comment()"})
        EXPECT_EQ(annotate(path), E_FAIL);
    for (wchar_t const* const type : {L"", L"int", L"bin.hex", L"bin.base64 "})
        EXPECT_EQ(annotate(L"a", type), E_FAIL);
    EXPECT_EQ(put(L"a", Value{few}.get()), E_FAIL) << "not annotated";
    EXPECT_EQ(xmlOf(document), "<a b=\"1\">t<!--c--></a>\n");
}

TEST_F(TypedValues, AreBytes) {
    EXPECT_EQ(annotate(L"a"), S_OK);
    for (std::size_t const length : {0U, 1U, 2U, 3U, 53U, 54U, 55U, 108U, 10000U}) {
        Bytes bytes(length);
        for (std::size_t i = 0; i != length; ++i)
            bytes[i] = static_cast<BYTE>(i * 7);
        EXPECT_EQ(put(L"a", Value{bytes}.get()), S_OK);
        Value got;
        EXPECT_EQ(nodeAt(document, L"a")->get_nodeTypedValue(got.out()), S_OK);
        EXPECT_EQ(got.bytes(), bytes) << length;
    }
    EXPECT_EQ(put(L"a", Value{few}.get()), S_OK);
    EXPECT_EQ(textOf(document), "AAH+/w==");
    EXPECT_EQ(put(L"a", Value{Bytes(55)}.get()), S_OK);
    EXPECT_EQ(textOf(document), std::string(72, 'A') + "\nAA==");
    EXPECT_EQ(annotate(L"a"), S_OK) << "the annotation stays";
}

TEST_F(TypedValues, AreReadUnderAnyPrefix) {
    load(
        L"<a xmlns:x='urn:schemas-microsoft-com:datatypes' x:dt='Bin.Base64'> AAH+\r\n /w= = </a>");
    Value got;
    EXPECT_EQ(nodeAt(document, L"a")->get_nodeTypedValue(got.out()), S_OK);
    EXPECT_EQ(got.bytes(), few);
}

TEST_F(TypedValues, AreRefusedWhenTheTextIsNotBase64) {
    EXPECT_EQ(annotate(L"a"), S_OK);
    for (wchar_t const* const text :
         {L"A", L"AA", L"AAA", L"A===", L"AA==AA==", L"A*AA", L"\u00E4AAA"}) {
        load((L"<a xmlns:x='urn:schemas-microsoft-com:datatypes' x:dt='bin.base64'>" +
              std::wstring{text} + L"</a>")
                 .c_str());
        Value got;
        EXPECT_EQ(nodeAt(document, L"a")->get_nodeTypedValue(got.out()), E_FAIL);
        EXPECT_EQ(got.get().vt, VT_EMPTY);
    }
}

TEST_F(TypedValues, OfOtherNodesAreTheirText) {
    for (wchar_t const* const path : {L"a", L"a/@b", L"a/text()", L"a/comment()", L"/"}) {
        Value got;
        EXPECT_EQ(nodeAt(document, path)->get_nodeTypedValue(got.out()), S_OK);
        EXPECT_EQ(got.text(), textOf(nodeAt(document, path)));
    }
    EXPECT_EQ(put(L"a/@b", variantOf(_bstr_t{L"new"})), S_OK);
    EXPECT_EQ(textOf(nodeAt(document, L"a/@b")), "new");
    EXPECT_EQ(put(L"a", variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(put(L"a", VARIANT{}), E_INVALIDARG);
}

TEST_F(TypedValues, MayComeByReference) {
    EXPECT_EQ(annotate(L"a"), S_OK);
    Value const bytes{few};
    SAFEARRAY* array = bytes.get().parray;
    VARIANT reference{};
    reference.vt = VT_ARRAY | VT_UI1 | VT_BYREF;
    reference.pparray = &array;
    EXPECT_EQ(put(L"a", reference), S_OK);
    EXPECT_EQ(textOf(document), "AAH+/w==");
    reference.pparray = nullptr;
    EXPECT_EQ(put(L"a", reference), E_INVALIDARG);
    array = nullptr;
    reference.pparray = &array;
    EXPECT_EQ(put(L"a", reference), E_INVALIDARG);
    EXPECT_EQ(textOf(document), "AAH+/w==");
}

TEST_F(TypedValues, EndWithText) {
    EXPECT_EQ(annotate(L"a"), S_OK);
    Node const type = nodeAt(document, L"a/@*[. = 'bin.base64']");
    EXPECT_EQ(setText(nodeAt(document, L"a"), L"text"), S_OK);
    EXPECT_EQ(xmlOf(document),
              "<a b=\"1\" xmlns:dt=\"urn:schemas-microsoft-com:datatypes\">text</a>\n");
    EXPECT_EQ(textOf(type), "bin.base64") << "removed but held";
    EXPECT_EQ(annotate(L"a"), S_OK);
    EXPECT_EQ(put(L"a", variantOf(_bstr_t{L"string"})), S_OK);
    Value none;
    EXPECT_EQ(nodeAt(document, L"a")->get_dataType(none.out()), S_FALSE);
}

TEST_F(TypedValues, OfAnotherTypeAreLeftAlone) {
    load(L"<a xmlns:x='urn:schemas-microsoft-com:datatypes' x:dt='int'>5</a>");
    Value got;
    EXPECT_EQ(nodeAt(document, L"a")->get_dataType(got.out()), S_FALSE);
    EXPECT_EQ(setText(nodeAt(document, L"a"), L"6"), S_OK);
    EXPECT_NE(xmlOf(document).find("x:dt=\"int\""), std::string::npos);
    EXPECT_EQ(annotate(L"a"), S_OK);
    EXPECT_NE(xmlOf(document).find("x:dt=\"bin.base64\""), std::string::npos);
}

} // namespace tibxml::com::test
