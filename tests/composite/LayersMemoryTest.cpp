// Every allocation of the two functions that never raise fails in turn.
#include "EngineTest.h"
#include "FailingAllocation.h"

namespace {

wchar_t const* const name = L"@an-attribute-whose-name-is-too-long-for-any-small-string";

class LayersMemory : public testing::Test {
protected:
    WXmlDoc defaults = loaded(L"<d><view/></d>");
    WXmlDoc user = loaded(L"<u/>");
    WXPath path{L"view"};
    CString attribute{name};
};

// Whether memory ran out in a use of a new object by the function.
template <class Use>
bool failsIn(WXmlCompositeNode const& view, std::size_t succeeding, Use const& use) {
    FailingAllocation const failing{succeeding};
    use(view);
    return failing.happened();
}

TEST_F(LayersMemory, ThatIsExhaustedMakesReadingFindNothing) {
    std::size_t succeeding = 0;
    while (failsIn({defaults, user, path}, succeeding, [&](WXmlCompositeNode const& view) {
        static_cast<void>(view.ReadableAttribute(attribute, false));
    }))
        ++succeeding;
    EXPECT_GT(succeeding, 2U);
}

TEST_F(LayersMemory, ThatIsExhaustedMakesWritingFindNoPlace) {
    std::size_t succeeding = 0;
    while (failsIn({defaults, user, path}, succeeding, [&](WXmlCompositeNode const& view) {
        static_cast<void>(view.WriteableAttribute(attribute));
    }))
        ++succeeding;
    EXPECT_GT(succeeding, 2U);
    WXmlCompositeNode const view{defaults, user, path};
    view.WriteableAttribute(attribute).SetInt(1);
    EXPECT_EQ(view.ReadableAttribute(attribute, false).GetInt(0), 1);
}

} // namespace
