#pragma once

#include <TibXml/platform/Export.h>

#include <atomic>
#include <concepts>
#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <utility>

/// A wide string with value semantics. Copies share their characters until one of them is changed,
/// so a copy costs a counter; the empty string costs no memory at all. One pointer wide.
///
/// Wherever a function takes a pointer to characters, they end with a NUL and a null pointer means
/// the empty string; strings made from a length may hold NULs. Indices and lengths count wide
/// characters. Arguments may be part of the string that is being changed (`s = s.GetString() + 3`).
///
/// What needs memory throws `std::bad_alloc` when there is none, and `std::length_error` when the
/// result would be longer than `MaxLength()`; the string is then what it was. Nothing else throws.
///
/// Threads: copies of one string may be used on different threads, one object may not.
class CString {
public:
    CString() noexcept : block_{nothing()} {}

    CString(wchar_t const* text) : CString{viewOf(text)} {}

    CString(wchar_t const* text, int length)
        : CString{text == nullptr ? std::wstring_view{}
                                  : std::wstring_view{text, length < 0 ? 0u : unsigned(length)}} {}

    explicit CString(std::wstring_view text)
        : block_{text.empty() ? nothing() : copyOf(text, text.size())} {}

    /// `count` times the same character, none when `count` is negative.
    TIBXML_API CString(wchar_t character, int count);

    CString(CString const& other) noexcept : block_{other.block_} { retain(); }

    /// The other string is empty afterwards.
    CString(CString&& other) noexcept : block_{std::exchange(other.block_, nothing())} {}

    ~CString() { release(); }

    CString& operator=(CString const& other) noexcept {
        CString{other}.Swap(*this);
        return *this;
    }

    CString& operator=(CString&& other) noexcept {
        CString{std::move(other)}.Swap(*this);
        return *this;
    }

    CString& operator=(wchar_t const* text) {
        CString{text}.Swap(*this);
        return *this;
    }

    CString& operator=(std::wstring_view text) {
        CString{text}.Swap(*this);
        return *this;
    }

    void Swap(CString& other) noexcept { std::swap(block_, other.block_); }

    /// The greatest number of characters of a string.
    static constexpr int MaxLength() noexcept { return (std::numeric_limits<int>::max() - 64) / 4; }

    int GetLength() const noexcept { return block_->length; }

    bool IsEmpty() const noexcept { return block_->length == 0; }

    /// The characters and a NUL after them, never null; good until the string changes or goes.
    wchar_t const* GetString() const noexcept { return characters(block_); }

    operator wchar_t const*() const noexcept { return GetString(); }

    std::wstring_view view() const noexcept { return {GetString(), std::size_t(GetLength())}; }

    operator std::wstring_view() const noexcept { return view(); }

    /// The character at an index from 0 up to the length, where the closing NUL is.
    wchar_t GetAt(int index) const noexcept { return GetString()[index]; }

    /// Makes the string empty and gives its memory back.
    void Empty() noexcept { CString{}.Swap(*this); }

    /// Less than, equal to or greater than 0 as the string's character values come before, with or
    /// after the others'; no locale takes part.
    int Compare(wchar_t const* other) const noexcept { return view().compare(viewOf(other)); }

    int Compare(CString const& other) const noexcept {
        return block_ == other.block_ ? 0 : view().compare(other.view());
    }

    /// As `Compare` with every character taken in lower case as `std::towlower` has it.
    TIBXML_API int CompareNoCase(wchar_t const* other) const noexcept;

    /// The index of the first occurrence that begins at `start` or later, -1 when there is none. A
    /// negative `start` counts as 0; an empty text is found at `start` up to the length.
    TIBXML_API int Find(wchar_t const* text, int start = 0) const noexcept;
    TIBXML_API int Find(wchar_t character, int start = 0) const noexcept;
    /// The index of the last occurrence, -1 when there is none.
    TIBXML_API int ReverseFind(wchar_t character) const noexcept;

    /// Parts of the string. Counts and indices outside it are brought to its nearest end; the whole
    /// string is shared, not copied.
    CString Left(int count) const { return part(0, count); }

    TIBXML_API CString Right(int count) const;

    CString Mid(int first) const { return part(first, MaxLength()); }

    CString Mid(int first, int count) const { return part(first, count); }

    /// Replaces every occurrence, from the left, without looking into what was put in. Returns how
    /// many there were; an empty `from` occurs nowhere.
    TIBXML_API int Replace(wchar_t const* from, wchar_t const* to);
    TIBXML_API int Replace(wchar_t from, wchar_t to);

    /// Adds to the end. Repeated appending copies the string only now and then.
    CString& operator+=(CString const& text) {
        if (IsEmpty()) return *this = text;
        return Append(text.view());
    }

    CString& operator+=(wchar_t const* text) { return Append(viewOf(text)); }

    template <std::same_as<wchar_t> Character>
    CString& operator+=(Character character) {
        return Append({&character, 1});
    }

    TIBXML_API CString& Append(std::wstring_view text);

    /// Room for `capacity` characters without a further allocation; the content stays.
    TIBXML_API void Preallocate(int capacity);

