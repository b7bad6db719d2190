// Look-up by index in a list of siblings that may change between look-ups.
#pragma once

#include <cstdint>

#include <TibXml/platform/WindowsTypes.h>
#include <tree/Document.h>

namespace tibxml::com {

// Remembers where the last look-up ended, so that walking through a list by index takes one step
// each; and the length. Both are forgotten when the document changes.
class SiblingCursor {
public:
    // The sibling at an index from 0 in the list that begins with `first`; null when there is none.
    tree::Node* at(tree::Document const& document, tree::Node* first, LONG index) noexcept;

    LONG count(tree::Document const& document, tree::Node const* first) noexcept;

private:
    void forgetWhatChanged(tree::Document const& document) noexcept;

    std::uint64_t document_ = 0;
    std::uint64_t version_ = 0;
    tree::Node* node_ = nullptr;
    LONG index_ = 0;
    LONG length_ = -1;
};

} // namespace tibxml::com
