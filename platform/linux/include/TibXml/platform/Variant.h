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

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

/// A `VARIANT` that clears itself. Constructors and assignments raise `_com_error` with
/// `E_OUTOFMEMORY` when memory is exhausted, and `E_INVALIDARG` when a number cannot be of the kind
/// asked for.
class _variant_t : public VARIANT {
public:
    /// Empty.
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject): all of it is made zero
    _variant_t() noexcept : VARIANT{} {}

    /// A string, copied; null stays null.
    TIBXML_API _variant_t(wchar_t const* text);
    /// A 16-bit integer, or with `VT_BOOL` a truth value with just these bits.
    TIBXML_API _variant_t(short number, VARTYPE kind = VT_I2);
    /// An integer: `VT_INT`, `VT_I4` or, as a result code, `VT_ERROR`.
    TIBXML_API _variant_t(int number, VARTYPE kind = VT_INT);
    TIBXML_API explicit _variant_t(bool truth) noexcept;
    /// An object, with one more reference unless told that the reference is handed over.
    TIBXML_API _variant_t(IUnknown* object, bool addReference = true) noexcept;
    /// A copy of any variant.
    TIBXML_API _variant_t(VARIANT const& other);

    _variant_t(_variant_t const& other) : _variant_t{static_cast<VARIANT const&>(other)} {}

    /// The other is empty afterwards.
    TIBXML_API _variant_t(_variant_t&& other) noexcept;

    ~_variant_t() { VariantClear(this); }

    TIBXML_API _variant_t& operator=(VARIANT const& other);

    _variant_t& operator=(_variant_t const& other) {
        return *this = static_cast<VARIANT const&>(other);
    }

    TIBXML_API _variant_t& operator=(_variant_t&& other) noexcept;

    /// Frees what it holds and makes it empty; raises what `VariantClear` answers.
    TIBXML_API void Clear();

    /// Clears it and gives the place where a call may store a variant.
    VARIANT* GetAddress() {
        Clear();
        return this;
    }

    /// Gives what it holds to the caller, who clears it; empty afterwards.
    TIBXML_API VARIANT Detach() noexcept;

    /// The string that it holds, a null one when it is empty or null; raises `DISP_E_TYPEMISMATCH`
    /// for anything else.
    TIBXML_API explicit operator _bstr_t() const;
};

// NOLINTEND(bugprone-reserved-identifier)
