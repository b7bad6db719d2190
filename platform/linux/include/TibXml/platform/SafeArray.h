#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/WindowsTypes.h>

/// One dimension of an array: how many elements it has, and the index of the first.
struct SAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};

/// An array that knows its dimensions and the type of its elements, which are plain numbers; it
/// owns them. The fields are for reading; the functions below are the way to everything.
struct SAFEARRAY {
    USHORT cDims;                ///< the number of dimensions
    VARTYPE vartype;             ///< the type of an element
    ULONG cbElements;            ///< the bytes of an element
    ULONG cLocks;                ///< how many times the data are being accessed
    void* pvData;                ///< the elements, one after the other
    SAFEARRAYBOUND rgsabound[1]; ///< the dimensions, the last one first; as many as `cDims`
};

/// A new array with all elements zero, which the caller destroys. Null when the element type is not
/// a plain number, without bounds, when the size does not fit into memory.
TIBXML_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions,
                                      SAFEARRAYBOUND const* bounds) noexcept;

/// A new array of one dimension; as `SafeArrayCreate`.
TIBXML_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) noexcept;

/// Frees an array and its elements; null is fine. `DISP_E_ARRAYISLOCKED` while its data are being
/// accessed, and then nothing happens.
TIBXML_API HRESULT SafeArrayDestroy(SAFEARRAY* array) noexcept;

/// Makes a copy of an array in `*copy`, null for null; `E_OUTOFMEMORY` when memory is exhausted,
/// `E_INVALIDARG` when `copy` is null.
TIBXML_API HRESULT SafeArrayCopy(SAFEARRAY const* array, SAFEARRAY** copy) noexcept;

/// Hands out the elements, for reading and writing, until the matching `SafeArrayUnaccessData`.
/// `E_INVALIDARG` when a pointer is null, and `E_UNEXPECTED` when locked far too often.
TIBXML_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** elements) noexcept;

/// Ends an access. `E_INVALIDARG` for null, `E_UNEXPECTED` when there was none.
TIBXML_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array) noexcept;

/// The number of dimensions, 0 for null.
TIBXML_API UINT SafeArrayGetDim(SAFEARRAY const* array) noexcept;

/// The bytes that an element takes, 0 for null.
TIBXML_API UINT SafeArrayGetElemsize(SAFEARRAY const* array) noexcept;

/// The index of the first element of a dimension, counted from 1. `E_INVALIDARG` when a pointer is
/// null, `DISP_E_BADINDEX` when there is no such dimension.
TIBXML_API HRESULT SafeArrayGetLBound(SAFEARRAY const* array, UINT dimension, LONG* bound) noexcept;

/// The index of the last element of a dimension, one less than the first when the dimension is
/// empty. Failures as for `SafeArrayGetLBound`.
TIBXML_API HRESULT SafeArrayGetUBound(SAFEARRAY const* array, UINT dimension, LONG* bound) noexcept;

/// The type of an element. `E_INVALIDARG` when a pointer is null.
TIBXML_API HRESULT SafeArrayGetVartype(SAFEARRAY const* array, VARTYPE* type) noexcept;
