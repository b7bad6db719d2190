#include <xpath/xpath_stream.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using TinyXPath::token;
using TinyXPath::token_list;

std::vector<std::string> textsOf(token_list& list) {
    std::vector<std::string> texts;
    for (token const* read = list.first(); read != nullptr; read = list.next()) {
        texts.push_back(read->text);
    }
    return texts;
}

TEST(TokenList, IsEmptyAtFirst) {
    token_list list;
    EXPECT_EQ(list.cursor(), nullptr);
    EXPECT_EQ(list.next(), nullptr);
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.cursor(), nullptr);
}

TEST(TokenList, KeepsTheOrderOfAppending) {
    token_list list;
    list.append(28, "first", 5);
    list.append(6, "/", 1);
    list.append(28, "second", 6);
    EXPECT_EQ(textsOf(list), (std::vector<std::string>{"first", "/", "second"}));
}

TEST(TokenList, CopiesTheGivenBytesAndAddsAZero) {
    token_list list;
    std::string bytes = "name and more";
    list.append(28, bytes.data(), 4);
    bytes.assign("overwritten");
    token const* const read = list.first();
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->code, 28);
    EXPECT_STREQ(read->text.c_str(), "name");
}

TEST(TokenList, TokensMayBeEmpty) {
    token_list list;
    list.append(30, "", 0);
    ASSERT_NE(list.first(), nullptr);
    EXPECT_EQ(textsOf(list), std::vector<std::string>{""});
}

TEST(TokenList, CursorIsTheTokenToBeReadNext) {
    token_list list;
    list.append(28, "a", 1);
    list.append(28, "b", 1);
    EXPECT_EQ(list.cursor(), nullptr);
    ASSERT_NE(list.first(), nullptr);
    token const* const second = list.cursor();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->text, "b");
    EXPECT_EQ(list.next(), second);
    EXPECT_EQ(list.cursor(), nullptr);
    EXPECT_EQ(list.next(), nullptr);
}

TEST(TokenList, ReadingStopsAtTheFirstTokenOfCodeZero) {
    token_list list;
    list.append(28, "a", 1);
    list.append(0, "hidden", 6);
    list.append(28, "b", 1);
    EXPECT_EQ(textsOf(list), std::vector<std::string>{"a"});
}

TEST(TokenList, IsARingInBothDirections) {
    token_list list;
    list.append(28, "a", 1);
    list.append(28, "b", 1);
    token const* const a = list.first();
    token const* const b = list.next();
    token const* const sentinel = b->next;
    EXPECT_EQ(sentinel->code, 0);
    EXPECT_EQ(sentinel->text, "");
    EXPECT_EQ(sentinel->next, a);
    EXPECT_EQ(sentinel->previous, b);
    EXPECT_EQ(a->previous, sentinel);
    EXPECT_EQ(b->previous, a);
}

} // namespace
