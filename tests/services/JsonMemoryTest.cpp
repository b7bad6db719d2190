// Every allocation of a conversion fails in turn: it raises, or gives the whole value.
#include "EngineTest.h"
#include "FailingAllocation.h"

#include <TibXml/tibutils/Json.h>

#include <new>

namespace {

TEST(JsonMemory, ThatIsExhaustedRaisesAndLeavesNoPartOut) {
    WXmlDoc const document = loaded(
        L"<a b='1' an-attribute-with-a-long-name='a value that is too long for a small string'>"
        L"<c d='2'><e/>text</c><f/></a>");
    WXmlNode const root = document.GetRootNode();
    TibUtils::Variant whole;
    ASSERT_TRUE(JsonConvertFromXml(root, whole));
    std::string const expected = TibUtils::Json::Write(whole);
    EXPECT_NE(expected.find("\"e\""), std::string::npos);
    TibUtils::Variant value;
    for (std::size_t succeeding = 0;; ++succeeding) {
        bool done = false;
        bool failed = false;
        {
            FailingAllocation const failing{succeeding};
            try {
                done = JsonConvertFromXml(root, value);
            } catch (std::bad_alloc const&) {
                done = false;
            } catch (_com_error const& error) {
                done = error.Error() != E_OUTOFMEMORY;
            } catch (WXmlValueTypeNotFoundException const&) {
                done = false;
            }
            failed = failing.happened();
        }
        EXPECT_TRUE(done || failed) << succeeding;
        if (done) {
            EXPECT_EQ(TibUtils::Json::Write(value), expected) << succeeding;
        }
        if (!failed) break;
    }
}

} // namespace
