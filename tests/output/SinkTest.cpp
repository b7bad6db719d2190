// How output arrives: in pieces of whole characters, and not after a failure.
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <TibXml/platform/Utf.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

class CheckingSink final : public Sink {
public:
    void write(std::string_view piece) override {
        EXPECT_FALSE(piece.empty());
        EXPECT_TRUE(platform::isValidUtf8(piece));
        all += piece;
        ++pieces;
    }

    std::string all;
    std::size_t pieces = 0;
};

class FullSink final : public Sink {
public:
    explicit FullSink(std::size_t pieces) noexcept : left_{pieces} {}

    void write(std::string_view) override {
        if (left_-- == 0) throw std::runtime_error{"full"};
    }

private:
    std::size_t left_;
};

Builder manyElements() {
    Builder b;
    Node* const root = b.element(b.top(), "\xC3\xA4");
    for (int i = 0; i < 20'000; ++i) {
        Node* const item = b.element(root, "\xE2\x82\xACx");
        b.attribute(item, "n", "\xF0\x9F\x98\x80" + std::to_string(i));
        b.text(item, "\xC3\xA9\xC3\xA9");
    }
    return b;
}

TEST(Sink, GetsWholeCharacters) {
    Builder const b = manyElements();
    CheckingSink sink;
    writeXml(*b.document(), b.top(), sink);
    EXPECT_GT(sink.pieces, 10U);
    EXPECT_EQ(sink.all, xml(b.document()));
}

TEST(Sink, GetsLongTextsWhole) {
    for (std::size_t const length : {16'380U, 16'384U, 16'390U, 1'000'000U}) {
        Builder b;
        Node* const root = b.element(b.top(), "r");
        std::string const text = std::string(length, 'a') + "\xE2\x82\xAC<" + std::string(20, 'b');
        b.text(root, text);
        b.attribute(root, "a", text);
        CheckingSink sink;
        writeXml(*b.document(), b.top(), sink);
        std::string const escaped =
            std::string(length, 'a') + "\xE2\x82\xAC&lt;" + std::string(20, 'b');
        std::string expected = "<r a=\"";
        expected.append(escaped).append("\">").append(escaped).append("</r>\n");
        EXPECT_EQ(sink.all, expected);
    }
}

TEST(Sink, ItsExceptionsReachTheCaller) {
    Builder const b = manyElements();
    for (std::size_t const pieces : {0U, 1U, 5U}) {
        FullSink sink{pieces};
        EXPECT_THROW(writeXml(*b.document(), b.top(), sink), std::runtime_error);
        FullSink fileSink{pieces};
        EXPECT_THROW(writeFile(*b.document(), fileSink), std::runtime_error);
    }
    EXPECT_EQ(xml(b.document()), file(b.document()));
}

TEST(Sink, StringsAreAppendedTo) {
    std::string text = "before ";
    Builder b;
    b.element(b.top(), "e");
    appendXml(*b.document(), b.top(), text);
    appendFile(*b.document(), text);
    EXPECT_EQ(text, "before <e/>\n<e/>\n");
}

} // namespace

} // namespace tibxml::output::test
