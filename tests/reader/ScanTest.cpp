// The operations on blocks of text: the processor's own against the plain ones, and both against
// what one byte after the other says.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <TibXml/platform/Utf.h>
#include <reader/CharacterScan.h>

namespace tibxml::reader::test {

namespace {

using Bytes16 = std::array<char, blockSize>;

// Every byte value at every place of a block, among others that differ from it.
std::vector<Bytes16> blocks() {
    std::vector<Bytes16> all;
    std::mt19937 random{17};
    for (int value = 0; value != 256; ++value) {
        for (std::size_t place = 0; place != blockSize; ++place) {
            Bytes16 bytes{};
            for (char& byte : bytes)
                byte = static_cast<char>(random());
            bytes[place] = static_cast<char>(value);
            all.push_back(bytes);
        }
    }
    return all;
}

template <class Mask>
void expectBits(Mask mask, unsigned bits, char const* what) {
    ASSERT_EQ(mask.bits(), bits) << what;
    ASSERT_EQ(mask.first(), static_cast<unsigned>(std::countr_zero(bits | 0x10000U))) << what;
    ASSERT_EQ(mask.leading(), static_cast<unsigned>(std::countr_one(bits))) << what;
}

template <class Condition>
unsigned bitsOf(Bytes16 const& bytes, Condition condition) {
    unsigned bits = 0;
    for (std::size_t i = 0; i != blockSize; ++i)
        bits |= static_cast<unsigned>(condition(static_cast<signed char>(bytes[i]))) << i;
    return bits;
}

template <class Block>
void expectEveryOperation() {
    for (Bytes16 const& bytes : blocks()) {
        Block const block = Block::at(bytes.data());
        expectBits(block.equal('<'), bitsOf(bytes, [](int c) { return c == '<'; }), "equal");
        expectBits(block.equal('\xEE'), bitsOf(bytes, [](int c) { return c == -18; }), "beyond");
        expectBits(block.below(' '), bitsOf(bytes, [](int c) { return c < ' '; }), "below");
        auto const letters = [](int c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
        expectBits(block.letters(), bitsOf(bytes, letters), "letters");
        auto const digits = [](int c) { return c >= '0' && c <= ':'; };
        expectBits(block.between('0', ':'), bitsOf(bytes, digits), "between");
        auto const leads = [](int c) { return c >= -62 && c <= -33; };
        expectBits(block.between('\xC2', '\xDF'), bitsOf(bytes, leads), "between, beyond ASCII");
        expectBits(block.equal(block), 0xFFFFU, "itself");
        expectBits(block.equal('a').inverted(), bitsOf(bytes, [](int c) { return c != 'a'; }),
                   "inverted");
        expectBits(block.below(' ').without(block.equal('\n')) | block.equal('x'),
                   bitsOf(bytes, [](int c) { return (c < ' ' && c != '\n') || c == 'x'; }),
                   "without and or");
    }
}

// A text with a block of something else after it, which must not count.
class Padded {
public:
    explicit Padded(std::string text, char after) : text_{std::move(text)} {
        size_ = text_.size();
        text_.append(blockSize, after);
    }

    char const* begin() const { return text_.data(); }

    char const* end() const { return text_.data() + size_; }

private:
    std::string text_;
    std::size_t size_;
};

bool isAllowed(char32_t code) {
    return code >= ' ' ? code != 0xFFFE && code != 0xFFFF : code == '\t' || code == '\n';
}

// Where text ends, one character after the other.
std::size_t textStop(std::string_view text) {
    std::size_t at = 0;
    while (at != text.size()) {
        auto const [code, length] = platform::firstUtf8Character(text.substr(at));
        if (length == 0 || !isAllowed(code)) break;
        if (code == '<' || code == '&' || code == ']') break;
        at += length;
    }
    return at;
}

constexpr std::string_view pieces[] = {
    "a", "text ", "\n\t", "<", "&", "]", "\r", "\x01",
    // Characters of two, three and four bytes, at the ends of what is allowed.
    "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xE1\x80\x80", "\xEC\xBF\xBF", "\xED\x9F\xBF",
    "\xEE\x80\x80", "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xE6\x97\xA5",
    // And what is none.
    "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xE0\x9F\xBF", "\xE1\x80", "\xED\xA0\x80",
    "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
    "\xFF"};

std::string randomText(std::mt19937& random) {
    std::string text;
    // Mostly what is allowed: a text that ends at once says little of the blocks after it.
    std::size_t const length = random() % 24;
    for (std::size_t i = 0; i != length; ++i) {
        bool const isPlain = random() % 16 != 0;
        std::size_t const choice = isPlain ? random() % 14 : random() % std::size(pieces);
        text += isPlain && choice >= 3 ? pieces[8 + choice - 3] : pieces[choice];
    }
    return text;
}

template <class Block>
void expectTextStops() {
    std::mt19937 random{99};
    for (int i = 0; i != 200'000; ++i) {
        std::string const text = randomText(random);
        Padded const padded{text, i % 2 == 0 ? '\0' : '\x80'};
        ASSERT_EQ(findTextStop<Block>(padded.begin(), padded.end()) - padded.begin(),
                  static_cast<std::ptrdiff_t>(textStop(text)))
            << testing::PrintToString(text);
    }
}

template <class Block>
void expectEveryPairOfBytes() {
    for (unsigned first = 0x80; first != 0x100; ++first) {
        for (unsigned second = 0; second != 0x100; ++second) {
            for (std::size_t const before : {0U, 1U, 13U, 14U, 15U}) {
                std::string text(before, 'a');
                text += static_cast<char>(first);
                text += static_cast<char>(second);
                text += "\x80zzzzzzzzzzzzzzzzzzzz";
                Padded const padded{text, 'z'};
                ASSERT_EQ(findTextStop<Block>(padded.begin(), padded.end()) - padded.begin(),
                          static_cast<std::ptrdiff_t>(textStop(text)))
                    << first << ' ' << second << ' ' << before;
            }
        }
    }
}

} // namespace

TEST(Blocks, OfTheProcessorDoAsTheirBytesSay) {
    expectEveryOperation<NativeBlock>();
}

TEST(Blocks, ThatArePlainDoAsTheirBytesSay) {
    expectEveryOperation<PlainBlock>();
}

TEST(Scans, EndWhereTheFirstCharacterIsNotPlain) {
    expectTextStops<NativeBlock>();
    expectTextStops<PlainBlock>();
}

TEST(Scans, DecideForEveryPairOfBytes) {
    expectEveryPairOfBytes<NativeBlock>();
    expectEveryPairOfBytes<PlainBlock>();
}

TEST(Scans, FindTheEndOfValuesNamesAndWhiteSpace) {
    Padded const value{"a'b\xC3\xBC long enough for two blocks\" rest", '"'};
    EXPECT_EQ(*findValueStop<'"'>(value.begin(), value.end()), '"');
    EXPECT_EQ(findValueStop(value.begin(), value.end(), '\'') - value.begin(), 1);
    Padded const unquoted{"open", '"'};
    EXPECT_EQ(findValueStop(unquoted.begin(), unquoted.end(), '"'), unquoted.end());
    Padded const name{"a-very.long_name:of\xC3\xA4words=", 'a'};
    EXPECT_EQ(*findNameEnd(name.begin(), name.end()), '=');
    Padded const whole{"name", 'a'};
    EXPECT_EQ(findNameEnd(whole.begin(), whole.end()), whole.end());
    Padded const blanks{" \t\r\n                     \n<", ' '};
    EXPECT_EQ(*findBlankEnd(blanks.begin(), blanks.end()), '<');
    Padded const allBlank{"   ", ' '};
    EXPECT_EQ(findBlankEnd(allBlank.begin(), allBlank.end()), allBlank.end());
}

} // namespace tibxml::reader::test
