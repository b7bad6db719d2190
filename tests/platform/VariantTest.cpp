#include "CountedObject.h"

#include <TibXml/platform/Variant.h>

#include <gtest/gtest.h>

namespace {

VARIANT variantOf(VARTYPE type) {
    VARIANT variant{};
    variant.vt = type;
    return variant;
}

VARIANT stringVariant(wchar_t const* text) {
    auto variant = variantOf(VT_BSTR);
    variant.bstrVal = SysAllocString(text);
    return variant;
}

TEST(Variant, InitIgnoresWhatWasThere) {
    VARIANT variant{};
    variant.vt = 0xABCD;
    VariantInit(&variant);
    EXPECT_EQ(variant.vt, VT_EMPTY);
}

TEST(Variant, ClearFreesStringsAndArrays) {
    auto text = stringVariant(L"abc");
    EXPECT_EQ(VariantClear(&text), S_OK);
    EXPECT_EQ(text.vt, VT_EMPTY);
    auto bytes = variantOf(VT_ARRAY | VT_UI1);
    bytes.parray = SafeArrayCreateVector(VT_UI1, 0, 100);
    EXPECT_EQ(VariantClear(&bytes), S_OK);
    EXPECT_EQ(bytes.vt, VT_EMPTY);
}

TEST(Variant, ClearReleasesObjects) {
    for (VARTYPE const type : {VT_UNKNOWN, VT_DISPATCH}) {
        CountedObject object;
        object.AddRef();
        auto variant = variantOf(type);
        variant.punkVal = &object;
        EXPECT_EQ(VariantClear(&variant), S_OK);
        EXPECT_EQ(object.references, 1u);
        EXPECT_EQ(variant.vt, VT_EMPTY);
    }
    auto none = variantOf(VT_UNKNOWN);
    EXPECT_EQ(VariantClear(&none), S_OK);
}

TEST(Variant, ClearLeavesWhatIsNotItsOwn) {
    auto* text = SysAllocString(L"abc");
    auto variant = variantOf(VT_BYREF | VT_BSTR);
    variant.pbstrVal = &text;
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_STREQ(text, L"abc");
    auto* array = SafeArrayCreateVector(VT_UI1, 0, 1);
    variant = variantOf(VT_BYREF | VT_ARRAY | VT_UI1);
    variant.pparray = &array;
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(SafeArrayGetDim(array), 1u);
    SafeArrayDestroy(array);
    SysFreeString(text);
}

TEST(Variant, ClearRefusesWhatItCannotClear) {
    EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
    auto unknown = variantOf(999);
    EXPECT_EQ(VariantClear(&unknown), DISP_E_BADVARTYPE);
    EXPECT_EQ(unknown.vt, 999);
    auto bytes = variantOf(VT_ARRAY | VT_UI1);
    bytes.parray = SafeArrayCreateVector(VT_UI1, 0, 1);
    void* elements = nullptr;
    SafeArrayAccessData(bytes.parray, &elements);
    EXPECT_EQ(VariantClear(&bytes), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(bytes.vt, VT_ARRAY | VT_UI1);
    SafeArrayUnaccessData(bytes.parray);
    EXPECT_EQ(VariantClear(&bytes), S_OK);
}

class VariantNumber : public testing::TestWithParam<VARTYPE> {};

TEST_P(VariantNumber, IsCopiedAndClearedWithItsKind) {
    auto source = variantOf(GetParam());
    source.dblVal = -1.5;
    auto target = stringVariant(L"old");
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(target.vt, GetParam());
    EXPECT_EQ(target.dblVal, -1.5);
    EXPECT_EQ(VariantClear(&target), S_OK);
    EXPECT_EQ(target.vt, VT_EMPTY);
}

INSTANTIATE_TEST_SUITE_P(Kinds, VariantNumber,
                         testing::Values(VT_EMPTY, VT_NULL, VT_I2, VT_I4, VT_INT, VT_R8, VT_BOOL,
                                         VT_ERROR, VT_UI1));

TEST(Variant, CopiesStringsNulsAndAll) {
    auto source = variantOf(VT_BSTR);
    source.bstrVal = SysAllocStringLen(L"a\0b", 3);
    VARIANT target{};
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_NE(target.bstrVal, source.bstrVal);
    EXPECT_EQ(SysStringLen(target.bstrVal), 3u);
    VariantClear(&source);
    EXPECT_EQ(target.bstrVal[2], L'b');
    VariantClear(&target);
}

TEST(Variant, CopiesNullStringsAndArraysAsNull) {
    VARIANT target{};
    auto source = variantOf(VT_BSTR);
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(target.vt, VT_BSTR);
    EXPECT_EQ(target.bstrVal, nullptr);
    source = variantOf(VT_ARRAY | VT_UI1);
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(target.parray, nullptr);
    EXPECT_EQ(VariantClear(&target), S_OK);
}

TEST(Variant, CopiesArrays) {
    auto source = variantOf(VT_ARRAY | VT_UI1);
    source.parray = SafeArrayCreateVector(VT_UI1, 0, 2);
    VARIANT target{};
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_NE(target.parray, source.parray);
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetUBound(target.parray, 1, &upper), S_OK);
    EXPECT_EQ(upper, 1);
    VariantClear(&source);
    VariantClear(&target);
}

TEST(Variant, CopyingAnObjectAddsAReference) {
    CountedObject object;
    auto source = variantOf(VT_UNKNOWN);
    source.punkVal = &object;
    VARIANT target{};
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(object.references, 2u);
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(object.references, 2u);
    VariantClear(&target);
    EXPECT_EQ(object.references, 1u);
}

TEST(Variant, CopyingOntoItselfDoesNothing) {
    auto variant = stringVariant(L"abc");
    auto* const before = variant.bstrVal;
    EXPECT_EQ(VariantCopy(&variant, &variant), S_OK);
    EXPECT_EQ(variant.bstrVal, before);
    VariantClear(&variant);
}

TEST(Variant, AFailedCopyLeavesTheTarget) {
    auto target = stringVariant(L"kept");
    auto const unknown = variantOf(999);
    EXPECT_EQ(VariantCopy(&target, &unknown), DISP_E_BADVARTYPE);
    EXPECT_STREQ(target.bstrVal, L"kept");
    EXPECT_EQ(VariantCopy(nullptr, &target), E_INVALIDARG);
    EXPECT_EQ(VariantCopy(&target, nullptr), E_INVALIDARG);
    VariantClear(&target);
    auto const text = stringVariant(L"new");
    auto locked = variantOf(VT_ARRAY | VT_UI1);
    locked.parray = SafeArrayCreateVector(VT_UI1, 0, 1);
    void* elements = nullptr;
    SafeArrayAccessData(locked.parray, &elements);
    EXPECT_EQ(VariantCopy(&locked, &text), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(locked.vt, VT_ARRAY | VT_UI1);
    SafeArrayUnaccessData(locked.parray);
    VariantClear(&locked);
    SysFreeString(text.bstrVal);
}

} // namespace
