#include <TibXml/platform/BStr.h>

#include <TibXml/platform/ComError.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>
#include <new>
#include <utility>

namespace {

constexpr std::size_t prefixBytes = sizeof(UINT);

char* blockOf(BSTR text) noexcept {
    return reinterpret_cast<char*>(text) - prefixBytes;
}

BSTR copyOf(BSTR text) {
    if (text == nullptr) return nullptr;
    auto* const copy = SysAllocStringLen(text, SysStringLen(text));
    if (copy == nullptr) _com_issue_error(E_OUTOFMEMORY);
    return copy;
}

BSTR copyOf(wchar_t const* text) {
    auto* const copy = SysAllocString(text);
    if (text != nullptr && copy == nullptr) _com_issue_error(E_OUTOFMEMORY);
    return copy;
}

} // namespace

BSTR SysAllocString(OLECHAR const* text) noexcept {
    if (text == nullptr) return nullptr;
    auto const length = std::wcslen(text);
    if (length > std::numeric_limits<UINT>::max()) return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(length));
}

BSTR SysAllocStringLen(OLECHAR const* text, UINT length) noexcept {
    constexpr std::size_t longest = std::numeric_limits<UINT>::max() / sizeof(OLECHAR);
    if (length > longest) return nullptr;
    auto const bytes = static_cast<UINT>(length * sizeof(OLECHAR));
    auto* const block = static_cast<char*>(std::malloc(prefixBytes + bytes + sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    std::memcpy(block, &bytes, prefixBytes);
    auto* const string = reinterpret_cast<BSTR>(block + prefixBytes);
    if (text != nullptr) std::memcpy(string, text, bytes);
    string[length] = L'\0';
    return string;
}

void SysFreeString(BSTR text) noexcept {
    if (text != nullptr) std::free(blockOf(text));
}

UINT SysStringLen(BSTR text) noexcept {
    return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR text) noexcept {
    UINT bytes = 0;
    if (text != nullptr) std::memcpy(&bytes, blockOf(text), prefixBytes);
    return bytes;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

struct _bstr_t::Shared {
    std::atomic<unsigned> owners;
    BSTR text;
};

_bstr_t::_bstr_t(wchar_t const* text) : _bstr_t{copyOf(text), false} {}

_bstr_t::_bstr_t(BSTR text, bool copy) {
    auto* const own = copy ? copyOf(text) : text;
    if (own == nullptr) return;
    shared_ = new (std::nothrow) Shared{1, own};
    if (shared_ != nullptr) return;
    SysFreeString(own);
    _com_issue_error(E_OUTOFMEMORY);
}

BSTR _bstr_t::text() const noexcept {
    return shared_ == nullptr ? nullptr : shared_->text;
}

void _bstr_t::retain() const noexcept {
    if (shared_ != nullptr) shared_->owners.fetch_add(1, std::memory_order_relaxed);
}

void _bstr_t::release() const noexcept {
    if (shared_ == nullptr) return;
    if (shared_->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    SysFreeString(shared_->text);
    delete shared_;
}

_bstr_t::Shared& _bstr_t::shared() {
    if (shared_ == nullptr) shared_ = new (std::nothrow) Shared{1, nullptr};
    if (shared_ == nullptr) _com_issue_error(E_OUTOFMEMORY);
    return *shared_;
}

BSTR _bstr_t::copy(bool copy) const {
    return copy ? copyOf(text()) : text();
}

BSTR& _bstr_t::GetBSTR() {
    return shared().text;
}

BSTR* _bstr_t::GetAddress() {
    _bstr_t{}.swap(*this);
    return &shared().text;
}

void _bstr_t::Attach(BSTR text) {
    SysFreeString(std::exchange(shared().text, text));
}

BSTR _bstr_t::Detach() {
    return shared_ == nullptr ? nullptr : std::exchange(shared_->text, nullptr);
}

void _bstr_t::Assign(BSTR text) {
    if (text == this->text()) return;
    Attach(copyOf(text));
}

// NOLINTEND(bugprone-reserved-identifier)
