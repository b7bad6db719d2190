#include "ChildList.h"

#include "Failure.h"

namespace tibxml::com {

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

} // namespace tibxml::com
