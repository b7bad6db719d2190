#include "NodeLists.h"

#include <utility>

#include <tree/Lifetimes.h>

#include "Failure.h"
#include "NodeHandle.h"

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

HRESULT ChildList::get_item(LONG index, IXMLDOMNode** node) noexcept {
    return replyObject(IID_IXMLDOMNodeList, node, [&] {
        tree::Node* const first = parent_->node()->firstChild();
        return wrapBeside(*parent_, children_.at(parent_->storage(), first, index));
    });
}

HRESULT ChildList::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMNodeList, length, [&] {
        return children_.count(parent_->storage(), parent_->node()->firstChild());
    });
}

QueryList::QueryList(NodeHandle& context, std::vector<tree::Node*> nodes) noexcept
    : owner_{&context.owner()},
      storage_{&context.storage()},
      nodes_{std::move(nodes)} {
    storage_->lifetimes().pin();
}

QueryList::~QueryList() {
    storage_->lifetimes().unpin();
}

HRESULT QueryList::get_item(LONG index, IXMLDOMNode** node) noexcept {
    return replyObject(IID_IXMLDOMNodeList, node, [&]() -> IXMLDOMNode* {
        if (index < 0 || static_cast<std::size_t>(index) >= nodes_.size()) return nullptr;
        tree::Node* const item = nodes_[static_cast<std::size_t>(index)];
        if (IXMLDOMNode* moved = movedNode(*storage_, item)) return moved;
        return wrap(*owner_, *storage_, item);
    });
}

HRESULT QueryList::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMNodeList, length, [&] { return static_cast<LONG>(nodes_.size()); });
}

} // namespace tibxml::com
