// A validation takes memory for what is open, however large the document is.
#include "Objects.h"

#include <cstdint>
#include <functional>
#include <new>
#include <string>

#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <libxml/xmlmemory.h>
#include <tree/MemoryBlock.h>

#include "LiveBytes.h"
#include "TemporaryFolder.h"

namespace tibxml::com::test {

namespace {

constexpr int few = 100;
constexpr int many = 20'000;
constexpr std::int64_t slack = 4096; // a fraction of a byte for each of the many

std::wstring const schemaStart =
    L"<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' elementFormDefault='qualified'>";

using ItemText = std::function<std::wstring(int)>;

// What may stand in a list: the schema with the global element "list", and the items.
struct Items {
    char const* about;
    std::wstring schema;
    ItemText item;
};

std::wstring listOf(std::wstring const& content) {
    return L"<xs:element name='list'><xs:complexType>" + content +
           L"</xs:complexType></xs:element>";
}

std::wstring listWith(Items const& items, int count, std::wstring const& last = L"") {
    std::wstring text = L"<list>";
    for (int i = 0; i != count; ++i)
        text += items.item(i);
    return text + last + L"</list>";
}

std::wstring listsWith(Items const& items, int lists) {
    std::wstring text = L"<lists>";
    for (int i = 0; i != lists; ++i)
        text += listWith(items, few);
    return text + L"</lists>";
}

Ptr<IXMLDOMSchemaCollection2> schemasFor(std::wstring const& schema) {
    Ptr<IXMLDOMSchemaCollection2> schemas;
    void* made = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                               IID_IXMLDOMSchemaCollection2, &made),
              S_OK);
    *schemas.out() = static_cast<IXMLDOMSchemaCollection2*>(made);
    Document const document = documentOf((schemaStart + schema + L"</xs:schema>").c_str());
    EXPECT_EQ(schemas->add(_bstr_t{L""}, variantOf(document.get())), S_OK) << takeErrorText();
    return schemas;
}

// The peak of one validation above what was held before.
std::int64_t peakOf(IXMLDOMDocument2* document, HRESULT expected) {
    Ptr<IXMLDOMParseError> error;
    PeakOfBytes const peak;
    HRESULT const result = document->validate(error.out());
    std::int64_t const bytes = peak.above();
    EXPECT_EQ(result, expected);
    return bytes;
}

std::int64_t peakOf(std::wstring const& xml, IXMLDOMSchemaCollection2* schemas,
                    HRESULT expected = S_OK) {
    Document const document = documentOf(xml.c_str());
    EXPECT_EQ(document->putref_schemas(variantOf(schemas)), S_OK);
    return peakOf(document, expected);
}

std::wstring number(int i) {
    return std::to_wstring(i);
}

Items const plain{"numbers",
                  listOf(L"<xs:sequence><xs:element name='i' type='xs:int' maxOccurs='unbounded'/>"
                         L"</xs:sequence>"),
                  [](int i) { return L"<i>" + number(i) + L"</i>"; }};

wchar_t const* const invalid = L"<i>none</i>"; // among those

// The processor forgets the children that it has seen.
Items const forgotten[] = {
    plain,
    {"elements in elements with attributes",
     listOf(L"<xs:sequence><xs:element name='i' maxOccurs='unbounded'><xs:complexType>"
            L"<xs:sequence><xs:element name='name' type='xs:string'/>"
            L"<xs:element name='kind' minOccurs='0'><xs:simpleType>"
            L"<xs:restriction base='xs:token'><xs:enumeration value='a'/>"
            L"<xs:enumeration value='b'/></xs:restriction></xs:simpleType></xs:element>"
            L"</xs:sequence><xs:attribute name='id'/>"
            L"<xs:attribute name='at' type='xs:dateTime' default='2001-01-01T00:00:00'/>"
            L"</xs:complexType></xs:element></xs:sequence>"),
     [](int i) {
         return L"<i id='&amp;#38; " + number(i) + L"'><name>the name <![CDATA[&]]> number " +
                number(i) + L"</name><kind>a</kind></i>";
     }},
    {"a sequence",
     listOf(L"<xs:sequence maxOccurs='unbounded'><xs:element name='a'/><xs:element name='b' "
            L"minOccurs='0'/></xs:sequence>"),
     [](int i) { return std::wstring{i % 2 == 0 ? L"<a/>" : L"<b/>"}; }},
    {"mixed content",
     L"<xs:element name='list'><xs:complexType mixed='true'><xs:sequence>"
     L"<xs:element name='i' minOccurs='0' maxOccurs='unbounded'/></xs:sequence></xs:complexType>"
     L"</xs:element>",
     [](int i) { return L"a text of some length, number " + number(i) + L"<i/><!-- c -->"; }},
    {"types that the document names",
     L"<xs:complexType name='Base'/><xs:complexType name='More'><xs:complexContent>"
     L"<xs:extension base='Base'><xs:attribute name='a' type='xs:QName'/></xs:extension>"
     L"</xs:complexContent></xs:complexType>" +
         listOf(L"<xs:sequence><xs:element name='i' type='Base' maxOccurs='unbounded'/>"
                L"</xs:sequence>"),
     [](int i) {
         return L"<i xmlns:x='http://www.w3.org/2001/XMLSchema-instance' x:type='More' a='x:n" +
                number(i) + L"'/>";
     }},
};

