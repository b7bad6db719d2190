#pragma once

#include <TibXml/platform/BStrT.h>
#include <TibXml/platform/Variant.h>

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
