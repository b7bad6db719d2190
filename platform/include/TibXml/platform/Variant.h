#pragma once

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/IUnknown.h>
#include <TibXml/platform/SafeArray.h>

/// A value of a kind that is known at run time: `vt` says which member of the union counts. A
/// variant owns its string, array or object reference unless the kind carries `VT_BYREF`.
struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;

    union {
        BYTE bVal;             ///< `VT_UI1`
        SHORT iVal;            ///< `VT_I2`
        LONG lVal;             ///< `VT_I4`
        INT intVal;            ///< `VT_INT`
        double dblVal;         ///< `VT_R8`
        VARIANT_BOOL boolVal;  ///< `VT_BOOL`
        HRESULT scode;         ///< `VT_ERROR`
        BSTR bstrVal;          ///< `VT_BSTR`
        IUnknown* punkVal;     ///< `VT_UNKNOWN`, and `VT_DISPATCH` as far as it is one
        SAFEARRAY* parray;     ///< `VT_ARRAY` with a kind
        void* byref;           ///< `VT_BYREF` with a kind, untyped
        BSTR* pbstrVal;        ///< `VT_BYREF | VT_BSTR`
        SAFEARRAY** pparray;   ///< `VT_BYREF | VT_ARRAY` with a kind
        VARIANT* pvarVal;      ///< `VT_BYREF | VT_VARIANT`
        ULONGLONG reserved[2]; ///< the size of the union on Windows
    };
};

static_assert(sizeof(VARIANT) == 24, "variants have the size that they have on 64-bit Windows");

/// Makes a variant empty without looking at what it held; for variants that hold nothing yet.
TIBXML_API void VariantInit(VARIANT* variant) noexcept;

/// Frees what a variant owns and makes it empty. `DISP_E_BADVARTYPE` for a kind that there is not,
/// `DISP_E_ARRAYISLOCKED` for an array whose data are being accessed, `E_INVALIDARG` for null; the
/// variant is then left as it was.
TIBXML_API HRESULT VariantClear(VARIANT* variant) noexcept;

/// Clears `target` and makes it a copy of `source`: strings and arrays are copied, objects get one
/// more reference, `VT_BYREF` copies the pointer. Copying onto itself does nothing. Failures as for
/// `VariantClear`, or `E_OUTOFMEMORY`; `target` is then left as it was.
TIBXML_API HRESULT VariantCopy(VARIANT* target, VARIANT const* source) noexcept;
