#include "Reading.h"

namespace tibxml::reader::test {

TEST(Namespaces, AreThoseOfElementsAndAttributes) {
    Reading const reading = readText(
        "<a xmlns='urn:d' xmlns:p='urn:p' b='1' p:b='2' xml:lang='en'><p:c/><d xmlns=''/></a>");
    tree::Node const* const a = reading.root();
    EXPECT_EQ(a->name->uri, "urn:d");
    tree::Node const* n = a->firstAttribute();
    EXPECT_EQ(n->name->uri, tree::xmlnsNamespace);
    EXPECT_TRUE(n->name->declaresNamespace);
    n = n->next->next;
    EXPECT_EQ(n->name->uri, "");
    EXPECT_EQ(n->next->name->uri, "urn:p");
    EXPECT_EQ(n->next->next->name->uri, tree::xmlNamespace);
    EXPECT_EQ(a->firstChild()->name->uri, "urn:p");
    EXPECT_EQ(a->firstChild()->name->prefix, "p");
    EXPECT_EQ(a->lastChild()->name->uri, "");
}

TEST(Namespaces, AreDeclaredAmongTheAttributesWhereTheyStand) {
    char const* const tags[] = {
        "<a b='1' xmlns='u' c='2' xmlns:p='v' p:d='3'>",
        "<a xmlns:p='v' b='1'>",
        "<a b='1' xmlns:p='v'>",
        "<a xmlns='u' xmlns:q='w' xmlns:p='v'>",
        "<a b='x=y xmlns:z' xmlns:p='v' c='/>'>",
        "<a xmlnsx='1' xmlns='u' xmlns-y='2'>",
    };
    for (char const* const tag : tags)
        EXPECT_EQ(shape(readText(std::string{tag} + "</a>")), std::string{tag} + "</>");
    EXPECT_EQ(shape(readText("<a\n b = \"it's\"\txmlns:p\r\n=\n'v' c='\"xmlns'/>")),
              "<a b='it's' xmlns:p='v' c='\"xmlns'></>");
}

TEST(Namespaces, KeepTheirPlaceInTagsOfEverySize) {
    for (int const count : {1, 10, 1000}) {
        std::string tag = "<a";
        for (int i = 0; i != count; ++i) {
            tag += " xmlns:p" + std::to_string(i) + "='urn:" + std::to_string(i) + "'";
            tag += " b" + std::to_string(i) + "='" + std::string(100, 'v') + "'";
        }
        tag += ">";
        EXPECT_EQ(shape(readText(tag + "</a>")), tag + "</>");
    }
}

TEST(Namespaces, KeepTheDeclarationOfXml) {
    std::string const declared = "xmlns:xml='http://www.w3.org/XML/1998/namespace'";

    struct Row {
        std::string xml;
        std::string shape;
    };

    Row const rows[] = {
        {"<a " + declared + " xmlns:q='u' b='1'/>", "<a " + declared + " xmlns:q='u' b='1'></>"},
        {"<a b='1' " + declared + " xmlns:q='u'/>", "<a b='1' " + declared + " xmlns:q='u'></>"},
        {"<a xmlns:q='u' b='1' " + declared + "/>", "<a xmlns:q='u' b='1' " + declared + "></>"},
        {"<a " + declared + " b='1'/>", "<a " + declared + " b='1'></>"},
        {"<a " + declared + "/>", "<a " + declared + "></>"},
        {"<a><b xmlns:xml\n=\t'&#104;ttp://www.w3.org/XML/1998/namespace' xml:lang='en'/></a>",
         "<a><b " + declared + " xml:lang='en'></></>"},
        {"<a b=' xmlns:xml='/>", "<a b=' xmlns:xml='></>"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(shape(readText(row.xml)), row.shape) << row.xml;
        for (std::size_t const step : {std::size_t{1}, std::size_t{13}, Bytes::never})
            EXPECT_EQ(shape(readBytes(Bytes{row.xml, step})), row.shape) << row.xml;
        std::string wide{"\xFF\xFE"};
        for (char const c : row.xml)
            wide.append({c, '\0'});
        EXPECT_EQ(shape(readBytes(Bytes{wide})), row.shape) << row.xml;
    }
}

// The declaration may be anywhere in what is read at once, and between two such pieces.
TEST(Namespaces, KeepTheDeclarationOfXmlWhereverItStands) {
    for (std::size_t length = 3950; length != 4150; ++length) {
        std::string const text(length, 'x');
        Reading const reading = readBytes(
            Bytes{"<a>" + text + "<b xmlns:xml='http://www.w3.org/XML/1998/namespace'/></a>"});
        tree::Node const* const b = reading.root()->lastChild();
        ASSERT_NE(b->firstAttribute(), nullptr) << length;
        EXPECT_EQ(b->firstAttribute()->name->qualified, "xmlns:xml");
    }
}

TEST(Namespaces, MayBeAnyText) {
    for (char const* const uri : {"relative", "a b", "urn:\u00E4", "%zz", "::", "http://[x"}) {
        Reading const reading = readText("<p:a xmlns:p='" + std::string{uri} + "'/>");
        EXPECT_TRUE(reading.done) << uri << ": " << reading.error.reason;
        EXPECT_EQ(reading.root()->name->uri, uri);
    }
    EXPECT_EQ(readText("<a xmlns='x&amp;y&lt;'/>").root()->name->uri, "x&y<");
}

TEST(Namespaces, HaveToBeRight) {
    char const* const rows[] = {
        "<p:a/>",
        "<a p:b='1'/>",
        "<a><b xmlns:p='u'/><p:c/></a>",
        "<a xmlns:p=''/>",
        "<a xmlns:p='' xmlns:q='u' b='1'/>",
        "<a b='1' xmlns:p='' c='2' xmlns:q='u'/>",
        "<a xmlns:xml='urn:other' xmlns:q='u' b='1'/>",
        "<a xmlns:p='http://www.w3.org/XML/1998/namespace' xmlns:q='u' b='1'/>",
        "<a xmlns='http://www.w3.org/XML/1998/namespace'/>",
        "<a xmlns:xmlns='urn:x'/>",
        "<a xmlns='http://www.w3.org/2000/xmlns/'/>",
        "<a xmlns:p='http://www.w3.org/2000/xmlns/'/>",
        "<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>",
        "<a xmlns:p='u' xmlns:p='v' b='1'/>",
        "<a xmlns='u' xmlns='v'/>",
        "<a b='1' b='2'/>",
        "<a:b:c xmlns:a='u'/>",
        "<:a/>",
        "<a: xmlns:a='u'/>",
        "<a :b='1'/>",
        "<a><?p:q x?></a>",
        "<xmlns:a/>",
    };
    for (char const* const xml : rows)
        expectFailure(readText(xml), xml);
}

} // namespace tibxml::reader::test
