#include "QueryList.h"

#include <utility>

#include <tree/Lifetimes.h>

#include "Adoption.h"
#include "Failure.h"

namespace tibxml::com {

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
