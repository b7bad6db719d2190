// Schema collections and validation through the engine's interfaces.
#include "Objects.h"

#include <filesystem>
#include <vector>

#include <TibXml/engine/IXMLDOMParseError2.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>

#include "TemporaryFolder.h"

namespace tibxml::com::test {

using Schemas = Ptr<IXMLDOMSchemaCollection2>;

#define XSD "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "

wchar_t const* const intSchema = L"" XSD "><xs:element name='a' type='xs:int'/></xs:schema>";
wchar_t const* const otherSchema =
    L"" XSD "targetNamespace='urn:t'><xs:element name='a' type='xs:int'/></xs:schema>";

Schemas newSchemas() {
    return newObject<IXMLDOMSchemaCollection2>(CLSID_XMLSchemaCache60);
}

HRESULT add(IXMLDOMSchemaCollection2* schemas, wchar_t const* uri, wchar_t const* schema) {
    Document const document = documentOf(schema);
    return schemas->add(_bstr_t{uri}, variantOf(document.get()));
}

Schemas schemasOf(wchar_t const* schema, wchar_t const* uri = L"") {
    Schemas schemas = newSchemas();
    EXPECT_EQ(add(schemas, uri, schema), S_OK) << takeErrorText();
    return schemas;
}

struct Verdict {
    HRESULT result = E_UNEXPECTED;
    LONG code = -1;
    LONG line = -1;
    std::string reason;
};

Verdict verdictOf(IXMLDOMDocument2* document) {
    Verdict verdict;
    Ptr<IXMLDOMParseError> error;
    verdict.result = document->validate(error.out());
    if (error.get() == nullptr) return verdict;
    EXPECT_EQ(error->get_errorCode(&verdict.code), S_OK);
    EXPECT_EQ(error->get_line(&verdict.line), S_OK);
    _bstr_t reason;
    EXPECT_EQ(error->get_reason(reason.GetAddress()), S_OK);
    verdict.reason = utf8(reason);
    return verdict;
}

Verdict verdictOn(wchar_t const* xml, IXMLDOMSchemaCollection2* schemas) {
    Document const document = documentOf(xml);
    EXPECT_EQ(document->putref_schemas(variantOf(schemas)), S_OK);
    std::string const before = xmlOf(document);
    Verdict verdict = verdictOf(document);
    EXPECT_EQ(xmlOf(document), before);
    return verdict;
}

TEST(SchemaCollection, OffersItsInterfaces) {
    Schemas const schemas = newSchemas();
    EXPECT_NE(as<IXMLDOMSchemaCollection>(schemas.get()).get(), nullptr);
    EXPECT_NE(as<ISupportErrorInfo>(schemas.get()).get(), nullptr);
    EXPECT_EQ(as<IXMLDOMNode>(schemas.get()).get(), nullptr);
}

TEST(SchemaCollection, IsEmptyAtFirst) {
    Schemas const schemas = newSchemas();
    EXPECT_EQ(lengthOf(schemas.get()), 0);
    Node node;
    EXPECT_EQ(schemas->get(_bstr_t{L""}, node.out()), S_FALSE);
    EXPECT_EQ(schemas->remove(_bstr_t{L""}), S_FALSE);
    _bstr_t uri;
    EXPECT_EQ(schemas->get_namespaceURI(0, uri.GetAddress()), S_FALSE);
    EXPECT_EQ(schemas->validate(), S_OK);
}

TEST(SchemaCollection, KeepsOneSchemaPerNamespace) {
    Schemas const schemas = schemasOf(intSchema);
    EXPECT_EQ(add(schemas, L"urn:t", otherSchema), S_OK);
    EXPECT_EQ(add(schemas, nullptr, intSchema), S_OK);
    EXPECT_EQ(lengthOf(schemas.get()), 2);
    _bstr_t uri;
    EXPECT_EQ(schemas->get_namespaceURI(1, uri.GetAddress()), S_OK);
    EXPECT_EQ(utf8(uri), "urn:t");
    EXPECT_EQ(schemas->get_namespaceURI(2, uri.GetAddress()), S_FALSE);
    EXPECT_EQ(schemas->get_namespaceURI(-1, uri.GetAddress()), S_FALSE);
    Node node;
    EXPECT_EQ(schemas->get(_bstr_t{L"urn:t"}, node.out()), S_OK);
    EXPECT_EQ(nameOf(node), "xs:schema");
    EXPECT_EQ(schemas->remove(_bstr_t{L"urn:t"}), S_OK);
    EXPECT_EQ(lengthOf(schemas.get()), 1);
}

TEST(SchemaCollection, KeepsTheSchemaAsItWasAdded) {
    Document const schema = documentOf(intSchema);
    Schemas const schemas = newSchemas();
    ASSERT_EQ(schemas->add(_bstr_t{L""}, variantOf(schema.get())), S_OK);
    EXPECT_TRUE(loadText(schema, L"<other/>"));
    Node node;
    ASSERT_EQ(schemas->get(_bstr_t{L""}, node.out()), S_OK);
    EXPECT_EQ(nameOf(node), "xs:schema");
    EXPECT_EQ(verdictOn(L"<a>1</a>", schemas).result, S_OK);
}

TEST(SchemaCollection, RefusesWhatCannotBeUsedAndStaysAsItWas) {
    struct Case {
        wchar_t const* uri;
        wchar_t const* schema;
    } const cases[] = {
        {L"", otherSchema},
        {L"urn:t", intSchema},
        {L"urn:u", otherSchema},
        {L"", L"<a/>"},
        {L"", L"" XSD "><xs:element name='a' type='None'/></xs:schema>"},
        {L"", L"" XSD "><xs:include schemaLocation='relative.xsd'/></xs:schema>"},
        {L"", L"" XSD "><xs:include schemaLocation='/nowhere/a.xsd'/></xs:schema>"},
        {L"", L"" XSD "><xs:include schemaLocation='http://localhost/a.xsd'/></xs:schema>"},
        {L"", L"" XSD "><xs:include schemaLocation=''/></xs:schema>"},
    };

    Schemas const schemas = schemasOf(intSchema);
    for (Case const& c : cases) {
        EXPECT_EQ(add(schemas, c.uri, c.schema), E_FAIL) << utf8(c.schema);
        EXPECT_NE(takeErrorText(), "") << utf8(c.schema);
        EXPECT_EQ(lengthOf(schemas.get()), 1);
        EXPECT_EQ(verdictOn(L"<a>1</a>", schemas).result, S_OK);
    }
}

TEST(SchemaCollection, RefusesOtherObjects) {
    Schemas const schemas = newSchemas();
    Document const document = documentOf(intSchema);
    Node const root = nodeAt(document, L"*");
    Document const empty = newDocument();
    _bstr_t const uri{L""};
    EXPECT_EQ(schemas->add(uri, variantOf(root.get())), E_INVALIDARG);
    EXPECT_EQ(schemas->add(uri, variantOf(schemas.get())), E_INVALIDARG);
    EXPECT_EQ(schemas->add(uri, variantOf(static_cast<IUnknown*>(nullptr))), E_INVALIDARG);
    EXPECT_EQ(schemas->add(uri, variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(schemas->add(uri, variantOf(empty.get())), E_FAIL);
    EXPECT_EQ(schemas->addCollection(nullptr), E_INVALIDARG);
    EXPECT_EQ(schemas->get_length(nullptr), E_POINTER);
    EXPECT_EQ(schemas->get_namespaceURI(0, nullptr), E_POINTER);
    EXPECT_EQ(lengthOf(schemas.get()), 0);
}

TEST(SchemaCollection, RemembersWhetherToValidateOnLoad) {
    Schemas const schemas = newSchemas();
    VARIANT_BOOL validates = VARIANT_FALSE;
    EXPECT_EQ(schemas->get_validateOnLoad(&validates), S_OK);
    EXPECT_EQ(validates, VARIANT_TRUE);
    EXPECT_EQ(schemas->put_validateOnLoad(VARIANT_FALSE), S_OK);
    EXPECT_EQ(schemas->get_validateOnLoad(&validates), S_OK);
    EXPECT_EQ(validates, VARIANT_FALSE);
}

TEST(SchemaCollection, TakesOverAnother) {
    Schemas const schemas = schemasOf(intSchema);
    Schemas const others = schemasOf(otherSchema, L"urn:t");
    ASSERT_EQ(add(others, L"", L"" XSD "><xs:element name='b'/></xs:schema>"), S_OK);
    EXPECT_EQ(schemas->addCollection(others), S_OK);
    EXPECT_EQ(schemas->addCollection(schemas), S_OK);
    EXPECT_EQ(lengthOf(schemas.get()), 2);
    EXPECT_EQ(verdictOn(L"<b/>", schemas).result, S_OK);
    EXPECT_EQ(verdictOn(L"<a xmlns='urn:t'>1</a>", schemas).result, S_OK);
}

TEST(SchemaCollection, ImportsWhatItHasAlready) {
    wchar_t const* const importing =
        L"" XSD "xmlns:t='urn:t'><xs:import namespace='urn:t' schemaLocation='http://localhost/'/>"
        "<xs:element name='r'><xs:complexType><xs:sequence><xs:element ref='t:a'/></xs:sequence>"
        "</xs:complexType></xs:element></xs:schema>";
    Schemas const schemas = newSchemas();
    EXPECT_EQ(add(schemas, L"", importing), E_FAIL);
    ASSERT_EQ(add(schemas, L"urn:t", otherSchema), S_OK);
    ASSERT_EQ(add(schemas, L"", importing), S_OK) << takeErrorText();
    EXPECT_EQ(verdictOn(L"<r><a xmlns='urn:t'>1</a></r>", schemas).result, S_OK);
    EXPECT_EQ(verdictOn(L"<r><a xmlns='urn:t'>x</a></r>", schemas).result, S_FALSE);
}

TEST(Validation, TellsWhatIsWrong) {
    Schemas const schemas = schemasOf(intSchema);
    Verdict const valid = verdictOn(L"<a>1</a>", schemas);
    EXPECT_EQ(valid.result, S_OK);
    EXPECT_EQ(valid.code, 0);
    EXPECT_EQ(valid.reason, "");
    Verdict const invalid = verdictOn(L"<!--\n-->\n<a>x</a>", schemas);
    EXPECT_EQ(invalid.result, S_FALSE);
    EXPECT_NE(invalid.code, 0);
    EXPECT_EQ(invalid.line, 3);
    EXPECT_EQ(invalid.reason, "Element 'a': 'x' is not a valid value of the atomic type 'xs:int'.");
}

TEST(Validation, NeedsARootAndASchemaForIt) {
    constexpr auto noRoot = static_cast<LONG>(0xC00CE223);
    constexpr auto noSchema = static_cast<LONG>(0xC00CE224);
    Schemas const schemas = schemasOf(intSchema);
    Document const document = newDocument();
    EXPECT_EQ(verdictOf(document).code, noRoot);
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    EXPECT_EQ(verdictOf(document).code, noRoot);
    EXPECT_EQ(verdictOf(document).result, S_FALSE);
    EXPECT_EQ(verdictOn(L"<a xmlns='urn:t'>1</a>", schemas).code, noSchema);
    EXPECT_EQ(verdictOf(documentOf(L"<a>1</a>")).code, noSchema);
    EXPECT_EQ(document->validate(nullptr), E_POINTER);
}

TEST(Validation, SeesTheTreeAsItIs) {
    Schemas const schemas = schemasOf(intSchema);
    Document const document = documentOf(L"<a>1</a>");
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    EXPECT_EQ(verdictOf(document).result, S_OK);
    EXPECT_EQ(setText(nodeAt(document, L"a"), L"x"), S_OK);
    EXPECT_EQ(verdictOf(document).result, S_FALSE);
    EXPECT_TRUE(loadText(document, L"<a>2</a>"));
    EXPECT_EQ(verdictOf(document).result, S_OK);
}

TEST(Validation, SchemasCanBeAskedForAndTakenAway) {
    Schemas const schemas = schemasOf(intSchema);
    Document const document = documentOf(L"<a>1</a>");
    VARIANT value{};
    EXPECT_EQ(document->get_schemas(&value), S_FALSE);
    EXPECT_EQ(value.vt, VT_EMPTY);
    EXPECT_EQ(document->get_schemas(nullptr), E_POINTER);
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    ASSERT_EQ(document->get_schemas(&value), S_OK);
    EXPECT_TRUE(isSame(value.punkVal, schemas));
    value.punkVal->Release();
    EXPECT_EQ(document->putref_schemas(variantOf(document.get())), E_INVALIDARG);
    EXPECT_EQ(document->putref_schemas(variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(verdictOf(document).result, S_OK);
    EXPECT_EQ(document->putref_schemas(variantOf(static_cast<IUnknown*>(nullptr))), S_OK);
    EXPECT_EQ(document->get_schemas(&value), S_FALSE);
}

TEST(Validation, JoinsAdjacentTexts) {
    Schemas const schemas = schemasOf(intSchema);
    Document const document = documentOf(L"<a>1<!-- -->2<![CDATA[3]]><?p i?></a>");
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    EXPECT_EQ(verdictOf(document).result, S_OK);
    EXPECT_EQ(verdictOn(L"<a>1<!-- -->x</a>", schemas).reason,
              "Element 'a': '1x' is not a valid value of the atomic type 'xs:int'.");
}

TEST(Validation, GivesAllErrors) {
    Schemas const schemas = schemasOf(
        L"" XSD "><xs:element name='r'><xs:complexType><xs:sequence><xs:element name='a' "
        "type='xs:int' maxOccurs='9'/></xs:sequence></xs:complexType></xs:element></xs:schema>");
    Document const document = documentOf(L"<r>\n<a>x</a>\n<a>1</a>\n<a>y</a>\n</r>");
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    Ptr<IXMLDOMParseError> error;
    EXPECT_EQ(document->validate(error.out()), S_FALSE);
    Ptr<IXMLDOMParseErrorCollection> all;
    ASSERT_EQ(as<IXMLDOMParseError2>(error.get())->get_allErrors(all.out()), S_OK);
    error.reset();
    EXPECT_EQ(lengthOf(all.get()), 2);
    std::vector<LONG> lines;
    Ptr<IXMLDOMParseError2> item;
    while (all->get_next(item.out()) == S_OK)
        EXPECT_EQ(item->get_line(&lines.emplace_back()), S_OK);
    EXPECT_EQ(lines, (std::vector<LONG>{2, 4}));
    EXPECT_EQ(all->get_item(2, item.out()), S_FALSE);
    EXPECT_EQ(all->get_item(-1, item.out()), S_FALSE);
    EXPECT_EQ(all->reset(), S_OK);
    EXPECT_EQ(all->get_next(item.out()), S_OK);
}

TEST(Validation, WithoutErrorsTheCollectionIsEmpty) {
    Document const document = documentOf(L"<a/>");
    Ptr<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.out()), S_OK);
    Ptr<IXMLDOMParseErrorCollection> all;
    ASSERT_EQ(as<IXMLDOMParseError2>(error.get())->get_allErrors(all.out()), S_OK);
    EXPECT_EQ(lengthOf(all.get()), 0);
}

class InFolder : public TemporaryFolder {
protected:
    _bstr_t file(char const* name, std::string const& content) const {
        write(name, content);
        return _bstr_t{path(name).wstring().c_str()};
    }
};

TEST_F(InFolder, SchemasAreAddedByPath) {
    Schemas const schemas = newSchemas();
    _bstr_t const path = file("a.xsd", utf8(intSchema));
    EXPECT_EQ(schemas->add(_bstr_t{L""}, variantOf(path)), S_OK);
    EXPECT_EQ(verdictOn(L"<a>x</a>", schemas).result, S_FALSE);
    EXPECT_EQ(schemas->add(_bstr_t{L""}, variantOf(_bstr_t{L"/nowhere.xsd"})), E_FAIL);
    EXPECT_EQ(schemas->add(_bstr_t{L""}, variantOf(file("b.xsd", "<a>\n<b>"))), E_FAIL);
    EXPECT_NE(takeErrorText().find("b.xsd:2: "), std::string::npos);
}

TEST_F(InFolder, LinesAreThoseOfTheFileUntilTheDocumentChanges) {
    Schemas const schemas = schemasOf(intSchema);
    _bstr_t const path = file("a.xml", "<?xml version='1.0'?>\n\n\n<a\n\n>x</a>");
    Document const document = newDocument();
    VARIANT_BOOL done = VARIANT_FALSE;
    ASSERT_EQ(document->load(variantOf(path), &done), S_OK);
    ASSERT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
    EXPECT_EQ(verdictOf(document).line, 6);
    EXPECT_EQ(setText(nodeAt(document, L"a"), L"y"), S_OK);
    EXPECT_EQ(verdictOf(document).line, 2);
    ASSERT_EQ(document->load(variantOf(path), &done), S_OK);
    std::filesystem::remove(static_cast<wchar_t const*>(path));
    EXPECT_EQ(verdictOf(document).line, 2);
}

} // namespace tibxml::com::test
