#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/EngineString.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>
#include <TibXml/platform/Geometry.h>
#include <TibXml/platform/WindowsTypes.h>
#include <TibXml/tibutils/Optional.h>

#include <cstdint>

/// What is thrown when a value is wanted that is not there, or that does not read as its type, and
/// when there is no place for a value that is to be written. Derives from nothing: it is caught as
/// what it is.
class TIBXML_API WXmlValueTypeNotFoundException {
public:
    /// `typeName` is all that the exception says; null counts as the empty string. Throws
    /// `_com_error` with `E_OUTOFMEMORY` when there is no memory for it.
    WXmlValueTypeNotFoundException(wchar_t const* typeName);
    WXmlValueTypeNotFoundException(WXmlValueTypeNotFoundException const& other) noexcept;
    WXmlValueTypeNotFoundException(WXmlValueTypeNotFoundException&& other) noexcept;
    WXmlValueTypeNotFoundException& operator=(WXmlValueTypeNotFoundException const& other) noexcept;
    WXmlValueTypeNotFoundException& operator=(WXmlValueTypeNotFoundException&& other) noexcept;
    ~WXmlValueTypeNotFoundException();

    /// The name of the type, such as "int".
    CString const& GetMessageW() const noexcept;

private:
    CString typeName_;
};

/// Translates between the names and the numbers of an enumeration, for clients that keep such
/// values. The library never calls it; what the functions do exactly is up to who implements them.
class TIBXML_API IEnumInterpreter {
public:
    IEnumInterpreter() noexcept = default;
    IEnumInterpreter(IEnumInterpreter const&) noexcept = default;
    IEnumInterpreter(IEnumInterpreter&&) noexcept = default;
    IEnumInterpreter& operator=(IEnumInterpreter const&) noexcept = default;
    IEnumInterpreter& operator=(IEnumInterpreter&&) noexcept = default;

    /// The number of a name; false when there is no such name.
    virtual bool ValueOf(wchar_t const* name, int& value) const = 0;

    /// The name of a number; false when there is no such number.
    virtual bool NameOf(int value, CString& name) const = 0;

protected:
    // Not virtual: the table holds the two functions and nothing else.
    ~IEnumInterpreter() = default;
};

/// One value in a document: the text of a node, or the value of one attribute of an element. Made
/// by `WXmlNode::Value` and `WXmlNode::Attribute`. It keeps its node, and looks for its target each
/// time it is used: an attribute that was added or removed meanwhile is seen at once.
///
/// Values are plain text in the document, in one fixed form for each type:
/// - `bool`: exactly "true" or "false".
/// - Integers: plain decimal digits. Read from the whole text, with white space and a sign allowed
///   in front; what is too great or too small becomes the nearest limit of the type.
/// - `double`: six digits after the decimal separator, which is that of the C locale. Read from a
///   number at the beginning of the text; a zero only when the very first character is a "0".
/// - `CString`: the text as it is.
/// - `CPoint`, `CSize`: "(1,2)". A size also reads from a single number, which counts for both.
/// - `CRect`: "1,2,3,4", left, top, right, bottom. Also reads from a single number for all four.
///   White space around the numbers does no harm in these three, but for what stands right before
///   a "(" or ")"; what follows is ignored.
/// - Bytes: base64, in an element that is marked as holding it.
///
/// Getters come in three forms. With a default they return that when the value is *absent*: when
/// there is no target, or its text does not read as the type. Without, and with `_throws`, they
/// throw `WXmlValueTypeNotFoundException` then. `Get<T>()` returns an `optional`.
///
/// Setters write the text of the target; a missing attribute of an element is created, a missing
/// element is not. They throw `WXmlValueTypeNotFoundException` when there is no target. Those with
/// a default `Clear` the target instead when the value equals the default.
///
/// A failure of the engine while it reads or writes the text of a target that exists is thrown as
/// `_com_error`; so is `E_OUTOFMEMORY`.
///
/// Threads: an accessor belongs to the same thread as its document.
class TIBXML_API WXmlValueAccessor {
public:
    /// The value that `selector` names at a node, which gets one more reference and may be none:
    /// "." is the node's own text; anything else is an attribute, whose name is all but the first
    /// character, normally "@"; null and the empty string name nothing: always absent, never
    /// writable.
    WXmlValueAccessor(WXmlNodePtr const& node, wchar_t const* selector);

    WXmlValueAccessor(WXmlValueAccessor const& other);

    /// What was moved from names nothing.
    WXmlValueAccessor(WXmlValueAccessor&& other) noexcept;
    WXmlValueAccessor& operator=(WXmlValueAccessor const& other);
    WXmlValueAccessor& operator=(WXmlValueAccessor&& other) noexcept;
    ~WXmlValueAccessor();

    /// Whether there is a target.
    bool Exists() const noexcept;

    /// Whether there is no target or its text is empty.
    bool IsEmpty() const;

    /// Makes the text of the target empty; creates nothing when there is none.
    void Clear();

    /// Removes the attribute, if it is one and is there; never the text of a node. Reports nothing.
    void Delete() noexcept;

