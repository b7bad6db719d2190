#include <TibXml/platform/CString.h>

#include <algorithm>
#include <cwctype>
#include <new>
#include <stdexcept>

static_assert(sizeof(CString) == sizeof(void*), "strings are passed around as cheaply as pointers");

namespace {

constexpr auto notFound = std::wstring_view::npos;

int indexOrNone(std::size_t position) noexcept {
    return position == notFound ? -1 : static_cast<int>(position);
}

std::size_t notBelowZero(int number) noexcept {
    return static_cast<std::size_t>(std::max(number, 0));
}

/// How often a text occurs without overlaps.
std::size_t occurrences(std::wstring_view text, std::wstring_view wanted) noexcept {
    std::size_t count = 0;
    for (auto at = text.find(wanted); at != notFound; at = text.find(wanted, at + wanted.size()))
        ++count;
    return count;
}

wchar_t* copyTo(wchar_t* out, std::wstring_view text) noexcept {
    return std::copy_n(text.data(), text.size(), out);
}

/// Writes a text with every occurrence replaced.
void writeReplaced(std::wstring_view text, std::wstring_view from, std::wstring_view to,
                   wchar_t* out) noexcept {
    for (auto at = text.find(from); at != notFound; at = text.find(from)) {
        out = copyTo(copyTo(out, text.substr(0, at)), to);
        text.remove_prefix(at + from.size());
    }
    copyTo(out, text);
}

} // namespace

CString::CString(wchar_t character, int count) : block_{nothing()} {
    if (count <= 0) return;
    block_ = allocate(notBelowZero(count));
    std::fill_n(characters(block_), count, character);
    setLength(notBelowZero(count));
}

CString::Block* CString::allocate(std::size_t capacity) {
    if (capacity > std::size_t(MaxLength())) throw std::length_error{"CString"};
    auto const bytes = sizeof(Block) + (capacity + 1) * sizeof(wchar_t);
    auto* const block = new (::operator new(bytes)) Block{1, 0, static_cast<int>(capacity)};
    *characters(block) = L'\0';
    return block;
}

CString::Block* CString::copyOf(std::wstring_view text, std::size_t capacity) {
    auto* const block = allocate(capacity);
    *copyTo(characters(block), text) = L'\0';
    block->length = static_cast<int>(text.size());
    return block;
}

void CString::freeBlock(Block* block) noexcept {
    static_assert(std::is_trivially_destructible_v<Block>);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): release() keeps the empty block away
    ::operator delete(block);
}

CString CString::joined(std::wstring_view left, std::wstring_view right) {
    if (left.size() + right.size() == 0) return {};
    CString result{copyOf(left, left.size() + right.size())};
    result.Append(right);
    return result;
}

void CString::setLength(std::size_t length) noexcept {
    block_->length = static_cast<int>(length);
    characters(block_)[length] = L'\0';
}

CString CString::part(int first, int count) const {
    auto const begin = std::min(notBelowZero(first), view().size());
    auto const found = view().substr(begin, notBelowZero(count));
    return found.size() == view().size() ? *this : CString{found};
}

CString CString::Right(int count) const {
    return part(std::max(GetLength() - std::max(count, 0), 0), GetLength());
}

int CString::CompareNoCase(wchar_t const* other) const noexcept {
    auto const left = view();
    auto const right = viewOf(other);
    auto const common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (left[i] == right[i]) continue;
        auto const l = std::towlower(static_cast<std::wint_t>(left[i]));
        auto const r = std::towlower(static_cast<std::wint_t>(right[i]));
        if (l != r) return l < r ? -1 : 1;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

int CString::Find(wchar_t const* text, int start) const noexcept {
    return indexOrNone(view().find(viewOf(text), notBelowZero(start)));
}

int CString::Find(wchar_t character, int start) const noexcept {
    return indexOrNone(view().find(character, notBelowZero(start)));
}

int CString::ReverseFind(wchar_t character) const noexcept {
    return indexOrNone(view().rfind(character));
}

int CString::Replace(wchar_t const* from, wchar_t const* to) {
    auto const wanted = viewOf(from);
    auto const put = viewOf(to);
    auto const count = wanted.empty() ? 0 : occurrences(view(), wanted);
    if (count == 0) return 0;
    auto const length = view().size() - count * wanted.size() + count * put.size();
    CString result;
    if (length != 0) {
        result.block_ = allocate(length);
        writeReplaced(view(), wanted, put, characters(result.block_));
        result.setLength(length);
    }
    result.Swap(*this);
    return static_cast<int>(count);
}

int CString::Replace(wchar_t from, wchar_t to) {
    auto const count = static_cast<int>(std::count(view().begin(), view().end(), from));
    if (count == 0 || from == to) return count;
    auto const length = GetLength();
    auto* const text = GetBuffer(length);
    std::replace(text, text + length, from, to);
    ReleaseBuffer(length);
    return count;
}

CString& CString::Append(std::wstring_view text) {
    auto const oldLength = view().size();
    auto const length = oldLength + text.size();
    if (text.empty()) return *this;
    if (canHold(length)) {
        copyTo(characters(block_) + oldLength, text);
        setLength(length);
        return *this;
    }
    // Shared text is mostly extended once (`a + b`); a string that is being built gets air.
    auto const air = isSoleOwner() ? oldLength / 2 : 0;
    auto const limit = std::max(length, std::size_t(MaxLength()));
    CString result{copyOf(view(), std::min(length + air, limit))};
    copyTo(characters(result.block_) + oldLength, text);
    result.setLength(length);
    result.Swap(*this);
    return *this;
}

void CString::Preallocate(int capacity) {
    auto const wanted = std::max(notBelowZero(capacity), view().size());
    if (wanted == 0 || canHold(wanted)) return;
    CString{copyOf(view(), wanted)}.Swap(*this);
}

wchar_t* CString::GetBuffer(int capacity) {
    // Even an empty buffer takes the NUL that the caller may write: never the shared empty block.
    Preallocate(std::max(capacity, 1));
    return characters(block_);
}

void CString::ReleaseBuffer(int length) noexcept {
    if (block_->capacity == 0) return;
    auto const* const text = characters(block_);
    auto const* const limit = text + block_->capacity;
    auto const* const end = length < 0 ? std::find(text, limit, L'\0') : text + length;
    setLength(std::min(static_cast<std::size_t>(end - text), std::size_t(block_->capacity)));
}
