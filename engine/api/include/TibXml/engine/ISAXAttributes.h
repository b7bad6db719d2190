#pragma once

#include <TibXml/platform/IUnknown.h>

inline constexpr IID IID_ISAXAttributes{
    0xF078ABE1, 0x45D2, 0x4832, {0x91, 0xEA, 0x44, 0x66, 0xCE, 0x2F, 0x25, 0xC9}};

/// The attributes of an element that starts, in source order, without namespace declarations. Texts
/// are a pointer and a count of characters, not terminated; they belong to the engine and are valid
/// until the handler's `startElement` returns. Afterwards there are no attributes here.
///
/// `E_POINTER` for a null out-pointer, `E_INVALIDARG` for an index out of range, a null or negative
/// text and a name that no attribute has; results are then null and 0.
class ISAXAttributes : public IUnknown {
public:
    virtual HRESULT getLength(int* length) = 0;

    /// The parts of an attribute's name; the namespace is empty when there is none.
    virtual HRESULT getURI(int index, wchar_t const** uri, int* uriLength) = 0;
    virtual HRESULT getLocalName(int index, wchar_t const** local, int* localLength) = 0;
    virtual HRESULT getQName(int index, wchar_t const** qualified, int* qualifiedLength) = 0;
    virtual HRESULT getName(int index, wchar_t const** uri, int* uriLength, wchar_t const** local,
                            int* localLength, wchar_t const** qualified, int* qualifiedLength) = 0;

    /// Where the attribute of a name is; -1 with the failure when there is none.
    virtual HRESULT getIndexFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                     int localLength, int* index) = 0;
    virtual HRESULT getIndexFromQName(wchar_t const* qualified, int qualifiedLength,
                                      int* index) = 0;

    /// "CDATA" for all of them: other types come from document type declarations.
    virtual HRESULT getType(int index, wchar_t const** type, int* typeLength) = 0;
    virtual HRESULT getTypeFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                    int localLength, wchar_t const** type, int* typeLength) = 0;
    virtual HRESULT getTypeFromQName(wchar_t const* qualified, int qualifiedLength,
                                     wchar_t const** type, int* typeLength) = 0;

    /// The normalised value.
    virtual HRESULT getValue(int index, wchar_t const** value, int* valueLength) = 0;
    virtual HRESULT getValueFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                     int localLength, wchar_t const** value, int* valueLength) = 0;
    virtual HRESULT getValueFromQName(wchar_t const* qualified, int qualifiedLength,
                                      wchar_t const** value, int* valueLength) = 0;

protected:
    ~ISAXAttributes() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXAttributes>
    : InterfaceIs<IID_ISAXAttributes, IUnknown> {};
