#include <TibXml/platform/ErrorInfo.h>

#include <TibXml/platform/ComObject.h>

#include <new>
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

thread_local Slot slot; // NOLINT: what a call leaves behind belongs to its thread

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
