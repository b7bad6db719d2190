#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <variant>

namespace TibUtils {

class Variant;

namespace Json {

struct Content;

/// A counted reference to the values of objects and arrays; not for callers.
class TIBXML_API ContentPtr {
public:
    ContentPtr() noexcept = default;
    ContentPtr(ContentPtr const& other) noexcept;

    ContentPtr(ContentPtr&& other) noexcept : content_{std::exchange(other.content_, nullptr)} {}

    ContentPtr& operator=(ContentPtr const& other) noexcept {
        ContentPtr{other}.Swap(*this);
        return *this;
    }

    ContentPtr& operator=(ContentPtr&& other) noexcept {
        ContentPtr{std::move(other)}.Swap(*this);
        return *this;
    }

    ~ContentPtr() {
        if (content_ != nullptr) Release(content_);
    }

    void Swap(ContentPtr& other) noexcept { std::swap(content_, other.content_); }

    /// The content, null for none.
    Content const* Get() const noexcept { return content_; }

    /// The content for a change, which no other holder may see: a copy when it is shared, a new one
    /// when there is none.
    Content& Writable();

private:
    static void Release(Content* content) noexcept;
    static void GiveUp(Content* content, Content*& doomed) noexcept;
    static Content* TakeFrom(Variant& value) noexcept;

    Content* content_ = nullptr;
};

/// The kind of the value `null`.
struct NullType {
    friend bool operator==(NullType, NullType) noexcept { return true; }
};

/// Named values in the order in which they were added, reached by name or by an index from 0. The
/// names are different from each other.
///
/// Copies share their content until one of them is changed, so a copy costs a counter. However deep
/// values lie within each other, copying and destroying needs no stack for it.
///
/// Threads: copies may be used on different threads, one object may not. So for arrays and values.
class TIBXML_API Object {
public:
    std::size_t GetSize() const noexcept;

    bool HasValue(CString const& name) const noexcept;

    /// The value of a name or at an index, the name at an index. The reference is good until the
    /// object changes or goes. Throw `std::out_of_range` when there is none.
    Variant const& GetValue(CString const& name) const;
    Variant const& GetValue(std::size_t index) const;
    CString const& GetValueName(std::size_t index) const;

    /// Adds a value at the end; one whose name is there already takes the place of the old one.
    /// Throws `std::bad_alloc`, the object being as it was.
    void AddValue(CString name, Variant value);

private:
    friend ContentPtr;
    ContentPtr content_;
};

/// Values in order, reached by an index from 0. As objects in all else.
class TIBXML_API Array {
public:
    std::size_t GetSize() const noexcept;

    /// Throws `std::out_of_range` when there is none.
    Variant const& GetValue(std::size_t index) const;

    /// Adds a value at the end. Throws `std::bad_alloc`, the array being as it was.
    void AddValue(Variant value);

private:
    friend ContentPtr;
    ContentPtr content_;
};

} // namespace Json

/// One value of one of the kinds of JSON: null, a string, an object, a number, a boolean or an
/// array, whose types are `Json::NullType`, `CString`, `Json::Object`, `double`, `bool` and
/// `Json::Array`. Nothing but what `Get` says throws.
class Variant {
    using Alternatives =
        std::variant<Json::NullType, CString, Json::Object, double, bool, Json::Array>;

public:
    /// Null.
    Variant() noexcept = default;

    Variant(Json::NullType) noexcept {}

    /// A string; a null pointer is the empty one. From a pointer: throws `std::bad_alloc`.
    Variant(wchar_t const* text) : value_{CString{text}} {}

    Variant(CString text) noexcept : value_{std::move(text)} {}

    Variant(Json::Object object) noexcept : value_{std::move(object)} {}

    Variant(Json::Array array) noexcept : value_{std::move(array)} {}

    /// Only from `bool` itself: every pointer would become one.
    template <std::same_as<bool> Boolean>
    Variant(Boolean boolean) noexcept : value_{boolean} {}

    /// A number of any type; integers above 2^53 become the nearest number that there is.
    template <class Number>
    requires(std::is_arithmetic_v<Number> && !std::same_as<Number, bool> &&
             !std::same_as<Number, wchar_t> && !std::same_as<Number, char>) Variant(Number number)
    noexcept : value_{static_cast<double>(number)} {}

    /// Whether it is a value of this kind.
    template <class Kind>
    bool Is() const noexcept {
        return std::holds_alternative<Kind>(value_);
    }

    /// The value. Throws `std::bad_cast` when it is of another kind.
    template <class Kind>
    Kind const& Get() const {
        if (Kind const* const value = TryGet<Kind>()) return *value;
        throw std::bad_cast{};
    }

    template <class Kind>
    Kind& Get() {
        if (Kind* const value = TryGet<Kind>()) return *value;
        throw std::bad_cast{};
    }

    /// The value, null when it is of another kind.
    template <class Kind>
    Kind const* TryGet() const noexcept {
        return std::get_if<Kind>(&value_);
    }

    template <class Kind>
    Kind* TryGet() noexcept {
        return std::get_if<Kind>(&value_);
    }

private:
    Alternatives value_;
};

} // namespace TibUtils