    /// Lets the caller write `capacity` characters and a NUL straight into the string, whose
    /// content is at the front and not shared with any copy. `ReleaseBuffer` ends the writing;
    /// nothing else may be called in between.
    TIBXML_API wchar_t* GetBuffer(int capacity);
    /// Ends the writing and makes `length` the string's length; -1 when a NUL ends what was
    /// written.
    TIBXML_API void ReleaseBuffer(int length = -1) noexcept;

    friend bool operator==(CString const& left, CString const& right) noexcept {
        return left.block_ == right.block_ || left.view() == right.view();
    }

    friend bool operator==(CString const& left, wchar_t const* right) noexcept {
        return left.view() == viewOf(right);
    }

    friend bool operator<(CString const& left, CString const& right) noexcept {
        return left.Compare(right) < 0;
    }

    friend bool operator>(CString const& left, CString const& right) noexcept {
        return left.Compare(right) > 0;
    }

    friend bool operator<=(CString const& left, CString const& right) noexcept {
        return left.Compare(right) <= 0;
    }

    friend bool operator>=(CString const& left, CString const& right) noexcept {
        return left.Compare(right) >= 0;
    }

    friend bool operator<(CString const& left, wchar_t const* right) noexcept {
        return left.Compare(right) < 0;
    }

    friend bool operator>(CString const& left, wchar_t const* right) noexcept {
        return left.Compare(right) > 0;
    }

    friend bool operator<=(CString const& left, wchar_t const* right) noexcept {
        return left.Compare(right) <= 0;
    }

    friend bool operator>=(CString const& left, wchar_t const* right) noexcept {
        return left.Compare(right) >= 0;
    }

    friend bool operator<(wchar_t const* left, CString const& right) noexcept {
        return right.Compare(left) > 0;
    }

    friend bool operator>(wchar_t const* left, CString const& right) noexcept {
        return right.Compare(left) < 0;
    }

    friend bool operator<=(wchar_t const* left, CString const& right) noexcept {
        return right.Compare(left) >= 0;
    }

    friend bool operator>=(wchar_t const* left, CString const& right) noexcept {
        return right.Compare(left) <= 0;
    }

    // The left side by value: a string that nobody else needs grows in place. A single character is
    // a template so that a number is not taken for one: `s + 3` is a pointer to the fourth
    // character.
    friend CString operator+(CString left, CString const& right) {
        left += right;
        return left;
    }

    friend CString operator+(CString left, wchar_t const* right) {
        left += right;
        return left;
    }

    template <std::same_as<wchar_t> Character>
    friend CString operator+(CString left, Character right) {
        left += right;
        return left;
    }

    friend CString operator+(wchar_t const* left, CString const& right) {
        return joined(viewOf(left), right.view());
    }

    template <std::same_as<wchar_t> Character>
    friend CString operator+(Character left, CString const& right) {
        return joined({&left, 1}, right.view());
    }

private:
    /// What stands before the characters; its size keeps them on a 16-byte boundary.
    struct alignas(16) Block {
        std::atomic<int> owners;
        int length;
        int capacity; ///< 0 in the one block that is never counted or freed: the empty string's
    };

    struct EmptyBlock {
        Block block;
        wchar_t end;
    };

    // Every module may have its own, so an empty string is known by the capacity, not the address.
    inline static constinit EmptyBlock emptyBlock_{{1, 0, 0}, L'\0'};

    explicit CString(Block* block) noexcept : block_{block} {}

    static Block* nothing() noexcept { return reinterpret_cast<Block*>(&emptyBlock_); }

    static wchar_t* characters(Block* block) noexcept {
        return reinterpret_cast<wchar_t*>(block + 1);
    }

    static std::wstring_view viewOf(wchar_t const* text) noexcept {
        return text == nullptr ? std::wstring_view{} : std::wstring_view{text};
    }

    TIBXML_API static Block* allocate(std::size_t capacity);
    TIBXML_API static Block* copyOf(std::wstring_view text, std::size_t capacity);
    TIBXML_API static void free(Block* block) noexcept;
    TIBXML_API static CString joined(std::wstring_view left, std::wstring_view right);
    TIBXML_API CString part(int first, int count) const;

    void retain() const noexcept {
        if (block_->capacity != 0) block_->owners.fetch_add(1, std::memory_order_relaxed);
    }

    // A sole owner needs no expensive decrement: nobody else can reach the count.
    void release() const noexcept {
        if (block_->capacity == 0) return;
        if (isSoleOwner() || block_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            free(block_);
    }

    bool isSoleOwner() const noexcept {
        return block_->owners.load(std::memory_order_acquire) == 1;
    }

    bool canHold(std::size_t length) const noexcept {
        return length <= std::size_t(block_->capacity) && isSoleOwner();
    }

    void setLength(std::size_t length) noexcept;

    Block* block_;
};

inline void swap(CString& left, CString& right) noexcept {
    left.Swap(right);
}

template <>
struct std::hash<CString> {
    std::size_t operator()(CString const& text) const noexcept {
        return std::hash<std::wstring_view>{}(text.view());
    }
};
