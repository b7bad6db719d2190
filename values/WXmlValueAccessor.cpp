#include <TibXml/WXmlValueAccessor.h>

#include "ValueText.h"

#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

#include <cstring>
#include <limits>
#include <utility>

using tibxml::engine::EngineString;
using tibxml::engine::interfaceOf;
using tibxml::engine::invoke;
using tibxml::engine::objectFrom;
using tibxml::engine::quietly;
using tibxml::values::setTextOf;
using tibxml::values::textOf;

using Exception = WXmlValueTypeNotFoundException;

// Without memory for the name the engine's exception is thrown in the place of this one.
Exception::WXmlValueTypeNotFoundException(wchar_t const* typeName)
    : typeName_{EngineString{typeName}.toCString()} {}

Exception::WXmlValueTypeNotFoundException(Exception const& other) noexcept = default;

Exception::WXmlValueTypeNotFoundException(Exception&& other) noexcept = default;

Exception& Exception::operator=(Exception const& other) noexcept = default;

Exception& Exception::operator=(Exception&& other) noexcept = default;

Exception::~WXmlValueTypeNotFoundException() = default;

CString const& Exception::GetMessageW() const noexcept {
    return typeName_;
}

WXmlValueAccessor::Target WXmlValueAccessor::targetOf(wchar_t const* selector) noexcept {
    if (selector == nullptr || selector[0] == L'\0') return Target::nothing;
    return selector[0] == L'.' && selector[1] == L'\0' ? Target::node : Target::attribute;
}

WXmlValueAccessor::WXmlValueAccessor() noexcept : target_{Target::nothing} {}

WXmlValueAccessor::WXmlValueAccessor(WXmlNodePtr const& node, wchar_t const* selector)
    : node_{node},
      attributeName_{selector != nullptr && selector[0] != L'\0' ? selector + 1 : nullptr},
      target_{targetOf(selector)} {}

WXmlValueAccessor::WXmlValueAccessor(WXmlValueAccessor const& other) = default;

WXmlValueAccessor::WXmlValueAccessor(WXmlValueAccessor&& other) noexcept : WXmlValueAccessor{} {
    Swap(other);
}

WXmlValueAccessor& WXmlValueAccessor::operator=(WXmlValueAccessor const& other) = default;

WXmlValueAccessor& WXmlValueAccessor::operator=(WXmlValueAccessor&& other) noexcept {
    if (this == &other) return *this;
    node_ = nullptr;
    Swap(other);
    return *this;
}

WXmlValueAccessor::~WXmlValueAccessor() = default;

void WXmlValueAccessor::Swap(WXmlValueAccessor& other) noexcept {
    node_.Swap(other.node_);
    std::swap(attributeName_, other.attributeName_);
    std::swap(target_, other.target_);
}

bool WXmlValueAccessor::Exists() const noexcept {
    return static_cast<bool>(GetNodeForReading());
}

bool WXmlValueAccessor::IsEmpty() const {
    WXmlNodePtr const target = GetNodeForReading();
    return !target || textOf(target).view().empty();
}

void WXmlValueAccessor::Clear() {
    WXmlNodePtr const target = GetNodeForReading();
    if (target) setTextOf(target, EngineString{L""});
}

void WXmlValueAccessor::Delete() noexcept {
    if (target_ != Target::attribute) return;
    quietly(S_OK, [this] {
        auto const attributes = objectFrom(node_, &IXMLDOMNode::get_attributes);
        WXmlNodePtr removed;
        return invoke(attributes, &IXMLDOMNamedNodeMap::removeNamedItem, attributeName_.get(),
                      removed.GetAddress());
    });
}

