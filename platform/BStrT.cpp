#include <TibXml/platform/BStrT.h>

#include <TibXml/platform/ComError.h>

#include <atomic>
#include <new>
#include <utility>

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

struct _bstr_t::Shared {
    std::atomic<unsigned> owners;
    BSTR text;
};

namespace {

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
