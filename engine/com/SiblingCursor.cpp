#include "SiblingCursor.h"

namespace tibxml::com {

void SiblingCursor::forgetWhatChanged(tree::Document const& document) noexcept {
    if (document_ == document.serial() && version_ == document.version()) return;
    document_ = document.serial();
    version_ = document.version();
    node_ = nullptr;
    length_ = -1;
}

tree::Node* SiblingCursor::at(tree::Document const& document, tree::Node* first,
                              LONG index) noexcept {
    forgetWhatChanged(document);
    if (index < 0) return nullptr;
    if (node_ == nullptr || index < index_) {
        node_ = first;
        index_ = 0;
    }
    while (node_ != nullptr && index_ < index) {
        node_ = node_->next;
        ++index_;
    }
    return node_;
}

LONG SiblingCursor::count(tree::Document const& document, tree::Node const* first) noexcept {
    forgetWhatChanged(document);
    if (length_ >= 0) return length_;
    length_ = 0;
    for (tree::Node const* node = first; node != nullptr; node = node->next)
        ++length_;
    return length_;
}

} // namespace tibxml::com
