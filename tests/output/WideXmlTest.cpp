// The wide text of nodes, short and long.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <TibXml/platform/Utf.h>
#include <output/Serializer.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

std::wstring wide(Builder const& b, Node const* node) {
    BSTR const text = xmlAsBstr(*b.document(), node);
    EXPECT_NE(text, nullptr);
    std::wstring result{text, SysStringLen(text)};
    EXPECT_EQ(text[result.size()], L'\0');
    SysFreeString(text);
    return result;
}

std::wstring widened(std::string_view utf8) {
    std::wstring out;
    EXPECT_TRUE(platform::appendWide(out, utf8));
    return out;
}

TEST(WideXml, EmptyDocumentIsAnEmptyString) {
    Builder b;
    EXPECT_EQ(wide(b, b.top()), L"");
}

TEST(WideXml, IsTheTextInWideCharacters) {
    Builder b;
    Node* const root = b.element(b.top(), "r\xC3\xA9");
    b.attribute(root, "a", "\xF0\x9F\x98\x80");
    b.text(root, "a<\xE2\x82\xAC");
    EXPECT_EQ(wide(b, b.top()), L"<r\x00E9 a=\"\x0001F600\">a&lt;\x20AC</r\x00E9>\n");
}

TEST(WideXml, LongTextsToo) {
    for (std::size_t const length : {16'000U, 65'000U, 200'000U, 5'000'000U}) {
        Builder b;
        Node* const root = b.element(b.top(), "r");
        for (int i = 0; i < 10; ++i) {
            b.text(b.element(root, "e"), std::string(length / 10, 'x') + "\xE2\x82\xAC");
        }
        EXPECT_EQ(wide(b, b.top()), widened(xml(b.document())));
        EXPECT_EQ(wide(b, root), widened(xml(b.document(), root)));
    }
}

} // namespace

} // namespace tibxml::output::test
