#include <TibXml/platform/SafeArray.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>

namespace {

/// 0 for what arrays here are not made of: elements that own something would have to be freed and
/// copied one by one, and the engine passes none.
ULONG elementSize(VARTYPE type) noexcept {
    switch (type) {
    case VT_UI1: return sizeof(BYTE);
    case VT_I2: return sizeof(SHORT);
    case VT_BOOL: return sizeof(VARIANT_BOOL);
    case VT_I4: return sizeof(LONG);
    case VT_INT: return sizeof(INT);
    case VT_ERROR: return sizeof(HRESULT);
    case VT_R8: return sizeof(double);
    default: return 0;
    }
}

/// The number of elements within bounds, which is 0 as soon as one dimension is empty; false when
/// their bytes are more than an array can hold.
bool dataBytes(std::span<SAFEARRAYBOUND const> bounds, ULONG element, std::size_t& bytes) noexcept {
    constexpr auto limit = static_cast<std::size_t>(std::numeric_limits<LONG>::max());
    bytes = element;
    for (auto const& bound : bounds) {
        if (bound.cElements != 0 && bytes > limit / bound.cElements) return false;
        bytes *= bound.cElements;
    }
    return true;
}

SAFEARRAYBOUND const* boundOf(SAFEARRAY const* array, UINT dimension) noexcept {
    if (dimension == 0 || dimension > array->cDims) return nullptr;
    return array->rgsabound + (array->cDims - dimension);
}

SAFEARRAY* allocate(UINT dimensions) noexcept {
    auto const extra = (dimensions - 1) * sizeof(SAFEARRAYBOUND);
    return static_cast<SAFEARRAY*>(std::calloc(1, sizeof(SAFEARRAY) + extra));
}

std::size_t bytesOf(SAFEARRAY const* array) noexcept {
    std::size_t bytes = 0;
    dataBytes({array->rgsabound, array->cDims}, array->cbElements, bytes);
    return bytes;
}

} // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND const* bounds) noexcept {
    auto const element = elementSize(type);
    std::size_t bytes = 0;
    if (element == 0 || bounds == nullptr || dimensions == 0) return nullptr;
    if (dimensions > std::numeric_limits<USHORT>::max()) return nullptr;
    if (!dataBytes({bounds, dimensions}, element, bytes)) return nullptr;
    auto* const array = allocate(dimensions);
    if (array == nullptr) return nullptr;
    array->cDims = static_cast<USHORT>(dimensions);
    array->vartype = type;
    array->cbElements = element;
    for (UINT i = 0; i < dimensions; ++i)
        array->rgsabound[dimensions - 1 - i] = bounds[i];
    // One byte at least, so that an empty array differs from exhausted memory.
    array->pvData = std::calloc(bytes == 0 ? 1 : bytes, 1);
    if (array->pvData != nullptr) return array;
    std::free(array);
    return nullptr;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) noexcept {
    SAFEARRAYBOUND const bound{count, lowerBound};
    return SafeArrayCreate(type, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) noexcept {
    if (array == nullptr) return S_OK;
    if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
    std::free(array->pvData);
    std::free(array);
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY const* array, SAFEARRAY** copy) noexcept {
    if (copy == nullptr) return E_INVALIDARG;
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    auto* const made = allocate(array->cDims);
    if (made == nullptr) return E_OUTOFMEMORY;
    auto const bytes = bytesOf(array);
    std::memcpy(made, array, sizeof(SAFEARRAY) + (array->cDims - 1u) * sizeof(SAFEARRAYBOUND));
    made->cLocks = 0;
    made->pvData = std::malloc(bytes == 0 ? 1 : bytes);
    if (made->pvData == nullptr) {
        std::free(made);
        return E_OUTOFMEMORY;
    }
    std::memcpy(made->pvData, array->pvData, bytes);
    *copy = made;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** elements) noexcept {
    if (array == nullptr || elements == nullptr) return E_INVALIDARG;
    if (array->cLocks == std::numeric_limits<USHORT>::max()) return E_UNEXPECTED;
    ++array->cLocks;
    *elements = array->pvData;
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) noexcept {
    if (array == nullptr) return E_INVALIDARG;
    if (array->cLocks == 0) return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY const* array) noexcept {
    return array == nullptr ? 0 : array->cDims;
}

UINT SafeArrayGetElemsize(SAFEARRAY const* array) noexcept {
    return array == nullptr ? 0 : array->cbElements;
}

HRESULT SafeArrayGetLBound(SAFEARRAY const* array, UINT dimension, LONG* bound) noexcept {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    auto const* const found = boundOf(array, dimension);
    if (found == nullptr) return DISP_E_BADINDEX;
    *bound = found->lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY const* array, UINT dimension, LONG* bound) noexcept {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    auto const* const found = boundOf(array, dimension);
    if (found == nullptr) return DISP_E_BADINDEX;
    *bound = static_cast<LONG>(LONGLONG{found->lLbound} + found->cElements - 1);
    return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY const* array, VARTYPE* type) noexcept {
    if (array == nullptr || type == nullptr) return E_INVALIDARG;
    *type = array->vartype;
    return S_OK;
}