    /// The value, nothing when it is absent. For `bool`, `int`, `long`, `long long`, their unsigned
    /// 64-bit forms, `double`, `CString`, `CPoint`, `CSize` and `CRect`. Unsigned numbers are read
    /// as signed ones: what is greater reads as the greatest signed number.
    template <class T>
    TibUtils::optional<T> Get() const = delete;

    /// The value, `fallback` when it is absent; a null `fallback` is the empty string.
    bool GetBool(bool fallback) const;
    int GetInt(int fallback) const;
    __int64 GetIntPtr(__int64 fallback) const;
    unsigned long long GetUIntPtr(unsigned long long fallback) const;
    double GetDouble(double fallback) const;
    CString GetString(wchar_t const* fallback) const;
    CPoint GetPoint(CPoint fallback) const;
    CSize GetSize(CSize fallback) const;
    CRect GetRect(CRect fallback) const;

    /// The value. Throw `WXmlValueTypeNotFoundException` when it is absent, with "bool", "int",
    /// "intptr", "double", "string", "size", "point" and "rect" as the message.
    bool GetBool() const;
    bool GetBool_throws() const;
    int GetInt() const;
    int GetInt_throws() const;
    __int64 GetIntPtr() const;
    __int64 GetIntPtr_throws() const;
    double GetDouble() const;
    double GetDouble_throws() const;
    CString GetString() const;
    CString GetString_throws() const;
    CSize GetSize() const;
    CSize GetSize_throws() const;
    CPoint GetPoint() const;
    CPoint GetPoint_throws() const;
    CRect GetRect() const;
    CRect GetRect_throws() const;

    /// Write a value. Throw `WXmlValueTypeNotFoundException` when there is no target, with "bool",
    /// "int", "intptr", "uintptr_t", "double" and "string" as the message, and "rect" for all of
    /// points, sizes and rectangles. A null string is written as the empty one.
    void SetBool(bool value);
    void SetInt(int value);
    void SetIntPtr(__int64 value);
    void SetUIntPtr(unsigned long long value);
    void SetDouble(double value);
    void SetString(wchar_t const* value);
    void SetPoint(CPoint value);
    void SetSize(CSize value);
    void SetRect(CRect value);

    /// Write a value, or `Clear` the target when it is the default. A number that is none (NaN) and
    /// a null string equal nothing.
    void SetBool(bool value, bool defaultValue);
    void SetInt(int value, int defaultValue);
    void SetIntPtr(__int64 value, __int64 defaultValue);
    void SetDouble(double value, double defaultValue);
    void SetString(wchar_t const* value, wchar_t const* defaultValue);
    void SetPoint(CPoint value, CPoint defaultValue);
    void SetSize(CSize value, CSize defaultValue);
    void SetRect(CRect value, CRect defaultValue);

    /// The number of bytes of a binary value, which are copied to `buffer` when `capacity` is
    /// enough for all of them: ask with a capacity of 0 first, and `buffer` may be null. 0 for a
    /// text that was not written as bytes. Throws `WXmlValueTypeNotFoundException` with "binary"
    /// when there is no target, and `_com_error` when the text is not base64.
    unsigned long GetBinary(unsigned char* buffer, unsigned long capacity) const;

    /// Writes bytes into an element and marks it as holding such. Reports nothing, whatever fails;
    /// attributes cannot hold bytes.
    void SetBinary(unsigned char const* data, unsigned long size) noexcept;

private:
    /// What the selector names.
    enum class Target : std::uint8_t { nothing, node, attribute };

    static Target targetOf(wchar_t const* selector) noexcept;

    WXmlValueAccessor() noexcept;
    void Swap(WXmlValueAccessor& other) noexcept;

    WXmlNodePtr GetNodeForReading() const noexcept;
    WXmlNodePtr GetNodeForWriting() noexcept;
    void Write(tibxml::engine::EngineString const& text, wchar_t const* typeName);
    CString GetNodeTextValue(WXmlNodePtr node) const;

    // The selector is kept taken apart: it is only ever asked which of the three it is. The name is
    // kept as the engine takes it.
    WXmlNodePtr node_;
    tibxml::engine::EngineString attributeName_;
    Target target_;
};

template <>
TIBXML_API TibUtils::optional<bool> WXmlValueAccessor::Get<bool>() const;
template <>
TIBXML_API TibUtils::optional<int> WXmlValueAccessor::Get<int>() const;
template <>
TIBXML_API TibUtils::optional<long> WXmlValueAccessor::Get<long>() const;
template <>
TIBXML_API TibUtils::optional<long long> WXmlValueAccessor::Get<long long>() const;
template <>
TIBXML_API TibUtils::optional<unsigned long> WXmlValueAccessor::Get<unsigned long>() const;
template <>
TIBXML_API TibUtils::optional<unsigned long long>
WXmlValueAccessor::Get<unsigned long long>() const;
template <>
TIBXML_API TibUtils::optional<double> WXmlValueAccessor::Get<double>() const;
template <>
TIBXML_API TibUtils::optional<CString> WXmlValueAccessor::Get<CString>() const;
template <>
TIBXML_API TibUtils::optional<CPoint> WXmlValueAccessor::Get<CPoint>() const;
template <>
TIBXML_API TibUtils::optional<CSize> WXmlValueAccessor::Get<CSize>() const;
template <>
TIBXML_API TibUtils::optional<CRect> WXmlValueAccessor::Get<CRect>() const;
