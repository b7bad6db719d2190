#pragma once

#include <TibXml/platform/IUnknown.h>
#include <TibXml/platform/Variant.h>

inline constexpr IID IID_ISAXCounter{
    0x5F1B7C52, 0x6D0A, 0x4E0B, {0x9C, 0x0E, 0x37, 0x2D, 0x5A, 0xB1, 0x84, 0xE6}};

/// How much of everything is in a document.
struct SAXCounts {
    ULONGLONG elements;
    ULONGLONG attributes; ///< without namespace declarations
    ULONGLONG textBytes;  ///< of all text within the root as UTF-8, white space included
    ULONG depth;          ///< elements inside each other
};

/// Counts what is in a document without telling it, which takes less time. The objects of
/// `CLSID_SAXXMLReader60` offer it; those of Windows do not.
class ISAXCounter : public IUnknown {
public:
    /// Reads a text or a stream as `ISAXXMLReader::parse` does, with the same results, but calls no
    /// handler. `counts` says what was there up to the end or the error, and before each read of a
    /// stream what was there so far. What fails leaves error information for `IID_ISAXCounter`.
    virtual HRESULT count(VARIANT input, SAXCounts* counts) = 0;

protected:
    ~ISAXCounter() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXCounter> : InterfaceIs<IID_ISAXCounter, IUnknown> {};
