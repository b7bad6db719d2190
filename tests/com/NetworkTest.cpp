// Loading and validating ask nothing of any network.
#include "Objects.h"

#include <string>

#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <UncalledServer.h>

#include "TemporaryFolder.h"

namespace tibxml::com::test {

namespace {

constexpr char const* intElement = "<xs:element name='a' type='xs:int'/>";

std::string schemaWith(std::string const& content) {
    return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>" + content + "</xs:schema>";
}

std::wstring wide(std::string const& ascii) {
    return {ascii.begin(), ascii.end()};
}

} // namespace

class Network : public TemporaryFolder {
protected:
    Network() {
        void* made = nullptr;
        EXPECT_EQ(CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                                   IID_IXMLDOMSchemaCollection2, &made),
                  S_OK);
        *schemas.out() = static_cast<IXMLDOMSchemaCollection2*>(made);
    }

    // Of a place on the server.
    std::string url(std::string const& scheme) const {
        return scheme + "://" + server.host() + "/a";
    }

    HRESULT addFile(std::string const& name, std::string const& schema) {
        write(name, schema);
        _bstr_t const file{path(name).wstring().c_str()};
        return schemas->add(_bstr_t{L""}, variantOf(file));
    }

    HRESULT addText(std::string const& schema, wchar_t const* uri = L"") {
        Document const document = documentOf(wide(schema).c_str());
        return schemas->add(_bstr_t{uri}, variantOf(document.get()));
    }

    HRESULT validate(std::string const& xml) {
        Document const document = documentOf(wide(xml).c_str());
        EXPECT_EQ(document->putref_schemas(variantOf(schemas.get())), S_OK);
        Ptr<IXMLDOMParseError> error;
        return document->validate(error.out());
    }

    UncalledServer const server;
    Ptr<IXMLDOMSchemaCollection2> schemas;
};

TEST_F(Network, DocumentsOfOtherMachinesAreNotLoaded) {
    for (std::string const scheme : {"http", "ftp", "HTTP", "https"}) {
        Document const document = newDocument();
        _bstr_t const place{wide(url(scheme)).c_str()};
        VARIANT_BOOL done = VARIANT_TRUE;
        EXPECT_EQ(document->load(variantOf(place), &done), S_FALSE) << scheme;
        EXPECT_EQ(done, VARIANT_FALSE) << scheme;
        EXPECT_EQ(schemas->add(_bstr_t{L""}, variantOf(place)), E_FAIL) << scheme;
        for (std::string const& text :
             {"<!DOCTYPE a SYSTEM '" + url(scheme) + "'><a/>",
              "<!DOCTYPE a [<!ENTITY e SYSTEM '" + url(scheme) + "'>]><a>&e;</a>",
              "<!DOCTYPE a [<!ENTITY % e SYSTEM '" + url(scheme) + "'>%e;]><a/>"})
            EXPECT_FALSE(loadText(document, wide(text).c_str())) << text;
        EXPECT_FALSE(server.wasCalled()) << scheme;
    }
}

TEST_F(Network, SchemasOfOtherMachinesMakeASchemaUnusable) {
    for (std::string const scheme : {"http", "ftp", "HTTP", "https"}) {
        std::string const place = " schemaLocation='" + url(scheme) + "'/>";
        for (std::string const& reference :
             {"<xs:include" + place, "<xs:redefine" + place, "<xs:import namespace='urn:t'" + place,
              "<xs:include schemaLocation='b.xsd' xml:base='" + url(scheme) + "'/>"}) {
            std::string const schema = schemaWith(reference + intElement);
            EXPECT_EQ(addText(schema), E_FAIL) << reference;
            EXPECT_EQ(addFile("direct.xsd", schema), E_FAIL) << reference;
            EXPECT_EQ(
                addFile("by way of.xsd", schemaWith("<xs:include schemaLocation='direct.xsd'/>")),
                E_FAIL)
                << reference;
            EXPECT_FALSE(server.wasCalled()) << reference;
        }
    }
    EXPECT_EQ(addText(schemaWith("<xs:include schemaLocation='//" + server.host() + "/a'/>")),
              E_FAIL);
    EXPECT_FALSE(server.wasCalled());
}

TEST_F(Network, AnImportMeansTheSchemaThatIsThereWhereverItSaysToBe) {
    std::string const known = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                              "targetNamespace='urn:t'><xs:element name='t' type='xs:int'/>"
                              "</xs:schema>";
    ASSERT_EQ(addText(known, L"urn:t"), S_OK);
    for (std::string const scheme : {"http", "ftp"}) {
        ASSERT_EQ(addText(schemaWith("<xs:import namespace='urn:t' schemaLocation='" + url(scheme) +
                                     "'/>" + intElement)),
                  S_OK);
        EXPECT_EQ(validate("<a>1</a>"), S_OK);
        EXPECT_EQ(validate("<t:t xmlns:t='urn:t'>1</t:t>"), S_OK);
        EXPECT_FALSE(server.wasCalled()) << scheme;
    }
}

TEST_F(Network, HintsOfDocumentsAreIgnored) {
    ASSERT_EQ(addText(schemaWith(std::string{intElement} +
                                 "<xs:element name='any'><xs:complexType><xs:sequence>"
                                 "<xs:any processContents='lax'/></xs:sequence></xs:complexType>"
                                 "</xs:element>")),
              S_OK);
    for (std::string const scheme : {"http", "ftp"}) {
        std::string const instance = " xmlns:i='http://www.w3.org/2001/XMLSchema-instance' ";
        std::string const none = instance + "i:noNamespaceSchemaLocation='" + url(scheme) + "'";
        std::string const other = instance + "i:schemaLocation='urn:t " + url(scheme) + "'";
        EXPECT_EQ(validate("<a" + none + ">1</a>"), S_OK);
        EXPECT_EQ(validate("<a" + none + ">x</a>"), S_FALSE);
        EXPECT_EQ(validate("<b" + none + "/>"), S_FALSE) << "it has no schema";
        EXPECT_EQ(validate("<a" + other + ">1</a>"), S_OK);
        EXPECT_EQ(validate("<any><t xmlns='urn:t'" + other + "/></any>"), S_OK);
        EXPECT_EQ(validate("<t xmlns='urn:t'" + other + "/>"), S_FALSE) << "it has no schema";
        EXPECT_FALSE(server.wasCalled()) << scheme;
    }
}

} // namespace tibxml::com::test
