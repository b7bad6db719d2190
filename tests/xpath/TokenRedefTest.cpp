#include <xpath/xpath_stream.h>

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

namespace {

using TinyXPath::token_redef;
using TinyXPath::token_syntax_decoder;
using TinyXPath::xpath_stream;

class RecordingStream : public xpath_stream {
public:
    using xpath_stream::xpath_stream;

    void action(int rule, int alternative, int parts, int detail) override {
        actions.push_back({rule, alternative, parts, detail});
    }

    int question(int rule, int alternative, int parts, int detail) override {
        questions.push_back({rule, alternative, parts, detail});
        return 42;
    }

    std::vector<std::vector<int>> actions;
    std::vector<std::vector<int>> questions;
};

TEST(TokenRedef, HandsActionsOnToItsStreamWithAFourthArgumentOfZero) {
    RecordingStream stream{std::string_view{}};
    token_redef redef(stream);
    token_syntax_decoder& decoder = redef;
    decoder.action(1, 2, 3);
    EXPECT_EQ(stream.actions, (std::vector<std::vector<int>>{{1, 2, 3, 0}}));
    EXPECT_TRUE(stream.questions.empty());
}

TEST(TokenRedef, HandsQuestionsOnAndTheAnswerBack) {
    RecordingStream stream{std::string_view{}};
    token_redef redef(stream);
    token_syntax_decoder& decoder = redef;
    EXPECT_EQ(decoder.question(4, 5, 6), 42);
    EXPECT_EQ(stream.questions, (std::vector<std::vector<int>>{{4, 5, 6, 0}}));
    EXPECT_TRUE(stream.actions.empty());
}

TEST(XPathStream, LexingCallsNoActions) {
    RecordingStream stream("a/b[@x='1']");
    stream.adopt(std::make_unique<token_redef>(stream));
    stream.lex();
    EXPECT_NE(stream.tokens().first(), nullptr);
    EXPECT_TRUE(stream.actions.empty());
    EXPECT_TRUE(stream.questions.empty());
}

TEST(XPathStream, DestroysItsTokenListThroughItsBase) {
    struct Counting : TinyXPath::token_list {
        explicit Counting(int& destroyed) : count(destroyed) {}

        ~Counting() override { ++count; }

        int& count;
    };

    int destroyed = 0;
    std::unique_ptr<xpath_stream> stream = std::make_unique<RecordingStream>(std::string_view{"a"});
    stream->adopt(std::make_unique<Counting>(destroyed));
    stream->lex();
    stream.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(ParseToXPathElements, IgnoresActionsAndAnswersZero) {
    ParseToXPathElements stream("a");
    stream.lex();
    stream.action(1, 2, 3, 4);
    EXPECT_EQ(stream.question(1, 2, 3, 4), 0);
    ASSERT_NE(stream.tokens().first(), nullptr);
    EXPECT_EQ(stream.tokens().next(), nullptr);
}

} // namespace
