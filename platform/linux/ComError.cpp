#include <TibXml/platform/ComError.h>

#include <TibXml/platform/ComObject.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>

namespace {

/// One string of an error information.
class Text {
public:
    Text() = default;
    Text(Text const&) = delete;
    Text& operator=(Text const&) = delete;

    ~Text() { SysFreeString(text_); }

    HRESULT set(OLECHAR const* text) noexcept {
        auto* const copy = SysAllocString(text);
        if (text != nullptr && copy == nullptr) return E_OUTOFMEMORY;
        SysFreeString(std::exchange(text_, copy));
        return S_OK;
    }

    HRESULT get(BSTR* text) const noexcept {
        if (text == nullptr) return E_POINTER;
        *text = text_ == nullptr ? nullptr : SysAllocStringLen(text_, SysStringLen(text_));
        return text_ != nullptr && *text == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    BSTR text_ = nullptr;
};

class ErrorInfo final : public tibxml::platform::ComObject<IErrorInfo, ICreateErrorInfo> {
public:
    HRESULT GetGUID(GUID* interfaceId) noexcept override { return give(interfaceId_, interfaceId); }

    HRESULT GetSource(BSTR* source) noexcept override { return source_.get(source); }

    HRESULT GetDescription(BSTR* description) noexcept override {
        return description_.get(description);
    }

    HRESULT GetHelpFile(BSTR* file) noexcept override { return helpFile_.get(file); }

    HRESULT GetHelpContext(DWORD* context) noexcept override { return give(helpContext_, context); }

    HRESULT SetGUID(REFGUID interfaceId) noexcept override {
        interfaceId_ = interfaceId;
        return S_OK;
    }

    HRESULT SetSource(OLECHAR* source) noexcept override { return source_.set(source); }

    HRESULT SetDescription(OLECHAR* description) noexcept override {
        return description_.set(description);
    }

    HRESULT SetHelpFile(OLECHAR* file) noexcept override { return helpFile_.set(file); }

    HRESULT SetHelpContext(DWORD context) noexcept override {
        helpContext_ = context;
        return S_OK;
    }

private:
    template <class Value>
    static HRESULT give(Value const& value, Value* target) noexcept {
        if (target == nullptr) return E_POINTER;
        *target = value;
        return S_OK;
    }

    GUID interfaceId_ = GUID_NULL;
    Text source_;
    Text description_;
    Text helpFile_;
    DWORD helpContext_ = 0;
};

/// What a thread has left for its caller.
class Slot {
public:
    Slot() = default;
    Slot(Slot const&) = delete;
    Slot& operator=(Slot const&) = delete;

    ~Slot() { put(nullptr); }

    IErrorInfo* take() noexcept { return std::exchange(info_, nullptr); }

