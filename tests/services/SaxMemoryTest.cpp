// Every allocation of a parse fails in turn: the parse then answers false or raises, or reports the
// whole document, and the object can be used again.
#include "EngineTest.h"
#include "FailingAllocation.h"

#include <new>

namespace {

constexpr wchar_t const* sample =
    L"<a xmlns:p='urn:a-namespace-too-long-for-any-small-string' b='a value'><p:c/>text \u00E4</a>";

class SaxMemory : public testing::Test {
protected:
    SaxMemory() {
        sax.OnStartElement.Bind(start);
        sax.OnCharacters.Bind(characters);
    }

    bool parse() {
        elements = 0;
        return sax.ParseString(sample) && elements == 2;
    }

    WXmlSax sax;
    int elements = 0;
    int pieces = 0;

private:
    struct {
        SaxMemory& test;

        bool operator()(WXmlSaxText const*, std::vector<WXmlSaxAttribute> const*) const {
            return ++test.elements > 0;
        }
    } start{*this};

    struct {
        SaxMemory& test;

        bool operator()(WXmlSaxText const*) const { return ++test.pieces > 0; }
    } characters{*this};
};

TEST_F(SaxMemory, ThatIsExhaustedFailsOrRaises) {
    failEveryAllocation(10, [&](auto const& failing) {
        try {
            return parse() || failing.happened();
        } catch (std::bad_alloc const&) {
            return failing.happened();
        } catch (_com_error const& error) {
            return failing.happened() && error.Error() == E_OUTOFMEMORY;
        }
    });
    EXPECT_TRUE(parse());
}

TEST_F(SaxMemory, IsNotTakenForEveryElement) {
    std::wstring few = L"<a>";
    for (int i = 0; i != 10; ++i)
        few += L"<b c='1' d='2'>text</b>";
    std::wstring many = few;
    for (int i = 0; i != 1000; ++i)
        many += L"<b c='1' d='2'>text</b>";
    few += L"</a>";
    many += L"</a>";
    EXPECT_TRUE(sax.ParseString(few.c_str()));
    auto const allocations = [&](std::wstring const& xml) {
        std::size_t count = 0;
        failEveryAllocation(1, [&](auto const& failing) {
            ++count;
            try {
                return sax.ParseString(xml.c_str()) || failing.happened();
            } catch (...) {
                return failing.happened();
            }
        });
        return count;
    };
    EXPECT_LT(allocations(many), allocations(few) + 50);
}

} // namespace