// It remembers something of each child until the element ends.
Items const remembered[] = {
    {"a choice",
     listOf(L"<xs:choice maxOccurs='unbounded'><xs:element name='a' type='xs:date'/>"
            L"<xs:element name='b' type='xs:decimal'/></xs:choice>"),
     [](int i) { return i % 2 == 0 ? L"<a>2001-02-03</a>" : L"<b>" + number(i) + L".5</b>"; }},
    {"a bounded number",
     listOf(L"<xs:sequence><xs:element name='i' type='xs:int' minOccurs='0' maxOccurs='30000'/>"
            L"</xs:sequence>"),
     plain.item},
    {"anything at all",
     listOf(L"<xs:sequence><xs:any processContents='lax' maxOccurs='unbounded'/></xs:sequence>"),
     [](int i) { return L"<p:i xmlns:p='urn:p' p:a='" + number(i) + L"'><x/></p:i>"; }},
};

std::wstring const listOfLists =
    L"<xs:element name='lists'><xs:complexType><xs:sequence><xs:element ref='list' "
    L"maxOccurs='unbounded'/></xs:sequence></xs:complexType></xs:element>";

} // namespace

TEST(LiveBytes, SeeEveryRoad) {
    constexpr std::size_t size = 100'000;

    struct Road {
        char const* name;
        std::function<void()> use;
    } const roads[] = {
        {"new", [] { ::operator delete(::operator new(size)); }},
        {"malloc", [] { SysFreeString(SysAllocStringLen(nullptr, size)); }},
        {"libxml2", [] { xmlFree(xmlRealloc(xmlMalloc(1), size)); }},
        {"pages", [] { tree::MemoryBlock{2 * tree::largePage}; }}, // a single one would be kept
    };

    for (Road const& road : roads) {
        std::int64_t const before = liveBytes();
        PeakOfBytes const peak;
        road.use();
        EXPECT_GE(peak.above(), std::int64_t{size}) << road.name;
        EXPECT_EQ(liveBytes(), before) << road.name;
    }
}

TEST(ValidationMemory, IsTheSameForAnySize) {
    for (Items const& items : forgotten) {
        auto const schemas = schemasFor(items.schema);
        peakOf(listWith(items, few), schemas); // what is made once is made now
        std::int64_t const small = peakOf(listWith(items, few), schemas);
        EXPECT_GT(small, 0) << items.about;
        EXPECT_LE(peakOf(listWith(items, many), schemas), small + slack) << items.about;
    }
}

TEST(ValidationMemory, IsForTheChildrenOfOpenElementsWhereTheProcessorRemembersThem) {
    constexpr std::int64_t mostForEach = 128;
    for (Items const& items : remembered) {
        auto const schemas = schemasFor(items.schema + listOfLists);
        peakOf(listsWith(items, 1), schemas);
        std::int64_t const small = peakOf(listsWith(items, 1), schemas);
        EXPECT_LE(peakOf(listsWith(items, many / few), schemas), small + slack) << items.about;
        EXPECT_LE(peakOf(listWith(items, many), schemas), small + many * mostForEach)
            << items.about;
    }
}

// The lines of errors are looked for in the text that the document has now, in pieces that the
// smaller of these documents fills, too.
TEST(ValidationMemory, IsTheSameForAnySizeWhenTheLastElementIsInvalid) {
    auto const schemas = schemasFor(plain.schema);
    std::int64_t const small = peakOf(listWith(plain, many, invalid), schemas, S_FALSE);
    EXPECT_LE(peakOf(listWith(plain, 10 * many, invalid), schemas, S_FALSE), small + slack);
}

class ValidationMemoryOfFiles : public TemporaryFolder {
protected:
    std::int64_t peakOfFile(std::string const& name, IXMLDOMSchemaCollection2* schemas) const {
        _bstr_t const file{path(name).wstring().c_str()};
        Document const document = newDocument();
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(document->load(variantOf(file), &done), S_OK);
        EXPECT_EQ(document->putref_schemas(variantOf(schemas)), S_OK);
        return peakOf(document, S_FALSE);
    }
};

TEST_F(ValidationMemoryOfFiles, IsTheSameForAnySizeWhenTheLastElementIsInvalid) {
    auto const schemas = schemasFor(plain.schema);
    write("small.xml", utf8(listWith(plain, many, invalid)));
    write("large.xml", utf8(listWith(plain, 10 * many, invalid)));
    std::int64_t const small = peakOfFile("small.xml", schemas);
    EXPECT_LE(peakOfFile("large.xml", schemas), small + slack);
}

} // namespace tibxml::com::test
