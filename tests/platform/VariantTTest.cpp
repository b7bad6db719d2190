#include "CountedObject.h"

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Variant.h>

#include <gtest/gtest.h>

namespace {

template <class Raise>
HRESULT raisedBy(Raise raise) {
    try {
        raise();
    } catch (_com_error const& error) {
        return error.Error();
    }
    return S_OK;
}

TEST(VariantT, IsOfTheKindOfItsValue) {
    EXPECT_EQ(_variant_t{}.vt, VT_EMPTY);
    _variant_t const text{L"abc"};
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_STREQ(text.bstrVal, L"abc");
    _variant_t const all{static_cast<short>(-1)};
    EXPECT_EQ(all.vt, VT_I2);
    EXPECT_EQ(all.iVal, -1);
    _variant_t const flag{VARIANT_TRUE, VT_BOOL};
    EXPECT_EQ(flag.vt, VT_BOOL);
    EXPECT_EQ(flag.boolVal, VARIANT_TRUE);
    _variant_t const one{1};
    EXPECT_EQ(one.vt, VT_INT);
    EXPECT_EQ(one.intVal, 1);
    _variant_t const number{7, VT_I4};
    EXPECT_EQ(number.vt, VT_I4);
    EXPECT_EQ(number.lVal, 7);
    EXPECT_EQ(_variant_t{true}.boolVal, VARIANT_TRUE);
    EXPECT_EQ(_variant_t{false}.boolVal, VARIANT_FALSE);
    EXPECT_EQ(_variant_t{false}.vt, VT_BOOL);
}

TEST(VariantT, ANullStringStaysNull) {
    _variant_t const text{static_cast<wchar_t const*>(nullptr)};
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_EQ(text.bstrVal, nullptr);
}

TEST(VariantT, RefusesKindsThatANumberCannotBe) {
    EXPECT_EQ(raisedBy([] { _variant_t const number(static_cast<short>(1), VT_BSTR); }),
              E_INVALIDARG);
    EXPECT_EQ(raisedBy([] { _variant_t const number(1, VT_UNKNOWN); }), E_INVALIDARG);
}

TEST(VariantT, HoldsAReferenceToAnObject) {
    CountedObject object;
    {
        _variant_t const variant{&object};
        EXPECT_EQ(variant.vt, VT_UNKNOWN);
        EXPECT_EQ(object.references, 2u);
        auto const copy = variant; // NOLINT(performance-unnecessary-copy-initialization): tested
        EXPECT_EQ(object.references, 3u);
    }
    EXPECT_EQ(object.references, 1u);
    object.AddRef();
    { _variant_t const taking(&object, false); }
    EXPECT_EQ(object.references, 1u);
    { _variant_t const none{static_cast<IUnknown*>(nullptr)}; }
}

TEST(VariantT, CopiesAndMoves) {
    _variant_t text{L"abc"};
    _variant_t const copy{text};
    EXPECT_NE(copy.bstrVal, text.bstrVal);
    _variant_t moved{std::move(text)};
    EXPECT_EQ(text.vt, VT_EMPTY); // NOLINT(bugprone-use-after-move): promised
    EXPECT_STREQ(moved.bstrVal, L"abc");
    text = moved;
    EXPECT_STREQ(text.bstrVal, L"abc");
    text = _variant_t{5};
    EXPECT_EQ(text.intVal, 5);
    auto& same = moved;
    moved = std::move(same);
    EXPECT_STREQ(moved.bstrVal, L"abc");
    moved = same; // NOLINT(bugprone-use-after-move): moving onto itself keeps the content
    EXPECT_STREQ(moved.bstrVal, L"abc");
}

TEST(VariantT, ReceivesAndGivesAway) {
    _variant_t variant{L"old"};
    auto* const place = variant.GetAddress();
    EXPECT_EQ(place->vt, VT_EMPTY);
    place->vt = VT_BSTR;
    place->bstrVal = SysAllocString(L"new");
    auto content = variant.Detach();
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_STREQ(content.bstrVal, L"new");
    VariantClear(&content);
}

TEST(VariantT, RaisesWhatCannotBeCopiedOrCleared) {
    VARIANT unknown{};
    unknown.vt = 999;
    EXPECT_EQ(raisedBy([&] { _variant_t const copy(unknown); }), DISP_E_BADVARTYPE);
    _variant_t variant;
    variant.vt = 999;
    EXPECT_EQ(raisedBy([&] { variant.Clear(); }), DISP_E_BADVARTYPE);
    variant.vt = VT_EMPTY;
}

TEST(VariantT, GivesItsString) {
    EXPECT_STREQ(static_cast<_bstr_t>(_variant_t{L"abc"}), L"abc");
    EXPECT_TRUE(!static_cast<_bstr_t>(_variant_t{}));
    _variant_t null;
    null.vt = VT_NULL;
    EXPECT_TRUE(!static_cast<_bstr_t>(null));
    EXPECT_EQ(raisedBy([] { static_cast<void>(static_cast<_bstr_t>(_variant_t{1})); }),
              DISP_E_TYPEMISMATCH);
}

} // namespace
