// The DocBook stylesheets that Debian ships, over 100 files that import each other, on a small
// book.
#include "Transforming.h"

#include <filesystem>

namespace transforming {

namespace {

constexpr char const* stylesheets = "/usr/share/xml/docbook/stylesheet/docbook-xsl";

constexpr char const* book = R"(<book lang="en" id="top">
<bookinfo><title>A small book</title><author><firstname>Ada</firstname><surname>L</surname></author>
</bookinfo>
<chapter id="one"><title>Lists</title><para>Some <emphasis>text</emphasis>, see
<xref linkend="two"/>.</para>
<itemizedlist><listitem><para>first</para></listitem><listitem><para>second</para></listitem>
</itemizedlist>
<programlisting>int  main() {
    return 0; &lt;
}</programlisting></chapter>
<chapter id="two"><title>Tables</title>
<table><title>T</title><tgroup cols="2"><tbody><row><entry>a</entry><entry>b</entry></row></tbody>
</tgroup></table>
<section><title>Inside</title><para>Text<footnote><para>A note</para></footnote>
<literal>code</literal>.</para></section></chapter>
</book>
)";

struct Style {
    char const* name;
    char const* path;
};

class Docbook : public testing::TestWithParam<Style> {};

// The files themselves have document types, so a stylesheet of our own imports them. It asks for
// XML, whose text and tree are the same thing.
TEST_P(Docbook, GivesTheSameTree) {
    std::string const imported = std::string{stylesheets} + GetParam().path;
    ASSERT_TRUE(std::filesystem::exists(imported)) << "scripts/setup installs docbook-xsl";
    Folder const folder;
    std::string const sheet = folder.write(
        "driver.xsl", stylesheet("<xsl:import href='" + imported +
                                 "'/><xsl:output method='xml' indent='no' encoding='UTF-8' "
                                 "doctype-public='' doctype-system=''/>"));
    std::string const document = folder.write("book.xml", book);
    std::string const expected = xsltproc(sheet, document);
    EXPECT_EQ(ours(sheet, document), expected);
    EXPECT_GT(expected.size(), 2000U) << expected;
}

INSTANTIATE_TEST_SUITE_P(Styles, Docbook,
                         testing::Values(Style{"Xhtml", "/xhtml/docbook.xsl"},
                                         Style{"Html", "/html/docbook.xsl"},
                                         Style{"Fo", "/fo/docbook.xsl"}),
                         [](auto const& tested) { return std::string{tested.param.name}; });

} // namespace

} // namespace transforming
