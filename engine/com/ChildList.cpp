#include "ChildList.h"

#include "Failure.h"

namespace tibxml::com {

void ChildList::forgetOldPosition() noexcept {
    tree::Document const& document = parent_->storage();
    if (version_ == document.version() && storage_ == document.serial()) return;
    version_ = document.version();
    storage_ = document.serial();
    node_ = nullptr;
    length_ = -1;
}

tree::Node* ChildList::find(LONG index) noexcept {
    forgetOldPosition();
    if (index < 0) return nullptr;
    if (node_ == nullptr || index < index_) {
        node_ = parent_->node()->firstChild();
        index_ = 0;
    }
    while (node_ != nullptr && index_ < index) {
        node_ = node_->next;
        ++index_;
    }
    return node_;
}

LONG ChildList::count() noexcept {
    forgetOldPosition();
    if (length_ >= 0) return length_;
    length_ = 0;
    for (tree::Node const* n = parent_->node()->firstChild(); n != nullptr; n = n->next)
        ++length_;
    return length_;
}

HRESULT ChildList::get_item(LONG index, IXMLDOMNode** node) noexcept {
    return replyObject(IID_IXMLDOMNodeList, node,
                       [&] { return wrapBeside(*parent_, find(index)); });
}

HRESULT ChildList::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMNodeList, length, [&] { return count(); });
}

} // namespace tibxml::com
