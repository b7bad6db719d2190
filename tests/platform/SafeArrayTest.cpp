#include <TibXml/platform/SafeArray.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

void* elementsOf(SAFEARRAY* array) {
    void* elements = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &elements), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    return elements;
}

TEST(SafeArray, AVectorKnowsItsBoundsAndType) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 5, 3);
    LONG lower = 0;
    LONG upper = 0;
    VARTYPE type = 0;
    EXPECT_EQ(SafeArrayGetDim(array), 1u);
    EXPECT_EQ(SafeArrayGetElemsize(array), 1u);
    EXPECT_EQ(SafeArrayGetLBound(array, 1, &lower), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &upper), S_OK);
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(lower, 5);
    EXPECT_EQ(upper, 7);
    EXPECT_EQ(type, VT_UI1);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, AnEmptyVectorEndsBeforeItBegins) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 0, 0);
    LONG upper = 0;
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &upper), S_OK);
    EXPECT_EQ(upper, -1);
    EXPECT_NE(elementsOf(array), nullptr);
    SafeArrayDestroy(array);
}

TEST(SafeArray, BeginsWithZeros) {
    auto* const array = SafeArrayCreateVector(VT_I4, 0, 4);
    LONG const zeros[4] = {};
    EXPECT_EQ(std::memcmp(elementsOf(array), zeros, sizeof zeros), 0);
    SafeArrayDestroy(array);
}

TEST(SafeArray, KeepsSeveralDimensions) {
    SAFEARRAYBOUND const bounds[] = {{2, 0}, {3, -1}};
    auto* const array = SafeArrayCreate(VT_I2, 2, bounds);
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetDim(array), 2u);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
    EXPECT_EQ(bound, 1);
    EXPECT_EQ(SafeArrayGetLBound(array, 2, &bound), S_OK);
    EXPECT_EQ(bound, -1);
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &bound), S_OK);
    EXPECT_EQ(bound, 1);
    std::memset(elementsOf(array), 0x55, 6 * sizeof(SHORT));
    SafeArrayDestroy(array);
}

struct ElementCase {
    VARTYPE type;
    UINT size;
};

TEST(SafeArray, KnowsTheSizeOfEveryElementType) {
    ElementCase const cases[] = {{VT_UI1, 1}, {VT_I2, 2},    {VT_BOOL, 2}, {VT_I4, 4},
                                 {VT_INT, 4}, {VT_ERROR, 4}, {VT_R8, 8}};
    for (auto const& [type, size] : cases) {
        auto* const array = SafeArrayCreateVector(type, 0, 1);
        EXPECT_EQ(SafeArrayGetElemsize(array), size) << type;
        SafeArrayDestroy(array);
    }
}

TEST(SafeArray, CannotBeMadeOfAnythingElse) {
    SAFEARRAYBOUND const bound{1, 0};
    SAFEARRAYBOUND const huge[] = {{0x80000000u, 0}, {0x80000000u, 0}};
    EXPECT_EQ(SafeArrayCreateVector(VT_BSTR, 0, 1), nullptr);
    EXPECT_EQ(SafeArrayCreateVector(VT_EMPTY, 0, 1), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 0, &bound), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 1, nullptr), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 0x10000, &bound), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 2, huge), nullptr);
    EXPECT_EQ(SafeArrayCreateVector(VT_R8, 0, 0xFFFFFFFFu), nullptr);
}

TEST(SafeArray, CannotGoWhileItIsAccessed) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 0, 1);
    void* elements = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &elements), S_OK);
    EXPECT_EQ(SafeArrayAccessData(array, &elements), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, CannotBeAccessedWithoutEnd) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 0, 1);
    void* elements = nullptr;
    array->cLocks = std::numeric_limits<USHORT>::max();
    EXPECT_EQ(SafeArrayAccessData(array, &elements), E_UNEXPECTED);
    array->cLocks = 0;
    SafeArrayDestroy(array);
}

TEST(SafeArray, CopiesStandAlone) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 2, 3);
    std::memcpy(elementsOf(array), "abc", 3);
    SAFEARRAY* copy = nullptr;
    EXPECT_EQ(SafeArrayCopy(array, &copy), S_OK);
    std::memcpy(elementsOf(array), "xyz", 3);
    EXPECT_EQ(std::memcmp(elementsOf(copy), "abc", 3), 0);
    LONG lower = 0;
    EXPECT_EQ(SafeArrayGetLBound(copy, 1, &lower), S_OK);
    EXPECT_EQ(lower, 2);
    SafeArrayDestroy(array);
    SafeArrayDestroy(copy);
}

TEST(SafeArray, CopiesOfAccessedArraysAreNotAccessed) {
    SAFEARRAYBOUND const bounds[] = {{2, 0}, {0, 7}, {3, 1}};
    auto* const array = SafeArrayCreate(VT_I4, 3, bounds);
    void* elements = nullptr;
    SafeArrayAccessData(array, &elements);
    SAFEARRAY* copy = nullptr;
    EXPECT_EQ(SafeArrayCopy(array, &copy), S_OK);
    LONG lower = 0;
    EXPECT_EQ(SafeArrayGetLBound(copy, 2, &lower), S_OK);
    EXPECT_EQ(lower, 7);
    EXPECT_EQ(SafeArrayDestroy(copy), S_OK);
    SafeArrayUnaccessData(array);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, AnswersBadArguments) {
    auto* const array = SafeArrayCreateVector(VT_UI1, 0, 1);
    LONG bound = 0;
    VARTYPE type = 0;
    void* elements = nullptr;
    SAFEARRAY* copy = array;
    EXPECT_EQ(SafeArrayGetLBound(array, 0, &bound), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetLBound(array, 2, &bound), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &bound), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetLBound(nullptr, 1, &bound), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetLBound(array, 1, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetUBound(nullptr, 1, &bound), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetVartype(nullptr, &type), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetVartype(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayAccessData(nullptr, &elements), E_INVALIDARG);
    EXPECT_EQ(SafeArrayAccessData(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayUnaccessData(nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayCopy(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayCopy(nullptr, &copy), S_OK);
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(SafeArrayGetDim(nullptr), 0u);
    EXPECT_EQ(SafeArrayGetElemsize(nullptr), 0u);
    EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
    SafeArrayDestroy(array);
}

} // namespace
