// Validating a document by a schema in a file.
#include "EngineTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

#define XSD "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "

class DocumentValidation : public testing::Test {
protected:
    DocumentValidation() {
        std::string name = (std::filesystem::temp_directory_path() / "validation-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }

    ~DocumentValidation() override { std::filesystem::remove_all(folder_); }

    std::wstring file(char const* name, char const* content) const {
        std::ofstream{folder_ / name} << content;
        return (folder_ / name).wstring();
    }

    std::wstring schema() const {
        return file("a.xsd", XSD "><xs:element name='a' type='xs:int'/></xs:schema>");
    }

private:
    std::filesystem::path folder_;
};

TEST_F(DocumentValidation, TellsValidFromInvalidAndChangesNothing) {
    WXmlDoc document = loaded(L"<!-- c --><a>1</a>");
    CString const before = document.SaveToString();
    EXPECT_TRUE(document.Validate(schema().c_str()));
    EXPECT_EQ(document.SaveToString(), before);
    WXmlDoc other = loaded(L"<a>x</a>");
    EXPECT_FALSE(other.Validate(schema().c_str()));
    EXPECT_EQ(utf8(other.SaveToString().view()), "<a>x</a>\n");
}

TEST_F(DocumentValidation, SeesChanges) {
    WXmlDoc document = loaded(L"<a>1</a>");
    document.GetRootNode().Value().SetString(L"x");
    EXPECT_FALSE(document.Validate(schema().c_str()));
    document.GetRootNode().Value().SetString(L"2");
    EXPECT_TRUE(document.Validate(schema().c_str()));
}

TEST_F(DocumentValidation, TheSchemaHasToBeUsable) {
    WXmlDoc document = loaded(L"<a>1</a>");
    EXPECT_FALSE(document.Validate((schema() + L".gone").c_str()));
    EXPECT_FALSE(document.Validate(nullptr));
    EXPECT_FALSE(document.Validate(file("b.xsd", "<a>").c_str()));
    EXPECT_FALSE(document.Validate(file("b.xsd", "<a/>").c_str()));
    EXPECT_FALSE(document.Validate(
        file("b.xsd", XSD "><xs:element name='a' type='None'/></xs:schema>").c_str()));
    EXPECT_TRUE(document.Validate(schema().c_str()));
}

TEST_F(DocumentValidation, ATargetNamespaceIsRefusedEvenWhenItFits) {
    WXmlDoc document = loaded(L"<a xmlns='urn:t'>1</a>");
    char const* const text =
        XSD "targetNamespace='urn:t'><xs:element name='a' type='xs:int'/></xs:schema>";
    EXPECT_FALSE(document.Validate(file("t.xsd", text).c_str()));
    EXPECT_FALSE(document.Validate(schema().c_str())) << "a root in a namespace has no schema";
}

TEST_F(DocumentValidation, WhatIsIncludedIsFoundBesideTheSchema) {
    file("t.xsd", XSD "><xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"
                      "</xs:schema>");
    auto const path = file("a.xsd", XSD "><xs:include schemaLocation='t.xsd'/>"
                                        "<xs:element name='a' type='T'/></xs:schema>");
    EXPECT_TRUE(loaded(L"<a>1</a>").Validate(path.c_str()));
    EXPECT_FALSE(loaded(L"<a>x</a>").Validate(path.c_str()));
}

TEST_F(DocumentValidation, ThereMustBeADocumentWithARoot) {
    EXPECT_FALSE(WXmlDoc{}.Validate(schema().c_str()));
    WXmlDoc failed;
    EXPECT_FALSE(failed.LoadFromString(L"<a>"));
    EXPECT_FALSE(failed.Validate(schema().c_str()));
}

TEST_F(DocumentValidation, TheSchemaStaysUntilTheNextLoad) {
    WXmlDocPtr engine;
    {
        WXmlDoc const document = loaded(L"<a>1</a>");
        WXmlNode const root = document.GetRootNode();
        EXPECT_TRUE(WXmlDoc{document}.Validate(schema().c_str()));
        EXPECT_TRUE(WXmlDoc{document}.Validate(schema().c_str())) << "copies share the document";
    }
    WXmlDoc document = loaded(L"<a>1</a>");
    EXPECT_TRUE(document.Validate(schema().c_str()));
    EXPECT_TRUE(document.LoadFromString(L"<b/>"));
    EXPECT_FALSE(document.Validate(schema().c_str()));
}

} // namespace
