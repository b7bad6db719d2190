#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/platform/Export.h>

#include <compare>
#include <cstdint>
#include <iterator>

/// A handle on a list of nodes, mostly the result of a query: those nodes as they were when it was
/// made, in document order. Copies refer to the same list. A new handle, and one that was moved
/// from, is an empty list.
///
/// Nothing is remembered here: every call asks the list of the engine. Functions that need it throw
/// `_com_error` when it fails.
///
/// Threads: a list belongs to the same thread as its document.
class TIBXML_API WXmlNodeList {
public:
    struct iterator;

    /// The empty list.
    WXmlNodeList();

    /// A handle on a list of the engine, which gets one more reference; none is the empty list.
    WXmlNodeList(WXmlNodeListPtr const& list);

    WXmlNodeList(WXmlNodeList const& other);
    WXmlNodeList(WXmlNodeList&& other) noexcept;
    WXmlNodeList& operator=(WXmlNodeList const& other);
    WXmlNodeList& operator=(WXmlNodeList&& other) noexcept;
    void Swap(WXmlNodeList& other) noexcept;
    ~WXmlNodeList();

    /// The number of nodes.
    std::uint64_t size() const;
    int Count() const;

    /// The node at an index from 0; an empty handle for any index that there is not.
    WXmlNode Node(int index) const;

    /// The nodes one after the other: `for (WXmlNode const& node : list)`. The list has to stay
    /// where it is for as long as its iterators are used.
    iterator begin() const;
    iterator end() const;

private:
    WXmlNodeListPtr const& List() const noexcept;

    EngineSlot<WXmlNodeListPtr> slot;
};

/// A place in a list: a random-access iterator that makes the node it gives, so there is no `->`
/// and nothing to refer to. Two are equal when they stand at one index of the same list object.
/// Only `*` and `[]` ask the list, and give an empty handle outside of it.
struct WXmlNodeList::iterator {
    using iterator_category = std::random_access_iterator_tag;
    using value_type = WXmlNode;
    using difference_type = std::int64_t;
    using pointer = void;
    using reference = WXmlNode;

    WXmlNodeList const* list = nullptr;
    std::int64_t index = 0;

    WXmlNode operator*() const {
        auto const known = static_cast<int>(index);
        return known == index ? list->Node(known) : WXmlNode{};
    }

    WXmlNode operator[](std::int64_t offset) const { return *(*this + offset); }

    iterator& operator++() noexcept { return *this += 1; }

    iterator& operator--() noexcept { return *this -= 1; }

    iterator operator++(int) noexcept { return {list, index++}; }

    iterator operator--(int) noexcept { return {list, index--}; }

    iterator& operator+=(std::int64_t offset) noexcept {
        index += offset;
        return *this;
    }

    iterator& operator-=(std::int64_t offset) noexcept {
        index -= offset;
        return *this;
    }

    friend iterator operator+(iterator place, std::int64_t offset) noexcept {
        return place += offset;
    }

    friend iterator operator+(std::int64_t offset, iterator place) noexcept {
        return place += offset;
    }

    friend iterator operator-(iterator place, std::int64_t offset) noexcept {
        return place -= offset;
    }

    friend std::int64_t operator-(iterator const& left, iterator const& right) noexcept {
        return left.index - right.index;
    }

    friend bool operator==(iterator const& left, iterator const& right) noexcept = default;

    /// Of places in one list.
    friend std::strong_ordering operator<=>(iterator const& left, iterator const& right) noexcept {
        return left.index <=> right.index;
    }
};

inline WXmlNodeList::iterator WXmlNodeList::begin() const {
    return {this, 0};
}

inline WXmlNodeList::iterator WXmlNodeList::end() const {
    return {this, Count()};
}