    void put(IErrorInfo* info) noexcept {
        if (info != nullptr) info->AddRef();
        // The old one leaves only when the new one is in place: its release may run any code.
        auto* const old = std::exchange(info_, info);
        if (old != nullptr) old->Release();
    }

private:
    IErrorInfo* info_ = nullptr;
};

thread_local Slot slot; // NOLINT: what a call leaves belongs to its thread

struct Message {
    HRESULT code;
    wchar_t const* text;
};

constexpr std::array messages{
    Message{S_OK, L"No error"},
    Message{S_FALSE, L"Nothing found"},
    Message{E_NOTIMPL, L"Not implemented"},
    Message{E_NOINTERFACE, L"No such interface supported"},
    Message{E_POINTER, L"Invalid pointer"},
    Message{E_ABORT, L"Operation aborted"},
    Message{E_FAIL, L"Unspecified error"},
    Message{E_UNEXPECTED, L"Catastrophic failure"},
    Message{E_ACCESSDENIED, L"Access denied"},
    Message{E_OUTOFMEMORY, L"Out of memory"},
    Message{E_INVALIDARG, L"Invalid argument"},
    Message{CLASS_E_NOAGGREGATION, L"Class does not support aggregation"},
    Message{REGDB_E_CLASSNOTREG, L"Class not registered"},
    Message{DISP_E_TYPEMISMATCH, L"Type mismatch"},
    Message{DISP_E_BADVARTYPE, L"Bad variable type"},
    Message{DISP_E_BADINDEX, L"Invalid index"},
    Message{DISP_E_ARRAYISLOCKED, L"Array is locked"},
    Message{HRESULT_FROM_WIN32(2), L"File not found"},
    Message{HRESULT_FROM_WIN32(3), L"Path not found"},
};

constexpr std::wstring_view unknownText = L"Unknown error 0x";

void writeHex(HRESULT code, wchar_t* out) noexcept {
    auto const bits = static_cast<std::uint32_t>(code);
    for (int shift = 28; shift >= 0; shift -= 4)
        *out++ = L"0123456789ABCDEF"[(bits >> shift) & 15u];
    *out = L'\0';
}

void addReferenceTo(IUnknown* object) noexcept {
    if (object != nullptr) object->AddRef();
}

void releaseReferenceTo(IUnknown* object) noexcept {
    if (object != nullptr) object->Release();
}

bool leavesErrorInfo(IUnknown* object, REFIID iid) {
    void* found = nullptr;
    if (object == nullptr || FAILED(object->QueryInterface(IID_ISupportErrorInfo, &found)))
        return false;
    auto* const support = static_cast<ISupportErrorInfo*>(found);
    auto const supported = support->InterfaceSupportsErrorInfo(iid) == S_OK;
    support->Release();
    return supported;
}

/// One of the strings of an error information; what cannot be had is null, except for memory.
_bstr_t textOf(IErrorInfo* info, HRESULT (IErrorInfo::*get)(BSTR*)) {
    BSTR text = nullptr;
    if (info == nullptr) return {};
    if ((info->*get)(&text) == E_OUTOFMEMORY) _com_issue_error(E_OUTOFMEMORY);
    return {text, false};
}

} // namespace

HRESULT CreateErrorInfo(ICreateErrorInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = new (std::nothrow) ErrorInfo;
    return *info == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info) noexcept {
    if (reserved != 0) return E_INVALIDARG;
    slot.put(info);
    return S_OK;
}

HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info) noexcept {
    if (reserved != 0 || info == nullptr) return E_INVALIDARG;
    *info = slot.take();
    return *info == nullptr ? S_FALSE : S_OK;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own names

_com_error::_com_error(HRESULT code, IErrorInfo* info, bool addReference) noexcept
    : code_{code},
      info_{info} {
    static_assert(std::size(decltype(unknown_){}) > unknownText.size() + 8);
    if (addReference) addReferenceTo(info_);
    writeHex(code_, std::copy(unknownText.begin(), unknownText.end(), unknown_));
}

_com_error::_com_error(_com_error const& other) noexcept
    : _com_error{other.code_, other.info_, true} {}

_com_error& _com_error::operator=(_com_error const& other) noexcept {
    if (this == &other) return *this;
    addReferenceTo(other.info_);
    releaseReferenceTo(std::exchange(info_, other.info_));
    code_ = other.code_;
    std::copy(std::begin(other.unknown_), std::end(other.unknown_), unknown_);
    return *this;
}

_com_error::~_com_error() noexcept {
    releaseReferenceTo(info_);
}

IErrorInfo* _com_error::ErrorInfo() const noexcept {
    addReferenceTo(info_);
    return info_;
}

_bstr_t _com_error::Description() const {
    return textOf(info_, &IErrorInfo::GetDescription);
}

_bstr_t _com_error::Source() const {
    return textOf(info_, &IErrorInfo::GetSource);
}

::GUID _com_error::GUID() const noexcept {
    ::GUID interfaceId = GUID_NULL;
    if (info_ == nullptr || FAILED(info_->GetGUID(&interfaceId))) return GUID_NULL;
    return interfaceId;
}

wchar_t const* _com_error::ErrorMessage() const noexcept {
    auto const* const found =
        std::find_if(messages.begin(), messages.end(),
                     [this](auto const& known) { return known.code == code_; });
    return found == messages.end() ? unknown_ : found->text;
}

void _com_raise_error(HRESULT code, IErrorInfo* info) {
    throw _com_error{code, info};
}

void _com_issue_error(HRESULT code) {
    throw _com_error{code};
}

void _com_issue_errorex(HRESULT code, IUnknown* object, REFIID iid) {
    IErrorInfo* info = nullptr;
    if (leavesErrorInfo(object, iid)) GetErrorInfo(0, &info);
    _com_raise_error(code, info);
}

// NOLINTEND(bugprone-reserved-identifier)