namespace {

WXmlNodePtr findAttribute(WXmlNodePtr const& node, EngineString const& name) {
    WXmlNodePtr found;
    auto const attributes = objectFrom(node, &IXMLDOMNode::get_attributes);
    invoke(attributes, &IXMLDOMNamedNodeMap::getNamedItem, name.get(), found.GetAddress());
    return found;
}

/// Puts a new attribute without text on an element.
WXmlNodePtr addAttribute(WXmlNodePtr const& node, EngineString const& name) {
    auto const document = objectFrom(node, &IXMLDOMNode::get_ownerDocument);
    EnginePtr<IXMLDOMAttribute> created;
    invoke(document, &IXMLDOMDocument::createAttribute, name.get(), created.GetAddress());
    auto attribute = interfaceOf<IXMLDOMNode>(created);
    auto const attributes = objectFrom(node, &IXMLDOMNode::get_attributes);
    WXmlNodePtr result;
    invoke(attributes, &IXMLDOMNamedNodeMap::setNamedItem, attribute.GetInterfacePtr(),
           result.GetAddress());
    return attribute;
}

/// A text in a variant that does not own it.
VARIANT borrowed(EngineString const& text) noexcept {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text.get();
    return value;
}

/// Gives an element's attribute a text in one call, which most writes are. False when that did not
/// work out for whatever reason: going step by step shows which.
bool setAttribute(WXmlNodePtr const& node, EngineString const& name, EngineString const& text) {
    return quietly(false, [&] {
        auto const element = interfaceOf<IXMLDOMElement>(node);
        return element && element->setAttribute(name.get(), borrowed(text)) == S_OK;
    });
}

constexpr VARTYPE arrayOfBytes = VT_ARRAY | VT_UI1;

void check(HRESULT code) {
    if (FAILED(code)) _com_issue_error(code);
}

/// The array that a variant holds or refers to; null when it is not one of bytes.
SAFEARRAY* arrayIn(VARIANT const& value) noexcept {
    if (value.vt == arrayOfBytes) return value.parray;
    if (value.vt != (VT_BYREF | arrayOfBytes) || value.pparray == nullptr) return nullptr;
    return *value.pparray;
}

unsigned long byteCount(SAFEARRAY* array) {
    LONG lower = 0;
    LONG upper = 0;
    check(SafeArrayGetLBound(array, 1, &lower));
    check(SafeArrayGetUBound(array, 1, &upper));
    return static_cast<unsigned long>(LONGLONG{upper} - lower + 1);
}

void copyBytes(SAFEARRAY* array, void* target, unsigned long count) {
    void* bytes = nullptr;
    check(SafeArrayAccessData(array, &bytes));
    std::memcpy(target, bytes, count);
    check(SafeArrayUnaccessData(array));
}

/// A variant that owns an array with these bytes; without any array when `data` is null.
_variant_t variantOf(unsigned char const* data, unsigned long size) {
    _variant_t value;
    value.parray = nullptr;
    value.vt = arrayOfBytes;
    if (data == nullptr) return value;
    if (size > std::numeric_limits<ULONG>::max()) _com_issue_error(E_OUTOFMEMORY);
    value.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(size));
    void* bytes = nullptr;
    check(value.parray == nullptr ? E_OUTOFMEMORY : SafeArrayAccessData(value.parray, &bytes));
    std::memcpy(bytes, data, size);
    check(SafeArrayUnaccessData(value.parray));
    return value;
}

} // namespace

WXmlNodePtr WXmlValueAccessor::GetNodeForReading() const noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{}, [this] { return findAttribute(node_, attributeName_); });
}

WXmlNodePtr WXmlValueAccessor::GetNodeForWriting() noexcept {
    if (!node_ || target_ == Target::nothing) return {};
    if (target_ == Target::node) return node_;
    return quietly(WXmlNodePtr{}, [this] {
        WXmlNodePtr const found = findAttribute(node_, attributeName_);
        return found ? found : addAttribute(node_, attributeName_);
    });
}

void WXmlValueAccessor::Write(EngineString const& text, wchar_t const* typeName) {
    if (target_ == Target::attribute && setAttribute(node_, attributeName_, text)) return;
    WXmlNodePtr const target = GetNodeForWriting();
    if (!target) throw WXmlValueTypeNotFoundException{typeName};
    tibxml::values::setTextOf(target, text);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the target is handed over
CString WXmlValueAccessor::GetNodeTextValue(WXmlNodePtr node) const {
    return node ? tibxml::values::textOf(node).toCString() : CString{};
}

unsigned long WXmlValueAccessor::GetBinary(unsigned char* buffer, unsigned long capacity) const {
    WXmlNodePtr const target = GetNodeForReading();
    if (!target) throw WXmlValueTypeNotFoundException{L"binary"};
    _variant_t value;
    invoke(target, &IXMLDOMNode::get_nodeTypedValue, &value);
    SAFEARRAY* const array = arrayIn(value);
    if (SafeArrayGetDim(array) == 0) return 0;
    VARTYPE type = VT_EMPTY;
    check(SafeArrayGetVartype(array, &type));
    if (type != VT_UI1) _com_issue_error(E_INVALIDARG);
    unsigned long const count = byteCount(array);
    if (count != 0 && count <= capacity && buffer != nullptr) copyBytes(array, buffer, count);
    return count;
}

void WXmlValueAccessor::SetBinary(unsigned char const* data, unsigned long size) noexcept {
    quietly(S_OK, [&] {
        WXmlNodePtr const target = GetNodeForWriting();
        if (!target) throw WXmlValueTypeNotFoundException{L"binary"};
        // Whether it worked shows by the next call, which refuses bytes where they do not belong.
        target->put_dataType(EngineString{L"bin.base64"}.get());
        return target->put_nodeTypedValue(variantOf(data, size));
    });
}
