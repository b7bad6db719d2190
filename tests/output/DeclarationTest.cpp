// The XML declaration in wide text and in files.
#include <string>

#include <gtest/gtest.h>

#include <output/Serializer.h>

#include "Fixture.h"

namespace tibxml::output::test {

namespace {

struct Row {
    char const* content; // of the declaration in the tree
    char const* inText;
    char const* encoding;
};

constexpr Row rows[] = {
    {"version=\"1.0\"", "version=\"1.0\"", ""},
    {"version=\"1.0\" encoding=\"UTF-8\"", "version=\"1.0\"", "UTF-8"},
    {"version=\"1.0\" encoding=\"utf-8\"", "version=\"1.0\"", "utf-8"},
    {"version='1.0' encoding='ISO-8859-1'", "version='1.0'", "ISO-8859-1"},
    {"version=\"1.0\" encoding=\"UTF-16\"", "version=\"1.0\" encoding=\"UTF-16\"", "UTF-16"},
    {"version=\"1.0\" encoding='utf-16'", "version=\"1.0\" encoding='utf-16'", "utf-16"},
    {"version=\"1.0\" encoding=\"UTF-16LE\"", "version=\"1.0\"", "UTF-16LE"},
    {"version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"", "version=\"1.0\" standalone=\"yes\"",
     "UTF-8"},
    {"version=\"1.0\" standalone=\"no\"", "version=\"1.0\" standalone=\"no\"", ""},
    {"version = \"1.0\"\n\tencoding\t=\n'UTF-8'", "version = \"1.0\"", "UTF-8"},
    {"version=\"1.0\" encoding=UTF-8", "version=\"1.0\" encoding=UTF-8", ""},
    {"version=\"1.0\" encoding=\"UTF-8", "version=\"1.0\" encoding=\"UTF-8", ""},
    {"version=\"1.0\" encoding", "version=\"1.0\" encoding", ""},
    {"version=\"1.0\" encoding=", "version=\"1.0\" encoding=", ""},
    {"version=\"encoding='x'\"", "version=\"encoding='x'\"", ""},
    {"", "", ""},
};

std::string declarationOf(std::string const& text) {
    std::string const start = "<?xml ";
    EXPECT_EQ(text.substr(0, start.size()), start);
    return text.substr(start.size(), text.find("?>") - start.size());
}

TEST(Declaration, LosesItsEncodingInTextOnly) {
    for (auto const& [content, inText, encoding] : rows) {
        Builder b;
        b.data(b.top(), tree::NodeKind::declaration, content);
        b.element(b.top(), "e");
        EXPECT_EQ(declarationOf(xml(b.document())), inText);
        EXPECT_EQ(declaredEncoding(*b.document()), encoding);
        std::string const name = encoding;
        if (name.empty() || name == "UTF-8") {
            EXPECT_EQ(declarationOf(file(b.document())), content);
        }
    }
}

TEST(Declaration, NoneInNoneOut) {
    auto const document = parse("<e/>");
    EXPECT_EQ(declaredEncoding(*document), "");
    EXPECT_EQ(file(document), "<e/>\n");
}

TEST(Declaration, EmptyDocumentDeclaresNothing) {
    EXPECT_EQ(declaredEncoding(*Builder{}.document()), "");
}

} // namespace

} // namespace tibxml::output::test
